// Saved messages and their working copies.
#include "standin/mailbox/Message.h"

#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Folder.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Tags.h"

#include <algorithm>

namespace standin::mailbox {
namespace {

constexpr std::int32_t kRead = MSGFLAG_READ;
constexpr std::int32_t kSubmitted = MSGFLAG_SUBMIT;
constexpr std::int32_t kUnsent = MSGFLAG_UNSENT;

/// What most messages have. A list that grows step by step would leave a hole in the heap with each message,
/// and the heap would look through all of them for the next.
constexpr std::size_t kRoomForProperties = 64;

std::int32_t ReadMark(const Content& content) {
    return content.properties.GetOr<PR_MESSAGE_FLAGS>(0) & kRead;
}

void SetReadMark(Content& content, std::int32_t mark) {
    const std::int32_t flags = content.properties.GetOr<PR_MESSAGE_FLAGS>(0);
    content.properties.Set<PR_MESSAGE_FLAGS>((flags & ~kRead) | mark);
}

void ClearSubmitMark(Content& content) {
    const std::int32_t flags = content.properties.GetOr<PR_MESSAGE_FLAGS>(0);
    if (flags & kSubmitted)
        content.properties.Set<PR_MESSAGE_FLAGS>(flags & ~kSubmitted);
}

/// The row or attachment of a list by its number; the end if there is none.
auto RowPosition(std::vector<PropertyBag>& rows, std::uint32_t rowId) {
    return std::ranges::find_if(rows, [rowId](const PropertyBag& row) {
        return static_cast<std::uint32_t>(row.GetOr<PR_ROWID>(-1)) == rowId;
    });
}

auto AttachmentPosition(const std::vector<AttachmentPtr>& attachments, std::uint32_t number) {
    return std::ranges::find(attachments, number, [](const AttachmentPtr& each) { return each->number; });
}

std::uint32_t FreeRowId(const std::vector<PropertyBag>& rows) {
    std::int32_t highest = -1;
    for (const PropertyBag& row : rows)
        highest = std::max(highest, row.GetOr<PR_ROWID>(-1));
    return static_cast<std::uint32_t>(highest + 1);
}

/// Names that a message came with are those of its recipients then; they mean nothing once these change.
void ForgetDisplayNames(Content& content) {
    for (const PropertyTag tag : {PR_DISPLAY_TO_W, PR_DISPLAY_CC_W, PR_DISPLAY_BCC_W})
        content.properties.Remove(tag);
}

void CompleteRecipient(PropertyBag& row, std::uint32_t rowId) {
    row.Set<PR_ROWID>(static_cast<std::int32_t>(rowId));
    if (!row.Contains(PR_OBJECT_TYPE))
        row.Set<PR_OBJECT_TYPE>(MAPI_MAILUSER);
    if (!row.Contains(PR_DISPLAY_TYPE))
        row.Set<PR_DISPLAY_TYPE>(DT_MAILUSER);
    if (!row.Contains(PR_RECIPIENT_TYPE))
        row.Set<PR_RECIPIENT_TYPE>(MAPI_TO);
}

} // namespace

Bytes Message::EntryId() const {
    return m_folder ? MakeMessageEntryId(m_folder->Store().Key(), m_folder->Id(), m_id) : m_formerEntryId;
}

/// Whoever has the message open knows it by the id under which it was opened.
void Message::MarkRemoved() {
    m_formerEntryId = EntryId();
    m_folder = nullptr;
}

bool Message::IsWritable() const {
    return m_folder && !m_folder->Store().IsReadOnly();
}

bool Message::IsSubmitted() const {
    const std::int32_t flags = m_content->properties.GetOr<PR_MESSAGE_FLAGS>(0);
    return m_folder && (flags & kSubmitted) != 0 && m_folder == m_folder->Store().SpecialFolder(kOutbox);
}

/// What went out isn't marked as unsent any longer.
bool Message::IsWaiting() const {
    return IsSubmitted() && (m_content->properties.GetOr<PR_MESSAGE_FLAGS>(0) & kUnsent) != 0;
}

HRESULT Message::Withdraw() {
    if (!IsWaiting())
        return MAPI_E_NOT_IN_QUEUE;
    if (!IsWritable())
        return E_ACCESSDENIED;
    auto content = std::make_shared<Content>(*m_content);
    ClearSubmitMark(*content);
    return Replace(std::move(content));
}

HRESULT Message::SetRead(bool read) {
    if (!m_folder)
        return MAPI_E_OBJECT_DELETED;
    if (!IsWritable())
        return E_ACCESSDENIED;
    const std::int32_t mark = read ? kRead : 0;
    if (ReadMark(*m_content) == mark)
        return S_OK;
    auto content = std::make_shared<Content>(*m_content);
    SetReadMark(*content, mark);
    return Replace(std::move(content));
}

HRESULT Message::Replace(ContentPtr content) {
    if (Keeper* keeper = m_folder->Store().Mailbox().Kept())
        if (const HRESULT status = keeper->SaveMessage(*m_folder, m_id, *content); FAILED(status))
            return status;
    m_content = std::move(content);
    ++m_folder->m_contentsVersion;
    return S_OK;
}

HRESULT Message::CheckWritable() const {
    return E_ACCESSDENIED;
}

PropertyBag& Message::Edit() {
    std::abort(); // nobody comes past CheckWritable
}

std::shared_ptr<OpenMessage> OpenMessage::ForTarget(std::shared_ptr<MessageTarget> target, ContentPtr content,
                                                    Access access) {
    std::shared_ptr<OpenMessage> open(new OpenMessage);
    open->m_target = std::move(target);
    open->m_isNew = !content;
    open->m_base = content ? std::move(content) : std::make_shared<const Content>();
    open->m_access = access;
    return open;
}

const Content& OpenMessage::Current() const {
    return m_copy ? *m_copy : *m_base;
}

Folder* OpenMessage::ParentFolder() const {
    return m_saved ? m_saved->ParentFolder() : m_folder.get();
}

NamedProperties& OpenMessage::Names() const {
    if (m_target)
        return m_target->Names();
    return m_saved ? m_saved->Names() : m_folder->Names();
}

HRESULT OpenMessage::CheckWritable() const {
    if (m_access == Access::Read)
        return E_ACCESSDENIED;
    const bool gone = m_saved ? m_saved->IsRemoved() : m_folder && m_folder->IsDeleted();
    if (gone)
        return MAPI_E_OBJECT_DELETED;
    return IsSubmitted() && !m_isBeingSubmitted && !CanWithdraw() ? MAPI_E_SUBMITTED : S_OK;
}

bool OpenMessage::CanWithdraw() const {
    return m_withdrawsByChange && !m_submitted && m_saved && m_saved->IsWaiting();
}

PropertyBag& OpenMessage::Edit() {
    Content* content = nullptr;
    EditContent(content);
    return content->properties;
}

HRESULT OpenMessage::EditContent(Content*& content) {
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    if (!m_copy) {
        m_copy = std::make_unique<Content>();
        m_copy->properties.Reserve(kRoomForProperties);
        *m_copy = *m_base;
        if (m_saved && !m_isBeingSubmitted)
            ClearSubmitMark(*m_copy);
    }
    m_withdrawn = m_withdrawn || (IsSubmitted() && !m_isBeingSubmitted);
    m_changed = true;
    content = m_copy.get();
    return S_OK;
}

HRESULT OpenMessage::CheckUnchanged(bool force) const {
    const bool changedElsewhere = m_saved && m_saved->m_changeNumber != m_baseChange;
    return changedElsewhere && !force ? MAPI_E_OBJECT_CHANGED : S_OK;
}

/// What is entered in a message with each save: by a store each time, otherwise where it is missing. Marking
/// it read in the meantime was no change of the message: that mark is taken over.
void OpenMessage::Stamp(Content& content) const {
    if (m_target) {
        for (const PropertyTag time : {PR_CREATION_TIME, PR_LAST_MODIFICATION_TIME})
            if (!content.properties.Contains(time))
                content.properties.Put(time, Now());
        return;
    }
    content.properties.Set<PR_LAST_MODIFICATION_TIME>(Now());
    if (const Store* user = m_saved ? m_saved->m_folder->Store().Mailbox().DefaultStore()
                                    : m_folder->Store().Mailbox().DefaultStore())
        content.properties.Set<kPrLastModifierName>(user->Name());
    if (m_saved && ReadMark(content) == ReadMark(*m_base))
        SetReadMark(content, ReadMark(*m_saved->m_content));
}

HRESULT OpenMessage::Save(bool force) {
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    if (!m_changed && !IsNew())
        return S_OK;
    if (const HRESULT status = CheckUnchanged(force); FAILED(status))
        return status;
    Content* changing = nullptr;
    EditContent(changing);
    Stamp(*changing);
    // The working copy itself becomes what is saved; it is taken back if that fails.
    auto content = std::make_shared<Content>(std::move(*m_copy));
    const HRESULT status = m_target ? m_target->Save(content) : SaveToFolder(content);
    if (FAILED(status)) {
        *m_copy = std::move(*content);
        return status;
    }
    m_base = std::move(content);
    m_copy.reset();
    m_changed = false;
    m_withdrawn = false;
    m_isNew = false;
    return S_OK;
}

HRESULT OpenMessage::SaveToFolder(ContentPtr content) {
    if (!m_saved) {
        if (const HRESULT status = m_folder->Insert(std::move(content), m_associated, m_saved);
            FAILED(status))
            return status;
    } else {
        if (m_saved->m_folder->Store().IsReadOnly())
            return E_ACCESSDENIED;
        if (const HRESULT status = m_saved->Replace(std::move(content)); FAILED(status))
            return status;
        ++m_saved->m_changeNumber;
    }
    m_baseChange = m_saved->m_changeNumber;
    return S_OK;
}

void OpenMessage::Discard() {
    m_copy.reset();
    m_changed = false;
    m_withdrawn = false;
    if (!m_saved)
        return;
    m_base = m_saved->m_content;
    m_baseChange = m_saved->m_changeNumber;
}

HRESULT OpenMessage::SetRead(bool read) {
    const std::int32_t mark = read ? kRead : 0;
    if (ReadMark(Current()) == mark)
        return CheckWritable();
    Content* content = nullptr;
    const HRESULT status = EditContent(content);
    if (SUCCEEDED(status))
        SetReadMark(*content, mark);
    return status;
}

/// Rows that go leave their ids behind, which no row that comes later gets.
HRESULT OpenMessage::EditRecipients(Content*& content) {
    const HRESULT status = EditContent(content);
    if (SUCCEEDED(status))
        m_nextRecipient = std::max(m_nextRecipient, FreeRowId(content->recipients));
    return status;
}

HRESULT OpenMessage::AddRecipient(PropertyBag row, std::uint32_t* rowId) {
    Content* content = nullptr;
    if (const HRESULT status = EditRecipients(content); FAILED(status))
        return status;
    const std::uint32_t id = m_nextRecipient++;
    CompleteRecipient(row, id);
    content->recipients.push_back(std::move(row));
    if (rowId)
        *rowId = id;
    return S_OK;
}

HRESULT OpenMessage::ReplaceRecipient(std::uint32_t rowId, PropertyBag row) {
    Content* content = nullptr;
    if (const HRESULT status = EditContent(content); FAILED(status))
        return status;
    const auto position = RowPosition(content->recipients, rowId);
    if (position == content->recipients.end())
        return MAPI_E_NOT_FOUND;
    CompleteRecipient(row, rowId);
    *position = std::move(row);
    return S_OK;
}

HRESULT OpenMessage::RemoveRecipient(std::uint32_t rowId) {
    Content* content = nullptr;
    if (const HRESULT status = EditRecipients(content); FAILED(status))
        return status;
    const auto position = RowPosition(content->recipients, rowId);
    if (position == content->recipients.end())
        return MAPI_E_NOT_FOUND;
    content->recipients.erase(position);
    ForgetDisplayNames(*content);
    return S_OK;
}

HRESULT OpenMessage::RemoveAllRecipients() {
    Content* content = nullptr;
    const HRESULT status = EditRecipients(content);
    if (FAILED(status) || content->recipients.empty())
        return status;
    content->recipients.clear();
    ForgetDisplayNames(*content);
    return S_OK;
}

HRESULT OpenMessage::OpenAttachmentNumber(std::uint32_t number, Access access,
                                          std::shared_ptr<OpenAttachment>& attachment) {
    if (access == Access::Modify)
        if (const HRESULT status = CheckWritable(); FAILED(status))
            return status;
    const auto position = AttachmentPosition(Attachments(), number);
    if (position == Attachments().end())
        return MAPI_E_NOT_FOUND;
    attachment.reset(new OpenAttachment(shared_from_this(), **position, access, false));
    return S_OK;
}

/// As with the ids of recipients.
void OpenMessage::SkipAttachmentNumbers() {
    for (const AttachmentPtr& each : Attachments())
        m_nextAttachment = std::max(m_nextAttachment, each->number + 1);
}

HRESULT OpenMessage::CreateAttachment(std::shared_ptr<OpenAttachment>& attachment) {
    constexpr std::int32_t kNotInTheText = -1;
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    SkipAttachmentNumbers();
    Attachment fresh;
    fresh.number = m_nextAttachment++;
    fresh.properties.Set<PR_RENDERING_POSITION>(kNotInTheText);
    fresh.properties.Set<PR_CREATION_TIME>(Now());
    attachment.reset(new OpenAttachment(shared_from_this(), std::move(fresh), Access::Modify, true));
    return S_OK;
}

HRESULT OpenMessage::RemoveAttachment(std::uint32_t number) {
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    if (AttachmentPosition(Attachments(), number) == Attachments().end())
        return MAPI_E_NOT_FOUND;
    SkipAttachmentNumbers();
    Content* content = nullptr;
    EditContent(content);
    content->attachments.erase(AttachmentPosition(content->attachments, number));
    return S_OK;
}

HRESULT OpenMessage::StoreAttachment(Attachment attachment, bool isNew) {
    Content* content = nullptr;
    if (const HRESULT status = EditContent(content); FAILED(status))
        return status;
    const auto position = AttachmentPosition(content->attachments, attachment.number);
    auto stored = std::make_shared<const Attachment>(std::move(attachment));
    if (position != content->attachments.end())
        content->attachments[static_cast<std::size_t>(position - content->attachments.begin())] =
            std::move(stored);
    else if (isNew)
        content->attachments.push_back(std::move(stored));
    else
        return MAPI_E_OBJECT_DELETED;
    return S_OK;
}

} // namespace standin::mailbox
