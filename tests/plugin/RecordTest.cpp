// Records made and opened, the walk over a folder, filters.
#include "ItemClasses.h"
#include "ScriptTest.h"

#include <map>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class RecordTest : public ScriptTest {
protected:
    void SetUp() override { LogOn(); }

    Folder& At(const wchar_t* path, const wchar_t* store = L"Front Desk") {
        return FolderAt(World(), store, path);
    }
    void Open(const wchar_t* path) { ASSERT_EQ(Call(L"VARD_OpenFolder", {path}), L"0"); }
    std::wstring Subject() { return Call(L"VARD_GetFieldData", {L"Subject"}); }
    std::wstring AddMail(const wchar_t* subject, const wchar_t* folder = L"Inbox") {
        return ToHex(AddMessage(At(folder), {.subject = subject})->EntryId());
    }
    /// The subjects of a walk from the first record to the end.
    std::vector<std::wstring> Walk() {
        std::vector<std::wstring> subjects;
        for (std::wstring id = Call(L"VARD_GetFirstRecord"); id != L"End"; id = Call(L"VARD_GetNextRecord")) {
            subjects.push_back(id == kError ? id : Subject());
            if (subjects.size() > 100) {
                break;
            }
        }
        return subjects;
    }
    using Subjects = std::vector<std::wstring>;
};

TEST_F(RecordTest, EveryKindOfItemIsWalkedAndOpenedWithItsMessage) {
    std::map<std::wstring, std::wstring> classById;
    for (const wchar_t* messageClass : kItemClasses) {
        const auto message =
            AddMessage(At(L"Inbox"), {.messageClass = messageClass, .subject = messageClass});
        classById[ToHex(message->EntryId())] = messageClass;
    }
    Open(L"/Inbox");
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), std::to_wstring(kItemClasses.size()));
    std::vector<std::wstring> walked;
    for (std::wstring id = Call(L"VARD_GetFirstRecord"); id != L"End"; id = Call(L"VARD_GetNextRecord")) {
        ASSERT_NE(id, kError) << testing::PrintToString(LastErrorText());
        walked.push_back(id);
        EXPECT_EQ(Call(L"VARD_GetFieldData", {L"Message Class"}), classById[id]);
    }
    EXPECT_EQ(walked.size(), kItemClasses.size());
    for (const auto& [id, messageClass] : classById) {
        EXPECT_EQ(Call(L"VARD_OpenRecord", {id}), L"0") << testing::PrintToString(messageClass);
        EXPECT_EQ(Call(L"VARD_GetFieldData", {L"Message Class"}), messageClass);
    }
}

TEST_F(RecordTest, AWalkGoesFromTheFirstRecordToTheEndAndStaysThere) {
    Open(L"/Inbox");
    EXPECT_EQ(Call(L"VARD_GetFirstRecord"), L"End");
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), L"End");
    const std::wstring one = AddMail(L"one");
    const std::wstring two = AddMail(L"two");
    EXPECT_EQ(Call(L"VARD_GetFirstRecord"), one);
    EXPECT_EQ(Subject(), L"one");
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), two);
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), L"End");
    ExpectFailure(L"VARD_GetFieldData", {L"Subject"}, -1038,
                  L"Unable to locate record\rno current message selected"); // the end lets the record go
    const std::wstring three = AddMail(L"three");
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), three); // a record that came since
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), L"End");
}

TEST_F(RecordTest, AnItemOfNoKnownKindIsToldAndSteppedPast) {
    AddMail(L"one");
    AddMessage(At(L"Inbox"), {.messageClass = L"IPM.Note.Strange", .subject = L"strange"});
    AddMail(L"two");
    Outlook().SetUnknownClass(L"IPM.Note.Strange");
    Open(L"/Inbox");
    EXPECT_EQ(Walk(), (Subjects{L"one", kError, L"two"}));
    Call(L"VARD_GetFirstRecord");
    ExpectFailure(L"VARD_GetNextRecord", {}, -1095, L"Item is not supported in this version of the plug-in");
    const std::wstring strange = ToHex(At(L"Inbox").Messages()[1]->EntryId());
    EXPECT_EQ(Call(L"VARD_OpenRecord", {strange}), L"!!ERROR!! ");
    EXPECT_EQ(LastErrorCode(), -1095);
}

TEST_F(RecordTest, OpeningARecordMovesToItsFolderAndEndsTheWalk) {
    const std::wstring id = AddMail(L"archived", L"Sent Items");
    AddMail(L"another", L"Sent Items");
    Open(L"/Inbox");
    AddMail(L"one");
    EXPECT_EQ(Call(L"VARD_OpenRecord", {id}), L"0");
    EXPECT_EQ(Subject(), L"archived");
    EXPECT_EQ(Call(L"VARD_GetCurrentFolderName"), L"Sent Items");
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), kError); // there is no list
    EXPECT_EQ(LastErrorCode(), 999);
    EXPECT_TRUE(LastErrorText().starts_with(L"\rError: 80004003\nMessage:"))
        << testing::PrintToString(LastErrorText());
    EXPECT_EQ(Call(L"VARD_OpenRecord", {id}), L"0");
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"2");
    EXPECT_NE(Call(L"VARD_GetNextRecord"), kError); // the second record of its folder
    EXPECT_EQ(Subject(), L"another");
}

TEST_F(RecordTest, ARecordThatCannotBeOpenedIsTold) {
    ExpectFailure(L"VARD_OpenRecord", {L""}, -1024, L"Invalid Outlook ID");
    std::wstring gone = AddMail(L"gone");
    At(L"Inbox").RemoveMessage(*At(L"Inbox").Messages().front());
    for (const std::wstring& id :
         {gone, std::wstring(L"00"), std::wstring(L"not hexadecimal"), gone + L"00"}) {
        EXPECT_EQ(Call(L"VARD_OpenRecord", {id}), kError);
        EXPECT_EQ(LastErrorCode(), -1027);
        EXPECT_TRUE(LastErrorText().starts_with(L"Outlook Entry ID not found\rError: 8"))
            << testing::PrintToString(LastErrorText());
    }
    EXPECT_EQ(Call(L"VARD_OpenSavedItem", {L"C:\\no such file.msg"}), kError);
    EXPECT_EQ(LastErrorCode(), -1016);
}

TEST_F(RecordTest, WithoutARootFolderNoRecordIsOpened) {
    const std::wstring id = AddMail(L"one");
    // A root folder walk that fails leaves none.
    Varden().Watch().FailMember(L"Folders::Item", E_FAIL);
    EXPECT_EQ(Call(L"VARD_GetFirstRootFolder"), kError);
    ExpectFailure(L"VARD_OpenRecord", {id}, -1018, L"Root folder not selected");
}

TEST_F(RecordTest, NewRecordsAreMadeInTheDefaultFolderOfTheirModule) {
    const std::vector<std::tuple<const wchar_t*, const wchar_t*, const wchar_t*>> modules{
        {L"Contacts", L"Contacts", L"IPM.Contact"}, {L"CALENDAR", L"Calendar", L"IPM.Appointment"},
        {L"Tasks", L"Tasks", L"IPM.Task"},          {L"Task Request", L"Tasks", L"IPM.Task"},
        {L"Mail", L"Outbox", L"IPM.Note"},          {L"Journal", L"Journal", L"IPM.Activity"},
        {L"Post", L"Inbox", L"IPM.Post"},           {L"distribution list", L"Contacts", L"IPM.DistList"},
        {L"Note", L"Notes", L"IPM.StickyNote"},
    };
    for (const auto& [module, folder, messageClass] : modules) {
        LogOn(); // no folder is current
        EXPECT_EQ(Call(L"VARD_NewRecord", {module}), L"0") << testing::PrintToString(LastErrorText());
        EXPECT_EQ(Call(L"VARD_GetCurrentFolderName"), folder);
        EXPECT_EQ(Call(L"VARD_GetFieldData", {L"Message Class"}), messageClass);
    }
    EXPECT_EQ(At(L"Notes").Messages().size(), 1u); // only a note is saved at once
    EXPECT_TRUE(At(L"Contacts").Messages().empty());
}

TEST_F(RecordTest, ANewRecordIsMadeInTheCurrentFolderWhateverItsType) {
    Open(L"/Calendar");
    EXPECT_EQ(Call(L"VARD_NewRecord"), L"0");
    EXPECT_EQ(Call(L"VARD_GetFieldData", {L"Message Class"}), L"IPM.Appointment");
    EXPECT_EQ(Call(L"VARD_NewRecord", {L"Mail"}), L"0");
    EXPECT_EQ(Call(L"VARD_SetFieldData", {L"Flag Status", L"Marked"}), L"0"); // saves the mail
    EXPECT_EQ(Call(L"VARD_GetCurrentFolderName"), L"Calendar");
    ASSERT_EQ(At(L"Calendar").Messages().size(), 1u);
    EXPECT_EQ(At(L"Calendar").Messages().front()->Current().properties.GetOr<PR_MESSAGE_CLASS_W>({}),
              L"IPM.Note");
}

TEST_F(RecordTest, WhatCannotBeMadeIsTold) {
    ExpectFailure(L"VARD_NewRecord", {L"Mails"}, -1021, L"Invalid module name called");
    Open(L"/Inbox");
    Varden().Watch().FailMember(L"MAPIFolder::DefaultItemType", E_FAIL);
    ExpectFailure(
        L"VARD_NewRecord", {}, -1097,
        L"MAPI Subsystem error\rError: 80004005\rMAPI_E_CALL_FAILED\rERROR: 80004005 MAPI CALL FAILED");
    Varden().Watch().FailMember(L"NameSpace::GetDefaultFolder",
                                MAPI_E_NOT_FOUND); // the drafts, which nothing reads
    EXPECT_EQ(Call(L"VARD_NewRecord", {L"Mail"}), kError);
}

TEST_F(RecordTest, AFilterNarrowsTheListAndOutlivesTheWalk) {
    for (const wchar_t* subject : {L"red", L"blue", L"red again", L"green"}) {
        AddMail(subject);
    }
    Open(L"/Inbox");
    EXPECT_EQ(Call(L"VARD_FilterByFilterString", {L"[Subject] = 'red'"}), L"0");
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"1");
    EXPECT_EQ(Walk(), Subjects{L"red"});
    EXPECT_EQ(Walk(), Subjects{L"red"}); // a fresh walk applies it again
    EXPECT_EQ(Call(L"VARD_FilterByFilterString", {L"[Subject] = 'blue'"}), L"0");
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"0"); // narrowed twice
    EXPECT_EQ(Walk(), Subjects{L"blue"});          // only the second is remembered
    Open(L"/Inbox");
    EXPECT_EQ(Walk().size(), 4u); // opening a folder clears it
    EXPECT_EQ(Call(L"VARD_FilterByFilterString", {L"[Subject] = 'none'"}), L"0");
    EXPECT_EQ(Call(L"VARD_GetFirstRecord"), L"End");
    Call(L"VARD_OpenRootFolder", {L"Front Desk"});
    ExpectFailure(L"VARD_FilterByFilterString", {L"[Subject] = 'red'"}, -1026,
                  L"Must navigate to a folder before operation");
}

TEST_F(RecordTest, AFilterOutlivesTheFolderWalkAndTheOpeningOfARecord) {
    const std::wstring id = AddMail(L"red");
    AddMail(L"blue");
    AddMail(L"red", L"Sent Items");
    Open(L"/Inbox");
    EXPECT_EQ(Call(L"VARD_FilterByFilterString", {L"[Subject] = 'red'"}), L"0");
    EXPECT_EQ(Call(L"VARD_OpenRecord", {id}), L"0");
    ExpectFailure(L"VARD_FilterByFilterString", {L"[Subject] = 'red'"}, -1026,
                  L"Must navigate to a folder before operation"); // there is no list to filter
    EXPECT_EQ(Walk(), Subjects{L"red"});
    for (std::wstring path = Call(L"VARD_GetFirstFolder"); path != L"End";
         path = Call(L"VARD_GetNextFolder")) {
        EXPECT_EQ(Walk(), path == L"/Inbox" || path == L"/Sent Items" ? Subjects{L"red"} : Subjects{});
    }
}

TEST_F(RecordTest, AFilterThatOutlookRefusesChangesNothing) {
    AddMail(L"red");
    AddMail(L"blue");
    Open(L"/Inbox");
    EXPECT_EQ(Call(L"VARD_FilterByFilterString", {L"[Subject] = 'red'"}), L"0");
    for (const wchar_t* filter : {L"[Subject", L"[No Such Field] = 1", L"[Subject] ~ 'x'", L"''", L""}) {
        EXPECT_EQ(Call(L"VARD_FilterByFilterString", {filter}), kError) << testing::PrintToString(filter);
        EXPECT_EQ(LastErrorCode(), 999);
        EXPECT_TRUE(LastErrorText().starts_with(L"\rError: ")) << testing::PrintToString(LastErrorText());
        EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"1");
    }
    Varden().Watch().FailMember(L"Items::Restrict", S_FALSE); // a success without a list
    ExpectFailure(L"VARD_FilterByFilterString", {L"[Subject] = 'blue'"}, -1200, L"Unable to restrict items");
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"1");
    EXPECT_EQ(Walk(), Subjects{L"red"});
}

TEST_F(RecordTest, ByLastModificationLaterRecordsAreFound) {
    const auto modified = [&](const wchar_t* subject, WORD year) {
        SYSTEMTIME time{year, 6, 0, 15, 12, 0, 0, 0};
        FILETIME ticks;
        SystemTimeToFileTime(&time, &ticks);
        MessageToAdd mail{.subject = subject};
        mail.more.Set<PR_LAST_MODIFICATION_TIME>(
            SysTime{(static_cast<std::uint64_t>(ticks.dwHighDateTime) << 32) | ticks.dwLowDateTime});
        AddMessage(At(L"Inbox"), mail);
    };
    modified(L"old", 2019);
    modified(L"new", 2024);
    Open(L"/Inbox");
    EXPECT_EQ(Call(L"VARD_FilterByLastModified", {L"1/15/2021 3:45:10 PM"}), L"0")
        << testing::PrintToString(LastErrorText());
    EXPECT_EQ(Walk(), Subjects{L"new"});
    EXPECT_EQ(Call(L"VARD_FilterByLastModified", {L"no date"}), kError);
    EXPECT_EQ(LastErrorCode(), 999);
}

TEST_F(RecordTest, ACountNeedsAListOrAFolder) {
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), kError);
    EXPECT_EQ(LastErrorCode(), 0);
    EXPECT_TRUE(LastErrorText().starts_with(L"Error: 80004003"));
    const std::wstring id = AddMail(L"one");
    Open(L"/Inbox");
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"1");
    EXPECT_EQ(Call(L"VARD_OpenRecord", {id}), L"0"); // leaves no list
    Varden().Watch().FailMember(L"MAPIFolder::Items", S_FALSE);
    ExpectFailure(L"VARD_GetRecordCount", {}, -1028, L"Unable to find records");
}

} // namespace
} // namespace varden::tests
