// The catalogue: a row for each function.
#include "FunctionCatalogue.h"

#include "FunctionCalls.h"
#include "ProcessObjects.h"
#include "session/COutlookFuncs.h"

#include <array>
#include <utility>

namespace varden {

namespace {

constexpr ArgumentRow Text(const wchar_t* logName) {
    return {ArgumentForm::Text, logName};
}
constexpr ArgumentRow Texts(const wchar_t* logName) {
    return {ArgumentForm::RepeatedText, logName};
}
constexpr ArgumentRow Hidden(const wchar_t* logName) {
    return {ArgumentForm::HiddenText, logName};
}
constexpr ArgumentRow Number(const wchar_t* logName) {
    return {ArgumentForm::Number, logName};
}
constexpr ArgumentRow Flag(const wchar_t* logName) {
    return {ArgumentForm::FlagWord, logName};
}
constexpr ArgumentRow HostBoolean(const wchar_t* logName) {
    return {ArgumentForm::HostBoolean, logName};
}

/// An engine operation without arguments as a function's call.
template <std::wstring (COutlookFuncs::*Operation)()>
std::wstring Plain(const Arguments&) {
    return (Engine().*Operation)();
}

/// An engine operation that takes the function's one text.
template <std::wstring (COutlookFuncs::*Operation)(const ScriptText&)>
std::wstring OneText(const Arguments& arguments) {
    return (Engine().*Operation)(arguments[0].text);
}

/// An engine operation that takes the function's two texts.
template <std::wstring (COutlookFuncs::*Operation)(const ScriptText&, const ScriptText&)>
std::wstring TwoTexts(const Arguments& arguments) {
    return (Engine().*Operation)(arguments[0].text, arguments[1].text);
}

/// An engine operation that takes the function's one flag.
template <std::wstring (COutlookFuncs::*Operation)(bool)>
std::wstring OneFlag(const Arguments& arguments) {
    return (Engine().*Operation)(arguments[0].flag);
}

/// An engine operation that takes the function's one number.
template <std::wstring (COutlookFuncs::*Operation)(std::int32_t)>
std::wstring OneNumber(const Arguments& arguments) {
    return (Engine().*Operation)(arguments[0].number);
}

constexpr DetailedLog kSetFieldDataLog{
    .testing = L"Testing to continue execution (min params: 2, max params: 2)...",
    .before = L"Entering m_objFuncs->SetFieldData...",
    .after = L"Done with m_objFuncs->SetFieldData",
};
constexpr DetailedLog kSaveRecordLog{
    .testing = L"Testing to continue execution (min params: 0, max params: 1)...",
    .tellsHooks = true,
    .hasValue = L"strOptions has value!",
    .before = L"Entering m_objFuncs->SaveRecord...",
    .after = L"Done with m_objFuncs->SaveRecord",
};
constexpr DetailedLog kAddAttachmentLog{
    .testing = L"Testing to continue execution (min params: 2, max params: 2)...",
    .tellsHooks = true,
    .before = L"Calling m_objFuncs->AddAttachment...",
    .after = L"Done calling m_objFuncs->AddAttachment.",
};

using E = COutlookFuncs;

// The two counts differ for some functions, and both stay: the first is what the host tests, the second what
// the function itself lets through.
constexpr auto kFunctions = std::to_array<FunctionRow>({
    {151, L"VARD_Version", {0, 1}, {0, 2}, {Text(L"stra"), Flag(L"bool0")}, CallVersion, 0},
    {152, L"VARD_Authenticate", {1, 2}, {0, 2}, {Text(L"stra"), Hidden(L"strb")}, TwoTexts<&E::Authenticate>},
    {153, L"VARD_OpenRootFolder", {1, 1}, {1, 1}, {Text(L"stra")}, CallOpenRootFolder},
    {154, L"VARD_OpenFolder", {1, 1}, {1, 1}, {Text(L"stra")}, CallOpenFolder},
    {155, L"VARD_NewRecord", {0, 1}, {0, 1}, {Text(L"stra")}, OneText<&E::NewRecord>},
    {156,
     L"VARD_SetFieldData",
     {2, 2},
     {2, 2},
     {Text(L"stra"), Text(L"strb")},
     TwoTexts<&E::SetFieldData>,
     kUsual,
     &kSetFieldDataLog},
    {157,
     L"VARD_SaveRecord",
     {0, 1},
     {0, 1},
     {Text(L"strOptions")},
     OneText<&E::SaveRecord>,
     kUsual,
     &kSaveRecordLog},
    {158, L"VARD_DeleteRecord", {1, 2}, {1, 2}, {Text(L"stra"), Text(L"strb")}, TwoTexts<&E::DeleteRecord>},
    {159,
     L"VARD_DeleteAllRecords",
     {1, 2},
     {1, 2},
     {Flag(L"bool0"), Flag(L"bool1")},
     [](const Arguments& a) { return Engine().DeleteAllRecords(a[0].flag, a[1].flag); }},
    {160,
     L"VARD_OpenRecord",
     {1, 1},
     {1, 1},
     {Text(L"stra")},
     [](const Arguments& a) { return Engine().OpenRecord(a[0].text, RecordSource::EntryId); }},
    {161, L"VARD_GetFieldData", {1, 1}, {1, 1}, {Text(L"stra")}, CallGetFieldData},
    {162, L"VARD_VerifyFieldData", {2, 2}, {2, 2}, {Text(L"stra"), Text(L"strb")}, CallVerifyFieldData},
    {163, L"VARD_GetFirstRecord", {0, 0}, {0, 0}, {}, Plain<&E::GetFirstRecord>},
    {164, L"VARD_GetNextRecord", {0, 0}, {0, 0}, {}, Plain<&E::GetNextRecord>},
    {165, L"VARD_GetRecordCount", {0, 0}, {0, 0}, {}, Plain<&E::GetRecordCount>},
    {166, L"VARD_GetFirstFolder", {0, 0}, {0, 1}, {Text(L"strType")}, OneText<&E::GetFirstFolder>},
    {167, L"VARD_GetNextFolder", {0, 0}, {0, 0}, {}, Plain<&E::GetNextFolder>},
    {168, L"VARD_GetFolderID", {0, 0}, {0, 0}, {}, Plain<&E::GetFolderID>},
    {169, L"VARD_MoveRecord", {1, 1}, {1, 1}, {Text(L"stra")}, OneText<&E::MoveRecord>},
    {170, L"VARD_EmptyAllDeletedItems", {0, 0}, {0, 0}, {}, Plain<&E::EmptyAllDeletedItems>},
    {171,
     L"VARD_SaveRecord",
     {1, 2},
     {2, 2},
     {Text(L"stra"), Text(L"strb")},
     [](const Arguments& a) {
         return Engine().AddAttachment(a[0].text.value_or(L""), a[1].text.value_or(L""));
     },
     kUsual,
     &kAddAttachmentLog},
    {172,
     L"VARD_GetAttachmentName",
     {1, 2},
     {1, 2},
     {Number(L"lIndex"), Text(L"strb")},
     CallGetAttachmentName},
    {173,
     L"VARD_SaveAttachment",
     {1, 2},
     {2, 2},
     {Text(L"stra"), Number(L"lIndex")},
     [](const Arguments& a) { return Engine().SaveAttachment(a[0].text, a[1].number); }},
    {174, L"VARD_GetAttachmentCount", {0, 0}, {0, 0}, {}, Plain<&E::GetAttachmentCount>},
    {175,
     L"VARD_SetCustomFieldData",
     {2, 3},
     {2, 3},
     {Text(L"stra"), Text(L"strb"), Text(L"strc")},
     [](const Arguments& a) {
         return Engine().SetCustonFieldData(a[0].text, a[1].text, a[2].text.value_or(L"Text"));
     }},
    {176, L"VARD_GetCustomFieldData", {1, 1}, {1, 1}, {Text(L"stra")}, OneText<&E::GetCustomFieldData>},
    {177, L"VARD_GetFirstRootFolder", {0, 0}, {0, 0}, {}, Plain<&E::GetFirstRootFolder>},
    {178, L"VARD_GetNextRootFolder", {0, 0}, {0, 0}, {}, Plain<&E::GetNextRootFolder>},
    {179, L"VARD_GetFolderType", {0, 0}, {0, 0}, {}, Plain<&E::GetFolderType>},
    {180, L"VARD_GetCurrentFolderName", {0, 0}, {0, 0}, {}, Plain<&E::GetCurrentFolderName>},
    {181, L"VARD_NewFolder", {2, 2}, {1, 2}, {Text(L"stra"), Text(L"strb")}, TwoTexts<&E::CreateFolder>},
    {184, L"VARD_FilterByLastModified", {1, 1}, {1, kAnyCount}, {Texts(L"stra")}, CallSearch, kGuarded},
    {185,
     L"VARD_FilterApply",
     {1, 1},
     {1, 1},
     {Text(L"stra")},
     [](const Arguments& a) { return Engine().FilterApply(a[0].text.value_or(L"")); }},
    {182,
     L"VARD_SendMail",
     {6, 7},
     {6, 7},
     {Text(L"strTo"), Text(L"strCc"), Text(L"strBcc"), Text(L"strSubject"), Text(L"strBody"), Text(L"strAtt"),
      Flag(L"bUseHTML")},
     CallSendMail},
    {183,
     L"VARD_OpenSharedFolder",
     {2, 2},
     {2, 2},
     {Text(L"stra"), Number(L"lIndex")},
     [](const Arguments& a) { return Engine().OpenSharedFolder(a[0].text, a[1].number); }},
    {190,
     L"VARD_SaveRecordAs",
     {1, 1},
     {1, 2},
     {Text(L"stra"), Text(L"strType")},
     TwoTexts<&E::SaveRecordAsMSG>},
    {191,
     L"VARD_Display",
     {0, 1},
     {0, 1},
     {HostBoolean(L"bool0")},
     [](const Arguments& a) { return Engine().Display(!a[0].present || a[0].flag); }},
    {192,
     L"VARD_CreateCustomField",
     {2, 2},
     {2, 2},
     {Text(L"stra"), Text(L"strb")},
     TwoTexts<&E::CreateCustomField>},
    {194, L"VARD_GetDefaultFolderName", {1, 1}, {1, 1}, {Text(L"stra")}, OneText<&E::GetDefaultFolderName>},
    {196,
     L"AddOneOffDistListMember",
     {3, 3},
     {3, 3},
     {Text(L"stra"), Text(L"strb"), Text(L"strc")},
     [](const Arguments& a) { return Engine().AddOneOffDistListMember(a[0].text, a[1].text, a[2].text); }},
    {197, L"VARD_DeleteCurrentRecord", {1, 1}, {1, 1}, {Flag(L"bool0")}, OneFlag<&E::DeleteCurrentRecord>},
    {200, L"VARD_RPOpenOccurrence", {1, 1}, {1, 1}, {Text(L"stra")}, OneText<&E::OpenRecurrenceOccurrence>},
    {201,
     L"VARD_RPClearRecurrencePattern",
     {0, 0},
     {0, 0},
     {},
     Plain<&E::ClearRecurrencePattern>,
     kGuarded | kLogged},
    {202, L"VARD_RPGetExceptionCount", {0, 0}, {0, 0}, {}, Plain<&E::GetRecurPatternExceptionCount>},
    {203, L"VARD_RPOpenRecurrencePattern", {0, 0}, {0, 0}, {}, Plain<&E::OpenRecurrencePattern>},
    {204, L"VARD_RPOpenFirstException", {0, 0}, {0, 0}, {}, Plain<&E::RPOpenFirstException>},
    {205, L"VARD_RPOpenNextException", {0, 0}, {0, 0}, {}, Plain<&E::RPOpenNextException>},
    {206, L"VARD_RPOpenExceptionAt", {1, 1}, {1, 1}, {Number(L"lIndex")}, OneNumber<&E::RPOpenExceptionAt>},
    {207,
     L"VARD_RPCloseOccurrenceItem",
     {0, 1},
     {0, 1},
     {Flag(L"bool0")},
     OneFlag<&E::RPCloseOccurrenceItem>,
     kGuarded | kLogged},
    {208,
     L"VARD_RPCloseRecurrencePattern",
     {0, 1},
     {0, 1},
     {Flag(L"bool0")},
     OneFlag<&E::RPCloseRecurrencePattern>},
    {213,
     L"VARD_RPDeleteOccurrence",
     {1, 1},
     {1, 1},
     {Text(L"stra")},
     OneText<&E::DeleteRecurrenceOccurrence>},
    {219, L"", {1, 1}, {1, 1}, {Flag(L"bool0")}, CallSetStoreOnline, kHooks | kGuarded},
    {193, L"VARD_GetLastError", {0, 1}, {0, 1}, {Text(L"stra")}, CallGetLastError},
    {214, L"VARD_OutlookVersion", {0, 0}, {0, kAnyCount}, {}, Plain<&E::OutlookVersion>, kGuarded},
    {215,
     L"VARD_OpenSavedItem",
     {1, 1},
     {1, 1},
     {Text(L"stra")},
     [](const Arguments& a) { return Engine().OpenRecord(a[0].text, RecordSource::SavedItem); },
     kGuarded},
    {218,
     L"VARD_GetAttachmentSize",
     {1, 1},
     {1, 1},
     {Number(L"lIndex")},
     OneNumber<&E::GetAttachmentSize>,
     kGuarded},

    // From here on: ready, and not registered. The last three have no prototype in the string table.
    {195, L"VARD_AddDistListMember", {1, 1}, {1, 1}, {Text(L"stra")}, OneText<&E::AddDistListMember>},
    {198,
     L"VARD_ReplyToMessage",
     {6, 6},
     {6, 6},
     {Text(L"stra"), Text(L"strb"), Text(L"strc"), Text(L"strd"), Text(L"stre"), Flag(L"bool0")},
     [](const Arguments& a) {
         return Engine().ReplyToMessage(a[0].text, a[1].text, a[2].text, a[3].text, a[4].text, a[5].flag);
     }},
    {210, L"VARD_LogClear", {0, 0}, {0, kAnyCount}, {}, CallLogClear, 0},
    {211, L"VARD_LogMoveToDesktop", {1, 1}, {1, 1}, {Text(L"stra")}, CallLogMoveToDesktop, kNoResult},
    {212, L"VARD_LogSet", {1, 2}, {1, 2}, {Flag(L"bool0"), Text(L"stra")}, CallLogSet, 0},
    {216, L"VARD_GALCount", {0, 0}, {0, kAnyCount}, {}, Plain<&E::GALCount>, kGuarded | kLogged},
    {217,
     L"VARD_GALGetField",
     {0, 2},
     {0, kAnyCount},
     {Text(L"stra"), Number(L"lIndex")},
     [](const Arguments& a) { return Engine().GALGetField(a[0].text, a[1].number); },
     kGuarded | kLogged},
    {220, L"VARD_ItemExist", {0, 0}, {0, 0}, {}, CallItemExist, kHooks | kLogged},
    {221,
     L"VARD_RPEIGetPropertyCount",
     {0, 0},
     {0, 0},
     {},
     Plain<&E::RPEIGetPropertyCount>,
     kGuarded | kLogged},
    {222, L"VARD_RPEIOpenPropertyAt", {1, 1}, {1, 1}, {Number(L"lIndex")}, OneNumber<&E::RPEIOpenPropertyAt>},
});

template <std::size_t Index>
std::int16_t Handle(std::int16_t, const host::ExprEnv*, const host::DataVect* arguments, host::Data* result) {
    return RunFunction(kFunctions[Index], arguments, result);
}

template <std::size_t... Indices>
constexpr auto MakeHandlers(std::index_sequence<Indices...>) {
    return std::array<host::ExternalFunction, sizeof...(Indices)>{Handle<Indices>...};
}

constexpr auto kHandlers = MakeHandlers(std::make_index_sequence<kFunctions.size()>());

} // namespace

std::span<const FunctionRow> AllFunctions() {
    return kFunctions;
}

host::ExternalFunction HandlerOf(const FunctionRow& row) {
    return kHandlers[static_cast<std::size_t>(&row - kFunctions.data())];
}

} // namespace varden
