// Members about sending and receiving: to whom and from whom, when, what is asked of the way.
#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Tags.h"
#include "standin/outlook/folders/Folder.h"
#include "standin/outlook/items/Item.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"
#include "standin/outlook/items/People.h"
#include "standin/outlook/items/Voting.h"
#include "standin/outlook/objects/AddressEntry.h"
#include "standin/outlook/session/Session.h"

namespace standin::outlook {
namespace {

using mailbox::MessageProperties;
using mailbox::OpenMessage;

constexpr mailbox::PropertyTag kPrRetentionDate = PROP_TAG(PT_SYSTIME, 0x301C); // [MS-OXPROPS] 2.940
constexpr mailbox::PropertyTag kPrRemoteStatus = PROP_TAG(PT_LONG, 0x3E0B);

template <std::int32_t flag, bool whenSet>
_variant_t ReadMessageFlag(const MessageProperties& message, const StoredProperty&) {
    return Result(((message.Get<PR_MESSAGE_FLAGS>().value_or(0) & flag) != 0) == whenSet);
}

constexpr Conversion kSent{ReadMessageFlag<MSGFLAG_UNSENT, false>, nullptr};
constexpr Conversion kSubmitted{ReadMessageFlag<MSGFLAG_SUBMIT, true>, nullptr};

/// A name that is in the address book becomes the person at once; any other is looked up when the item goes
/// out.
void SetSentOnBehalfOfName(ItemObject& item, const Arguments& value) {
    OpenMessage& message = item.Message();
    const std::wstring name = value.Text(0);
    for (const mailbox::PropertyTag tag :
         {kSentRepresentingTags.addressType, kSentRepresentingTags.address, kSentRepresentingTags.entryId,
          kSentRepresentingTags.searchKey, kSentRepresentingTags.smtp})
        RemoveValue(message, {.tag = tag});
    std::shared_ptr<mailbox::AddressEntry> person;
    if (SUCCEEDED(LoggedOnWorld().Addresses().Resolve(name, person)))
        WritePerson(message, kSentRepresentingTags, *person);
    else
        Check(message.Write(PR_SENT_REPRESENTING_NAME_W, name));
}

/// Nothing as long as nobody sent it.
ComPtr<AddressEntryObject> Sender(ItemObject& item) {
    auto person = ReadPerson(item.Message(), kSenderTags);
    return person ? Make<AddressEntryObject>(std::move(person)) : nullptr;
}

void SetSender(ItemObject& item, const Arguments& value) {
    const EntryPtr& person = value.As<AddressEntryObject>(0)->Entry();
    WritePerson(item.Message(), kSenderTags, *person);
    WritePerson(item.Message(), kSentRepresentingTags, *person);
}

/// Without one of its own, the folder for what is sent.
ComPtr<FolderObject> SaveSentMessageFolder(ItemObject& item) {
    const mailbox::Mailbox& world = LoggedOnWorld();
    const auto entryId = item.Message().Get<PR_SENTMAIL_ENTRYID>();
    if (mailbox::Folder* folder = entryId ? world.FindFolder(*entryId) : nullptr)
        return FolderFor(*folder);
    return FolderFor(world.DefaultStore() ? world.DefaultStore()->SpecialFolder(mailbox::kSentItems)
                                          : nullptr);
}

void SetSaveSentMessageFolder(ItemObject& item, const Arguments& value) {
    Check(item.Message().Write(PR_SENTMAIL_ENTRYID, value.As<FolderObject>(0)->Folder().EntryId()));
}

void ClearConversationIndex(ItemObject& item) {
    RemoveValue(item.Message(), {.tag = PR_CONVERSATION_INDEX});
}

/// No store here knows of retention policies.
std::wstring NoText(ItemObject&) {
    return {};
}

void SetNoText(ItemObject&, const Call& call) {
    if (!call.arguments.Text(0).empty())
        throw NotBuilt(call.member.name);
}

/// Nobody chose one: the profile has one way to send.
ComPtr<Object> NoAccount(ItemObject&) {
    return nullptr;
}

constexpr Row kRows[] = {
    Stored(L"AlternateRecipientAllowed", kFlag, PR_ALTERNATE_RECIPIENT_ALLOWED, true),
    Stored(L"AutoForwarded", kFlag, PR_AUTO_FORWARDED),
    Stored(L"BCC", kBccNames, PR_DISPLAY_BCC_W),
    Stored(L"CC", kCcNames, PR_DISPLAY_CC_W),
    Stored(L"DeferredDeliveryTime", kTime, PR_DEFERRED_DELIVERY_TIME),
    Stored(L"DeleteAfterSubmit", kFlag, PR_DELETE_AFTER_SUBMIT),
    Stored(L"ExpiryTime", kTime, PR_EXPIRY_TIME),
    Stored(L"OriginatorDeliveryReportRequested", kFlag, PR_ORIGINATOR_DELIVERY_REPORT_REQUESTED),
    Stored(L"ReadReceiptRequested", kFlag, PR_READ_RECEIPT_REQUESTED),
    Stored(L"ReceivedByEntryID", kHex, PR_RECEIVED_BY_ENTRYID),
    Stored(L"ReceivedByName", kText, PR_RECEIVED_BY_NAME_W),
    Stored(L"ReceivedOnBehalfOfEntryID", kHex, PR_RCVD_REPRESENTING_ENTRYID),
    Stored(L"ReceivedOnBehalfOfName", kText, PR_RCVD_REPRESENTING_NAME_W),
    Stored(L"ReceivedTime", kTime, PR_MESSAGE_DELIVERY_TIME),
    Stored(L"RecipientReassignmentProhibited", kFlag, PR_RECIPIENT_REASSIGNMENT_PROHIBITED),
    Stored(L"RemoteStatus", kNumber, kPrRemoteStatus),
    Stored(L"ReplyRecipientNames", kText, PR_REPLY_RECIPIENT_NAMES_W),
    Stored(L"RetentionExpirationDate", kTime, kPrRetentionDate),
    Stored(L"SenderEmailAddress", kText, PR_SENDER_EMAIL_ADDRESS_W),
    Stored(L"SenderEmailType", kText, PR_SENDER_ADDRTYPE_W),
    Stored(L"SenderName", kText, PR_SENDER_NAME_W),
    Stored(L"Sent", kSent, PR_MESSAGE_FLAGS),
    Stored(L"SentOn", kTime, PR_CLIENT_SUBMIT_TIME),
    WrittenBy<SetSentOnBehalfOfName>(Stored(L"SentOnBehalfOfName", kText, PR_SENT_REPRESENTING_NAME_W)),
    Stored(L"Submitted", kSubmitted, PR_MESSAGE_FLAGS),
    Stored(L"To", kToNames, PR_DISPLAY_TO_W),
    Named(L"VotingOptions", kVotingOptions, PT_BINARY, kPsCommon, 0x8520),
    Named(L"VotingResponse", kText, PT_UNICODE, kPsCommon, 0x8524),
    // Rights management, faxes and shared attachments are other programs'.
    Constant<false>(L"EnableSharedAttachments"),
    Constant<false>(L"HasCoverSheet"),
    Constant<false>(L"IsIPFax"),
    Constant<std::int32_t{0}>(L"Permission"),
    Constant<std::int32_t{0}>(L"PermissionService"),
    {L"PermissionTemplateGuid", Get<NoText>, Put<SetNoText>},
    {L"RetentionPolicyName", Get<NoText>},
    {L"ClearConversationIndex", Get<ClearConversationIndex>},
    {L"SaveSentMessageFolder", Get<SaveSentMessageFolder>, Put<SetSaveSentMessageFolder>},
    {L"SendUsingAccount", Get<NoAccount>},
    {L"Sender", Get<Sender>, Put<SetSender>},
};

} // namespace

constinit const std::span<const Row> kDeliveryRows = kRows;

} // namespace standin::outlook
