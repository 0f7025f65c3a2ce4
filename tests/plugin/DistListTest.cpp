// Distribution lists: their fields both ways, members added as one-offs, lists that are damaged.
#include "FieldTest.h"

#include "standin/mailbox/EntryId.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

using EntryIds = std::vector<Bytes>;

constexpr std::uint32_t kMembers = 0x8055;
constexpr std::uint32_t kOneOffMembers = 0x8054;

class DistListTest : public FieldTest {
protected:
    DistListTest() : FieldTest(L"Contacts", kFullPlugin) {}

    std::wstring Add(const wchar_t* name, const wchar_t* address, const wchar_t* type = L"SMTP") {
        return Call(L"VARD_AddOneOffMember", {name, address, type});
    }
    /// Makes a list with these members the current record.
    void OpenList(const EntryIds& members, const EntryIds& oneOffs) {
        MessageToAdd list{.messageClass = L"IPM.DistList", .subject = L"Suppliers"};
        Put(list, {{sets::kAddress, kMembers, PT_MV_BINARY, members},
                   {sets::kAddress, kOneOffMembers, PT_MV_BINARY, oneOffs}});
        Open(list);
    }
    EntryIds StoredIds(std::uint32_t number) {
        const PropertyValue* value = Stored().properties.Find(TagOf(sets::kAddress, number, PT_MV_BINARY));
        return value ? std::get<EntryIds>(*value) : EntryIds();
    }
};

const Bytes kAnn = MakeOneOffEntryId(L"Ann", L"SMTP", L"ann@example.com");
const Bytes kBob = MakeOneOffEntryId(L"Bob, Jr.", L"SMTP", L"bob@example.com");

TEST_F(DistListTest, EveryFieldIsReadFromItsProperty) {
    MessageToAdd list = Ordinary(L"IPM.DistList.Own");
    list.more.Set<PR_CREATION_TIME>(Utc(2026, 2, 1, 8));
    Put(list, {{sets::kAddress, 0x8053, PT_UNICODE, L"Suppliers"},
               {sets::kAddress, kMembers, PT_MV_BINARY, EntryIds{kAnn, kBob}},
               {sets::kAddress, kOneOffMembers, PT_MV_BINARY, EntryIds{kAnn, kBob}}});
    const std::wstring entryId = Open(list);
    ExpectReads(OrdinaryTexts({L"Billing Information", L"Categories", L"Companies", L"Conversation Index",
                               L"Conversation Topic", L"Importance", L"Mileage", L"Subject"}));
    ExpectReads({{L"Body", L"one\rtw"},
                 {L"Created", LocalText(Utc(2026, 2, 1, 8))},
                 {L"DL Name", L"Suppliers"},
                 {L"ID", entryId},
                 {L"Entry ID", entryId},
                 {L"In Folder", L""}, // the parent is fetched and not told
                 {L"Parent", L""},
                 {L"Marked For Download", L"3"},
                 {L"Member Count", L"2"},
                 {L"Message Class", L"IPM.DistList.Own"},
                 {L"One Off Members", L"Ann,ann@example.com,SMTP\rBob, Jr.,bob@example.com,SMTP"},
                 {L"Sensitivity", L"1"}}); // no words
    EXPECT_GT(std::stol(Get(L"Size")), 10);
    ExpectUnreadable({L"EntryID", L"Company", L"Form Name", L"Mark For Download", L"Unread", L"DLName"});
}

TEST_F(DistListTest, WhatIsWrittenIsReadBack) {
    New(L"Distribution List");
    ExpectWrites({{L"Billing Information", L"4711", L"4711"},
                  {L"Body", L"Hello.\r\n", L"Hello."},
                  {L"Categories", L"Red", L"Red"},
                  {L"Companies", L"Example Trading", L"Example Trading"},
                  {L"Subject", L"Buyers", L"Buyers"},
                  {L"DL Name", L"Suppliers", L"Suppliers"},
                  {L"Importance", L"High", L"High"},
                  {L"Importance", L"N", L"Normal"},
                  {L"Importance", L"Low", L"Low"},
                  {L"Marked For Download", L"2", L"2"},
                  {L"Marked For Download", L"none", L"0"},
                  {L"Message Class", L"IPM.DistList.Own", L"IPM.DistList.Own"},
                  {L"Mileage", L"1", L"1"},
                  {L"Sensitivity", L"2", L"2"},
                  {L"Sensitivity", L"Private", L"0"}}); // a number, whatever the data
    ExpectRefusals({{L"Importance", L"x"}, {L"Importance", L""}}, -1022, L"Invalid field name passed");
    ExpectRefusals({{L"Member Count", L"1"}, {L"ID", L"x"}, {L"In Folder", L"x"}}, -1096,
                   L"Field is read-only");
    ExpectUnwritable({L"Entry ID", L"Parent", L"One Off Members", L"Contacts", L"Form Name"});
}

TEST_F(DistListTest, MembersAreAddedInOrderAndAtOnce) {
    New(L"Distribution List");
    EXPECT_EQ(Set(L"DL Name", L"Suppliers"), L"0");
    EXPECT_EQ(Get(L"One Off Members"), L"");
    EXPECT_EQ(LastErrorCode(), 0);
    EXPECT_EQ(Add(L"Ann", L"ann@example.com"), L"0") << testing::PrintToString(LastErrorText());
    EXPECT_EQ(Add(L"\u00c5sa", L"/o=x/cn=asa", L"EX"), L"0");
    EXPECT_EQ(Add(L"Ann", L"ann@example.com"), L"0"); // nobody looks whether she is there
    const EntryIds expected{kAnn, MakeOneOffEntryId(L"\u00c5sa", L"EX", L"/o=x/cn=asa"), kAnn};
    EXPECT_EQ(StoredIds(kMembers), expected); // though the record was never saved
    EXPECT_EQ(StoredIds(kOneOffMembers), expected);
    EXPECT_EQ(Get(L"Member Count"), L"3");
    EXPECT_EQ(Get(L"One Off Members"),
              L"Ann,ann@example.com,SMTP\r\u00c5sa,/o=x/cn=asa,EX\rAnn,ann@example.com,SMTP");
}

TEST_F(DistListTest, MembersThatCannotBeAddedAreRefused) {
    const std::wstring missing = L"Invalid parameter \rMissing Name, Email, or Type";
    const std::vector<Texts> incomplete{
        {L"", L"a@example.com", L"SMTP"}, {L"A", L"", L"SMTP"}, {L"A", L"a@example.com", L""}};
    for (const Texts& arguments : incomplete) {
        ExpectFailure(L"VARD_AddOneOffMember", arguments, -1098, missing);
    }
    for (const wchar_t* type : {L"smtp", L"Ex", L"FAX"}) {
        ExpectFailure(L"VARD_AddOneOffMember", {L"A", L"a@example.com", type}, -1089,
                      L"Invalid value for field\rInvalid Type value");
    }
    Open({.messageClass = L"IPM.Contact"});
    ExpectFailure(L"VARD_AddOneOffMember", {L"A", L"a@example.com", L"SMTP"}, -1023,
                  L"Item operation called without opening/creating a record\rNo DistList item opened");
    OpenList({kAnn}, {kAnn});
    Varden().Watch().FailMember(L"IAddrBook::CreateOneOff", E_ACCESSDENIED);
    ExpectFailure(L"VARD_AddOneOffMember", {L"A", L"a@example.com", L"SMTP"}, -1097,
                  L"MAPI Subsystem error\rError: 80070005\rMAPI_E_NO_ACCESS\rAddressBook - CreateOneOff");
    Varden().Watch().FailMember(L"IMAPISession::OpenAddressBook", E_ACCESSDENIED);
    EXPECT_EQ(Add(L"A", L"a@example.com"), kError); // nothing was opened to ask
    for (const wchar_t* member : {L"IMessage::SetProps", L"IMessage::SaveChanges"}) {
        Varden().Watch().FailMember(member, E_ACCESSDENIED);
        EXPECT_EQ(Add(L"A", L"a@example.com"), L"0"); // the outcome isn't looked at
        EXPECT_EQ(StoredIds(kMembers), EntryIds{kAnn});
    }
}

TEST_F(DistListTest, DamagedListsAreReadAsFarAsTheyGo) {
    const Bytes cut(kAnn.begin(), kAnn.begin() + 30);
    OpenList({kAnn}, {kAnn, Bytes{}, cut, Bytes(200, 0xFF), kBob});
    EXPECT_EQ(Get(L"Member Count"), L"1");
    EXPECT_EQ(Get(L"One Off Members"), L"Ann,ann@example.com,SMTP\rBob, Jr.,bob@example.com,SMTP");
    EXPECT_EQ(Add(L"C", L"c@example.com"), L"0"); // each list grows behind its own end
    EXPECT_EQ(StoredIds(kMembers).size(), 2u);
    EXPECT_EQ(StoredIds(kOneOffMembers).size(), 6u);
    EXPECT_EQ(StoredIds(kOneOffMembers)[2], cut);
    OpenList({}, {kAnn});
    EXPECT_EQ(Get(L"One Off Members"), L""); // no members, whatever the second list says
    OpenList({kAnn, kBob}, {});
    EXPECT_EQ(Get(L"Member Count"), L"2");
    EXPECT_EQ(Get(L"One Off Members"), L"");

    MessageToAdd halved{.messageClass = L"IPM.DistList"};
    Put(halved, {{sets::kAddress, kMembers, PT_MV_BINARY, EntryIds{kAnn}}});
    Open(halved);
    ExpectFailure(L"VARD_GetFieldData", {L"One Off Members"}, -1097,
                  L"MAPI Subsystem error\rError: 8004010F\rMAPI_E_NOT_FOUND");
    EXPECT_EQ(Add(L"Bob, Jr.", L"bob@example.com"), L"0");
    EXPECT_EQ(StoredIds(kMembers), (EntryIds{kAnn, kBob}));
    EXPECT_EQ(StoredIds(kOneOffMembers), EntryIds{kBob});

    MessageToAdd retyped{.messageClass = L"IPM.DistList"};
    Put(retyped,
        {{sets::kAddress, kMembers, PT_UNICODE, L"Ann"}, {sets::kAddress, kOneOffMembers, PT_BINARY, kAnn}});
    Open(retyped);
    EXPECT_NE(Get(L"Member Count"), kError);
    EXPECT_EQ(Add(L"Bob, Jr.", L"bob@example.com"), L"0");
    EXPECT_EQ(StoredIds(kMembers), EntryIds{kBob});
}

TEST_F(DistListTest, AMemberThatIsGoneIsLeftOut) {
    const Bytes warehouse = World().Addresses().Entries()[4]->EntryId();
    OpenList({kAnn, warehouse}, {kAnn, warehouse});
    const std::wstring row = Get(L"One Off Members");
    EXPECT_EQ(row.find(L"Ann,ann@example.com,SMTP\rWarehouse,"), 0u);
    World().Addresses().Clear();
    EXPECT_EQ(Get(L"One Off Members"), L"Ann,ann@example.com,SMTP");
    EXPECT_EQ(Get(L"Member Count"), L"2");
    for (const wchar_t* member : {L"IMAPISession::OpenEntry", L"IMailUser::GetProps"}) {
        Varden().Watch().FailMember(member, E_ACCESSDENIED);
        EXPECT_EQ(Get(L"One Off Members"), L"") << testing::PrintToString(member);
        EXPECT_EQ(LastErrorCode(), 0);
    }
}

TEST_F(DistListTest, NamesAreResolvedAgainstAFixedContainer) {
    // The container is one particular store's, and so isn't found here.
    EXPECT_EQ(Call(L"VARD_AddDistListMember", {L"Warehouse"}), L"ERROR: 80040201 UNKNOWN ENTRY ID");
    EXPECT_EQ(LastErrorCode(), 0);
    Varden().Watch().FailMember(L"IAddrBook::OpenEntry", S_FALSE);
    EXPECT_EQ(Call(L"VARD_AddDistListMember", {L"Nobody"}), L"NotFound");
    Varden().Watch().FailMember(L"IAddrBook::OpenEntry", S_FALSE);
    EXPECT_EQ(Call(L"VARD_AddDistListMember", {L"Service"}), L"Ambigious Entry");
    Varden().Watch().FailMember(L"IAddrBook::OpenEntry", S_FALSE);
    Varden().Watch().AlsoFailMember(L"IAddrBook::ResolveName", MAPI_E_USER_CANCEL);
    EXPECT_EQ(Call(L"VARD_AddDistListMember", {L"Warehouse"}), L"ERROR: 80040113 USER CANCELED");
    EXPECT_EQ(LastErrorCode(), 0);
    EXPECT_TRUE(Home().Messages().empty());
}

} // namespace
} // namespace varden::tests
