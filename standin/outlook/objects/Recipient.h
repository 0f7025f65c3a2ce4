// Recipients: of an item, or on their own as NameSpace.CreateRecipient makes them.
#pragma once

#include "standin/outlook/objects/AddressEntry.h"
#include "standin/outlook/objects/RecipientList.h"

namespace standin::outlook {

/// A recipient. One that belongs to an item is a row of one of the item's lists, and knows it by its row id;
/// one on its own keeps its properties itself.
class RecipientObject final : public Object {
public:
    explicit RecipientObject(mailbox::PropertyBag row);
    RecipientObject(ComPtr<Object> owner, std::shared_ptr<RecipientList> list, std::uint32_t rowId);

    /// The item, or the session of a recipient on its own.
    ComPtr<Object> Parent() override;
    /// Raises MAPI_E_NOT_FOUND for a row that the item doesn't have any longer.
    const mailbox::PropertyBag& Properties() const;
    void Replace(mailbox::PropertyBag row);
    /// 1-based place in the item; 0 on its own.
    std::int32_t Place() const;
    /// Removes it from its item. Raises MAPI_E_NO_SUPPORT for one on its own.
    void Remove();

    bool IsResolved() const { return Properties().Contains(PR_ENTRYID); }
    /// Whether it is resolved afterwards.
    bool Resolve();
    /// The entry that it is resolved to, resolving it first; raises if it can't be.
    EntryPtr Entry();
    void SetEntry(const mailbox::AddressEntry& entry);
    mailbox::NamedProperties& Names() const;

private:
    ComPtr<Object> m_owner;
    std::shared_ptr<RecipientList> m_list; // null: on its own
    std::uint32_t m_rowId = 0;
    mailbox::PropertyBag m_row;
};

/// The row of a recipient that nobody has resolved yet.
mailbox::PropertyBag UnresolvedRecipient(const std::wstring& name);

} // namespace standin::outlook
