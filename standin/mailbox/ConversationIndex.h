// PR_CONVERSATION_INDEX ([MS-OXOMSG] 2.2.1.3).
#pragma once

#include "standin/mailbox/Property.h"

#include <optional>
#include <span>

namespace standin::mailbox {

/// The index of a message that begins a conversation (no parent), or of a reply to the parent's. Nothing for
/// a parent that is no index.
std::optional<Bytes> MakeConversationIndex(std::span<const std::uint8_t> parent);
/// The same for a given time and random number, which are all that it depends on besides.
std::optional<Bytes> MakeConversationIndex(std::span<const std::uint8_t> parent, SysTime now,
                                           const GUID& guid, std::uint8_t random);

} // namespace standin::mailbox
