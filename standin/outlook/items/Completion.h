// What every item gets with a save, besides what its kind brings up to date.
#pragma once

#include "standin/mailbox/Message.h"

namespace standin::outlook {

/// Conversation, the version of Outlook that wrote it, the mark of private items.
void CompleteAnyItem(mailbox::OpenMessage& message);

} // namespace standin::outlook
