// Contacts: their members and what is stored behind them, and what Outlook keeps together: names, postal
// addresses, e-mail addresses, pictures.
#include "Stored.h"

#include <mapicode.h>

#include <filesystem>
#include <fstream>

namespace outlook_tests {
namespace {

using ContactTest = KindTest;

TEST_F(ContactTest, TextsAreStoredUnderTheirPublishedNames) {
    // The number of the tag, or of the property in the set of addresses.
    std::vector<std::pair<std::wstring, std::uint32_t>> rows = {
        {L"Account", 0x3A00001F},
        {L"AssistantName", 0x3A30001F},
        {L"BusinessFaxNumber", 0x3A24001F},
        {L"ComputerNetworkName", 0x3A49001F},
        {L"CustomerID", 0x3A4A001F},
        {L"Department", 0x3A18001F},
        {L"FTPSite", 0x3A4C001F},
        {L"GovernmentIDNumber", 0x3A07001F},
        {L"Hobby", 0x3A43001F},
        {L"HomeFaxNumber", 0x3A25001F},
        {L"IMAddress", 0x8062001F},
        {L"ISDNNumber", 0x3A2D001F},
        {L"Initials", 0x3A0A001F},
        {L"InternetFreeBusyAddress", 0x80D8001F},
        {L"JobTitle", 0x3A17001F},
        {L"Language", 0x3A0C001F},
        {L"ManagerName", 0x3A4E001F},
        {L"NickName", 0x3A4F001F},
        {L"OfficeLocation", 0x3A19001F},
        {L"OrganizationalIDNumber", 0x3A10001F},
        {L"OtherFaxNumber", 0x3A23001F},
        {L"PagerNumber", 0x3A21001F},
        {L"PersonalHomePage", 0x3A50001F},
        {L"Profession", 0x3A46001F},
        {L"ReferredBy", 0x3A47001F},
        {L"Spouse", 0x3A48001F},
        {L"TelexNumber", 0x3A2C001F},
        {L"User1", 0x804F001F},
        {L"User4", 0x8052001F},
        {L"YomiCompanyName", 0x802E001F},
        {L"YomiFirstName", 0x802C001F},
        {L"YomiLastName", 0x802D001F},
    };
    const std::pair<std::wstring, std::uint32_t> telephones[] = {
        {L"Assistant", 0x3A2E001F}, {L"Business2", 0x3A1B001F}, {L"Business", 0x3A08001F},
        {L"Callback", 0x3A02001F},  {L"Car", 0x3A1E001F},       {L"CompanyMain", 0x3A57001F},
        {L"Home2", 0x3A2F001F},     {L"Home", 0x3A09001F},      {L"Mobile", 0x3A1C001F},
        {L"Other", 0x3A1F001F},     {L"Primary", 0x3A1A001F},   {L"Radio", 0x3A1D001F},
        {L"TTYTDD", 0x3A4B001F},
    };
    for (const auto& [whose, number] : telephones)
        rows.emplace_back(whose + L"TelephoneNumber", number);
    const Object item = New(kContactItem);
    for (const auto& [member, number] : rows) {
        Expect(item, {{member, L""}});
        PutAll(item, {{member, L"<" + member}});
    }
    const Object saved = Reopened(item);
    for (const auto& [member, number] : rows) {
        Expect(saved, {{member, L"<" + member}});
        const std::wstring property = number < 0x80000000 ? Tag(number) : Id(kAddressSet, number);
        ExpectStored(saved, {{property, L"<" + member}});
    }
}

TEST_F(ContactTest, OtherValuesHaveTheirPublishedForms) {
    const Object item = New(kContactItem);
    EXPECT_EQ(item.Get(L"Birthday"), Date(kNoDate)) << "no date";
    item.Put(L"Birthday", Date(36526.75));
    EXPECT_EQ(item.Get(L"Birthday"), Date(36526)) << "a day has no time";
    EXPECT_EQ(Stored(item, Id(kAddressSet, 0x80DE0040)), Date(36526)) << "the day by itself";
    EXPECT_EQ(item.Child(L"PropertyAccessor").Call(L"UTCToLocalTime", {Stored(item, Tag(0x3A420040))}),
              Date(36526));
    PutAll(item, {{L"Anniversary", Date(40000)}, {L"Anniversary", Date(kNoDate)}});
    EXPECT_EQ(Stored(item, Tag(0x3A410040)).vt, VT_EMPTY) << "no date takes it away";
    EXPECT_EQ(Stored(item, Id(kAddressSet, 0x80DF0040)).vt, VT_EMPTY);

    item.Put(L"Gender", 2);
    EXPECT_EQ(Stored(item, Tag(0x3A4D0002)), _variant_t(short{2}));
    EXPECT_EQ(item.TryPut(L"Gender", 3).Status(), E_INVALIDARG);
    item.Put(L"Children", L"Ann, Bob");
    EXPECT_EQ(StoredText(item, Tag(0x3A58101F)), L"Ann | Bob");
    item.Put(L"Journal", true);
    EXPECT_EQ(Stored(item, Id(kAddressSet, 0x8025000B)), Value(true));
    item.Put(L"WebPage", L"a.example");
    EXPECT_EQ(item.Text(L"BusinessHomePage"), L"a.example");
    item.Put(L"BusinessHomePage", L"b.example");
    EXPECT_EQ(StoredText(item, Id(kAddressSet, 0x802B001F)), L"b.example");
}

TEST_F(ContactTest, NewContactsAreNoDrafts) {
    const Object item = Reopened(New(kContactItem));
    ExpectStored(item, {{Tag(0x0E070003), 1}, {Tag(0x10800003), 0x200}, {Tag(0x0C1A001F), L"Front Desk"}});
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
        const Object item = New(kContactItem);
        item.Put(L"FullName", row.fullName);
        SCOPED_TRACE(row.fullName);
        Expect(item, {{L"FullName", row.fullName},
                      {L"Title", row.title},
                      {L"FirstName", row.first},
                      {L"MiddleName", row.middle},
                      {L"LastName", row.last},
                      {L"Suffix", row.suffix}});
    }
}

TEST_F(ContactTest, NameSubjectAndFileAsFollowTheParts) {
    const Object item = New(kContactItem);
    PutAll(item, {{L"LastName", L"Fox"},
                  {L"FirstName", L"Quick"},
                  {L"MiddleName", L"Brown"},
                  {L"Title", L"Dr"},
                  {L"Suffix", L"Jr"},
                  {L"CompanyName", L"Fence Co"}});
    Expect(item, {{L"FullName", L"Dr Quick Brown Fox Jr"},
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
    ExpectStored(item, {{Id(kAddressSet, 0x80060003), 0x8017}, {Tag(0x3001001F), L"Dr Quick Brown Fox Jr"}});
    const Object saved = Reopened(item);
    EXPECT_EQ(saved.Text(L"ConversationTopic"), L"Quick Brown Fox Jr");
    saved.Put(L"FirstName", L"Slow");
    EXPECT_EQ(Reopened(saved).Text(L"ConversationTopic"), L"Slow Brown Fox Jr");
    EXPECT_EQ(item.TryPut(L"LastFirstNoSpace", L"x").Status(), DISP_E_MEMBERNOTFOUND);
}

TEST_F(ContactTest, FileAsIsAFormOrAText) {
    const Object item = New(kContactItem);
    item.Put(L"CompanyName", L"Fence Co");
    EXPECT_EQ(item.Text(L"FileAs"), L"Fence Co") << "nobody has a name";
    item.Put(L"FullName", L"Ann Lee");
    EXPECT_EQ(item.Text(L"FileAs"), L"Lee, Ann");
    PutAll(item, {{L"FileAs", L"Fence Co\r\nLee, Ann"}, {L"LastName", L"Poe"}});
    EXPECT_EQ(item.Text(L"FileAs"), L"Fence Co\r\nPoe, Ann") << "the form stays";
    EXPECT_EQ(Stored(item, Id(kAddressSet, 0x80060003)), Value(0x8018));
    PutAll(item, {{L"FileAs", L"Aunt"}, {L"LastName", L"Lee"}});
    EXPECT_EQ(item.Text(L"FileAs"), L"Aunt") << "the text stays";
    const Object foreign = New(kContactItem);
    Store(foreign, Id(kAddressSet, 0x8005001F), L"By another program");
    foreign.Put(L"LastName", L"Lee");
    EXPECT_EQ(foreign.Text(L"FileAs"), L"By another program");
}

TEST_F(ContactTest, PostalAddressesAreComposedOfTheirParts) {
    for (const std::wstring which : {L"Business", L"Home", L"Other"}) {
        const auto name = [&which](const wchar_t* part) { return which + L"Address" + part; };
        const Object item = New(kContactItem);
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
            item.Put(name(steps[i].first).c_str(), steps[i].second);
            EXPECT_EQ(item.Text(name(L"").c_str()), wholes[i]) << which << i;
        }
        item.Put(name(L"PostOfficeBox").c_str(), L"77");
        EXPECT_EQ(item.Text(name(L"").c_str()), wholes[4]);
        EXPECT_EQ(item.Text(L"MailingAddress"), wholes[4]) << "the first address is the one for mail";
        EXPECT_EQ(item.Text(L"MailingAddressPostOfficeBox"), L"77");
    }
    const Object home = New(kContactItem);
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
        const Object item = New(kContactItem);
        PutAll(item, {{L"OtherAddressCity", L"Before"}, {L"OtherAddress", row.whole}});
        SCOPED_TRACE(row.whole);
        Expect(item, {{L"OtherAddress", row.whole},
                      {L"OtherAddressStreet", row.street},
                      {L"OtherAddressCity", row.city},
                      {L"OtherAddressState", row.state},
                      {L"OtherAddressPostalCode", row.postalCode},
                      {L"OtherAddressCountry", row.country}});
    }
}

TEST_F(ContactTest, TheMailingAddressFollowsTheOneThatItIs) {
    const Object item = New(kContactItem);
    EXPECT_EQ(item.Number(L"SelectedMailingAddress"), 0);
    PutAll(item, {{L"HomeAddressCity", L"Home"}, {L"BusinessAddressCity", L"Work"}});
    EXPECT_EQ(item.Number(L"SelectedMailingAddress"), 1);
    item.Put(L"SelectedMailingAddress", 2);
    EXPECT_EQ(item.Text(L"MailingAddress"), L"Work");
    ExpectStored(item, {{Id(kAddressSet, 0x80220003), 2}, {Tag(0x3A27001F), L"Work"}});
    item.Put(L"MailingAddressStreet", L"1 Own Way");
    Expect(item, {{L"MailingAddress", L"1 Own Way\r\nWork"}, {L"BusinessAddress", L"Work"}});
    item.Put(L"BusinessAddressState", L"MA");
    Expect(item, {{L"MailingAddress", L"Work, MA"}, {L"MailingAddressStreet", L""}});
    item.Put(L"SelectedMailingAddress", 0);
    Expect(item, {{L"MailingAddress", L""}, {L"MailingAddressCity", L""}, {L"HomeAddress", L"Home"}});
    EXPECT_EQ(item.TryPut(L"SelectedMailingAddress", 4).Status(), E_INVALIDARG);
}

TEST_F(ContactTest, EmailAddressesComeWithTypeNameAndEntryId) {
    const Object item = New(kContactItem);
    item.Put(L"Email1Address", L"ann@example.com");
    Expect(item, {{L"Email1AddressType", L"SMTP"}, {L"Email1DisplayName", L"ann@example.com"}});
    item.Put(L"FullName", L"Dr. Ann Lee");
    EXPECT_EQ(item.Text(L"Email1DisplayName"), L"Ann Lee (ann@example.com)") << "follows the name";
    item.Put(L"Email3Address", L"lee@example.com");
    EXPECT_EQ(item.Text(L"Email3DisplayName"), L"Ann Lee (lee@example.com)");
    item.Put(L"Email3DisplayName", L"Private");
    PutAll(item, {{L"LastName", L"Poe"}, {L"Email3Address", L"poe@example.com"}});
    EXPECT_EQ(item.Text(L"Email3DisplayName"), L"Private") << "a name of its own stays";
    EXPECT_EQ(item.Text(L"Email1DisplayName"), L"Ann Poe (ann@example.com)");

    EXPECT_EQ(StoredText(item, Id(kAddressSet, 0x8083001F)), L"ann@example.com");
    EXPECT_EQ(StoredText(item, Id(kAddressSet, 0x8084001F)), L"ann@example.com");
    EXPECT_EQ(StoredText(item, Id(kAddressSet, 0x80A3001F)), L"poe@example.com");
    EXPECT_EQ(StoredText(item, Id(kAddressSet, 0x80A0001F)), L"Private");
    EXPECT_EQ(StoredText(item, Id(kAddressSet, 0x80281003)), L"0 | 2");
    EXPECT_EQ(Stored(item, Id(kAddressSet, 0x80290003)), Value(5));

    const std::wstring id = item.Text(L"Email1EntryID");
    EXPECT_EQ(AsText(Stored(item, Id(kAddressSet, 0x80850102))), id);
    const Object entry = NameSpace().Child(L"GetAddressEntryFromID", {id});
    Expect(entry,
           {{L"Name", L"Ann Poe (ann@example.com)"}, {L"Type", L"SMTP"}, {L"Address", L"ann@example.com"}});
}

TEST_F(ContactTest, EmailAddressesOfTheAddressBookHaveItsEntryId) {
    const Object list = NameSpace().Child(L"AddressLists").Item(1);
    const Object warehouse = list.Child(L"AddressEntries", {L"Warehouse"});
    const Object item = New(kContactItem);
    item.Put(L"Email2Address", warehouse.Text(L"Address"));
    EXPECT_NE(item.Text(L"Email2EntryID"), warehouse.Text(L"ID")) << "SMTP by default";
    item.Put(L"Email2AddressType", L"EX");
    EXPECT_EQ(item.Text(L"Email2EntryID"), warehouse.Text(L"ID"));
    item.Put(L"Email2Address", L"");
    Expect(item, {{L"Email2Address", L""},
                  {L"Email2AddressType", L""},
                  {L"Email2DisplayName", L""},
                  {L"Email2EntryID", L""}});
    EXPECT_EQ(Stored(item, Id(kAddressSet, 0x80281003)).vt, VT_EMPTY);
}

TEST_F(ContactTest, ContactsAreFoundByTheirMembers) {
    const Object contacts = DefaultFolder(kContacts), items = contacts.Child(L"Items");
    for (const wchar_t* name : {L"Ann Lee", L"Bob Poe", L"Cid Lee"}) {
        const Object item = items.Child(L"Add");
        PutAll(item, {{L"FullName", name}, {L"BusinessAddressCity", name[0] == L'B' ? L"Rome" : L"Oslo"}});
        PutAll(item, {{L"Birthday", Date(name[0] == L'C' ? 40000 : 20000)}});
        item.Call(L"Save");
    }
    const Object list = items.Child(L"Add", {L"IPM.DistList"});
    list.Put(L"DLName", L"Lee");
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
        EXPECT_EQ(items.Child(L"Restrict", {filter}).Number(L"Count"), count) << filter;
    items.Call(L"Sort", {L"[FileAs]", true});
    EXPECT_EQ(items.Child(L"GetFirst").Text(L"Subject"), L"Bob Poe");
    EXPECT_EQ(items.Status(L"Restrict", {L"[LastFirstNoSpace] = 'x'"}), DISP_E_EXCEPTION);
}

TEST_F(ContactTest, APictureIsAnAttachment) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    const std::wstring picture = (folder / L"contact-picture.jpg").wstring();
    const std::wstring text = (folder / L"contact-picture.txt").wstring();
    std::ofstream(picture.c_str(), std::ios::binary) << "\xFF\xD8\xFF\xE0 JFIF";
    std::ofstream(text.c_str(), std::ios::binary) << "no picture";
    const Object item = New(kContactItem);
    EXPECT_EQ(item.Get(L"HasPicture"), Value(false));
    item.Call(L"AddPicture", {picture});
    item.Call(L"AddPicture", {picture});
    const Object saved = Reopened(item);
    EXPECT_EQ(saved.Get(L"HasPicture"), Value(true));
    const Object attachments = saved.Child(L"Attachments");
    ASSERT_EQ(attachments.Number(L"Count"), 1) << "one in place of the other";
    const Object attachment = attachments.Item(L"ContactPicture.jpg");
    EXPECT_EQ(Stored(attachment, Tag(0x7FFF000B)), Value(true));
    EXPECT_EQ(saved.Status(L"AddPicture", {text}), E_INVALIDARG);
    EXPECT_EQ(saved.Status(L"AddPicture", {picture + L"x"}), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(attachments.Number(L"Count"), 1) << "a refusal changes nothing";
    saved.Call(L"RemovePicture");
    EXPECT_EQ(attachments.Number(L"Count"), 0);
    EXPECT_EQ(saved.Get(L"HasPicture"), Value(false));
    std::filesystem::remove(picture);
    std::filesystem::remove(text);
}

} // namespace
} // namespace outlook_tests
