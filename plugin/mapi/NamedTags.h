// Tags of many named properties at once.
#pragma once

#include "Ownership.h"

#include <cstdint>
#include <span>
#include <vector>

namespace varden::mapi {

/// The property sets whose numbers meeting messages use.
enum class NameSet : std::uint8_t { Meeting, Appointment, Common, CalendarAssistant };

/// A named property by its set and number.
struct NumberedName {
    NameSet set;
    LONG id;
};

/// The tags of the names on an object, in one look-up, in their order, with type bits 0; PT_ERROR for a name
/// that its store doesn't know. Empty when the look-up fails.
std::vector<ULONG> FindTags(std::span<const NumberedName> names, IMAPIProp& object);

} // namespace varden::mapi
