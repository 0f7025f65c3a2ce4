// Single steps that several operations on messages share.
#pragma once

#include "Ownership.h"

#include <string>

namespace varden::mapi {

/// Opens the session's address book, which then shows no dialog.
HRESULT OpenAddressBook(IMAPISession& session, Pointer<IAddrBook>& addressBook);

/// Reads one property of a store. A property that the store lacks is a failure, with the status that it has
/// in place of a value. `flags`: MAPI_UNICODE for a text.
HRESULT GetStoreProperty(IMsgStore& store, ULONG tag, Block<SPropValue>& value, ULONG flags = 0);

/// Writes one long, or one text, under a tag of that type.
HRESULT SetLong(IMAPIProp& object, ULONG longTag, long number);
HRESULT SetText(IMAPIProp& object, ULONG textTag, const std::wstring& text);

} // namespace varden::mapi
