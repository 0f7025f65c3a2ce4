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
    std::vector<StoredProperty> Members(const EntryIds& members, const EntryIds& oneOffs) {
        return {{sets::kAddress, kMembers, members}, {sets::kAddress, kOneOffMembers, oneOffs}};
    }
    /// Makes a list with these properties the current record.
    void OpenList(const std::vector<StoredProperty>& properties) {
        MessageToAdd list{.messageClass = L"IPM.DistList", .subject = L"Suppliers"};
        Put(list, properties);
        Open(list);
    }
    EntryIds StoredIds(std::uint32_t number) {
        const PropertyValue* value = StoredValue(sets::kAddress, number);
        return value ? std::get<EntryIds>(*value) : EntryIds();
    }
};

const Bytes kAnn = MakeOneOffEntryId(L"Ann", L"SMTP", L"ann@example.com");
const Bytes kBob = MakeOneOffEntryId(L"Bob, Jr.", L"SMTP", L"bob@example.com");

TEST_F(DistListTest, FieldsAndTheirPropertiesFollowEachOther) {
    ExpectOrdinary(
        L"IPM.DistList.Own",
        {L"Billing Information", L"Categories", L"Companies", L"Importance", L"Mileage", L"Subject"},
        {L"Body", L"Conversation Index", L"Conversation Topic", L"ID", L"Entry ID", L"Message Class",
         L"Size"});
    ExpectUnreadable({L"EntryID", L"Company", L"Form Name", L"Mark For Download", L"Unread", L"DLName"});
    ExpectShown({.messageClass = L"IPM.DistList"},
                {{L"Created", LocalText(Utc(2026, 2, 1, 8)), {PR_CREATION_TIME, Utc(2026, 2, 1, 8)}}});
    ExpectBothWays({.messageClass = L"IPM.DistList"},
                   {{L"DL Name", L"Suppliers", {sets::kAddress, 0x8053, L"Suppliers"}},
                    {L"Marked For Download", L"2", {sets::kCommon, 0x8511, 2}},
                    {L"Sensitivity", L"1", {PR_SENSITIVITY, 1}}}); // no words
    ExpectReads({{L"In Folder", L""}, {L"Parent", L""}});          // the parent is fetched and not told
    ExpectWrites({{L"Body", L"Hello.\r\n", L"Hello."},
                  {L"Importance", L"N", L"Normal"},
                  {L"Importance", L"Low", L"Low"},
                  {L"Marked For Download", L"none", L"0"},
                  {L"Message Class", L"IPM.DistList.Own", L"IPM.DistList.Own"},
                  {L"Sensitivity", L"Private", L"0"}}); // a number, whatever the data
    for (const wchar_t* importance : {L"x", L""}) {
        ExpectFailure(L"VARD_SetFieldData", {L"Importance", importance}, errors::kFieldName);
    }
    ExpectReadOnly({L"Member Count"});
    ExpectUnwritable({L"Entry ID", L"Parent", L"One Off Members", L"Contacts", L"Form Name"});
}

TEST_F(DistListTest, MembersAreAddedInOrderAndAtOnce) {
    New(L"Distribution List");
    EXPECT_EQ(Set(L"DL Name", L"Suppliers"), L"0");
    ExpectReads({{L"One Off Members", L""}});
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
    const std::vector<Texts> incomplete{
        {L"", L"a@example.com", L"SMTP"}, {L"A", L"", L"SMTP"}, {L"A", L"a@example.com", L""}};
    for (const Texts& arguments : incomplete) {
        ExpectFailure(L"VARD_AddOneOffMember", arguments, -1098,
                      L"Invalid parameter \rMissing Name, Email, or Type");
    }
    for (const wchar_t* type : {L"smtp", L"Ex", L"FAX"}) {
        ExpectFailure(L"VARD_AddOneOffMember", {L"A", L"a@example.com", type}, -1089,
                      L"Invalid value for field\rInvalid Type value");
    }
    Open({.messageClass = L"IPM.Contact"});
    ExpectFailure(L"VARD_AddOneOffMember", {L"A", L"a@example.com", L"SMTP"}, -1023,
                  L"Item operation called without opening/creating a record\rNo DistList item opened");
    OpenList(Members({kAnn}, {kAnn}));
    ExpectFaults(L"VARD_AddOneOffMember", {L"A", L"a@example.com", L"SMTP"},
                 {Denied(L"IAddrBook::CreateOneOff", L"AddressBook - CreateOneOff")});
    Fail(L"IMAPISession::OpenAddressBook");
    EXPECT_EQ(Add(L"A", L"a@example.com"), kError); // nothing was opened to ask
    for (const wchar_t* member : {L"IMessage::SetProps", L"IMessage::SaveChanges"}) {
        Fail(member);
        EXPECT_EQ(Add(L"A", L"a@example.com"), L"0"); // the outcome isn't looked at
        EXPECT_EQ(StoredIds(kMembers), EntryIds{kAnn});
    }
}

TEST_F(DistListTest, DamagedListsAreReadAsFarAsTheyGo) {
    const Bytes cut(kAnn.begin(), kAnn.begin() + 30);
    OpenList(Members({kAnn}, {kAnn, Bytes{}, cut, Bytes(200, 0xFF), kBob}));
    ExpectReads({{L"Member Count", L"1"},
                 {L"One Off Members", L"Ann,ann@example.com,SMTP\rBob, Jr.,bob@example.com,SMTP"}});
    EXPECT_EQ(Add(L"C", L"c@example.com"), L"0"); // each list grows behind its own end
    EXPECT_EQ(StoredIds(kMembers).size(), 2u);
    EXPECT_EQ(StoredIds(kOneOffMembers).size(), 6u);
    EXPECT_EQ(StoredIds(kOneOffMembers)[2], cut);
    OpenList(Members({}, {kAnn})); // no members, whatever the second list says
    ExpectReads({{L"One Off Members", L""}});
    OpenList(Members({kAnn, kBob}, {}));
    ExpectReads({{L"Member Count", L"2"}, {L"One Off Members", L""}});
}

TEST_F(DistListTest, AMissingListIsMadeAndOneOfAnotherTypeReplaced) {
    OpenList({{sets::kAddress, kMembers, EntryIds{kAnn}}});
    ExpectFailure(L"VARD_GetFieldData", {L"One Off Members"}, errors::NotFound());
    EXPECT_EQ(Add(L"Bob, Jr.", L"bob@example.com"), L"0");
    EXPECT_EQ(StoredIds(kMembers), (EntryIds{kAnn, kBob}));
    EXPECT_EQ(StoredIds(kOneOffMembers), EntryIds{kBob});
    OpenList({{sets::kAddress, kMembers, L"Ann"}, {sets::kAddress, kOneOffMembers, kAnn}});
    EXPECT_NE(Get(L"Member Count"), kError);
    EXPECT_EQ(Add(L"Bob, Jr.", L"bob@example.com"), L"0");
    EXPECT_EQ(StoredIds(kMembers), EntryIds{kBob});
}

TEST_F(DistListTest, AMemberThatIsGoneIsLeftOut) {
    const Bytes warehouse = World().Addresses().Entries()[4]->EntryId();
    OpenList(Members({kAnn, warehouse}, {kAnn, warehouse}));
    const std::wstring row = Get(L"One Off Members");
    EXPECT_EQ(row.find(L"Ann,ann@example.com,SMTP\rWarehouse,"), 0u);
    World().Addresses().Clear();
    EXPECT_EQ(Get(L"One Off Members"), L"Ann,ann@example.com,SMTP");
    EXPECT_EQ(Get(L"Member Count"), L"2");
    for (const wchar_t* member : {L"IMAPISession::OpenEntry", L"IMailUser::GetProps"}) {
        Fail(member);
        ExpectReads({{L"One Off Members", L""}});
    }
}

TEST_F(DistListTest, NamesAreResolvedAgainstAFixedContainer) {
    // The container is one particular store's, and so isn't found here.
    EXPECT_EQ(Call(L"VARD_AddDistListMember", {L"Warehouse"}), L"ERROR: 80040201 UNKNOWN ENTRY ID");
    EXPECT_EQ(LastErrorCode(), 0);
    Fail(L"IAddrBook::OpenEntry", S_FALSE);
    EXPECT_EQ(Call(L"VARD_AddDistListMember", {L"Nobody"}), L"NotFound");
    Fail(L"IAddrBook::OpenEntry", S_FALSE);
    EXPECT_EQ(Call(L"VARD_AddDistListMember", {L"Service"}), L"Ambigious Entry");
    Fail(L"IAddrBook::OpenEntry", S_FALSE);
    Varden().Watch().AlsoFailMember(L"IAddrBook::ResolveName", MAPI_E_USER_CANCEL);
    EXPECT_EQ(Call(L"VARD_AddDistListMember", {L"Warehouse"}), L"ERROR: 80040113 USER CANCELED");
    EXPECT_EQ(LastErrorCode(), 0);
    EXPECT_TRUE(Home().Messages().empty());
}

} // namespace
} // namespace varden::tests
