// Items as files.
#pragma once

#include "standin/outlook/items/Item.h"

namespace standin::outlook {

/// SaveAs: path, and OlSaveAsType or none for MSG. MSG, Unicode MSG and template write the same file; text
/// writes subject and body. Other formats raise E_NOTIMPL, and numbers that are none E_INVALIDARG.
void SaveItemAs(ItemObject& item, const Arguments& arguments);

/// Reads an MSG file as content whose named properties have these names. Raises what the file system or the
/// file answers; as CheckAbsolute.
mailbox::Content ReadMsgFile(const std::wstring& path, mailbox::NamedProperties& names);

/// Raises for a path that isn't absolute. Outlook is another process than its client: in its own current
/// folder the client's files aren't.
void CheckAbsolute(const std::wstring& path);

/// What Outlook raises for a file that isn't there.
Failure FileNotFound();

/// Writes a file, in place of one that is there. Raises for a path that leads nowhere.
void WriteOutFile(const std::wstring& path, std::span<const std::uint8_t> bytes);

} // namespace standin::outlook
