// The recurrence pattern of the current appointment or task: opened, its fields, closed.
#include "session/COutlookFuncs.h"

#include "NotOpen.h"
#include "PatternFields.h"

#include "frame/ErrorCodes.h"
#include "mapi/PropertyCatalogue.h"
#include "session/Operation.h"

#include <array>

namespace varden {

namespace {

/// The bytes that make a stored pattern one of Monday to Friday ([MS-OXOCAL] 2.2.1.44.1: recurrence
/// frequency, pattern type, first date-time, period and days of the week).
struct BlobByte {
    std::size_t offset;
    BYTE value;
};
constexpr std::array kWeekdaysBytes{
    BlobByte{4, 0x0B},  BlobByte{5, 0x20},  BlobByte{6, 0x02},
    BlobByte{10, 0xC0}, BlobByte{14, 0x01}, BlobByte{22, 0x3E},
};
constexpr std::size_t kShortestBlob = 23;

} // namespace

/// The appointment or task whose recurrence is worked on; null with the last error set for every other kind.
const outlook::Reference* COutlookFuncs::RecurringItem(Operation& operation) {
    static constexpr std::array kinds{ItemKind::Appointment, ItemKind::Task};
    const outlook::Reference* item = FirstHeld(kinds);
    if (!item) {
        operation.Fail(error::kNoRecord, L"Recurrence Patterns are not supported for the current item type");
    }
    return item;
}

std::wstring COutlookFuncs::OpenRecurrencePattern() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"OpenRecurrencePattern");
    RPCloseRecurrencePattern(false);
    const outlook::Reference* item = RecurringItem(operation);
    if (!item) {
        return kErrorText;
    }
    m_objRecurrencePattern.Set(item->Call(L"GetRecurrencePattern"));
    return kSuccessText;
}

std::wstring COutlookFuncs::ClearRecurrencePattern() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"ClearREcurrencePattern");
    RPCloseRecurrencePattern(false);
    const outlook::Reference* item = RecurringItem(operation);
    if (!item) {
        return kErrorText;
    }
    _variant_t nothing;
    if (const HRESULT status = item->TryCall(L"ClearRecurrencePattern", {}, nothing); FAILED(status)) {
        return operation.Fail(error::kMapi, status,
                              m_objAppointmentItem ? L"Error clearing recurrence pattern for Appt"
                                                   : L"Error clearing recurrence pattern for Task");
    }
    item->Call(L"Save");
    return kSuccessText;
}

/// Pattern changes reach the store when the record is saved, not here.
std::wstring COutlookFuncs::RPCloseRecurrencePattern(bool save) {
    Operation operation(L"RPCloseRecurrencePattern");
    try {
        if (save) {
            SaveOccurrences();
        }
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
    // An open occurrence of a task stays: it has a closing of its own.
    m_objOccurrenceAppointment.Release();
    m_objException.Release();
    m_objExceptions.Release();
    m_objRecurrencePattern.Release();
    m_lException = 0;
    return kSuccessText;
}

std::wstring COutlookFuncs::SetRecurPatternValue(const std::wstring& name, const std::wstring& data) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"SetRecurPatternValue");
    if (!m_objRecurrencePattern) {
        return operation.Fail(error::kNoRecord, kPatternNotOpen);
    }
    try {
        const PatternField* field = FindPatternFieldToWrite(name);
        const bool isType = field && field->form == PatternForm::Type;
        if (!isType && !IsKnownRecurrenceType(m_objRecurrencePattern.GetLong(L"RecurrenceType"))) {
            return operation.Fail(error::kNoRecord, L"Must set the recurrence type first");
        }
        if (!field) {
            return operation.Fail(error::kFieldName);
        }
        if (isType) {
            return SetRecurrenceType(data, operation);
        }
        if (field->form == PatternForm::DayMask && EqualIgnoringCase(data, L"weekdays")) {
            EditBlobToWeekdays();
        } else {
            m_objRecurrencePattern.PutProperty(field->member, PatternValue(field->form, data));
        }
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
    return kSuccessText;
}

/// The one field that is saved at once, for an appointment.
std::wstring COutlookFuncs::SetRecurrenceType(const std::wstring& word, Operation& operation) {
    const auto type = RecurrenceTypeFrom(word);
    if (!type) {
        return operation.Fail(error::kFieldValue);
    }
    m_objRecurrencePattern.PutProperty(L"RecurrenceType", outlook::LongValue(*type));
    if (m_objAppointmentItem) {
        m_objAppointmentItem.Call(L"Save");
    }
    return kSuccessText;
}

/// The object model has no such value for a pattern that began as another type, so the stored blob is edited.
/// What comes of the writes isn't looked at. A blob too short to hold the bytes is left as it is.
void COutlookFuncs::EditBlobToWeekdays() {
    IMessage& message = m_pMessage.Required();
    ULONG tag = 0;
    mapi::Block<SPropValue> blob;
    if (!mapi_PropTagFromFieldName(L"RecurrenceState", tag, &message) ||
        FAILED(mapi::GetOneProp(&message, CHANGE_PROP_TYPE(tag, PT_BINARY), blob.Out()))) {
        return;
    }
    const SBinary& bytes = blob->Value.bin;
    if (bytes.lpb && bytes.cb >= kShortestBlob) {
        for (const BlobByte& edit : kWeekdaysBytes) {
            bytes.lpb[edit.offset] = edit.value;
        }
    }
    mapi::SetOneProp(&message, blob.get());
    message.SaveChanges(KEEP_OPEN_READWRITE);
}

std::wstring COutlookFuncs::GetRecurPatternValue(const std::wstring& name) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"GetRecurPatternValue");
    if (!m_objRecurrencePattern) {
        return operation.Fail(error::kNoRecord, kPatternNotOpen);
    }
    const PatternField* field = FindPatternFieldToRead(Without(name, L' '));
    if (!field) {
        return operation.Fail(error::kFieldName);
    }
    return Without(PatternText(*field, m_objRecurrencePattern), L'\n');
}

} // namespace varden
