// The mailbox model: what Outlook and MAPI both look at. Start here.
//
//     Mailbox       a profile: its stores, other users' shared mailboxes, the address book, submission
//     Store         a message store: its folder tree, special folders, named properties
//     Folder        subfolders, messages in order of arrival, user-defined fields
//     Message       a message as saved; its Content is immutable and shared
//     OpenMessage   the working copy of a message, what an Outlook item and its MAPIOBJECT share
//     OpenAttachment, AddressEntry
//     PropertyObject   what all of these are: stored properties in a PropertyBag and computed ones as table
//     rows
//
// MSG files are read and written by Msg.h; MailboxFolder.h keeps a mailbox in a folder on disk. The library
// has no globals: copies of it in several modules of a process work on the same objects.
#pragma once

#include "standin/mailbox/AddressBook.h"
#include "standin/mailbox/Folder.h"
#include "standin/mailbox/Keeper.h"
#include "standin/mailbox/Message.h"
#include "standin/mailbox/Store.h"

namespace standin::mailbox {

/// A profile and the world it reaches.
class Mailbox {
public:
    Mailbox() = default;
    Mailbox(const Mailbox&) = delete;
    Mailbox& operator=(const Mailbox&) = delete;
    ~Mailbox();

    /// The profile that is looked through: this mailbox's own, or that of the owner of another mailbox here.
    const std::wstring& ProfileName() const { return m_user ? m_user->Name() : m_profileName; }
    const std::wstring& OwnProfileName() const { return m_profileName; }
    bool HasProfile(const std::wstring& name) const;
    /// Looks through another profile from now on; an empty name is this mailbox's own. Another owner's has
    /// the owner's name, his mailbox as the default store and the public folders; folders that he lacks are
    /// made. MAPI_E_NOT_FOUND: there is none of that name; otherwise what making the folders answers.
    HRESULT UseProfile(const std::wstring& name);
    void SetProfileName(std::wstring name) { m_profileName = std::move(name); }

    /// All stores: those of the profile in its order, and those that can be opened as other users'.
    const std::vector<std::unique_ptr<Store>>& AllStores() const { return m_stores; }
    std::vector<Store*> ProfileStores() const;
    /// Null in a mailbox that has none.
    Store* DefaultStore() const;
    /// A mailbox by its owner's display name, alias or SMTP address, in the profile or not; null for none.
    Store* FindMailbox(std::wstring_view nameOrAddress) const;
    Store* FindMailbox(const AddressEntry& owner) const;
    /// A store with its root and IPM subtree and no other folders.
    HRESULT AddStore(const StoreDescription& description, Store*& store);
    /// Puts a store in that is kept already, with its key and counter: for whoever keeps the mailbox.
    Store& TakeInStore(const StoreDescription& description, const StoreKey& key, std::uint64_t reservedIds);

    /// Objects by entry id, in whatever store; null for what is not there.
    Store* FindStore(std::span<const std::uint8_t> entryId) const;
    Folder* FindFolder(std::span<const std::uint8_t> entryId) const;
    std::shared_ptr<Message> FindMessage(std::span<const std::uint8_t> entryId) const;

    AddressBook& Addresses() { return m_addresses; }
    const AddressBook& Addresses() const { return m_addresses; }

    /// Sends a message: saves it, delivers it into the Inbox of each recipient that has a mailbox here, and
    /// puts the sender's copy where PR_SENTMAIL_ENTRYID says, or nowhere for PR_DELETE_AFTER_SUBMIT; without
    /// either it stays, and can't be changed any more. Recipients who are nobody come back in a non-delivery
    /// report. A failure leaves the message unsent; where even its marks of sending can't be taken back it
    /// stays in the Outbox as if it had gone out. What fails once it has gone out is no failure of sending:
    /// the sender's copy stays in the Outbox then. MAPI_E_NO_RECIPIENTS; MAPI_E_SUBMITTED: it went out
    /// already; MAPI_E_NO_SUPPORT: it is not in the Outbox; otherwise as OpenMessage::Save.
    HRESULT Submit(OpenMessage& message);
    /// The store of the mailbox that a recipient row means: by SMTP address or X.500 name. Null for none
    /// here.
    Store* FindRecipient(const PropertyBag& recipient) const;

    /// Keeps the profile's name and the address book as they are now.
    HRESULT SaveProfile();
    /// Where the mailbox is kept; null for memory only.
    Keeper* Kept() const { return m_keeper.get(); }
    void SetKeeper(std::unique_ptr<Keeper> keeper) { m_keeper = std::move(keeper); }

private:
    struct KeyHash {
        std::size_t operator()(const std::pair<GUID, GUID>& key) const;
    };
    Store* FindByKey(const ObjectEntryId& entryId) const;
    Store* FindOtherUser(const std::wstring& profile) const;
    HRESULT KeepNew(const Folder& subtree);
    HRESULT Deliver(const Content& sent, const Store& from, std::uint64_t id);
    void FileSent(OpenMessage& message);
    HRESULT SendOut(OpenMessage& message, const Store& store, const Store& userStore);

    std::wstring m_profileName = L"Outlook";
    Store* m_user = nullptr; // whose profile it is; null: the own one
    std::vector<std::unique_ptr<Store>> m_stores;
    std::unordered_map<std::pair<GUID, GUID>, Store*, KeyHash> m_storeByKey; // by provider and database
    AddressBook m_addresses;
    std::unique_ptr<Keeper> m_keeper;
};

/// The world that there is without a mailbox folder: profile Outlook; stores Front Desk, Archive, Public
/// Folders; the shared mailbox Back Office; a global address list of six. All folders are empty.
std::unique_ptr<Mailbox> MakeSampleWorld();
/// The same for a mailbox that is kept somewhere: fails only if keeping does.
HRESULT FillWithSampleWorld(Mailbox& mailbox);
/// Makes the special folders of a user's mailbox that the store hasn't got.
HRESULT MakeMissingFolders(Store& store);

} // namespace standin::mailbox
