// Records moved to other folders.
#include "ScriptTest.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class MovingTest : public ScriptTest {
protected:
    void SetUp() override { LogOn(); }

    Folder& At(const wchar_t* path, const wchar_t* store = L"Front Desk") {
        return FolderAt(World(), store, path);
    }
    std::wstring Add(const wchar_t* subject, const wchar_t* folder = L"Inbox",
                     const wchar_t* messageClass = L"IPM.Note") {
        return ToHex(AddMessage(At(folder), {.messageClass = messageClass, .subject = subject})->EntryId());
    }
    void OpenRecord(const std::wstring& id) { ASSERT_EQ(Call(L"VARD_OpenRecord", {id}), L"0"); }
    std::shared_ptr<Message> Find(const std::wstring& id) {
        return World().FindMessage(FromHex(id).value_or(Bytes()));
    }
};

TEST_F(MovingTest, EveryKindIsMovedAndAnswersItsNewId) {
    for (const wchar_t* messageClass :
         {L"IPM.Appointment", L"IPM.Contact", L"IPM.DistList", L"IPM.Document.txtfile", L"IPM.Activity",
          L"IPM.Note", L"IPM.Schedule.Meeting.Request", L"IPM.StickyNote", L"IPM.Post", L"IPM.Remote",
          L"REPORT.IPM.Note.NDR", L"IPM.Sharing", L"IPM.Task", L"IPM.TaskRequest", L"IPM.TaskRequest.Accept",
          L"IPM.TaskRequest.Decline", L"IPM.TaskRequest.Update"}) {
        const std::wstring id = Add(messageClass, L"Inbox", messageClass);
        OpenRecord(id);
        const std::wstring moved = Call(L"VARD_MoveRecord", {L"/Drafts"});
        ASSERT_TRUE(Find(moved)) << testing::PrintToString(messageClass)
                                 << testing::PrintToString(LastErrorText());
        EXPECT_NE(moved, id);
        EXPECT_EQ(Find(moved)->ParentFolder(), &At(L"Drafts"));
        EXPECT_FALSE(Find(id));
        ExpectFailure(L"VARD_GetFieldData", {L"Subject"}, -1038,
                      L"Unable to locate record\rno current message selected");
        EXPECT_EQ(Call(L"VARD_GetCurrentFolderName"), L"Drafts");
        OpenRecord(moved);
        EXPECT_EQ(Call(L"VARD_GetFieldData", {L"Message Class"}), messageClass);
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
        OpenRecord(Add(L"x"));
        const std::wstring moved = Call(L"VARD_MoveRecord", {path});
        ASSERT_TRUE(Find(moved)) << testing::PrintToString(path) << testing::PrintToString(LastErrorText());
        EXPECT_EQ(Find(moved)->ParentFolder(), &At(folder, store));
    }
    // The store of the last path stays the root folder.
    EXPECT_EQ(Call(L"VARD_OpenFolder", {L"/Calendar"}), kError);
}

TEST_F(MovingTest, ARecordThatIsThereAlreadyKeepsItsId) {
    const std::wstring id = Add(L"x");
    OpenRecord(id);
    EXPECT_EQ(Call(L"VARD_MoveRecord", {L"/Inbox"}), id);
    ASSERT_TRUE(Find(id));
    ExpectFailure(L"VARD_GetFieldData", {L"Subject"}, -1038,
                  L"Unable to locate record\rno current message selected");
}

TEST_F(MovingTest, TheNextWalkRunsThroughTheDestination) {
    Add(L"1");
    Add(L"2");
    Add(L"there", L"Drafts");
    ASSERT_EQ(Call(L"VARD_OpenFolder", {L"/Inbox"}), L"0");
    Call(L"VARD_GetFirstRecord");
    const std::wstring moved = Call(L"VARD_MoveRecord", {L"/Drafts"});
    EXPECT_EQ(Call(L"VARD_GetFirstRecord"), ToHex(At(L"Drafts").Messages().front()->EntryId()));
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), moved);
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), L"End");
}

TEST_F(MovingTest, DestinationsThatAreNotThereAreTold) {
    const std::wstring id = Add(L"x");
    OpenRecord(id);
    ExpectFailure(L"VARD_MoveRecord", {L""}, -1024, L"Invalid Outlook ID");
    for (const wchar_t* path : {L"Drafts", L"Nowhere/Drafts", L"A/Drafts"}) {
        ExpectFailure(L"VARD_MoveRecord", {path}, -1003, L"Cannot Find Root Folder");
    }
    for (const wchar_t* path : {L"/Nowhere", L"/Drafts/Nowhere", L"Archive/Drafts", L"/"}) {
        ExpectFailure(L"VARD_MoveRecord", {path}, -1015, L"Folder Not Found");
    }
    EXPECT_EQ(Call(L"VARD_GetFieldData", {L"Subject"}), L"x"); // still the record
    EXPECT_TRUE(Find(id));
}

TEST_F(MovingTest, WhatCannotBeMovedIsTold) {
    constexpr const wchar_t* noRecord = L"Item operation called without opening/creating a record";
    ExpectFailure(L"VARD_MoveRecord", {L"/Drafts"}, -1023, noRecord);
    const std::wstring storage = Add(L"x", L"Inbox", L"IPM.Storage");
    OpenRecord(storage);
    ExpectFailure(L"VARD_MoveRecord", {L"/Drafts"}, -1023, noRecord);
    // A note whose message couldn't be opened is a record, but nobody can say where it lies.
    const std::wstring note = Add(L"note", L"Inbox", L"IPM.StickyNote");
    Varden().Watch().FailMember(L"IMsgStore::OpenEntry", E_ACCESSDENIED);
    OpenRecord(note);
    EXPECT_TRUE(Varden().Watch().HasFailed());
    ExpectFailure(L"VARD_MoveRecord", {L"/Drafts"}, 1, L"Unhandled exception in function");
    EXPECT_TRUE(Find(note));
    const std::wstring id = Add(L"y");
    OpenRecord(id);
    Varden().Watch().FailMember(L"MAPI32::HrGetOneProp", E_ACCESSDENIED);
    ExpectFailure(L"VARD_MoveRecord", {L"/Drafts"}, -1097,
                  L"MAPI Subsystem error\rError: 80070005\rMAPI_E_NO_ACCESS");
    constexpr std::uint64_t ofItsOwnId = 2;
    Varden().Watch().FailMember(L"MAPI32::HrGetOneProp", MAPI_E_NOT_FOUND, ofItsOwnId);
    ExpectFailure(L"VARD_MoveRecord", {L"/Inbox"}, -1097,
                  L"MAPI Subsystem error\rError: 8004010F\rMAPI_E_NOT_FOUND");
    Varden().Watch().FailMember(L"MailItem::Move", E_ACCESSDENIED);
    EXPECT_EQ(Call(L"VARD_MoveRecord", {L"/Drafts"}), kError);
    EXPECT_EQ(LastErrorCode(), 0);
    EXPECT_TRUE(LastErrorText().starts_with(L"Error: 80070005"));
    EXPECT_TRUE(Find(storage));
    EXPECT_TRUE(Find(id));
    Varden().Watch().FailMember(L"MailItem::QueryInterface", E_NOINTERFACE);
    ExpectFailure(L"VARD_MoveRecord", {L"/Drafts"}, -1097,
                  L"MAPI Subsystem error\rError: 80004002\rMAPI_E_INTERFACE_NOT_SUPPORTED\r"
                  L"Can not retrieve MAPI interface for item.");
    EXPECT_EQ(At(L"Drafts").Messages().size(), 1u); // moved all the same
}

} // namespace
} // namespace varden::tests
