// The fields of a contact, both ways: what a field reads comes from the mailbox, and what it writes is looked
// up there.
#include "FieldTest.h"

#include "standin/mailbox/Tags.h"

#include <array>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class ContactFieldTest : public FieldTest {
protected:
    ContactFieldTest() : FieldTest(L"Contacts") {}

    void New() { FieldTest::New(L"Contacts"); }
};

/// A text field, and the tag of its property or its number in a set ([MS-OXPROPS]).
using TextField = std::pair<const wchar_t*, std::uint32_t>;

constexpr TextField kTextsByTag[] = {
    {L"Account", 0x3A00001F},
    {L"Assistant's Name", 0x3A30001F},
    {L"Assistant's Phone", 0x3A2E001F},
    {L"Business Fax", 0x3A24001F},
    {L"Business Phone", 0x3A08001F},
    {L"Business Phone 2", 0x3A1B001F},
    {L"Callback", 0x3A02001F},
    {L"Car Phone", 0x3A1E001F},
    {L"Company", 0x3A16001F},
    {L"Company Main Phone", 0x3A57001F},
    {L"Computer Network Name", 0x3A49001F},
    {L"Customer ID", 0x3A4A001F},
    {L"Department", 0x3A18001F},
    {L"First Name", 0x3A06001F},
    {L"FTP Site", 0x3A4C001F},
    {L"Government ID Number", 0x3A07001F},
    {L"Hobbies", 0x3A43001F},
    {L"Home Address City", 0x3A59001F},
    {L"Home Address Country", 0x3A5A001F},
    {L"Home Address PO Box", 0x3A5E001F},
    {L"Home Address Postal Code", 0x3A5B001F},
    {L"Home Address State", 0x3A5C001F},
    {L"Home Address Street", 0x3A5D001F},
    {L"Home Fax", 0x3A25001F},
    {L"Home Phone", 0x3A09001F},
    {L"Home Phone 2", 0x3A2F001F},
    {L"ISDN", 0x3A2D001F},
    {L"Job Title", 0x3A17001F},
    {L"Language", 0x3A0C001F},
    {L"Last Name", 0x3A11001F},
    {L"Location", 0x3A19001F},
    {L"Manager's Name", 0x3A4E001F},
    {L"Middle Name", 0x3A44001F},
    {L"Mobile Phone", 0x3A1C001F},
    {L"Nickname", 0x3A4F001F},
    {L"Office Location", 0x3A19001F},
    {L"Organizational ID Number", 0x3A10001F},
    {L"Other Address City", 0x3A5F001F},
    {L"Other Address Country", 0x3A60001F},
    {L"Other Address PO Box", 0x3A64001F},
    {L"Other Address Postal Code", 0x3A61001F},
    {L"Other Address State", 0x3A62001F},
    {L"Other Address Street", 0x3A63001F},
    {L"Other Fax", 0x3A23001F},
    {L"Other Phone", 0x3A1F001F},
    {L"Pager", 0x3A21001F},
    {L"Personal Home Page", 0x3A50001F},
    {L"Primary Phone", 0x3A1A001F},
    {L"Profession", 0x3A46001F},
    {L"Radio Phone", 0x3A1D001F},
    {L"Spouse", 0x3A48001F},
    {L"Subject", 0x0037001F},
    {L"Suffix", 0x3A05001F},
    {L"Telex", 0x3A2C001F},
    {L"Title", 0x3A45001F},
    {L"TTY/TDD Phone", 0x3A4B001F},
    {L"Referred By", 0x3A47001F},
};

constexpr TextField kTextsOfTheAddressSet[] = {
    {L"Business Address City", 0x8046},
    {L"Business Address Country", 0x8049},
    {L"Business Address PO Box", 0x804A},
    {L"Business Address Postal Code", 0x8048},
    {L"Business Address State", 0x8047},
    {L"Business Address Street", 0x8045},
    {L"File As", 0x8005},
    {L"Internet Free/Busy Address", 0x80D8},
    {L"User Field 1", 0x804F},
    {L"User Field 2", 0x8050},
    {L"User Field 3", 0x8051},
    {L"User Field 4", 0x8052},
    {L"E-mail", 0x8083},
    {L"E-mail 2", 0x8093},
    {L"E-mail 3", 0x80A3},
    {L"E-mail Address Type", 0x8082},
    {L"E-mail 2 Address Type", 0x8092},
    {L"E-mail 3 Address Type", 0x80A2},
    {L"E-mail Display As", 0x8080},
    {L"E-mail 2 Display As", 0x8090},
    {L"E-mail 3 Display As", 0x80A0},
    {L"IM Address", 0x8062},
};

TEST_F(ContactFieldTest, TextsAreReadFromTheirPropertiesAndWrittenToThem) {
    FieldTexts fields;
    for (const auto& [field, tag] : kTextsByTag) {
        const std::wstring text = L"\u00e9 " + std::to_wstring(tag);
        fields.push_back({field, text, {tag, text}});
    }
    for (const auto& [field, number] : kTextsOfTheAddressSet) {
        const std::wstring text = L"\u00e9 " + std::to_wstring(number);
        fields.push_back({field, text, {sets::kAddress, number, text}});
    }
    ExpectBothWays({.messageClass = L"IPM.Contact"}, fields);
}

TEST_F(ContactFieldTest, FieldsThatOutlookKeepsTogetherFollowEachOther) {
    New();
    ExpectWrites({{L"Full Name", L"Dr. Ann Mary Lee Jr.", L"Dr. Ann Mary Lee Jr."},
                  {L"Location", L"Room 1", L"Room 1"},
                  {L"Children", L"Bob", L"Bob"},
                  {L"Categories", L"Red, Blue", L"Red, Blue"}});
    ExpectReads({{L"Title", L"Dr."},
                 {L"First Name", L"Ann"},
                 {L"Middle Name", L"Mary"},
                 {L"Last Name", L"Lee"},
                 {L"Suffix", L"Jr."},
                 {L"Office Location", L"Room 1"}});
    const std::vector<std::array<const wchar_t*, 3>> pairs{
        {L"Web Page", L"www.example.com", L"Business Home Page"},
        {L"Business Home Page", L"b.example.com", L"Web Page"},
        {L"Form Name", L"IPM.Contact.Customer", L"Message Class"},
        {L"Message Class", L"IPM.Contact", L"Form Name"}};
    for (const auto& [written, data, read] : pairs) {
        EXPECT_EQ(Set(written, data), L"0");
        ExpectReads({{read, data}});
    }
}

TEST_F(ContactFieldTest, AddressesAreWrittenWholeOrInPartsAndOneOfThemIsTheMailingAddress) {
    const std::vector<std::pair<std::wstring, const wchar_t*>> words{
        {L"Home Address", L"home"}, {L"Business Address", L"BUSINESS"}, {L"Other Address", L"Other"}};
    for (const auto& [address, word] : words) {
        SCOPED_TRACE(testing::PrintToString(address));
        New();
        const auto name = [&](const wchar_t* part) { return address + part; };
        ExpectWrites({{name(L" Street").c_str(), L"1 Main Street\r\nBack yard", L"1 Main Street\rBack yard"},
                      {name(L" City").c_str(), L"Springfield", L"Springfield"},
                      {name(L" Postal Code").c_str(), L"12345", L"12345"}});
        const std::wstring whole = Get(address.c_str());
        EXPECT_NE(whole.find(L"Springfield"), std::wstring::npos) << testing::PrintToString(whole);
        EXPECT_EQ(whole.find(L'\n'), std::wstring::npos);
        EXPECT_EQ(Set(L"Selected Mailing Address", word), L"0");
        ExpectReads({{L"Mailing Address", whole},
                     {L"Mailing Address City", L"Springfield"},
                     {L"Mailing Address Street", L"1 Main Street\rBack yard"},
                     {L"Mailing Address Postal Code", L"12345"}});
        for (const wchar_t* part : {L" Country", L" PO Box", L" State"}) { // by itself
            ExpectWrites({{(std::wstring(L"Mailing Address") + part).c_str(), part, part}});
            ExpectReads({{name(part).c_str(), L""}});
        }
    }
    New();
    EXPECT_EQ(Set(L"Home Address", L"5 High Street\r\nLondon"), L"0");
    EXPECT_NE(Get(L"Home Address").find(L"5 High Street"), std::wstring::npos);
    ExpectInvalid({{L"Selected Mailing Address", {L"Private", L"", L"1", L"home "}}});
    EXPECT_EQ(Set(L"Selected Mailing Address", L"None"), L"0");
}

TEST_F(ContactFieldTest, SecondNamesOfEMailFieldsAreOnlyWritten) {
    for (const auto& [written, read] :
         std::vector<std::pair<const wchar_t*, const wchar_t*>>{{L"E-mail Address", L"E-mail"},
                                                                {L"E-mail 2 Address", L"E-mail 2"},
                                                                {L"E-mail 3 Address", L"E-mail 3"}}) {
        New();
        ExpectReads({{read, L""}}); // none
        EXPECT_EQ(Set(written, L"ann@example.com"), L"0");
        ExpectReads({{read, L"ann@example.com"}});
        ExpectUnreadable({written});
    }
}

TEST_F(ContactFieldTest, DatesWithoutATimeMayBeEmpty) {
    for (const wchar_t* field : {L"Birthday", L"Anniversary"}) {
        New();
        ExpectReads({{field, L""}});
        for (const wchar_t* none : {L"none", L"None", L""}) {
            ExpectWrites({{field, L"5/17/1960", L"5/17/1960"}});
            ExpectInvalid({{field, {L"in spring"}}});
            ExpectReads({{field, L"5/17/1960"}});
            ExpectWrites({{field, none, L""}});
        }
        Save();
        EXPECT_FALSE(Stored().properties.Contains(field[0] == L'B' ? PR_BIRTHDAY : PR_WEDDING_ANNIVERSARY));
    }
}

TEST_F(ContactFieldTest, WordsStandForNumbers) {
    New();
    ExpectWrites({{L"Gender", L"Male", L"Male", {PR_GENDER, std::int16_t{2}}},
                  {L"Gender", L"Female", L"Female", {PR_GENDER, std::int16_t{1}}},
                  {L"Sensitivity", L"Private", L"Private", {PR_SENSITIVITY, 2}},
                  {L"Sensitivity", L"Confidential", L"Confidential", {PR_SENSITIVITY, 3}},
                  {L"Sensitivity", L"Normal", L"Normal", {PR_SENSITIVITY, 0}},
                  {L"Journal", L"True", L"True", {sets::kAddress, 0x8025, true}},
                  {L"Journal", L"Yes", L"False", {sets::kAddress, 0x8025, false}}});
    ExpectInvalid({{L"Gender", {L"male", L"", L"Nonsense"}}});
}

TEST_F(ContactFieldTest, FieldsThatOnlyOneSideKnows) {
    ExpectOrdinary(L"IPM.Contact", {L"Billing Information", L"Mileage"}, {L"ID", L"Size"});
    ExpectShown({.messageClass = L"IPM.Contact"},
                {{L"Flag Status", L"\x02", {kPrFlagStatus, 2}}, // a number read as a text
                 {L"Body", L"one\rtwo", {PR_BODY_W, L"one\r\ntwo\r\n"}}});
    New();
    ExpectReads({{L"Flag Status", L""}});
    ExpectWrites({{L"Body", L"three", L"thre"}}); // its last character is taken for a line end
    ExpectUnreadable({L"Selected Mailing Address", L"Mark As Task", L"first name", L"Yomi", L"To",
                      L"Initials", L"Attachments"});
    ExpectUnwritable({L"Flag Status", L"Is Marked As Task", L"Task Completed Date", L"first name",
                      L"selected mailing address"});
}

TEST_F(ContactFieldTest, AContactIsMarkedAsATask) {
    New();
    ExpectReads({{L"Is Marked As Task", L"False"}, {L"Task Due Date", L"None"}});
    EXPECT_EQ(Set(L"Task Due Date", L"1/1/2030"), kError);
    EXPECT_EQ(LastErrorCode(), -1023);
    EXPECT_EQ(Set(L"Mark As Task", L"Tomorrow"), L"0") << testing::PrintToString(LastErrorText());
    EXPECT_EQ(Set(L"task due date", L"12/31/2030"), L"0"); // in any case
    EXPECT_EQ(Set(L"TASK SUBJECT", L"Call back"), L"0");
    ExpectReads({{L"Is Marked As Task", L"True"},
                 {L"Task Due Date", L"12/31/2030"},
                 {L"Task Subject", L"Call back"}});
}

} // namespace
} // namespace varden::tests
