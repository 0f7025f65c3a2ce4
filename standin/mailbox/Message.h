// Messages: as they are saved in a folder, and the working copies through which they are read and changed.
#pragma once

#include "standin/mailbox/Content.h"
#include "standin/mailbox/PropertyObject.h"

namespace standin::mailbox {

class Folder;
class Message;
class OpenAttachment;
class Store;

enum class Access { Read, Modify };

/// Reads messages the same way whether they are saved or open: stored properties and the computed ones.
class MessageProperties : public PropertyObject {
public:
    /// The content as it is now.
    virtual const Content& Current() const = 0;
    /// The message's folder; null for one that is in none (embedded, in a file, removed).
    virtual Folder* ParentFolder() const = 0;
    /// The saved message; null as long as there is none.
    virtual const Message* SavedMessage() const = 0;
    /// Whether the message is open for writing.
    virtual bool IsWritable() const = 0;
    /// Whether a store keeps the message: it guards times and flags then. In attachments and files they are
    /// free.
    virtual bool IsInStore() const = 0;

    const PropertyBag& Stored() const override { return Current().properties; }

protected:
    bool NeedsPublishedTypes() const override { return IsInStore(); }
    std::span<const ComputedProperty> Computed() const override;
};

/// What is worked out of a message and stands in a file of it all the same: who reads files works nothing
/// out.
PropertyBag WorkedOutForFile(const Content& content);
/// Takes out of what a file held what is worked out of the rest all the same.
void DropWorkedOut(Content& content);

/// A message as it is saved in its folder. Reading from it opens nothing: lists of messages are made of
/// these. Held by shared pointers; one that is held after its removal says so.
class Message final : public MessageProperties, public std::enable_shared_from_this<Message> {
public:
    /// The counter that names the message within its store; ascending in order of arrival within a folder.
    std::uint64_t Id() const { return m_id; }
    /// Of a removed message, the one that it had.
    Bytes EntryId() const;
    bool IsAssociated() const { return m_associated; }
    bool IsRemoved() const { return m_folder == nullptr; }
    /// Whether it was sent and waits in the Outbox: it can't be changed, moved or removed then.
    bool IsSubmitted() const;
    /// Whether it is submitted and hasn't gone out yet: it waits for its time.
    bool IsWaiting() const;
    /// Takes a message that waits back from sending; it stays in the Outbox and can be changed again.
    /// MAPI_E_NOT_IN_QUEUE: it doesn't wait. E_ACCESSDENIED: the store is read-only.
    HRESULT Withdraw();
    /// Rises with each save.
    std::uint64_t ChangeNumber() const { return m_changeNumber; }
    const ContentPtr& SharedContent() const { return m_content; }

    /// Sets or clears MSGFLAG_READ at once. Whoever has the message open can save all the same.
    HRESULT SetRead(bool read);

    const Content& Current() const override { return *m_content; }
    Folder* ParentFolder() const override { return m_folder; }
    const Message* SavedMessage() const override { return this; }
    bool IsWritable() const override;
    bool IsInStore() const override { return true; }
    NamedProperties& Names() const override { return *m_names; }

protected:
    /// Always refuses: a message is changed through an OpenMessage.
    HRESULT CheckWritable() const override;
    PropertyBag& Edit() override;

private:
    friend class Folder;
    friend class OpenMessage;
    HRESULT Replace(ContentPtr content);
    void MarkRemoved();

    Folder* m_folder = nullptr;
    NamedProperties* m_names = nullptr;
    Bytes m_formerEntryId; // empty until it is removed
    std::uint64_t m_id = 0;
    std::uint64_t m_changeNumber = 0;
    bool m_associated = false;
    ContentPtr m_content;
};

/// Where an open message goes when it is saved, if that isn't a folder: an attachment, a file.
class MessageTarget {
public:
    virtual ~MessageTarget() = default;
    virtual HRESULT Save(const ContentPtr& content) = 0;
    virtual NamedProperties& Names() = 0;
};

/// What SaveChanges leaves to the clients of something open.
struct LeftOpen {
    bool atAll = true;
    bool forWriting = true;
};

/// The working copy of a message. An Outlook item and its MAPIOBJECT share one. Until Save() nobody else sees
/// what it changes. Nothing is copied before the first write.
class OpenMessage final : public MessageProperties, public std::enable_shared_from_this<OpenMessage> {
public:
    /// Made by Folder::CreateMessage, Folder::OpenMessage, OpenAttachment::Embedded.
    /// This makes one for any other target. `content` may be null for a new message.
    static std::shared_ptr<OpenMessage> ForTarget(std::shared_ptr<MessageTarget> target, ContentPtr content,
                                                  Access access);
    const Content& Current() const override;
    Folder* ParentFolder() const override;
    const Message* SavedMessage() const override { return m_saved.get(); }
    const std::shared_ptr<Message>& Saved() const { return m_saved; }
    bool IsWritable() const override { return m_access == Access::Modify; }
    bool IsInStore() const override { return !m_target; }
    NamedProperties& Names() const override;

    /// Whether there are changes that were not saved. A new message has, from its first write on.
    bool IsChanged() const { return m_changed; }
    /// Whether the message was never saved.
    bool IsNew() const { return m_isNew; }
    bool IsAssociated() const { return m_associated; }
    /// Whether this copy was sent, or another of the same message, which now waits in the Outbox.
    bool IsSubmitted() const { return m_submitted || (!m_withdrawn && m_saved && m_saved->IsSubmitted()); }
    void MarkSubmitted() { m_submitted = true; }
    /// From now on a change of the message while it waits (see Message::IsWaiting) takes it back from sending
    /// once it is saved, and isn't refused.
    void WithdrawByChange() { m_withdrawsByChange = true; }
    /// While it lasts the message can be written to although it counts as submitted: for whoever submits it.
    class Submission {
    public:
        explicit Submission(OpenMessage& message) : m_message(message) { message.m_isBeingSubmitted = true; }
        ~Submission() { m_message.m_isBeingSubmitted = false; }
        Submission(const Submission&) = delete;
        Submission& operator=(const Submission&) = delete;

    private:
        OpenMessage& m_message;
    };
    /// Shared by all MAPI objects on this copy.
    LeftOpen& Left() { return m_left; }

    /// The content to write to; the copy is made here. E_ACCESSDENIED when open for reading,
    /// MAPI_E_OBJECT_DELETED when the message is gone, MAPI_E_SUBMITTED when it was sent.
    HRESULT EditContent(Content*& content);

    /// Makes the changes seen by all, and kept on disk where there is one. The first save puts a new message
    /// into its folder and gives it its entry id. Saves nothing if nothing changed. MAPI_E_OBJECT_CHANGED:
    /// somebody else saved since it was opened (not with `force`). MAPI_E_OBJECT_DELETED: the message or its
    /// folder is gone. E_ACCESSDENIED: it is open for reading.
    HRESULT Save(bool force = false);
    /// Forgets the changes, and takes up what is saved by now.
    void Discard();

    /// Sets or clears MSGFLAG_READ in the working copy: takes effect with Save.
    HRESULT SetRead(bool read);

    /// Recipient rows. A row is known by its PR_ROWID, which AddRecipient gives it, and which this copy gives
    /// to no other. MAPI_E_NOT_FOUND for an unknown row; otherwise as EditContent.
    const std::vector<PropertyBag>& Recipients() const { return Current().recipients; }
    HRESULT AddRecipient(PropertyBag row, std::uint32_t* rowId = nullptr);
    HRESULT ReplaceRecipient(std::uint32_t rowId, PropertyBag row);
    HRESULT RemoveRecipient(std::uint32_t rowId);
    HRESULT RemoveAllRecipients();

    /// Attachments. One is known by its number; MAPI_E_NOT_FOUND for an unknown one. What is done to an open
    /// attachment shows in the message once the attachment is saved.
    const std::vector<AttachmentPtr>& Attachments() const { return Current().attachments; }
    HRESULT OpenAttachmentNumber(std::uint32_t number, Access access,
                                 std::shared_ptr<OpenAttachment>& attachment);
    HRESULT CreateAttachment(std::shared_ptr<OpenAttachment>& attachment);
    HRESULT RemoveAttachment(std::uint32_t number);

protected:
    HRESULT CheckWritable() const override;
    PropertyBag& Edit() override;

private:
    friend class Folder;
    friend class OpenAttachment;
    OpenMessage() = default;
    HRESULT CheckUnchanged(bool force) const;
    bool CanWithdraw() const;
    HRESULT EditRecipients(Content*& content);
    void SkipAttachmentNumbers();
    void Stamp(Content& content) const;
    HRESULT SaveToFolder(ContentPtr content);
    HRESULT StoreAttachment(Attachment attachment, bool isNew);

    std::shared_ptr<Folder> m_folder;        // where a new message will go
    std::shared_ptr<MessageTarget> m_target; // in place of a folder
    std::shared_ptr<Message> m_saved;
    ContentPtr m_base;               // what was there when it was opened
    std::unique_ptr<Content> m_copy; // null until the first write
    std::uint64_t m_baseChange = 0;
    std::uint32_t m_nextAttachment = 0;
    std::uint32_t m_nextRecipient = 0;
    Access m_access = Access::Read;
    bool m_associated = false;
    bool m_isNew = false;
    bool m_changed = false;
    bool m_submitted = false;
    bool m_isBeingSubmitted = false;
    bool m_withdrawsByChange = false;
    bool m_withdrawn = false; // by a change that isn't saved yet
    LeftOpen m_left;
};

/// The working copy of one attachment.
class OpenAttachment final : public PropertyObject, public std::enable_shared_from_this<OpenAttachment> {
public:
    std::uint32_t Number() const { return m_attachment.number; }
    bool IsWritable() const { return m_access == Access::Modify; }
    const Attachment& Current() const { return m_attachment; }
    OpenMessage& Message() const { return *m_message; }
    const PropertyBag& Stored() const override { return m_attachment.properties; }
    NamedProperties& Names() const override;

    /// Puts the attachment into its message's working copy. MAPI_E_OBJECT_DELETED: it was there and is gone.
    HRESULT Save();

    /// Opens the embedded message; with `create` makes an empty one in place of whatever there was. Its
    /// Save() puts it into this attachment. MAPI_E_NOT_FOUND if there is none, E_ACCESSDENIED as for any
    /// write.
    HRESULT Embedded(bool create, Access access, std::shared_ptr<OpenMessage>& message);
    /// The OLE object's storage as bytes; null if there is none.
    const std::shared_ptr<const Bytes>& OleStorage() const { return m_attachment.oleStorage; }
    HRESULT SetOleStorage(Bytes bytes);

protected:
    std::span<const ComputedProperty> Computed() const override;
    HRESULT CheckWritable() const override;
    PropertyBag& Edit() override;
    HRESULT Changed() override;

private:
    friend class OpenMessage;
    OpenAttachment(std::shared_ptr<OpenMessage> message, Attachment attachment, Access access, bool isNew);

    std::shared_ptr<OpenMessage> m_message;
    Attachment m_attachment;
    Access m_access = Access::Read;
    bool m_isNew = false; // never saved
};

} // namespace standin::mailbox
