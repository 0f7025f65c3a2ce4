// Logon, default folders, objects by id, shared folders, and the switches that hosts have.
#include "Client.h"

#include "standin/mailbox/EntryId.h"

namespace outlook_tests {
namespace {

using SessionTest = OutlookTest;

TEST_F(SessionTest, LogonTakesTheProfileThereIs) {
    struct Row {
        _variant_t profile;
        HRESULT status;
    };
    const Row rows[] = {
        {Value(L"Outlook"), S_OK},
        {Value(L"outlook"), S_OK},
        {Value(L""), S_OK},
        {Missing(), S_OK},
        {Value(L"Nobody"), MAPI_E_FAILONEPROVIDER},
    };
    for (const Row& row : rows) {
        const Object nameSpace = Application().Child(L"GetNamespace", {Value(L"MAPI")});
        EXPECT_EQ(
            nameSpace.TryCall(L"Logon", {row.profile, Value(L"secret"), Value(true), Value(true)}).Status(),
            row.status);
    }
}

TEST_F(SessionTest, ASessionThatRunsTakesNoOtherProfile) {
    const Object nameSpace = NameSpace();
    EXPECT_EQ(nameSpace.TryCall(L"Logon", {Value(L"Nobody")}).Status(), S_OK);
    EXPECT_EQ(nameSpace.Text(L"CurrentProfileName"), L"Outlook");
    nameSpace.Call(L"Logoff");
    EXPECT_EQ(nameSpace.TryCall(L"Logon", {Value(L"Nobody")}).Status(), MAPI_E_FAILONEPROVIDER);
}

TEST_F(SessionTest, MembersLogOnByThemselvesWhereNobodyDid) {
    const Object nameSpace = Application().Child(L"GetNamespace", {Value(L"MAPI")});
    EXPECT_EQ(nameSpace.Child(L"Folders").Number(L"Count"), 3);
}

TEST_F(SessionTest, HostsCanHaveLogonRefused) {
    Outlook().RefuseLogon(MAPI_E_LOGON_FAILED);
    const Object nameSpace = Application().Child(L"GetNamespace", {Value(L"MAPI")});
    EXPECT_EQ(nameSpace.TryCall(L"Logon", {Value(L"Outlook")}).Status(), MAPI_E_LOGON_FAILED);
    EXPECT_EQ(nameSpace.TryCall(L"GetDefaultFolder", {Value(kInbox)}).Status(), MAPI_E_LOGON_FAILED);
    EXPECT_EQ(Application().Text(L"Name"), L"Outlook");
}

TEST_F(SessionTest, HostsCanHaveNothingInPlaceOfObjects) {
    const Object nameSpace = NameSpace();
    Outlook().WithholdMapiObject(true);
    const Answer mapi = nameSpace.TryGet(L"MAPIOBJECT");
    EXPECT_EQ(mapi.status, S_OK);
    EXPECT_EQ(mapi.value.vt, VT_UNKNOWN);
    EXPECT_EQ(mapi.value.punkVal, nullptr);
    Outlook().WithholdNamespace(true);
    const Answer answer = Application().TryCall(L"GetNamespace", {Value(L"MAPI")});
    EXPECT_EQ(answer.status, S_OK);
    EXPECT_EQ(answer.value.vt, VT_DISPATCH);
    EXPECT_EQ(answer.value.pdispVal, nullptr);
}

TEST_F(SessionTest, TheMapiSessionIsTheSameEachTime) {
    const Object nameSpace = NameSpace();
    const _variant_t first = nameSpace.Get(L"MAPIOBJECT");
    ASSERT_EQ(first.vt, VT_UNKNOWN);
    ASSERT_NE(first.punkVal, nullptr);
    EXPECT_EQ(nameSpace.Get(L"MAPIOBJECT").punkVal, first.punkVal);
}

TEST_F(SessionTest, OnlyMapiIsANameSpace) {
    EXPECT_EQ(Application().TryCall(L"GetNamespace", {Value(L"LDAP")}).Status(), E_INVALIDARG);
    EXPECT_EQ(Application().Child(L"GetNamespace", {Value(L"mapi")}).Text(L"Type"), L"MAPI");
}

TEST_F(SessionTest, DefaultFoldersAreFoundByNumber) {
    struct Row {
        int number;
        HRESULT status;
        const wchar_t* path;
        int itemType;
    };
    const Row rows[] = {
        {3, S_OK, L"\\\\Front Desk\\Deleted Items", 0},
        {4, S_OK, L"\\\\Front Desk\\Outbox", 0},
        {5, S_OK, L"\\\\Front Desk\\Sent Items", 0},
        {6, S_OK, L"\\\\Front Desk\\Inbox", 0},
        {9, S_OK, L"\\\\Front Desk\\Calendar", 1},
        {10, S_OK, L"\\\\Front Desk\\Contacts", 2},
        {11, S_OK, L"\\\\Front Desk\\Journal", 4},
        {12, S_OK, L"\\\\Front Desk\\Notes", 5},
        {13, S_OK, L"\\\\Front Desk\\Tasks", 3},
        {16, S_OK, L"\\\\Front Desk\\Drafts", 0},
        {18, S_OK, L"\\\\Public Folders\\All Public Folders", 0},
        {23, S_OK, L"\\\\Front Desk\\Junk E-mail", 0},
        {28, MAPI_E_NOT_FOUND, nullptr, 0},
        {0, E_INVALIDARG, nullptr, 0},
        {99, E_INVALIDARG, nullptr, 0},
    };
    const Object nameSpace = NameSpace();
    for (const Row& row : rows) {
        const Answer answer = nameSpace.TryCall(L"GetDefaultFolder", {Value(row.number)});
        EXPECT_EQ(answer.Status(), row.status) << row.number;
        if (FAILED(row.status))
            continue;
        EXPECT_EQ(Object(answer.value).Text(L"FolderPath"), row.path);
        EXPECT_EQ(Object(answer.value).Number(L"DefaultItemType"), row.itemType) << row.path;
    }
}

TEST_F(SessionTest, ObjectsAreFoundByTheirIds) {
    const Object nameSpace = NameSpace();
    const Object inbox = DefaultFolder(kInbox);
    const std::wstring folderId = inbox.Text(L"EntryID"), storeId = inbox.Text(L"StoreID");
    const std::wstring itemId = AddItem(inbox, L"Found").Text(L"EntryID");
    EXPECT_EQ(nameSpace.Child(L"GetFolderFromID", {Value(folderId)}).Text(L"Name"), L"Inbox");
    EXPECT_EQ(nameSpace.Child(L"GetItemFromID", {Value(itemId), Value(storeId)}).Text(L"Subject"), L"Found");
    EXPECT_EQ(nameSpace.Child(L"GetItemFromID", {Value(itemId), Missing()}).Text(L"EntryID"), itemId);
    EXPECT_TRUE(static_cast<bool>(nameSpace.Call(L"CompareEntryIDs", {Value(itemId), Value(itemId)})));
    EXPECT_FALSE(static_cast<bool>(nameSpace.Call(L"CompareEntryIDs", {Value(itemId), Value(folderId)})));

    std::wstring gone = itemId;
    constexpr std::size_t kPadding = 4;
    wchar_t& digit = gone[gone.size() - kPadding - 1]; // the last of the message's number
    digit = digit == L'0' ? L'1' : L'0';
    struct Row {
        const wchar_t* member;
        std::wstring id;
        HRESULT status;
    };
    const Row rows[] = {
        {L"GetItemFromID", gone, MAPI_E_NOT_FOUND},
        {L"GetItemFromID", folderId, MAPI_E_NOT_FOUND},
        {L"GetItemFromID", L"", MAPI_E_INVALID_ENTRYID},
        {L"GetItemFromID", L"ABC", MAPI_E_INVALID_ENTRYID},
        {L"GetItemFromID", L"hello world!", MAPI_E_INVALID_ENTRYID},
        {L"GetItemFromID", itemId.substr(2), MAPI_E_INVALID_ENTRYID},
        {L"GetFolderFromID", itemId, MAPI_E_NOT_FOUND},
        {L"GetFolderFromID", storeId, MAPI_E_INVALID_ENTRYID},
        {L"CompareEntryIDs", L"x", DISP_E_BADPARAMCOUNT},
    };
    for (const Row& row : rows)
        EXPECT_EQ(nameSpace.TryCall(row.member, {Value(row.id)}).Status(), row.status) << row.id;
    EXPECT_EQ(nameSpace.TryCall(L"GetItemFromID", {Value(itemId), Value(folderId)}).Status(),
              MAPI_E_NOT_FOUND)
        << "no store";
}

TEST_F(SessionTest, SharedFoldersBelongToRecipientsWithAMailbox) {
    struct Row {
        const wchar_t* name;
        int folder;
        HRESULT status;
    };
    const Row rows[] = {
        {L"Back Office", kCalendar, S_OK},
        {L"back.office@example.com", kContacts, S_OK},
        {L"Back Office", kInbox, S_OK},
        {L"Back Office", kTasks, MAPI_E_NOT_FOUND},
        {L"Back Office", kDeletedItems, E_INVALIDARG},
        {L"Back Office", 99, E_INVALIDARG},
        {L"Warehouse", kCalendar, MAPI_E_NOT_FOUND},
        {L"Service", kCalendar, MAPI_E_NOT_FOUND},
        {L"Nobody", kCalendar, MAPI_E_NOT_FOUND},
    };
    const Object nameSpace = NameSpace();
    for (const Row& row : rows) {
        const Object recipient = nameSpace.Child(L"CreateRecipient", {Value(row.name)});
        const Answer answer =
            nameSpace.TryCall(L"GetSharedDefaultFolder", {_variant_t(recipient.Raw()), Value(row.folder)});
        EXPECT_EQ(answer.Status(), row.status) << row.name << " " << row.folder;
        if (SUCCEEDED(row.status)) {
            EXPECT_TRUE(Object(answer.value).Text(L"FolderPath").starts_with(L"\\\\Back Office\\"));
        }
    }
    const Object nobody;
    EXPECT_EQ(
        nameSpace.TryCall(L"GetSharedDefaultFolder", {_variant_t(nobody.Raw()), Value(kInbox)}).Status(),
        E_INVALIDARG);
}

TEST_F(SessionTest, OnlyStoresThatAreOpenAreSearchedForIds) {
    namespace mailbox = standin::mailbox;
    mailbox::Store& office = *World().FindMailbox(L"Back Office");
    std::shared_ptr<mailbox::Message> message;
    ASSERT_EQ(office.SpecialFolder(kCalendar)->Receive({}, false, message), S_OK);
    const _variant_t item = Value(mailbox::ToHex(message->Get<PR_ENTRYID>().value()));
    const _variant_t folder = Value(mailbox::ToHex(office.SpecialFolder(kCalendar)->EntryId()));
    const _variant_t store = Value(mailbox::ToHex(office.EntryId()));
    const Object nameSpace = NameSpace();
    const auto find = [&](const _variant_t& where) {
        const HRESULT status = nameSpace.TryCall(L"GetItemFromID", {item, where}).Status();
        EXPECT_EQ(nameSpace.TryCall(L"GetFolderFromID", {folder, where}).Status(), status);
        return status;
    };
    EXPECT_EQ(find(Missing()), MAPI_E_NOT_FOUND) << "nobody has opened the mailbox";
    EXPECT_TRUE(office.Names().Names().empty()) << "nor asked for names in it";
    const Object recipient = nameSpace.Child(L"CreateRecipient", {Value(L"Back Office")});
    nameSpace.Call(L"GetSharedDefaultFolder", {_variant_t(recipient.Raw()), Value(kContacts)});
    EXPECT_EQ(find(Missing()), S_OK);
    EXPECT_FALSE(office.Names().Names().empty());
    EXPECT_EQ(find(Value(DefaultFolder(kInbox).Text(L"StoreID"))), MAPI_E_NOT_FOUND) << "another store";
    nameSpace.Call(L"Logoff");
    nameSpace.Call(L"Logon");
    EXPECT_EQ(find(Missing()), MAPI_E_NOT_FOUND) << "a new session";
    EXPECT_EQ(find(store), S_OK) << "which opens it";
    EXPECT_EQ(find(Missing()), S_OK);
}

/// A scenario over every part of the stand-in, for failing its calls one after the other.
void Work(const Object& nameSpace) {
    const Object inbox(nameSpace.TryCall(L"GetDefaultFolder", {Value(kInbox)}).value);
    if (!inbox)
        return;
    const Object items(inbox.TryGet(L"Items").value);
    if (!items)
        return;
    const Object item(items.TryCall(L"Add").value);
    if (!item)
        return;
    item.TryPut(L"Subject", Value(L"Work"));
    item.TryCall(L"Save");
    const Object found(items.TryCall(L"Restrict", {Value(L"[Subject] = 'Work'")}).value);
    if (found)
        found.TryCall(L"Item", {Value(1)});
    const Object list(nameSpace.TryCall(L"GetGlobalAddressList").value);
    if (list)
        list.TryGet(L"AddressEntries");
    item.TryCall(L"Delete");
}

TEST_F(SessionTest, EachCallCanFailAndLeavesNothingBehind) {
    constexpr HRESULT kStatus = MAPI_E_NETWORK_ERROR;
    int failed = 0;
    for (std::uint64_t number = 1;; ++number) {
        const Object nameSpace = NameSpace();
        Watch().FailCall(number, kStatus, {standin::Side::Outlook});
        Work(nameSpace);
        if (!Watch().HasFailed())
            break;
        ++failed;
        Watch().Reset();
    }
    Watch().Reset();
    EXPECT_GT(failed, 15);
    const Object folder = DefaultFolder(kInbox);
    Watch().FailCall(1, kStatus, {standin::Side::Outlook});
    const Answer answer = folder.Invoke(folder.IdOf(L"Name"), DISPATCH_PROPERTYGET, {});
    EXPECT_EQ(answer.status, DISP_E_MEMBERNOTFOUND) << "the failed call was that for the id";
    const DISPID name = folder.IdOf(L"Name");
    Watch().FailCall(1, kStatus, {standin::Side::Outlook});
    const Answer failure = folder.Invoke(name, DISPATCH_PROPERTYGET, {});
    EXPECT_EQ(failure.status, DISP_E_EXCEPTION);
    EXPECT_EQ(failure.scode, kStatus);
    Watch().FailCall(1, E_NOINTERFACE, {standin::Side::Outlook});
    IUnknown* unknown = nullptr;
    EXPECT_EQ(folder.Raw()->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&unknown)), E_NOINTERFACE);
    EXPECT_EQ(unknown, nullptr);
    Watch().Reset();
}

} // namespace
} // namespace outlook_tests
