// Voting buttons of a mail.
#pragma once

#include "standin/outlook/items/Conversions.h"

namespace standin::outlook {

/// PidLidVerbStream as the names of its voting buttons, ";" between them.
extern const Conversion kVotingOptions;

/// The stream ([MS-OXOMSG] 2.2.1.74) that has these buttons, and the buttons of a stream; none for one that
/// is damaged.
mailbox::Bytes MakeVerbStream(const std::vector<std::wstring>& options);
std::vector<std::wstring> ParseVerbStream(std::span<const std::uint8_t> stream);

} // namespace standin::outlook
