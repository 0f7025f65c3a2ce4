// Opening things by their entry ids, and comparing these.
#pragma once

#include "standin/mailbox/Mailbox.h"
#include "standin/mapi/Interfaces.h"

#include <span>

namespace standin::mapi {

/// The parameters of an OpenEntry.
struct EntryRequest {
    std::span<const std::uint8_t> entryId;
    const IID* iid; ///< null: the interface of what the id names
    ULONG flags;
    ULONG* objectType;
    IUnknown** object;
    bool storeIsWritable = true; ///< whether the store was opened for writing
};

/// The parameters as a method gets them. E_INVALIDARG: a null pointer where something should be.
/// MAPI_E_INVALID_ENTRYID: a length that no entry id has. MAPI_E_UNKNOWN_FLAGS.
HRESULT TakeEntryRequest(ULONG size, const ENTRYID* entryId, const IID* iid, ULONG flags, ULONG* objectType,
                         IUnknown** object, EntryRequest& request);

/// What OpenEntry's flags say about access: without MAPI_MODIFY or MAPI_BEST_ACCESS an object is for reading.
/// E_ACCESSDENIED: MAPI_MODIFY where `canModify` is false.
HRESULT AccessFrom(ULONG flags, bool canModify, mailbox::Access& access);

/// Opens a folder or message, of one store or (null) of any. E_ACCESSDENIED: for writing, where the store
/// itself is open for reading. MAPI_E_NOT_FOUND: not there any more.
/// MAPI_E_UNKNOWN_ENTRYID: of another store, or nobody's. MAPI_E_INVALID_ENTRYID: too short for an entry id.
HRESULT OpenStoreEntry(mailbox::Mailbox& mailbox, const mailbox::Store* store, const EntryRequest& request);
/// Why an entry id opens no store: MAPI_E_NOT_FOUND: there is none of this name. MAPI_E_UNKNOWN_ENTRYID: it
/// is no store's id. MAPI_E_INVALID_ENTRYID: too short for an entry id.
HRESULT WhyNoStore(std::span<const std::uint8_t> entryId);
/// Opens an entry of the address book, a one-off or the global address list; statuses as above.
HRESULT OpenAddressBookEntry(mailbox::AddressBook& book, const EntryRequest& request);
/// Gives a container of the address book: the root of its lists, or the global address list.
HRESULT OpenAddressContainer(mailbox::AddressBook& book, bool isRoot, const EntryRequest& request);

/// CompareEntryIDs: 1 for ids of one object. MAPI_E_UNKNOWN_ENTRYID: one of them has no form known here.
HRESULT CompareEntryIds(ULONG size1, const ENTRYID* entryId1, ULONG size2, const ENTRYID* entryId2,
                        ULONG flags, ULONG* result);

} // namespace standin::mapi
