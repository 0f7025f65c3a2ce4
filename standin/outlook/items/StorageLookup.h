// Storage items: the hidden messages in which solutions keep their own data with a folder.
#pragma once

#include "standin/outlook/items/Item.h"

namespace standin::outlook {

/// MAPIFolder.GetStorage. By subject or message class, one that isn't there is made, unsaved; by entry id it
/// raises MAPI_E_NOT_FOUND. E_INVALIDARG for another OlStorageIdentifierType, or an empty identifier.
ComPtr<Object> FindStorage(mailbox::Folder& folder, const std::wstring& identifier,
                           std::int32_t identifierType);

} // namespace standin::outlook
