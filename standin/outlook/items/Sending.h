// Sending items.
#pragma once

#include "standin/outlook/items/Item.h"

namespace standin::outlook {

/// Sends an item: looks its people up, puts it into the Outbox and submits it there. The object has no item
/// afterwards. One that is to go out later stays in the Outbox. Raises NoRecipients; E_FAIL for names that
/// nobody knows; MAPI_E_NO_SUPPORT for an item that was sent already.
void SendItem(ItemObject& item);

/// What Outlook raises for an item that is sent to nobody: E_FAIL, where MAPI has a status of its own.
Failure NoRecipients();

/// Sends a message that somebody built in the Outbox.
void SubmitMessage(mailbox::OpenMessage& message);

/// A special folder of the default store; raises MAPI_E_NOT_FOUND if there is none.
mailbox::Folder& OwnFolder(std::int32_t number);

} // namespace standin::outlook
