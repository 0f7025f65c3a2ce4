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

std::wstring E::GetDefaultFolderName(const ScriptText&) {
    return Unavailable();
}
std::wstring E::OpenSharedFolder(const ScriptText&, std::int32_t) {
    return Unavailable();
}
std::wstring E::SaveRecord(const ScriptText&) {
    return Unavailable();
}
std::wstring E::DeleteRecord(const ScriptText&, const ScriptText&) {
    return Unavailable();
}
std::wstring E::DeleteCurrentRecord(bool) {
    return Unavailable();
}
std::wstring E::DeleteAllRecords(bool, bool) {
    return Unavailable();
}
std::wstring E::EmptyAllDeletedItems() {
    return Unavailable();
}
std::wstring E::MoveRecord(const ScriptText&) {
    return Unavailable();
}
std::wstring E::Display(bool) {
    return Unavailable();
}
std::wstring E::ReplyToMessage(const ScriptText&, const ScriptText&, const ScriptText&, const ScriptText&,
                               const ScriptText&, bool) {
    return Unavailable();
}
std::wstring E::SaveRecordAsMSG(const ScriptText&, const ScriptText&) {
    return Unavailable();
}
std::wstring E::CreateMessage(const ScriptText&, const ScriptText&, const ScriptText&, const std::wstring&,
                              const std::wstring&, const std::vector<std::wstring>&, bool) {
    return Unavailable();
}
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
std::wstring E::AddAttachment(const std::wstring&, const std::wstring&) {
    return Unavailable();
}
std::wstring E::GetAttachmentName(std::int32_t, bool) {
    return Unavailable();
}
std::wstring E::SaveAttachment(const ScriptText&, std::int32_t) {
    return Unavailable();
}
std::wstring E::GetAttachmentCount() {
    return Unavailable();
}
std::wstring E::GetAttachmentSize(std::int32_t) {
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

} // namespace varden
