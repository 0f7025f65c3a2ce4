// The field vocabulary of a contact.
#include "Vocabularies.h"

#include "mapi/Tags.h"

#include <array>

namespace varden {

namespace {

constexpr std::array kMailingAddressByWord{EnumWord{1, L"home"}, EnumWord{2, L"business"},
                                           EnumWord{0, L"none"}, EnumWord{3, L"other"}};
constexpr EnumChoice kMailingAddressWords{{}, kMailingAddressByWord, true};

/// A text of the object model, the same way in both directions.
constexpr FieldRow Plain(std::wstring_view name, const wchar_t* member) {
    return {name, get::text(member), set::text(member)};
}

/// Read through the catalogue by its own name, written through the object model.
constexpr FieldRow Named(std::wstring_view name, const wchar_t* member) {
    return {name, get::named(), set::text(member)};
}

/// A second name under which a field is written and not read.
constexpr FieldRow WrittenAs(std::wstring_view name, const wchar_t* member) {
    return {name, get::unknownName, set::text(member)};
}

constexpr std::array kContactFields{
    Plain(L"Account", L"Account"),
    Plain(L"Assistant's Name", L"AssistantName"),
    Plain(L"Assistant's Phone", L"AssistantTelephoneNumber"),
    Plain(L"Billing Information", L"BillingInformation"),
    Plain(L"Business Address", L"BusinessAddress"),
    Plain(L"Business Address City", L"BusinessAddressCity"),
    Plain(L"Business Address Country", L"BusinessAddressCountry"),
    Plain(L"Business Address PO Box", L"BusinessAddressPostOfficeBox"),
    Plain(L"Business Address Postal Code", L"BusinessAddressPostalCode"),
    Plain(L"Business Address State", L"BusinessAddressState"),
    Plain(L"Business Address Street", L"BusinessAddressStreet"),
    Plain(L"Business Fax", L"BusinessFaxNumber"),
    Plain(L"Business Home Page", L"BusinessHomePage"),
    Plain(L"Business Phone", L"BusinessTelephoneNumber"),
    Plain(L"Business Phone 2", L"Business2TelephoneNumber"),
    Plain(L"Callback", L"CallbackTelephoneNumber"),
    Plain(L"Car Phone", L"CarTelephoneNumber"),
    Plain(L"Categories", L"Categories"),
    Plain(L"Children", L"Children"),
    Plain(L"Company", L"CompanyName"),
    Plain(L"Company Main Phone", L"CompanyMainTelephoneNumber"),
    Plain(L"Computer Network Name", L"ComputerNetworkName"),
    Plain(L"Customer ID", L"CustomerID"),
    Plain(L"Department", L"Department"),
    Plain(L"File As", L"FileAs"),
    Plain(L"First Name", L"FirstName"),
    Plain(L"Form Name", L"MessageClass"),
    Plain(L"FTP Site", L"FTPSite"),
    Plain(L"Full Name", L"FullName"),
    Plain(L"Government ID Number", L"GovernmentIDNumber"),
    Plain(L"Hobbies", L"Hobby"),
    Plain(L"Home Address", L"HomeAddress"),
    Plain(L"Home Address City", L"HomeAddressCity"),
    Plain(L"Home Address Country", L"HomeAddressCountry"),
    Plain(L"Home Address PO Box", L"HomeAddressPostOfficeBox"),
    Plain(L"Home Address Postal Code", L"HomeAddressPostalCode"),
    Plain(L"Home Address State", L"HomeAddressState"),
    Plain(L"Home Address Street", L"HomeAddressStreet"),
    Plain(L"Home Fax", L"HomeFaxNumber"),
    Plain(L"Home Phone", L"HomeTelephoneNumber"),
    Plain(L"Home Phone 2", L"Home2TelephoneNumber"),
    Plain(L"Internet Free/Busy Address", L"InternetFreeBusyAddress"),
    Plain(L"ISDN", L"ISDNNumber"),
    Plain(L"Job Title", L"JobTitle"),
    Plain(L"Language", L"Language"),
    Plain(L"Last Name", L"LastName"),
    Plain(L"Location", L"OfficeLocation"),
    Plain(L"Mailing Address", L"MailingAddress"),
    Plain(L"Mailing Address City", L"MailingAddressCity"),
    Plain(L"Mailing Address Country", L"MailingAddressCountry"),
    Plain(L"Mailing Address PO Box", L"MailingAddressPostOfficeBox"),
    Plain(L"Mailing Address Postal Code", L"MailingAddressPostalCode"),
    Plain(L"Mailing Address State", L"MailingAddressState"),
    Plain(L"Mailing Address Street", L"MailingAddressStreet"),
    Plain(L"Manager's Name", L"ManagerName"),
    Plain(L"Message Class", L"MessageClass"),
    Plain(L"Middle Name", L"MiddleName"),
    Plain(L"Mileage", L"Mileage"),
    Plain(L"Mobile Phone", L"MobileTelephoneNumber"),
    Plain(L"Nickname", L"NickName"),
    Plain(L"Office Location", L"OfficeLocation"),
    Plain(L"Organizational ID Number", L"OrganizationalIDNumber"),
    Plain(L"Other Address", L"OtherAddress"),
    Plain(L"Other Address City", L"OtherAddressCity"),
    Plain(L"Other Address Country", L"OtherAddressCountry"),
    Plain(L"Other Address PO Box", L"OtherAddressPostOfficeBox"),
    Plain(L"Other Address Postal Code", L"OtherAddressPostalCode"),
    Plain(L"Other Address State", L"OtherAddressState"),
    Plain(L"Other Address Street", L"OtherAddressStreet"),
    Plain(L"Other Fax", L"OtherFaxNumber"),
    Plain(L"Other Phone", L"OtherTelephoneNumber"),
    Plain(L"Pager", L"PagerNumber"),
    Plain(L"Personal Home Page", L"PersonalHomePage"),
    Plain(L"Primary Phone", L"PrimaryTelephoneNumber"),
    Plain(L"Profession", L"Profession"),
    Plain(L"Radio Phone", L"RadioTelephoneNumber"),
    Plain(L"Spouse", L"Spouse"),
    Plain(L"Subject", L"Subject"),
    Plain(L"Suffix", L"Suffix"),
    Plain(L"Telex", L"TelexNumber"),
    Plain(L"Title", L"Title"),
    Plain(L"TTY/TDD Phone", L"TTYTDDTelephoneNumber"),
    Plain(L"User Field 1", L"User1"),
    Plain(L"User Field 2", L"User2"),
    Plain(L"User Field 3", L"User3"),
    Plain(L"User Field 4", L"User4"),
    Plain(L"Web Page", L"WebPage"),
    FieldRow{L"Anniversary", get::dateBlank(L"Anniversary"), set::date(L"Anniversary")},
    FieldRow{L"Birthday", get::dateBlank(L"Birthday"), set::date(L"Birthday")},
    FieldRow{L"Body", get::mapiText(mapi::tag::kBody), set::text(L"Body")},
    Named(L"E-mail", L"Email1Address"),
    Named(L"E-mail 2", L"Email2Address"),
    Named(L"E-mail 3", L"Email3Address"),
    WrittenAs(L"E-mail Address", L"Email1Address"),
    WrittenAs(L"E-mail 2 Address", L"Email2Address"),
    WrittenAs(L"E-mail 3 Address", L"Email3Address"),
    Named(L"E-mail Address Type", L"Email1AddressType"),
    Named(L"E-mail 2 Address Type", L"Email2AddressType"),
    Named(L"E-mail 3 Address Type", L"Email3AddressType"),
    Named(L"E-mail Display As", L"Email1DisplayName"),
    Named(L"E-mail 2 Display As", L"Email2DisplayName"),
    Named(L"E-mail 3 Display As", L"Email3DisplayName"),
    // A number read as if it were a text: a flag reads as one control character.
    FieldRow{L"Flag Status", get::mapiOne(mapi::tag::kFlagStatus), set::unknownName},
    FieldRow{L"Gender", get::words(L"Gender", kGenderWords), set::choice(L"Gender", kGenderLetters)},
    FieldRow{L"ID", get::text(L"EntryID"), set::readOnly},
    Named(L"IM Address", L"IMAddress"),
    FieldRow{L"Journal", get::boolean(L"Journal"), set::flagT(L"Journal")},
    Named(L"Referred By", L"ReferredBy"),
    FieldRow{L"Selected Mailing Address", get::unknownName,
             set::choice(L"SelectedMailingAddress", kMailingAddressWords)},
    FieldRow{L"Sensitivity", get::words(L"Sensitivity", kSensitivityWords),
             set::choice(L"Sensitivity", kSensitivityLetters)},
    FieldRow{L"Size", get::integer(L"Size"), set::readOnly},
};

constexpr Vocabulary kContact{
    .getterName = L"GetContactFieldData",
    .fields = kContactFields,
    .hasToDoFields = true,
    .cutsLineFeeds = true,
};

} // namespace

const Vocabulary& ContactVocabulary() {
    return kContact;
}

} // namespace varden
