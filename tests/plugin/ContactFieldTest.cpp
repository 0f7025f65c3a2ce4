// The fields of a contact, both ways: what a field reads comes from the mailbox, and what it writes is looked
// up there.
#include "FieldTest.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class ContactFieldTest : public ScriptTest {
protected:
    void SetUp() override {
        LogOn();
        ASSERT_EQ(Call(L"VARD_OpenFolder", {L"/Contacts"}), L"0");
    }

    Folder& Contacts() { return FolderAt(World(), L"Front Desk", L"Contacts"); }
    std::wstring Get(const std::wstring& field) { return Call(L"VARD_GetFieldData", {field}); }
    std::wstring Set(const std::wstring& field, const std::wstring& data) {
        return Call(L"VARD_SetFieldData", {field, data});
    }
    void New() { ASSERT_EQ(Call(L"VARD_NewRecord", {L"Contacts"}), L"0"); }
    void OpenContact(PropertyBag properties) {
        const auto contact =
            AddMessage(Contacts(), {.messageClass = L"IPM.Contact", .more = std::move(properties)});
        ASSERT_EQ(Call(L"VARD_OpenRecord", {ToHex(contact->EntryId())}), L"0");
    }
    /// Saves the contact, and gives what is stored.
    const PropertyBag& Stored() {
        const std::wstring id = Call(L"VARD_SaveRecord");
        EXPECT_NE(id, kError);
        return World().FindMessage(*FromHex(id))->Current().properties;
    }
    PropertyTag Named(const GUID& set, std::uint32_t id, PropertyType type) {
        return MakeTag(Contacts().Names().Id({set, id}, true), type);
    }
    PropertyTag Address(std::uint32_t id, PropertyType type = PT_UNICODE) {
        return Named(sets::kAddress, id, type);
    }
};

/// A text field and the property behind it: a tag, or the number of a named property ([MS-OXPROPS]).
struct TextField {
    const wchar_t* field;
    std::uint32_t tagOrId;
    const GUID* set = nullptr;
};

constexpr TextField kTextFields[] = {
    {L"Account", 0x3A00001F},
    {L"Assistant's Name", 0x3A30001F},
    {L"Assistant's Phone", 0x3A2E001F},
    {L"Billing Information", 0x8535, &sets::kCommon},
    {L"Business Address City", 0x8046, &sets::kAddress},
    {L"Business Address Country", 0x8049, &sets::kAddress},
    {L"Business Address PO Box", 0x804A, &sets::kAddress},
    {L"Business Address Postal Code", 0x8048, &sets::kAddress},
    {L"Business Address State", 0x8047, &sets::kAddress},
    {L"Business Address Street", 0x8045, &sets::kAddress},
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
    {L"File As", 0x8005, &sets::kAddress},
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
    {L"Internet Free/Busy Address", 0x80D8, &sets::kAddress},
    {L"ISDN", 0x3A2D001F},
    {L"Job Title", 0x3A17001F},
    {L"Language", 0x3A0C001F},
    {L"Last Name", 0x3A11001F},
    {L"Location", 0x3A19001F},
    {L"Manager's Name", 0x3A4E001F},
    {L"Middle Name", 0x3A44001F},
    {L"Mileage", 0x8534, &sets::kCommon},
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
    {L"User Field 1", 0x804F, &sets::kAddress},
    {L"User Field 2", 0x8050, &sets::kAddress},
    {L"User Field 3", 0x8051, &sets::kAddress},
    {L"User Field 4", 0x8052, &sets::kAddress},
    {L"E-mail", 0x8083, &sets::kAddress},
    {L"E-mail 2", 0x8093, &sets::kAddress},
    {L"E-mail 3", 0x80A3, &sets::kAddress},
    {L"E-mail Address Type", 0x8082, &sets::kAddress},
    {L"E-mail 2 Address Type", 0x8092, &sets::kAddress},
    {L"E-mail 3 Address Type", 0x80A2, &sets::kAddress},
    {L"E-mail Display As", 0x8080, &sets::kAddress},
    {L"E-mail 2 Display As", 0x8090, &sets::kAddress},
    {L"E-mail 3 Display As", 0x80A0, &sets::kAddress},
    {L"IM Address", 0x8062, &sets::kAddress},
    {L"Referred By", 0x3A47001F},
};

TEST_F(ContactFieldTest, TextsAreReadFromTheirPropertiesAndWrittenToThem) {
    const auto tagOf = [&](const TextField& field) {
        return field.set ? Named(*field.set, field.tagOrId, PT_UNICODE) : PropertyTag{field.tagOrId};
    };
    PropertyBag stored;
    for (const TextField& field : kTextFields) {
        stored.Put(tagOf(field), std::wstring(L"\u00e9 ") + std::to_wstring(tagOf(field)));
    }
    OpenContact(stored);
    for (const TextField& field : kTextFields) {
        EXPECT_EQ(Get(field.field), L"\u00e9 " + std::to_wstring(tagOf(field)))
            << testing::PrintToString(field.field);
    }
    for (const TextField& field : kTextFields) {
        SCOPED_TRACE(testing::PrintToString(field.field));
        New(); // by itself: Outlook keeps some of them together
        EXPECT_EQ(Set(field.field, L"x@example.com"), L"0");
        const PropertyBag& bag = Stored();
        const auto* text = std::get_if<std::wstring>(bag.Find(tagOf(field)));
        ASSERT_TRUE(text);
        EXPECT_EQ(*text, L"x@example.com");
        EXPECT_EQ(Get(field.field), L"x@example.com");
        EXPECT_EQ(Call(L"VARD_VerifyFieldData", {field.field, L"x@example.com"}), L"0");
    }
}

TEST_F(ContactFieldTest, FieldsThatOutlookKeepsTogetherFollowEachOther) {
    New();
    EXPECT_EQ(Set(L"Full Name", L"Dr. Ann Mary Lee Jr."), L"0");
    EXPECT_EQ(Get(L"Title"), L"Dr.");
    EXPECT_EQ(Get(L"First Name"), L"Ann");
    EXPECT_EQ(Get(L"Middle Name"), L"Mary");
    EXPECT_EQ(Get(L"Last Name"), L"Lee");
    EXPECT_EQ(Get(L"Suffix"), L"Jr.");
    EXPECT_EQ(Get(L"Full Name"), L"Dr. Ann Mary Lee Jr.");
    EXPECT_EQ(Set(L"Web Page", L"www.example.com"), L"0");
    EXPECT_EQ(Get(L"Business Home Page"), L"www.example.com");
    EXPECT_EQ(Set(L"Business Home Page", L"b.example.com"), L"0");
    EXPECT_EQ(Get(L"Web Page"), L"b.example.com");
    EXPECT_EQ(Set(L"Location", L"Room 1"), L"0");
    EXPECT_EQ(Get(L"Office Location"), L"Room 1");
    EXPECT_EQ(Set(L"Form Name", L"IPM.Contact.Customer"), L"0");
    EXPECT_EQ(Get(L"Message Class"), L"IPM.Contact.Customer");
    EXPECT_EQ(Set(L"Message Class", L"IPM.Contact"), L"0");
    EXPECT_EQ(Get(L"Form Name"), L"IPM.Contact");
    EXPECT_EQ(Set(L"Children", L"Bob"), L"0");
    EXPECT_EQ(Get(L"Children"), L"Bob");
    EXPECT_EQ(Set(L"Categories", L"Red, Blue"), L"0");
    EXPECT_EQ(Get(L"Categories"), L"Red, Blue");
}

TEST_F(ContactFieldTest, AddressesAreWrittenWholeOrInPartsAndOneOfThemIsTheMailingAddress) {
    const std::vector<std::pair<std::wstring, std::wstring>> words{
        {L"Home", L"home"}, {L"Business", L"BUSINESS"}, {L"Other", L"Other"}};
    for (const auto& [address, word] : words) {
        SCOPED_TRACE(testing::PrintToString(address));
        New();
        EXPECT_EQ(Set(address + L" Address Street", L"1 Main Street\r\nBack yard"), L"0");
        EXPECT_EQ(Set(address + L" Address City", L"Springfield"), L"0");
        EXPECT_EQ(Set(address + L" Address Postal Code", L"12345"), L"0");
        EXPECT_EQ(Get(address + L" Address Street"), L"1 Main Street\rBack yard"); // no line feeds
        const std::wstring whole = Get(address + L" Address");
        EXPECT_NE(whole.find(L"Springfield"), std::wstring::npos) << testing::PrintToString(whole);
        EXPECT_EQ(whole.find(L'\n'), std::wstring::npos);
        EXPECT_EQ(Set(L"Selected Mailing Address", word), L"0");
        EXPECT_EQ(Get(L"Mailing Address"), whole);
        EXPECT_EQ(Get(L"Mailing Address City"), L"Springfield");
        EXPECT_EQ(Get(L"Mailing Address Street"), L"1 Main Street\rBack yard");
        EXPECT_EQ(Get(L"Mailing Address Postal Code"), L"12345");
        for (const wchar_t* part : {L" Country", L" PO Box", L" State"}) { // by itself
            EXPECT_EQ(Set(std::wstring(L"Mailing Address") + part, part), L"0");
            EXPECT_EQ(Get(std::wstring(L"Mailing Address") + part), part);
            EXPECT_EQ(Get(address + L" Address" + part), L"");
        }
    }
    New();
    EXPECT_EQ(Set(L"Home Address", L"5 High Street\r\nLondon"), L"0");
    EXPECT_NE(Get(L"Home Address").find(L"5 High Street"), std::wstring::npos);
    for (const wchar_t* word : {L"Private", L"", L"1", L"home "}) {
        ExpectFailure(L"VARD_SetFieldData", {L"Selected Mailing Address", word}, -1089,
                      L"Invalid value for field");
    }
    EXPECT_EQ(Set(L"Selected Mailing Address", L"None"), L"0");
}

TEST_F(ContactFieldTest, SecondNamesOfEMailFieldsAreOnlyWritten) {
    struct Name {
        const wchar_t* written;
        const wchar_t* read;
    };
    for (const auto& [written, read] :
         {Name{L"E-mail Address", L"E-mail"}, Name{L"E-mail 2 Address", L"E-mail 2"},
          Name{L"E-mail 3 Address", L"E-mail 3"}}) {
        New();
        EXPECT_EQ(Get(read), L""); // none
        EXPECT_EQ(LastErrorCode(), 0);
        EXPECT_EQ(Set(written, L"ann@example.com"), L"0");
        EXPECT_EQ(Get(read), L"ann@example.com");
        ExpectFailure(L"VARD_GetFieldData", {written}, -1022, L"Invalid field name passed");
    }
}

TEST_F(ContactFieldTest, DatesWithoutATimeMayBeEmpty) {
    for (const wchar_t* field : {L"Birthday", L"Anniversary"}) {
        New();
        EXPECT_EQ(Get(field), L"");
        EXPECT_EQ(Set(field, L"5/17/1960"), L"0");
        EXPECT_EQ(Get(field), L"5/17/1960");
        ExpectFailure(L"VARD_SetFieldData", {field, L"in spring"}, -1089, L"Invalid value for field");
        EXPECT_EQ(Get(field), L"5/17/1960");
        for (const wchar_t* none : {L"none", L"None", L""}) {
            EXPECT_EQ(Set(field, L"5/17/1960"), L"0");
            EXPECT_EQ(Set(field, none), L"0");
            EXPECT_EQ(Get(field), L"");
        }
        EXPECT_EQ(Stored().Find(field[0] == L'B' ? PR_BIRTHDAY : PR_WEDDING_ANNIVERSARY), nullptr);
    }
}

struct Words {
    const wchar_t* field;
    const wchar_t* data;
    const wchar_t* read;
    PropertyTag tag;
    std::int32_t stored;
};

TEST_F(ContactFieldTest, WordsStandForNumbers) {
    const PropertyTag journal = Address(0x8025, PT_BOOLEAN);
    for (const Words& each :
         {Words{L"Gender", L"Male", L"Male", PR_GENDER, 2},
          Words{L"Gender", L"Female", L"Female", PR_GENDER, 1},
          Words{L"Sensitivity", L"Private", L"Private", PR_SENSITIVITY, 2},
          Words{L"Sensitivity", L"Confidential", L"Confidential", PR_SENSITIVITY, 3},
          Words{L"Sensitivity", L"Normal", L"Normal", PR_SENSITIVITY, 0},
          Words{L"Journal", L"True", L"True", journal, 1}, Words{L"Journal", L"Yes", L"False", journal, 0}}) {
        SCOPED_TRACE(testing::PrintToString(each.data));
        New();
        EXPECT_EQ(Set(each.field, each.data), L"0");
        EXPECT_EQ(Get(each.field), each.read);
        const auto* value = Stored().Find(each.tag);
        const auto numberOf = [](const auto& held) -> std::int32_t {
            if constexpr (std::is_arithmetic_v<std::decay_t<decltype(held)>>) {
                return static_cast<std::int32_t>(held);
            }
            return -1;
        };
        EXPECT_EQ(value ? std::visit(numberOf, *value) : 0, each.stored);
    }
    New();
    for (const wchar_t* refused : {L"male", L"", L"Nonsense"}) {
        ExpectFailure(L"VARD_SetFieldData", {L"Gender", refused}, -1089, L"Invalid value for field");
    }
}

TEST_F(ContactFieldTest, FieldsThatOnlyOneSideKnows) {
    PropertyBag flagged;
    flagged.Set<0x10900003>(2);
    flagged.Set<PR_BODY_W>(L"one\r\ntwo\r\n");
    OpenContact(flagged);
    EXPECT_EQ(Get(L"Flag Status"), L"\x02"); // a number read as a text
    EXPECT_EQ(Get(L"Body"), L"one\rtwo");
    EXPECT_GT(std::stol(Get(L"Size")), 0);
    EXPECT_EQ(Get(L"ID"), ToHex(Contacts().Messages().back()->EntryId()));
    New();
    EXPECT_EQ(Get(L"Flag Status"), L"");
    EXPECT_EQ(Set(L"Body", L"three"), L"0");
    EXPECT_EQ(Get(L"Body"), L"thre"); // its last character is taken for a line end
    for (const wchar_t* name : {L"Selected Mailing Address", L"Mark As Task", L"first name", L"Yomi", L"To",
                                L"Initials", L"Attachments"}) {
        ExpectFailure(L"VARD_GetFieldData", {name}, -1022, L"Invalid field name passed");
    }
    for (const wchar_t* name : {L"Flag Status", L"Is Marked As Task", L"Task Completed Date", L"first name",
                                L"selected mailing address"}) {
        ExpectFailure(L"VARD_SetFieldData", {name, L"x"}, -1022, L"Invalid field name passed");
    }
    for (const wchar_t* name : {L"ID", L"Size", L"Created", L"Modify"}) {
        ExpectFailure(L"VARD_SetFieldData", {name, L"x"}, -1096, L"Field is read-only");
    }
}

TEST_F(ContactFieldTest, AContactIsMarkedAsATask) {
    New();
    EXPECT_EQ(Get(L"Is Marked As Task"), L"False");
    EXPECT_EQ(Get(L"Task Due Date"), L"None");
    EXPECT_EQ(Set(L"Task Due Date", L"1/1/2030"), kError);
    EXPECT_EQ(LastErrorCode(), -1023);
    EXPECT_EQ(Set(L"Mark As Task", L"Tomorrow"), L"0") << testing::PrintToString(LastErrorText());
    EXPECT_EQ(Get(L"Is Marked As Task"), L"True");
    EXPECT_EQ(Set(L"task due date", L"12/31/2030"), L"0"); // in any case
    EXPECT_EQ(Get(L"Task Due Date"), L"12/31/2030");
    EXPECT_EQ(Set(L"TASK SUBJECT", L"Call back"), L"0");
    EXPECT_EQ(Get(L"Task Subject"), L"Call back");
    ExpectFailure(L"VARD_SetFieldData", {L"Task Due Date", L"None"}, -1089,
                  L"Invalid value for field\rcannot parse date");
}

} // namespace
} // namespace varden::tests
