// Tells whether the links within a compound file lead somewhere ([MS-CFB]).
#pragma once

#include <cstdint>
#include <span>

namespace standin::mailbox {

/// Looks at a compound file before it is opened: the platform's structured storage follows the links of
/// directories and sectors blindly, and never comes back from a circle. True if all of them stay within the
/// file and end.
bool IsSoundCompoundFile(std::span<const std::uint8_t> file);

} // namespace standin::mailbox
