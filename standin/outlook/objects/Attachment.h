// An attachment of an item.
#pragma once

#include "standin/mailbox/Message.h"
#include "standin/outlook/automation/Object.h"

namespace standin::outlook {

/// OlAttachmentType.
enum class AttachmentType : std::int32_t { ByValue = 1, ByReference = 4, EmbeddedItem = 5, Ole = 6 };

/// Attachment. It knows its attachment by its number, so that it stays itself when others go.
class AttachmentObject final : public Object {
public:
    AttachmentObject(ComPtr<Object> owner, std::shared_ptr<mailbox::OpenMessage> message,
                     std::uint32_t number);

    /// The item.
    ComPtr<Object> Parent() override { return m_owner; }
    /// Opened anew each time. Raises MAPI_E_NOT_FOUND for one that was removed.
    std::shared_ptr<mailbox::OpenAttachment> Open(mailbox::Access access) const;
    /// 1-based.
    std::int32_t Place() const;
    void Remove();

private:
    ComPtr<Object> m_owner;
    std::shared_ptr<mailbox::OpenMessage> m_message;
    std::uint32_t m_number;
};

} // namespace standin::outlook
