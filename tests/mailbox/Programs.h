// What the test program does when it is started for something else than its tests.
#pragma once

namespace standin::mailbox::test {

/// Saves the first message of the Inbox of the mailbox in this folder again and again, until the process is
/// ended.
int SaveWithoutEnd(const wchar_t* folder);
/// Writes MSG files into this folder, for other readers to read.
int WriteMessages(const wchar_t* folder);

} // namespace standin::mailbox::test
