// Contacts: their members and what is stored behind them, and what Outlook keeps together: names, postal
// addresses, e-mail addresses, pictures.
#include "Stored.h"

#include <mapicode.h>

#include <filesystem>
#include <fstream>

namespace outlook_tests {
namespace {

using ContactTest = KindTest;

struct Assignment {
    const wchar_t* member;
    const wchar_t* text;
};
using Assignments = std::vector<Assignment>;

void PutAll(const Object& item, const Assignments& assignments) {
    for (const Assignment& each : assignments)
        item.Put(each.member, Value(each.text));
}

void ExpectAll(const Object& item, const Assignments& expected) {
    for (const Assignment& each : expected)
        EXPECT_EQ(item.Text(each.member), each.text) << each.member;
}

TEST_F(ContactTest, TextsAreStoredUnderTheirPublishedNames) {
    struct Row {
        const wchar_t* member;
        std::wstring property;
    };
    const Row rows[] = {
        {L"Account", Tag(0x3A00001F)},
        {L"AssistantName", Tag(0x3A30001F)},
        {L"AssistantTelephoneNumber", Tag(0x3A2E001F)},
        {L"Business2TelephoneNumber", Tag(0x3A1B001F)},
        {L"BusinessFaxNumber", Tag(0x3A24001F)},
        {L"BusinessTelephoneNumber", Tag(0x3A08001F)},
        {L"CallbackTelephoneNumber", Tag(0x3A02001F)},
        {L"CarTelephoneNumber", Tag(0x3A1E001F)},
        {L"CompanyMainTelephoneNumber", Tag(0x3A57001F)},
        {L"ComputerNetworkName", Tag(0x3A49001F)},
        {L"CustomerID", Tag(0x3A4A001F)},
        {L"Department", Tag(0x3A18001F)},
        {L"FTPSite", Tag(0x3A4C001F)},
        {L"GovernmentIDNumber", Tag(0x3A07001F)},
        {L"Hobby", Tag(0x3A43001F)},
        {L"Home2TelephoneNumber", Tag(0x3A2F001F)},
        {L"HomeFaxNumber", Tag(0x3A25001F)},
        {L"HomeTelephoneNumber", Tag(0x3A09001F)},
        {L"IMAddress", Id(kAddressSet, 0x8062001F)},
        {L"ISDNNumber", Tag(0x3A2D001F)},
        {L"Initials", Tag(0x3A0A001F)},
        {L"InternetFreeBusyAddress", Id(kAddressSet, 0x80D8001F)},
        {L"JobTitle", Tag(0x3A17001F)},
        {L"Language", Tag(0x3A0C001F)},
        {L"ManagerName", Tag(0x3A4E001F)},
        {L"MobileTelephoneNumber", Tag(0x3A1C001F)},
        {L"NickName", Tag(0x3A4F001F)},
        {L"OfficeLocation", Tag(0x3A19001F)},
        {L"OrganizationalIDNumber", Tag(0x3A10001F)},
        {L"OtherFaxNumber", Tag(0x3A23001F)},
        {L"OtherTelephoneNumber", Tag(0x3A1F001F)},
        {L"PagerNumber", Tag(0x3A21001F)},
        {L"PersonalHomePage", Tag(0x3A50001F)},
        {L"PrimaryTelephoneNumber", Tag(0x3A1A001F)},
        {L"Profession", Tag(0x3A46001F)},
        {L"RadioTelephoneNumber", Tag(0x3A1D001F)},
        {L"ReferredBy", Tag(0x3A47001F)},
        {L"Spouse", Tag(0x3A48001F)},
        {L"TTYTDDTelephoneNumber", Tag(0x3A4B001F)},
        {L"TelexNumber", Tag(0x3A2C001F)},
        {L"User1", Id(kAddressSet, 0x804F001F)},
        {L"User4", Id(kAddressSet, 0x8052001F)},
        {L"YomiCompanyName", Id(kAddressSet, 0x802E001F)},
        {L"YomiFirstName", Id(kAddressSet, 0x802C001F)},
        {L"YomiLastName", Id(kAddressSet, 0x802D001F)},
    };
    const Object item = New(Value(kContactItem));
    for (const Row& row : rows) {
        EXPECT_EQ(item.Text(row.member), L"") << row.member;
        item.Put(row.member, Value(std::wstring(L"<") + row.member));
    }
    const Object saved = Reopened(item);
    for (const Row& row : rows) {
        EXPECT_EQ(saved.Text(row.member), std::wstring(L"<") + row.member);
        EXPECT_EQ(StoredText(saved, row.property), std::wstring(L"<") + row.member) << row.member;
    }
}

TEST_F(ContactTest, OtherValuesHaveTheirPublishedForms) {
    const Object item = New(Value(kContactItem));
    EXPECT_EQ(item.Get(L"Birthday"), Date(949998)) << "no date";
    item.Put(L"Birthday", Date(36526.75));
    EXPECT_EQ(item.Get(L"Birthday"), Date(36526)) << "a day has no time";
    EXPECT_EQ(Stored(item, Id(kAddressSet, 0x80DE0040)), Date(36526)) << "the day by itself";
    EXPECT_EQ(item.Child(L"PropertyAccessor").Call(L"UTCToLocalTime", {Stored(item, Tag(0x3A420040))}),
              Date(36526));
    item.Put(L"Anniversary", Date(40000));
    item.Put(L"Anniversary", Date(949998));
    EXPECT_EQ(Stored(item, Tag(0x3A410040)).vt, VT_EMPTY) << "no date takes it away";
    EXPECT_EQ(Stored(item, Id(kAddressSet, 0x80DF0040)).vt, VT_EMPTY);

    item.Put(L"Gender", Value(2));
    EXPECT_EQ(Stored(item, Tag(0x3A4D0002)), _variant_t(short{2}));
    EXPECT_EQ(item.TryPut(L"Gender", Value(3)).Status(), E_INVALIDARG);
    item.Put(L"Children", Value(L"Ann, Bob"));
    EXPECT_EQ(StoredText(item, Tag(0x3A58101F)), L"Ann | Bob");
    item.Put(L"Journal", Value(true));
    EXPECT_EQ(Stored(item, Id(kAddressSet, 0x8025000B)), Value(true));
    item.Put(L"WebPage", Value(L"a.example"));
    EXPECT_EQ(item.Text(L"BusinessHomePage"), L"a.example");
    item.Put(L"BusinessHomePage", Value(L"b.example"));
    EXPECT_EQ(StoredText(item, Id(kAddressSet, 0x802B001F)), L"b.example");
}

TEST_F(ContactTest, NewContactsAreNoDrafts) {
    const Object item = Reopened(New(Value(kContactItem)));
    EXPECT_EQ(Stored(item, Tag(0x0E070003)), Value(1));
    EXPECT_EQ(Stored(item, Tag(0x10800003)), Value(0x200));
    EXPECT_EQ(StoredText(item, Tag(0x0C1A001F)), L"Front Desk");
    EXPECT_EQ(Stored(item, Tag(0x0E060040)).vt, VT_DATE);
}

TEST_F(ContactTest, TheFullNameIsTakenApart) {
    struct Row {
        const wchar_t* fullName;
        const wchar_t *title, *first, *middle, *last, *suffix;
    };
    const Row rows[] = {
        {L"Ann Lee", L"", L"Ann", L"", L"Lee", L""},
        {L"Dr. Ann Mary Sue Lee Jr.", L"Dr.", L"Ann", L"Mary Sue", L"Lee", L"Jr."},
        {L"Lee, Ann Mary", L"", L"Ann", L"Mary", L"Lee", L""},
        {L"van Dam, mrs Ann III", L"mrs", L"Ann", L"", L"van Dam", L"III"},
        {L"Ann Lee, Sr", L"", L"Ann", L"", L"Lee", L"Sr"},
        {L"  Ann   Lee ", L"", L"Ann", L"", L"Lee", L""},
        {L"Ann", L"", L"Ann", L"", L"", L""},
        {L"Mr. Lee", L"Mr.", L"", L"", L"Lee", L""},
        {L"Dr", L"", L"Dr", L"", L"", L""},
        {L"Lee,", L"", L"", L"", L"Lee", L""},
        {L"", L"", L"", L"", L"", L""},
    };
    for (const Row& row : rows) {
        const Object item = New(Value(kContactItem));
        item.Put(L"FullName", Value(row.fullName));
        SCOPED_TRACE(row.fullName);
        ExpectAll(item, {{L"FullName", row.fullName},
                         {L"Title", row.title},
                         {L"FirstName", row.first},
                         {L"MiddleName", row.middle},
                         {L"LastName", row.last},
                         {L"Suffix", row.suffix}});
    }
}

TEST_F(ContactTest, NameSubjectAndFileAsFollowTheParts) {
    const Object item = New(Value(kContactItem));
    PutAll(item, {{L"LastName", L"Fox"},
                  {L"FirstName", L"Quick"},
                  {L"MiddleName", L"Brown"},
                  {L"Title", L"Dr"},
                  {L"Suffix", L"Jr"},
                  {L"CompanyName", L"Fence Co"}});
    ExpectAll(item, {{L"FullName", L"Dr Quick Brown Fox Jr"},
                     {L"Subject", L"Quick Brown Fox Jr"},
                     {L"FileAs", L"Fox, Quick Brown"},
                     {L"LastNameAndFirstName", L"Fox, Quick Brown"},
                     {L"LastFirstNoSpace", L"FoxQuick Brown"},
                     {L"LastFirstSpaceOnly", L"Fox Quick Brown"},
                     {L"LastFirstAndSuffix", L"Fox, Quick Brown Jr"},
                     {L"LastFirstNoSpaceAndSuffix", L"FoxQuick Brown Jr"},
                     {L"CompanyAndFullName", L"Fence Co\r\nFox, Quick Brown"},
                     {L"FullNameAndCompany", L"Fox, Quick Brown\r\nFence Co"},
                     {L"CompanyLastFirstNoSpace", L"Fence Co\r\nFoxQuick Brown"},
                     {L"CompanyLastFirstSpaceOnly", L"Fence Co\r\nFox Quick Brown"},
                     {L"LastFirstNoSpaceCompany", L"FoxQuick Brown\r\nFence Co"},
                     {L"LastFirstSpaceOnlyCompany", L"Fox Quick Brown\r\nFence Co"}});
    EXPECT_EQ(Stored(item, Id(kAddressSet, 0x80060003)), Value(0x8017));
    EXPECT_EQ(StoredText(item, Tag(0x3001001F)), L"Dr Quick Brown Fox Jr");
    const Object saved = Reopened(item);
    EXPECT_EQ(saved.Text(L"ConversationTopic"), L"Quick Brown Fox Jr");
    saved.Put(L"FirstName", Value(L"Slow"));
    EXPECT_EQ(Reopened(saved).Text(L"ConversationTopic"), L"Slow Brown Fox Jr");
    EXPECT_EQ(item.TryPut(L"LastFirstNoSpace", Value(L"x")).Status(), DISP_E_MEMBERNOTFOUND);
}

TEST_F(ContactTest, FileAsIsAFormOrAText) {
    const Object item = New(Value(kContactItem));
    item.Put(L"CompanyName", Value(L"Fence Co"));
    EXPECT_EQ(item.Text(L"FileAs"), L"Fence Co") << "nobody has a name";
    item.Put(L"FullName", Value(L"Ann Lee"));
    EXPECT_EQ(item.Text(L"FileAs"), L"Lee, Ann");
    item.Put(L"FileAs", Value(L"Fence Co\r\nLee, Ann"));
    item.Put(L"LastName", Value(L"Poe"));
    EXPECT_EQ(item.Text(L"FileAs"), L"Fence Co\r\nPoe, Ann") << "the form stays";
    EXPECT_EQ(Stored(item, Id(kAddressSet, 0x80060003)), Value(0x8018));
    item.Put(L"FileAs", Value(L"Aunt"));
    item.Put(L"LastName", Value(L"Lee"));
    EXPECT_EQ(item.Text(L"FileAs"), L"Aunt") << "the text stays";
    const Object foreign = New(Value(kContactItem));
    Store(foreign, Id(kAddressSet, 0x8005001F), Value(L"By another program"));
    foreign.Put(L"LastName", Value(L"Lee"));
    EXPECT_EQ(foreign.Text(L"FileAs"), L"By another program");
}

TEST_F(ContactTest, PostalAddressesAreComposedOfTheirParts) {
    for (const std::wstring which : {L"Business", L"Home", L"Other"}) {
        const auto name = [&which](const wchar_t* part) { return which + L"Address" + part; };
        const Object item = New(Value(kContactItem));
        const std::pair<const wchar_t*, const wchar_t*> steps[] = {
            {L"City", L"Springfield"}, {L"PostalCode", L"01234"}, {L"Street", L"12 Lazy Dog Lane"},
            {L"State", L"MA"},         {L"Country", L"Canada"},
        };
        const wchar_t* wholes[] = {
            L"Springfield",
            L"Springfield  01234",
            L"12 Lazy Dog Lane\r\nSpringfield  01234",
            L"12 Lazy Dog Lane\r\nSpringfield, MA  01234",
            L"12 Lazy Dog Lane\r\nSpringfield, MA  01234\r\nCanada",
        };
        for (std::size_t i = 0; i < std::size(steps); ++i) {
            item.Put(name(steps[i].first).c_str(), Value(steps[i].second));
            EXPECT_EQ(item.Text(name(L"").c_str()), wholes[i]) << which << i;
        }
        item.Put(name(L"PostOfficeBox").c_str(), Value(L"77"));
        EXPECT_EQ(item.Text(name(L"").c_str()), wholes[4]);
        EXPECT_EQ(item.Text(L"MailingAddress"), wholes[4]) << "the first address is the one for mail";
        EXPECT_EQ(item.Text(L"MailingAddressPostOfficeBox"), L"77");
    }
    const Object home = New(Value(kContactItem));
    PutAll(home,
           {{L"HomeAddressCity", L"Springfield"}, {L"HomeAddressCountry", L"United States of America"}});
    EXPECT_EQ(home.Text(L"HomeAddress"), L"Springfield") << "the user's own country";
    EXPECT_EQ(StoredText(home, Tag(0x3A5A001F)), L"United States of America");
    EXPECT_EQ(StoredText(home, Id(kAddressSet, 0x801A001F)), L"Springfield");
}

TEST_F(ContactTest, PostalAddressesAreTakenApart) {
    struct Row {
        const wchar_t* whole;
        const wchar_t *street, *city, *state, *postalCode, *country;
    };
    const Row rows[] = {
        {L"1 Main St\r\nSpringfield, MA  01234", L"1 Main St", L"Springfield", L"MA", L"01234", L""},
        {L"1 Main St\nFloor 2\nSpringfield, New Hampshire\nUSA", L"1 Main St\r\nFloor 2", L"Springfield",
         L"New Hampshire", L"", L"USA"},
        {L"1 Main St\r\nSan Jose CA 01234-5678\r\nCanada", L"1 Main St", L"San Jose", L"CA", L"01234-5678",
         L"Canada"},
        {L"London, SW1A 2AA", L"", L"London", L"", L"SW1A 2AA", L""},
        {L"12 Lazy Dog Lane\r\nSpringfield  01234", L"12 Lazy Dog Lane", L"Springfield", L"", L"01234", L""},
        {L"Somewhere\r\nbehind the hills", L"Somewhere\r\nbehind the hills", L"", L"", L"", L""},
        {L"", L"", L"", L"", L"", L""},
    };
    for (const Row& row : rows) {
        const Object item = New(Value(kContactItem));
        item.Put(L"OtherAddressCity", Value(L"Before"));
        item.Put(L"OtherAddress", Value(row.whole));
        SCOPED_TRACE(row.whole);
        ExpectAll(item, {{L"OtherAddress", row.whole},
                         {L"OtherAddressStreet", row.street},
                         {L"OtherAddressCity", row.city},
                         {L"OtherAddressState", row.state},
                         {L"OtherAddressPostalCode", row.postalCode},
                         {L"OtherAddressCountry", row.country}});
    }
}

TEST_F(ContactTest, TheMailingAddressFollowsTheOneThatItIs) {
    const Object item = New(Value(kContactItem));
    EXPECT_EQ(item.Number(L"SelectedMailingAddress"), 0);
    PutAll(item, {{L"HomeAddressCity", L"Home"}, {L"BusinessAddressCity", L"Work"}});
    EXPECT_EQ(item.Number(L"SelectedMailingAddress"), 1);
    item.Put(L"SelectedMailingAddress", Value(2));
    EXPECT_EQ(item.Text(L"MailingAddress"), L"Work");
    EXPECT_EQ(Stored(item, Id(kAddressSet, 0x80220003)), Value(2));
    EXPECT_EQ(StoredText(item, Tag(0x3A27001F)), L"Work");
    item.Put(L"MailingAddressStreet", Value(L"1 Own Way"));
    ExpectAll(item, {{L"MailingAddress", L"1 Own Way\r\nWork"}, {L"BusinessAddress", L"Work"}});
    item.Put(L"BusinessAddressState", Value(L"MA"));
    ExpectAll(item, {{L"MailingAddress", L"Work, MA"}, {L"MailingAddressStreet", L""}});
    item.Put(L"SelectedMailingAddress", Value(0));
    ExpectAll(item, {{L"MailingAddress", L""}, {L"MailingAddressCity", L""}, {L"HomeAddress", L"Home"}});
    EXPECT_EQ(item.TryPut(L"SelectedMailingAddress", Value(4)).Status(), E_INVALIDARG);
}

TEST_F(ContactTest, EmailAddressesComeWithTypeNameAndEntryId) {
    const Object item = New(Value(kContactItem));
    item.Put(L"Email1Address", Value(L"ann@example.com"));
    ExpectAll(item, {{L"Email1AddressType", L"SMTP"}, {L"Email1DisplayName", L"ann@example.com"}});
    item.Put(L"FullName", Value(L"Dr. Ann Lee"));
    EXPECT_EQ(item.Text(L"Email1DisplayName"), L"Ann Lee (ann@example.com)") << "follows the name";
    item.Put(L"Email3Address", Value(L"lee@example.com"));
    EXPECT_EQ(item.Text(L"Email3DisplayName"), L"Ann Lee (lee@example.com)");
    item.Put(L"Email3DisplayName", Value(L"Private"));
    item.Put(L"LastName", Value(L"Poe"));
    item.Put(L"Email3Address", Value(L"poe@example.com"));
    EXPECT_EQ(item.Text(L"Email3DisplayName"), L"Private") << "a name of its own stays";
    EXPECT_EQ(item.Text(L"Email1DisplayName"), L"Ann Poe (ann@example.com)");

    EXPECT_EQ(StoredText(item, Id(kAddressSet, 0x8083001F)), L"ann@example.com");
    EXPECT_EQ(StoredText(item, Id(kAddressSet, 0x8084001F)), L"ann@example.com");
    EXPECT_EQ(StoredText(item, Id(kAddressSet, 0x80A3001F)), L"poe@example.com");
    EXPECT_EQ(StoredText(item, Id(kAddressSet, 0x80A0001F)), L"Private");
    EXPECT_EQ(StoredText(item, Id(kAddressSet, 0x80281003)), L"0 | 2");
    EXPECT_EQ(Stored(item, Id(kAddressSet, 0x80290003)), Value(5));

    const std::wstring id = item.Text(L"Email1EntryID");
    EXPECT_EQ(Hex(Stored(item, Id(kAddressSet, 0x80850102))), id);
    const Object entry = NameSpace().Child(L"GetAddressEntryFromID", {Value(id)});
    ExpectAll(
        entry,
        {{L"Name", L"Ann Poe (ann@example.com)"}, {L"Type", L"SMTP"}, {L"Address", L"ann@example.com"}});
}

TEST_F(ContactTest, EmailAddressesOfTheAddressBookHaveItsEntryId) {
    const Object list = NameSpace().Child(L"AddressLists").Child(L"Item", {Value(1)});
    const Object warehouse = list.Child(L"AddressEntries", {Value(L"Warehouse")});
    const Object item = New(Value(kContactItem));
    item.Put(L"Email2Address", Value(warehouse.Text(L"Address")));
    EXPECT_NE(item.Text(L"Email2EntryID"), warehouse.Text(L"ID")) << "SMTP by default";
    item.Put(L"Email2AddressType", Value(L"EX"));
    EXPECT_EQ(item.Text(L"Email2EntryID"), warehouse.Text(L"ID"));
    item.Put(L"Email2Address", Value(L""));
    ExpectAll(item, {{L"Email2Address", L""},
                     {L"Email2AddressType", L""},
                     {L"Email2DisplayName", L""},
                     {L"Email2EntryID", L""}});
    EXPECT_EQ(Stored(item, Id(kAddressSet, 0x80281003)).vt, VT_EMPTY);
}

TEST_F(ContactTest, ContactsAreFoundByTheirMembers) {
    const Object contacts = DefaultFolder(kContacts), items = contacts.Child(L"Items");
    for (const wchar_t* name : {L"Ann Lee", L"Bob Poe", L"Cid Lee"}) {
        const Object item = items.Child(L"Add");
        item.Put(L"FullName", Value(name));
        item.Put(L"BusinessAddressCity", Value(name[0] == L'B' ? L"Rome" : L"Oslo"));
        item.Put(L"Birthday", Date(name[0] == L'C' ? 40000 : 20000));
        item.Call(L"Save");
    }
    const Object list = items.Child(L"Add", {Value(L"IPM.DistList")});
    list.Put(L"DLName", Value(L"Lee"));
    list.Call(L"Save");
    const std::pair<const wchar_t*, int> rows[] = {
        {L"[LastName] = 'Lee'", 2},
        {L"[LastName] = 'Lee' And [Birthday] > '1/1/2000'", 1},
        {L"[BusinessAddressCity] = 'Rome'", 1},
        {L"[LastNameAndFirstName] = 'Lee, Cid'", 1},
        {L"[FileAs] < 'M'", 3}, // the list too
        {L"[Subject] = 'Lee'", 1},
        {L"[Email1Address] = ''", 4},
    };
    for (const auto& [filter, count] : rows)
        EXPECT_EQ(items.Child(L"Restrict", {Value(filter)}).Number(L"Count"), count) << filter;
    items.Call(L"Sort", {Value(L"[FileAs]"), Value(true)});
    EXPECT_EQ(items.Child(L"GetFirst").Text(L"Subject"), L"Bob Poe");
    EXPECT_EQ(items.TryCall(L"Restrict", {Value(L"[LastFirstNoSpace] = 'x'")}).Status(), DISP_E_EXCEPTION);
}

TEST_F(ContactTest, APictureIsAnAttachment) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    const std::wstring picture = (folder / L"contact-picture.jpg").wstring();
    const std::wstring text = (folder / L"contact-picture.txt").wstring();
    std::ofstream(picture.c_str(), std::ios::binary) << "\xFF\xD8\xFF\xE0 JFIF";
    std::ofstream(text.c_str(), std::ios::binary) << "no picture";
    const Object item = New(Value(kContactItem));
    EXPECT_EQ(item.Get(L"HasPicture"), Value(false));
    item.Call(L"AddPicture", {Value(picture)});
    item.Call(L"AddPicture", {Value(picture)});
    const Object saved = Reopened(item);
    EXPECT_EQ(saved.Get(L"HasPicture"), Value(true));
    const Object attachments = saved.Child(L"Attachments");
    ASSERT_EQ(attachments.Number(L"Count"), 1) << "one in place of the other";
    const Object attachment = attachments.Child(L"Item", {Value(L"ContactPicture.jpg")});
    EXPECT_EQ(Stored(attachment, Tag(0x7FFF000B)), Value(true));
    EXPECT_EQ(saved.TryCall(L"AddPicture", {Value(text)}).Status(), E_INVALIDARG);
    EXPECT_EQ(saved.TryCall(L"AddPicture", {Value(picture + L"x")}).Status(),
              HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(attachments.Number(L"Count"), 1) << "a refusal changes nothing";
    saved.Call(L"RemovePicture");
    EXPECT_EQ(attachments.Number(L"Count"), 0);
    EXPECT_EQ(saved.Get(L"HasPicture"), Value(false));
    std::filesystem::remove(picture);
    std::filesystem::remove(text);
}

} // namespace
} // namespace outlook_tests
