// Logon, default folders, objects by id, shared folders, and the switches that hosts have.
#include "Client.h"

#include "standin/mailbox/EntryId.h"

namespace outlook_tests {
namespace {

using SessionTest = OutlookTest;

TEST_F(SessionTest, LogonTakesTheProfileThereIs) {
    const std::pair<Value, HRESULT> rows[] = {
        {L"outlook", S_OK}, {L"", S_OK}, {Missing(), S_OK}, {L"Nobody", MAPI_E_FAILONEPROVIDER}};
    for (const auto& [profile, status] : rows)
        EXPECT_EQ(QuietNameSpace().Status(L"Logon", {profile, L"secret", true, true}), status);
    const Object nameSpace = NameSpace();
    EXPECT_EQ(nameSpace.Status(L"Logon", {L"Nobody"}), S_OK) << "a session that runs takes no other";
    EXPECT_EQ(nameSpace.Text(L"CurrentProfileName"), L"Outlook");
    nameSpace.Call(L"Logoff");
    EXPECT_EQ(nameSpace.Status(L"Logon", {L"Nobody"}), MAPI_E_FAILONEPROVIDER);
}

TEST_F(SessionTest, MembersLogOnByThemselvesWhereNobodyDid) {
    EXPECT_EQ(QuietNameSpace().Child(L"Folders").Number(L"Count"), 3);
}

TEST_F(SessionTest, HostsCanHaveLogonRefused) {
    Outlook().RefuseLogon(MAPI_E_LOGON_FAILED);
    EXPECT_EQ(QuietNameSpace().Status(L"Logon", {L"Outlook"}), MAPI_E_LOGON_FAILED);
    EXPECT_EQ(QuietNameSpace().Status(L"GetDefaultFolder", {kInbox}), MAPI_E_LOGON_FAILED);
    EXPECT_EQ(Application().Text(L"Name"), L"Outlook");
}

TEST_F(SessionTest, HostsCanHaveNothingInPlaceOfObjects) {
    const Object nameSpace = NameSpace();
    const _variant_t session = nameSpace.Get(L"MAPIOBJECT");
    ASSERT_EQ(session.vt, VT_UNKNOWN);
    ASSERT_NE(session.punkVal, nullptr);
    EXPECT_EQ(nameSpace.Get(L"MAPIOBJECT").punkVal, session.punkVal) << "the same each time";
    Outlook().WithholdMapiObject(true);
    const _variant_t noSession = nameSpace.Get(L"MAPIOBJECT");
    EXPECT_EQ(noSession.vt, VT_UNKNOWN);
    EXPECT_EQ(noSession.punkVal, nullptr);
    Outlook().WithholdNamespace(true);
    const _variant_t noNameSpace = Application().Call(L"GetNamespace", {L"MAPI"});
    EXPECT_EQ(noNameSpace.vt, VT_DISPATCH);
    EXPECT_EQ(noNameSpace.pdispVal, nullptr);
}

TEST_F(SessionTest, OnlyMapiIsANameSpace) {
    EXPECT_EQ(Application().Status(L"GetNamespace", {L"LDAP"}), E_INVALIDARG);
    EXPECT_EQ(Application().Child(L"GetNamespace", {L"mapi"}).Text(L"Type"), L"MAPI");
}

TEST_F(SessionTest, DefaultFoldersAreFoundByNumber) {
    const std::tuple<int, std::wstring, int> rows[] = {
        {3, L"Deleted Items", 0}, {4, L"Outbox", 0},    {5, L"Sent Items", 0},   {6, L"Inbox", 0},
        {9, L"Calendar", 1},      {10, L"Contacts", 2}, {11, L"Journal", 4},     {12, L"Notes", 5},
        {13, L"Tasks", 3},        {16, L"Drafts", 0},   {23, L"Junk E-mail", 0},
    };
    for (const auto& [number, name, itemType] : rows)
        Expect(DefaultFolder(number),
               {{L"FolderPath", L"\\\\Front Desk\\" + name}, {L"DefaultItemType", itemType}});
    Expect(DefaultFolder(18),
           {{L"FolderPath", L"\\\\Public Folders\\All Public Folders"}, {L"DefaultItemType", 0}});
    for (const auto& [number, status] :
         {std::pair{28, MAPI_E_NOT_FOUND}, {0, E_INVALIDARG}, {99, E_INVALIDARG}})
        EXPECT_EQ(NameSpace().Status(L"GetDefaultFolder", {number}), status) << number;
}

TEST_F(SessionTest, ObjectsAreFoundByTheirIds) {
    const Object nameSpace = NameSpace();
    const Object inbox = DefaultFolder(kInbox);
    const std::wstring folderId = inbox.Text(L"EntryID"), storeId = inbox.Text(L"StoreID");
    const std::wstring itemId = AddItem(inbox, L"Found").Text(L"EntryID");
    EXPECT_EQ(nameSpace.Child(L"GetFolderFromID", {folderId}).Text(L"Name"), L"Inbox");
    EXPECT_EQ(nameSpace.Child(L"GetItemFromID", {itemId, storeId}).Text(L"Subject"), L"Found");
    EXPECT_EQ(nameSpace.Child(L"GetItemFromID", {itemId, Missing()}).Text(L"EntryID"), itemId);
    EXPECT_EQ(nameSpace.Call(L"CompareEntryIDs", {itemId, itemId}), Value(true));
    EXPECT_EQ(nameSpace.Call(L"CompareEntryIDs", {itemId, folderId}), Value(false));

    std::wstring gone = itemId;
    constexpr std::size_t kPadding = 4;
    wchar_t& digit = gone[gone.size() - kPadding - 1]; // the last of the message's number
    digit = digit == L'0' ? L'1' : L'0';
    const std::tuple<const wchar_t*, std::wstring, HRESULT> rows[] = {
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
    for (const auto& [member, id, status] : rows)
        EXPECT_EQ(nameSpace.Status(member, {id}), status) << id;
    EXPECT_EQ(nameSpace.Status(L"GetItemFromID", {itemId, folderId}), MAPI_E_NOT_FOUND) << "no store";
}

TEST_F(SessionTest, SharedFoldersBelongToRecipientsWithAMailbox) {
    const std::tuple<const wchar_t*, int, HRESULT> rows[] = {{L"Back Office", kCalendar, S_OK},
                                                             {L"back.office@example.com", kContacts, S_OK},
                                                             {L"Back Office", kInbox, S_OK},
                                                             {L"Back Office", kTasks, MAPI_E_NOT_FOUND},
                                                             {L"Back Office", kDeletedItems, E_INVALIDARG},
                                                             {L"Back Office", 99, E_INVALIDARG},
                                                             {L"Warehouse", kCalendar, MAPI_E_NOT_FOUND},
                                                             {L"Service", kCalendar, MAPI_E_NOT_FOUND},
                                                             {L"Nobody", kCalendar, MAPI_E_NOT_FOUND}};
    const Object nameSpace = NameSpace();
    for (const auto& [name, folder, status] : rows) {
        const Object recipient = nameSpace.Child(L"CreateRecipient", {name});
        const Answer answer = nameSpace.TryCall(L"GetSharedDefaultFolder", {recipient, folder});
        EXPECT_EQ(answer.Status(), status) << name << " " << folder;
        if (SUCCEEDED(status)) {
            EXPECT_TRUE(Object(answer.value).Text(L"FolderPath").starts_with(L"\\\\Back Office\\"));
        }
    }
    EXPECT_EQ(nameSpace.Status(L"GetSharedDefaultFolder", {Object(), kInbox}), E_INVALIDARG) << "nobody";
}

TEST_F(SessionTest, OnlyStoresThatAreOpenAreSearchedForIds) {
    namespace mailbox = standin::mailbox;
    mailbox::Store& office = *World().FindMailbox(L"Back Office");
    std::shared_ptr<mailbox::Message> message;
    ASSERT_EQ(office.SpecialFolder(kCalendar)->Receive({}, false, message), S_OK);
    const Value item = mailbox::ToHex(message->Get<PR_ENTRYID>().value()),
                folder = mailbox::ToHex(office.SpecialFolder(kCalendar)->EntryId()),
                store = mailbox::ToHex(office.EntryId());
    const Object nameSpace = NameSpace();
    const auto find = [&](const Value& where) {
        const HRESULT status = nameSpace.Status(L"GetItemFromID", {item, where});
        EXPECT_EQ(nameSpace.Status(L"GetFolderFromID", {folder, where}), status);
        return status;
    };
    EXPECT_EQ(find(Missing()), MAPI_E_NOT_FOUND) << "nobody has opened the mailbox";
    EXPECT_TRUE(office.Names().Names().empty()) << "nor asked for names in it";
    const Object recipient = nameSpace.Child(L"CreateRecipient", {L"Back Office"});
    nameSpace.Call(L"GetSharedDefaultFolder", {recipient, kContacts});
    EXPECT_EQ(find(Missing()), S_OK);
    EXPECT_FALSE(office.Names().Names().empty());
    EXPECT_EQ(find(DefaultFolder(kInbox).Text(L"StoreID")), MAPI_E_NOT_FOUND) << "another store";
    nameSpace.Call(L"Logoff");
    nameSpace.Call(L"Logon");
    EXPECT_EQ(find(Missing()), MAPI_E_NOT_FOUND) << "a new session";
    EXPECT_EQ(find(store), S_OK) << "which opens it";
    EXPECT_EQ(find(Missing()), S_OK);
}

/// A scenario over every part of the stand-in, for failing its calls one after the other.
void Work(const Object& nameSpace) {
    const Object inbox(nameSpace.TryCall(L"GetDefaultFolder", {kInbox}).value);
    const Object items(inbox.TryGet(L"Items").value);
    const Object item(items.TryCall(L"Add").value);
    item.TryPut(L"Subject", L"Work");
    item.TryCall(L"Save");
    Object(items.TryCall(L"Restrict", {L"[Subject] = 'Work'"}).value).TryCall(L"Item", {1});
    Object(nameSpace.TryCall(L"GetGlobalAddressList").value).TryGet(L"AddressEntries");
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
    EXPECT_EQ(folder.IdOf(L"Name"), DISPID_UNKNOWN);
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
