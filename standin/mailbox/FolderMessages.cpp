// Messages coming into folders, going, and moving between them.
#include "standin/mailbox/Folder.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/Tags.h"

#include <algorithm>

namespace standin::mailbox {
namespace {

constexpr std::int32_t kNewMessageFlags = MSGFLAG_READ | MSGFLAG_UNSENT;
constexpr std::int32_t kAssociated = MSGFLAG_ASSOCIATED;

bool IsMarkedAssociated(const Content& content) {
    return content.properties.GetOr<PR_MESSAGE_FLAGS>(0) & kAssociated;
}

/// The mark says in the message itself to which of the two lists it belongs.
void MarkAssociated(Content& content, bool associated) {
    const std::int32_t flags = content.properties.GetOr<PR_MESSAGE_FLAGS>(0);
    content.properties.Set<PR_MESSAGE_FLAGS>((flags & ~kAssociated) | (associated ? kAssociated : 0));
}

/// What a new message starts with ([MS-OXCMSG] 3.2.5.2), in place of what a template says about its own life.
void BeginLife(PropertyBag& properties, const Mailbox& mailbox) {
    properties.Set<PR_MESSAGE_FLAGS>(kNewMessageFlags);
    properties.Set<PR_CREATION_TIME>(Now());
    properties.Set<PR_LAST_MODIFICATION_TIME>(Now());
    properties.Set<PR_SEARCH_KEY>(BytesOf(NewGuid()));
    if (const Store* user = mailbox.DefaultStore()) {
        properties.Set<kPrCreatorName>(user->Name());
        properties.Set<kPrLastModifierName>(user->Name());
    }
}

void AddDefaults(PropertyBag& properties) {
    if (!properties.Contains(PR_MESSAGE_CLASS_W))
        properties.Set<PR_MESSAGE_CLASS_W>(L"IPM.Note");
    if (!properties.Contains(PR_IMPORTANCE))
        properties.Set<PR_IMPORTANCE>(IMPORTANCE_NORMAL);
    if (!properties.Contains(PR_SENSITIVITY))
        properties.Set<PR_SENSITIVITY>(SENSITIVITY_NONE);
}

auto PositionById(const std::vector<Message*>& messages, std::uint64_t id) {
    return std::ranges::lower_bound(messages, id, {}, [](const Message* each) { return each->Id(); });
}

} // namespace

std::shared_ptr<Message> Folder::FindMessage(std::uint64_t id) const {
    const auto found = m_messageById.find(id);
    return found == m_messageById.end() ? nullptr : found->second;
}

std::size_t Folder::UnreadCount() const {
    return static_cast<std::size_t>(std::ranges::count_if(m_messages, [](const Message* message) {
        return (message->Stored().GetOr<PR_MESSAGE_FLAGS>(0) & static_cast<std::int32_t>(MSGFLAG_READ)) == 0;
    }));
}

/// Ids ascend with arrival, so that the lists are sorted by id.
void Folder::Link(const std::shared_ptr<Message>& message, std::uint64_t id) {
    message->m_folder = this;
    message->m_names = &Names();
    message->m_id = id;
    std::vector<Message*>& list = message->m_associated ? m_associated : m_messages;
    list.insert(PositionById(list, id), message.get());
    m_messageById[id] = message;
    ++m_contentsVersion;
}

std::shared_ptr<Message> Folder::Unlink(Message& message) {
    std::shared_ptr<Message> held = message.shared_from_this();
    std::vector<Message*>& list = message.m_associated ? m_associated : m_messages;
    list.erase(PositionById(list, message.m_id));
    m_messageById.erase(message.m_id);
    message.MarkRemoved();
    ++m_contentsVersion;
    return held;
}

HRESULT Folder::Insert(ContentPtr content, bool associated, std::shared_ptr<Message>& message) {
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    std::uint64_t id = 0;
    if (const HRESULT status = m_store->NewId(id); FAILED(status))
        return status;
    if (Keeper* keeper = Kept())
        if (const HRESULT status = keeper->SaveMessage(*this, id, *content); FAILED(status))
            return status;
    message = std::make_shared<Message>();
    message->m_content = std::move(content);
    message->m_associated = associated;
    Link(message, id);
    return S_OK;
}

void Folder::TakeIn(std::uint64_t id, ContentPtr content) {
    auto message = std::make_shared<Message>();
    message->m_associated = IsMarkedAssociated(*content);
    message->m_content = std::move(content);
    Link(message, id);
}

HRESULT Folder::Receive(Content content, bool associated, std::shared_ptr<Message>& message) {
    MarkAssociated(content, associated);
    return Insert(std::make_shared<const Content>(std::move(content)), associated, message);
}

HRESULT Folder::CreateMessage(bool associated, std::shared_ptr<mailbox::OpenMessage>& message) {
    if (const HRESULT status = CreateMessage(Content(), message); FAILED(status))
        return status;
    auto content = std::make_shared<Content>(*message->m_base);
    MarkAssociated(*content, associated);
    message->m_base = std::move(content);
    message->m_associated = associated;
    return S_OK;
}

HRESULT Folder::CreateMessage(Content content, std::shared_ptr<mailbox::OpenMessage>& message) {
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    BeginLife(content.properties, m_store->Mailbox());
    AddDefaults(content.properties);
    message.reset(new mailbox::OpenMessage);
    message->m_folder = shared_from_this();
    message->m_base = std::make_shared<const Content>(std::move(content));
    message->m_access = Access::Modify;
    message->m_isNew = true;
    return S_OK;
}

HRESULT Folder::OpenMessage(Message& message, Access access, std::shared_ptr<mailbox::OpenMessage>& open) {
    if (message.m_folder != this)
        return MAPI_E_NOT_FOUND;
    if (access == Access::Modify && m_store->IsReadOnly())
        return E_ACCESSDENIED;
    open.reset(new mailbox::OpenMessage);
    open->m_saved = message.shared_from_this();
    open->m_associated = message.m_associated;
    open->m_access = access;
    open->Discard();
    return S_OK;
}

HRESULT Folder::RemoveMessage(Message& message) {
    if (message.m_folder != this)
        return MAPI_E_NOT_FOUND;
    if (message.IsSubmitted())
        return MAPI_E_SUBMITTED;
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    if (Keeper* keeper = Kept())
        if (const HRESULT status = keeper->RemoveMessage(*this, message.m_id); FAILED(status))
            return status;
    Unlink(message);
    return S_OK;
}

HRESULT Folder::MoveMessage(Message& message, Folder& target, std::shared_ptr<Message>* result) {
    if (message.m_folder != this)
        return MAPI_E_NOT_FOUND;
    if (message.IsSubmitted())
        return MAPI_E_SUBMITTED;
    for (const HRESULT status : {CheckWritable(), target.CheckWritable()})
        if (FAILED(status))
            return status;
    std::uint64_t id = 0;
    if (const HRESULT status = target.m_store->NewId(id); FAILED(status))
        return status;
    if (Keeper* keeper = Kept())
        if (const HRESULT status = keeper->MoveMessage(*this, message.m_id, target, id); FAILED(status))
            return status;
    auto moved = std::make_shared<Message>();
    moved->m_associated = message.m_associated;
    moved->m_content = target.ContentFrom(message);
    Unlink(message);
    target.Link(moved, id);
    if (result)
        *result = std::move(moved);
    return S_OK;
}

HRESULT Folder::CopyMessage(const Message& message, Folder& target, std::shared_ptr<Message>* result) const {
    if (message.m_folder != this)
        return MAPI_E_NOT_FOUND;
    std::shared_ptr<Message> copy;
    const HRESULT status = target.Insert(target.ContentFrom(message), message.m_associated, copy);
    if (SUCCEEDED(status) && result)
        *result = std::move(copy);
    return status;
}

/// A message's content as this folder's store holds it: shared within a store, with other ids for names
/// elsewhere.
ContentPtr Folder::ContentFrom(const Message& message) const {
    if (&message.Names() == &Names())
        return message.m_content;
    return std::make_shared<const Content>(RemapContent(*message.m_content, message.Names(), Names()));
}

} // namespace standin::mailbox
