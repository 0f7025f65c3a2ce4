// The attachments of an item as a collection.
#pragma once

#include "standin/outlook/automation/Collection.h"
#include "standin/outlook/objects/Attachment.h"

namespace standin::outlook {

/// Attachments. Live.
class AttachmentsObject final : public Collection {
public:
    AttachmentsObject(ComPtr<Object> owner, std::shared_ptr<mailbox::OpenMessage> message);

    ComPtr<Object> Parent() override { return m_owner; }
    std::int32_t Count() override;
    _variant_t At(std::int32_t place) override;
    /// By file name, case ignored.
    _variant_t Named(const std::wstring& name) override;

    const std::shared_ptr<mailbox::OpenMessage>& Message() const { return m_message; }
    ComPtr<AttachmentObject> Attachment(std::uint32_t number) const;

private:
    ComPtr<Object> m_owner;
    std::shared_ptr<mailbox::OpenMessage> m_message;
};

/// What a new attachment is called: in dialogs, and where it came from.
struct AttachmentNames {
    std::wstring path;        ///< full, or a bare file name
    std::wstring displayName; ///< empty: the file's name
};

// Each adds an attachment to a message's working copy and gives its number.
std::uint32_t AttachBytes(mailbox::OpenMessage& message, const AttachmentNames& names, mailbox::Bytes bytes,
                          std::int32_t position);
/// The message's own names of properties are `from`.
std::uint32_t AttachMessage(mailbox::OpenMessage& message, const mailbox::Content& content,
                            const mailbox::NamedProperties& from, const std::wstring& displayName);
/// Copies all attachments of one message to another.
void CopyAttachments(const mailbox::OpenMessage& from, mailbox::OpenMessage& to);

} // namespace standin::outlook
