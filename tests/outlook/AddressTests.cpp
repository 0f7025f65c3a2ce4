// The address book and recipients.
#include "Client.h"

namespace outlook_tests {
namespace {

using AddressTest = OutlookTest;

TEST_F(AddressTest, TheGlobalAddressListHasItsEntriesInOrder) {
    struct Row {
        const wchar_t* name;
        const wchar_t* smtp; ///< of the user behind it; null for a list
    };
    const Row rows[] = {
        {L"Front Desk", L"front.desk@example.com"},       {L"Back Office", L"back.office@example.com"},
        {L"Service North", L"service.north@example.com"}, {L"Service South", L"service.south@example.com"},
        {L"Warehouse", L"warehouse@example.com"},         {L"All Hands", nullptr},
    };
    const Object list = NameSpace().Child(L"GetGlobalAddressList");
    EXPECT_EQ(list.Text(L"Name"), L"Global Address List");
    const Object entries = list.Child(L"AddressEntries");
    ASSERT_EQ(entries.Number(L"Count"), 6);
    for (int i = 0; i < 6; ++i) {
        const Object entry = entries.Child(L"Item", {Value(i + 1)});
        const Object user = entry.Child(L"GetExchangeUser");
        EXPECT_EQ(entry.Text(L"Name"), rows[i].name);
        EXPECT_EQ(entry.Number(L"AddressEntryUserType"), rows[i].smtp ? 0 : 1);
        EXPECT_EQ(static_cast<bool>(user), rows[i].smtp != nullptr) << rows[i].name;
        if (user) {
            EXPECT_EQ(user.Text(L"PrimarySmtpAddress"), rows[i].smtp);
        }
        EXPECT_EQ(NameSpace().Child(L"GetAddressEntryFromID", {Value(entry.Text(L"ID"))}).Text(L"Name"),
                  rows[i].name);
    }
    for (const int place : {0, 7})
        EXPECT_EQ(entries.TryCall(L"Item", {Value(place)}).description, L"Array index out of bounds.")
            << place;
    EXPECT_EQ(entries.Child(L"Item", {Value(6)}).Child(L"Members").Number(L"Count"), 5);
    entries.Call(L"Sort");
    EXPECT_EQ(entries.Child(L"GetFirst").Text(L"Name"), L"All Hands");
    entries.Call(L"Sort", {Value(L"Name"), Value(2)});
    EXPECT_EQ(entries.Child(L"GetFirst").Text(L"Name"), L"Warehouse");
    EXPECT_EQ(entries.TryCall(L"Sort", {Value(L"Shoe")}).Status(), E_INVALIDARG);
    EXPECT_EQ(entries.TryCall(L"Add", {Value(L"SMTP")}).Status(), E_ACCESSDENIED);
}

TEST_F(AddressTest, AnExchangeUserShowsItsDetails) {
    const Object warehouse = NameSpace()
                                 .Child(L"GetGlobalAddressList")
                                 .Child(L"AddressEntries")
                                 .Child(L"Item", {Value(L"warehouse")});
    const Object user = warehouse.Child(L"GetExchangeUser");
    const wchar_t* members[] = {L"Alias",
                                L"AssistantName",
                                L"BusinessTelephoneNumber",
                                L"City",
                                L"Comments",
                                L"CompanyName",
                                L"Department",
                                L"FirstName",
                                L"ID",
                                L"JobTitle",
                                L"LastName",
                                L"MobileTelephoneNumber",
                                L"Name",
                                L"OfficeLocation",
                                L"PostalCode",
                                L"PrimarySmtpAddress",
                                L"StateOrProvince",
                                L"StreetAddress",
                                L"Address",
                                L"Type"};
    for (const wchar_t* member : members)
        EXPECT_NE(user.Text(member), L"") << member;
    EXPECT_EQ(user.TryPut(L"City", Value(L"Elsewhere")).Status(), E_ACCESSDENIED);
    EXPECT_EQ(user.Child(L"PropertyAccessor")
                  .Call(L"GetProperty", {Value(L"http://schemas.microsoft.com/mapi/proptag/0x3A26001F")}),
              Value(L"United States"));
}

TEST_F(AddressTest, RecipientsResolve) {
    struct Row {
        const wchar_t* name;
        bool resolves;
        const wchar_t* resolved;
        const wchar_t* type;
    };
    const Row rows[] = {
        {L"Warehouse", true, L"Warehouse", L"EX"},
        {L"ware", true, L"Warehouse", L"EX"},
        {L"service.south@example.com", true, L"Service South", L"EX"},
        {L"someone@elsewhere.example", true, L"someone@elsewhere.example", L"SMTP"},
        {L"Service", false, L"Service", nullptr},
        {L"Nobody", false, L"Nobody", nullptr},
    };
    for (const Row& row : rows) {
        const Object recipient = NameSpace().Child(L"CreateRecipient", {Value(row.name)});
        EXPECT_EQ(recipient.Get(L"Resolved"), Value(false));
        EXPECT_EQ(recipient.Text(L"EntryID"), L"");
        EXPECT_EQ(recipient.Call(L"Resolve"), Value(row.resolves)) << row.name;
        EXPECT_EQ(recipient.Get(L"Resolved"), Value(row.resolves)) << row.name;
        EXPECT_EQ(recipient.Text(L"Name"), row.resolved);
        const Answer entry = recipient.TryGet(L"AddressEntry");
        EXPECT_EQ(entry.Status(), row.resolves ? S_OK : E_FAIL);
        if (!row.resolves)
            continue;
        EXPECT_EQ(Object(entry.value).Text(L"Type"), row.type);
        EXPECT_EQ(NameSpace().Child(L"GetRecipientFromID", {Value(recipient.Text(L"EntryID"))}).Text(L"Name"),
                  row.resolved);
    }
    EXPECT_EQ(NameSpace().TryCall(L"CreateRecipient", {Value(L"")}).Status(), E_INVALIDARG);
    EXPECT_EQ(NameSpace().TryCall(L"GetRecipientFromID", {Value(L"00")}).Status(), MAPI_E_INVALID_ENTRYID);
}

/// Each keeps its own row, whoever goes before it.
TEST_F(AddressTest, RecipientsThatAreGoneAreNobodyElse) {
    for (const wchar_t* list : {L"Recipients", L"ReplyRecipients"}) {
        const Object mail = AddItem(DefaultFolder(kInbox), L"Reply to others");
        const Object recipients = mail.Child(list);
        for (const wchar_t* name : {L"Warehouse", L"Nobody", L"Back Office"})
            recipients.Call(L"Add", {Value(name)});
        const Object first = recipients.Child(L"Item", {Value(1)}),
                     last = recipients.Child(L"Item", {Value(3)});
        EXPECT_EQ(last.Call(L"Resolve"), Value(true));
        first.Call(L"Delete");
        EXPECT_EQ(first.TryCall(L"Delete").Status(), MAPI_E_NOT_FOUND) << list;
        EXPECT_EQ(first.TryGet(L"Name").Status(), MAPI_E_NOT_FOUND) << list;
        EXPECT_EQ(last.Text(L"Name"), L"Back Office") << list;
        EXPECT_EQ(last.Number(L"Index"), 2) << list;
        EXPECT_EQ(recipients.Child(L"Add", {Value(L"Warehouse")}).Number(L"Index"), 3) << list;
        EXPECT_EQ(first.TryGet(L"Name").Status(), MAPI_E_NOT_FOUND)
            << "the same person, another row: " << list;
        mail.Child(list).Call(L"Remove", {Value(1)});
        EXPECT_EQ(last.Number(L"Index"), 1) << "another list object of the same item: " << list;
        EXPECT_EQ(recipients.Number(L"Count"), 2) << list;
        const Object newest = recipients.Child(L"Item", {Value(2)});
        newest.Call(L"Delete");
        recipients.Call(L"Add", {Value(L"Nobody")});
        EXPECT_EQ(newest.TryGet(L"Name").Status(), MAPI_E_NOT_FOUND)
            << "the last row, whose place another took: " << list;
    }
}

TEST_F(AddressTest, TheCurrentUserIsTheMailboxOwner) {
    const Object user = NameSpace().Child(L"CurrentUser");
    EXPECT_EQ(user.Text(L"Name"), L"Front Desk");
    EXPECT_EQ(user.Child(L"AddressEntry").Child(L"GetExchangeUser").Text(L"PrimarySmtpAddress"),
              L"front.desk@example.com");
    user.Put(L"Type", Value(2));
    EXPECT_EQ(user.Number(L"Type"), 2);
    EXPECT_EQ(user.TryPut(L"Type", Value(4)).Status(), E_INVALIDARG);
    EXPECT_EQ(user.TryCall(L"Delete").Status(), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(
        NameSpace().Child(L"AddressLists").Child(L"Item", {Value(L"global address list")}).Number(L"Index"),
        1);
}

} // namespace
} // namespace outlook_tests
