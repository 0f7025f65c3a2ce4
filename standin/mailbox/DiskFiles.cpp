// Making out the .ini files: their sections and keys, as tables.
#include "standin/mailbox/DiskFiles.h"

#include "standin/mailbox/DiskLayout.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/PropertyText.h"

#include <algorithm>

namespace standin::mailbox::disk {
namespace {

/// A key of a section, and what it sets.
template <class T>
struct KeyRow {
    const wchar_t* key;
    bool required;
    void (*read)(T& target, const IniEntry& entry);
};

template <class T, std::size_t size>
const KeyRow<T>* FindKey(const KeyRow<T> (&rows)[size], const std::wstring& key) {
    const auto row = std::ranges::find_if(rows, [&](const KeyRow<T>& each) { return key == each.key; });
    return row == std::end(rows) ? nullptr : row;
}

template <class T, std::size_t size>
void RequireKeys(const IniSection& section, const KeyRow<T> (&rows)[size]) {
    for (const KeyRow<T>& row : rows)
        if (row.required &&
            std::ranges::find(section.entries, row.key, &IniEntry::key) == section.entries.end())
            throw IniError{section.line, L"[" + section.name + L"] has no key \"" + row.key + L"\""};
}

template <class T, std::size_t size>
void ReadKeys(const IniSection& section, const KeyRow<T> (&rows)[size], T& target) {
    for (const IniEntry& entry : section.entries) {
        const KeyRow<T>* row = FindKey(rows, entry.key);
        if (!row)
            throw IniError{entry.line, L"unknown key \"" + entry.key + L"\""};
        row->read(target, entry);
    }
    RequireKeys(section, rows);
}

[[noreturn]] void Unknown(const IniSection& section) {
    throw IniError{section.line, L"unknown section [" + section.name + L"]"};
}

template <class T>
T Parse(const IniEntry& entry, PropertyType type, const wchar_t* what) {
    const std::optional<Value> value = ValueFromText(type, entry.value);
    if (!value)
        throw IniError{entry.line, L"\"" + entry.value + L"\" is no " + what};
    return std::get<T>(*value);
}

std::uint64_t ParseCount(const IniEntry& entry) {
    return Parse<SysTime>(entry, PT_SYSTIME, L"number").ticks;
}
std::int32_t ParseNumber(const IniEntry& entry) {
    return Parse<std::int32_t>(entry, PT_LONG, L"number");
}
bool ParseFlag(const IniEntry& entry) {
    return Parse<bool>(entry, PT_BOOLEAN, L"flag: 1 or 0");
}
GUID ParseGuid(const IniEntry& entry) {
    return Parse<GUID>(entry, PT_CLSID, L"GUID in braces");
}

std::uint64_t ParseId(const IniEntry& entry) {
    constexpr std::uint64_t kEnd = std::uint64_t{1} << 48; // ids have six bytes
    const std::uint64_t id = ParseCount(entry);
    if (id == 0 || id >= kEnd)
        throw IniError{entry.line, L"\"" + entry.value + L"\" is no id"};
    return id;
}

StoreKind ParseKind(const IniEntry& entry) {
    for (const KindWord& row : kKinds)
        if (entry.value == row.word)
            return row.kind;
    throw IniError{entry.line, L"\"" + entry.value + L"\" is no kind of store: Mailbox, Archive or Public"};
}

/// A key that is a folder to look in must not lead elsewhere.
std::wstring ParsePlace(const IniEntry& entry) {
    if (entry.value.empty() || entry.value.front() == L'.' ||
        entry.value.find_first_of(L"\\/:") != std::wstring::npos)
        throw IniError{entry.line, L"\"" + entry.value + L"\" is no folder beside mailbox.ini"};
    return entry.value;
}

constexpr KeyRow<ProfileFile> kProfileKeys[] = {
    {L"Name", true, [](ProfileFile& file, const IniEntry& entry) { file.name = entry.value; }},
    {L"Store", true,
     [](ProfileFile& file, const IniEntry& entry) { file.stores.push_back(ParsePlace(entry)); }},
};

constexpr KeyRow<EntryRow> kEntryKeys[] = {
    {L"Name", true, [](EntryRow& row, const IniEntry& entry) { row.description.name = entry.value; }},
    {L"Alias", true, [](EntryRow& row, const IniEntry& entry) { row.description.alias = entry.value; }},
    {L"Address", true,
     [](EntryRow& row, const IniEntry& entry) { row.description.smtpAddress = entry.value; }},
    {L"List", false,
     [](EntryRow& row, const IniEntry& entry) { row.description.isDistributionList = ParseFlag(entry); }},
    {L"Member", false, [](EntryRow& row, const IniEntry& entry) { row.members.push_back(entry.value); }},
};

constexpr KeyRow<StoreFile> kStoreKeys[] = {
    {L"Name", true, [](StoreFile& file, const IniEntry& entry) { file.description.name = entry.value; }},
    {L"Kind", true, [](StoreFile& file, const IniEntry& entry) { file.description.kind = ParseKind(entry); }},
    {L"Address", false,
     [](StoreFile& file, const IniEntry& entry) { file.description.smtpAddress = entry.value; }},
    {L"Default", false,
     [](StoreFile& file, const IniEntry& entry) { file.description.isDefault = ParseFlag(entry); }},
    {L"InProfile", false,
     [](StoreFile& file, const IniEntry& entry) { file.description.isInProfile = ParseFlag(entry); }},
    {L"Provider", true, [](StoreFile& file, const IniEntry& entry) { file.key.provider = ParseGuid(entry); }},
    {L"Database", true, [](StoreFile& file, const IniEntry& entry) { file.key.database = ParseGuid(entry); }},
    {L"Ids", true, [](StoreFile& file, const IniEntry& entry) { file.reservedIds = ParseId(entry); }},
};

constexpr KeyRow<FolderFile> kFolderKeys[] = {
    {L"Id", true, [](FolderFile& file, const IniEntry& entry) { file.id = ParseId(entry); }},
    {L"Class", true, [](FolderFile& file, const IniEntry& entry) { file.containerClass = entry.value; }},
    {L"ItemType", true, [](FolderFile& file, const IniEntry& entry) { file.itemType = ParseNumber(entry); }},
    {L"Place", false, [](FolderFile& file, const IniEntry& entry) { file.place = entry.value; }},
    {L"Name", false, [](FolderFile& file, const IniEntry& entry) { file.name = entry.value; }},
};

constexpr KeyRow<UserField> kFieldKeys[] = {
    {L"Name", true, [](UserField& field, const IniEntry& entry) { field.name = entry.value; }},
    {L"Type", true, [](UserField& field, const IniEntry& entry) { field.type = ParseNumber(entry); }},
};

/// Keys of an entry that aren't in the table are properties.
EntryRow ParseEntry(const IniSection& section, NamedProperties& names) {
    EntryRow row;
    row.line = section.line;
    for (const IniEntry& entry : section.entries) {
        if (const auto* key = FindKey(kEntryKeys, entry.key))
            key->read(row, entry);
        else
            ParseProperty(entry, names, row.description.more);
    }
    RequireKeys(section, kEntryKeys);
    return row;
}

void ReadSpecial(const IniSection& section, StoreFile& file) {
    for (const IniEntry& entry : section.entries) {
        IniEntry number = entry;
        number.value = entry.key;
        file.special[ParseNumber(number)] = ParseId(entry);
    }
}

void RequireSection(const std::vector<IniSection>& sections, const wchar_t* name) {
    if (std::ranges::find(sections, name, &IniSection::name) == sections.end())
        throw IniError{1, std::wstring(L"there is no section [") + name + L"]"};
}

} // namespace

ProfileFile ParseProfileFile(const std::vector<IniSection>& sections, NamedProperties& addressBookNames) {
    ProfileFile file;
    RequireSection(sections, L"Profile");
    for (const IniSection& section : sections) {
        if (section.name == L"Profile")
            ReadKeys(section, kProfileKeys, file);
        else if (section.name == L"Entry")
            file.entries.push_back(ParseEntry(section, addressBookNames));
        else
            Unknown(section);
    }
    return file;
}

StoreFile ParseStoreFile(const std::vector<IniSection>& sections) {
    StoreFile file;
    RequireSection(sections, L"Store");
    for (const IniSection& section : sections) {
        if (section.name == L"Store")
            ReadKeys(section, kStoreKeys, file);
        else if (section.name == L"Special")
            ReadSpecial(section, file);
        else if (section.name == L"Properties")
            file.properties = section;
        else
            Unknown(section);
    }
    file.key.isPublic = file.description.kind == StoreKind::Public;
    return file;
}

FolderFile ParseFolderFile(const std::vector<IniSection>& sections) {
    FolderFile file;
    RequireSection(sections, L"Folder");
    for (const IniSection& section : sections) {
        if (section.name == L"Folder")
            ReadKeys(section, kFolderKeys, file);
        else if (section.name == L"Field")
            ReadKeys(section, kFieldKeys, file.fields.emplace_back());
        else if (section.name == L"Properties")
            file.properties = section;
        else
            Unknown(section);
    }
    return file;
}

void FillAddressBook(const std::vector<EntryRow>& entries, AddressBook& addresses) {
    std::vector<std::shared_ptr<AddressEntry>> added;
    added.reserve(entries.size());
    for (const EntryRow& row : entries)
        added.push_back(addresses.Add(row.description));
    const auto byAlias = [&](const std::wstring& alias, int line) {
        for (const auto& entry : added)
            if (entry->Get<PR_ACCOUNT_W>() == alias)
                return entry;
        throw IniError{line, L"there is no entry \"" + alias + L"\" to be a member"};
    };
    for (std::size_t i = 0; i < entries.size(); ++i) {
        std::vector<std::shared_ptr<AddressEntry>> members;
        for (const std::wstring& alias : entries[i].members)
            members.push_back(byAlias(alias, entries[i].line));
        added[i]->SetMembers(std::move(members));
    }
}

} // namespace standin::mailbox::disk
