// Root folders: the top-level folder of each message store, chosen by name or walked.
#include "session/COutlookFuncs.h"

#include "frame/ErrorCodes.h"
#include "frame/PlugInLog.h"
#include "mapi/Restrictions.h"
#include "mapi/Tags.h"
#include "session/Operation.h"

#include <utility>

namespace varden {

std::wstring COutlookFuncs::OpenRootFolder(const ScriptText& name) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"OpenRootFolder");
    operation.Param(L"strRootFolderPath", name.value_or(L""));
    m_strFilter.clear(); // also when the change of root folder fails
    if (!FindRootFolder(name.value_or(L""))) {
        return operation.Fail(error::kRootFolderNotFound);
    }
    return kSuccessText;
}

/// Makes the store of that name the store in use, and its top-level folder the root folder. True whenever a
/// root folder is held afterwards, also when it is still the old one.
bool COutlookFuncs::FindRootFolder(std::wstring name) {
    LoggedOperation log(L"FindRootFolder");
    const auto fail = [&](const wchar_t* reason) {
        log.ExitAs(reason);
        return false;
    };
    if (!m_psession) {
        return fail(L"no session");
    }
    if (name.empty()) {
        return fail(L"no strRootFolder");
    }
    m_pMsgStore.Release();
    if (!m_pStoresTable) {
        return fail(L"no message stores table");
    }
    if (name.front() == L'/') {
        name.erase(0, 1);
    }
    if (const wchar_t* failure = OpenStoreByName(name)) {
        return fail(failure);
    }

    LogLine(L"Obtaining folders from Namespace");
    const outlook::Folders folders = m_objNamespace.TopFolders();
    LogLine(L"Matching folders to desired folder");
    const long count = folders.Count();
    for (long i = 1; i <= count; ++i) {
        if (EqualIgnoringCase(folders.Item(i).Name(), name)) {
            m_objRootFolder.Release();
            m_objRootFolder = folders.Item(i);
            LogLine(L"Found Match!");
            break;
        }
    }
    if (!m_objRootFolder) {
        LogLine(L"Failed to find match");
        return fail(kFailedExit);
    }
    m_objCurrentFolder.Release();
    return true;
}

/// Opens the store that bears the display name, into m_pMsgStore. Null, or the word for the log when no store
/// can be looked up; a store that was found and can't be opened is no failure, and leaves none in use.
const wchar_t* COutlookFuncs::OpenStoreByName(const std::wstring& name) {
    LogLine(L"Creating Restriction");
    std::wstring value = name;
    mapi::ExistsAndEquals restriction(mapi::TextProperty(mapi::tag::kDisplayName, value));

    SizedSPropTagArray(2, columns) = {2, {mapi::tag::kEntryId, mapi::tag::kDisplayName}};
    if (FAILED(m_pStoresTable->SetColumns(reinterpret_cast<LPSPropTagArray>(&columns), 0))) {
        return L"unable to apply columns restriction";
    }
    m_pStoresTable->SeekRow(BOOKMARK_BEGINNING, 0, nullptr);
    ULONG rowCount = 0;
    m_pStoresTable->GetRowCount(0, &rowCount);
    mapi::RowSet rows;
    const HRESULT status =
        mapi::QueryAllRows(m_pStoresTable.Get(), nullptr, restriction.Get(), nullptr, 1, rows.Out());
    LogLine(L"Querying Rows");
    if (FAILED(status)) {
        return L"failed to find rows";
    }
    if (!rows.IsPresent()) {
        return L"No rows from Restriction";
    }
    LogLine(L"Opening as Message Store");
    constexpr const wchar_t* notOpened = L"Failed to open Message Store";
    try {
        const SPropValue* entryId = mapi::FindInRow(rows, mapi::tag::kEntryId);
        if (!entryId) {
            return notOpened;
        }
        OpenStore(entryId->Value.bin, m_pMsgStore);
    } catch (...) {
        return notOpened;
    }
    return nullptr;
}

HRESULT COutlookFuncs::OpenStore(const SBinary& entryId, mapi::Pointer<IMsgStore>& store) {
    const ULONG flags = MAPI_BEST_ACCESS | MDB_NO_DIALOG | (m_bStoreOnline ? mapi::kMdbOnline : 0);
    return m_psession->OpenMsgStore(0, entryId.cb, reinterpret_cast<LPENTRYID>(entryId.lpb), nullptr, flags,
                                    store.Out());
}

std::wstring COutlookFuncs::GetFirstRootFolder() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"GetFirstRootFolder");
    m_nRootFolderIndex = 1;
    LogLine(L"Set Root folder index to 1");
    std::wstring answer = GetNextRootFolder();
    LogLine(L"Returning %ls", answer.c_str());
    return operation.EndedWith(std::move(answer));
}

std::wstring COutlookFuncs::GetNextRootFolder() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"GetNextRootFolder");
    const outlook::Folders folders = m_objNamespace.TopFolders();
    if (!folders) {
        LogLine(L"no folders found");
        return operation.Fail(error::kRootFolderNotFound);
    }
    if (m_nRootFolderIndex > folders.Count()) {
        LogLine(L"Found end");
        return kEndText;
    }
    m_objRootFolder.Release();
    m_objRootFolder = folders.Item(m_nRootFolderIndex++);
    std::wstring name = m_objRootFolder.Name();
    LogLine(L"Set internal root folder");
    m_objCurrentFolder.Release();
    return name;
}

} // namespace varden
