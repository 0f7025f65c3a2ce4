// ContactItem: the members of contacts beyond those of all items ([MS-OXOCNTC] 2.2.1).
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/Completion.h"
#include "standin/outlook/items/Filing.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"
#include "standin/outlook/items/contacts/ContactTopics.h"

#include <cmath>

namespace standin::outlook {
namespace {

using mailbox::MessageProperties;
using mailbox::OpenMessage;

/// A day is kept twice: as its midnight here in UTC, and by itself under a name, which counts when the time
/// zone is another one by then ([MS-OXOCNTC] 2.2.1.5).
template <std::uint32_t number>
constexpr StoredProperty kDayByItself{.tag = PT_SYSTIME, .set = &kPsAddress, .number = number};

template <std::uint32_t number>
_variant_t ReadDay(const MessageProperties& message, const StoredProperty& stored) {
    if (const auto day = ReadAs<mailbox::SysTime>(message, kDayByItself<number>))
        return Result(UtcDate(*day));
    const auto time = ReadAs<mailbox::SysTime>(message, stored);
    return Result(time ? Date{std::floor(LocalDate(*time).days)} : kNoDate);
}

template <std::uint32_t number>
void WriteDay(OpenMessage& message, const StoredProperty& stored, const Call& call) {
    const Date day{std::floor(GivenDate(call.arguments).days)};
    if (day == kNoDate) {
        RemoveValue(message, stored);
        return RemoveValue(message, kDayByItself<number>);
    }
    WriteValue(message, stored, TimeOfLocal(day));
    WriteValue(message, kDayByItself<number>, TimeOfUtc(day));
}

constexpr Conversion kBirthday{ReadDay<0x80DE>, WriteDay<0x80DE>};
constexpr Conversion kAnniversary{ReadDay<0x80DF>, WriteDay<0x80DF>};

_variant_t ReadGender(const MessageProperties& message, const StoredProperty& stored) {
    return Result(std::int32_t{ReadAs<std::int16_t>(message, stored).value_or(0)});
}

void WriteGender(OpenMessage& message, const StoredProperty& stored, const Call& call) {
    const std::int32_t gender = call.arguments.Number(0);
    if (!ObjectModel::Get().HasValue(call.member.type.of, gender))
        throw InvalidValue();
    WriteValue(message, stored, static_cast<std::int16_t>(gender));
}

constexpr Conversion kGender{ReadGender, WriteGender};

/// The web page at work is the contact's web page.
constexpr StoredProperty kWebPage{.tag = PT_UNICODE, .set = &kPsAddress, .number = 0x802B};
constexpr StoredProperty kBusinessHomePage{.tag = PR_BUSINESS_HOME_PAGE_W};

void FollowWebPage(OpenMessage& message) {
    WriteValue(message, kBusinessHomePage, StoredText(message, kWebPage));
}
void FollowBusinessHomePage(OpenMessage& message) {
    WriteValue(message, kWebPage, StoredText(message, kBusinessHomePage));
}

constexpr mailbox::PropertyTag kPrReferredByName = PROP_TAG(PT_UNICODE, 0x3A47); // [MS-OXPROPS]

void Begin(OpenMessage& message) {
    constexpr std::int32_t kIcon = 0x200;
    BeginFiled(message, kIcon);
    EnterAuthor(message);
}

constexpr Row kRows[] = {
    Stored(L"Account", kText, PR_ACCOUNT_W),
    Stored(L"Anniversary", kAnniversary, PR_WEDDING_ANNIVERSARY),
    Stored(L"AssistantName", kText, PR_ASSISTANT_W),
    Stored(L"AssistantTelephoneNumber", kText, PR_ASSISTANT_TELEPHONE_NUMBER_W),
    Stored(L"Birthday", kBirthday, PR_BIRTHDAY),
    Stored(L"Business2TelephoneNumber", kText, PR_BUSINESS2_TELEPHONE_NUMBER_W),
    Stored(L"BusinessFaxNumber", kText, PR_BUSINESS_FAX_NUMBER_W),
    Then<FollowBusinessHomePage>(Stored(L"BusinessHomePage", kText, PR_BUSINESS_HOME_PAGE_W)),
    Stored(L"BusinessTelephoneNumber", kText, PR_BUSINESS_TELEPHONE_NUMBER_W),
    Stored(L"CallbackTelephoneNumber", kText, PR_CALLBACK_TELEPHONE_NUMBER_W),
    Stored(L"CarTelephoneNumber", kText, PR_CAR_TELEPHONE_NUMBER_W),
    Stored(L"Children", kKeywords, PR_CHILDRENS_NAMES_W),
    Stored(L"CompanyMainTelephoneNumber", kText, PR_COMPANY_MAIN_PHONE_NUMBER_W),
    Stored(L"ComputerNetworkName", kText, PR_COMPUTER_NETWORK_NAME_W),
    Stored(L"CustomerID", kText, PR_CUSTOMER_ID_W),
    Stored(L"Department", kText, PR_DEPARTMENT_NAME_W),
    Stored(L"FTPSite", kText, PR_FTP_SITE_W),
    Stored(L"Gender", kGender, PR_GENDER),
    Stored(L"GovernmentIDNumber", kText, PR_GOVERNMENT_ID_NUMBER_W),
    Stored(L"Hobby", kText, PR_HOBBIES_W),
    Stored(L"Home2TelephoneNumber", kText, PR_HOME2_TELEPHONE_NUMBER_W),
    Stored(L"HomeFaxNumber", kText, PR_HOME_FAX_NUMBER_W),
    Stored(L"HomeTelephoneNumber", kText, PR_HOME_TELEPHONE_NUMBER_W),
    Stored(L"ISDNNumber", kText, PR_ISDN_NUMBER_W),
    Stored(L"JobTitle", kText, PR_TITLE_W),
    Stored(L"Language", kText, PR_LANGUAGE_W),
    Stored(L"ManagerName", kText, PR_MANAGER_NAME_W),
    Stored(L"MobileTelephoneNumber", kText, PR_MOBILE_TELEPHONE_NUMBER_W),
    Stored(L"OfficeLocation", kText, PR_OFFICE_LOCATION_W),
    Stored(L"OrganizationalIDNumber", kText, PR_ORGANIZATIONAL_ID_NUMBER_W),
    Stored(L"OtherFaxNumber", kText, PR_PRIMARY_FAX_NUMBER_W),
    Stored(L"OtherTelephoneNumber", kText, PR_OTHER_TELEPHONE_NUMBER_W),
    Stored(L"PagerNumber", kText, PR_PAGER_TELEPHONE_NUMBER_W),
    Stored(L"PersonalHomePage", kText, PR_PERSONAL_HOME_PAGE_W),
    Stored(L"PrimaryTelephoneNumber", kText, PR_PRIMARY_TELEPHONE_NUMBER_W),
    Stored(L"Profession", kText, PR_PROFESSION_W),
    Stored(L"RadioTelephoneNumber", kText, PR_RADIO_TELEPHONE_NUMBER_W),
    Stored(L"ReferredBy", kText, kPrReferredByName),
    Stored(L"Spouse", kText, PR_SPOUSE_NAME_W),
    Stored(L"TTYTDDTelephoneNumber", kText, PR_TTYTDD_PHONE_NUMBER_W),
    Stored(L"TelexNumber", kText, PR_TELEX_NUMBER_W),
    Named(L"IMAddress", kText, PT_UNICODE, kPsAddress, 0x8062),
    Named(L"InternetFreeBusyAddress", kText, PT_UNICODE, kPsAddress, 0x80D8),
    Named(L"Journal", kFlag, PT_BOOLEAN, kPsAddress, 0x8025),
    Named(L"NetMeetingAlias", kText, PT_UNICODE, kPsAddress, 0x805F),
    Named(L"NetMeetingServer", kText, PT_UNICODE, kPsAddress, 0x8060),
    Named(L"User1", kText, PT_UNICODE, kPsAddress, 0x804F),
    Named(L"User2", kText, PT_UNICODE, kPsAddress, 0x8050),
    Named(L"User3", kText, PT_UNICODE, kPsAddress, 0x8051),
    Named(L"User4", kText, PT_UNICODE, kPsAddress, 0x8052),
    Named(L"UserCertificate", kText, PT_UNICODE, kPsAddress, 0x8016),
    Then<FollowWebPage>(Named(L"WebPage", kText, PT_UNICODE, kPsAddress, 0x802B)),
};

constexpr const std::span<const Row>* kTopics[] = {
    &kBodyRows,        &kFlagRows,           &kItemCollectionRows, &kReminderRows,
    &kContactNameRows, &kContactAddressRows, &kContactEmailRows,   &kContactPictureRows,
};

} // namespace

const ItemKind kContactItem{
    .kind = {L"ContactItem", 0x00063021, 40, kRows, kCommonItemRows, kTopics},
    .messageClass = L"IPM.Contact",
    .itemType = 2,
    .home = mailbox::kContacts,
    .begin = Begin,
    .complete = CompleteConversation,
};

} // namespace standin::outlook
