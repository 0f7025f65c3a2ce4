// Sending: what is entered in a message that goes out, who gets it, and what becomes of the sender's copy.
#include "standin/mailbox/ConversationIndex.h"
#include "standin/mailbox/InternetHeaders.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/NonDelivery.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Subject.h"
#include "standin/mailbox/Tags.h"

#include <algorithm>
#include <set>

namespace standin::mailbox {
namespace {

constexpr std::int32_t kSubmitted = MSGFLAG_SUBMIT;
constexpr std::int32_t kUnsent = MSGFLAG_UNSENT;
constexpr std::int32_t kReadFlag = MSGFLAG_READ;
constexpr std::int32_t kFromMe = MSGFLAG_FROMME;

/// The five properties by which a message names a person, and the SMTP address beside them.
struct PersonTags {
    PropertyTag name, addressType, address, entryId, searchKey, smtp;
};

constexpr PersonTags kSender{PR_SENDER_NAME_W,  PR_SENDER_ADDRTYPE_W, PR_SENDER_EMAIL_ADDRESS_W,
                             PR_SENDER_ENTRYID, PR_SENDER_SEARCH_KEY, kPrSenderSmtpAddress};
constexpr PersonTags kSentRepresenting{PR_SENT_REPRESENTING_NAME_W,          PR_SENT_REPRESENTING_ADDRTYPE_W,
                                       PR_SENT_REPRESENTING_EMAIL_ADDRESS_W, PR_SENT_REPRESENTING_ENTRYID,
                                       PR_SENT_REPRESENTING_SEARCH_KEY,      kPrSentRepresentingSmtpAddress};
constexpr PersonTags kReceivedBy{PR_RECEIVED_BY_NAME_W,          PR_RECEIVED_BY_ADDRTYPE_W,
                                 PR_RECEIVED_BY_EMAIL_ADDRESS_W, PR_RECEIVED_BY_ENTRYID,
                                 PR_RECEIVED_BY_SEARCH_KEY,      kPrReceivedBySmtpAddress};
constexpr PersonTags kReceivedRepresenting{
    PR_RCVD_REPRESENTING_NAME_W,  PR_RCVD_REPRESENTING_ADDRTYPE_W, PR_RCVD_REPRESENTING_EMAIL_ADDRESS_W,
    PR_RCVD_REPRESENTING_ENTRYID, PR_RCVD_REPRESENTING_SEARCH_KEY, kPrReceivedRepresentingSmtpAddress};

void EnterPerson(PropertyBag& bag, const PersonTags& tags, const AddressEntry& person) {
    bag.Put(tags.name, person.Name());
    bag.Put(tags.addressType, person.AddressType());
    bag.Put(tags.address, person.Address());
    bag.Put(tags.entryId, person.EntryId());
    bag.Put(tags.searchKey, AddressSearchKey(person.AddressType(), person.Address()));
    bag.Put(tags.smtp, person.SmtpAddress());
}

std::shared_ptr<AddressEntry> OwnerOf(const Store& store) {
    const AddressBook& addresses = store.Mailbox().Addresses();
    auto owner = addresses.FindByAddress(L"SMTP", store.SmtpAddress());
    return owner ? owner : addresses.MakeOneOff(store.Name(), L"SMTP", store.SmtpAddress());
}

template <PropertyTag tag>
void SetIfMissing(PropertyBag& bag, Native<tag> value) {
    if (!bag.Contains(tag))
        bag.Set<tag>(std::move(value));
}

/// What is entered in every message that goes out. A person in whose name it is sent stays; the sender is the
/// user.
void CompleteOutgoing(PropertyBag& bag, const AddressEntry& user) {
    const SysTime now = Now();
    const std::wstring subject = bag.GetOr<PR_SUBJECT_W>({});
    std::wstring guid = TextOfGuid(NewGuid());
    EnterPerson(bag, kSender, user);
    if (!bag.Contains(PR_SENT_REPRESENTING_NAME_W) && !bag.Contains(PR_SENT_REPRESENTING_EMAIL_ADDRESS_W))
        EnterPerson(bag, kSentRepresenting, user);
    bag.Set<PR_CLIENT_SUBMIT_TIME>(now);
    bag.Set<PR_MESSAGE_DELIVERY_TIME>(now);
    SetIfMissing<kPrInternetMessageId>(bag, L"<" + guid.substr(1, guid.size() - 2) + L"@example.com>");
    SetIfMissing<PR_CONVERSATION_TOPIC_W>(
        bag, std::wstring(SplitSubject(subject, bag.GetOr<PR_SUBJECT_PREFIX_W>({})).normalized));
    SetIfMissing<PR_CONVERSATION_INDEX>(bag, *MakeConversationIndex({}));
    bag.Set<PR_MESSAGE_FLAGS>((bag.GetOr<PR_MESSAGE_FLAGS>(0) & ~kUnsent) | kReadFlag | kSubmitted);
}

bool Names(const Content& message, std::int32_t type, const AddressBook& addresses,
           const AddressEntry& person) {
    return std::ranges::any_of(message.recipients, [&](const PropertyBag& row) {
        const auto entry = addresses.FindRecipient(row);
        return (row.GetOr<PR_RECIPIENT_TYPE>(MAPI_TO) & 0x0F) == type && entry &&
               SameIgnoringCase(entry->SmtpAddress(), person.SmtpAddress());
    });
}

/// The copy for one mailbox.
Content MakeDelivered(const Content& sent, const NamedProperties& names, const Store& store) {
    Content copy = RemapContent(sent, names, store.Names());
    std::erase_if(copy.recipients, [](const PropertyBag& row) {
        return (row.GetOr<PR_RECIPIENT_TYPE>(MAPI_TO) & 0x0F) == std::int32_t{MAPI_BCC};
    });
    const AddressBook& addresses = store.Mailbox().Addresses();
    const auto owner = OwnerOf(store);
    PropertyBag& bag = copy.properties;
    for (const PropertyTag tag : {PR_SENTMAIL_ENTRYID, PR_DELETE_AFTER_SUBMIT, PR_DISPLAY_BCC_W})
        bag.Remove(tag);
    EnterPerson(bag, kReceivedBy, *owner);
    EnterPerson(bag, kReceivedRepresenting, *owner);
    const bool isTo = Names(sent, MAPI_TO, addresses, *owner);
    const bool isCc = Names(sent, MAPI_CC, addresses, *owner);
    bag.Set<PR_MESSAGE_TO_ME>(isTo);
    bag.Set<PR_MESSAGE_CC_ME>(isCc);
    bag.Set<PR_MESSAGE_RECIP_ME>(isTo || isCc);
    bag.Set<PR_MESSAGE_DELIVERY_TIME>(Now());
    bag.Set<PR_CREATION_TIME>(Now());
    bag.Set<PR_LAST_MODIFICATION_TIME>(Now());
    bag.Set<PR_SEARCH_KEY>(BytesOf(NewGuid()));
    const bool fromOwner = SameIgnoringCase(bag.GetOr<kPrSenderSmtpAddress>({}), owner->SmtpAddress());
    bag.Set<PR_MESSAGE_FLAGS>(fromOwner ? kFromMe : 0);
    bag.Set<PR_TRANSPORT_MESSAGE_HEADERS_W>(MakeInternetHeaders(copy));
    return copy;
}

/// The people behind a recipient: the members of a list, and of lists in it.
void Expand(const std::shared_ptr<AddressEntry>& entry, std::set<std::shared_ptr<AddressEntry>>& people) {
    if (!people.insert(entry).second)
        return;
    for (const auto& member : entry->Members())
        Expand(member, people);
}

/// The copies of one message in the Inboxes of those who get it. They go back unless they are to stay.
class Delivery {
public:
    Delivery() = default;
    ~Delivery() {
        for (const auto& message : m_delivered)
            message->ParentFolder()->RemoveMessage(*message);
    }
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;

    HRESULT To(const Store& store, Content copy) {
        Folder* inbox = store.SpecialFolder(kInbox);
        if (!inbox || store.IsReadOnly())
            return S_OK;
        std::shared_ptr<Message> message;
        const HRESULT status = inbox->Receive(std::move(copy), false, message);
        if (SUCCEEDED(status))
            m_delivered.push_back(std::move(message));
        return status;
    }
    void Keep() { m_delivered.clear(); }

private:
    std::vector<std::shared_ptr<Message>> m_delivered;
};

/// Saves a message with the properties that it had. Where that fails it stays as it is saved.
void PutBack(OpenMessage& message, const PropertyBag& before) {
    Content* content = nullptr;
    if (FAILED(message.EditContent(content)))
        return;
    content->properties = before;
    message.Save(true);
}

} // namespace

/// What is delivered goes back where the rest can't be, or nothing be kept of it: the message hasn't gone out
/// then.
HRESULT Mailbox::Deliver(const Content& sent, const Store& from, std::uint64_t id) {
    std::set<std::shared_ptr<AddressEntry>> people;
    std::vector<PropertyBag> unreached;
    for (const PropertyBag& row : sent.recipients) {
        if (const auto entry = m_addresses.FindRecipient(row))
            Expand(entry, people);
        else
            unreached.push_back(row);
    }
    std::set<const Store*> targets;
    for (const auto& person : people)
        targets.insert(FindMailbox(*person));
    Delivery delivery;
    for (const auto& store : m_stores)
        if (targets.contains(store.get()))
            if (const HRESULT status = delivery.To(*store, MakeDelivered(sent, from.Names(), *store));
                FAILED(status))
                return status;
    if (!unreached.empty())
        if (const HRESULT status = delivery.To(from, MakeNonDeliveryReport(sent, std::move(unreached)));
            FAILED(status))
            return status;
    const HRESULT status = m_keeper ? m_keeper->SaveSubmitted(from, id, sent) : S_OK;
    if (SUCCEEDED(status))
        delivery.Keep();
    return status;
}

/// What becomes of the sender's copy of a message that has gone out. In the Outbox it keeps its mark: it
/// doesn't go out twice. One that can't be filed stays there too.
void Mailbox::FileSent(OpenMessage& message) {
    const std::shared_ptr<Message> saved = message.Saved();
    Folder& outbox = *saved->ParentFolder();
    const bool isDropped = message.Stored().GetOr<PR_DELETE_AFTER_SUBMIT>(false);
    const Bytes* entryId = message.Stored().Get<PR_SENTMAIL_ENTRYID>();
    Folder* target = entryId ? FindFolder(*entryId) : nullptr;
    Content* content = nullptr;
    if ((!isDropped && !target) || FAILED(message.EditContent(content)))
        return;
    const PropertyBag marked = content->properties;
    content->properties.Set<PR_MESSAGE_FLAGS>(content->properties.GetOr<PR_MESSAGE_FLAGS>(0) & ~kSubmitted);
    content->properties.Remove(PR_SENTMAIL_ENTRYID);
    if (FAILED(message.Save(true)))
        return message.Discard();
    const HRESULT status =
        isDropped ? outbox.RemoveMessage(*saved) : outbox.MoveMessage(*saved, *target, nullptr);
    if (FAILED(status))
        PutBack(message, marked);
}

/// Hands a message over whose Outbox it has been found in.
HRESULT Mailbox::SendOut(OpenMessage& message, const Store& store, const Store& userStore) {
    const OpenMessage::Submission submission(message);
    Content* content = nullptr;
    if (const HRESULT status = message.EditContent(content); FAILED(status))
        return status;
    const PropertyBag before = content->properties;
    CompleteOutgoing(content->properties, *OwnerOf(userStore));
    if (const HRESULT status = message.Save(); FAILED(status)) {
        content->properties = before; // it hasn't gone out
        return status;
    }
    const ContentPtr sent = message.Saved()->SharedContent();
    if (const HRESULT status = Deliver(*sent, store, message.Saved()->Id()); FAILED(status)) {
        // Nor has it now: the marks of the sending go, so that it can be sent again. Where not even that can
        // be saved it stays in the Outbox as if it had gone out.
        PutBack(message, before);
        return status;
    }
    message.MarkSubmitted();
    FileSent(message);
    return S_OK;
}

HRESULT Mailbox::Submit(OpenMessage& message) {
    if (message.IsSubmitted() || message.Stored().GetOr<PR_MESSAGE_FLAGS>(0) & kSubmitted)
        return MAPI_E_SUBMITTED;
    if (!message.IsWritable())
        return E_ACCESSDENIED;
    const Folder* folder = message.ParentFolder();
    if (!folder)
        return message.SavedMessage() ? MAPI_E_OBJECT_DELETED : MAPI_E_NO_SUPPORT;
    const Store& store = folder->Store();
    const Store* userStore = DefaultStore();
    if (folder != store.SpecialFolder(kOutbox) || !userStore)
        return MAPI_E_NO_SUPPORT;
    if (message.Recipients().empty())
        return MAPI_E_NO_RECIPIENTS;
    return SendOut(message, store, *userStore);
}

} // namespace standin::mailbox
