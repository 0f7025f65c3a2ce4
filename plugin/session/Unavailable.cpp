// Operations that this version doesn't have.
#include "COutlookFuncs.h"
#include "Operation.h"

#include "frame/ErrorCodes.h"

namespace varden {

namespace {

std::wstring Unavailable() {
    return Fail(error::kUnavailable);
}

} // namespace

using E = COutlookFuncs;

std::wstring E::OpenRecurrencePattern() {
    return Unavailable();
}
std::wstring E::ClearRecurrencePattern() {
    return Unavailable();
}
std::wstring E::RPCloseRecurrencePattern(bool) {
    return Unavailable();
}
std::wstring E::OpenRecurrenceOccurrence(const ScriptText&) {
    return Unavailable();
}
std::wstring E::DeleteRecurrenceOccurrence(const ScriptText&) {
    return Unavailable();
}
std::wstring E::RPCloseOccurrenceItem(bool) {
    return Unavailable();
}
std::wstring E::GetRecurPatternExceptionCount() {
    return Unavailable();
}
std::wstring E::RPOpenFirstException() {
    return Unavailable();
}
std::wstring E::RPOpenNextException() {
    return Unavailable();
}
std::wstring E::RPOpenExceptionAt(std::int32_t) {
    return Unavailable();
}
std::wstring E::RPEIGetPropertyCount() {
    return Unavailable();
}
std::wstring E::RPEIOpenPropertyAt(std::int32_t) {
    return Unavailable();
}
std::wstring E::SetCustonFieldData(const ScriptText&, const ScriptText&, const std::wstring&) {
    return Unavailable();
}
std::wstring E::GetCustomFieldData(const ScriptText&) {
    return Unavailable();
}
std::wstring E::CreateCustomField(const ScriptText&, const ScriptText&) {
    return Unavailable();
}
std::wstring E::AddOneOffDistListMember(const ScriptText&, const ScriptText&, const ScriptText&) {
    return Unavailable();
}
std::wstring E::AddDistListMember(const ScriptText&) {
    return Unavailable();
}
std::wstring E::GALCount() {
    return Unavailable();
}
std::wstring E::GALGetField(const ScriptText&, std::int32_t) {
    return Unavailable();
}

/// Meetings don't go out yet.
HRESULT E::mapi_PrepareMeetingProps(IMessage*, IMsgStore*) {
    return S_OK;
}
HRESULT E::mapi_SendMeeting(IMessage*, IMsgStore*) {
    return MAPI_E_NO_SUPPORT;
}
HRESULT E::mapi_SendMeetingAccept(IMessage*, IMsgStore*) {
    return MAPI_E_NO_SUPPORT;
}

} // namespace varden
