// The named properties that Outlook knows by heart.
#pragma once

#include "standin/mailbox/NamedProperties.h"

namespace standin::outlook {

/// Outlook asks each store that it opens, and no other, for the ids of all names that its items have, so that
/// they are there before the first item has one of them. Names that are there stay as they are.
void EnterKnownNames(mailbox::NamedProperties& names);

} // namespace standin::outlook
