// The postal addresses of contacts. Outlook keeps each of them as a whole and in parts, and one of them once
// more as the mailing address.
#include "standin/mailbox/Tags.h"
#include "standin/outlook/items/Item.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/contacts/ContactTopics.h"
#include "standin/outlook/items/contacts/PostalText.h"

namespace standin::outlook {
namespace {

using mailbox::OpenMessage;

constexpr StoredProperty Tagged(mailbox::PropertyTag tag) {
    return {.conversion = &kText, .tag = tag};
}
constexpr StoredProperty Address(std::uint32_t number) {
    return {.conversion = &kText, .tag = PT_UNICODE, .set = &kPsAddress, .number = number};
}

/// Where an address is ([MS-OXOCNTC] 2.2.1.3), and its OlMailingAddress.
struct AddressPlace {
    std::int32_t number;
    StoredProperty whole, street, city, state, postalCode, country, box;
};

constexpr AddressPlace kMailing{0,
                                Tagged(PR_POSTAL_ADDRESS_W),
                                Tagged(PR_STREET_ADDRESS_W),
                                Tagged(PR_LOCALITY_W),
                                Tagged(PR_STATE_OR_PROVINCE_W),
                                Tagged(PR_POSTAL_CODE_W),
                                Tagged(PR_COUNTRY_W),
                                Tagged(PR_POST_OFFICE_BOX_W)};
constexpr AddressPlace kHome{1,
                             Address(0x801A),
                             Tagged(PR_HOME_ADDRESS_STREET_W),
                             Tagged(PR_HOME_ADDRESS_CITY_W),
                             Tagged(PR_HOME_ADDRESS_STATE_OR_PROVINCE_W),
                             Tagged(PR_HOME_ADDRESS_POSTAL_CODE_W),
                             Tagged(PR_HOME_ADDRESS_COUNTRY_W),
                             Tagged(PR_HOME_ADDRESS_POST_OFFICE_BOX_W)};
constexpr AddressPlace kBusiness{2,
                                 Address(0x801B),
                                 Address(0x8045),
                                 Address(0x8046),
                                 Address(0x8047),
                                 Address(0x8048),
                                 Address(0x8049),
                                 Address(0x804A)};
constexpr AddressPlace kOther{3,
                              Address(0x801C),
                              Tagged(PR_OTHER_ADDRESS_STREET_W),
                              Tagged(PR_OTHER_ADDRESS_CITY_W),
                              Tagged(PR_OTHER_ADDRESS_STATE_OR_PROVINCE_W),
                              Tagged(PR_OTHER_ADDRESS_POSTAL_CODE_W),
                              Tagged(PR_OTHER_ADDRESS_COUNTRY_W),
                              Tagged(PR_OTHER_ADDRESS_POST_OFFICE_BOX_W)};
constexpr const AddressPlace* kChoices[] = {&kMailing, &kHome, &kBusiness, &kOther};

constexpr StoredProperty AddressPlace::*kAll[] = {
    &AddressPlace::whole,      &AddressPlace::street,  &AddressPlace::city, &AddressPlace::state,
    &AddressPlace::postalCode, &AddressPlace::country, &AddressPlace::box};

/// Which address is the mailing address ([MS-OXOCNTC] 2.2.1.3.9).
constexpr StoredProperty kPostalAddressId{.tag = PT_LONG, .set = &kPsAddress, .number = 0x8022};

std::int32_t Selected(const OpenMessage& message) {
    return ReadAs<std::int32_t>(message, kPostalAddressId).value_or(kMailing.number);
}

/// Without a choice the mailing address is empty.
void Select(OpenMessage& message, std::int32_t number) {
    const AddressPlace& place = *kChoices[number];
    WriteValue(message, kPostalAddressId, number);
    for (const auto part : kAll) {
        if (number == kMailing.number)
            RemoveValue(message, kMailing.*part);
        else
            WriteValue(message, kMailing.*part, StoredText(message, place.*part));
    }
}

/// The first address that a contact gets is its mailing address, and the mailing address follows the one that
/// it is. What is written to the mailing address itself stays there until then.
void FollowMailing(OpenMessage& message, const AddressPlace& place) {
    if (&place == &kMailing)
        return;
    const std::int32_t selected = Selected(message);
    if (selected == place.number ||
        (selected == kMailing.number && !StoredText(message, place.whole).empty()))
        Select(message, place.number);
}

template <const AddressPlace& place>
void FollowWhole(OpenMessage& message) {
    const PostalParts parts = ParseAddress(StoredText(message, place.whole));
    WriteValue(message, place.street, parts.street);
    WriteValue(message, place.city, parts.city);
    WriteValue(message, place.state, parts.state);
    WriteValue(message, place.postalCode, parts.postalCode);
    WriteValue(message, place.country, parts.country);
    FollowMailing(message, place);
}

template <const AddressPlace& place>
void FollowPart(OpenMessage& message) {
    WriteValue(message, place.whole,
               ComposeAddress({.street = StoredText(message, place.street),
                               .city = StoredText(message, place.city),
                               .state = StoredText(message, place.state),
                               .postalCode = StoredText(message, place.postalCode),
                               .country = StoredText(message, place.country)}));
    FollowMailing(message, place);
}

/// The box isn't part of the whole address.
template <const AddressPlace& place>
void FollowBox(OpenMessage& message) {
    FollowMailing(message, place);
}

template <const AddressPlace& place>
constexpr Row Whole(const wchar_t* name) {
    return Then<FollowWhole<place>>({name, GetStored, nullptr, place.whole});
}
template <const AddressPlace& place>
constexpr Row Part(const wchar_t* name, const StoredProperty& part) {
    return Then<FollowPart<place>>({name, GetStored, nullptr, part});
}
template <const AddressPlace& place>
constexpr Row Box(const wchar_t* name) {
    return Then<FollowBox<place>>({name, GetStored, nullptr, place.box});
}

void SetSelected(ItemObject& item, const Arguments& value) {
    const std::int32_t number = value.Number(0);
    if (!ObjectModel::Get().HasValue(L"OlMailingAddress", number))
        throw InvalidValue();
    Select(item.Message(), number);
}

constexpr Row kRows[] = {
    Whole<kBusiness>(L"BusinessAddress"),
    Part<kBusiness>(L"BusinessAddressCity", kBusiness.city),
    Part<kBusiness>(L"BusinessAddressCountry", kBusiness.country),
    Part<kBusiness>(L"BusinessAddressPostalCode", kBusiness.postalCode),
    Part<kBusiness>(L"BusinessAddressState", kBusiness.state),
    Part<kBusiness>(L"BusinessAddressStreet", kBusiness.street),
    Box<kBusiness>(L"BusinessAddressPostOfficeBox"),
    Whole<kHome>(L"HomeAddress"),
    Part<kHome>(L"HomeAddressCity", kHome.city),
    Part<kHome>(L"HomeAddressCountry", kHome.country),
    Part<kHome>(L"HomeAddressPostalCode", kHome.postalCode),
    Part<kHome>(L"HomeAddressState", kHome.state),
    Part<kHome>(L"HomeAddressStreet", kHome.street),
    Box<kHome>(L"HomeAddressPostOfficeBox"),
    Whole<kMailing>(L"MailingAddress"),
    Part<kMailing>(L"MailingAddressCity", kMailing.city),
    Part<kMailing>(L"MailingAddressCountry", kMailing.country),
    Part<kMailing>(L"MailingAddressPostalCode", kMailing.postalCode),
    Part<kMailing>(L"MailingAddressState", kMailing.state),
    Part<kMailing>(L"MailingAddressStreet", kMailing.street),
    Box<kMailing>(L"MailingAddressPostOfficeBox"),
    Whole<kOther>(L"OtherAddress"),
    Part<kOther>(L"OtherAddressCity", kOther.city),
    Part<kOther>(L"OtherAddressCountry", kOther.country),
    Part<kOther>(L"OtherAddressPostalCode", kOther.postalCode),
    Part<kOther>(L"OtherAddressState", kOther.state),
    Part<kOther>(L"OtherAddressStreet", kOther.street),
    Box<kOther>(L"OtherAddressPostOfficeBox"),
    WrittenBy<SetSelected>(Named(L"SelectedMailingAddress", kNumber, PT_LONG, kPsAddress, 0x8022)),
};

} // namespace

constinit const std::span<const Row> kContactAddressRows = kRows;

} // namespace standin::outlook
