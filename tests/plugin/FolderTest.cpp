// Root folders, folder paths, the folder list, folder creation.
#include "MailboxTest.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class FolderTest : public MailboxTest {
protected:
    std::wstring CurrentFolder() { return Call(L"VARD_GetCurrentFolderName"); }
    std::shared_ptr<Folder> Add(Folder& parent, const wchar_t* name, std::int32_t type = 0) {
        std::shared_ptr<Folder> folder;
        EXPECT_EQ(parent.CreateSubfolder({name, type, {}}, folder), S_OK);
        return folder;
    }
    /// The paths of the folder walk from here to its end.
    std::vector<std::wstring> WalkFrom(std::wstring path) {
        std::vector<std::wstring> paths;
        for (; path != L"End"; path = Call(L"VARD_GetNextFolder")) {
            EXPECT_EQ(CurrentFolder(), path.substr(path.rfind(L'/') + 1));
            paths.push_back(path);
            if (path == kError) {
                break;
            }
        }
        return paths;
    }
};

TEST_F(FolderTest, RootFoldersAreWalkedToTheEnd) {
    ExpectFailureLike(L"VARD_GetNextRootFolder", {}, {0, L"Error: "}); // a walk that was not begun
    EXPECT_EQ(Call(L"VARD_GetNextRootFolder"), L"Front Desk");
    EXPECT_EQ(Call(L"VARD_GetFirstRootFolder"), L"Front Desk");
    for (const wchar_t* next : {L"Archive", L"Public Folders", L"End", L"End"}) {
        EXPECT_EQ(Call(L"VARD_GetNextRootFolder"), next);
    }
    Open(L"/All Public Folders"); // the last one stays
    EXPECT_EQ(Call(L"VARD_GetFirstRootFolder"), L"Front Desk");
    ExpectFailure(L"VARD_GetFolderType", {}, errors::kNoFolder);
}

TEST_F(FolderTest, ARootFolderIsFoundByItsNameInAnyCaseWithOneSlashInFront) {
    for (const wchar_t* name : {L"Archive", L"/Archive", L"ARCHIVE", L"/archive"}) {
        EXPECT_EQ(Call(L"VARD_OpenRootFolder", {L"Front Desk"}), L"0");
        EXPECT_EQ(Call(L"VARD_OpenRootFolder", {name}), L"0") << testing::PrintToString(name);
        ExpectFailure(L"VARD_OpenFolder", {L"/Calendar"}, errors::kFolderNotFound);
        Open(L"/Deleted Items");
    }
    for (const wchar_t* name : {L"//Archive", L"Archiv", L"/", L"Back Office"}) {
        ExpectFailure(L"VARD_OpenRootFolder", {name}, errors::kRootNotFound);
    }
}

TEST_F(FolderTest, AStoreThatCannotBeLookedUpIsNoRootFolderAndOneThatCannotBeOpenedIs) {
    Fail(L"IMAPISession::OpenMsgStore");
    ExpectSuccess(L"VARD_OpenRootFolder", {L"Archive"});
    Open(L"/Inbox");
    ExpectFaults(L"VARD_OpenRootFolder", {L"Archive"},
                 {{L"IMAPITable::SetColumns", errors::kRootNotFound, MAPI_E_CALL_FAILED},
                  {L"MAPI32::HrQueryAllRows", errors::kRootNotFound, MAPI_E_CALL_FAILED},
                  {L"MAPI32::HrQueryAllRows", errors::kRootNotFound, S_FALSE}}); // a success without rows
    World().AllStores()[1]->SetRowWithoutEntryId(true);
    ExpectFailure(L"VARD_OpenRootFolder", {L"Archive"}, errors::kRootNotFound);
}

/// A success of Outlook's without an object, step by step.
TEST_F(FolderTest, FoldersThatDoNotComeAreTold) {
    ExpectFaults(L"VARD_GetFirstRootFolder", {}, {{L"NameSpace::Folders", errors::kRootNotFound, S_FALSE}});
    ExpectFaults(L"VARD_GetFirstFolder", {},
                 {{L"MAPIFolder::Folders", errors::Mapi(L"Unable to build the mail folder list"), S_FALSE}});
    Open(L"/Inbox");
    for (const wchar_t* path : {L"New", L"/New"}) {
        ExpectFaults(L"VARD_NewFolder", {path, L"Mail"},
                     {{L"MAPIFolder::Folders", errors::kFolderNotFound, S_FALSE}});
    }
    EXPECT_EQ(Call(L"VARD_GetFirstFolder"), L"/Deleted Items");
    const std::wstring next = ToHex(At(L"Inbox").EntryId());
    ExpectFaults(
        L"VARD_GetNextFolder", {},
        {{L"NameSpace::GetFolderFromID", errors::Mapi(L"Unable to get folder from id!" + next), S_FALSE}});
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
    ExpectFailure(L"VARD_OpenFolder", {L"Inbox"}, errors::kFolderNotFound); // below itself, not itself
    for (const wchar_t* missing :
         {L"/", L"x", L"/inbox", L"/Inbox//Projects", L"/Inbox/projects", L"/ Inbox"}) {
        Open(L"/Inbox");
        ExpectFailure(L"VARD_OpenFolder", {missing}, errors::kFolderNotFound);
    }
}

TEST_F(FolderTest, APathThatFailsHalfWayLeavesTheLastFolderThatMatched) {
    Add(At(L"Inbox"), L"Projects");
    ExpectFailure(L"VARD_OpenFolder", {L"/Inbox/Projects/2026"}, errors::kFolderNotFound);
    EXPECT_EQ(CurrentFolder(), L"Projects");
    // Behind a missing element the root folders are looked at: the last element alone decides.
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
        ExpectFailure(function, {}, errors::kNoFolder);
    }
    ExpectFailure(L"VARD_NewFolder", {L"/Inbox/New", L"Mail"}, errors::kNoFolder);
    ExpectFailure(L"VARD_FilterByFilterString", {L"[Subject] = 'x'"}, errors::kNoFolder);
}

TEST_F(FolderTest, TheListHoldsAllFoldersBelowTheRootBeforeTheirSubfolders) {
    auto projects = Add(At(L"Inbox"), L"Projects");
    Add(*projects, L"2026");
    Add(At(L"Inbox"), L"Travel");
    const std::vector<std::wstring> expected{
        L"/Deleted Items", L"/Inbox",      L"/Inbox/Projects", L"/Inbox/Projects/2026",
        L"/Inbox/Travel",  L"/Outbox",     L"/Sent Items",     L"/Calendar",
        L"/Contacts",      L"/Journal",    L"/Notes",          L"/Tasks",
        L"/Drafts",        L"/Junk E-mail"};
    EXPECT_EQ(WalkFrom(Call(L"VARD_GetFirstFolder")), expected);
    EXPECT_EQ(CurrentFolder(), L"Junk E-mail"); // the walk's end leaves it
    EXPECT_EQ(Call(L"VARD_GetNextFolder"), L"End");
}

TEST_F(FolderTest, TheListIsASnapshotOfWhichAFolderCanBeGone) {
    EXPECT_EQ(Call(L"VARD_GetFirstFolder"), L"/Deleted Items");
    Add(At(L"Inbox"), L"Later");
    const auto paths = WalkFrom(Call(L"VARD_GetNextFolder"));
    EXPECT_EQ(std::count(paths.begin(), paths.end(), L"/Inbox/Later"), 0);
    EXPECT_EQ(paths.size(), 10u);

    const auto projects = Add(At(L"Deleted Items"), L"Projects");
    EXPECT_EQ(Call(L"VARD_GetFirstFolder"), L"/Deleted Items");
    EXPECT_EQ(projects->Delete(), S_OK);
    EXPECT_EQ(Call(L"VARD_GetNextFolder"), kError);
    ExpectFailure(L"VARD_GetFolderType", {}, errors::kNoFolder);
}

TEST_F(FolderTest, EachStepOfTheFolderWalkThatIsRefusedIsTold) {
    Fail(L"MAPIFolder::Folders", E_FAIL);
    ExpectFailureLike(L"VARD_GetFirstFolder", {}, {0, L"Error: 80004005"});
    // Further down, what was listed before the failure stays.
    Fail(L"MAPIFolder::EntryID", E_FAIL, 3);
    EXPECT_EQ(WalkFrom(Call(L"VARD_GetFirstFolder")),
              (std::vector<std::wstring>{L"/Deleted Items", L"/Inbox"}));
    EXPECT_EQ(Call(L"VARD_GetFirstFolder"), L"/Deleted Items");
    ExpectFaults(L"VARD_GetNextFolder", {},
                 {Denied(L"MAPIFolder::MAPIOBJECT", L"Unable to obtian MAPI Object for Inbox"),
                  {L"IMAPIFolder::QueryInterface",
                   errors::NoInterface(L"Unable to obtain MAPI interface for folder"), E_NOINTERFACE}});
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
    // A type that Outlook refuses.
    ExpectFailureLike(L"VARD_NewFolder", {L"One/Two", L""}, {999, L"\rError: "});
    // The start, a step and the takeover each tell Outlook's refusal; what was made before it stays.
    for (const wchar_t* member : {L"MAPIFolder::Folders", L"Folders::Count", L"MAPIFolder::Items"}) {
        Open(L"/Inbox");
        Fail(member);
        ExpectFailureLike(L"VARD_NewFolder", {L"Half", L"Mail"}, {999, L"\rError: 80070005\nMessage:"});
    }
    EXPECT_EQ(CurrentFolder(), L"Half");
    Open(L"/Inbox");
    World().DefaultStore()->SetReadOnly(true);
    ExpectFailureLike(L"VARD_NewFolder", {L"New", L"Mail"}, {999, L"\rError: "});
    EXPECT_EQ(CurrentFolder(), L"Inbox");
}

} // namespace
} // namespace varden::tests
