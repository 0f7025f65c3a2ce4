// The global address list, entry by entry and key by key.
#include "MailboxTest.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class AddressListTest : public MailboxTest {
protected:
    AddressListTest() : MailboxTest(kFullPlugin) {}

    std::wstring Field(const wchar_t* key, int index) { return Call(L"VARD_GALGetField", {key, index}); }
};

constexpr int kWarehouse = 5;
constexpr int kAllHands = 6;
const LastError kInvalidKey{-4, L"Invalid Parameter value(s)\r Invalid Key Value."};

TEST_F(AddressListTest, EveryKeyReadsItsPropertyInAnyCase) {
    const auto& entries = World().Addresses().Entries();
    EXPECT_EQ(Call(L"VARD_GALCount"), L"6");
    const std::vector<std::pair<const wchar_t*, std::wstring>> keys{
        {L"email", L"warehouse@example.com"},
        {L"Company", L"Example Trading"},
        {L"alias", L"warehouse"},
        {L"department", L"Logistics"},
        {L"assistant", L"Service North"},
        {L"BusinessPhone", L"+1 425 555 0150"},
        {L"city", L"Redmond"},
        {L"comments", L"Goods in and goods out; the bell is at the side door."},
        {L"firstname", L"Willa"},
        {L"id", ToHex(entries[4]->EntryId())},
        {L"jobtitle", L"Warehouse Manager"},
        {L"lastname", L"House"},
        {L"mobilephone", L"+1 425 555 0151"},
        {L"name", L"Warehouse"},
        {L"location", L"Building 4"},
        {L"zip", L"98052"},
        {L"state", L"WA"},
        {L"street", L"4 Dock Street"},
        {L"EMAIL", L"warehouse@example.com"},
        {L"type", L"ExchangeUser"}};
    for (const auto& [key, text] : keys) {
        EXPECT_EQ(Field(key, kWarehouse), text) << testing::PrintToString(key);
    }
    EXPECT_EQ(LastErrorText(), L"Success");
    for (int index = 1; index <= kAllHands; ++index) {
        EXPECT_EQ(Field(L"type", index), index == kAllHands ? L"ExchangeDistributionList" : L"ExchangeUser");
    }
    EXPECT_EQ(Field(L"company", 1), L""); // a user without one
    EXPECT_EQ(Field(L"country", 1), L"");
    // The property is asked for by the type of an error, as which no store has it.
    EXPECT_EQ(Field(L"country", kWarehouse), L"");
    EXPECT_EQ(LastErrorCode(), 0);
    // Addresses of other systems are no Exchange users: only their type can be told.
    for (const auto& [type, word] : {std::pair{L"SMTP", L"Smtp"}, {L"FAX", L"Other"}}) {
        AddressEntryDescription description{.name = word};
        description.more.Set<PR_ADDRTYPE_W>(type);
        World().Addresses().Add(description);
        const int index = static_cast<int>(World().Addresses().Entries().size());
        EXPECT_EQ(Field(L"TYPE", index), word);
        ExpectFailure(L"VARD_GALGetField", {L"name", index}, kInvalidKey);
    }
}

TEST_F(AddressListTest, UnknownKeysAndEntriesThatAreNoUsersAreRefused) {
    const std::vector<Texts> calls{{L"fax", kWarehouse}, {L"", kWarehouse},       {L"email", kAllHands},
                                   {L"name", kAllHands}, {L"country", kAllHands}, {L"fax", kAllHands}};
    for (const Texts& arguments : calls) {
        ExpectFailure(L"VARD_GALGetField", arguments, kInvalidKey);
    }
}

TEST_F(AddressListTest, AnIndexOutsideTheListIsOutlooksToRefuse) {
    const std::vector<Texts> calls{{L"name", 0}, {L"name", -1}, {L"name", 7}, {L"type", 7}, {L"name"}, {}};
    for (const Texts& arguments : calls) {
        ExpectFailureLike(L"VARD_GALGetField", arguments, {0, L"Error: "});
    }
    World().Addresses().Clear();
    EXPECT_EQ(Call(L"VARD_GALCount"), L"0");
}

TEST_F(AddressListTest, TheListIsFetchedOnceInASession) {
    EXPECT_EQ(Field(L"name", 1), L"Front Desk");
    Fail(L"NameSpace::GetGlobalAddressList", E_FAIL);
    EXPECT_EQ(Field(L"name", 2), L"Back Office");
    EXPECT_EQ(Call(L"VARD_GALCount"), L"6");
    EXPECT_FALSE(Varden().Watch().HasFailed());
    LogOn();
    EXPECT_EQ(Call(L"VARD_GALCount"), kError); // anew in the next session
    EXPECT_TRUE(Varden().Watch().HasFailed());
    for (const wchar_t* member : {L"AddressList::AddressEntries", L"AddressEntries::Item",
                                  L"AddressEntry::GetExchangeUser", L"ExchangeUser::Name"}) {
        Fail(member);
        ExpectFailureLike(L"VARD_GALGetField", {L"name", 1}, {0, L"Error: 80070005"});
    }
    for (const wchar_t* member : {L"ExchangeUser::PropertyAccessor", L"PropertyAccessor::GetProperty"}) {
        Fail(member);
        EXPECT_EQ(Field(L"country", kWarehouse), L"");
        EXPECT_EQ(LastErrorText(), L"Success"); // an earlier failure isn't told again
    }
}

} // namespace
} // namespace varden::tests
