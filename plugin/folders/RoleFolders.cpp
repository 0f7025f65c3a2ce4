// Folders by their role: the default folder for a purpose, and another user's default folder.
#include "session/COutlookFuncs.h"

#include "frame/ErrorCodes.h"
#include "session/Operation.h"

#include <array>

namespace varden {

namespace {

struct FolderWord {
    const wchar_t* word;
    outlook::DefaultFolder folder;
};

constexpr std::array kFolderWords{
    FolderWord{L"Deleted Items", outlook::DefaultFolder::DeletedItems},
    FolderWord{L"Outbox", outlook::DefaultFolder::Outbox},
    FolderWord{L"Sent Mail", outlook::DefaultFolder::SentMail},
    FolderWord{L"Inbox", outlook::DefaultFolder::Inbox},
    FolderWord{L"Calendar", outlook::DefaultFolder::Calendar},
    FolderWord{L"Contacts", outlook::DefaultFolder::Contacts},
    FolderWord{L"Journal", outlook::DefaultFolder::Journal},
    FolderWord{L"Notes", outlook::DefaultFolder::Notes},
    FolderWord{L"Tasks", outlook::DefaultFolder::Tasks},
    FolderWord{L"Drafts", outlook::DefaultFolder::Drafts},
    FolderWord{L"All Public Folders", outlook::DefaultFolder::AllPublicFolders},
    FolderWord{L"Junk", outlook::DefaultFolder::Junk},
};

} // namespace

std::wstring COutlookFuncs::GetDefaultFolderName(const ScriptText& word) {
    Operation operation(L"GetDefaultFolderName");
    operation.OptionalParam(L"strType", word);
    if (!BeginOperation()) {
        return operation.Failed();
    }
    const std::wstring wanted = word.value_or(L"");
    if (EqualIgnoringCase(wanted, L"Root")) {
        return m_strDefaultRootName;
    }
    const FolderWord* row = FindByWord(kFolderWords, &FolderWord::word, wanted);
    if (!row) {
        return operation.Fail(error::kFolderType);
    }
    outlook::Folder folder;
    if (const HRESULT status = m_objNamespace.TryDefaultFolder(row->folder, folder); FAILED(status)) {
        ReleaseItems();
        return operation.Fail(error::kMapi, status, L"");
    }
    LogLine(L"onbtained default folder");
    return folder ? folder.Name() : std::wstring();
}

/// The root folder stays: an absolute path still runs below the user's own.
std::wstring COutlookFuncs::OpenSharedFolder(const ScriptText& user, std::int32_t folder) {
    Operation operation(L"OpenSharedFolder");
    operation.OptionalParam(L"strUserName", user);
    if (!BeginOperation()) {
        return operation.Failed();
    }
    m_strFilter.clear();
    try {
        const _variant_t recipient =
            m_objNamespace.Call(L"CreateRecipient", {outlook::TextValue(user.value_or(L""))});
        const outlook::Folder shared(
            m_objNamespace.Call(L"GetSharedDefaultFolder", {recipient, outlook::LongValue(folder)}));
        LogLine(L"got shared default folder");
        m_objCurrentFolder = shared;
        TakeOverFolder();
    } catch (...) {
        return operation.Fail(error::kSharedFolder);
    }
    return kSuccessText;
}

} // namespace varden
