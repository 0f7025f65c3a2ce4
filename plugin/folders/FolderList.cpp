// The folder list: all folders below the root folder, walked one by one.
#include "session/COutlookFuncs.h"

#include "frame/ErrorCodes.h"
#include "frame/PlugInLog.h"
#include "mapi/InterfaceIds.h"
#include "session/Operation.h"

#include <utility>

namespace varden {

/// Lists paths and entry ids, so that the walk needs no collection to stay open.
bool COutlookFuncs::BuildMailFolderList() {
    LoggedOperation log(L"BuildMailFolderList");
    m_aFolderPaths.clear();
    m_aFolderIDs.clear();
    const outlook::Folders folders = m_objRootFolder.Subfolders();
    LogLine(L"grabbed folders from root folder");
    if (!folders) {
        log.ExitAs(kFailedExit);
        return false;
    }
    LogLine(L"updating folders list");
    AddFoldersToList(folders, L"/");
    m_nFolderIndex = 0;
    LogLine(L"set folder index to 0");
    return true;
}

/// Depth first, a folder before its subfolders. A COM failure ends this level silently; what was listed
/// stays.
void COutlookFuncs::AddFoldersToList(const outlook::Folders& folders, const std::wstring& prefix) {
    try {
        const long count = folders.Count();
        for (long i = 1; i <= count; ++i) {
            const outlook::Folder folder = folders.Item(i);
            const std::wstring path = prefix + folder.Name();
            const std::wstring entryId = folder.EntryID();
            m_aFolderPaths.push_back(path);
            m_aFolderIDs.push_back(entryId);
            if (const outlook::Folders subfolders = folder.Subfolders(); subfolders) {
                AddFoldersToList(subfolders, path + L"/");
            }
        }
    } catch (const _com_error&) {
        return;
    }
}

std::wstring COutlookFuncs::GetFirstFolder(const ScriptText& item) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"GetFirstFolder");
    operation.OptionalParam(L"strItem", item);
    m_nFolderIndex = 0;
    LogLine(L"Set folder index to 1"); // the value is 0
    if (!BuildMailFolderList()) {
        return operation.Fail(error::kMapi, L"Unable to build the mail folder list");
    }
    std::wstring answer = GetNextFolder();
    LogLine(L"Returning %ls", answer.c_str());
    return operation.EndedWith(std::move(answer));
}

/// Makes the folder current, but leaves items, count, item type and filter as they stand.
std::wstring COutlookFuncs::GetNextFolder() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"GetNextFolder");
    const auto index = static_cast<std::size_t>(m_nFolderIndex);
    if (index >= m_aFolderPaths.size()) {
        LogLine(L"folder index at or greater than folder list of names");
        return kEndText;
    }
    m_objCurrentFolder.Release();
    LogLine(L"getting current folder from namespace");
    m_objCurrentFolder = m_objNamespace.FolderFromID(m_aFolderIDs[index]);
    if (!m_objCurrentFolder) {
        return operation.Fail(error::kMapi, L"Unable to get folder from id!" + m_aFolderIDs[index]);
    }
    const std::wstring name = m_objCurrentFolder.Name();
    LogLine(L"Folder name from current folder: %ls", name.c_str());

    m_pMapiFolder.Release();
    _variant_t object;
    if (const HRESULT status = m_objCurrentFolder.TryGet(L"MAPIOBJECT", object); FAILED(status)) {
        return operation.Fail(error::kMapi, status, L"Unable to obtian MAPI Object for " + name);
    }
    LogLine(L"obtained unknown obj for current folder");
    if (const HRESULT status = m_pMapiFolder.Query(outlook::UnknownOf(object), mapi::kIidFolder);
        FAILED(status)) {
        return operation.Fail(error::kMapi, status, L"Unable to obtain MAPI interface for folder");
    }
    LogLine(L"obtained mapi obj for current folder");
    ++m_nFolderIndex;
    return m_aFolderPaths[index];
}

} // namespace varden
