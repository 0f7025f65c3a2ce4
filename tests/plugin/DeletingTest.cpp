// Records deleted: the one that a walk stands on, one by its id, all of a folder, and the Deleted Items.
#include "FieldTest.h"
#include "ItemClasses.h"
#include "MailboxTest.h"

#include <algorithm>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

using Subjects = std::vector<std::wstring>;

constexpr const wchar_t* kDeleted = L"Deleted Items";

class DeletingTest : public MailboxTest {
protected:
    std::wstring Add(const wchar_t* subject, const wchar_t* folder = L"Inbox",
                     const wchar_t* messageClass = L"IPM.Note") {
        return MailboxTest::Add({.messageClass = messageClass, .subject = subject}, folder);
    }
    void FillInbox(std::initializer_list<const wchar_t*> subjects) {
        for (const wchar_t* subject : subjects) {
            Add(subject);
        }
        Open(L"/Inbox");
    }
    /// A walk that stands on the record of this number, from 1.
    void WalkTo(int number) {
        Call(L"VARD_GetFirstRecord");
        for (int i = 1; i < number; ++i) {
            Call(L"VARD_GetNextRecord");
        }
    }
    void DeleteAt(int number, const wchar_t* permanent) {
        WalkTo(number);
        ExpectSuccess(L"VARD_DeleteCurrentRecord", {permanent});
    }
    void EmptyFolder() { ExpectSuccess(L"VARD_DeleteAllRecords", {L"no", L"no"}); }
};

TEST_F(DeletingTest, AWalkGoesOnBehindTheRecordThatWasDeleted) {
    for (const wchar_t* permanent : {L"no", L"yes"}) {
        FillInbox({L"1", L"2", L"3", L"4", L"5"});
        DeleteAt(3, permanent);
        ExpectNoCurrentRecord();
        Call(L"VARD_GetNextRecord");
        EXPECT_EQ(Get(L"Subject"), L"4");
        DeleteAt(1, permanent);
        Call(L"VARD_GetNextRecord");
        EXPECT_EQ(Get(L"Subject"), L"2");
        DeleteAt(3, permanent);
        EXPECT_EQ(Call(L"VARD_GetNextRecord"), L"End");
        EXPECT_EQ(SubjectsIn(L"Inbox"), (Subjects{L"2", L"4"}));
        EmptyFolder();
    }
    EXPECT_EQ(SubjectsIn(kDeleted), (Subjects{L"3", L"1", L"5"})); // those that were not deleted for good
}

TEST_F(DeletingTest, OnlyWhatTheFilterShowsIsDeleted) {
    FillInbox({L"red", L"blue", L"red", L"red"});
    EXPECT_EQ(Call(L"VARD_FilterByFilterString", {L"[Subject] = 'red'"}), L"0");
    DeleteAt(2, L"1");
    Call(L"VARD_GetNextRecord");
    EXPECT_EQ(Get(L"Subject"), L"red");
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"2");
    EmptyFolder();
    EXPECT_EQ(SubjectsIn(L"Inbox"), Subjects{L"blue"});
}

TEST_F(DeletingTest, EveryKindIsDeletedWhereTheWalkStands) {
    for (const wchar_t* messageClass : kItemClasses) {
        for (const wchar_t* permanent : {L"no", L"yes"}) {
            Add(messageClass, L"Inbox", messageClass);
            Open(L"/Inbox");
            DeleteAt(1, permanent);
            EXPECT_TRUE(At(L"Inbox").Messages().empty()) << testing::PrintToString(messageClass);
        }
    }
    EXPECT_EQ(SubjectsIn(kDeleted).size(), kItemClasses.size());
}

TEST_F(DeletingTest, RightAfterOpeningARecordThereIsNoListToRemoveItFrom) {
    const std::wstring id = Add(L"stays");
    OpenRecord(id);
    ExpectFailure(L"VARD_DeleteCurrentRecord", {L"yes"}, errors::kUnhandled);
    EXPECT_EQ(SubjectsIn(L"Inbox"), Subjects{L"stays"});
    OpenRecord(id);
    ExpectSuccess(L"VARD_DeleteCurrentRecord", {L"no"});
    EXPECT_EQ(SubjectsIn(kDeleted), Subjects{L"stays"});
}

TEST_F(DeletingTest, WithoutARecordNothingIsDeleted) {
    FillInbox({L"1"});
    ExpectFailure(L"VARD_DeleteCurrentRecord", {L"no"}, errors::kNoRecord);
    WalkTo(1);
    Fail(L"MailItem::Delete");
    ExpectFailureLike(L"VARD_DeleteCurrentRecord", {L"no"}, {0, L"Error: 80070005"});
    EXPECT_EQ(SubjectsIn(L"Inbox"), Subjects{L"1"});
}

TEST_F(DeletingTest, EveryKindButTwoIsDeletedByItsId) {
    for (const wchar_t* messageClass : kItemClasses) {
        const std::wstring trashed = Add(messageClass, L"Inbox", messageClass);
        const std::wstring removed = Add(messageClass, L"Journal", messageClass);
        if (std::wstring_view(messageClass) == L"IPM.Sharing") {
            for (const wchar_t* permanent : {L"no", L"yes"}) {
                ExpectFailure(L"VARD_DeleteRecord", {trashed, permanent}, errors::kNoRecord);
            }
            continue;
        }
        EXPECT_EQ(Call(L"VARD_DeleteRecord", {trashed}), L"0") << testing::PrintToString(messageClass);
        EXPECT_EQ(SubjectsIn(kDeleted).back(), messageClass);
        if (std::wstring_view(messageClass) == L"IPM.Post") { // never found among its folder's records
            ExpectFailure(L"VARD_DeleteRecord", {removed, L"yes"}, errors::kNoRecords);
            continue;
        }
        EXPECT_EQ(Call(L"VARD_DeleteRecord", {removed, L"yes"}), L"0")
            << testing::PrintToString(messageClass);
    }
    EXPECT_EQ(SubjectsIn(L"Inbox"), Subjects{L"IPM.Sharing"});
    EXPECT_EQ(SubjectsIn(L"Journal"), (Subjects{L"IPM.Post", L"IPM.Sharing"}));
}

TEST_F(DeletingTest, TheFirstLetterOfAWordSaysWhetherARecordGoesForGood) {
    std::size_t trashed = 0;
    for (const wchar_t* word : {L"", L"No", L"0", L"false", L"2", L" yes", L"on"}) {
        EXPECT_EQ(Call(L"VARD_DeleteRecord", {Add(L"x"), word}), L"0");
        EXPECT_EQ(SubjectsIn(kDeleted).size(), ++trashed) << testing::PrintToString(word);
    }
    for (const wchar_t* word : {L"Yes", L"y", L"TRUE", L"t", L"1", L"1000", L"Tomorrow"}) {
        Add(L"before");
        const std::wstring id = Add(L"x");
        Add(L"behind");
        EXPECT_EQ(Call(L"VARD_DeleteRecord", {id, word}), L"0");
        EXPECT_EQ(SubjectsIn(kDeleted).size(), trashed) << testing::PrintToString(word);
        EXPECT_EQ(SubjectsIn(L"Inbox"), (Subjects{L"before", L"behind"}));
        EXPECT_EQ(Call(L"VARD_GetCurrentFolderName"), L"Inbox");
        EmptyFolder();
    }
}

TEST_F(DeletingTest, ARecordThatIsNotFoundByItsIdIsTold) {
    ExpectFailure(L"VARD_DeleteRecord", {L""}, errors::kInvalidId);
    EXPECT_EQ(Call(L"VARD_DeleteRecord", {L"00"}), kError);
    EXPECT_EQ(LastErrorCode(), -1027);
    Outlook().SetUnknownClass(L"IPM.Note.Strange");
    EXPECT_EQ(Call(L"VARD_DeleteRecord", {Add(L"strange", L"Inbox", L"IPM.Note.Strange")}), L"!!ERROR!! ");
    EXPECT_EQ(LastErrorCode(), -1095);
    std::wstring lower = Add(L"x");
    std::transform(lower.begin(), lower.end(), lower.begin(), towlower);
    // Outlook opens it; among the folder's records the id is compared as it is written.
    ExpectFailure(L"VARD_DeleteRecord", {lower, L"yes"}, errors::kNoRecords);
    EXPECT_EQ(SubjectsIn(L"Inbox"), (Subjects{L"strange", L"x"}));
}

TEST_F(DeletingTest, StepsOfDeletingByIdThatOutlookRefusesAreTold) {
    const std::wstring id = Add(L"x");
    const auto [code, noRecord] = errors::kNoRecord;
    ExpectFaults(L"VARD_DeleteRecord", {id},
                 {{L"MailItem::Delete", {code, noRecord + L"\rError: 80070005\rFailed to delete item"}}});
    constexpr std::uint64_t behindTheOpening = 2;
    ExpectFaults(
        L"VARD_DeleteRecord", {id, L"yes"},
        {{L"MailItem::Parent",
          {code, noRecord + L"\rError: 80070005\rFailed to access parent folder for permanent deletion"},
          E_ACCESSDENIED,
          behindTheOpening}});
    EXPECT_EQ(SubjectsIn(L"Inbox"), Subjects{L"x"});
}

TEST_F(DeletingTest, AStandingFilterTurnsTheAnswerThoughTheRecordHasGone) {
    FillInbox({L"x"});
    for (const wchar_t* word : {L"no", L"yes"}) {
        const std::wstring id = Add(L"x");
        Open(L"/Inbox");
        EXPECT_EQ(Call(L"VARD_FilterByFilterString", {L"[Subject] = 'x'"}), L"0");
        ExpectFailure(L"VARD_DeleteRecord", {id, word}, errors::kNoFolder);
        EXPECT_EQ(SubjectsIn(L"Inbox").size(), 1u);
    }
}

TEST_F(DeletingTest, AFolderIsEmptiedForGood) {
    ExpectFailure(L"VARD_DeleteAllRecords", {L"no", L"no"}, errors::kNoFolder);
    FillInbox({});
    EmptyFolder();
    FillInbox({L"1", L"2", L"3"});
    EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"no"}), L"0");
    EXPECT_EQ(SubjectsIn(L"Inbox"), Subjects{});
    EXPECT_EQ(SubjectsIn(kDeleted), Subjects{});
    FillInbox({L"1"});
    Add(L"strange", L"Inbox", L"IPM.Note.Strange");
    Add(L"2");
    Outlook().SetUnknownClass(L"IPM.Note.Strange");
    Open(L"/Inbox");
    ExpectFailure(L"VARD_DeleteAllRecords", {L"no", L"no"}, errors::kUnknownKind);
    EXPECT_EQ(SubjectsIn(L"Inbox"), (Subjects{L"strange", L"2"})); // up to there
}

TEST_F(DeletingTest, PrivateRecordsCanBeKept) {
    for (const std::int32_t sensitivity : {0, 1, 2, 3}) {
        MessageToAdd mail{.subject = std::to_wstring(sensitivity)};
        mail.more.Set<PR_SENSITIVITY>(sensitivity);
        AddMessage(At(L"Inbox"), mail);
    }
    Open(L"/Inbox");
    EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"yes", L"no"}), L"0");
    EXPECT_EQ(SubjectsIn(L"Inbox"), Subjects{L"2"});
    EmptyFolder();
    EXPECT_EQ(SubjectsIn(L"Inbox"), Subjects{});
}

TEST_F(DeletingTest, ListsAndTheContactsOnThemCanBeKept) {
    const auto member = AddMessage(At(L"Contacts"), {.messageClass = L"IPM.Contact", .subject = L"member"});
    Add(L"stranger", L"Contacts", L"IPM.Contact");
    // How an entry of a list leads to its contact: a wrapper of 21 bytes before the contact's entry id.
    Bytes entry(21, 0xC3);
    const Bytes id = member->EntryId();
    entry.insert(entry.end(), id.begin(), id.end());
    constexpr std::uint32_t members = 0x8055;
    const PropertyId membersId = World().DefaultStore()->Names().Id({sets::kAddress, members}, true);
    MessageToAdd list{.messageClass = L"IPM.DistList", .subject = L"list"};
    list.more.Put(MakeTag(membersId, PT_MV_BINARY), std::vector<Bytes>{entry});
    AddMessage(At(L"Contacts"), list);
    Open(L"/Contacts");
    EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"no", L"yes"}), L"0");
    EXPECT_EQ(SubjectsIn(L"Contacts"), (Subjects{L"member", L"list"}));
    EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"yes", L"no"}), L"0");
    EXPECT_EQ(SubjectsIn(L"Contacts"), Subjects{});
}

TEST_F(DeletingTest, AListWhoseMembersCannotBeReadKeepsEverything) {
    Add(L"stranger", L"Contacts", L"IPM.Contact");
    Add(L"never had a member", L"Contacts", L"IPM.DistList");
    Open(L"/Contacts");
    ExpectFailure(L"VARD_DeleteAllRecords", {L"no", L"yes"}, errors::NotFound(L"ERROR: 8004010F NOT FOUND"));
    Fail(L"DistListItem::MAPIOBJECT", E_FAIL);
    EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"no", L"yes"}), kError);
    ExpectFaults(L"VARD_DeleteAllRecords", {L"no", L"yes"},
                 {{L"IMessage::QueryInterface",
                   errors::NoInterface(L"ERROR: 80004002 INTERFACE NOT SUPPORTED"), E_NOINTERFACE}});
    Fail(L"IMessage::GetIDsFromNames", E_FAIL);
    EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"no", L"yes"}), L"0"); // nothing was deleted all the same
    EXPECT_EQ(SubjectsIn(L"Contacts"), (Subjects{L"stranger", L"never had a member"}));
}

TEST_F(DeletingTest, TheDeletedItemsAreEmptiedWhateverFolderIsOpen) {
    EXPECT_EQ(Call(L"VARD_EmptyAllDeletedItems"), L"0");
    for (const wchar_t* messageClass : kItemClasses) {
        Add(messageClass, kDeleted, messageClass);
    }
    FillInbox({L"1", L"2"});
    WalkTo(1);
    EXPECT_EQ(Call(L"VARD_EmptyAllDeletedItems"), L"0");
    EXPECT_EQ(SubjectsIn(kDeleted), Subjects{});
    EXPECT_EQ(Get(L"Subject"), L"1"); // the record and the walk stay
    Call(L"VARD_GetNextRecord");
    EXPECT_EQ(Get(L"Subject"), L"2");
}

} // namespace
} // namespace varden::tests
