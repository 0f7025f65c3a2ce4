// From a meeting to its appointment.
#include "session/COutlookFuncs.h"

#include "frame/ErrorCodes.h"
#include "mapi/InterfaceIds.h"
#include "session/Operation.h"

namespace varden {

std::wstring COutlookFuncs::TakeAssociatedAppointment() {
    m_objAppointmentItem.Set(m_objMeetingItem.Call(L"GetAssociatedAppointment", {outlook::BoolValue(false)}));
    if (!m_objAppointmentItem) {
        LogLine(kFailedExit);
        return Fail(error::kMapi, L"Unable to get associated appt for item");
    }
    _variant_t object;
    mapi::Pointer<IMessage> message;
    HRESULT status = m_objAppointmentItem.TryGet(L"MAPIOBJECT", object);
    if (SUCCEEDED(status)) {
        status = message.Query(outlook::UnknownOf(object), mapi::kIidMessage);
    }
    if (FAILED(status)) {
        m_objAppointmentItem.Release();
        return Fail(error::kMapi, status, L"");
    }
    m_pMessage = message;
    m_objMeetingItem.Release();
    return kSuccessText;
}

} // namespace varden
