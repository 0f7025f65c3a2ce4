// Records moved to other folders.
#include "ItemClasses.h"
#include "MailboxTest.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class MovingTest : public MailboxTest {
protected:
    std::wstring Move(const wchar_t* path) { return Call(L"VARD_MoveRecord", {path}); }
};

TEST_F(MovingTest, EveryKindIsMovedAndAnswersItsNewId) {
    for (const wchar_t* messageClass : kItemClasses) {
        const std::wstring id = Add({.messageClass = messageClass});
        OpenRecord(id);
        const std::wstring moved = Move(L"/Drafts");
        ASSERT_TRUE(Find(moved)) << testing::PrintToString(messageClass)
                                 << testing::PrintToString(LastErrorText());
        EXPECT_NE(moved, id);
        EXPECT_EQ(Find(moved)->ParentFolder(), &At(L"Drafts"));
        EXPECT_FALSE(Find(id));
        ExpectNoCurrentRecord();
        EXPECT_EQ(Call(L"VARD_GetCurrentFolderName"), L"Drafts");
        OpenRecord(moved);
        EXPECT_EQ(Get(L"Message Class"), messageClass);
    }
}

TEST_F(MovingTest, APathBeginsAtTheRootAtTheCurrentFolderOrWithAStoresName) {
    std::shared_ptr<Folder> sub;
    ASSERT_EQ(At(L"Inbox").CreateSubfolder({L"Sub", 0, {}}, sub), S_OK);
    struct Path {
        const wchar_t* path;
        const wchar_t* store;
        const wchar_t* folder;
    };
    for (const auto& [path, store, folder] :
         {Path{L"/Inbox/Sub", L"Front Desk", L"Inbox/Sub"},
          Path{L"Front Desk/Drafts", L"Front Desk", L"Drafts"}, Path{L"Archive/Inbox", L"Archive", L"Inbox"},
          Path{L"ARCHIVE/Inbox/", L"Archive", L"Inbox"}}) {
        LogOn();
        OpenRecord(Add({.subject = L"x"}));
        const std::wstring moved = Move(path);
        ASSERT_TRUE(Find(moved)) << testing::PrintToString(path) << testing::PrintToString(LastErrorText());
        EXPECT_EQ(Find(moved)->ParentFolder(), &At(folder, store));
    }
    // The store of the last path stays the root folder.
    EXPECT_EQ(Call(L"VARD_OpenFolder", {L"/Calendar"}), kError);
}

TEST_F(MovingTest, ARecordThatIsThereAlreadyKeepsItsId) {
    const std::wstring id = Add({.subject = L"x"});
    OpenRecord(id);
    EXPECT_EQ(Move(L"/Inbox"), id);
    ASSERT_TRUE(Find(id));
    ExpectNoCurrentRecord();
}

TEST_F(MovingTest, TheNextWalkRunsThroughTheDestination) {
    Add({.subject = L"1"});
    Add({.subject = L"2"});
    const std::wstring there = Add({.subject = L"there"}, L"Drafts");
    Open(L"/Inbox");
    Call(L"VARD_GetFirstRecord");
    const std::wstring moved = Move(L"/Drafts");
    EXPECT_EQ(Call(L"VARD_GetFirstRecord"), there);
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), moved);
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), L"End");
}

TEST_F(MovingTest, DestinationsThatAreNotThereAreTold) {
    const std::wstring id = Add({.subject = L"x"});
    OpenRecord(id);
    ExpectFailure(L"VARD_MoveRecord", {L""}, errors::kInvalidId);
    for (const wchar_t* path : {L"Drafts", L"Nowhere/Drafts", L"A/Drafts"}) {
        ExpectFailure(L"VARD_MoveRecord", {path}, errors::kRootNotFound);
    }
    for (const wchar_t* path : {L"/Nowhere", L"/Drafts/Nowhere", L"Archive/Drafts", L"/"}) {
        ExpectFailure(L"VARD_MoveRecord", {path}, errors::kFolderNotFound);
    }
    EXPECT_EQ(Get(L"Subject"), L"x"); // still the record
    EXPECT_TRUE(Find(id));
}

TEST_F(MovingTest, WhatCannotBeMovedIsTold) {
    ExpectFailure(L"VARD_MoveRecord", {L"/Drafts"}, errors::kNoRecord);
    const std::wstring storage = Add({.messageClass = L"IPM.Storage"});
    OpenRecord(storage);
    ExpectFailure(L"VARD_MoveRecord", {L"/Drafts"}, errors::kNoRecord);
    // A note whose message couldn't be opened is a record, but nobody can say where it lies.
    const std::wstring note = Add({.messageClass = L"IPM.StickyNote"});
    Fail(L"IMsgStore::OpenEntry");
    OpenRecord(note);
    EXPECT_TRUE(Varden().Watch().HasFailed());
    ExpectFailure(L"VARD_MoveRecord", {L"/Drafts"}, errors::kUnhandled);
    EXPECT_TRUE(Find(note));
    const std::wstring id = Add({.subject = L"y"});
    OpenRecord(id);
    ExpectFaults(L"VARD_MoveRecord", {L"/Drafts"}, {{L"MAPI32::HrGetOneProp", errors::Denied()}});
    constexpr std::uint64_t ofItsOwnId = 2;
    ExpectFaults(L"VARD_MoveRecord", {L"/Inbox"},
                 {{L"MAPI32::HrGetOneProp", errors::NotFound(), MAPI_E_NOT_FOUND, ofItsOwnId}});
    Fail(L"MailItem::Move");
    ExpectFailureLike(L"VARD_MoveRecord", {L"/Drafts"}, {0, L"Error: 80070005"});
    EXPECT_TRUE(Find(storage));
    EXPECT_TRUE(Find(id));
    ExpectFaults(L"VARD_MoveRecord", {L"/Drafts"},
                 {{L"MailItem::QueryInterface",
                   errors::NoInterface(L"Can not retrieve MAPI interface for item."), E_NOINTERFACE}});
    EXPECT_EQ(At(L"Drafts").Messages().size(), 1u); // moved all the same
}

} // namespace
} // namespace varden::tests
