// The members of a distribution list, in their published form ([MS-OXOCNTC] 2.2.2.2).
#pragma once

#include "standin/mailbox/AddressBook.h"
#include "standin/mailbox/Message.h"

namespace standin::outlook {

/// A member, twice: the entry id by which it is known, for one in an address book wrapped up with a word
/// about what it is; and as a one-off, which says who it is to whoever doesn't have that address book.
struct ListMember {
    mailbox::Bytes entryId;
    mailbox::Bytes oneOff;
};

/// In their order. The list of one-offs may be behind: members that it hasn't got have none.
std::vector<ListMember> ReadMembers(const mailbox::MessageProperties& message);
/// Writes both lists and their checksum. None: removes them.
void WriteMembers(mailbox::OpenMessage& message, const std::vector<ListMember>& members);

ListMember MakeMember(const mailbox::AddressEntry& entry);
/// Who a member is; null if neither form of it leads anywhere.
std::shared_ptr<mailbox::AddressEntry> EntryOf(const ListMember& member);

} // namespace standin::outlook
