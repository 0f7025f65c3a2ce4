// The MAPI view of the mailbox model, as seen by the library that serves it: MAPI objects for things of the
// model, and what is alive of them.
#pragma once

#include "standin/mailbox/Mailbox.h"

#include <mapix.h>

#include <cstdint>
#include <memory>

namespace standin::mapi {

/// The mailbox that sessions made from now on show. Its owner keeps it for as long as any MAPI object lives.
void SetMailbox(mailbox::Mailbox* mailbox);
mailbox::Mailbox* CurrentMailbox();

// Each of these makes a new object and gives its first reference to the caller. None of them needs
// MAPIInitialize; the methods of the objects do.

/// A session on the current mailbox; null if there is none.
IMAPISession* MakeSession();
IMsgStore* MakeStore(mailbox::Store& store, mailbox::Access access = mailbox::Access::Modify);
/// `storeIsWritable`: what the folder opens in turn can be open for writing.
IMAPIFolder* MakeFolder(std::shared_ptr<mailbox::Folder> folder,
                        mailbox::Access access = mailbox::Access::Modify, bool storeIsWritable = true);
/// The MAPI side of an open message. It shares the working copy with whoever else holds it: what one writes,
/// the other reads, and either can save it. The object takes its access from the open message.
IMessage* MakeMessage(std::shared_ptr<mailbox::OpenMessage> message);
IAttach* MakeAttachment(std::shared_ptr<mailbox::OpenAttachment> attachment);
/// IMailUser, or IDistList for a distribution list.
IMAPIProp* MakeAddressEntry(mailbox::AddressBook& book, std::shared_ptr<mailbox::AddressEntry> entry);
IAddrBook* MakeAddressBook(mailbox::AddressBook& book);
/// The global address list, and the container of the address book's lists.
IABContainer* MakeAddressList(mailbox::AddressBook& book);
IABContainer* MakeAddressRoot(mailbox::AddressBook& book);

/// What is alive.
struct Counts {
    std::int64_t objects = 0; ///< MAPI objects, streams, storages and message sessions of whatever holder
    std::int64_t buffers =
        0; ///< blocks of MAPIAllocateBuffer not freed yet; those chained to one don't count
    std::int64_t sessions = 0; ///< MAPIInitialize calls without their MAPIUninitialize
    bool operator==(const Counts&) const = default;
};
Counts Live();

} // namespace standin::mapi
