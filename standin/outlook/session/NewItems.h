// New items that no folder was asked for.
#pragma once

#include "standin/outlook/items/Item.h"

namespace standin::outlook {

/// The folder where items of a kind belong: Drafts for those that are sent. Raises MAPI_E_NOT_FOUND if the
/// default store hasn't got it.
mailbox::Folder& HomeOf(const ItemKind& kind);

/// CreateItem. Raises E_INVALIDARG for an unknown OlItemType.
ComPtr<ItemObject> CreateItem(std::int32_t itemType);
/// CreateItemFromTemplate: an unsaved item with the content of an MSG file, in the folder or, for null, where
/// items of its kind belong. Raises what ReadMsgFile raises.
ComPtr<ItemObject> CreateItemFromFile(const std::wstring& path, mailbox::Folder* folder);

} // namespace standin::outlook
