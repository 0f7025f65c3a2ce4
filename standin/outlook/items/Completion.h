// What every item gets with a save, besides what its kind brings up to date.
#pragma once

#include "standin/mailbox/Message.h"

namespace standin::outlook {

/// Conversation, the version of Outlook that wrote it, the mark of private items.
void CompleteAnyItem(mailbox::OpenMessage& message);

/// Conversation topic and index, in line with the subject as long as the message answers nothing. For drafts
/// CompleteAnyItem does it; items that are filed and not sent need it too.
void CompleteConversation(mailbox::OpenMessage& message);

} // namespace standin::outlook
