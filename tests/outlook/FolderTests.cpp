// Folders and collections of folders.
#include "Client.h"

namespace outlook_tests {
namespace {

using FolderTest = OutlookTest;

Object Folder(const Object& parent, const wchar_t* name) {
    return Object(parent.Child(L"Folders").Call(L"Item", {Value(name)}));
}

TEST_F(FolderTest, TopFoldersBearTheNamesOfTheirStores) {
    const Object folders = NameSpace().Child(L"Folders");
    ASSERT_EQ(folders.Number(L"Count"), 3);
    const wchar_t* names[] = {L"Front Desk", L"Archive", L"Public Folders"};
    for (int i = 1; i <= 3; ++i) {
        const Object folder = folders.Child(L"Item", {Value(i)});
        EXPECT_EQ(folder.Text(L"Name"), names[i - 1]);
        EXPECT_EQ(folder.Child(L"Parent").Raw(), NameSpace().Raw());
        EXPECT_EQ(folder.Number(L"Class"), 2);
    }
    EXPECT_EQ(folders.TryCall(L"Add", {Value(L"Store")}).Status(), MAPI_E_NO_SUPPORT);
    const Object inbox = DefaultFolder(kInbox);
    EXPECT_EQ(inbox.Child(L"Parent").Text(L"Name"), L"Front Desk");
}

TEST_F(FolderTest, FoldersAreReachedByPlaceAndByName) {
    struct Row {
        _variant_t index;
        HRESULT status;
        const wchar_t* name;
    };
    const Row rows[] = {
        {Value(1), S_OK, L"Deleted Items"},        {Value(L"inbox"), S_OK, L"Inbox"},
        {_variant_t(short{2}), S_OK, L"Inbox"},    {_variant_t(2.0), S_OK, L"Inbox"},
        {Value(0), DISP_E_EXCEPTION, L""},         {Value(-1), DISP_E_EXCEPTION, L""},
        {Value(12), DISP_E_EXCEPTION, L""},        {Value(L"2"), MAPI_E_NOT_FOUND, L""},
        {Value(L"Inbox2"), MAPI_E_NOT_FOUND, L""}, {_variant_t(Application().Raw()), E_INVALIDARG, L""},
    };
    const Object folders = NameSpace().Child(L"Folders", {Value(1)}).Child(L"Folders");
    ASSERT_EQ(folders.Number(L"Count"), 11);
    for (const Row& row : rows) {
        const Answer answer = folders.TryCall(L"Item", {row.index});
        EXPECT_EQ(answer.Status(), row.status);
        if (SUCCEEDED(row.status)) {
            EXPECT_EQ(Object(answer.value).Text(L"Name"), row.name);
        }
    }
    EXPECT_EQ(folders.TryCall(L"Item", {Value(0)}).description, L"Array index out of bounds.");
}

TEST_F(FolderTest, FoldersAreWalkedStepByStep) {
    const Object folders = NameSpace().Child(L"Folders", {Value(2)}).Child(L"Folders");
    EXPECT_EQ(folders.Child(L"GetFirst").Text(L"Name"), L"Inbox");
    EXPECT_EQ(folders.Child(L"GetNext").Text(L"Name"), L"Deleted Items");
    EXPECT_FALSE(folders.Child(L"GetNext"));
    EXPECT_EQ(folders.Child(L"GetPrevious").Text(L"Name"), L"Deleted Items");
    EXPECT_EQ(folders.Child(L"GetPrevious").Text(L"Name"), L"Inbox");
    EXPECT_FALSE(folders.Child(L"GetPrevious"));
    EXPECT_EQ(folders.Child(L"GetLast").Text(L"Name"), L"Deleted Items");
}

TEST_F(FolderTest, NewFoldersAreOfTheTypeThatIsAskedFor) {
    struct Row {
        _variant_t type;
        HRESULT status;
        int itemType;
        const wchar_t* messageClass;
    };
    const Row rows[] = {
        {Missing(), S_OK, 1, L"IPM.Appointment"}, // as the folder above
        {Value(6), S_OK, 0, L"IPM.Note"},         {_variant_t(short{9}), S_OK, 1, L"IPM.Appointment"},
        {Value(10), S_OK, 2, L"IPM.Contact"},     {Value(13), S_OK, 3, L"IPM.Task"},
        {Value(11), S_OK, 4, L"IPM.Activity"},    {Value(12), S_OK, 5, L"IPM.StickyNote"},
        {Value(16), S_OK, 0, L"IPM.Note"},        {Value(3), E_INVALIDARG, 0, L""},
        {Value(99), E_INVALIDARG, 0, L""},        {Value(L"mail"), E_INVALIDARG, 0, L""},
    };
    const Object folders = DefaultFolder(kCalendar).Child(L"Folders");
    int count = 0;
    for (const Row& row : rows) {
        const std::wstring name = L"Folder " + std::to_wstring(count);
        const Answer answer = folders.TryCall(L"Add", {Value(name), row.type});
        EXPECT_EQ(answer.Status(), row.status) << name;
        if (FAILED(row.status))
            continue;
        ++count;
        EXPECT_EQ(Object(answer.value).Number(L"DefaultItemType"), row.itemType);
        EXPECT_EQ(Object(answer.value).Text(L"DefaultMessageClass"), row.messageClass);
    }
    EXPECT_EQ(folders.Number(L"Count"), count) << "a collection is live";
    const Answer again = folders.TryCall(L"Add", {Value(L"FOLDER 1")});
    EXPECT_EQ(again.status, DISP_E_EXCEPTION);
    EXPECT_EQ(again.description, L"A folder with this name already exists. Use another name.");
    EXPECT_EQ(folders.TryCall(L"Add", {Value(L"")}).Status(), E_INVALIDARG);
}

TEST_F(FolderTest, PathsShowNamesSafely) {
    const Object folder = DefaultFolder(kInbox).Child(L"Folders").Child(L"Add", {Value(L"100% a\\b")});
    EXPECT_EQ(folder.Text(L"FolderPath"), L"\\\\Front Desk\\Inbox\\100%25 a%5Cb");
    EXPECT_EQ(folder.Text(L"FullFolderPath"), folder.Text(L"FolderPath"));
    EXPECT_EQ(folder.Text(L"Name"), L"100% a\\b");
}

TEST_F(FolderTest, FoldersAreRenamedMovedAndCopied) {
    const Object inbox = DefaultFolder(kInbox);
    const Object folder = inbox.Child(L"Folders").Child(L"Add", {Value(L"Jobs")});
    AddItem(folder, L"Item");
    folder.Put(L"Name", Value(L"Orders"));
    folder.Put(L"Description", Value(L"What is to be done"));
    EXPECT_EQ(folder.TryPut(L"Name", Value(L"")).Status(), E_INVALIDARG);
    EXPECT_EQ(folder.Text(L"FolderPath"), L"\\\\Front Desk\\Inbox\\Orders");

    const Object archive = NameSpace().Child(L"Folders", {Value(L"Archive")});
    const Object copy = folder.Child(L"CopyTo", {_variant_t(archive.Raw())});
    EXPECT_EQ(copy.Text(L"FolderPath"), L"\\\\Archive\\Orders");
    EXPECT_EQ(copy.Text(L"Description"), L"What is to be done");
    EXPECT_EQ(copy.Child(L"Items").Child(L"Item", {Value(1)}).Text(L"Subject"), L"Item");
    copy.Call(L"Delete");

    folder.Call(L"MoveTo", {_variant_t(archive.Raw())});
    EXPECT_EQ(folder.TryGet(L"Name").Status(), MAPI_E_OBJECT_DELETED) << "another store has another folder";
    EXPECT_EQ(Folder(archive, L"Orders").Child(L"Items").Number(L"Count"), 1);
    EXPECT_EQ(inbox.Child(L"Folders").Number(L"Count"), 0);
    EXPECT_EQ(inbox.TryCall(L"MoveTo", {_variant_t(archive.Raw())}).Status(), E_ACCESSDENIED);
    EXPECT_EQ(inbox.TryPut(L"Name", Value(L"Post")).Status(), E_ACCESSDENIED);
    const Object orders = Folder(archive, L"Orders");
    EXPECT_EQ(orders.TryCall(L"MoveTo", {_variant_t(orders.Raw())}).Status(), MAPI_E_FOLDER_CYCLE);
}

TEST_F(FolderTest, DeletedFoldersGoToDeletedItemsFirst) {
    const Object inbox = DefaultFolder(kInbox);
    const Object deleted = DefaultFolder(kDeletedItems);
    for (int i = 0; i < 2; ++i)
        inbox.Child(L"Folders").Child(L"Add", {Value(L"Jobs")}).Call(L"Delete");
    const Object again = inbox.Child(L"Folders").Child(L"Add", {Value(L"Jobs")});
    inbox.Child(L"Folders").Call(L"Remove", {Value(1)});
    EXPECT_EQ(again.Text(L"FolderPath"), L"\\\\Front Desk\\Deleted Items\\Jobs2");
    EXPECT_EQ(deleted.Child(L"Folders").Number(L"Count"), 3);
    again.Call(L"Delete");
    EXPECT_EQ(again.TryGet(L"Name").Status(), MAPI_E_OBJECT_DELETED);
    EXPECT_EQ(deleted.Child(L"Folders").Number(L"Count"), 2);
    EXPECT_EQ(inbox.TryCall(L"Delete").Status(), E_ACCESSDENIED);
    EXPECT_EQ(inbox.Child(L"Folders").TryCall(L"Remove", {Value(1)}).description,
              L"Array index out of bounds.");
}

TEST_F(FolderTest, StorageItemsAreFoundOrMade) {
    const Object inbox = DefaultFolder(kInbox);
    const Object made = inbox.Child(L"GetStorage", {Value(L"Settings"), Value(0)});
    EXPECT_EQ(made.Number(L"Class"), 113);
    EXPECT_EQ(made.IdOf(L"MAPIOBJECT"), DISPID_UNKNOWN) << "a storage item has none";
    made.Put(L"Body", Value(L"colour=red"));
    EXPECT_EQ(made.Text(L"EntryID"), L"");
    made.Call(L"Save");
    const std::wstring id = made.Text(L"EntryID");
    EXPECT_EQ(inbox.Child(L"Items").Number(L"Count"), 0) << "hidden";
    EXPECT_EQ(inbox.Child(L"GetStorage", {Value(L"settings"), Value(0)}).Text(L"Body"), L"colour=red");
    EXPECT_EQ(inbox.Child(L"GetStorage", {Value(id), Value(1)}).Text(L"Subject"), L"Settings");
    EXPECT_EQ(inbox.Child(L"GetStorage", {Value(L"IPM.Storage"), Value(2)}).Text(L"EntryID"), id);
    EXPECT_EQ(inbox.Child(L"GetStorage", {Value(L"IPM.Mine"), Value(2)}).Text(L"EntryID"), L"");
    EXPECT_EQ(NameSpace().Child(L"GetItemFromID", {Value(id)}).Number(L"Class"), 113);
    EXPECT_EQ(inbox.TryCall(L"GetStorage", {Value(inbox.Text(L"EntryID")), Value(1)}).Status(),
              MAPI_E_NOT_FOUND);
    EXPECT_EQ(inbox.TryCall(L"GetStorage", {Value(L"x"), Value(3)}).Status(), E_INVALIDARG);
    EXPECT_EQ(inbox.TryCall(L"GetStorage", {Value(L""), Value(0)}).Status(), E_INVALIDARG);
    made.Call(L"Delete");
    EXPECT_EQ(DefaultFolder(kDeletedItems).Child(L"Items").Number(L"Count"), 0);
}

TEST_F(FolderTest, UnreadItemsAreCounted) {
    const Object inbox = DefaultFolder(kInbox);
    AddItem(inbox, L"Read");
    const Object item = AddItem(inbox, L"Unread");
    EXPECT_EQ(inbox.Number(L"UnReadItemCount"), 0);
    item.Put(L"UnRead", Value(true));
    EXPECT_EQ(inbox.Number(L"UnReadItemCount"), 0) << "not saved yet";
    item.Call(L"Save");
    EXPECT_EQ(inbox.Number(L"UnReadItemCount"), 1);
}

} // namespace
} // namespace outlook_tests
