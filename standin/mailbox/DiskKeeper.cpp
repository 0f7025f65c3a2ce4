// Writing the parts of a mailbox to disk.
#include "standin/mailbox/DiskKeeper.h"

#include "standin/mailbox/Files.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/MailboxFolder.h"
#include "standin/mailbox/Msg.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/PropertyText.h"
#include "standin/mailbox/Tags.h"

#include <cwchar>

namespace standin::mailbox::disk {
namespace {

std::wstring Word(bool yes) {
    return yes ? L"1" : L"0";
}

std::wstring Word(StoreKind kind) {
    for (const KindWord& row : kKinds)
        if (row.kind == kind)
            return row.word;
    return {};
}

HRESULT WriteSections(const std::wstring& folder, const wchar_t* name,
                      const std::vector<IniSection>& sections) {
    return ReplaceFile(folder, name, WriteIni(sections));
}

/// What follows from name, alias and address isn't written.
IniSection EntrySection(const AddressEntry& entry, const NamedProperties& names) {
    AddressBook fresh;
    const std::wstring alias = entry.Get<PR_ACCOUNT_W>().value_or(L"");
    const auto plain = fresh.Add({entry.Name(), alias, entry.SmtpAddress(), entry.IsDistributionList(), {}});
    IniSection section{L"Entry", 0, {}};
    section.Add(L"Name", entry.Name());
    section.Add(L"Alias", alias);
    section.Add(L"Address", entry.SmtpAddress());
    section.Add(L"List", Word(entry.IsDistributionList()));
    for (const auto& member : entry.Members())
        section.Add(L"Member", member->Get<PR_ACCOUNT_W>().value_or(L""));
    PropertyBag more;
    for (const Property& property : entry.Stored())
        if (const Value* value = plain->Stored().Find(property.Tag()); !value || *value != property.value)
            more.Put(property.Tag(), property.value);
    for (IniEntry& each : PropertySection(more, names).entries)
        section.entries.push_back(std::move(each));
    return section;
}

/// "20251122-203000-00000000002A.msg": in order of time.
std::wstring SubmittedFile(std::uint64_t id) {
    SYSTEMTIME now;
    GetSystemTime(&now);
    wchar_t text[32];
    std::swprintf(text, std::size(text), L"%04u%02u%02u-%02u%02u%02u-", now.wYear, now.wMonth, now.wDay,
                  now.wHour, now.wMinute, now.wSecond);
    return text + MessageFile(id);
}

} // namespace

HRESULT DiskKeeper::SaveMessage(const Folder& folder, std::uint64_t id, const Content& content) {
    Bytes file;
    if (const HRESULT status = WriteMsgBytes(content, folder.Names(), file); FAILED(status))
        return status;
    return ReplaceFile(m_places.PathOf(folder), MessageFile(id), file);
}

HRESULT DiskKeeper::MoveMessage(const Folder& from, std::uint64_t id, const Folder& to, std::uint64_t newId) {
    return MoveEntry(m_places.PathOf(from) + L'\\' + MessageFile(id),
                     m_places.PathOf(to) + L'\\' + MessageFile(newId));
}

HRESULT DiskKeeper::RemoveMessage(const Folder& folder, std::uint64_t id) {
    return RemoveFile(m_places.PathOf(folder) + L'\\' + MessageFile(id));
}

HRESULT DiskKeeper::AddFolder(const Folder& folder) {
    if (folder.Id() == kIpmSubtreeId)
        m_places.Set(folder.Store(), m_places.ProposedStoreName(folder.Store().Name()));
    else
        m_places.Set(folder, Places::ProposedName(folder.Name(), folder.Id()));
    if (folder.Parent() && folder.Parent()->Id() == kRootFolderId && folder.Id() != kIpmSubtreeId)
        if (const HRESULT status = MakeFolder(m_places.PathOf(*folder.Parent())); FAILED(status))
            return status;
    if (const HRESULT status = MakeFolder(m_places.PathOf(folder)); FAILED(status))
        return status;
    return SaveFolder(folder);
}

HRESULT DiskKeeper::SaveFolder(const Folder& folder) {
    if (folder.Id() == kRootFolderId)
        if (const HRESULT status = MakeFolder(m_places.PathOf(folder)); FAILED(status))
            return status;
    return WriteFolderFile(folder, folder.Name());
}

HRESULT DiskKeeper::WriteFolderFile(const Folder& folder, const std::wstring& name) {
    std::vector<IniSection> sections{{L"Folder", 0, {}}};
    sections[0].Add(L"Id", std::to_wstring(folder.Id()));
    sections[0].Add(L"Class", folder.ContainerClass());
    sections[0].Add(L"ItemType", std::to_wstring(folder.DefaultItemType()));
    if (folder.Id() > kIpmSubtreeId) {
        const std::wstring place = m_places.NameOf(folder);
        sections[0].Add(L"Place", place);
        if (NameFromFileName(place) != name)
            sections[0].Add(L"Name", name);
    }
    for (const UserField& field : folder.UserFields()) {
        IniSection section{L"Field", 0, {}};
        section.Add(L"Name", field.name);
        section.Add(L"Type", std::to_wstring(field.type));
        sections.push_back(std::move(section));
    }
    sections.push_back(PropertySection(folder.Stored(), folder.Names()));
    return WriteSections(m_places.PathOf(folder), kFolderFile, sections);
}

/// The name in the folder's file counts where the file-system folder has another. So it is written first, and
/// a folder that is only written differently, in upper or lower case, isn't touched beyond that.
HRESULT DiskKeeper::MoveFolder(const Folder& folder, const Folder& newParent, const std::wstring& newName) {
    const std::wstring oldPlace = m_places.NameOf(folder);
    const std::wstring oldPath = m_places.PathOf(folder);
    const std::wstring newPlace = Places::ProposedName(newName, folder.Id());
    const bool isSameParent = folder.Parent() == &newParent;
    if (newName != folder.Name() || NameFromFileName(oldPlace) != newName)
        if (const HRESULT status = WriteFolderFile(folder, newName); FAILED(status))
            return status;
    if (isSameParent && SameIgnoringCase(oldPlace, newPlace))
        return S_OK;
    const HRESULT status = MoveEntry(oldPath, m_places.PathOf(newParent) + L'\\' + newPlace);
    if (FAILED(status)) {
        WriteFolderFile(folder, folder.Name());
        return status;
    }
    m_places.Set(folder, newPlace);
    return S_OK;
}

HRESULT DiskKeeper::RemoveFolder(const Folder& folder) {
    const HRESULT status = RemoveFolderTree(m_places.PathOf(*folder.Parent()), m_places.NameOf(folder));
    if (SUCCEEDED(status))
        m_places.Forget(folder);
    return status;
}

HRESULT DiskKeeper::SaveStore(const Store& store) {
    std::vector<IniSection> sections{{L"Store", 0, {}}, {L"Special", 0, {}}};
    sections[0].Add(L"Name", store.Name());
    sections[0].Add(L"Kind", Word(store.Kind()));
    sections[0].Add(L"Address", store.SmtpAddress());
    sections[0].Add(L"Default", Word(store.Description().isDefault));
    sections[0].Add(L"InProfile", Word(store.Description().isInProfile));
    sections[0].Add(L"Provider", TextOfGuid(store.Key().provider));
    sections[0].Add(L"Database", TextOfGuid(store.Key().database));
    sections[0].Add(L"Ids", std::to_wstring(store.ReservedIds()));
    for (const auto& [number, folder] : store.SpecialFolders())
        sections[1].Add(std::to_wstring(number), std::to_wstring(folder->Id()));
    sections.push_back(PropertySection(store.Stored(), store.Names()));
    return WriteSections(m_places.PathOf(store), kStoreFile, sections);
}

HRESULT DiskKeeper::SaveProfile(const Mailbox& mailbox) {
    std::vector<IniSection> sections{{L"Profile", 0, {}}};
    sections[0].Add(L"Name", mailbox.OwnProfileName());
    for (const auto& store : mailbox.AllStores())
        sections[0].Add(L"Store", m_places.NameOf(*store));
    for (const auto& entry : mailbox.Addresses().Entries())
        sections.push_back(EntrySection(*entry, mailbox.Addresses().Names()));
    return WriteSections(m_places.Root(), kProfileFile, sections);
}

HRESULT DiskKeeper::SaveSubmitted(const Store& store, std::uint64_t id, const Content& content) {
    const std::wstring folder = m_places.Root() + L'\\' + kTransportFolder;
    Bytes file;
    if (const HRESULT status = WriteMsgBytes(content, store.Names(), file); FAILED(status))
        return status;
    if (const HRESULT status = MakeFolder(folder); FAILED(status))
        return status;
    return ReplaceFile(folder, SubmittedFile(id), file);
}

} // namespace standin::mailbox::disk
