// Message stores: a mailbox, an archive, the public folders.
#pragma once

#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Folder.h"

#include <map>

namespace standin::mailbox {

class Mailbox;

enum class StoreKind { Mailbox, Archive, Public };

struct StoreDescription {
    std::wstring name;
    StoreKind kind = StoreKind::Mailbox;
    std::wstring smtpAddress; ///< of the mailbox whose store this is; empty for other stores
    bool isDefault = false;
    bool isInProfile = true; ///< false: can be opened as another user's, but isn't in the stores table
};

/// The ids of the two folders that every store has.
inline constexpr std::uint64_t kRootFolderId = 1;
inline constexpr std::uint64_t kIpmSubtreeId = 2;
inline const FolderDescription kIpmSubtree{L"Top of Information Store", 0, L"IPF.Note"};

/// A message store.
class Store final : public PropertyObject {
public:
    mailbox::Mailbox& Mailbox() const { return *m_mailbox; }
    const std::wstring& Name() const { return m_description.name; }
    StoreKind Kind() const { return m_description.kind; }
    const std::wstring& SmtpAddress() const { return m_description.smtpAddress; }
    /// In the profile that is looked through.
    bool IsDefault() const;
    bool IsInProfile() const;
    /// As it is in the mailbox's own profile.
    const StoreDescription& Description() const { return m_description; }
    const StoreKey& Key() const { return m_key; }
    Bytes EntryId() const;

    /// The root of everything, which users don't see; below it the IPM subtree, the top of what they do see.
    Folder& Root() const { return *m_root; }
    Folder& IpmSubtree() const { return *m_ipmSubtree; }
    /// A special folder by its OlDefaultFolders number; null if the store has none.
    Folder* SpecialFolder(std::int32_t number) const;
    HRESULT SetSpecialFolder(std::int32_t number, Folder* folder);
    const std::map<std::int32_t, Folder*>& SpecialFolders() const { return m_special; }

    Folder* FindFolder(std::uint64_t id) const;
    std::size_t FolderCount() const { return m_folders.size(); }

    /// A counter that nothing in this store has had yet, for a folder or a message.
    HRESULT NewId(std::uint64_t& id);
    /// Counters below this one may be in use: what is kept of the counter. It is ahead, so as to be kept
    /// seldom.
    std::uint64_t ReservedIds() const { return m_reservedIds; }
    /// Puts a folder in that is kept already, under the id that it has: for whoever keeps the mailbox. Null
    /// if the id or the name is in use.
    Folder* TakeInFolder(Folder& parent, std::uint64_t id, const FolderDescription& description,
                         PropertyBag properties, std::vector<UserField> fields);
    void TakeInRoot(PropertyBag properties);
    /// The same for the store's own properties and special folders (by number).
    void TakeIn(PropertyBag properties, const std::map<std::int32_t, std::uint64_t>& special);

    /// Failure switches: the stores table has a row without entry id for this store; nothing in it can be
    /// written.
    void SetRowWithoutEntryId(bool without) { m_rowWithoutEntryId = without; }
    bool RowWithoutEntryId() const { return m_rowWithoutEntryId; }
    void SetReadOnly(bool readOnly) { m_readOnly = readOnly; }
    bool IsReadOnly() const { return m_readOnly; }
    /// PR_STORE_SUPPORT_MASK.
    std::int32_t SupportMask() const;

    const PropertyBag& Stored() const override { return m_properties; }
    NamedProperties& Names() const override { return m_names; }

protected:
    std::span<const ComputedProperty> Computed() const override;
    HRESULT CheckWritable() const override;
    PropertyBag& Edit() override;
    HRESULT Changed() override;

private:
    friend class Mailbox;
    friend class Folder;
    Store(mailbox::Mailbox& mailbox, StoreDescription description, const StoreKey& key,
          std::uint64_t reservedIds);

    mailbox::Mailbox* m_mailbox;
    StoreDescription m_description;
    StoreKey m_key;
    PropertyBag m_properties;
    mutable NamedProperties m_names;
    std::shared_ptr<Folder> m_root;
    Folder* m_ipmSubtree = nullptr;
    std::map<std::int32_t, Folder*> m_special;
    std::unordered_map<std::uint64_t, Folder*> m_folders;
    std::uint64_t m_nextId;
    std::uint64_t m_reservedIds;
    bool m_rowWithoutEntryId = false;
    bool m_readOnly = false;
};

} // namespace standin::mailbox
