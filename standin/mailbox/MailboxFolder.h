// A mailbox kept in a folder on disk: DIR/<store>/<folder>/.../<id>.msg, beside small .ini files for what is
// not a message. Each save is atomic: whenever the process ends, a message is as it was or as it was to be.
#pragma once

#include "standin/mailbox/Mailbox.h"

namespace standin::mailbox {

/// How opening a folder went.
struct LoadReport {
    std::wstring error;                ///< why it failed: file, line and reason; empty for success
    std::vector<std::wstring> leftOut; ///< messages that could not be read: "file: reason"
};

/// Opens the mailbox in this folder. A missing or empty folder is filled with the sample world. Null on
/// failure, with the reason in the report; nothing on disk is changed then.
std::unique_ptr<Mailbox> OpenMailboxFolder(const std::wstring& path, LoadReport& report);

/// A name of a store or folder as the name of a file-system folder, and back. Characters that no file name
/// may have are written as % and four hexadecimal digits.
std::wstring FileNameFromName(std::wstring_view name);
std::wstring NameFromFileName(std::wstring_view fileName);

} // namespace standin::mailbox
