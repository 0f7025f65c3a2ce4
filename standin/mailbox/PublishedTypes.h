// The types of published properties.
#pragma once

#include "standin/mailbox/Property.h"

namespace standin::mailbox {

/// Whether the tag's type is the one that the property was published with, text of either width. Knows the
/// properties of MAPI's header and some more; true for all others, among them the ids that clients and
/// providers give out themselves.
bool HasPublishedType(PropertyTag tag);

} // namespace standin::mailbox
