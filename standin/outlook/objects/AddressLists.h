// The address lists, of which there is one, and the entries of a list.
#pragma once

#include "standin/outlook/automation/Collection.h"
#include "standin/outlook/objects/AddressEntry.h"

namespace standin::outlook {

class AddressListsObject final : public Collection {
public:
    AddressListsObject();
    ComPtr<Object> Parent() override;
    std::int32_t Count() override { return 1; }
    _variant_t At(std::int32_t place) override;
    _variant_t Named(const std::wstring& name) override;
};

/// The global address list.
class AddressListObject final : public Object {
public:
    AddressListObject();
    ComPtr<Object> Parent() override;
};

/// Entries as they were when they were asked for.
class AddressEntriesObject final : public Collection {
public:
    AddressEntriesObject(ComPtr<Object> owner, std::vector<EntryPtr> entries);

    ComPtr<Object> Parent() override { return m_owner; }
    std::int32_t Count() override { return static_cast<std::int32_t>(m_entries.size()); }
    _variant_t At(std::int32_t place) override;
    /// By the whole display name, case ignored.
    _variant_t Named(const std::wstring& name) override;
    void SortBy(mailbox::PropertyTag tag, bool descending);

private:
    ComPtr<Object> m_owner;
    std::vector<EntryPtr> m_entries;
};

} // namespace standin::outlook
