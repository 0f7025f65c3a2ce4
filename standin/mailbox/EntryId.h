// Entry ids in their published forms, and binary in hexadecimal.
#pragma once

#include "standin/mailbox/Property.h"

#include <span>

namespace standin::mailbox {

/// Two upper-case digits a byte.
std::wstring ToHex(std::span<const std::uint8_t> bytes);
/// Digits of either case; nothing for an odd count or anything that is no digit.
std::optional<Bytes> FromHex(std::wstring_view text);

/// What names a store in its folders' and messages' entry ids.
struct StoreKey {
    GUID provider{}; ///< PR_STORE_RECORD_KEY
    GUID database{}; ///< the database GUID in front of its counters
    bool isPublic = false;
};

/// [MS-OXCDATA] 2.2.4.1, 46 bytes. Counters are below 2^48.
Bytes MakeFolderEntryId(const StoreKey& store, std::uint64_t folder);
/// [MS-OXCDATA] 2.2.4.2, 70 bytes.
Bytes MakeMessageEntryId(const StoreKey& store, std::uint64_t folder, std::uint64_t message);
/// PR_RECORD_KEY of a folder or message: database GUID and counter ([MS-OXCDATA] 2.2.1.3).
Bytes MakeRecordKey(const StoreKey& store, std::uint64_t counter);
/// PR_INSTANCE_KEY: the row of a folder or message in a table.
Bytes MakeInstanceKey(std::uint64_t counter);
/// [MS-OXCDATA] 2.2.4.3, a mailbox or public store. `dn` is the mailbox's X.500 name; it makes the id the
/// store's own.
Bytes MakeStoreEntryId(bool isPublic, std::string_view server, std::string_view dn);
/// PR_MDB_PROVIDER: the provider that a store's entry id names.
Bytes ProviderOf(const Bytes& storeEntryId);
/// [MS-OXCDATA] 2.2.5.2. Type: DT_MAILUSER, DT_DISTLIST, 0x100 for a container.
Bytes MakeAddressBookEntryId(std::uint32_t type, std::string_view dn);
/// [MS-OXCDATA] 2.2.5.1. Text as UTF-16 or in the system's ANSI code page.
Bytes MakeOneOffEntryId(std::wstring_view name, std::wstring_view addressType, std::wstring_view address,
                        bool unicode = true, bool sendRichInfo = true);

/// The parts of a folder's or message's entry id. `message` is 0 for a folder.
struct ObjectEntryId {
    GUID provider{};
    GUID database{};
    std::uint64_t folder = 0;
    std::uint64_t message = 0;
};
/// Nothing for what isn't a folder's or message's entry id.
std::optional<ObjectEntryId> ParseObjectEntryId(std::span<const std::uint8_t> entryId);

struct AddressBookEntryId {
    std::uint32_t type = 0;
    std::string dn;
};
std::optional<AddressBookEntryId> ParseAddressBookEntryId(std::span<const std::uint8_t> entryId);

struct OneOffEntryId {
    std::wstring name;
    std::wstring addressType;
    std::wstring address;
};
std::optional<OneOffEntryId> ParseOneOffEntryId(std::span<const std::uint8_t> entryId);

} // namespace standin::mailbox
