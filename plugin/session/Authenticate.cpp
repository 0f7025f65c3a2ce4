// Logging on: Outlook, its namespace, the MAPI session, the default store and root folder.
#include "COutlookFuncs.h"
#include "Operation.h"

#include "frame/ErrorCodes.h"
#include "frame/PlugInLog.h"
#include "frame/ProcessObjects.h"
#include "mapi/Diagnostics.h"
#include "mapi/InterfaceIds.h"

#include <array>

namespace varden {

namespace {

/// The numbered ids first, newest first; 13 was never used.
constexpr std::array kProgramIds{
    L"Outlook.Application.16", L"Outlook.Application.15", L"Outlook.Application.14",
    L"Outlook.Application.12", L"Outlook.Application.11", L"Outlook.Application",
};

constexpr DWORD kAnyServer =
    CLSCTX_INPROC_SERVER | CLSCTX_INPROC_HANDLER | CLSCTX_LOCAL_SERVER | CLSCTX_REMOTE_SERVER;

constexpr int kFirstRefusedVersion = 17;

HRESULT StartServer(const wchar_t* programId, outlook::Application& application) {
    CLSID classId;
    HRESULT status = CLSIDFromProgID(programId, &classId);
    if (FAILED(status)) {
        return status;
    }
    IUnknownPtr server;
    status = CoCreateInstance(classId, nullptr, kAnyServer, IID_IUnknown, reinterpret_cast<void**>(&server));
    if (FAILED(status)) {
        return status;
    }
    status = OleRun(server);
    return FAILED(status) ? status : application.Query(server);
}

/// The truth that Outlook's logon is given: 1, not automation's -1.
_variant_t LogonFlag() {
    _variant_t flag;
    flag.vt = VT_BOOL;
    flag.boolVal = 1;
    return flag;
}

HRESULT InitializeMapi() {
    if (!mapi::Initialize.IsAvailable()) {
        return HRESULT_FROM_WIN32(ERROR_PROC_NOT_FOUND);
    }
    MAPIINIT_0 options{};
    return mapi::Initialize(&options);
}

} // namespace

std::wstring COutlookFuncs::Authenticate(const ScriptText& profile, const ScriptText& password) {
    Operation operation(L"Authenticate()");
    operation.Param(L"lpstrUsername", profile.value_or(L""));
    operation.Param(L"lpstrPassword", L"HIDDEN");
    ClearLastErrorRecord(LastError());
    if (m_objApplication) {
        ReleaseSession();
        m_objApplication.Release();
    }
    try {
        // Each step is taken when the one before it has answered "0".
        std::wstring answer = StartOutlook();
        if (answer == kSuccessText) {
            answer = LogOn(profile.value_or(L""), password.value_or(L""));
        }
        if (answer == kSuccessText) {
            answer = TakeMapiSession();
        }
        if (answer == kSuccessText) {
            answer = TakeDefaultFolders();
        }
        if (answer != kSuccessText) {
            operation.Failed();
        }
        return answer;
    } catch (...) {
        LogoffSession(); // a logon that a COM failure cut short leaves nothing half open either
        throw;
    }
}

/// The application, of a version that is known to work.
std::wstring COutlookFuncs::StartOutlook() {
    HRESULT status = E_FAIL;
    for (const wchar_t* programId : kProgramIds) {
        status = StartServer(programId, m_objApplication);
        if (SUCCEEDED(status)) {
            break;
        }
    }
    if (FAILED(status)) {
        LogoffSession();
        return Fail(error::kLibraryNotLoaded, FormatText(L"Error 0x%08x", static_cast<unsigned>(status)));
    }
    LogLine(L"Created Outlook Item");
    if (OutlookMajorVersion() >= kFirstRefusedVersion) {
        LogoffSession();
        return Fail(error::kOutlookVersion);
    }
    return kSuccessText;
}

std::wstring COutlookFuncs::LogOn(const std::wstring& profile, const std::wstring& password) {
    m_objNamespace = outlook::NameSpace(m_objApplication.Call(L"GetNamespace", {L"MAPI"}));
    if (!m_objNamespace) {
        ReleaseItems();
        LogoffSession();
        return Fail(error::kLibraryNotLoaded, L"MAPI Load Failed");
    }
    LogLine(L"Created Namespace");
    _variant_t nothing;
    const HRESULT status = m_objNamespace.TryCall(
        L"Logon", {outlook::TextValue(profile), outlook::TextValue(password), LogonFlag(), LogonFlag()},
        nothing);
    if (status != S_OK) {
        // The number in the text and the code of the record differ.
        const std::wstring reason =
            FormatText(L"-1001 UNABLE TO Logon 0x%08x", static_cast<unsigned>(status));
        ReleaseItems();
        LogoffSession();
        LogLine(reason);
        return Fail(error::kLogonFailed, reason);
    }
    LogLine(L"Logged on to Namespace");
    return kSuccessText;
}

/// The MAPI session that Outlook works in, its stores table and the default store.
std::wstring COutlookFuncs::TakeMapiSession() {
    const auto fail = [&](HRESULT subcode, std::wstring_view extra) {
        LogoffSession();
        return Fail(error::kLogonFailed, subcode, extra);
    };

    HRESULT status = InitializeMapi();
    if (FAILED(status)) {
        return fail(status, mapi_HResultName(status));
    }
    LogLine(L"Initialized MAPI");
    const IUnknownPtr object = outlook::UnknownOf(m_objNamespace.GetProperty(L"MAPIOBJECT"));
    if (!object) {
        return fail(status, L"Error creating IUnknown");
    }
    status = m_psession.Query(object, mapi::kIidSession);
    if (FAILED(status)) {
        return fail(status, mapi_HResultName(status));
    }
    LogLine(L"Initialized MAPI");

    if (FAILED(m_psession->GetMsgStoresTable(0, m_pStoresTable.Out()))) {
        return fail(S_OK, L"Unable to get message stores table");
    }
    LogLine(L"Obtained MessageStores Table");
    // A default store that can't be opened is no failure here: what needs it fails later.
    mapi_OpenDefaultMessageStore();
    m_pMsgStore.Query(m_pDefaultMsgStore.Get(), mapi::kIidMsgStore);
    return kSuccessText;
}

/// The default root folder, above the Inbox, and the root of the public folders where there is one.
std::wstring COutlookFuncs::TakeDefaultFolders() {
    outlook::Folder inbox;
    if (const HRESULT status = m_objNamespace.TryDefaultFolder(outlook::DefaultFolder::Inbox, inbox);
        status != S_OK) {
        ReleaseItems();
        LogoffSession();
        return Fail(error::kLogonFailed, status, L"Unable to open Inbox");
    }
    LogLine(L"Obtained Default Inbox");
    m_objRootFolder = outlook::Folder(inbox.Parent());
    m_strDefaultRootName = m_objRootFolder.Name();
    LogLine(L"Obtained Default Root");
    FindPublicRoot();
    return kSuccessText;
}

void COutlookFuncs::FindPublicRoot() {
    m_strPublicRootName.clear();
    outlook::Folder folder;
    if (FAILED(m_objNamespace.TryDefaultFolder(outlook::DefaultFolder::AllPublicFolders, folder)) ||
        !folder) {
        return;
    }
    if (const outlook::Folder root(folder.Parent()); root) {
        LogLine(L"Obtained Default Public Folder");
        m_strPublicRootName = root.Name();
    }
}

int COutlookFuncs::OutlookMajorVersion() const {
    const std::wstring version = m_objApplication.Version();
    return static_cast<int>(LeadingNumber(version.substr(0, version.find(L'.'))));
}

std::wstring COutlookFuncs::OutlookVersion() {
    return m_objApplication.Version();
}

} // namespace varden
