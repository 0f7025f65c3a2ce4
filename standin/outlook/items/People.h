// The people in a message: who sent it, who gets it.
#pragma once

#include "standin/mailbox/AddressBook.h"
#include "standin/mailbox/Message.h"
#include "standin/outlook/items/Conversions.h"

namespace standin::outlook {

/// The properties by which a message names a person.
struct PersonTags {
    mailbox::PropertyTag name, addressType, address, entryId, searchKey, smtp;
};

extern const PersonTags kSenderTags;
extern const PersonTags kSentRepresentingTags;

void WritePerson(mailbox::OpenMessage& message, const PersonTags& tags, const mailbox::AddressEntry& person);
/// The person, as far as the message tells; null if it names nobody.
std::shared_ptr<mailbox::AddressEntry> ReadPerson(const mailbox::MessageProperties& message,
                                                  const PersonTags& tags);
/// The user: the owner of the default store. Null in a profile without one.
std::shared_ptr<mailbox::AddressEntry> CurrentUser();

/// The recipients of one type (MAPI_TO ...) as text, and from text: names with ";" between, in place of those
/// that there were. They are resolved later.
std::wstring RecipientText(const mailbox::MessageProperties& message, std::int32_t type);
void ReplaceRecipients(mailbox::OpenMessage& message, std::int32_t type, const std::wstring& names);
/// The same as conversions of members. A message without recipients shows what the row's own property says.
extern const Conversion kToNames, kCcNames, kBccNames;
std::vector<std::wstring> SplitNames(std::wstring_view text);

} // namespace standin::outlook
