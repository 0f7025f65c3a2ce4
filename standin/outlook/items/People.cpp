// Senders and recipients of messages.
#include "standin/outlook/items/People.h"

#include "standin/mailbox/Tags.h"
#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/objects/Recipient.h"
#include "standin/outlook/session/Session.h"

namespace standin::outlook {
namespace {

constexpr std::int32_t kTypeWithoutMarks = 0x0F; // MAPI_P1 and MAPI_SUBMITTED are marks on the type

bool IsOfType(const mailbox::PropertyBag& row, std::int32_t type) {
    return (row.GetOr<PR_RECIPIENT_TYPE>(MAPI_TO) & kTypeWithoutMarks) == type;
}

std::wstring Text(const mailbox::MessageProperties& message, mailbox::PropertyTag tag) {
    mailbox::Value value;
    const auto* text = SUCCEEDED(message.Read(tag, value)) ? std::get_if<std::wstring>(&value) : nullptr;
    return text ? *text : std::wstring();
}

template <std::int32_t type>
_variant_t ReadNames(const mailbox::MessageProperties& message, const StoredProperty& stored) {
    return message.Current().recipients.empty() ? kText.read(message, stored)
                                                : Result(RecipientText(message, type));
}

template <std::int32_t type>
void WriteNames(mailbox::OpenMessage& message, const StoredProperty&, const Call& call) {
    ReplaceRecipients(message, type, call.arguments.Text(0));
}

} // namespace

constinit const Conversion kToNames{ReadNames<MAPI_TO>, WriteNames<MAPI_TO>};
constinit const Conversion kCcNames{ReadNames<MAPI_CC>, WriteNames<MAPI_CC>};
constinit const Conversion kBccNames{ReadNames<MAPI_BCC>, WriteNames<MAPI_BCC>};
constinit const PersonTags kSenderTags{PR_SENDER_NAME_W,          PR_SENDER_ADDRTYPE_W,
                                       PR_SENDER_EMAIL_ADDRESS_W, PR_SENDER_ENTRYID,
                                       PR_SENDER_SEARCH_KEY,      mailbox::kPrSenderSmtpAddress};
constinit const PersonTags kSentRepresentingTags{
    PR_SENT_REPRESENTING_NAME_W,  PR_SENT_REPRESENTING_ADDRTYPE_W, PR_SENT_REPRESENTING_EMAIL_ADDRESS_W,
    PR_SENT_REPRESENTING_ENTRYID, PR_SENT_REPRESENTING_SEARCH_KEY, mailbox::kPrSentRepresentingSmtpAddress};

void WritePerson(mailbox::OpenMessage& message, const PersonTags& tags, const mailbox::AddressEntry& person) {
    Check(message.Write(tags.name, person.Name()));
    Check(message.Write(tags.addressType, person.AddressType()));
    Check(message.Write(tags.address, person.Address()));
    Check(message.Write(tags.entryId, person.EntryId()));
    Check(message.Write(tags.searchKey, mailbox::AddressSearchKey(person.AddressType(), person.Address())));
    Check(message.Write(tags.smtp, person.SmtpAddress()));
}

std::shared_ptr<mailbox::AddressEntry> ReadPerson(const mailbox::MessageProperties& message,
                                                  const PersonTags& tags) {
    const std::wstring name = Text(message, tags.name), type = Text(message, tags.addressType),
                       address = Text(message, tags.address);
    if (name.empty() && address.empty())
        return nullptr;
    const mailbox::AddressBook& book = LoggedOnWorld().Addresses();
    auto entry = book.FindByAddress(type, address);
    return entry ? entry : book.MakeOneOff(name, type, address);
}

std::shared_ptr<mailbox::AddressEntry> CurrentUser() {
    const mailbox::Mailbox& world = LoggedOnWorld();
    const mailbox::Store* store = world.DefaultStore();
    return store ? world.Addresses().FindByAddress(L"SMTP", store->SmtpAddress()) : nullptr;
}

std::wstring RecipientText(const mailbox::MessageProperties& message, std::int32_t type) {
    std::wstring text;
    for (const mailbox::PropertyBag& row : message.Current().recipients)
        if (IsOfType(row, type))
            text += (text.empty() ? L"" : L"; ") + row.GetOr<PR_DISPLAY_NAME_W>(L"");
    return text;
}

void ReplaceRecipients(mailbox::OpenMessage& message, std::int32_t type, const std::wstring& names) {
    mailbox::Content* content = nullptr;
    Check(message.EditContent(content));
    std::erase_if(content->recipients,
                  [type](const mailbox::PropertyBag& row) { return IsOfType(row, type); });
    for (const std::wstring& name : SplitNames(names)) {
        mailbox::PropertyBag row = UnresolvedRecipient(name);
        row.Set<PR_RECIPIENT_TYPE>(type);
        Check(message.AddRecipient(std::move(row)));
    }
}

std::vector<std::wstring> SplitNames(std::wstring_view text) {
    std::vector<std::wstring> names;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(L';'), text.size());
        const std::wstring_view part = text.substr(0, end);
        const std::size_t first = part.find_first_not_of(L" \t\r\n");
        if (first != part.npos)
            names.emplace_back(part.substr(first, part.find_last_not_of(L" \t\r\n") - first + 1));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return names;
}

} // namespace standin::outlook
