// Items: opening, making, saving, deleting.
#include "standin/outlook/items/Item.h"

#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mapi/Bodies.h"
#include "standin/outlook/folders/Folder.h"
#include "standin/outlook/items/Completion.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/session/Session.h"

namespace standin::outlook {
namespace {

/// The members of a mail behind an interface that nobody knows: see Control::SetUnknownClass.
const ItemKind& UnknownItem() {
    static const ItemKind unknown = [] {
        ItemKind kind{.kind = kMailItem.kind};
        kind.kind.interfaceId = 0;
        return kind;
    }();
    return unknown;
}

bool IsOfUnknownClass(const mailbox::OpenMessage& message) {
    const std::wstring& unknown = TheSwitches().unknownClass;
    return !unknown.empty() && DescendsFrom(message.Get<PR_MESSAGE_CLASS_W>().value_or(L""), unknown);
}

} // namespace

mailbox::OpenMessage& MessageOf(Object& item) {
    return static_cast<ItemObject&>(item).Message();
}

_variant_t GetStored(Object& item, const Call& call) {
    return call.row.stored.conversion->read(static_cast<ItemObject&>(item).Message(), call.row.stored);
}

void PutStored(Object& item, const Call& call) {
    const Conversion& conversion = *call.row.stored.conversion;
    if (!conversion.write)
        throw NotBuilt(L"writing of " + call.member.name);
    conversion.write(static_cast<ItemObject&>(item).Message(), call.row.stored, call);
}

ItemObject::ItemObject(const ItemKind& kind, std::shared_ptr<mailbox::OpenMessage> message)
    : Object(kind.kind), m_itemKind(kind), m_message(std::move(message)) {
}

const std::shared_ptr<mailbox::OpenMessage>& ItemObject::Shared() const {
    if (!m_message)
        throw Failure(MAPI_E_OBJECT_DELETED);
    return m_message;
}

mailbox::OpenMessage& ItemObject::Message() const {
    return *Shared();
}

/// An item that is in no folder, as one within another item, has no parent.
ComPtr<Object> ItemObject::Parent() {
    return FolderFor(Message().ParentFolder());
}

std::int32_t ItemObject::Class() const {
    return m_itemKind.objectClass ? m_itemKind.objectClass(Message()) : Object::Class();
}

std::wstring ItemObject::EntryId() const {
    return mailbox::ToHex(Message().Get<PR_ENTRYID>().value_or(mailbox::Bytes()));
}

void ItemObject::Delete() {
    RefuseDeleted();
    const std::shared_ptr<mailbox::Message> saved = Message().Saved();
    if (!saved)
        return LetGo();
    DeleteMessage(*saved);
    CloseWindow();
    m_isDeleted = true;
}

void ItemObject::RefuseDeleted() const {
    if (m_isDeleted)
        throw Failure(MAPI_E_OBJECT_DELETED);
}

void ItemObject::Save() {
    RefuseDeleted();
    mailbox::OpenMessage& message = Message();
    if (message.IsChanged() || message.IsNew())
        Complete();
    Check(message.Save());
}

void ItemObject::Complete() {
    CompleteAnyItem(Message());
    if (m_itemKind.complete)
        m_itemKind.complete(Message());
}

void ItemObject::LetGo() {
    CloseWindow();
    m_message = nullptr;
}

void ItemObject::Display(bool modal) {
    const mailbox::OpenMessage& message = Message();
    if (TheSwitches().closeWindowsAtOnce)
        return;
    mailbox::Value body;
    mapi::ReadBody(message, PR_BODY_W, body);
    const std::wstring* text = std::get_if<std::wstring>(&body);
    m_window.Show(message.Get<PR_SUBJECT_W>().value_or(L""), text ? *text : std::wstring(), modal);
}

ComPtr<ItemObject> ItemFor(std::shared_ptr<mailbox::OpenMessage> message) {
    message->WithdrawByChange();
    const ItemKind& kind =
        IsOfUnknownClass(*message) ? UnknownItem() : KindOf(*message, message->IsAssociated());
    return Make<ItemObject>(kind, std::move(message));
}

ComPtr<ItemObject> OpenItem(mailbox::Message& message) {
    mailbox::Folder* folder = message.ParentFolder();
    if (!folder)
        throw Failure(MAPI_E_OBJECT_DELETED);
    const mailbox::Access access = message.IsWritable() ? mailbox::Access::Modify : mailbox::Access::Read;
    std::shared_ptr<mailbox::OpenMessage> open;
    Check(folder->OpenMessage(message, access, open));
    return ItemFor(std::move(open));
}

ComPtr<ItemObject> NewItem(mailbox::Folder& folder, const std::wstring& messageClass) {
    std::shared_ptr<mailbox::OpenMessage> message;
    Check(folder.CreateMessage(false, message));
    Check(message->Write(PR_MESSAGE_CLASS_W, messageClass));
    ComPtr<ItemObject> item = ItemFor(std::move(message));
    if (item->ItemKindOf().begin)
        item->ItemKindOf().begin(item->Message());
    return item;
}

void TakeBackFromSending(mailbox::Message& message) {
    if (message.IsWaiting())
        Check(message.Withdraw());
}

void DeleteMessage(mailbox::Message& message) {
    mailbox::Folder* folder = message.ParentFolder();
    if (!folder)
        throw Failure(MAPI_E_OBJECT_DELETED);
    TakeBackFromSending(message);
    mailbox::Folder* deleted = folder->Store().SpecialFolder(mailbox::kDeletedItems);
    if (!deleted || folder == deleted || message.IsAssociated())
        return Check(folder->RemoveMessage(message));
    Check(folder->MoveMessage(message, *deleted, nullptr));
}

} // namespace standin::outlook
