// Fills the mailboxes.
#include "Mailbox.h"

#include "standin/mailbox/AddressBook.h"
#include "standin/mailbox/Tags.h"

#include <stdexcept>

namespace varden::bench {

using namespace standin::mailbox;

Folder& FolderNamed(Mailbox& world, const wchar_t* name) {
    Folder* folder = world.DefaultStore()->IpmSubtree().FindSubfolder(name);
    if (!folder) {
        throw std::runtime_error("no such folder in the sample mailbox");
    }
    return *folder;
}

void AddMails(Folder& folder, int count) {
    std::shared_ptr<AddressEntry> sender;
    folder.Store().Mailbox().Addresses().Resolve(L"Service North", sender);
    const std::wstring line = L"The goods of your order are packed and wait to be collected.\r\n";
    std::wstring body;
    for (int i = 0; i < 8; ++i) {
        body += line;
    }
    for (int i = 0; i < count; ++i) {
        Content content;
        content.properties.Set<PR_MESSAGE_CLASS_W>(L"IPM.Note");
        content.properties.Set<PR_SUBJECT_W>(L"Order " + std::to_wstring(i));
        content.properties.Set<PR_BODY_W>(body);
        content.properties.Set<PR_IMPORTANCE>(i % 3);
        content.properties.Set<PR_MESSAGE_DELIVERY_TIME>({133'800'000'000'000'000ull + i * 10'000'000ull});
        content.properties.Set<PR_SENDER_NAME_W>(L"Service North");
        content.properties.Set<PR_SENDER_ADDRTYPE_W>(sender->AddressType());
        content.properties.Set<PR_SENDER_EMAIL_ADDRESS_W>(sender->Address());
        content.properties.Set<PR_SENDER_ENTRYID>(sender->EntryId());
        std::shared_ptr<Message> added;
        if (FAILED(folder.Receive(std::move(content), false, added))) {
            throw std::runtime_error("a mail can't be put into the mailbox");
        }
    }
}

void AddSubfolders(Folder& folder, int count) {
    for (int i = 0; i < count; ++i) {
        std::shared_ptr<Folder> added;
        if (FAILED(folder.CreateSubfolder({.name = L"Customer " + std::to_wstring(i)}, added))) {
            throw std::runtime_error("a folder can't be put into the mailbox");
        }
    }
}

} // namespace varden::bench
