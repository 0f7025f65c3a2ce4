// Stores: their folders by id, special folders, the counter of ids.
#include "standin/mailbox/Store.h"

#include "standin/mailbox/ItemTypes.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/Tags.h"

#include <algorithm>

namespace standin::mailbox {
namespace {

/// The mailbox's X.500 name, as it stands in the store's entry id; any other store is named after its key.
std::string NameInEntryId(const Store& store) {
    const auto owner = store.Mailbox().Addresses().FindByAddress(L"SMTP", store.SmtpAddress());
    return Narrow(owner ? owner->Address() : L"/cn=" + TextOfGuid(store.Key().provider), 1252);
}

} // namespace

Store::Store(mailbox::Mailbox& mailbox, StoreDescription description, const StoreKey& key,
             std::uint64_t reservedIds)
    : m_mailbox(&mailbox), m_description(std::move(description)), m_key(key), m_root(new Folder),
      m_nextId(reservedIds), m_reservedIds(reservedIds) {
    m_root->m_store = this;
    m_root->m_id = kRootFolderId;
    m_folders[kRootFolderId] = m_root.get();
}

bool Store::IsDefault() const {
    return m_mailbox->DefaultStore() == this;
}

bool Store::IsInProfile() const {
    const std::vector<Store*> stores = m_mailbox->ProfileStores();
    return std::ranges::find(stores, this) != stores.end();
}

Bytes Store::EntryId() const {
    return MakeStoreEntryId(Kind() == StoreKind::Public, "mail.example.com", NameInEntryId(*this));
}

Folder* Store::SpecialFolder(std::int32_t number) const {
    const auto found = m_special.find(number);
    return found == m_special.end() ? nullptr : found->second;
}

HRESULT Store::SetSpecialFolder(std::int32_t number, Folder* folder) {
    if (folder && (&folder->Store() != this || folder->IsDeleted()))
        return MAPI_E_INVALID_PARAMETER;
    const std::map<std::int32_t, Folder*> before = m_special;
    if (folder)
        m_special[number] = folder;
    else
        m_special.erase(number);
    const HRESULT status = Changed();
    if (FAILED(status))
        m_special = before;
    return status;
}

Folder* Store::FindFolder(std::uint64_t id) const {
    const auto found = m_folders.find(id);
    return found == m_folders.end() ? nullptr : found->second;
}

HRESULT Store::NewId(std::uint64_t& id) {
    constexpr std::uint64_t kReservedAtOnce = 1000;
    if (m_nextId == m_reservedIds) {
        m_reservedIds += kReservedAtOnce;
        if (const HRESULT status = Changed(); FAILED(status)) {
            m_reservedIds = m_nextId;
            return status;
        }
    }
    id = m_nextId++;
    return S_OK;
}

std::int32_t Store::SupportMask() const {
    constexpr std::int32_t kAlways = STORE_ENTRYID_UNIQUE | STORE_SEARCH_OK | STORE_ATTACH_OK | STORE_OLE_OK |
                                     STORE_MV_PROPS_OK | STORE_CATEGORIZE_OK | STORE_RTF_OK |
                                     STORE_RESTRICTION_OK | STORE_SORT_OK | kStoreUnicodeOk;
    constexpr std::int32_t kWritable = STORE_MODIFY_OK | STORE_CREATE_OK;
    constexpr std::int32_t kReadOnly = STORE_READONLY;
    constexpr std::int32_t kPublic = STORE_PUBLIC_FOLDERS;
    constexpr std::int32_t kSubmit = STORE_SUBMIT_OK;
    return kAlways | (m_readOnly ? kReadOnly : kWritable) | (Kind() == StoreKind::Public ? kPublic : kSubmit);
}

Folder* Store::TakeInFolder(Folder& parent, std::uint64_t id, const FolderDescription& description,
                            PropertyBag properties, std::vector<UserField> fields) {
    if (m_folders.contains(id) || parent.FindSubfolder(description.name))
        return nullptr;
    std::shared_ptr<Folder> folder(new Folder);
    folder->m_store = this;
    folder->m_id = id;
    folder->m_name = description.name;
    folder->m_defaultItemType = description.defaultItemType;
    folder->m_containerClass = description.containerClass;
    folder->m_properties = std::move(properties);
    folder->m_userFields = std::move(fields);
    m_folders[id] = folder.get();
    if (id == kIpmSubtreeId)
        m_ipmSubtree = folder.get();
    parent.LinkSubfolder(folder);
    return folder.get();
}

void Store::TakeInRoot(PropertyBag properties) {
    m_root->m_properties = std::move(properties);
}

void Store::TakeIn(PropertyBag properties, const std::map<std::int32_t, std::uint64_t>& special) {
    m_properties = std::move(properties);
    for (const auto& [number, id] : special)
        if (Folder* folder = FindFolder(id))
            m_special[number] = folder;
}

HRESULT Store::CheckWritable() const {
    return m_readOnly ? E_ACCESSDENIED : S_OK;
}

PropertyBag& Store::Edit() {
    return m_properties;
}

HRESULT Store::Changed() {
    Keeper* keeper = m_mailbox->Kept();
    return keeper ? keeper->SaveStore(*this) : S_OK;
}

} // namespace standin::mailbox
