// Outlook's objects as the engine uses them: the members that it needs, by name.
#pragma once

#include "Interfaces.h"

namespace varden::outlook {

/// The numbers of OlDefaultFolders that the engine asks for.
enum class DefaultFolder : long {
    DeletedItems = 3,
    Outbox = 4,
    SentMail = 5,
    Inbox = 6,
    Calendar = 9,
    Contacts = 10,
    Journal = 11,
    Notes = 12,
    Tasks = 13,
    Drafts = 16,
    AllPublicFolders = 18,
    Junk = 23,
};

/// The numbers of OlItemType.
enum ItemType : std::int32_t {
    olMailItem = 0,
    olAppointmentItem = 1,
    olContactItem = 2,
    olTaskItem = 3,
    olJournalItem = 4,
    olNoteItem = 5,
    olPostItem = 6,
    olDistributionListItem = 7,
};

/// The numbers of OlBodyFormat that a mail's text is written for.
enum BodyFormat : std::int32_t {
    olFormatHTML = 2,
    olFormatRichText = 3,
};

/// The items of a folder, or those of them that a filter has left. Members raise as Reference's do.
class Items : public Reference {
public:
    Items() : Reference(kItems) {}
    explicit Items(const _variant_t& object) : Reference(kItems, object) {}

    long Count() const { return GetLong(L"Count"); }
    /// The item at a 1-based place.
    _variant_t Item(long index) const { return Call(L"Item", {LongValue(index)}); }
    /// A new item, a number of OlItemType; unsaved.
    _variant_t Add(std::int16_t itemType) const { return Call(L"Add", {_variant_t(itemType, VT_I2)}); }
    /// The items that fit the filter, or nothing.
    Items Restrict(const std::wstring& filter) const { return Items(Call(L"Restrict", {TextValue(filter)})); }
};

class Folders;

/// A folder of a store.
class Folder : public Reference {
public:
    Folder() : Reference(kFolder) {}
    explicit Folder(const _variant_t& object) : Reference(kFolder, object) {}

    std::wstring Name() const { return GetText(L"Name"); }
    std::wstring EntryID() const { return GetText(L"EntryID"); }
    std::wstring FullFolderPath() const { return GetText(L"FullFolderPath"); }
    /// A number of OlItemType.
    long DefaultItemType() const { return GetLong(L"DefaultItemType"); }
    Items AllItems() const { return Items(GetProperty(L"Items")); }
    Folders Subfolders() const;
    _variant_t Parent() const { return GetProperty(L"Parent"); }
    /// The folder's IMAPIFolder, as an object to ask for it.
    _variant_t MapiObject() const { return GetProperty(L"MAPIOBJECT"); }
};

/// The subfolders of a folder, or the top-level folders of a session.
class Folders : public Reference {
public:
    Folders() : Reference(kFolders) {}
    explicit Folders(const _variant_t& object) : Reference(kFolders, object) {}

    long Count() const { return GetLong(L"Count"); }
    /// The folder at a 1-based place.
    Folder Item(long index) const { return Folder(Call(L"Item", {LongValue(index)})); }
    /// A new folder; `type` is a number of OlDefaultFolders, as this method takes it.
    Folder Add(const std::wstring& name, std::int16_t type) const {
        return Folder(Call(L"Add", {TextValue(name), _variant_t(type, VT_I2)}));
    }
};

inline Folders Folder::Subfolders() const {
    return Folders(GetProperty(L"Folders"));
}

/// Outlook's session: its stores' top-level folders, default folders, folders by their entry ids.
class NameSpace : public Reference {
public:
    NameSpace() : Reference(kNameSpace) {}
    explicit NameSpace(const _variant_t& object) : Reference(kNameSpace, object) {}

    Folders TopFolders() const { return Folders(GetProperty(L"Folders")); }
    Folder DefaultFolder(outlook::DefaultFolder folder) const {
        return Folder(Call(L"GetDefaultFolder", {LongValue(static_cast<long>(folder))}));
    }
    /// The same with the status instead of an exception.
    HRESULT TryDefaultFolder(outlook::DefaultFolder folder, Folder& found) const {
        _variant_t result;
        const HRESULT status = TryCall(L"GetDefaultFolder", {LongValue(static_cast<long>(folder))}, result);
        found.Set(result);
        return status;
    }
    Folder FolderFromID(const std::wstring& entryId) const {
        return Folder(Call(L"GetFolderFromID", {TextValue(entryId), MissingArgument()}));
    }
};

/// Outlook itself.
class Application : public Reference {
public:
    Application() : Reference(kApplication) {}

    /// Such as "16.0.0.17328".
    std::wstring Version() const { return GetText(L"Version"); }
};

} // namespace varden::outlook
