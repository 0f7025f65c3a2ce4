// Entries of the address book, and the user of an Exchange entry.
#include "standin/outlook/objects/AddressEntry.h"

#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/Tags.h"
#include "standin/mapi/Views.h"
#include "standin/outlook/objects/AddressLists.h"
#include "standin/outlook/objects/PropertyAccessor.h"
#include "standin/outlook/session/Session.h"

namespace standin::outlook {
namespace {

bool IsExchange(const mailbox::AddressEntry& entry) {
    return mailbox::SameIgnoringCase(entry.AddressType(), L"EX");
}

template <mailbox::PropertyTag tag>
std::wstring Text(EntryObject& object) {
    return object.Entry()->Get<tag>().value_or(L"");
}

/// The directory refuses it; an address that stands in none is kept by its owner.
template <mailbox::PropertyTag tag>
void SetText(EntryObject& object, const Arguments& value) {
    Check(object.Entry()->Write(tag, value.Text(0)));
}

/// OlAddressEntryUserType.
std::int32_t UserType(EntryObject& object) {
    constexpr std::int32_t kExchangeUser = 0, kExchangeDistributionList = 1, kSmtp = 30, kOther = 40;
    const mailbox::AddressEntry& entry = *object.Entry();
    if (IsExchange(entry))
        return entry.IsDistributionList() ? kExchangeDistributionList : kExchangeUser;
    return mailbox::SameIgnoringCase(entry.AddressType(), L"SMTP") ? kSmtp : kOther;
}

/// OlDisplayType has the numbers of PR_DISPLAY_TYPE.
std::int32_t DisplayType(EntryObject& object) {
    return object.Entry()->Get<PR_DISPLAY_TYPE>().value_or(DT_MAILUSER);
}

std::wstring Id(EntryObject& object) {
    return mailbox::ToHex(object.Entry()->EntryId());
}

ComPtr<ExchangeUserObject> ExchangeUser(EntryObject& object) {
    const bool isUser = IsExchange(*object.Entry()) && !object.Entry()->IsDistributionList();
    return isUser ? Make<ExchangeUserObject>(object.Entry()) : nullptr;
}

/// Nothing for an entry that isn't a list.
ComPtr<AddressEntriesObject> Members(EntryObject& object) {
    return object.Entry()->IsDistributionList()
               ? Make<AddressEntriesObject>(ComPtr<Object>(&object), object.Entry()->Members())
               : nullptr;
}

/// No entry of the directory is a contact, and none has a manager.
ComPtr<Object> Nobody(EntryObject&) {
    return nullptr;
}

ComPtr<IUnknown> MapiObject(EntryObject& object) {
    return ComPtr<IUnknown>::Adopt(mapi::MakeAddressEntry(LoggedOnWorld().Addresses(), object.Entry()));
}

ComPtr<PropertyAccessorObject> Accessor(EntryObject& object) {
    return Make<PropertyAccessorObject>(ComPtr<Object>(&object), object.Entry());
}

/// The directory is for looking at.
void Refuse(EntryObject&) {
    throw Failure(E_ACCESSDENIED);
}

/// A text property of an entry.
template <mailbox::PropertyTag tag>
constexpr Row TextRow(const wchar_t* name) {
    return {name, Get<Text<tag>>, Put<SetText<tag>>};
}

constexpr Row kEntryRows[] = {
    TextRow<PR_EMAIL_ADDRESS_W>(L"Address"),
    TextRow<PR_ADDRTYPE_W>(L"Type"),
    TextRow<PR_DISPLAY_NAME_W>(L"Name"),
    {L"AddressEntryUserType", Get<UserType>},
    {L"Delete", Get<Refuse>},
    {L"DisplayType", Get<DisplayType>},
    {L"GetContact", Get<Nobody>},
    {L"GetExchangeUser", Get<ExchangeUser>},
    {L"ID", Get<Id>},
    {L"MAPIOBJECT", Get<MapiObject>},
    {L"Manager", Get<Nobody>},
    {L"Members", Get<Members>},
    {L"PropertyAccessor", Get<Accessor>},
    {L"Update", Get<Refuse>},
};

constexpr Row kUserRows[] = {
    TextRow<PR_ACCOUNT_W>(L"Alias"),
    TextRow<PR_ASSISTANT_W>(L"AssistantName"),
    TextRow<PR_BUSINESS_TELEPHONE_NUMBER_W>(L"BusinessTelephoneNumber"),
    TextRow<PR_LOCALITY_W>(L"City"),
    TextRow<PR_COMMENT_W>(L"Comments"),
    TextRow<PR_COMPANY_NAME_W>(L"CompanyName"),
    TextRow<PR_DEPARTMENT_NAME_W>(L"Department"),
    TextRow<PR_GIVEN_NAME_W>(L"FirstName"),
    TextRow<PR_TITLE_W>(L"JobTitle"),
    TextRow<PR_SURNAME_W>(L"LastName"),
    TextRow<PR_MOBILE_TELEPHONE_NUMBER_W>(L"MobileTelephoneNumber"),
    TextRow<PR_OFFICE_LOCATION_W>(L"OfficeLocation"),
    TextRow<PR_POSTAL_CODE_W>(L"PostalCode"),
    TextRow<mailbox::kPrSmtpAddress>(L"PrimarySmtpAddress"),
    TextRow<PR_STATE_OR_PROVINCE_W>(L"StateOrProvince"),
    TextRow<PR_STREET_ADDRESS_W>(L"StreetAddress"),
    TextRow<mailbox::kPrYomiCompanyName>(L"YomiCompanyName"),
    TextRow<mailbox::kPrYomiDepartment>(L"YomiDepartment"),
    TextRow<mailbox::kPrYomiDisplayName>(L"YomiDisplayName"),
    TextRow<mailbox::kPrYomiFirstName>(L"YomiFirstName"),
    TextRow<mailbox::kPrYomiLastName>(L"YomiLastName"),
    {L"GetExchangeUserManager", Get<Nobody>},
};

constexpr Kind kEntryKind{L"AddressEntry", 0x0006304B, 8, kEntryRows};
constexpr Kind kUserKind{L"ExchangeUser", 0x000630C9, 110, kUserRows, kEntryRows};

} // namespace

ComPtr<Object> EntryObject::Parent() {
    return TheNameSpace();
}

AddressEntryObject::AddressEntryObject(EntryPtr entry) : EntryObject(kEntryKind, std::move(entry)) {
}

ExchangeUserObject::ExchangeUserObject(EntryPtr entry) : EntryObject(kUserKind, std::move(entry)) {
}

} // namespace standin::outlook
