// IMessage.
#include "standin/mapi/MessageView.h"

#include "standin/mapi/Bodies.h"
#include "standin/mapi/Entries.h"
#include "standin/mapi/Recipients.h"
#include "standin/mapi/Table.h"
#include "standin/mapi/TableSources.h"
#include "standin/mapi/Views.h"

namespace standin::mapi {

using mailbox::Access;
using mailbox::Content;
using mailbox::OpenMessage;
using mailbox::PropertyTag;
using mailbox::Value;

namespace {

HRESULT GiveTable(std::unique_ptr<TableRows> rows, ULONG flags, IMAPITable** table) {
    if (!table)
        return MAPI_E_INVALID_PARAMETER;
    if (flags & ~(MAPI_UNICODE | MAPI_DEFERRED_ERRORS))
        return MAPI_E_UNKNOWN_FLAGS;
    *table = MakeTable(std::move(rows), (flags & MAPI_UNICODE) != 0);
    return S_OK;
}

HRESULT OpenAttachment(OpenMessage& message, bool canModify, ULONG number, const IID* iid, ULONG flags,
                       IAttach** attach) {
    if (!attach)
        return MAPI_E_INVALID_PARAMETER;
    if (flags & ~(MAPI_MODIFY | MAPI_BEST_ACCESS | MAPI_DEFERRED_ERRORS))
        return MAPI_E_UNKNOWN_FLAGS;
    if (!Offers<IAttach>(iid))
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    Access access{};
    if (const HRESULT status = AccessFrom(flags, canModify, access); FAILED(status))
        return status;
    std::shared_ptr<mailbox::OpenAttachment> open;
    if (const HRESULT status = message.OpenAttachmentNumber(number, access, open); FAILED(status))
        return status;
    *attach = MakeAttachment(std::move(open));
    return S_OK;
}

HRESULT CreateAttachment(OpenMessage& message, const IID* iid, ULONG flags, ULONG* number, IAttach** attach) {
    if (!number || !attach)
        return MAPI_E_INVALID_PARAMETER;
    if (flags & ~MAPI_DEFERRED_ERRORS)
        return MAPI_E_UNKNOWN_FLAGS;
    if (!Offers<IAttach>(iid))
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    std::shared_ptr<mailbox::OpenAttachment> created;
    if (const HRESULT status = message.CreateAttachment(created); FAILED(status))
        return status;
    *number = created->Number();
    *attach = MakeAttachment(std::move(created));
    return S_OK;
}

bool IsDisplayName(PropertyTag tag) {
    constexpr PropertyTag kNames[] = {PR_DISPLAY_TO_W, PR_DISPLAY_CC_W, PR_DISPLAY_BCC_W};
    return std::ranges::find(kNames, mailbox::IdOf(tag), mailbox::IdOf) != std::end(kNames);
}

HRESULT CopyRecipients(const OpenMessage& from, OpenMessage& to) {
    if (const HRESULT status = to.RemoveAllRecipients(); FAILED(status))
        return status;
    for (const mailbox::PropertyBag& row : from.Recipients())
        if (const HRESULT status = to.AddRecipient(mailbox::RemapBag(row, from.Names(), to.Names()));
            FAILED(status))
            return status;
    return S_OK;
}

HRESULT CopyAttachments(const OpenMessage& from, OpenMessage& to) {
    Content* content = nullptr;
    if (const HRESULT status = to.EditContent(content); FAILED(status))
        return status;
    Content attachments;
    attachments.attachments = from.Attachments();
    content->attachments = mailbox::RemapContent(attachments, from.Names(), to.Names()).attachments;
    return S_OK;
}

} // namespace

MessageView::MessageView(std::shared_ptr<OpenMessage> message)
    : TransactedObject(message->IsWritable(), {message, &message->Left()}), m_message(std::move(message)) {
}

HRESULT MessageView::GetAttachmentTable(ULONG flags, IMAPITable** table) {
    return Call(L"GetAttachmentTable", Outputs(table),
                [&] { return GiveTable(AttachmentRows(m_message), flags, table); });
}

HRESULT MessageView::OpenAttach(ULONG number, const IID* iid, ULONG flags, IAttach** attach) {
    return Call(L"OpenAttach", Outputs(attach), [&] {
        return OpenAttachment(*m_message, SUCCEEDED(CheckWritable()), number, iid, flags, attach);
    });
}

HRESULT MessageView::CreateAttach(const IID* iid, ULONG flags, ULONG* number, IAttach** attach) {
    return Call(L"CreateAttach", Outputs(number, attach), [&] {
        const HRESULT status = CheckWritable();
        return FAILED(status) ? status : CreateAttachment(*m_message, iid, flags, number, attach);
    });
}

HRESULT MessageView::DeleteAttach(ULONG number, ULONG, IMAPIProgress*, ULONG flags) {
    return Call(L"DeleteAttach", [&] {
        if (flags & ~ATTACH_DIALOG)
            return MAPI_E_UNKNOWN_FLAGS;
        const HRESULT status = CheckWritable();
        return FAILED(status) ? status : m_message->RemoveAttachment(number);
    });
}

HRESULT MessageView::GetRecipientTable(ULONG flags, IMAPITable** table) {
    return Call(L"GetRecipientTable", Outputs(table),
                [&] { return GiveTable(RecipientRows(m_message), flags, table); });
}

HRESULT MessageView::ModifyRecipients(ULONG flags, ADRLIST* changes) {
    return Call(L"ModifyRecipients", [&] {
        const HRESULT status = CheckWritable();
        return FAILED(status) ? status : ChangeRecipients(*m_message, flags, changes);
    });
}

HRESULT MessageView::SubmitMessage(ULONG flags) {
    return Call(L"SubmitMessage", [&] { return Submit(flags); });
}

HRESULT MessageView::SetReadFlag(ULONG flags) {
    return Call(L"SetReadFlag", [&] { return SetRead(flags); });
}

HRESULT MessageView::CheckWritable() const {
    return m_message->IsSubmitted() ? MAPI_E_SUBMITTED : TransactedObject::CheckWritable();
}

HRESULT MessageView::Submit(ULONG flags) {
    if (flags & ~FORCE_SUBMIT)
        return MAPI_E_UNKNOWN_FLAGS;
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    const mailbox::Folder* folder = m_message->ParentFolder();
    // A message in an attachment or a file is nowhere that it could be sent from.
    return folder ? folder->Store().Mailbox().Submit(*m_message) : MAPI_E_NO_SUPPORT;
}

/// The mark takes effect at once, whether the message is open for writing or not.
HRESULT MessageView::SetRead(ULONG flags) {
    constexpr ULONG kReceipts =
        SUPPRESS_RECEIPT | GENERATE_RECEIPT_ONLY | CLEAR_RN_PENDING | CLEAR_NRN_PENDING;
    if (flags & ~(kReceipts | CLEAR_READ_FLAG | MAPI_DEFERRED_ERRORS))
        return MAPI_E_UNKNOWN_FLAGS;
    const bool read = (flags & CLEAR_READ_FLAG) == 0;
    if (!read && (flags & (SUPPRESS_RECEIPT | GENERATE_RECEIPT_ONLY)))
        return MAPI_E_INVALID_PARAMETER;
    if (flags & (GENERATE_RECEIPT_ONLY | CLEAR_RN_PENDING | CLEAR_NRN_PENDING))
        return S_OK; // there are no receipts to be sent or called off
    if (const auto& saved = m_message->Saved())
        if (const HRESULT status = saved->SetRead(read); FAILED(status))
            return status;
    if (m_message->Saved() && !m_message->IsChanged())
        m_message->Discard();
    else if (m_message->IsWritable())
        return m_message->SetRead(read);
    return S_OK;
}

HRESULT MessageView::Read(PropertyTag tag, Value& value) const {
    if (IsBodyProperty(tag))
        return ReadBody(*m_message, tag, value);
    const HRESULT status = m_message->Read(tag, value);
    if (FAILED(status) || !IsDisplayName(tag) || !m_message->IsInStore())
        return status;
    // A store works the names out when the message is saved: they are those of the recipients then.
    if (const auto& saved = m_message->Saved())
        return saved->Read(tag, value);
    value = *mailbox::ConvertValue(std::wstring(), mailbox::TypeOf(value), CP_ACP);
    return S_OK;
}

HRESULT MessageView::Write(PropertyTag tag, Value value) {
    return IsBodyProperty(tag) ? WriteBody(*m_message, tag, std::move(value))
                               : m_message->Write(tag, std::move(value));
}

/// The three forms are one body: none of them can go alone.
HRESULT MessageView::Erase(PropertyTag tag) {
    if (!IsBodyForm(tag))
        return m_message->Erase(tag);
    return NativeBodyOf(*m_message) == NativeBody::None ? MAPI_E_NOT_FOUND : EraseBody(*m_message);
}

std::vector<PropertyTag> MessageView::Tags() const {
    return WithBodyTags(*m_message, m_message->Tags());
}

std::vector<PropertyTag> MessageView::TagsToCopy() const {
    return WithBodyToCopy(*m_message, TransactedObject::TagsToCopy());
}

HRESULT MessageView::BeginCopy(std::span<const PropertyTag> tags) {
    return std::ranges::any_of(tags, IsBodyForm) ? EraseBody(*m_message) : S_OK;
}

HRESULT MessageView::CopySubobjects(PropertySide& target, const CopyFilter& filter) const {
    const auto* view = dynamic_cast<MessageView*>(&target);
    if (!view)
        return S_OK;
    OpenMessage& to = *view->m_message;
    if (filter.Wants(PR_MESSAGE_RECIPIENTS) && !(filter.keepExisting && !to.Recipients().empty()))
        if (const HRESULT status = CopyRecipients(*m_message, to); FAILED(status))
            return status;
    if (filter.Wants(PR_MESSAGE_ATTACHMENTS) && !(filter.keepExisting && !to.Attachments().empty()))
        return CopyAttachments(*m_message, to);
    return S_OK;
}

HRESULT MessageView::OpenObject(PropertyTag tag, REFIID iid, ULONG, IUnknown** object) {
    if (iid != kIidTable)
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    constexpr bool kWide = true;
    if (tag == PR_MESSAGE_RECIPIENTS)
        *object = MakeTable(RecipientRows(m_message), kWide);
    else if (tag == PR_MESSAGE_ATTACHMENTS)
        *object = MakeTable(AttachmentRows(m_message), kWide);
    else
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    return S_OK;
}

IMessage* MakeMessage(std::shared_ptr<OpenMessage> message) {
    return new MessageView(std::move(message));
}

} // namespace standin::mapi
