// Accepting a meeting: the attendee's side.
#include "session/COutlookFuncs.h"

#include "mapi/HexText.h"
#include "mapi/InterfaceIds.h"
#include "mapi/MeetingProperties.h"
#include "mapi/PropertyCatalogue.h"
#include "mapi/Steps.h"
#include "mapi/Tags.h"
#include "records/ItemMessage.h"
#include "session/Operation.h"

#include <array>

namespace varden {

namespace {

namespace tag = mapi::tag;

constexpr long kAccepted = 3;
constexpr long kAcceptVerb = 7265;

/// Whether the organizer asked for no answer.
bool WantsNoResponse(IMessage& message) {
    mapi::Block<SPropValue> requested;
    return SUCCEEDED(mapi::GetOneProp(&message, tag::kResponseRequested, requested.Out())) &&
           requested->Value.b == FALSE;
}

struct CopiedProperty {
    ULONG tag;
    const wchar_t*
        failure; ///< stored as it stands, its "%s" included; null: a missing property is passed over
};

constexpr std::array kCopiedProperties{
    CopiedProperty{tag::kSubject, nullptr},
    CopiedProperty{tag::kStartDate, L"Failed to set StartDate property: %s"},
    CopiedProperty{tag::kEndDate, L"Failed to set EndDate property: %s"},
    CopiedProperty{tag::kOwnerAppointmentId, L"Failed to set Owner Appointment ID property: %s"},
    CopiedProperty{tag::kSensitivity, L"Failed to set Sensitivity property: %s"},
};

/// The index of a reply: the parent's with one block more, as the platform makes it.
HRESULT CopyConversationIndex(IMessage& from, IMessage& to) {
    mapi::Block<SPropValue> parent;
    HRESULT status = mapi::GetOneProp(&from, tag::kConversationIndex, parent.Out());
    if (FAILED(status)) {
        return status;
    }
    ULONG count = 0;
    mapi::Block<BYTE> bytes;
    status = mapi::CreateConversationIndex(parent->Value.bin.cb, parent->Value.bin.lpb, &count, bytes.Out());
    if (FAILED(status)) {
        return status;
    }
    SPropValue index{};
    index.ulPropTag = tag::kConversationIndex;
    index.Value.bin = {count, bytes.get()};
    return mapi::SetOneProp(&to, &index);
}

HRESULT CopyProperties(IMessage& from, IMessage& to) {
    for (const CopiedProperty& copied : kCopiedProperties) {
        mapi::Block<SPropValue> value;
        HRESULT status = mapi::GetOneProp(&from, copied.tag, value.Out());
        if (SUCCEEDED(status)) {
            status = mapi::SetOneProp(&to, value.get());
        }
        if (FAILED(status) && copied.failure) {
            return FailMapi(status, copied.failure);
        }
    }
    const HRESULT status = CopyConversationIndex(from, to);
    return FAILED(status) ? FailMapi(status, L"Failed to increment Conversation Index: %s") : status;
}

} // namespace

HRESULT COutlookFuncs::mapi_SendMeetingAccept(IMessage* message, IMsgStore* store) {
    const LoggedOperation log(L"mapi_SendMeetingAccept");
    if (m_lMeetingResponse != kAccepted) {
        return FailMapi(E_INVALIDARG,
                        L"Invalid meeting response status. This function can only be used for Accepted "
                        L"meetings.");
    }
    m_objAppointmentItem.Call(L"Save");
    mapi::Pointer<IMessage> entry;
    HRESULT status = mapi_CopyMeetingToCalendar(mapi::Present(message), store, entry);
    if (FAILED(status)) {
        return status;
    }
    status = entry->SaveChanges(KEEP_OPEN_READWRITE);
    if (FAILED(status)) {
        return FailMapi(status, L"Failed to save message after setting appointment properties");
    }
    _variant_t nothing;
    status = m_objAppointmentItem.TryCall(L"Delete", {}, nothing);
    if (FAILED(status)) {
        return status;
    }
    // The deleted item stays readable. Its three texts are fetched anew each, so that none is ever the same
    // text object as another, which alone would end the flow here.
    for (const wchar_t* text : {L"Organizer", L"RequiredAttendees", L"OptionalAttendees"}) {
        m_objAppointmentItem.GetText(text);
    }
    if (WantsNoResponse(entry.Required())) {
        return S_OK;
    }
    return SendResponse(entry, store);
}

HRESULT COutlookFuncs::SendResponse(const mapi::Pointer<IMessage>& entry, IMsgStore* store) {
    mapi::Pointer<IMessage> response;
    HRESULT status = CreateInOutbox(response, store);
    if (FAILED(status)) {
        return status;
    }
    status = mapi_CopyMeetingProps(response.Required(), store, entry.Required());
    if (FAILED(status)) {
        return status;
    }
    // The response is saved on both sides of the entry; none of the outcomes is looked at.
    response->SaveChanges(KEEP_OPEN_READWRITE);
    entry->SaveChanges(KEEP_OPEN_READWRITE);
    response->SaveChanges(KEEP_OPEN_READWRITE);
    status = PointAtSentItems(response.Required(), store);
    if (FAILED(status)) {
        return status;
    }
    mapi::AddressList organizer;
    status = mapi_AddrListFromMessageOrgOnly(entry.Get(), organizer);
    if (FAILED(status)) {
        return FailMapi(status, L"Failed to get address list: %s");
    }
    if (organizer) {
        status = response->ModifyRecipients(MODRECIP_ADD, organizer.get());
        if (FAILED(status)) {
            return FailMapi(status, L"Failed to modify recipients.");
        }
    }
    response->SaveChanges(KEEP_OPEN_READWRITE);
    status = mapi_FinishMeetingResponse(response.Required());
    if (FAILED(status)) {
        return status;
    }
    status = mapi_RebindAcceptedMeeting(entry.Required());
    m_lMeetingResponse = 0;
    return status;
}

HRESULT COutlookFuncs::mapi_CopyMeetingToCalendar(IMessage& meeting, IMsgStore* store,
                                                  mapi::Pointer<IMessage>& entry) {
    const LoggedOperation log(L"mapi_CopyMeetingToCalendar");
    const outlook::Folder calendar = m_objNamespace.DefaultFolder(outlook::DefaultFolder::Calendar);
    std::vector<BYTE> entryId = mapi::BytesFromHex(calendar.EntryID());
    ULONG objectType = 0;
    mapi::Pointer<IMAPIFolder> folder;
    HRESULT status = mapi::Present(store).OpenEntry(static_cast<ULONG>(entryId.size()),
                                                    reinterpret_cast<LPENTRYID>(entryId.data()), nullptr,
                                                    MAPI_BEST_ACCESS, &objectType, folder.OutAs<IUnknown>());
    if (FAILED(status)) {
        return FailMapi(status, L"Failed to open Calendar folder");
    }
    status = folder->CreateMessage(nullptr, 0, entry.Out());
    if (FAILED(status)) {
        return FailMapi(status, L"Unable to create message");
    }
    status = meeting.CopyTo(0, nullptr, nullptr, 0, nullptr, &mapi::kIidMessage, entry.Get(), 0, nullptr);
    if (FAILED(status)) {
        return FailMapi(status, L"Failed to copy properties from old meeting message to new meeting message");
    }
    mapi::SetText(entry.Required(), tag::kMessageClass, L"IPM.Appointment");
    mapi::StampCalendarEntry(meeting, entry.Required());
    return S_OK;
}

HRESULT COutlookFuncs::mapi_CopyMeetingProps(IMessage& response, IMsgStore* store, IMessage& entry) {
    const LoggedOperation log(L"mapi_CopyMeetingProps");
    mapi::CopyResponseNames(entry, response);
    if (const HRESULT status = CopyProperties(entry, response); FAILED(status)) {
        return status;
    }
    return mapi_SetSentOnBehalf(&response, store);
}

/// The class is always that of an acceptance: the tentative one is never sent.
HRESULT COutlookFuncs::mapi_FinishMeetingResponse(IMessage& response) {
    const LoggedOperation log(L"mapi_FinishMeetingResponse");
    mapi::Block<SPropValue> subject;
    HRESULT status = mapi::GetOneProp(&response, tag::kSubject, subject.Out());
    if (FAILED(status)) {
        return FailMapi(status, L"Failed to get subject property");
    }
    const std::wstring text = subject->Value.lpszW ? subject->Value.lpszW : L"";
    status = WriteHeading(response, L"Accepted:", L"Accepted: " + text, L"IPM.Schedule.Meeting.Resp.Pos");
    if (FAILED(status)) {
        return status;
    }
    SPropValue verb{};
    verb.ulPropTag = mapi_TypedTag(L"DoVerb", PT_LONG, response);
    verb.Value.l = kAcceptVerb;
    status = response.SetProps(1, &verb, nullptr);
    if (FAILED(status)) {
        return FailMapi(status, L"Failed to set final properties.");
    }
    status = response.SaveChanges(KEEP_OPEN_READWRITE);
    if (FAILED(status)) {
        return FailMapi(status, L"Failed to save message prior to submitting");
    }
    status = response.SubmitMessage(0);
    return FAILED(status) ? FailMapi(status, L"Failed to submit message") : status;
}

/// The current record becomes the entry on the calendar.
HRESULT COutlookFuncs::mapi_RebindAcceptedMeeting(IMessage& entry) {
    const LoggedOperation log(L"mapi_RebindAcceptedMeeting");
    mapi::Block<SPropValue> entryId;
    const HRESULT status = mapi::GetOneProp(&entry, tag::kEntryId, entryId.Out());
    if (FAILED(status)) {
        return status;
    }
    const _variant_t object =
        m_objNamespace.Call(L"GetItemFromID", {outlook::TextValue(mapi::HexText(entryId->Value.bin)),
                                               outlook::MissingArgument()});
    outlook::Reference appointment(outlook::kAppointmentItem);
    if (FAILED(appointment.Query(outlook::UnknownOf(object)))) {
        return S_OK;
    }
    m_objAppointmentItem = appointment;
    m_objCurrentItem = outlook::DispatchOf(object);
    QueryMessage(appointment, m_pMessage);
    m_objCurrentFolder.Query(outlook::UnknownOf(appointment.GetProperty(L"Parent")));
    return S_OK;
}

} // namespace varden
