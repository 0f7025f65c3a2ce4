// What MAPI's tables show: stores, folders, messages, recipients, attachments, addresses.
#pragma once

#include "standin/mailbox/Mailbox.h"
#include "standin/mapi/RowList.h"

namespace standin::mapi {

/// The stores of the profile.
std::unique_ptr<TableRows> StoreRows(mailbox::Mailbox& mailbox);
/// Subfolders; with `deep` those below them too, each after its parent, PR_DEPTH telling how far down.
std::unique_ptr<TableRows> FolderRows(std::shared_ptr<mailbox::Folder> folder, bool deep);
/// The messages of a folder, or its associated ones. Text and binary are cut to 510 bytes
/// ([MS-OXCTABL] 2.2.1).
std::unique_ptr<TableRows> MessageRows(std::shared_ptr<mailbox::Folder> folder, bool associated);
/// Recipients and attachments as they are in the working copy.
std::unique_ptr<TableRows> RecipientRows(std::shared_ptr<mailbox::OpenMessage> message);
std::unique_ptr<TableRows> AttachmentRows(std::shared_ptr<mailbox::OpenMessage> message);
/// Entries of the address book.
std::unique_ptr<TableRows> AddressRows(std::vector<std::shared_ptr<mailbox::AddressEntry>> entries);
/// One row of fixed properties for each bag: the lists of an address book.
std::unique_ptr<TableRows> FixedRows(std::vector<mailbox::PropertyBag> rows, mailbox::NamedProperties& names);

/// Tells tables of recipients and attachments that one of a message's was replaced.
void NoteMessagePartReplaced();

} // namespace standin::mapi
