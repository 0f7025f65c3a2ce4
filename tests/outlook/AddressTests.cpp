// The address book and recipients.
#include "Client.h"

namespace outlook_tests {
namespace {

using AddressTest = OutlookTest;

TEST_F(AddressTest, TheGlobalAddressListHasItsEntriesInOrder) {
    const std::pair<const wchar_t*, const wchar_t*> rows[] = {
        {L"Front Desk", L"front.desk@example.com"},       {L"Back Office", L"back.office@example.com"},
        {L"Service North", L"service.north@example.com"}, {L"Service South", L"service.south@example.com"},
        {L"Warehouse", L"warehouse@example.com"},         {L"All Hands", nullptr}, // a list, no user
    };
    const Object list = NameSpace().Child(L"GetGlobalAddressList");
    EXPECT_EQ(list.Text(L"Name"), L"Global Address List");
    const Object entries = list.Child(L"AddressEntries");
    ASSERT_EQ(entries.Number(L"Count"), 6);
    int place = 0;
    for (const auto& [name, smtp] : rows) {
        const Object entry = entries.Item(++place);
        const Object user = entry.Child(L"GetExchangeUser");
        Expect(entry, {{L"Name", name}, {L"AddressEntryUserType", smtp ? 0 : 1}});
        ASSERT_EQ(static_cast<bool>(user), smtp != nullptr) << name;
        if (user)
            Expect(user, {{L"PrimarySmtpAddress", smtp}});
        Expect(NameSpace().Child(L"GetAddressEntryFromID", {entry.Text(L"ID")}), {{L"Name", name}});
    }
    for (const int outside : {0, 7})
        EXPECT_TRUE(IsOutOfBounds(entries.TryCall(L"Item", {outside}))) << outside;
    EXPECT_EQ(entries.Item(6).Child(L"Members").Number(L"Count"), 5);
    entries.Call(L"Sort");
    EXPECT_EQ(entries.Child(L"GetFirst").Text(L"Name"), L"All Hands");
    entries.Call(L"Sort", {L"Name", 2});
    EXPECT_EQ(entries.Child(L"GetFirst").Text(L"Name"), L"Warehouse");
    EXPECT_EQ(entries.Status(L"Sort", {L"Shoe"}), E_INVALIDARG);
    EXPECT_EQ(entries.Status(L"Add", {L"SMTP"}), E_ACCESSDENIED);
}

TEST_F(AddressTest, AnExchangeUserShowsItsDetails) {
    const Object warehouse =
        NameSpace().Child(L"GetGlobalAddressList").Child(L"AddressEntries").Item(L"warehouse");
    const Object user = warehouse.Child(L"GetExchangeUser");
    const std::vector<const wchar_t*> details[] = {
        {L"Alias", L"FirstName", L"LastName", L"Name", L"ID"},
        {L"Address", L"PrimarySmtpAddress", L"Type", L"BusinessTelephoneNumber", L"MobileTelephoneNumber"},
        {L"City", L"PostalCode", L"StateOrProvince", L"StreetAddress", L"OfficeLocation"},
        {L"CompanyName", L"Department", L"JobTitle", L"AssistantName", L"Comments"},
    };
    for (const auto& members : details)
        for (const wchar_t* member : members)
            EXPECT_NE(user.Text(member), L"") << member;
    EXPECT_EQ(user.TryPut(L"City", L"Elsewhere").Status(), E_ACCESSDENIED);
    EXPECT_EQ(user.Child(L"PropertyAccessor")
                  .Call(L"GetProperty", {L"http://schemas.microsoft.com/mapi/proptag/0x3A26001F"}),
              Value(L"United States"));
}

TEST_F(AddressTest, RecipientsResolve) {
    const std::tuple<const wchar_t*, bool, const wchar_t*, const wchar_t*> rows[] = {
        {L"Warehouse", true, L"Warehouse", L"EX"},
        {L"ware", true, L"Warehouse", L"EX"},
        {L"service.south@example.com", true, L"Service South", L"EX"},
        {L"someone@elsewhere.example", true, L"someone@elsewhere.example", L"SMTP"},
        {L"Service", false, L"Service", nullptr},
        {L"Nobody", false, L"Nobody", nullptr},
    };
    for (const auto& [name, resolves, resolved, type] : rows) {
        const Object recipient = NameSpace().Child(L"CreateRecipient", {name});
        Expect(recipient, {{L"Resolved", false}, {L"EntryID", L""}});
        EXPECT_EQ(recipient.Call(L"Resolve"), Value(resolves)) << name;
        EXPECT_EQ(recipient.Get(L"Resolved"), Value(resolves)) << name;
        EXPECT_EQ(recipient.Text(L"Name"), resolved);
        const Answer entry = recipient.TryGet(L"AddressEntry");
        EXPECT_EQ(entry.Status(), resolves ? S_OK : E_FAIL);
        if (!resolves)
            continue;
        EXPECT_EQ(Object(entry.value).Text(L"Type"), type);
        EXPECT_EQ(NameSpace().Child(L"GetRecipientFromID", {recipient.Text(L"EntryID")}).Text(L"Name"),
                  resolved);
    }
    EXPECT_EQ(NameSpace().Status(L"CreateRecipient", {L""}), E_INVALIDARG);
    EXPECT_EQ(NameSpace().Status(L"GetRecipientFromID", {L"00"}), MAPI_E_INVALID_ENTRYID);
}

/// Each keeps its own row, whoever goes before it.
TEST_F(AddressTest, RecipientsThatAreGoneAreNobodyElse) {
    for (const wchar_t* list : {L"Recipients", L"ReplyRecipients"}) {
        const Object mail = AddItem(DefaultFolder(kInbox), L"Reply to others");
        const Object recipients = mail.Child(list);
        for (const wchar_t* name : {L"Warehouse", L"Nobody", L"Back Office"})
            recipients.Call(L"Add", {name});
        const Object first = recipients.Item(1), last = recipients.Item(3);
        EXPECT_EQ(last.Call(L"Resolve"), Value(true));
        first.Call(L"Delete");
        EXPECT_EQ(first.Status(L"Delete"), MAPI_E_NOT_FOUND) << list;
        EXPECT_EQ(first.TryGet(L"Name").Status(), MAPI_E_NOT_FOUND) << list;
        EXPECT_EQ(last.Text(L"Name"), L"Back Office") << list;
        EXPECT_EQ(last.Number(L"Index"), 2) << list;
        EXPECT_EQ(recipients.Child(L"Add", {L"Warehouse"}).Number(L"Index"), 3) << list;
        EXPECT_EQ(first.TryGet(L"Name").Status(), MAPI_E_NOT_FOUND)
            << "the same person, another row: " << list;
        mail.Child(list).Call(L"Remove", {1});
        EXPECT_EQ(last.Number(L"Index"), 1) << "another list object of the same item: " << list;
        EXPECT_EQ(recipients.Number(L"Count"), 2) << list;
        const Object newest = recipients.Item(2);
        newest.Call(L"Delete");
        recipients.Call(L"Add", {L"Nobody"});
        EXPECT_EQ(newest.TryGet(L"Name").Status(), MAPI_E_NOT_FOUND)
            << "the last row, whose place another took: " << list;
    }
}

TEST_F(AddressTest, TheCurrentUserIsTheMailboxOwner) {
    const Object user = NameSpace().Child(L"CurrentUser");
    EXPECT_EQ(user.Text(L"Name"), L"Front Desk");
    EXPECT_EQ(user.Child(L"AddressEntry").Child(L"GetExchangeUser").Text(L"PrimarySmtpAddress"),
              L"front.desk@example.com");
    user.Put(L"Type", 2);
    EXPECT_EQ(user.Number(L"Type"), 2);
    EXPECT_EQ(user.TryPut(L"Type", 4).Status(), E_INVALIDARG);
    EXPECT_EQ(user.Status(L"Delete"), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(NameSpace().Child(L"AddressLists").Item(L"global address list").Number(L"Index"), 1);
}

} // namespace
} // namespace outlook_tests
