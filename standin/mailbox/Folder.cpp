// The folder tree, and what is in folders.
#include "standin/mailbox/Folder.h"

#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/ItemTypes.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/Platform.h"

#include <algorithm>

namespace standin::mailbox {

Keeper* Folder::Kept() const {
    return m_store->Mailbox().Kept();
}

NamedProperties& Folder::Names() const {
    return m_store->Names();
}

Bytes Folder::EntryId() const {
    return MakeFolderEntryId(m_store->Key(), m_id);
}

bool Folder::IsSpecial() const {
    const auto isThis = [this](const auto& special) { return special.second == this; };
    return !m_parent || m_id == kIpmSubtreeId || std::ranges::any_of(m_store->SpecialFolders(), isThis);
}

bool Folder::ContainsSpecial() const {
    return IsSpecial() ||
           std::ranges::any_of(m_subfolders, [](const auto& each) { return each->ContainsSpecial(); });
}

bool Folder::IsBelow(const Folder& other) const {
    for (const Folder* folder = this; folder; folder = folder->m_parent)
        if (folder == &other)
            return true;
    return false;
}

HRESULT Folder::CheckWritable() const {
    if (m_deleted)
        return MAPI_E_OBJECT_DELETED;
    return m_store->IsReadOnly() ? E_ACCESSDENIED : S_OK;
}

PropertyBag& Folder::Edit() {
    return m_properties;
}

HRESULT Folder::Changed() {
    if (Keeper* keeper = Kept())
        if (const HRESULT status = keeper->SaveFolder(*this); FAILED(status))
            return status;
    if (m_parent)
        ++m_parent->m_hierarchyVersion;
    return S_OK;
}

HRESULT Folder::CheckMovable() const {
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    return ContainsSpecial() ? E_ACCESSDENIED : S_OK;
}

/// Whether a subfolder can have this name; the one that has it already may keep it in another case.
HRESULT Folder::CheckName(const std::wstring& name, const Folder* itself) const {
    if (name.empty())
        return MAPI_E_INVALID_PARAMETER;
    const Folder* found = FindSubfolder(name);
    return found && found != itself ? MAPI_E_COLLISION : S_OK;
}

Folder* Folder::FindSubfolder(std::wstring_view name) const {
    const auto found = m_subfolderByName.find(FoldCase(name));
    return found == m_subfolderByName.end() ? nullptr : found->second;
}

void Folder::LinkSubfolder(const std::shared_ptr<Folder>& folder) {
    folder->m_parent = this;
    m_subfolders.push_back(folder);
    m_subfolderByName[FoldCase(folder->m_name)] = folder.get();
    ++m_hierarchyVersion;
}

std::shared_ptr<Folder> Folder::UnlinkSubfolder(Folder& folder) {
    std::shared_ptr<Folder> held = folder.shared_from_this();
    std::erase(m_subfolders, held);
    m_subfolderByName.erase(FoldCase(folder.m_name));
    ++m_hierarchyVersion;
    return held;
}

HRESULT Folder::CreateSubfolder(const FolderDescription& description, std::shared_ptr<Folder>& folder) {
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    if (const HRESULT status = CheckName(description.name, nullptr); FAILED(status))
        return status;
    std::shared_ptr<Folder> fresh(new Folder);
    if (const HRESULT status = m_store->NewId(fresh->m_id); FAILED(status))
        return status;
    const ItemType& type = ItemTypeByNumber(description.defaultItemType);
    fresh->m_store = m_store;
    fresh->m_parent = this;
    fresh->m_name = description.name;
    fresh->m_defaultItemType = description.defaultItemType;
    fresh->m_containerClass =
        description.containerClass.empty() ? std::wstring(type.containerClass) : description.containerClass;
    fresh->m_properties.Set<PR_CREATION_TIME>(Now());
    fresh->m_properties.Set<PR_LAST_MODIFICATION_TIME>(Now());
    if (Keeper* keeper = Kept())
        if (const HRESULT status = keeper->AddFolder(*fresh); FAILED(status))
            return status;
    LinkSubfolder(fresh);
    m_store->m_folders[fresh->m_id] = fresh.get();
    folder = std::move(fresh);
    return S_OK;
}

HRESULT Folder::Rename(const std::wstring& name) {
    if (name.empty())
        return MAPI_E_INVALID_PARAMETER;
    return m_parent ? MoveTo(*m_parent, name) : CheckMovable();
}

HRESULT Folder::MoveTo(Folder& parent, const std::wstring& newName) {
    const std::wstring name = newName.empty() ? m_name : newName;
    for (const HRESULT status : {CheckMovable(), parent.CheckWritable()})
        if (FAILED(status))
            return status;
    if (parent.m_store != m_store)
        return MAPI_E_NO_SUPPORT;
    if (parent.IsBelow(*this))
        return MAPI_E_FOLDER_CYCLE;
    if (const HRESULT status = parent.CheckName(name, this); FAILED(status))
        return status;
    if (Keeper* keeper = Kept())
        if (const HRESULT status = keeper->MoveFolder(*this, parent, name); FAILED(status))
            return status;
    if (&parent == m_parent) { // keeps its place in the list
        m_parent->m_subfolderByName.erase(FoldCase(m_name));
        m_parent->m_subfolderByName[FoldCase(name)] = this;
        ++m_parent->m_hierarchyVersion;
        m_name = name;
        return S_OK;
    }
    const std::shared_ptr<Folder> held = m_parent->UnlinkSubfolder(*this);
    m_name = name;
    parent.LinkSubfolder(held);
    return S_OK;
}

HRESULT Folder::CopyTo(Folder& parent, const std::wstring& newName, std::shared_ptr<Folder>& copy) const {
    if (parent.IsBelow(*this))
        return MAPI_E_FOLDER_CYCLE;
    const FolderDescription description{newName.empty() ? m_name : newName, m_defaultItemType,
                                        m_containerClass};
    if (const HRESULT status = parent.CreateSubfolder(description, copy); FAILED(status))
        return status;
    copy->m_properties = RemapBag(m_properties, Names(), copy->Names());
    copy->m_userFields = m_userFields;
    if (const HRESULT status = copy->Changed(); FAILED(status))
        return status;
    for (const std::vector<Message*>* messages : {&m_messages, &m_associated})
        for (const Message* message : *messages)
            if (const HRESULT status = CopyMessage(*message, *copy, nullptr); FAILED(status))
                return status;
    for (const auto& subfolder : m_subfolders) {
        std::shared_ptr<Folder> below;
        if (const HRESULT status = subfolder->CopyTo(*copy, {}, below); FAILED(status))
            return status;
    }
    return S_OK;
}

HRESULT Folder::Delete() {
    if (const HRESULT status = CheckMovable(); FAILED(status))
        return status;
    if (Keeper* keeper = Kept())
        if (const HRESULT status = keeper->RemoveFolder(*this); FAILED(status))
            return status;
    const std::shared_ptr<Folder> held = m_parent->UnlinkSubfolder(*this);
    MarkDeleted();
    return S_OK;
}

void Folder::MarkDeleted() {
    for (const auto& [id, message] : m_messageById)
        message->MarkRemoved();
    for (const auto& subfolder : m_subfolders)
        subfolder->MarkDeleted();
    m_messages.clear();
    m_associated.clear();
    m_messageById.clear();
    m_subfolders.clear();
    m_subfolderByName.clear();
    m_store->m_folders.erase(m_id);
    m_parent = nullptr;
    m_deleted = true;
    ++m_contentsVersion;
    ++m_hierarchyVersion;
}

HRESULT Folder::SetUserFields(std::vector<UserField> fields) {
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    std::swap(m_userFields, fields);
    const HRESULT status = Changed();
    if (FAILED(status))
        std::swap(m_userFields, fields);
    return status;
}

HRESULT Folder::SetDefaultItemType(std::int32_t type, const std::wstring& containerClass) {
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    const std::int32_t typeBefore = std::exchange(m_defaultItemType, type);
    std::wstring classBefore = std::exchange(m_containerClass, containerClass);
    const HRESULT status = Changed();
    if (FAILED(status)) {
        m_defaultItemType = typeBefore;
        m_containerClass = std::move(classBefore);
    }
    return status;
}

} // namespace standin::mailbox
