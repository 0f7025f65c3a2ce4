// Folder paths: finding a folder by its path, making one, and what becomes current with it.
#include "session/COutlookFuncs.h"

#include "frame/ComErrorText.h"
#include "frame/ErrorCodes.h"
#include "frame/PlugInLog.h"
#include "mapi/InterfaceIds.h"
#include "session/Operation.h"

#include <array>
#include <optional>
#include <utility>

namespace varden {

namespace {

constexpr wchar_t kSeparator = L'/';

/// The word of each OlItemType, by its number.
constexpr std::array kFolderTypeWords{L"Mail",    L"Calendar", L"Contacts", L"Tasks",
                                      L"Journal", L"Note",     L"Post"};

struct FolderModule {
    const wchar_t* word;
    std::int16_t type; ///< what Folders.Add takes
};

constexpr std::array kFolderModules{
    FolderModule{L"Contact", 10}, FolderModule{L"Post", 6},   FolderModule{L"Calendar", 9},
    FolderModule{L"Mail", 6},     FolderModule{L"Tasks", 13}, FolderModule{L"Note", 12},
    FolderModule{L"Journal", 11},
};

/// Sent for an absent module word; what comes of it is Outlook's affair.
constexpr std::optional<std::int16_t> kUnspecifiedFolderType = 99;

std::optional<std::int16_t> FolderTypeOf(const std::wstring& module) {
    const FolderModule* known = FindByWord(kFolderModules, &FolderModule::word, module);
    return known ? std::optional(known->type) : std::nullopt;
}

/// The folder of exactly this name; nothing when there is none.
outlook::Folder FindByName(const outlook::Folders& folders, const std::wstring& name) {
    const long count = folders.Count();
    for (long i = 1; i <= count; ++i) {
        if (outlook::Folder folder = folders.Item(i); folder.Name() == name) {
            return folder;
        }
    }
    return {};
}

/// Takes the first element off a path. A separator in the first place, or none, makes the whole rest one
/// element.
std::wstring CutElement(std::wstring& path) {
    const std::size_t separator = path.find(kSeparator);
    if (separator == 0 || separator == std::wstring::npos) {
        return std::exchange(path, {});
    }
    std::wstring element = path.substr(0, separator);
    path.erase(0, separator + 1);
    return element;
}

} // namespace

void COutlookFuncs::TakeOverFolder() {
    m_nItemType = m_objCurrentFolder.DefaultItemType();
    m_objItems.Release();
    m_pMapiFolder.Release();
    LogLine(L"setting items");
    m_objItems = m_objCurrentFolder.AllItems();
    m_lItemCount = m_objItems.Count();
    LogLine(L"setting internal mapi pointer");
    m_pMapiFolder.Query(outlook::UnknownOf(m_objCurrentFolder.MapiObject()), mapi::kIidFolder);
    m_strFilter.clear();
}

std::wstring COutlookFuncs::OpenFolder(const ScriptText& path) {
    Operation operation(L"OpenFolder");
    operation.Param(L"strFoldePath", path.value_or(L""));
    if (!BeginOperation()) {
        return operation.Failed();
    }
    if (!FindFolder(path.value_or(L""))) {
        return operation.Fail(error::kFolderNotFound);
    }
    LogLine(L"found folder - setting types");
    TakeOverFolder();
    return kSuccessText;
}

/// Walks the path, making each folder that it matches the current one. A missing element doesn't end the
/// walk: the next one is looked for among the root folders. So the result is that of the last element alone.
bool COutlookFuncs::FindFolder(std::wstring path) {
    LoggedOperation log(L"FindFolder");
    log.Param(L"strFolder", path);
    const auto notFound = [&] {
        log.ExitAs(kFailedExit);
        return false;
    };
    m_objItems.Release();
    if (!m_objCurrentFolder && !path.starts_with(kSeparator)) {
        path.insert(0, 1, kSeparator);
    }
    if (path.size() < 2) {
        return notFound();
    }

    outlook::Folders folders;
    if (path.front() == kSeparator) {
        if (!m_objRootFolder) {
            return notFound();
        }
        folders = m_objRootFolder.Subfolders();
        path.erase(0, 1);
    } else {
        // The current folder's own name may begin a relative path.
        const std::size_t end = path.find(kSeparator);
        if (end != std::wstring::npos && path.substr(0, end) == m_objCurrentFolder.Name()) {
            path.erase(0, end + 1);
            LogLine(L"changing strFolder...");
            LogLine(path);
        }
        folders = m_objCurrentFolder.Subfolders();
    }
    LogLine(L"obtained subfolders");

    bool found = false;
    while (!path.empty()) {
        found = FindSubFolder(folders, CutElement(path));
        folders = found ? m_objCurrentFolder.Subfolders() : outlook::Folders();
    }
    return found || notFound();
}

/// Looks for a folder of exactly this name among `folders`, or, when there are none, among the root folders,
/// and makes it the current folder. A failure while looking ends the search with nothing found.
bool COutlookFuncs::FindSubFolder(outlook::Folders folders, const std::wstring& name) {
    try {
        if (!folders) {
            folders = m_objNamespace.TopFolders();
        }
        outlook::Folder folder = FindByName(folders, name);
        if (!folder) {
            return false;
        }
        m_objCurrentFolder = folder;
        m_nItemType = m_objCurrentFolder.DefaultItemType();
        return true;
    } catch (const _com_error& caught) {
        LogLine(L"COM ERROR DESC %ls \n %081X", ComErrorDescription(caught).c_str(),
                static_cast<unsigned>(caught.Error()));
    } catch (...) {
        LogLine(L"Unknown Type Exception");
    }
    return false;
}

std::wstring COutlookFuncs::GetFolderID() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"GetFolderID");
    return m_objCurrentFolder ? m_objCurrentFolder.EntryID() : operation.Fail(error::kNoFolder);
}

std::wstring COutlookFuncs::GetCurrentFolderName() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"GetCurrentFolderName");
    return m_objCurrentFolder ? m_objCurrentFolder.Name() : operation.Fail(error::kNoFolder);
}

std::wstring COutlookFuncs::GetFolderType() {
    Operation operation(L"GetFolderType");
    if (!BeginOperation()) {
        return operation.Failed();
    }
    if (!m_objCurrentFolder) {
        return operation.Fail(error::kNoFolder);
    }
    const long type = m_objCurrentFolder.DefaultItemType();
    if (type < 0 || type >= static_cast<long>(kFolderTypeWords.size())) {
        return operation.Fail(error::kFolderNotFound, L"Unsupported item type for folder");
    }
    return kFolderTypeWords[static_cast<std::size_t>(type)];
}

std::wstring COutlookFuncs::CreateFolder(const ScriptText& path, const ScriptText& module) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    if (!m_objCurrentFolder) {
        return Fail(error::kNoFolder);
    }
    Operation operation(L"CreateFolder");
    operation.OptionalParam(L"strName", path);
    operation.OptionalParam(L"strModule", module);
    if (!path) {
        return operation.Fail(error::kFolderName);
    }
    const auto type = module ? FolderTypeOf(*module) : kUnspecifiedFolderType;
    if (!type) {
        return operation.Fail(error::kModuleName);
    }

    const bool isAbsolute = path->front() == kSeparator;
    const std::wstring name = isAbsolute ? path->substr(1) : *path;
    outlook::Folder last;
    try {
        const outlook::Folders folders =
            isAbsolute ? m_objRootFolder.Subfolders() : m_objCurrentFolder.Subfolders();
        LogLine(L"sName");
        LogLine(name);
        if (!folders) {
            return operation.Fail(error::kFolderNotFound);
        }
        LogLine(L"obtained folders");
        last = FindOrAddFolders(folders, name, *type);
    } catch (const _com_error& caught) {
        LogLine(L"failed to find folder");
        return operation.FailCom(caught);
    }
    if (!last) {
        LogLine(L"failed to find folder");
        return kSuccessText;
    }
    LogLine(L"found folder");
    try {
        m_objCurrentFolder = last;
        TakeOverFolder();
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
    return kSuccessText;
}

/// Goes down the path element by element, adding each one that is missing. The last folder; nothing for a
/// path without elements. Folders that were added before a failure stay.
outlook::Folder COutlookFuncs::FindOrAddFolders(outlook::Folders folders, const std::wstring& path,
                                                std::int16_t type) {
    LogLine(L"will search all folders in tight loop");
    outlook::Folder folder;
    for (const std::wstring& element : SplitText(path, L"/")) {
        folder = FindByName(folders, element);
        if (!folder) {
            folder = folders.Add(element, type);
        }
        folders = folder.Subfolders();
    }
    return folder;
}

} // namespace varden
