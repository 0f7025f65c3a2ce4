// The profile: its stores, and finding things in them.
#include "standin/mailbox/Mailbox.h"

#include "standin/mailbox/Platform.h"

#include <algorithm>
#include <cstring>

namespace standin::mailbox {
namespace {

// What all public folder stores have for a provider ([MS-OXCDATA] 2.2.4.1).
constexpr GUID kPublicProvider{0x9073441A, 0x66AA, 0xCD11, {0x9B, 0xC8, 0x00, 0xAA, 0x00, 0x2F, 0xC4, 0x5A}};

} // namespace

Mailbox::~Mailbox() = default;

std::size_t Mailbox::KeyHash::operator()(const std::pair<GUID, GUID>& key) const {
    std::size_t provider = 0;
    std::size_t database = 0;
    std::memcpy(&provider, &key.first, sizeof provider);
    std::memcpy(&database, &key.second, sizeof database);
    return provider ^ (database << 1);
}

std::vector<Store*> Mailbox::ProfileStores() const {
    std::vector<Store*> stores;
    if (m_user)
        stores.push_back(m_user);
    for (const auto& store : m_stores)
        if (m_user ? store->Kind() == StoreKind::Public : store->Description().isInProfile)
            stores.push_back(store.get());
    return stores;
}

Store* Mailbox::DefaultStore() const {
    const auto found =
        std::ranges::find_if(m_stores, [](const auto& store) { return store->Description().isDefault; });
    return m_user || found == m_stores.end() ? m_user : found->get();
}

Store* Mailbox::FindOtherUser(const std::wstring& profile) const {
    const auto found = std::ranges::find_if(m_stores, [&](const auto& store) {
        return store->Kind() == StoreKind::Mailbox && !store->Description().isInProfile &&
               SameIgnoringCase(store->Name(), profile);
    });
    return found == m_stores.end() ? nullptr : found->get();
}

bool Mailbox::HasProfile(const std::wstring& name) const {
    return SameIgnoringCase(name, m_profileName) || FindOtherUser(name);
}

HRESULT Mailbox::UseProfile(const std::wstring& name) {
    const bool isOwn = name.empty() || SameIgnoringCase(name, m_profileName);
    Store* user = isOwn ? nullptr : FindOtherUser(name);
    if (!isOwn && !user)
        return MAPI_E_NOT_FOUND;
    m_user = user;
    return user ? MakeMissingFolders(*user) : S_OK;
}

Store* Mailbox::FindMailbox(std::wstring_view nameOrAddress) const {
    std::shared_ptr<AddressEntry> owner;
    return SUCCEEDED(m_addresses.Resolve(nameOrAddress, owner)) ? FindMailbox(*owner) : nullptr;
}

Store* Mailbox::FindMailbox(const AddressEntry& owner) const {
    const std::wstring address = owner.SmtpAddress();
    const auto found = std::ranges::find_if(m_stores, [&](const auto& store) {
        return store->Kind() == StoreKind::Mailbox && SameIgnoringCase(store->SmtpAddress(), address);
    });
    return address.empty() || found == m_stores.end() ? nullptr : found->get();
}

Store& Mailbox::TakeInStore(const StoreDescription& description, const StoreKey& key,
                            std::uint64_t reservedIds) {
    m_stores.emplace_back(new Store(*this, description, key, reservedIds));
    m_storeByKey[{key.provider, key.database}] = m_stores.back().get();
    return *m_stores.back();
}

HRESULT Mailbox::SaveProfile() {
    return m_keeper ? m_keeper->SaveProfile(*this) : S_OK;
}

HRESULT Mailbox::KeepNew(const Folder& subtree) {
    if (!m_keeper)
        return S_OK;
    if (const HRESULT status = m_keeper->AddFolder(subtree); FAILED(status))
        return status;
    if (const HRESULT status = m_keeper->SaveStore(subtree.Store()); FAILED(status))
        return status;
    return SaveProfile();
}

HRESULT Mailbox::AddStore(const StoreDescription& description, Store*& store) {
    const bool isPublic = description.kind == StoreKind::Public;
    const StoreKey key{isPublic ? kPublicProvider : NewGuid(), NewGuid(), isPublic};
    Store& fresh = TakeInStore(description, key, kIpmSubtreeId + 1);
    const Folder* subtree = fresh.TakeInFolder(fresh.Root(), kIpmSubtreeId, kIpmSubtree, {}, {});
    const HRESULT status = KeepNew(*subtree);
    if (FAILED(status)) {
        m_storeByKey.erase({key.provider, key.database});
        m_stores.pop_back();
        return status;
    }
    store = &fresh;
    return S_OK;
}

Store* Mailbox::FindStore(std::span<const std::uint8_t> entryId) const {
    const auto found = std::ranges::find_if(
        m_stores, [&](const auto& store) { return std::ranges::equal(store->EntryId(), entryId); });
    return found == m_stores.end() ? nullptr : found->get();
}

Store* Mailbox::FindByKey(const ObjectEntryId& entryId) const {
    const auto found = m_storeByKey.find({entryId.provider, entryId.database});
    return found == m_storeByKey.end() ? nullptr : found->second;
}

Folder* Mailbox::FindFolder(std::span<const std::uint8_t> entryId) const {
    const auto parsed = ParseObjectEntryId(entryId);
    const Store* store = parsed && parsed->message == 0 ? FindByKey(*parsed) : nullptr;
    return store ? store->FindFolder(parsed->folder) : nullptr;
}

std::shared_ptr<Message> Mailbox::FindMessage(std::span<const std::uint8_t> entryId) const {
    const auto parsed = ParseObjectEntryId(entryId);
    const Store* store = parsed && parsed->message != 0 ? FindByKey(*parsed) : nullptr;
    const Folder* folder = store ? store->FindFolder(parsed->folder) : nullptr;
    return folder ? folder->FindMessage(parsed->message) : nullptr;
}

Store* Mailbox::FindRecipient(const PropertyBag& recipient) const {
    const auto entry = m_addresses.FindRecipient(recipient);
    return entry ? FindMailbox(*entry) : nullptr;
}

} // namespace standin::mailbox
