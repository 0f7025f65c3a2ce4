// Root folders, folder paths, the folder list, folder creation.
#include "ScriptTest.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class FolderTest : public ScriptTest {
protected:
    void SetUp() override { LogOn(); }

    std::wstring CurrentFolder() { return Call(L"VARD_GetCurrentFolderName"); }
    void Open(const wchar_t* path) {
        ASSERT_EQ(Call(L"VARD_OpenFolder", {path}), L"0") << testing::PrintToString(path);
    }
    Folder& At(const wchar_t* path, const wchar_t* store = L"Front Desk") {
        return FolderAt(World(), store, path);
    }
    std::shared_ptr<Folder> Add(Folder& parent, const wchar_t* name, std::int32_t type = 0) {
        std::shared_ptr<Folder> folder;
        EXPECT_EQ(parent.CreateSubfolder({name, type, {}}, folder), S_OK);
        return folder;
    }
};

TEST_F(FolderTest, RootFoldersAreWalkedToTheEnd) {
    EXPECT_EQ(Call(L"VARD_GetFirstRootFolder"), L"Front Desk");
    EXPECT_EQ(Call(L"VARD_GetNextRootFolder"), L"Archive");
    EXPECT_EQ(Call(L"VARD_GetNextRootFolder"), L"Public Folders");
    EXPECT_EQ(Call(L"VARD_GetNextRootFolder"), L"End");
    EXPECT_EQ(Call(L"VARD_GetNextRootFolder"), L"End");
    Open(L"/All Public Folders"); // the last one stays
    EXPECT_EQ(Call(L"VARD_GetFirstRootFolder"), L"Front Desk");
    ExpectFailure(L"VARD_GetFolderType", {}, -1026, L"Must navigate to a folder before operation");
}

TEST_F(FolderTest, AWalkThatWasNotBegunAsksForAFolderThatIsNotThere) {
    EXPECT_EQ(Call(L"VARD_GetNextRootFolder"), kError);
    EXPECT_EQ(LastErrorCode(), 0);
    EXPECT_EQ(Call(L"VARD_GetNextRootFolder"), L"Front Desk");
}

TEST_F(FolderTest, ARootFolderIsFoundByItsNameInAnyCaseWithOneSlashInFront) {
    for (const wchar_t* name : {L"Archive", L"/Archive", L"ARCHIVE", L"/archive"}) {
        EXPECT_EQ(Call(L"VARD_OpenRootFolder", {L"Front Desk"}), L"0");
        EXPECT_EQ(Call(L"VARD_OpenRootFolder", {name}), L"0") << testing::PrintToString(name);
        ExpectFailure(L"VARD_OpenFolder", {L"/Calendar"}, -1015, L"Folder Not Found");
        Open(L"/Deleted Items");
    }
    for (const wchar_t* name : {L"//Archive", L"Archiv", L"/", L"Back Office"}) {
        ExpectFailure(L"VARD_OpenRootFolder", {name}, -1003, L"Cannot Find Root Folder");
    }
}

TEST_F(FolderTest, AStoreThatCannotBeLookedUpIsNoRootFolder) {
    for (const wchar_t* member : {L"IMAPITable::SetColumns", L"MAPI32::HrQueryAllRows"}) {
        Varden().Watch().FailMember(member, MAPI_E_CALL_FAILED);
        ExpectFailure(L"VARD_OpenRootFolder", {L"Archive"}, -1003, L"Cannot Find Root Folder");
    }
    Varden().Watch().FailMember(L"MAPI32::HrQueryAllRows", S_FALSE); // a success without rows
    ExpectFailure(L"VARD_OpenRootFolder", {L"Archive"}, -1003, L"Cannot Find Root Folder");
    World().AllStores()[1]->SetRowWithoutEntryId(true);
    ExpectFailure(L"VARD_OpenRootFolder", {L"Archive"}, -1003, L"Cannot Find Root Folder");
}

/// A success of Outlook's without an object, step by step.
TEST_F(FolderTest, FoldersThatDoNotComeAreTold) {
    Varden().Watch().FailMember(L"NameSpace::Folders", S_FALSE);
    ExpectFailure(L"VARD_GetFirstRootFolder", {}, -1003, L"Cannot Find Root Folder");
    Varden().Watch().FailMember(L"MAPIFolder::Folders", S_FALSE);
    ExpectFailure(L"VARD_GetFirstFolder", {}, -1097,
                  L"MAPI Subsystem error\rUnable to build the mail folder list");
    Open(L"/Inbox");
    for (const wchar_t* path : {L"New", L"/New"}) {
        Varden().Watch().FailMember(L"MAPIFolder::Folders", S_FALSE);
        ExpectFailure(L"VARD_NewFolder", {path, L"Mail"}, -1015, L"Folder Not Found");
    }
    EXPECT_EQ(Call(L"VARD_GetFirstFolder"), L"/Deleted Items");
    Varden().Watch().FailMember(L"NameSpace::GetFolderFromID", S_FALSE);
    ExpectFailure(L"VARD_GetNextFolder", {}, -1097,
                  L"MAPI Subsystem error\rUnable to get folder from id!" + ToHex(At(L"Inbox").EntryId()));
}

TEST_F(FolderTest, AStoreThatCannotBeOpenedStillGivesItsFolders) {
    Varden().Watch().FailMember(L"IMAPISession::OpenMsgStore", E_ACCESSDENIED);
    EXPECT_EQ(Call(L"VARD_OpenRootFolder", {L"Archive"}), L"0");
    Open(L"/Inbox");
}

TEST_F(FolderTest, StoresAreOpenedOnlineWhenThatIsSwitchedOn) {
    const auto openings = [&](const wchar_t* root) {
        Varden().Watch().Reset();
        Varden().Watch().KeepLines(true);
        EXPECT_EQ(Call(L"VARD_OpenRootFolder", {root}), L"0");
        Varden().Watch().KeepLines(false);
        auto lines = Varden().Watch().Lines();
        std::erase_if(
            lines, [](const std::wstring& line) { return line.find(L"OpenMsgStore") == std::wstring::npos; });
        return lines;
    };
    using Lines = std::vector<std::wstring>;
    const Lines offline{L"MAPI IMAPISession::OpenMsgStore 00000000 00000011"};
    const Lines online{L"MAPI IMAPISession::OpenMsgStore 00000000 00000111"};
    EXPECT_EQ(openings(L"Archive"), offline);
    // The switch has no name for scripts; the host calls it by its number.
    EXPECT_EQ(Varden().Host().CallUnchecked(std::int16_t{219}, {L"yes"}).text, L"0");
    EXPECT_EQ(openings(L"Archive"), online);
    EXPECT_EQ(Varden().Host().CallUnchecked(std::int16_t{219}, {L"perhaps"}).text, L"0");
    EXPECT_EQ(openings(L"Front Desk"), offline);
}

TEST_F(FolderTest, PathsAreAbsoluteOrRelativeToTheCurrentFolder) {
    auto projects = Add(At(L"Inbox"), L"Projects");
    Add(*projects, L"Inbox");
    Open(L"Inbox"); // no current folder: from the root
    EXPECT_EQ(CurrentFolder(), L"Inbox");
    Open(L"Projects");
    EXPECT_EQ(CurrentFolder(), L"Projects");
    Open(L"/Inbox");
    Open(L"Inbox/Projects"); // the current folder's own name may begin a path
    EXPECT_EQ(CurrentFolder(), L"Projects");
    Open(L"/Inbox/Projects/Inbox/");
    EXPECT_EQ(CurrentFolder(), L"Inbox");
    ExpectFailure(L"VARD_OpenFolder", {L"Inbox"}, -1015, L"Folder Not Found"); // below itself, not itself
    for (const wchar_t* missing :
         {L"/", L"x", L"/inbox", L"/Inbox//Projects", L"/Inbox/projects", L"/ Inbox"}) {
        Open(L"/Inbox");
        ExpectFailure(L"VARD_OpenFolder", {missing}, -1015, L"Folder Not Found");
    }
}

TEST_F(FolderTest, APathThatFailsHalfWayLeavesTheLastFolderThatMatched) {
    Add(At(L"Inbox"), L"Projects");
    ExpectFailure(L"VARD_OpenFolder", {L"/Inbox/Projects/2026"}, -1015, L"Folder Not Found");
    EXPECT_EQ(CurrentFolder(), L"Projects");
}

TEST_F(FolderTest, BehindAMissingElementTheRootFoldersAreLookedAt) {
    // Designed so: the result rests on the last element alone.
    Open(L"/No Such Folder/Archive");
    EXPECT_EQ(CurrentFolder(), L"Archive");
}

TEST_F(FolderTest, FoldersTellTheirTypeNameAndId) {
    const std::vector<std::pair<const wchar_t*, const wchar_t*>> types{
        {L"/Inbox", L"Mail"},       {L"/Calendar", L"Calendar"}, {L"/Contacts", L"Contacts"},
        {L"/Tasks", L"Tasks"},      {L"/Journal", L"Journal"},   {L"/Notes", L"Note"},
        {L"/Junk E-mail", L"Mail"},
    };
    for (const auto& [path, type] : types) {
        Open(path);
        EXPECT_EQ(Call(L"VARD_GetFolderType"), type);
        EXPECT_EQ(CurrentFolder(), path + 1);
        EXPECT_EQ(Call(L"VARD_GetFolderID"), ToHex(At(path + 1).EntryId()));
    }
    At(L"Inbox").SetDefaultItemType(6, L"IPF.Post");
    Open(L"/Inbox");
    EXPECT_EQ(Call(L"VARD_GetFolderType"), L"Post");
    At(L"Inbox").SetDefaultItemType(7, L"IPF.Contact");
    ExpectFailure(L"VARD_GetFolderType", {}, -1015, L"Folder Not Found\rUnsupported item type for folder");
}

TEST_F(FolderTest, NothingIsToldWithoutACurrentFolder) {
    for (const wchar_t* function : {L"VARD_GetFolderType", L"VARD_GetFolderID", L"VARD_GetCurrentFolderName",
                                    L"VARD_GetFirstRecord", L"VARD_GetNextRecord", L"VARD_NewRecord"}) {
        ExpectFailure(function, {}, -1026, L"Must navigate to a folder before operation");
    }
    ExpectFailure(L"VARD_NewFolder", {L"/Inbox/New", L"Mail"}, -1026,
                  L"Must navigate to a folder before operation");
    ExpectFailure(L"VARD_FilterByFilterString", {L"[Subject] = 'x'"}, -1026,
                  L"Must navigate to a folder before operation");
}

TEST_F(FolderTest, TheListHoldsAllFoldersBelowTheRootBeforeTheirSubfolders) {
    auto projects = Add(At(L"Inbox"), L"Projects");
    Add(*projects, L"2026");
    Add(At(L"Inbox"), L"Travel");
    std::vector<std::wstring> paths;
    for (std::wstring path = Call(L"VARD_GetFirstFolder"); path != L"End";
         path = Call(L"VARD_GetNextFolder")) {
        ASSERT_NE(path, kError) << testing::PrintToString(LastErrorText());
        paths.push_back(path);
        EXPECT_EQ(CurrentFolder(), path.substr(path.rfind(L'/') + 1));
    }
    const std::vector<std::wstring> expected{
        L"/Deleted Items", L"/Inbox",      L"/Inbox/Projects", L"/Inbox/Projects/2026",
        L"/Inbox/Travel",  L"/Outbox",     L"/Sent Items",     L"/Calendar",
        L"/Contacts",      L"/Journal",    L"/Notes",          L"/Tasks",
        L"/Drafts",        L"/Junk E-mail"};
    EXPECT_EQ(paths, expected);
    EXPECT_EQ(CurrentFolder(), L"Junk E-mail"); // the walk's end leaves it
    EXPECT_EQ(Call(L"VARD_GetNextFolder"), L"End");
}

TEST_F(FolderTest, TheListIsASnapshot) {
    EXPECT_EQ(Call(L"VARD_GetFirstFolder"), L"/Deleted Items");
    Add(At(L"Inbox"), L"Later");
    At(L"Drafts").Store().SetReadOnly(false);
    std::vector<std::wstring> paths;
    for (std::wstring path = Call(L"VARD_GetNextFolder"); path != L"End";
         path = Call(L"VARD_GetNextFolder")) {
        paths.push_back(path);
    }
    EXPECT_EQ(std::count(paths.begin(), paths.end(), L"/Inbox/Later"), 0);
    EXPECT_EQ(paths.size(), 10u);
}

TEST_F(FolderTest, AFolderThatHasGoneSinceIsAMapiFailureOrOutlooksOwn) {
    auto projects = Add(At(L"Deleted Items"), L"Projects");
    EXPECT_EQ(Call(L"VARD_GetFirstFolder"), L"/Deleted Items");
    EXPECT_EQ(projects->Delete(), S_OK);
    EXPECT_EQ(Call(L"VARD_GetNextFolder"), kError);
    EXPECT_EQ(Call(L"VARD_GetFolderType"), kError);
    EXPECT_EQ(LastErrorCode(), -1026);
}

TEST_F(FolderTest, EachStepOfTheFolderWalkThatMapiRefusesIsTold) {
    EXPECT_EQ(Call(L"VARD_GetFirstFolder"), L"/Deleted Items");
    Varden().Watch().FailMember(L"MAPIFolder::MAPIOBJECT", E_ACCESSDENIED);
    ExpectFailure(
        L"VARD_GetNextFolder", {}, -1097,
        L"MAPI Subsystem error\rError: 80070005\rMAPI_E_NO_ACCESS\rUnable to obtian MAPI Object for Inbox");
    Varden().Watch().FailMember(L"IMAPIFolder::QueryInterface", E_NOINTERFACE);
    ExpectFailure(L"VARD_GetNextFolder", {}, -1097,
                  L"MAPI Subsystem error\rError: 80004002\rMAPI_E_INTERFACE_NOT_SUPPORTED\r"
                  L"Unable to obtain MAPI interface for folder");
    EXPECT_EQ(Call(L"VARD_GetNextFolder"), L"/Inbox"); // a failed step is taken again
}

TEST_F(FolderTest, NewFoldersAreMadeAlongThePathAndOpened) {
    Open(L"/Inbox");
    EXPECT_EQ(Call(L"VARD_NewFolder", {L"Projects/2026", L"Mail"}), L"0");
    EXPECT_EQ(CurrentFolder(), L"2026");
    EXPECT_EQ(At(L"Inbox/Projects/2026").DefaultItemType(), 0);
    EXPECT_EQ(Call(L"VARD_NewFolder", {L"/Inbox//Projects/2027/", L"contact"}), L"0");
    EXPECT_EQ(At(L"Inbox/Projects/2027").DefaultItemType(), 2);
    EXPECT_EQ(Call(L"VARD_GetFolderType"), L"Contacts");
    EXPECT_EQ(Call(L"VARD_NewFolder", {L"/Inbox/Projects", L"Tasks"}), L"0"); // there already: opened
    EXPECT_EQ(CurrentFolder(), L"Projects");
    EXPECT_EQ(At(L"Inbox/Projects").Subfolders().size(), 2u);
    const std::vector<std::pair<const wchar_t*, std::int32_t>> modules{
        {L"Contact", 2}, {L"Post", 0}, {L"CALENDAR", 1}, {L"Mail", 0},
        {L"Tasks", 3},   {L"Note", 5}, {L"Journal", 4}};
    for (const auto& [module, type] : modules) {
        EXPECT_EQ(Call(L"VARD_NewFolder", {std::wstring(L"/Made/") + module, module}), L"0");
        EXPECT_EQ(At((std::wstring(L"Made/") + module).c_str()).DefaultItemType(), type);
    }
}

TEST_F(FolderTest, WhatANewFolderCannotBeIsRefused) {
    Open(L"/Inbox");
    ExpectFailure(L"VARD_NewFolder", {L"", L"Mail"}, -1087, L"Invalid folder name");
    ExpectFailure(L"VARD_NewFolder", {L"New", L"Mails"}, -1021, L"Invalid module name called");
    EXPECT_EQ(Call(L"VARD_NewFolder", {L"/", L"Mail"}), L"0"); // nothing to make
    EXPECT_EQ(CurrentFolder(), L"Inbox");
    EXPECT_EQ(Call(L"VARD_NewFolder", {L"One/Two", L""}), kError); // a type that Outlook refuses
    EXPECT_EQ(LastErrorCode(), 999);
    EXPECT_TRUE(LastErrorText().starts_with(L"\rError: ")) << testing::PrintToString(LastErrorText());
    // The start, a step and the takeover each tell Outlook's refusal; what was made before it stays.
    for (const wchar_t* member : {L"MAPIFolder::Folders", L"Folders::Count", L"MAPIFolder::Items"}) {
        Open(L"/Inbox");
        Varden().Watch().FailMember(member, E_ACCESSDENIED);
        EXPECT_EQ(Call(L"VARD_NewFolder", {L"Half", L"Mail"}), kError) << testing::PrintToString(member);
        EXPECT_EQ(LastErrorCode(), 999);
        EXPECT_TRUE(LastErrorText().starts_with(L"\rError: 80070005\nMessage:"));
    }
    EXPECT_EQ(CurrentFolder(), L"Half");
    Open(L"/Inbox");
    World().DefaultStore()->SetReadOnly(true);
    EXPECT_EQ(Call(L"VARD_NewFolder", {L"New", L"Mail"}), kError);
    EXPECT_EQ(LastErrorCode(), 999);
    EXPECT_EQ(CurrentFolder(), L"Inbox");
}

TEST_F(FolderTest, AFolderListThatCannotBeBegunIsTold) {
    Varden().Watch().FailMember(L"MAPIFolder::Folders", E_FAIL);
    EXPECT_EQ(Call(L"VARD_GetFirstFolder"), kError);
    EXPECT_EQ(LastErrorCode(), 0);
    // Further down, what was listed before the failure stays.
    Varden().Watch().FailMember(L"MAPIFolder::EntryID", E_FAIL, 3);
    EXPECT_EQ(Call(L"VARD_GetFirstFolder"), L"/Deleted Items");
    EXPECT_EQ(Call(L"VARD_GetNextFolder"), L"/Inbox");
    EXPECT_EQ(Call(L"VARD_GetNextFolder"), L"End");
}

} // namespace
} // namespace varden::tests
