// Folders and collections of folders.
#include "Client.h"

namespace outlook_tests {
namespace {

using FolderTest = OutlookTest;

TEST_F(FolderTest, TopFoldersBearTheNamesOfTheirStores) {
    const Object folders = NameSpace().Child(L"Folders");
    ASSERT_EQ(folders.Number(L"Count"), 3);
    const wchar_t* names[] = {L"Front Desk", L"Archive", L"Public Folders"};
    for (int i = 1; i <= 3; ++i) {
        Expect(folders.Item(i), {{L"Name", names[i - 1]}, {L"Class", 2}});
        EXPECT_EQ(folders.Item(i).Child(L"Parent").Raw(), NameSpace().Raw());
    }
    EXPECT_EQ(folders.Status(L"Add", {L"Store"}), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(DefaultFolder(kInbox).Child(L"Parent").Text(L"Name"), L"Front Desk");
}

TEST_F(FolderTest, FoldersAreReachedByPlaceAndByName) {
    const Object folders = NameSpace().Child(L"Folders", {1}).Child(L"Folders");
    ASSERT_EQ(folders.Number(L"Count"), 11);
    EXPECT_EQ(folders.Item(1).Text(L"Name"), L"Deleted Items");
    for (const Value& inbox : Values{L"inbox", _variant_t(short{2}), _variant_t(2.0)})
        EXPECT_EQ(folders.Item(inbox).Text(L"Name"), L"Inbox") << AsText(inbox);
    for (const int place : {0, -1, 12})
        EXPECT_TRUE(IsOutOfBounds(folders.TryCall(L"Item", {place}))) << place;
    for (const wchar_t* name : {L"2", L"Inbox2"})
        EXPECT_EQ(folders.Status(L"Item", {name}), MAPI_E_NOT_FOUND) << name;
    EXPECT_EQ(folders.Status(L"Item", {Application()}), E_INVALIDARG);
}

TEST_F(FolderTest, FoldersAreWalkedStepByStep) {
    const Object folders = NameSpace().Child(L"Folders", {2}).Child(L"Folders");
    EXPECT_EQ(folders.Child(L"GetFirst").Text(L"Name"), L"Inbox");
    EXPECT_EQ(folders.Child(L"GetNext").Text(L"Name"), L"Deleted Items");
    EXPECT_FALSE(folders.Child(L"GetNext"));
    EXPECT_EQ(folders.Child(L"GetPrevious").Text(L"Name"), L"Deleted Items");
    EXPECT_EQ(folders.Child(L"GetPrevious").Text(L"Name"), L"Inbox");
    EXPECT_FALSE(folders.Child(L"GetPrevious"));
    EXPECT_EQ(folders.Child(L"GetLast").Text(L"Name"), L"Deleted Items");
}

TEST_F(FolderTest, NewFoldersAreOfTheTypeThatIsAskedFor) {
    const std::tuple<Value, int, const wchar_t*> rows[] = {
        {Missing(), 1, L"IPM.Appointment"}, // as the folder above
        {Value(6), 0, L"IPM.Note"},
        {_variant_t(short{9}), 1, L"IPM.Appointment"},
        {10, 2, L"IPM.Contact"},
        {13, 3, L"IPM.Task"},
        {11, 4, L"IPM.Activity"},
        {12, 5, L"IPM.StickyNote"},
        {16, 0, L"IPM.Note"},
    };
    const Object folders = DefaultFolder(kCalendar).Child(L"Folders");
    int count = 0;
    for (const auto& [type, itemType, messageClass] : rows)
        Expect(folders.Child(L"Add", {L"Folder " + std::to_wstring(count++), type}),
               {{L"DefaultItemType", itemType}, {L"DefaultMessageClass", messageClass}});
    for (const Value& type : Values{3, 99, L"mail"})
        EXPECT_EQ(folders.Status(L"Add", {L"Refused", type}), E_INVALIDARG) << AsText(type);
    EXPECT_EQ(folders.Number(L"Count"), count) << "a collection is live";
    const Answer again = folders.TryCall(L"Add", {L"FOLDER 1"});
    EXPECT_EQ(again.status, DISP_E_EXCEPTION);
    EXPECT_EQ(again.description, L"A folder with this name already exists. Use another name.");
    EXPECT_EQ(folders.Status(L"Add", {L""}), E_INVALIDARG);
}

TEST_F(FolderTest, PathsShowNamesSafely) {
    const Object folder = DefaultFolder(kInbox).Child(L"Folders").Child(L"Add", {L"100% a\\b"});
    Expect(folder, {{L"FolderPath", L"\\\\Front Desk\\Inbox\\100%25 a%5Cb"}});
    Expect(folder, {{L"FullFolderPath", folder.Text(L"FolderPath")}, {L"Name", L"100% a\\b"}});
}

TEST_F(FolderTest, FoldersAreRenamedMovedAndCopied) {
    const Object inbox = DefaultFolder(kInbox);
    const Object folder = inbox.Child(L"Folders").Child(L"Add", {L"Jobs"});
    AddItem(folder, L"Item");
    PutAll(folder, {{L"Name", L"Orders"}, {L"Description", L"What is to be done"}});
    EXPECT_EQ(folder.TryPut(L"Name", L"").Status(), E_INVALIDARG);
    EXPECT_EQ(folder.Text(L"FolderPath"), L"\\\\Front Desk\\Inbox\\Orders");

    const Object archive = Archive(), archived = archive.Child(L"Folders");
    const Object copy = folder.Child(L"CopyTo", {archive});
    Expect(copy, {{L"FolderPath", L"\\\\Archive\\Orders"}, {L"Description", L"What is to be done"}});
    EXPECT_EQ(copy.Child(L"Items").Item(1).Text(L"Subject"), L"Item");
    copy.Call(L"Delete");

    folder.Call(L"MoveTo", {archive});
    EXPECT_EQ(folder.TryGet(L"Name").Status(), MAPI_E_OBJECT_DELETED) << "another store has another folder";
    const Object orders = archived.Item(L"Orders");
    EXPECT_EQ(orders.Child(L"Items").Number(L"Count"), 1);
    EXPECT_EQ(inbox.Child(L"Folders").Number(L"Count"), 0);
    EXPECT_EQ(inbox.Status(L"MoveTo", {archive}), E_ACCESSDENIED);
    EXPECT_EQ(inbox.TryPut(L"Name", L"Post").Status(), E_ACCESSDENIED);
    EXPECT_EQ(orders.Status(L"MoveTo", {orders}), MAPI_E_FOLDER_CYCLE);
}

TEST_F(FolderTest, DeletedFoldersGoToDeletedItemsFirst) {
    const Object inbox = DefaultFolder(kInbox), folders = inbox.Child(L"Folders");
    const Object deleted = DefaultFolder(kDeletedItems).Child(L"Folders");
    for (int i = 0; i < 2; ++i)
        folders.Child(L"Add", {L"Jobs"}).Call(L"Delete");
    const Object again = folders.Child(L"Add", {L"Jobs"});
    folders.Call(L"Remove", {1});
    EXPECT_EQ(again.Text(L"FolderPath"), L"\\\\Front Desk\\Deleted Items\\Jobs2");
    EXPECT_EQ(deleted.Number(L"Count"), 3);
    again.Call(L"Delete");
    EXPECT_EQ(again.TryGet(L"Name").Status(), MAPI_E_OBJECT_DELETED);
    EXPECT_EQ(deleted.Number(L"Count"), 2);
    EXPECT_EQ(inbox.Status(L"Delete"), E_ACCESSDENIED);
    EXPECT_TRUE(IsOutOfBounds(folders.TryCall(L"Remove", {1})));
}

TEST_F(FolderTest, StorageItemsAreFoundOrMade) {
    const Object inbox = DefaultFolder(kInbox);
    const auto open = [&inbox](const std::wstring& by, int kind) {
        return inbox.Child(L"GetStorage", {by, kind});
    };
    const Object made = open(L"Settings", 0);
    Expect(made, {{L"Class", 113}, {L"EntryID", L""}});
    EXPECT_EQ(made.IdOf(L"MAPIOBJECT"), DISPID_UNKNOWN) << "a storage item has none";
    PutAll(made, {{L"Body", L"colour=red"}, {L"Creator", L"A solution"}});
    made.Call(L"Save");
    const std::wstring id = made.Text(L"EntryID");
    EXPECT_EQ(Items(kInbox).Number(L"Count"), 0) << "hidden";
    Expect(open(L"settings", 0), {{L"Body", L"colour=red"}, {L"Creator", L"A solution"}});
    EXPECT_EQ(open(id, 1).Text(L"Subject"), L"Settings");
    EXPECT_EQ(open(L"IPM.Storage", 2).Text(L"EntryID"), id);
    EXPECT_EQ(open(L"IPM.Mine", 2).Text(L"EntryID"), L"");
    EXPECT_EQ(NameSpace().Child(L"GetItemFromID", {id}).Number(L"Class"), 113);
    EXPECT_EQ(inbox.Status(L"GetStorage", {inbox.Text(L"EntryID"), 1}), MAPI_E_NOT_FOUND);
    EXPECT_EQ(inbox.Status(L"GetStorage", {L"x", 3}), E_INVALIDARG);
    EXPECT_EQ(inbox.Status(L"GetStorage", {L"", 0}), E_INVALIDARG);
    made.Call(L"Delete");
    EXPECT_EQ(Items(kDeletedItems).Number(L"Count"), 0);
}

TEST_F(FolderTest, UnreadItemsAreCounted) {
    const Object inbox = DefaultFolder(kInbox);
    AddItem(inbox, L"Read");
    const Object item = AddItem(inbox, L"Unread");
    EXPECT_EQ(inbox.Number(L"UnReadItemCount"), 0);
    item.Put(L"UnRead", true);
    EXPECT_EQ(inbox.Number(L"UnReadItemCount"), 0) << "not saved yet";
    item.Call(L"Save");
    EXPECT_EQ(inbox.Number(L"UnReadItemCount"), 1);
}

} // namespace
} // namespace outlook_tests
