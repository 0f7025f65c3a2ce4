// Entries of the address book, and finding them.
#include "standin/mailbox/AddressBook.h"

#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/Tags.h"

#include <algorithm>

namespace standin::mailbox {
namespace {

constexpr wchar_t kRecipientsContainer[] =
    L"/o=Example/ou=Exchange Administrative Group (FYDIBOHF23SPDLT)/cn=Recipients/cn=";

/// What a recipient row takes over from an address book entry.
constexpr PropertyTag kRecipientTags[] = {
    PR_RECORD_KEY,
    PR_OBJECT_TYPE,
    PR_ENTRYID,
    PR_DISPLAY_NAME_W,
    PR_ADDRTYPE_W,
    PR_EMAIL_ADDRESS_W,
    PR_SEARCH_KEY,
    PR_DISPLAY_TYPE,
    kPrDisplayTypeEx,
    kPrSmtpAddress,
    kPr7BitDisplayName,
    PR_ACCOUNT_W,
    PR_TRANSMITABLE_DISPLAY_NAME_W,
};

bool IsPrefixOf(std::wstring_view beginning, std::wstring_view text) {
    return SameIgnoringCase(beginning, text.substr(0, beginning.size()));
}

bool IsNamed(const AddressEntry& entry, std::wstring_view text) {
    const std::wstring alias = entry.Get<PR_ACCOUNT_W>().value_or(L"");
    return SameIgnoringCase(text, entry.Name()) || SameIgnoringCase(text, alias) ||
           SameIgnoringCase(text, entry.SmtpAddress()) || SameIgnoringCase(text, entry.Address());
}

std::wstring_view Trim(std::wstring_view text) {
    constexpr std::wstring_view kBlanks = L" \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::wstring_view::npos ? std::wstring_view()
                                            : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

PropertyBag AddressProperties(std::wstring_view name, std::wstring_view type, std::wstring_view address) {
    PropertyBag bag;
    bag.Set<PR_DISPLAY_NAME_W>(std::wstring(name));
    bag.Set<PR_TRANSMITABLE_DISPLAY_NAME_W>(std::wstring(name));
    bag.Set<PR_ADDRTYPE_W>(std::wstring(type));
    bag.Set<PR_EMAIL_ADDRESS_W>(std::wstring(address));
    bag.Set<PR_SEARCH_KEY>(AddressSearchKey(type, address));
    return bag;
}

void SetKind(PropertyBag& bag, bool isDistributionList) {
    bag.Set<PR_OBJECT_TYPE>(isDistributionList ? MAPI_DISTLIST : MAPI_MAILUSER);
    bag.Set<PR_DISPLAY_TYPE>(isDistributionList ? DT_DISTLIST : DT_MAILUSER);
}

} // namespace

Bytes AddressSearchKey(std::wstring_view addressType, std::wstring_view address) {
    const std::string key = Narrow(FoldCase(std::wstring(addressType) + L":" + std::wstring(address)), 1252);
    return Bytes(key.c_str(), key.c_str() + key.size() + 1);
}

AddressEntry::AddressEntry(PropertyBag properties, std::shared_ptr<NamedProperties> names, bool isOneOff)
    : m_properties(std::move(properties)), m_names(std::move(names)), m_isOneOff(isOneOff) {
}

bool AddressEntry::IsDistributionList() const {
    return m_properties.GetOr<PR_OBJECT_TYPE>(MAPI_MAILUSER) == static_cast<std::int32_t>(MAPI_DISTLIST);
}

Bytes AddressEntry::EntryId() const {
    return m_properties.GetOr<PR_ENTRYID>({});
}

std::wstring AddressEntry::Name() const {
    return m_properties.GetOr<PR_DISPLAY_NAME_W>({});
}

std::wstring AddressEntry::AddressType() const {
    return m_properties.GetOr<PR_ADDRTYPE_W>({});
}

std::wstring AddressEntry::Address() const {
    return m_properties.GetOr<PR_EMAIL_ADDRESS_W>({});
}

std::wstring AddressEntry::SmtpAddress() const {
    if (const std::wstring* address = m_properties.Get<kPrSmtpAddress>())
        return *address;
    return SameIgnoringCase(AddressType(), L"SMTP") ? Address() : std::wstring();
}

PropertyBag AddressEntry::RecipientProperties() const {
    PropertyBag row;
    for (const PropertyTag tag : kRecipientTags)
        if (const Value* value = m_properties.Find(tag))
            row.Put(tag, *value);
    return row;
}

std::span<const ComputedProperty> AddressEntry::Computed() const {
    return {};
}

/// The directory is for looking at.
HRESULT AddressEntry::CheckWritable() const {
    return E_ACCESSDENIED;
}

PropertyBag& AddressEntry::Edit() {
    return m_properties;
}

AddressBook::AddressBook() : m_names(std::make_shared<NamedProperties>()) {
}

std::shared_ptr<AddressEntry> AddressBook::Add(const AddressEntryDescription& description) {
    const std::wstring dn = kRecipientsContainer + description.alias;
    const std::uint32_t type = description.isDistributionList ? DT_DISTLIST : DT_MAILUSER;
    PropertyBag bag = AddressProperties(description.name, L"EX", dn);
    SetKind(bag, description.isDistributionList);
    bag.Set<PR_ACCOUNT_W>(description.alias);
    bag.Set<kPr7BitDisplayName>(description.alias);
    bag.Set<kPrSmtpAddress>(description.smtpAddress);
    bag.Set<kPrDisplayTypeEx>(static_cast<std::int32_t>(type));
    bag.Set<PR_ENTRYID>(MakeAddressBookEntryId(type, Narrow(dn, 1252)));
    bag.Set<PR_RECORD_KEY>(bag.GetOr<PR_ENTRYID>({}));
    for (const Property& property : description.more)
        bag.Put(property.Tag(), property.value);
    m_entries.push_back(std::make_shared<AddressEntry>(std::move(bag), m_names, false));
    return m_entries.back();
}

HRESULT AddressBook::Resolve(std::wstring_view text, std::shared_ptr<AddressEntry>& entry) const {
    text = Trim(text);
    if (text.empty())
        return MAPI_E_NOT_FOUND;
    std::vector<std::shared_ptr<AddressEntry>> hits;
    std::ranges::copy_if(m_entries, std::back_inserter(hits),
                         [&](const auto& each) { return IsNamed(*each, text); });
    if (hits.empty())
        std::ranges::copy_if(m_entries, std::back_inserter(hits),
                             [&](const auto& each) { return IsPrefixOf(text, each->Name()); });
    if (hits.size() > 1)
        return MAPI_E_AMBIGUOUS_RECIP;
    if (hits.empty() && text.find(L'@') == std::wstring_view::npos)
        return MAPI_E_NOT_FOUND;
    entry = hits.empty() ? MakeOneOff(text, L"SMTP", text) : hits.front();
    return S_OK;
}

HRESULT AddressBook::Open(std::span<const std::uint8_t> entryId, std::shared_ptr<AddressEntry>& entry) const {
    if (const auto oneOff = ParseOneOffEntryId(entryId)) {
        entry = MakeOneOff(oneOff->name, oneOff->addressType, oneOff->address);
        return S_OK;
    }
    const auto parsed = ParseAddressBookEntryId(entryId);
    if (!parsed)
        return MAPI_E_INVALID_ENTRYID;
    const auto found = FindByAddress(L"EX", Widen(parsed->dn, 1252));
    if (!found)
        return MAPI_E_NOT_FOUND;
    entry = found;
    return S_OK;
}

std::shared_ptr<AddressEntry> AddressBook::FindByAddress(std::wstring_view addressType,
                                                         std::wstring_view address) const {
    if (address.empty())
        return nullptr;
    const bool isExchange = SameIgnoringCase(addressType, L"EX");
    const auto found = std::ranges::find_if(m_entries, [&](const auto& each) {
        return SameIgnoringCase(address, isExchange ? each->Address() : each->SmtpAddress());
    });
    return found == m_entries.end() ? nullptr : *found;
}

std::shared_ptr<AddressEntry> AddressBook::FindRecipient(const PropertyBag& recipient) const {
    const std::wstring type = recipient.GetOr<PR_ADDRTYPE_W>(L"SMTP");
    const std::wstring address = recipient.GetOr<PR_EMAIL_ADDRESS_W>({});
    const bool isSmtp = SameIgnoringCase(type, L"SMTP") && !address.empty();
    const std::wstring smtp = recipient.GetOr<kPrSmtpAddress>(isSmtp ? address : std::wstring());
    if (auto entry = FindByAddress(L"SMTP", smtp))
        return entry;
    if (auto entry = FindByAddress(type, address))
        return entry;
    if (!smtp.empty())
        return MakeOneOff(recipient.GetOr<PR_DISPLAY_NAME_W>(smtp), L"SMTP", smtp);
    std::shared_ptr<AddressEntry> entry;
    if (const Bytes* entryId = recipient.Get<PR_ENTRYID>())
        Open(*entryId, entry);
    return entry;
}

/// PR_SMTP_ADDRESS is the directory's: a one-off of SMTP has its address as PR_EMAIL_ADDRESS alone.
std::shared_ptr<AddressEntry> AddressBook::MakeOneOff(std::wstring_view name, std::wstring_view addressType,
                                                      std::wstring_view address) const {
    PropertyBag bag = AddressProperties(name, addressType, address);
    SetKind(bag, false);
    bag.Set<PR_ENTRYID>(MakeOneOffEntryId(name, addressType, address));
    bag.Set<PR_RECORD_KEY>(bag.GetOr<PR_ENTRYID>({}));
    return std::make_shared<AddressEntry>(std::move(bag), m_names, true);
}

Bytes AddressBook::EntryId() const {
    constexpr std::uint32_t kContainer = 0x100;
    return MakeAddressBookEntryId(kContainer, "/");
}

} // namespace standin::mailbox
