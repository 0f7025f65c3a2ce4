// Opening a mailbox that is kept in a folder, and beginning one.
#include "standin/mailbox/MailboxFolder.h"

#include "standin/mailbox/DiskLoader.h"
#include "standin/mailbox/Files.h"

#include <algorithm>

namespace standin::mailbox {
namespace {

using namespace disk;

void Need(HRESULT status, const std::wstring& path) {
    if (FAILED(status))
        throw LoadError{ShownPath(path) + L": " + ReasonText(status)};
}

/// Nothing there, nothing in it, or the sample world that somebody began to write and didn't finish.
bool IsToBegin(const std::wstring& root) {
    std::vector<FolderEntry> entries;
    const HRESULT status = ListFolder(root, entries);
    if (status != MAPI_E_NOT_FOUND)
        Need(status, root);
    return entries.empty() || std::ranges::find(entries, kBeginning, &FolderEntry::name) != entries.end();
}

std::unique_ptr<Mailbox> Begin(const std::wstring& root) {
    Need(MakeFolder(root), root);
    Need(ReplaceFile(root, kBeginning, {}), root);
    auto mailbox = std::make_unique<Mailbox>();
    mailbox->SetKeeper(std::make_unique<DiskKeeper>(Places(root)));
    Need(FillWithSampleWorld(*mailbox), root);
    Need(RemoveFile(root + L'\\' + kBeginning), root);
    return mailbox;
}

std::unique_ptr<Mailbox> Load(const std::wstring& root, LoadReport& report) {
    auto mailbox = std::make_unique<Mailbox>();
    DiskLoader loader(root, report);
    loader.Read(*mailbox);
    mailbox->SetKeeper(loader.PutInOrder());
    return mailbox;
}

} // namespace

std::unique_ptr<Mailbox> OpenMailboxFolder(const std::wstring& path, LoadReport& report) {
    const std::wstring root = LongPath(path);
    try {
        return IsToBegin(root) ? Begin(root) : Load(root, report);
    } catch (const LoadError& error) {
        report.error = error.text;
        return nullptr;
    }
}

} // namespace standin::mailbox
