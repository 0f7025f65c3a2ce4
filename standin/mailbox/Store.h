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

/// A message store.
class Store final : public PropertyObject {
public:
    mailbox::Mailbox& Mailbox() const { return *m_mailbox; }
    const std::wstring& Name() const { return m_description.name; }
    StoreKind Kind() const { return m_description.kind; }
    const std::wstring& SmtpAddress() const { return m_description.smtpAddress; }
    bool IsDefault() const { return m_description.isDefault; }
    bool IsInProfile() const { return m_description.isInProfile; }
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

    /// Failure switches: the stores table has a row without entry id for this store; nothing in it can be
    /// written.
    void SetRowWithoutEntryId(bool without) { m_rowWithoutEntryId = without; }
    bool RowWithoutEntryId() const { return m_rowWithoutEntryId; }
    void SetReadOnly(bool readOnly) { m_readOnly = readOnly; }
    bool IsReadOnly() const { return m_readOnly; }

    const PropertyBag& Stored() const override { return m_properties; }
    NamedProperties& Names() const override { return m_names; }

protected:
    std::span<const ComputedProperty> Computed() const override;
    HRESULT Edit(PropertyBag*& bag) override;
    HRESULT Changed(PropertyTag tag) override;

private:
    friend class Mailbox;
    friend class Folder;
    Store() = default;

    mailbox::Mailbox* m_mailbox = nullptr;
    StoreDescription m_description;
    StoreKey m_key;
    PropertyBag m_properties;
    mutable NamedProperties m_names;
    std::shared_ptr<Folder> m_root;
    Folder* m_ipmSubtree = nullptr;
    std::map<std::int32_t, Folder*> m_special;
    std::unordered_map<std::uint64_t, Folder*> m_folders;
    std::uint64_t m_nextId = 1;
    bool m_rowWithoutEntryId = false;
    bool m_readOnly = false;
};

} // namespace standin::mailbox
