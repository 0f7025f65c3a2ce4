// The three e-mail addresses of contacts ([MS-OXOCNTC] 2.2.1.2): address, type, name to be shown, and the
// entry id by which mail programs know them.
#include "standin/mailbox/AddressBook.h"
#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/outlook/items/Item.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/contacts/ContactTopics.h"
#include "standin/outlook/session/Session.h"

namespace standin::outlook {
namespace {

using mailbox::OpenMessage;

constexpr const wchar_t* kSmtp = L"SMTP";

/// Where one address is.
struct EmailPlace {
    StoredProperty displayName, type, address, originalName, entryId;
};

constexpr EmailPlace PlaceFrom(std::uint32_t first) {
    const auto at = [first](mailbox::PropertyType type, std::uint32_t offset) {
        return StoredProperty{
            .conversion = &kText, .tag = type, .set = &kPsAddress, .number = first + offset};
    };
    EmailPlace place{at(PT_UNICODE, 0), at(PT_UNICODE, 2), at(PT_UNICODE, 3), at(PT_UNICODE, 4),
                     at(PT_BINARY, 5)};
    place.entryId.conversion = &kHex;
    return place;
}

constexpr EmailPlace kEmail1 = PlaceFrom(0x8080), kEmail2 = PlaceFrom(0x8090), kEmail3 = PlaceFrom(0x80A0);
constexpr const EmailPlace* kPlaces[] = {&kEmail1, &kEmail2, &kEmail3};

/// Which addresses the contact has, as the address book wants to know it: as a list of their places, and as a
/// mask of them.
constexpr StoredProperty kProviderList{.tag = PT_MV_LONG, .set = &kPsAddress, .number = 0x8028};
constexpr StoredProperty kProviderMask{.tag = PT_LONG, .set = &kPsAddress, .number = 0x8029};

/// The subject of a contact is its name.
std::wstring PersonOf(const OpenMessage& message) {
    return message.Get<PR_SUBJECT_W>().value_or(L"");
}

/// "Ann Lee (ann@example.com)".
std::wstring ShownName(const std::wstring& person, const std::wstring& address) {
    return person.empty() ? address : person + L" (" + address + L")";
}

/// What the place of an address among a contact's addresses says about it: fax numbers have places too
/// ([MS-OXOCNTC] 2.2.1.2.11).
void FollowPlaces(OpenMessage& message) {
    std::vector<std::int32_t> places;
    std::int32_t mask = 0;
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(std::size(kPlaces)); ++i) {
        if (StoredText(message, kPlaces[i]->address).empty())
            continue;
        places.push_back(i);
        mask |= 1 << i;
    }
    WriteValue(message, kProviderMask, mask);
    if (places.empty())
        RemoveValue(message, kProviderList);
    else
        WriteValue(message, kProviderList, std::move(places));
}

/// That of the entry in the address book, otherwise one that holds the address itself.
void FollowEntryId(OpenMessage& message, const EmailPlace& place) {
    const std::wstring type = StoredText(message, place.type), address = StoredText(message, place.address);
    const auto entry = LoggedOnWorld().Addresses().FindByAddress(type, address);
    const bool isKnown = entry && entry->AddressType() == type;
    WriteValue(message, place.entryId,
               isKnown ? entry->EntryId()
                       : mailbox::MakeOneOffEntryId(StoredText(message, place.displayName), type, address,
                                                    true, false));
}

void Clear(OpenMessage& message, const EmailPlace& place) {
    for (const StoredProperty& part :
         {place.displayName, place.type, place.address, place.originalName, place.entryId})
        RemoveValue(message, part);
}

template <const EmailPlace& place>
void SetAddress(ItemObject& item, const Arguments& value) {
    OpenMessage& message = item.Message();
    const std::wstring address = value.Text(0), shown = StoredText(message, place.displayName);
    const std::wstring person = PersonOf(message);
    const bool isShownByDefault =
        shown.empty() || shown == ShownName(person, StoredText(message, place.address));
    if (address.empty()) {
        Clear(message, place);
        return FollowPlaces(message);
    }
    WriteValue(message, place.address, address);
    WriteValue(message, place.originalName, address);
    if (StoredText(message, place.type).empty())
        WriteValue(message, place.type, std::wstring(kSmtp));
    if (isShownByDefault)
        WriteValue(message, place.displayName, ShownName(person, address));
    FollowEntryId(message, place);
    FollowPlaces(message);
}

/// Without a text of its own an address is shown in the usual way.
template <const EmailPlace& place>
void FollowDisplayName(OpenMessage& message) {
    const std::wstring address = StoredText(message, place.address);
    if (address.empty())
        return;
    if (StoredText(message, place.displayName).empty())
        WriteValue(message, place.displayName, ShownName(PersonOf(message), address));
    FollowEntryId(message, place);
}

template <const EmailPlace& place>
void FollowType(OpenMessage& message) {
    if (!StoredText(message, place.address).empty())
        FollowEntryId(message, place);
}

template <const EmailPlace& place>
constexpr Row AddressRow(const wchar_t* name) {
    return {name, GetStored, Put<SetAddress<place>>, place.address};
}
template <const EmailPlace& place>
constexpr Row TypeRow(const wchar_t* name) {
    return Then<FollowType<place>>({name, GetStored, nullptr, place.type});
}
template <const EmailPlace& place>
constexpr Row DisplayNameRow(const wchar_t* name) {
    return Then<FollowDisplayName<place>>({name, GetStored, nullptr, place.displayName});
}
template <const EmailPlace& place>
constexpr Row EntryIdRow(const wchar_t* name) {
    return {name, GetStored, nullptr, place.entryId};
}

constexpr Row kRows[] = {
    AddressRow<kEmail1>(L"Email1Address"),         AddressRow<kEmail2>(L"Email2Address"),
    AddressRow<kEmail3>(L"Email3Address"),         TypeRow<kEmail1>(L"Email1AddressType"),
    TypeRow<kEmail2>(L"Email2AddressType"),        TypeRow<kEmail3>(L"Email3AddressType"),
    DisplayNameRow<kEmail1>(L"Email1DisplayName"), DisplayNameRow<kEmail2>(L"Email2DisplayName"),
    DisplayNameRow<kEmail3>(L"Email3DisplayName"), EntryIdRow<kEmail1>(L"Email1EntryID"),
    EntryIdRow<kEmail2>(L"Email2EntryID"),         EntryIdRow<kEmail3>(L"Email3EntryID"),
};

} // namespace

constinit const std::span<const Row> kContactEmailRows = kRows;

void RenameEmailAddresses(OpenMessage& message, const std::wstring& oldName, const std::wstring& newName) {
    for (const EmailPlace* place : kPlaces) {
        const std::wstring address = StoredText(message, place->address);
        if (address.empty() || StoredText(message, place->displayName) != ShownName(oldName, address))
            continue;
        WriteValue(message, place->displayName, ShownName(newName, address));
        FollowEntryId(message, *place);
    }
}

} // namespace standin::outlook
