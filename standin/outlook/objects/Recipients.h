// The recipients of an item as a collection.
#pragma once

#include "standin/outlook/automation/Collection.h"
#include "standin/outlook/objects/Recipient.h"

namespace standin::outlook {

/// Recipients. Live: rows that come and go by other ways are seen.
class RecipientsObject final : public Collection {
public:
    RecipientsObject(ComPtr<Object> owner, std::shared_ptr<RecipientList> list);

    ComPtr<Object> Parent() override { return m_owner; }
    std::int32_t Count() override;
    _variant_t At(std::int32_t place) override;
    /// By the whole display name, case ignored.
    _variant_t Named(const std::wstring& name) override;

    RecipientList& List() const { return *m_list; }
    ComPtr<RecipientObject> Recipient(std::uint32_t rowId) const;

private:
    ComPtr<Object> m_owner;
    std::shared_ptr<RecipientList> m_list;
};

/// Whether all of them are resolved afterwards.
bool ResolveAll(const std::shared_ptr<RecipientList>& list);

} // namespace standin::outlook
