// The types of published properties.
#pragma once

#include "standin/mailbox/Property.h"

namespace standin::mailbox {

/// Whether the tag's type is the one that the property was published with ([MS-OXPROPS] 2), text of either
/// width. True for what isn't published: ids that clients and providers give out themselves.
bool HasPublishedType(PropertyTag tag);

} // namespace standin::mailbox
