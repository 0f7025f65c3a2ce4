// Single occurrences of a pattern and its exceptions.
#include "session/COutlookFuncs.h"

#include "NotOpen.h"

#include "fields/Conversions.h"
#include "frame/ErrorCodes.h"
#include "mapi/Diagnostics.h"
#include "session/Operation.h"

#include <utility>

namespace varden {

namespace {

constexpr const wchar_t* kWalkNotBegun =
    L"Must call RPGetFirstException first"; // by a name that the function hasn't

} // namespace

std::wstring COutlookFuncs::OpenRecurrenceOccurrence(const ScriptText& date) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"OpenRecurrenceOccurrence");
    if (!date) {
        return operation.Fail(error::kFieldValue, L"missing start date");
    }
    if (!m_objRecurrencePattern) {
        return operation.Fail(error::kNoRecord, L"must open recurrence pattern first");
    }
    const auto start = ParseDate(*date);
    if (!start) {
        return operation.Fail(error::kFieldValue, L"Invalid date/time value");
    }
    try {
        outlook::Reference& occurrence = Occurrence();
        occurrence.Release();
        occurrence.Set(m_objRecurrencePattern.Call(L"GetOccurrence", {outlook::DateValue(*start)}));
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
    return kSuccessText;
}

std::wstring COutlookFuncs::DeleteRecurrenceOccurrence(const ScriptText& date) {
    Operation operation(L"DeleteRecurrenceOccurrence");
    std::wstring answer = OpenRecurrenceOccurrence(date);
    if (answer != kSuccessText) {
        return operation.EndedWith(std::move(answer));
    }
    try {
        Occurrence().Call(L"Delete");
        Occurrence().Release();
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
    return answer;
}

void COutlookFuncs::SaveOccurrences() {
    for (const outlook::Reference* occurrence : {&m_objOccurrenceAppointment, &m_objOccurrenceTask}) {
        if (occurrence->IsHeld()) {
            occurrence->Call(L"Save");
        }
    }
}

std::wstring COutlookFuncs::RPCloseOccurrenceItem(bool save) {
    Operation operation(L"RPCloseOccurrenceItem");
    try {
        if (save) {
            SaveOccurrences();
        }
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
    m_objOccurrenceAppointment.Release();
    m_objOccurrenceTask.Release();
    return kSuccessText;
}

std::wstring COutlookFuncs::GetRecurPatternExceptionCount() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"GetRecurPatternExceptionCount");
    m_objException.Release();
    if (!m_objRecurrencePattern) {
        return operation.Fail(error::kNoRecord, kPatternNotOpen);
    }
    try {
        if (!m_objExceptions) {
            m_objExceptions.Set(m_objRecurrencePattern.GetProperty(L"Exceptions"));
        }
        if (!m_objExceptions) {
            return operation.Fail(error::kNoExceptions,
                                  L"Unable to access exceptions for recurrence pattern");
        }
        return FormatText(L"%ld", m_objExceptions.GetLong(L"Count"));
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
}

/// Takes the exceptions anew, so that the walk sees those made since.
std::wstring COutlookFuncs::RPOpenFirstException() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"RPOpenFirstException");
    if (!m_objRecurrencePattern) {
        return operation.Fail(error::kNoRecord, kPatternNotOpen);
    }
    try {
        m_objExceptions.Release();
        m_objExceptions.Set(m_objRecurrencePattern.GetProperty(L"Exceptions"));
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
    m_lException = 1;
    return operation.EndedWith(RPOpenNextException());
}

std::wstring COutlookFuncs::RPOpenNextException() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"RPOpenNextException");
    if (!m_objExceptions) {
        return operation.Fail(error::kNoRecord, kWalkNotBegun);
    }
    try {
        if (m_lException > m_objExceptions.GetLong(L"Count")) {
            return kEndText;
        }
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
    return operation.EndedWith(RPOpenExceptionAt(m_lException++));
}

/// Replaces an open occurrence without saving it.
std::wstring COutlookFuncs::RPOpenExceptionAt(std::int32_t index) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"RPOpenExceptionAt");
    m_objItemProperty.Release();
    m_objOccurrenceAppointment.Release();
    operation.Param(L"index", FormatText(L"%d", index));
    if (!m_objExceptions) {
        return operation.Fail(error::kNoRecord, kWalkNotBegun);
    }
    try {
        m_objException.Release();
        m_objException.Set(m_objExceptions.Call(L"Item", {outlook::LongValue(index)}));
        if (!m_objException.GetBool(L"Deleted")) {
            m_objOccurrenceAppointment.Set(m_objException.GetProperty(L"AppointmentItem"));
        }
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
    return kSuccessText;
}

std::wstring COutlookFuncs::GetExceptValue(const std::wstring& name) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"GetExceptValue");
    if (!m_objRecurrencePattern) {
        return operation.Fail(error::kNoRecord, kPatternNotOpen);
    }
    if (!m_objExceptions) {
        return operation.Fail(error::kNoRecord, kExceptionNotOpen);
    }
    if (EqualIgnoringCase(name, L"Deleted")) {
        return m_objException.GetBool(L"Deleted") ? L"true" : L"false";
    }
    if (EqualIgnoringCase(name, L"Original Date")) {
        const DATE date = m_objException.GetDate(L"OriginalDate");
        return date == kNoDate ? L"None" : DateText(date);
    }
    return operation.Fail(error::kFieldName);
}

} // namespace varden
