// Tags of many named properties at once.
#pragma once

#include "Ownership.h"

#include <span>
#include <vector>

namespace varden::mapi {

/// A named property by its set and number.
struct NumberedName {
    const GUID* set; ///< of propertyset
    LONG id;
};

/// The tags of the names on an object, in one look-up, in their order, with type bits 0; PT_ERROR for a name
/// that its store doesn't know. Empty when the look-up fails, whose status is then told to the log.
std::vector<ULONG> FindTags(std::span<const NumberedName> names, IMAPIProp& object);

} // namespace varden::mapi
