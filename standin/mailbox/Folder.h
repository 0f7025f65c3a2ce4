// Folders: their place in the tree, their messages, and what Outlook keeps with a folder.
#pragma once

#include "standin/mailbox/Message.h"

#include <unordered_map>

namespace standin::mailbox {

class Keeper;

/// A field that users defined in a folder. The type is an OlUserPropertyType number.
struct UserField {
    std::wstring name;
    std::int32_t type = 1;
    bool operator==(const UserField&) const = default;
};

/// What is wanted of a new folder.
struct FolderDescription {
    std::wstring name;
    std::int32_t defaultItemType = 0; ///< OlItemType number
    std::wstring containerClass;      ///< empty: the one that belongs to the item type
};

/// A folder. Changes take effect at once. Held by shared pointers; one that is held after its deletion says
/// so.
class Folder final : public PropertyObject, public std::enable_shared_from_this<Folder> {
public:
    mailbox::Store& Store() const { return *m_store; }
    /// The counter that names the folder within its store.
    std::uint64_t Id() const { return m_id; }
    Bytes EntryId() const;
    /// PR_DISPLAY_NAME. That of the IPM subtree is not what Outlook shows: Outlook shows the store's name
    /// there.
    const std::wstring& Name() const { return m_name; }
    /// OlItemType number of the items that belong here.
    std::int32_t DefaultItemType() const { return m_defaultItemType; }
    /// PR_CONTAINER_CLASS, IPF.Note for mail.
    const std::wstring& ContainerClass() const { return m_containerClass; }
    /// Null for the store's root and for a deleted folder.
    Folder* Parent() const { return m_parent; }
    bool IsDeleted() const { return m_deleted; }
    bool IsSpecial() const;

    /// Subfolders, in order of creation. The first with the name, its case ignored; null for none.
    const std::vector<std::shared_ptr<Folder>>& Subfolders() const { return m_subfolders; }
    Folder* FindSubfolder(std::wstring_view name) const;
    /// MAPI_E_COLLISION: the name is in use here, in whatever case. MAPI_E_INVALID_PARAMETER: no name.
    /// E_ACCESSDENIED: the store is read-only.
    HRESULT CreateSubfolder(const FolderDescription& description, std::shared_ptr<Folder>& folder);
    /// As CreateSubfolder; and E_ACCESSDENIED for special folders, the root and the IPM subtree.
    HRESULT Rename(const std::wstring& name);
    /// Deletes the folder with all that is in it.
    HRESULT Delete();
    /// Makes it a subfolder of another folder of the same store, under this name if it isn't empty.
    /// MAPI_E_FOLDER_CYCLE: into itself or below itself. MAPI_E_NO_SUPPORT: into another store.
    HRESULT MoveTo(Folder& parent, const std::wstring& newName = {});
    /// Copies the folder with its messages and subfolders, to any store.
    HRESULT CopyTo(Folder& parent, const std::wstring& newName, std::shared_ptr<Folder>& copy) const;

    /// Messages in order of arrival; the associated ones (configuration, hidden from users) stand apart.
    /// Pointers are good until the next change to the folder; hold on to one with shared_from_this().
    const std::vector<Message*>& Messages() const { return m_messages; }
    const std::vector<Message*>& AssociatedMessages() const { return m_associated; }
    std::shared_ptr<Message> FindMessage(std::uint64_t id) const;
    std::size_t UnreadCount() const;

    /// A new message: in the folder from its first save on. Starts with what a store gives every new message
    /// (class IPM.Note, flags read and unsent, times, search key). E_ACCESSDENIED in a read-only store.
    HRESULT CreateMessage(bool associated, std::shared_ptr<mailbox::OpenMessage>& message);
    /// A new message with this content (of a template, an MSG file), whose named properties are the store's.
    HRESULT CreateMessage(Content content, std::shared_ptr<mailbox::OpenMessage>& message);
    /// MAPI_E_NOT_FOUND: not in this folder. E_ACCESSDENIED: to modify in a read-only store.
    HRESULT OpenMessage(Message& message, Access access, std::shared_ptr<mailbox::OpenMessage>& open);
    /// Puts finished content into the folder, without the marks of a save: how mail arrives and files are
    /// taken in.
    HRESULT Receive(Content content, bool associated, std::shared_ptr<Message>& message);
    /// Removes for good. MAPI_E_SUBMITTED, here and below: it was sent and waits in the Outbox.
    HRESULT RemoveMessage(Message& message);
    /// To any folder of any store; the message gets a new entry id there. `result` may be null.
    HRESULT MoveMessage(Message& message, Folder& target, std::shared_ptr<Message>* result);
    HRESULT CopyMessage(const Message& message, Folder& target, std::shared_ptr<Message>* result) const;

    /// Puts a message in that is kept already, under the id that it has: for whoever keeps the mailbox.
    void TakeIn(std::uint64_t id, ContentPtr content);

    const std::vector<UserField>& UserFields() const { return m_userFields; }
    HRESULT SetUserFields(std::vector<UserField> fields);
    HRESULT SetDefaultItemType(std::int32_t type, const std::wstring& containerClass);

    /// Rise whenever a message, or a subfolder, comes, goes or changes: for lists that want to know if they
    /// are stale.
    std::uint64_t ContentsVersion() const { return m_contentsVersion; }
    std::uint64_t HierarchyVersion() const { return m_hierarchyVersion; }

    const PropertyBag& Stored() const override { return m_properties; }
    NamedProperties& Names() const override;

protected:
    std::span<const ComputedProperty> Computed() const override;
    HRESULT CheckWritable() const override;
    PropertyBag& Edit() override;
    HRESULT Changed() override;

private:
    friend class Store;
    friend class Message;
    friend class OpenMessage;
    Folder() = default;
    Keeper* Kept() const;
    bool ContainsSpecial() const;
    bool IsBelow(const Folder& other) const;
    HRESULT CheckMovable() const;
    HRESULT CheckName(const std::wstring& name, const Folder* itself) const;
    HRESULT Insert(ContentPtr content, bool associated, std::shared_ptr<Message>& message);
    ContentPtr ContentFrom(const Message& message) const;
    void Link(const std::shared_ptr<Message>& message, std::uint64_t id);
    std::shared_ptr<Message> Unlink(Message& message);
    void LinkSubfolder(const std::shared_ptr<Folder>& folder);
    std::shared_ptr<Folder> UnlinkSubfolder(Folder& folder);
    void MarkDeleted();

    mailbox::Store* m_store = nullptr;
    Folder* m_parent = nullptr;
    std::uint64_t m_id = 0;
    std::wstring m_name;
    std::wstring m_containerClass;
    std::int32_t m_defaultItemType = 0;
    bool m_deleted = false;
    PropertyBag m_properties;
    std::vector<UserField> m_userFields;
    std::vector<std::shared_ptr<Folder>> m_subfolders;
    std::unordered_map<std::wstring, Folder*> m_subfolderByName; // by the name in upper case
    std::vector<Message*> m_messages;
    std::vector<Message*> m_associated;
    std::unordered_map<std::uint64_t, std::shared_ptr<Message>> m_messageById;
    std::uint64_t m_contentsVersion = 0;
    std::uint64_t m_hierarchyVersion = 0;
};

} // namespace standin::mailbox
