// Records made and opened, the walk over a folder, filters.
#include "FieldTest.h"
#include "ItemClasses.h"
#include "MailboxTest.h"

#include <map>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class RecordTest : public MailboxTest {
protected:
    std::wstring AddMail(const wchar_t* subject, const wchar_t* folder = L"Inbox") {
        return Add({.subject = subject}, folder);
    }
    void Filter(const wchar_t* filter) { ExpectSuccess(L"VARD_FilterByFilterString", {filter}); }
    /// The subjects of a walk from the first record to the end.
    std::vector<std::wstring> Walk() {
        std::vector<std::wstring> subjects;
        for (std::wstring id = Call(L"VARD_GetFirstRecord"); id != L"End"; id = Call(L"VARD_GetNextRecord")) {
            subjects.push_back(id == kError ? id : Get(L"Subject"));
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
        classById[Add({.messageClass = messageClass})] = messageClass;
    }
    Open(L"/Inbox");
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), std::to_wstring(kItemClasses.size()));
    std::size_t walked = 0;
    for (std::wstring id = Call(L"VARD_GetFirstRecord"); id != L"End"; id = Call(L"VARD_GetNextRecord")) {
        ASSERT_NE(id, kError) << testing::PrintToString(LastErrorText());
        ++walked;
        EXPECT_EQ(Get(L"Message Class"), classById[id]);
    }
    EXPECT_EQ(walked, kItemClasses.size());
    for (const auto& [id, messageClass] : classById) {
        OpenRecord(id);
        EXPECT_EQ(Get(L"Message Class"), messageClass);
    }
}

TEST_F(RecordTest, AWalkGoesFromTheFirstRecordToTheEndAndStaysThere) {
    Open(L"/Inbox");
    EXPECT_EQ(Call(L"VARD_GetFirstRecord"), L"End");
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), L"End");
    const std::wstring one = AddMail(L"one");
    const std::wstring two = AddMail(L"two");
    EXPECT_EQ(Call(L"VARD_GetFirstRecord"), one);
    EXPECT_EQ(Get(L"Subject"), L"one");
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), two);
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), L"End");
    ExpectNoCurrentRecord(); // the end lets the record go
    const std::wstring three = AddMail(L"three");
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), three); // a record that came since
    EXPECT_EQ(Call(L"VARD_GetNextRecord"), L"End");
}

TEST_F(RecordTest, AnItemOfNoKnownKindIsToldAndSteppedPast) {
    AddMail(L"one");
    const std::wstring strange = Add({.messageClass = L"IPM.Note.Strange"});
    AddMail(L"two");
    Outlook().SetUnknownClass(L"IPM.Note.Strange");
    Open(L"/Inbox");
    EXPECT_EQ(Walk(), (Subjects{L"one", kError, L"two"}));
    Call(L"VARD_GetFirstRecord");
    ExpectFailure(L"VARD_GetNextRecord", {}, errors::kUnknownKind);
    EXPECT_EQ(Call(L"VARD_OpenRecord", {strange}), L"!!ERROR!! ");
    EXPECT_EQ(LastErrorCode(), -1095);
}

TEST_F(RecordTest, OpeningARecordMovesToItsFolderAndEndsTheWalk) {
    const std::wstring id = AddMail(L"archived", L"Sent Items");
    AddMail(L"another", L"Sent Items");
    Open(L"/Inbox");
    AddMail(L"one");
    OpenRecord(id);
    EXPECT_EQ(Get(L"Subject"), L"archived");
    EXPECT_EQ(Call(L"VARD_GetCurrentFolderName"), L"Sent Items");
    // There is no list.
    ExpectFailureLike(L"VARD_GetNextRecord", {}, {999, L"\rError: 80004003\nMessage:"});
    OpenRecord(id);
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"2");
    EXPECT_NE(Call(L"VARD_GetNextRecord"), kError); // the second record of its folder
    EXPECT_EQ(Get(L"Subject"), L"another");
}

TEST_F(RecordTest, ARecordThatCannotBeOpenedIsTold) {
    ExpectFailure(L"VARD_OpenRecord", {L""}, errors::kInvalidId);
    std::wstring gone = AddMail(L"gone");
    At(L"Inbox").RemoveMessage(*At(L"Inbox").Messages().front());
    for (const std::wstring& id :
         {gone, std::wstring(L"00"), std::wstring(L"not hexadecimal"), gone + L"00"}) {
        ExpectFailureLike(L"VARD_OpenRecord", {id}, {-1027, L"Outlook Entry ID not found\rError: 8"});
    }
}

TEST_F(RecordTest, WithoutARootFolderNoRecordIsOpened) {
    const std::wstring id = AddMail(L"one");
    // A root folder walk that fails leaves none.
    Fail(L"Folders::Item", E_FAIL);
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
        New(module);
        EXPECT_EQ(Call(L"VARD_GetCurrentFolderName"), folder);
        EXPECT_EQ(Get(L"Message Class"), messageClass);
    }
    EXPECT_EQ(At(L"Notes").Messages().size(), 1u); // only a note is saved at once
    EXPECT_TRUE(At(L"Contacts").Messages().empty());
}

TEST_F(RecordTest, ANewRecordIsMadeInTheCurrentFolderWhateverItsType) {
    Open(L"/Calendar");
    EXPECT_EQ(Call(L"VARD_NewRecord"), L"0");
    EXPECT_EQ(Get(L"Message Class"), L"IPM.Appointment");
    New(L"Mail");
    EXPECT_EQ(Set(L"Flag Status", L"Marked"), L"0"); // saves the mail
    EXPECT_EQ(Call(L"VARD_GetCurrentFolderName"), L"Calendar");
    ASSERT_EQ(At(L"Calendar").Messages().size(), 1u);
    EXPECT_EQ(At(L"Calendar").Messages().front()->Current().properties.GetOr<PR_MESSAGE_CLASS_W>({}),
              L"IPM.Note");
}

TEST_F(RecordTest, WhatCannotBeMadeIsTold) {
    ExpectFailure(L"VARD_NewRecord", {L"Mails"}, -1021, L"Invalid module name called");
    Open(L"/Inbox");
    ExpectFaults(
        L"VARD_NewRecord", {},
        {{L"MAPIFolder::DefaultItemType",
          errors::Mapi(L"Error: 80004005\rMAPI_E_CALL_FAILED\rERROR: 80004005 MAPI CALL FAILED"), E_FAIL}});
    Fail(L"NameSpace::GetDefaultFolder", MAPI_E_NOT_FOUND); // the drafts, which nothing reads
    EXPECT_EQ(Call(L"VARD_NewRecord", {L"Mail"}), kError);
}

TEST_F(RecordTest, AFilterNarrowsTheListAndOutlivesTheWalk) {
    for (const wchar_t* subject : {L"red", L"blue", L"red again", L"green"}) {
        AddMail(subject);
    }
    Open(L"/Inbox");
    Filter(L"[Subject] = 'red'");
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"1");
    EXPECT_EQ(Walk(), Subjects{L"red"});
    EXPECT_EQ(Walk(), Subjects{L"red"}); // a fresh walk applies it again
    Filter(L"[Subject] = 'blue'");
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"0"); // narrowed twice
    EXPECT_EQ(Walk(), Subjects{L"blue"});          // only the second is remembered
    Open(L"/Inbox");
    EXPECT_EQ(Walk().size(), 4u); // opening a folder clears it
    Filter(L"[Subject] = 'none'");
    EXPECT_EQ(Call(L"VARD_GetFirstRecord"), L"End");
    Call(L"VARD_OpenRootFolder", {L"Front Desk"});
    ExpectFailure(L"VARD_FilterByFilterString", {L"[Subject] = 'red'"}, errors::kNoFolder);
}

TEST_F(RecordTest, AFilterOutlivesTheFolderWalkAndTheOpeningOfARecord) {
    const std::wstring id = AddMail(L"red");
    AddMail(L"blue");
    AddMail(L"red", L"Sent Items");
    Open(L"/Inbox");
    Filter(L"[Subject] = 'red'");
    OpenRecord(id);
    ExpectFailure(L"VARD_FilterByFilterString", {L"[Subject] = 'red'"},
                  errors::kNoFolder); // there is no list to filter
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
    Filter(L"[Subject] = 'red'");
    for (const wchar_t* filter : {L"[Subject", L"[No Such Field] = 1", L"[Subject] ~ 'x'", L"''", L""}) {
        ExpectFailureLike(L"VARD_FilterByFilterString", {filter}, {999, L"\rError: "});
        EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"1");
    }
    ExpectFaults(L"VARD_FilterByFilterString", {L"[Subject] = 'blue'"}, // a success without a list
                 {{L"Items::Restrict", {-1200, L"Unable to restrict items"}, S_FALSE}});
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"1");
    EXPECT_EQ(Walk(), Subjects{L"red"});
}

TEST_F(RecordTest, ByLastModificationLaterRecordsAreFound) {
    const auto modified = [&](const wchar_t* subject, WORD year) {
        MessageToAdd mail{.subject = subject};
        mail.more.Set<PR_LAST_MODIFICATION_TIME>(Utc(year, 6, 15));
        AddMessage(At(L"Inbox"), mail);
    };
    modified(L"old", 2019);
    modified(L"new", 2024);
    Open(L"/Inbox");
    ExpectSuccess(L"VARD_FilterByLastModified", {L"1/15/2021 3:45:10 PM"});
    EXPECT_EQ(Walk(), Subjects{L"new"});
    ExpectFailureLike(L"VARD_FilterByLastModified", {L"no date"}, {999, L"\rError: "});
}

TEST_F(RecordTest, ACountNeedsAListOrAFolder) {
    ExpectFailureLike(L"VARD_GetRecordCount", {}, {0, L"Error: 80004003"});
    const std::wstring id = AddMail(L"one");
    Open(L"/Inbox");
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"1");
    OpenRecord(id); // leaves no list
    Fail(L"MAPIFolder::Items", S_FALSE);
    ExpectFailure(L"VARD_GetRecordCount", {}, errors::kNoRecords);
}

} // namespace
} // namespace varden::tests
