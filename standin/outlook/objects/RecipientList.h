// Where an item keeps lists of people: its recipients, and those whom replies go to.
#pragma once

#include "standin/mailbox/Message.h"

namespace standin::outlook {

/// Rows of people, each known by its PR_ROWID, which no other row has as long as the item is open. Raises
/// what the message refuses, and MAPI_E_NOT_FOUND for a row that isn't there any longer.
class RecipientList {
public:
    virtual ~RecipientList() = default;
    /// Good until the next change.
    virtual const std::vector<mailbox::PropertyBag>& Rows() const = 0;
    /// Gives the row's id.
    virtual std::uint32_t Add(mailbox::PropertyBag row) = 0;
    virtual void Replace(std::uint32_t rowId, mailbox::PropertyBag row) = 0;
    virtual void Remove(std::uint32_t rowId) = 0;
    virtual mailbox::NamedProperties& Names() const = 0;
};

/// The recipient rows of a message.
std::shared_ptr<RecipientList> RecipientsOf(std::shared_ptr<mailbox::OpenMessage> message);
/// PR_REPLY_RECIPIENT_ENTRIES and _NAMES of a message. A name that nobody has resolved yet is in there as a
/// one-off without an address.
std::shared_ptr<RecipientList> ReplyRecipientsOf(std::shared_ptr<mailbox::OpenMessage> message);

} // namespace standin::outlook
