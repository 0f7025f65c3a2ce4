// Items that are filed where they are made: contacts, notes, posts ... None of them is a draft of anything.
#pragma once

#include "standin/mailbox/Message.h"

namespace standin::outlook {

/// Fills a new item that is filed: read and no draft, sent and received now, with its icon ([MS-OXOMSG]
/// 2.2.1.10; Outlook's views show it).
void BeginFiled(mailbox::OpenMessage& message, std::int32_t icon);
/// Names the user as the one who wrote it, as Outlook does it in all of them but notes.
void EnterAuthor(mailbox::OpenMessage& message);

} // namespace standin::outlook
