// New items that come from others: replies, forwards.
#pragma once

#include "standin/outlook/items/Item.h"

namespace standin::outlook {

/// How an item is answered.
enum class AnswerKind { Reply, ReplyAll, Forward };

/// A new mail, unsaved: prefix and subject, the item's text under a line that says whose it is, and for
/// replies those who get it. A forward has the attachments.
ComPtr<ItemObject> Answer(ItemObject& item, AnswerKind kind);
/// A new mail, unsaved, with the item as its attachment.
ComPtr<ItemObject> ForwardAttached(ItemObject& item);
/// A new item of the same kind, unsaved: the item as it is, for others.
ComPtr<ItemObject> ForwardAsIs(ItemObject& item);

} // namespace standin::outlook
