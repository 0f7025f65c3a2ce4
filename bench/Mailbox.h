// What the benchmarks' mailboxes hold.
#pragma once

#include "standin/mailbox/Mailbox.h"

namespace varden::bench {

/// An empty folder of the default store, below its top: "Inbox", "Contacts".
standin::mailbox::Folder& FolderNamed(standin::mailbox::Mailbox& world, const wchar_t* name);

/// Mails with a subject, a sender, a time, an importance and a body of some lines, as if they had arrived.
void AddMails(standin::mailbox::Folder& folder, int count);
void AddSubfolders(standin::mailbox::Folder& folder, int count);

} // namespace varden::bench
