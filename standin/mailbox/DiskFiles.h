// What stands in the .ini files of a kept mailbox. All functions throw IniError for what they can't make out.
#pragma once

#include "standin/mailbox/AddressBook.h"
#include "standin/mailbox/Ini.h"
#include "standin/mailbox/Store.h"

namespace standin::mailbox::disk {

struct EntryRow {
    AddressEntryDescription description;
    std::vector<std::wstring> members; ///< aliases
    int line = 0;
};

struct ProfileFile {
    std::wstring name;
    std::vector<std::wstring> stores; ///< the names of their file-system folders
    std::vector<EntryRow> entries;
};

struct StoreFile {
    StoreDescription description;
    StoreKey key;
    std::uint64_t reservedIds = 0;
    std::map<std::int32_t, std::uint64_t> special;
    IniSection properties;
};

struct FolderFile {
    std::uint64_t id = 0;
    std::optional<std::wstring> name; ///< if it isn't that of the file-system folder
    std::wstring place;               ///< the file-system folder that the file was written for
    std::wstring containerClass;
    std::int32_t itemType = 0;
    std::vector<UserField> fields;
    IniSection properties;
};

ProfileFile ParseProfileFile(const std::vector<IniSection>& sections, NamedProperties& addressBookNames);
StoreFile ParseStoreFile(const std::vector<IniSection>& sections);
FolderFile ParseFolderFile(const std::vector<IniSection>& sections);

/// Puts the entries into an address book, and the members into its distribution lists.
void FillAddressBook(const std::vector<EntryRow>& entries, AddressBook& addresses);

} // namespace standin::mailbox::disk
