// The two tables of statuses, exact matches only.
#include "Diagnostics.h"

#include "frame/PlugInLog.h"
#include "frame/Text.h"

#include <algorithm>
#include <array>

namespace varden {

namespace {

struct StatusRow {
    std::uint32_t status;
    const wchar_t* text;
};

// Both tables ascend by status.
constexpr std::array kNames{
    StatusRow{0x00000001, L"S_FALSE"},
    StatusRow{0x00030200, L"STG_S_CONVERTED"},
    StatusRow{0x00030201, L"STG_S_BLOCK"},
    StatusRow{0x00030202, L"STG_S_RETRYNOW"},
    StatusRow{0x00030203, L"STG_S_MONITORING"},
    StatusRow{0x00030204, L"STG_S_MULTIPLEOPENS"},
    StatusRow{0x00030206, L"STG_S_CANNOTCONSOLIDATE"},
    StatusRow{0x00040203, L"MAPI_W_NO_SERVICE"},
    StatusRow{0x00040380, L"MAPI_W_ERRORS_RETURNED"},
    StatusRow{0x00040481, L"MAPI_W_POSITION_CHANGED"},
    StatusRow{0x00040482, L"MAPI_W_APPROX_COUNT"},
    StatusRow{0x00040580, L"MAPI_W_CANCEL_MESSAGE"},
    StatusRow{0x00040680, L"MAPI_W_PARTIAL_COMPLETION"},
    StatusRow{0x80004002, L"MAPI_E_INTERFACE_NOT_SUPPORTED"},
    StatusRow{0x80004005, L"MAPI_E_CALL_FAILED"},
    StatusRow{0x80030001, L"STG_E_INVALIDFUNCTION"},
    StatusRow{0x80030002, L"STG_E_FILENOTFOUND"},
    StatusRow{0x80030003, L"STG_E_PATHNOTFOUND"},
    StatusRow{0x80030004, L"STG_E_TOOMANYOPENFILES"},
    StatusRow{0x80030005, L"STG_E_ACCESSDENIED"},
    StatusRow{0x80030006, L"STG_E_INVALIDHANDLE"},
    StatusRow{0x80030008, L"STG_E_INSUFFICIENTMEMORY"},
    StatusRow{0x80030009, L"STG_E_INVALIDPOINTER"},
    StatusRow{0x80030012, L"STG_E_NOMOREFILES"},
    StatusRow{0x80030013, L"STG_E_DISKISWRITEPROTECTED"},
    StatusRow{0x80030019, L"STG_E_SEEKERROR"},
    StatusRow{0x8003001D, L"STG_E_WRITEFAULT"},
    StatusRow{0x8003001E, L"STG_E_READFAULT"},
    StatusRow{0x80030020, L"STG_E_SHAREVIOLATION"},
    StatusRow{0x80030021, L"STG_E_LOCKVIOLATION"},
    StatusRow{0x80030050, L"STG_E_FILEALREADYEXISTS"},
    StatusRow{0x80030057, L"STG_E_INVALIDPARAMETER"},
    StatusRow{0x80030070, L"STG_E_MEDIUMFULL"},
    StatusRow{0x800300F0, L"STG_E_PROPSETMISMATCHED"},
    StatusRow{0x800300FA, L"STG_E_ABNORMALAPIEXIT"},
    StatusRow{0x800300FB, L"STG_E_INVALIDHEADER"},
    StatusRow{0x800300FC, L"STG_E_INVALIDNAME"},
    StatusRow{0x800300FD, L"STG_E_UNKNOWN"},
    StatusRow{0x800300FE, L"STG_E_UNIMPLEMENTEDFUNCTION"},
    StatusRow{0x800300FF, L"STG_E_INVALIDFLAG"},
    StatusRow{0x80030100, L"STG_E_INUSE"},
    StatusRow{0x80030101, L"STG_E_NOTCURRENT"},
    StatusRow{0x80030102, L"STG_E_REVERTED"},
    StatusRow{0x80030103, L"STG_E_CANTSAVE"},
    StatusRow{0x80030104, L"STG_E_OLDFORMAT"},
    StatusRow{0x80030105, L"STG_E_OLDDLL"},
    StatusRow{0x80030106, L"STG_E_SHAREREQUIRED"},
    StatusRow{0x80030107, L"STG_E_NOTFILEBASEDSTORAGE"},
    StatusRow{0x80030108, L"STG_E_EXTANTMARSHALLINGS"},
    StatusRow{0x80030109, L"STG_E_DOCFILECORRUPT"},
    StatusRow{0x80030110, L"STG_E_BADBASEADDRESS"},
    StatusRow{0x80030111, L"STG_E_DOCFILETOOLARGE"},
    StatusRow{0x80030112, L"STG_E_NOTSIMPLEFORMAT"},
    StatusRow{0x80030201, L"STG_E_INCOMPLETE"},
    StatusRow{0x80030202, L"STG_E_TERMINATED"},
    StatusRow{0x80040102, L"MAPI_E_NO_SUPPORT"},
    StatusRow{0x80040103, L"MAPI_E_BAD_CHARWIDTH"},
    StatusRow{0x80040105, L"MAPI_E_STRING_TOO_LONG"},
    StatusRow{0x80040106, L"MAPI_E_UNKNOWN_FLAGS"},
    StatusRow{0x80040107, L"MAPI_E_INVALID_ENTRYID"},
    StatusRow{0x80040108, L"MAPI_E_INVALID_OBJECT"},
    StatusRow{0x80040109, L"MAPI_E_OBJECT_CHANGED"},
    StatusRow{0x8004010A, L"MAPI_E_OBJECT_DELETED"},
    StatusRow{0x8004010B, L"MAPI_E_BUSY"},
    StatusRow{0x8004010D, L"MAPI_E_NOT_ENOUGH_DISK"},
    StatusRow{0x8004010E, L"MAPI_E_NOT_ENOUGH_RESOURCES"},
    StatusRow{0x8004010F, L"MAPI_E_NOT_FOUND"},
    StatusRow{0x80040110, L"MAPI_E_VERSION"},
    StatusRow{0x80040111, L"MAPI_E_LOGON_FAILED"},
    StatusRow{0x80040112, L"MAPI_E_SESSION_LIMIT"},
    StatusRow{0x80040113, L"MAPI_E_USER_CANCEL"},
    StatusRow{0x80040114, L"MAPI_E_UNABLE_TO_ABORT"},
    StatusRow{0x80040115, L"MAPI_E_NETWORK_ERROR"},
    StatusRow{0x80040116, L"MAPI_E_DISK_ERROR"},
    StatusRow{0x80040117, L"MAPI_E_TOO_COMPLEX"},
    StatusRow{0x80040118, L"MAPI_E_BAD_COLUMN"},
    StatusRow{0x80040119, L"MAPI_E_EXTENDED_ERROR"},
    StatusRow{0x8004011A, L"MAPI_E_COMPUTED"},
    StatusRow{0x8004011B, L"MAPI_E_CORRUPT_DATA"},
    StatusRow{0x8004011C, L"MAPI_E_UNCONFIGURED"},
    StatusRow{0x8004011D, L"MAPI_E_FAILONEPROVIDER"},
    StatusRow{0x8004011E, L"MAPI_E_UNKNOWN_CPID"},
    StatusRow{0x8004011F, L"MAPI_E_UNKNOWN_LCID"},
    StatusRow{0x80040120, L"MAPI_E_PASSWORD_CHANGE_REQUIRED"},
    StatusRow{0x80040121, L"MAPI_E_PASSWORD_EXPIRED"},
    StatusRow{0x80040122, L"MAPI_E_INVALID_WORKSTATION_ACCOUNT"},
    StatusRow{0x80040123, L"MAPI_E_INVALID_ACCESS_TIME"},
    StatusRow{0x80040124, L"MAPI_E_ACCOUNT_DISABLED"},
    StatusRow{0x80040151, L"REGDB_E_WRITEREGDB"},
    StatusRow{0x800401F3, L"CO_E_CLASSSTRING"},
    StatusRow{0x80040200, L"MAPI_E_END_OF_SESSION"},
    StatusRow{0x80040201, L"MAPI_E_UNKNOWN_ENTRYID"},
    StatusRow{0x80040202, L"MAPI_E_MISSING_REQUIRED_COLUMN"},
    StatusRow{0x80040301, L"MAPI_E_BAD_VALUE"},
    StatusRow{0x80040302, L"MAPI_E_INVALID_TYPE"},
    StatusRow{0x80040303, L"MAPI_E_TYPE_NO_SUPPORT"},
    StatusRow{0x80040304, L"MAPI_E_UNEXPECTED_TYPE"},
    StatusRow{0x80040305, L"MAPI_E_TOO_BIG"},
    StatusRow{0x80040306, L"MAPI_E_DECLINE_COPY"},
    StatusRow{0x80040307, L"MAPI_E_UNEXPECTED_ID"},
    StatusRow{0x80040400, L"MAPI_E_UNABLE_TO_COMPLETE"},
    StatusRow{0x80040401, L"MAPI_E_TIMEOUT"},
    StatusRow{0x80040402, L"MAPI_E_TABLE_EMPTY"},
    StatusRow{0x80040403, L"MAPI_E_TABLE_TOO_BIG"},
    StatusRow{0x80040405, L"MAPI_E_INVALID_BOOKMARK"},
    StatusRow{0x80040500, L"MAPI_E_WAIT"},
    StatusRow{0x80040501, L"MAPI_E_CANCEL"},
    StatusRow{0x80040502, L"MAPI_E_NOT_ME"},
    StatusRow{0x80040600, L"MAPI_E_CORRUPT_STORE"},
    StatusRow{0x80040601, L"MAPI_E_NOT_IN_QUEUE"},
    StatusRow{0x80040602, L"MAPI_E_NO_SUPPRESS"},
    StatusRow{0x80040604, L"MAPI_E_COLLISION"},
    StatusRow{0x80040605, L"MAPI_E_NOT_INITIALIZED"},
    StatusRow{0x80040606, L"MAPI_E_NON_STANDARD"},
    StatusRow{0x80040607, L"MAPI_E_NO_RECIPIENTS"},
    StatusRow{0x80040608, L"MAPI_E_SUBMITTED"},
    StatusRow{0x80040609, L"MAPI_E_HAS_FOLDERS"},
    StatusRow{0x8004060A, L"MAPI_E_HAS_MESSAGES"},
    StatusRow{0x8004060B, L"MAPI_E_FOLDER_CYCLE"},
    StatusRow{0x80040700, L"MAPI_E_AMBIGUOUS_RECIP"},
    StatusRow{0x80070005, L"MAPI_E_NO_ACCESS"},
    StatusRow{0x8007000E, L"MAPI_E_NOT_ENOUGH_MEMORY"},
    StatusRow{0x80070057, L"MAPI_E_INVALID_PARAMETER"},
    StatusRow{0x800C8001, L"E_OLK_REGISTRY"},
    StatusRow{0x800C8002, L"E_OLK_ALREADY_INITIALIZED"},
    StatusRow{0x800C8003, L"E_OLK_PARAM_NOT_SUPPORTED"},
    StatusRow{0x800C8005, L"E_OLK_NOT_INITIALIZED"},
    StatusRow{0x800C800D, L"E_OLK_PROP_READ_ONLY"},
    StatusRow{0x800C8101, L"E_ACCT_NOT_FOUND"},
    StatusRow{0x800C8105, L"E_ACCT_WRONG_SORT_ORDER"},
};

constexpr std::array kWords{
    StatusRow{0x00040203, L"NO SERVICE"},
    StatusRow{0x00040380, L"W ERRORS RETURNEED"},
    StatusRow{0x00040481, L"TABLE POSITION CHANGED"},
    StatusRow{0x00040482, L"TABLE APPROX COUNT"},
    StatusRow{0x00040680, L"MS PARTIAL COMPLETION"},
    StatusRow{0x80004002, L"INTERFACE NOT SUPPORTED"},
    StatusRow{0x80004005, L"MAPI CALL FAILED"},
    StatusRow{0x80040102, L"NO SUPPORT"},
    StatusRow{0x80040103, L"BAD CHARACTER WIDTH"},
    StatusRow{0x80040105, L"STRING TOO LONG"},
    StatusRow{0x80040106, L"UNKNOWN FLAGS"},
    StatusRow{0x80040107, L"INVALID ENTRY ID"},
    StatusRow{0x80040108, L"INVALID OBJECT"},
    StatusRow{0x80040109, L"OBJECT HAS CHANGED"},
    StatusRow{0x8004010A, L"OBJECT HAS BEEN DELETED"},
    StatusRow{0x8004010B, L"MAPI IS BUSY"},
    StatusRow{0x8004010D, L"NOT ENOUGH DISK SPACE"},
    StatusRow{0x8004010E, L"NOT ENOUGH RESOURCES FOUND"},
    StatusRow{0x8004010F, L"NOT FOUND"},
    StatusRow{0x80040110, L"VERSION"},
    StatusRow{0x80040111, L"LOGON FAILED"},
    StatusRow{0x80040112, L"REACHED SESSION LIMIT"},
    StatusRow{0x80040113, L"USER CANCELED"},
    StatusRow{0x80040114, L"UNABLE TO ABORT"},
    StatusRow{0x80040115, L"NETWORK ERROR"},
    StatusRow{0x80040116, L"DISK ERROR"},
    StatusRow{0x80040117, L"TOO COMPLEX"},
    StatusRow{0x80040118, L"BAD COLUMN"},
    StatusRow{0x80040119, L"EXTENDED ERROR"},
    StatusRow{0x8004011A, L"COMPUTED"},
    StatusRow{0x8004011B, L"CORRUPT DATA"},
    StatusRow{0x8004011C, L"UNCONFIGURED"},
    StatusRow{0x8004011D, L"PROVIDER FAILURE"},
    StatusRow{0x8004011E, L"UNKNOWN CPID"},
    StatusRow{0x8004011F, L"UNKNOWN LCID"},
    StatusRow{0x80040120, L"PASSWORD CHANGE REQUIRED"},
    StatusRow{0x80040121, L"PASSWORD EXPIRED"},
    StatusRow{0x80040122, L"INVALID WORKSTATION ACCOUNT"},
    StatusRow{0x80040123, L"INVALID ACCESS TIME"},
    StatusRow{0x80040124, L"ACCOUNT DISABLED"},
    StatusRow{0x80040200, L"END OF SESSION REACHED"},
    StatusRow{0x80040201, L"UNKNOWN ENTRY ID"},
    StatusRow{0x80040202, L"MISSING COLUMN REQUIRED"},
    StatusRow{0x80040301, L"BAD PROPERTY VALUE"},
    StatusRow{0x80040302, L"INVALID PROPERTY TYPE"},
    StatusRow{0x80040303, L"NO SUPPORT FOR PROPERTY"},
    StatusRow{0x80040304, L"UNEXECTED PROPERTY TYPE"},
    StatusRow{0x80040305, L"PROPERTY TOO BIG"},
    StatusRow{0x80040306, L"DECLINE PROPERTY COPY"},
    StatusRow{0x80040307, L"UNEXPECTED PEOPERTY ID"},
    StatusRow{0x80040400, L"UNABLE TO COMPLETE TABLE"},
    StatusRow{0x80040401, L"TABLE TIMEOUT"},
    StatusRow{0x80040402, L"TABLE EMPTY"},
    StatusRow{0x80040403, L"TABLE TOO BIG"},
    StatusRow{0x80040405, L"INVALID TABLE BOOKMARK"},
    StatusRow{0x80040500, L"TRANSPORT WAITING"},
    StatusRow{0x80040501, L"TRANSPORT CANCELED"},
    StatusRow{0x80040502, L"TRANSPORT NOT ME"},
    StatusRow{0x80040600, L"MS CORRUPT"},
    StatusRow{0x80040601, L"MS NOT IN QUEUE"},
    StatusRow{0x80040602, L"MS NO SUPRESS"},
    StatusRow{0x80040604, L"MS COLLISION"},
    StatusRow{0x80040605, L"MS NOT INITIALIZED"},
    StatusRow{0x80040606, L"MS NOT STANDARD"},
    StatusRow{0x80040607, L"MS NO RECIPIENTS"},
    StatusRow{0x80040608, L"MS SUBMITTED"},
    StatusRow{0x80040609, L"MS HAS FOLDERS"},
    StatusRow{0x8004060A, L"MS HAS MESSAGES"},
    StatusRow{0x8004060B, L"MS FOLDER CYCLE"},
    StatusRow{0x80040700, L"AB AMBIGUOUS RECIPIENT"},
    StatusRow{0x80070005, L"NO ACCESS"},
    StatusRow{0x8007000E, L"NOT ENOUGH MEMORY"},
    StatusRow{0x80070057, L"INVALID PARAMETER"},
};

static_assert(std::ranges::is_sorted(kNames, {}, &StatusRow::status));
static_assert(std::ranges::is_sorted(kWords, {}, &StatusRow::status));

template <std::size_t Count>
const wchar_t* Find(const std::array<StatusRow, Count>& table, HRESULT hresult, const wchar_t* otherwise) {
    const auto status = static_cast<std::uint32_t>(hresult);
    const auto row = std::ranges::lower_bound(table, status, {}, &StatusRow::status);
    return row != table.end() && row->status == status ? row->text : otherwise;
}

} // namespace

const wchar_t* mapi_HResultName(HRESULT hresult) {
    return Find(kNames, hresult, L"");
}

std::wstring mapi_HResultToText(HRESULT hresult) {
    return FormatText(L"ERROR: %0.8X %ls", static_cast<unsigned>(hresult),
                      Find(kWords, hresult, L" UNKNOWN MAPI ERROR"));
}

std::wstring mapi_ProblemArrayToString(const SPropProblemArray* problems) {
    const LoggedOperation operation(L"mapi_ProblemArrayToString");
    std::wstring text;
    for (ULONG i = 0; problems && i < problems->cProblem; ++i) {
        const SPropProblem& problem = problems->aProblem[i];
        text += FormatText(L"Index: 0x%08X, ulPropTag: %0.8X, scode: 0x%08X = %ls\r\n",
                           static_cast<unsigned>(problem.ulIndex), static_cast<unsigned>(problem.ulPropTag),
                           static_cast<unsigned>(problem.scode), mapi_HResultToText(problem.scode).c_str());
    }
    return text;
}

} // namespace varden
