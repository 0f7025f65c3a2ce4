// Reading a mailbox: the profile, its stores, their folders, the messages in them.
#include "standin/mailbox/DiskLoader.h"

#include "standin/mailbox/Files.h"
#include "standin/mailbox/Msg.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/PropertyText.h"

#include <algorithm>
#include <cwchar>
#include <limits>

namespace standin::mailbox::disk {
namespace {

constexpr std::pair<HRESULT, const wchar_t*> kReasons[] = {
    {MAPI_E_CORRUPT_DATA, L"damaged, or no MSG file"},
    {MAPI_E_TOO_COMPLEX, L"messages within messages, too deep"},
    {MAPI_E_NO_ACCESS, L"no access"},
    {MAPI_E_NOT_FOUND, L"not found"},
    {MAPI_E_COLLISION, L"something of that name is in the way"},
    {MAPI_E_NOT_ENOUGH_DISK, L"the disk is full"},
    {MAPI_E_TOO_BIG, L"too big"},
};

[[noreturn]] void Fail(const std::wstring& path, const std::wstring& reason) {
    throw LoadError{ShownPath(path) + L": " + reason};
}

bool IsMessageFile(const std::wstring& name) {
    constexpr std::size_t kLength = std::size(kMessageEnding) - 1;
    return name.size() >= kLength && SameIgnoringCase(name.substr(name.size() - kLength), kMessageEnding);
}

/// Runs what throws IniError for a file, and names the file.
template <class Interpret>
auto Interpreting(const std::wstring& path, Interpret interpret) {
    try {
        return interpret();
    } catch (const IniError& error) {
        throw LoadError{ShownPath(path) + L":" + std::to_wstring(error.line) + L": " + error.reason};
    }
}

/// The sections of an .ini file; nothing if there is none.
std::optional<std::vector<IniSection>> ReadIniFile(const std::wstring& path) {
    Bytes file;
    const HRESULT status = ReadWholeFile(path, file);
    if (status == MAPI_E_NOT_FOUND)
        return std::nullopt;
    if (FAILED(status))
        Fail(path, ReasonText(status));
    return Interpreting(path, [&] { return ParseIni(file); });
}

std::optional<FolderFile> ReadFolderFile(const std::wstring& folder) {
    const std::wstring path = folder + L'\\' + kFolderFile;
    const auto sections = ReadIniFile(path);
    return sections ? std::optional(Interpreting(path, [&] { return ParseFolderFile(*sections); }))
                    : std::nullopt;
}

std::vector<FolderEntry> Entries(const std::wstring& path) {
    std::vector<FolderEntry> entries;
    if (const HRESULT status = ListFolder(path, entries); FAILED(status))
        Fail(path, ReasonText(status));
    return entries;
}

} // namespace

std::wstring ReasonText(HRESULT status) {
    for (const auto& [known, reason] : kReasons)
        if (status == known)
            return reason;
    wchar_t number[32];
    std::swprintf(number, std::size(number), L"status 0x%08X", static_cast<unsigned>(status));
    return number;
}

void DiskLoader::LeaveOut(const std::wstring& path, const std::wstring& reason) {
    m_report.leftOut.push_back(ShownPath(path) + L": " + reason);
}

void DiskLoader::Read(Mailbox& mailbox) {
    ReadProfile(mailbox);
    for (const std::wstring& place : m_storePlaces)
        ReadStore(mailbox, place);
    if (!mailbox.DefaultStore())
        Fail(m_places.Root() + L'\\' + kProfileFile, L"none of its stores is the default one");
    LookAroundStores();
}

std::unique_ptr<DiskKeeper> DiskLoader::PutInOrder() {
    auto keeper = std::make_unique<DiskKeeper>(m_places);
    for (const auto* actions : {&m_storesToSave, &m_toPutInOrder})
        for (const auto& [path, action] : *actions)
            if (const HRESULT status = action(*keeper); FAILED(status))
                Fail(path, ReasonText(status));
    // What can't be cleared does no harm.
    std::ranges::for_each(m_leftOverFiles, RemoveFile);
    std::ranges::for_each(m_leftOverFolders, RemoveTree);
    return keeper;
}

void DiskLoader::ReadProfile(Mailbox& mailbox) {
    const std::wstring path = m_places.Root() + L'\\' + kProfileFile;
    const auto sections = ReadIniFile(path);
    if (!sections)
        Fail(m_places.Root(), L"not empty, and no mailbox: there is no mailbox.ini");
    Interpreting(path, [&] {
        ProfileFile file = ParseProfileFile(*sections, mailbox.Addresses().Names());
        mailbox.SetProfileName(file.name);
        FillAddressBook(file.entries, mailbox.Addresses());
        m_storePlaces = std::move(file.stores);
    });
}

void DiskLoader::ReadStore(Mailbox& mailbox, const std::wstring& place) {
    const std::wstring path = m_places.Root() + L'\\' + place + L'\\' + kStoreFile;
    const auto sections = ReadIniFile(path);
    if (!sections)
        Fail(path, L"missing, but the store is in mailbox.ini");
    const StoreFile file = Interpreting(path, [&] { return ParseStoreFile(*sections); });
    Store& store = mailbox.TakeInStore(file.description, file.key, file.reservedIds);
    m_places.Set(store, place);
    ReadOwnFolders(store);
    Interpreting(path, [&] { store.TakeIn(ParseProperties(file.properties, store.Names()), file.special); });
    if (store.ReservedIds() != file.reservedIds)
        m_storesToSave.emplace_back(path, [&store](DiskKeeper& keeper) { return keeper.SaveStore(store); });
}

/// The IPM subtree, and the root if there is anything to it.
void DiskLoader::ReadOwnFolders(Store& store) {
    const std::wstring path = m_places.PathOf(store);
    const auto propertiesOf = [&](const std::wstring& folder, const std::optional<FolderFile>& file) {
        return file ? Interpreting(folder + L'\\' + kFolderFile,
                                   [&] { return ParseProperties(file->properties, store.Names()); })
                    : PropertyBag();
    };
    const auto subtreeFile = ReadFolderFile(path);
    Folder& subtree =
        *store.TakeInFolder(store.Root(), kIpmSubtreeId, kIpmSubtree, propertiesOf(path, subtreeFile),
                            subtreeFile ? subtreeFile->fields : std::vector<UserField>());
    ReadFolder(subtree);
    const std::wstring rootPath = m_places.PathOf(store.Root());
    if (!FileExists(rootPath))
        return;
    store.TakeInRoot(propertiesOf(rootPath, ReadFolderFile(rootPath)));
    ReadFolder(store.Root());
}

/// What is in a folder, and below it. Its own file has been read.
void DiskLoader::ReadFolder(Folder& folder) {
    const std::wstring path = m_places.PathOf(folder);
    std::vector<std::wstring> messages;
    std::vector<std::wstring> subfolders;
    for (const FolderEntry& entry : Entries(path)) {
        const std::wstring below = path + L'\\' + entry.name;
        if (entry.name.starts_with(entry.isFolder ? kDeletedPrefix : kUnfinishedPrefix))
            (entry.isFolder ? m_leftOverFolders : m_leftOverFiles).push_back(below);
        else if (entry.isFolder && entry.name != kRootFolder)
            subfolders.push_back(entry.name);
        else if (!entry.isFolder && IsMessageFile(entry.name))
            messages.push_back(entry.name);
        else if (!entry.isFolder && entry.name != kFolderFile && entry.name != kStoreFile)
            LeaveOut(below, L"no MSG file");
    }
    ReadMessages(folder, messages);
    ReadSubfolders(folder, subfolders);
}

/// In order of their ids, which is that of their creation. A folder that somebody made by hand has no file;
/// one that somebody copied has an id that is in use. Both come last and get an id.
void DiskLoader::ReadSubfolders(Folder& parent, const std::vector<std::wstring>& places) {
    std::vector<std::pair<std::wstring, std::optional<FolderFile>>> found;
    found.reserve(places.size());
    for (const std::wstring& place : places)
        found.emplace_back(place, ReadFolderFile(m_places.PathOf(parent) + L'\\' + place));
    std::ranges::stable_sort(found, {}, [](const auto& each) {
        const auto& [place, file] = each;
        const std::uint64_t id = file ? file->id : std::numeric_limits<std::uint64_t>::max();
        return std::pair(id,
                         file && file->place != place); // of several with one id, the one it was written for
    });
    const Store& store = parent.Store();
    decltype(found) withoutId;
    for (auto& [place, file] : found) {
        if (file && file->id < store.ReservedIds() && !store.FindFolder(file->id))
            TakeInSubfolder(parent, place, file, true);
        else
            withoutId.emplace_back(place, std::move(file));
    }
    for (const auto& [place, file] : withoutId)
        TakeInSubfolder(parent, place, file, false);
}

void DiskLoader::TakeInSubfolder(Folder& parent, const std::wstring& place,
                                 const std::optional<FolderFile>& file, bool hasId) {
    const std::wstring path = m_places.PathOf(parent) + L'\\' + place;
    Store& store = parent.Store();
    FolderDescription description{NameFromFileName(place), parent.DefaultItemType(), parent.ContainerClass()};
    PropertyBag properties;
    if (file) {
        description = {file->name.value_or(description.name), file->itemType, file->containerClass};
        properties = Interpreting(path + L'\\' + kFolderFile,
                                  [&] { return ParseProperties(file->properties, store.Names()); });
    }
    std::uint64_t id = hasId ? file->id : 0;
    if (!hasId)
        store.NewId(id);
    Folder* folder = store.TakeInFolder(parent, id, description, std::move(properties),
                                        file ? file->fields : std::vector<UserField>());
    if (!folder)
        Fail(path, L"another folder beside it has this name");
    m_places.Set(*folder, place);
    if (!hasId)
        m_toPutInOrder.emplace_back(path,
                                    [folder](DiskKeeper& keeper) { return keeper.SaveFolder(*folder); });
    ReadFolder(*folder);
}

/// A file that somebody dropped in becomes a message under a new id, and gets its name from that.
void DiskLoader::ReadMessages(Folder& folder, const std::vector<std::wstring>& files) {
    const std::wstring path = m_places.PathOf(folder) + L'\\';
    const std::uint64_t idsInUse = folder.Store().ReservedIds();
    std::vector<std::wstring> droppedIn;
    for (const std::wstring& file : files) {
        const std::uint64_t id = IdOfMessageFile(file).value_or(0);
        Content content;
        if (id == 0 || id >= idsInUse)
            droppedIn.push_back(file);
        else if (ReadMessage(folder, path + file, content))
            folder.TakeIn(id, std::make_shared<const Content>(std::move(content)));
    }
    for (const std::wstring& file : droppedIn) {
        Content content;
        std::uint64_t id = 0;
        if (!ReadMessage(folder, path + file, content))
            continue;
        folder.Store().NewId(id);
        folder.TakeIn(id, std::make_shared<const Content>(std::move(content)));
        m_toPutInOrder.emplace_back(path + file, [from = path + file, to = path + MessageFile(id)](
                                                     DiskKeeper&) { return MoveEntry(from, to); });
    }
}

bool DiskLoader::ReadMessage(Folder& folder, const std::wstring& path, Content& content) {
    Bytes file;
    HRESULT status = ReadWholeFile(path, file);
    if (SUCCEEDED(status))
        status = ReadMsgBytes(file, folder.Names(), content);
    if (FAILED(status))
        LeaveOut(path, ReasonText(status));
    return SUCCEEDED(status);
}

void DiskLoader::LookAroundStores() {
    for (const FolderEntry& entry : Entries(m_places.Root())) {
        const std::wstring path = m_places.Root() + L'\\' + entry.name;
        const bool isStore = std::ranges::find(m_storePlaces, entry.name) != m_storePlaces.end();
        if (entry.name.starts_with(kUnfinishedPrefix) && !entry.isFolder)
            m_leftOverFiles.push_back(path);
        else if (entry.isFolder && !isStore && entry.name != kTransportFolder)
            LeaveOut(path, L"no store of mailbox.ini");
        else if (!entry.isFolder && entry.name != kProfileFile)
            LeaveOut(path, L"no part of a mailbox");
    }
}

} // namespace standin::mailbox::disk
