// Items as automation objects: one class for all kinds, over the working copy of a message.
#pragma once

#include "standin/outlook/automation/Object.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/Window.h"

namespace standin::outlook {

/// An item. It shares its working copy with its MAPIOBJECT: what one writes, the other reads; nobody else
/// sees it before it is saved. Each request for an item gives an object with a working copy of its own.
class ItemObject : public Object {
public:
    ItemObject(const ItemKind& kind, std::shared_ptr<mailbox::OpenMessage> message);

    /// Raises MAPI_E_OBJECT_DELETED once this object has let go of the item: it was moved or sent, or deleted
    /// before it was ever saved.
    mailbox::OpenMessage& Message() const;
    const std::shared_ptr<mailbox::OpenMessage>& Shared() const;
    const ItemKind& ItemKindOf() const { return m_itemKind; }
    ComPtr<Object> Parent() override;
    std::int32_t Class() const override;

    /// Hexadecimal; empty for an item that was never saved.
    virtual std::wstring EntryId() const;
    void Save();
    /// Brings what follows from other properties up to date, as each save does.
    void Complete();
    /// As users do: into Deleted Items, or for good from there. The object shows a saved item as it was from
    /// then on, its entry id among the rest: Outlook doesn't look into the store for what an open item holds
    /// in memory. Saving and deleting it once more raise MAPI_E_OBJECT_DELETED.
    virtual void Delete();
    /// From now on this object has no item.
    void LetGo();
    /// Shows the item in a window, see ItemWindow. Hosts may have it closed at once.
    void Display(bool modal);
    void CloseWindow() { m_window.Close(); }

    /// Since when the timer of a journal entry runs; nothing if it doesn't.
    std::optional<mailbox::SysTime> timerStart;

private:
    /// Raises MAPI_E_OBJECT_DELETED.
    void RefuseDeleted() const;

    const ItemKind& m_itemKind;
    std::shared_ptr<mailbox::OpenMessage> m_message;
    bool m_isDeleted = false;
    ItemWindow m_window;
};

/// The item of an open message.
ComPtr<ItemObject> ItemFor(std::shared_ptr<mailbox::OpenMessage> message);
/// Opens a saved message, for reading only where its store is read-only.
ComPtr<ItemObject> OpenItem(mailbox::Message& message);
/// A new item of this class in a folder, unsaved.
ComPtr<ItemObject> NewItem(mailbox::Folder& folder, const std::wstring& messageClass);

/// A message that waits in the Outbox for its time doesn't go out any more; nothing for any other.
void TakeBackFromSending(mailbox::Message& message);

/// Deletes as users do: into the Deleted Items of the store, or for good if it is there already.
void DeleteMessage(mailbox::Message& message);

} // namespace standin::outlook
