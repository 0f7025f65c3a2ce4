// Sending items through the Outbox.
#include "standin/outlook/items/Sending.h"

#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/People.h"
#include "standin/outlook/objects/Recipients.h"
#include "standin/outlook/session/Session.h"

namespace standin::outlook {
namespace {

using mailbox::OpenMessage;

void CheckSendable(const OpenMessage& message) {
    const std::int32_t flags = message.Get<PR_MESSAGE_FLAGS>().value_or(0);
    if (!(flags & std::int32_t{MSGFLAG_UNSENT}))
        throw Failure(MAPI_E_NO_SUPPORT, L"This item has already been sent.");
    if (message.Recipients().empty())
        throw NoRecipients();
}

/// Somebody in whose name it goes out must be known by then.
bool ResolveSentRepresenting(OpenMessage& message) {
    const auto name = message.Get<PR_SENT_REPRESENTING_NAME_W>();
    if (!name || name->empty() || message.Get<PR_SENT_REPRESENTING_EMAIL_ADDRESS_W>())
        return true;
    std::shared_ptr<mailbox::AddressEntry> person;
    if (FAILED(LoggedOnWorld().Addresses().Resolve(*name, person)))
        return false;
    WritePerson(message, kSentRepresentingTags, *person);
    return true;
}

/// The item's message in the Outbox: moved there, or made there if it was never saved or is in another store.
std::shared_ptr<OpenMessage> PutIntoOutbox(ItemObject& item) {
    mailbox::Folder& outbox = OwnFolder(mailbox::kOutbox);
    OpenMessage& message = item.Message();
    mailbox::Folder* folder = message.ParentFolder();
    std::shared_ptr<OpenMessage> open;
    if (message.IsNew() || !folder || &folder->Store() != &outbox.Store()) {
        Check(outbox.CreateMessage(mailbox::RemapContent(message.Current(), message.Names(), outbox.Names()),
                                   open));
        return open;
    }
    item.Save();
    std::shared_ptr<mailbox::Message> moved = message.Saved();
    if (folder != &outbox)
        Check(folder->MoveMessage(*message.Saved(), outbox, &moved));
    Check(outbox.OpenMessage(*moved, mailbox::Access::Modify, open));
    return open;
}

bool IsForLater(const OpenMessage& message) {
    const auto time = message.Get<PR_DEFERRED_DELIVERY_TIME>();
    return time && *time > mailbox::Now();
}

/// It waits in the Outbox until somebody takes it back: no time passes here.
void KeepForLater(OpenMessage& message) {
    mailbox::Content* content = nullptr;
    Check(message.EditContent(content));
    const std::int32_t flags = content->properties.GetOr<PR_MESSAGE_FLAGS>(0);
    content->properties.Set<PR_MESSAGE_FLAGS>(flags | std::int32_t{MSGFLAG_SUBMIT});
    Check(message.Save());
}

} // namespace

Failure NoRecipients() {
    return {E_FAIL, L"There must be at least one name or distribution list in the To, Cc, or Bcc box."};
}

mailbox::Folder& OwnFolder(std::int32_t number) {
    const mailbox::Store* store = LoggedOnWorld().DefaultStore();
    mailbox::Folder* folder = store ? store->SpecialFolder(number) : nullptr;
    if (!folder)
        throw Failure(MAPI_E_NOT_FOUND);
    return *folder;
}

void SubmitMessage(OpenMessage& message) {
    const bool isKept = !message.Get<PR_DELETE_AFTER_SUBMIT>().value_or(false);
    if (isKept && !message.Get<PR_SENTMAIL_ENTRYID>())
        Check(message.Write(PR_SENTMAIL_ENTRYID, OwnFolder(mailbox::kSentItems).EntryId()));
    if (IsForLater(message))
        return KeepForLater(message);
    Check(LoggedOnWorld().Submit(message));
}

void SendItem(ItemObject& item) {
    CheckSendable(item.Message());
    const bool allKnown = ResolveAll(RecipientsOf(item.Shared())) && ResolveSentRepresenting(item.Message());
    if (!allKnown)
        throw Failure(E_FAIL, L"Outlook does not recognize one or more names.");
    item.Complete();
    SubmitMessage(*PutIntoOutbox(item));
    item.LetGo();
}

} // namespace standin::outlook
