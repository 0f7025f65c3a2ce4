// Records deleted: the one that a walk stands on, one by its id, all of a folder, and the Deleted Items.
#include "FieldTest.h"
#include "ItemClasses.h"

#include <algorithm>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

constexpr const wchar_t* kNoRecord = L"Item operation called without opening/creating a record";

class DeletingTest : public ScriptTest {
protected:
    void SetUp() override { LogOn(); }

    Folder& At(const wchar_t* path) { return FolderAt(World(), L"Front Desk", path); }
    void Open(const wchar_t* path) { ASSERT_EQ(Call(L"VARD_OpenFolder", {path}), L"0"); }
    std::wstring Subject() { return Call(L"VARD_GetFieldData", {L"Subject"}); }
    std::wstring Add(const wchar_t* subject, const wchar_t* folder = L"Inbox",
                     const wchar_t* messageClass = L"IPM.Note") {
        return ToHex(AddMessage(At(folder), {.messageClass = messageClass, .subject = subject})->EntryId());
    }
    using Subjects = std::vector<std::wstring>;
    Subjects In(const wchar_t* path) {
        Subjects subjects;
        for (const Message* message : At(path).Messages()) {
            subjects.push_back(message->Current().properties.GetOr<PR_SUBJECT_W>({}));
        }
        return subjects;
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
    const wchar_t* Deleted = L"Deleted Items";
};

TEST_F(DeletingTest, AWalkGoesOnBehindTheRecordThatWasDeleted) {
    for (const wchar_t* permanent : {L"no", L"yes"}) {
        FillInbox({L"1", L"2", L"3", L"4", L"5"});
        WalkTo(3);
        EXPECT_EQ(Call(L"VARD_DeleteCurrentRecord", {permanent}), L"0");
        ExpectFailure(L"VARD_GetFieldData", {L"Subject"}, -1038,
                      L"Unable to locate record\rno current message selected");
        Call(L"VARD_GetNextRecord");
        EXPECT_EQ(Subject(), L"4");
        WalkTo(1);
        EXPECT_EQ(Call(L"VARD_DeleteCurrentRecord", {permanent}), L"0");
        Call(L"VARD_GetNextRecord");
        EXPECT_EQ(Subject(), L"2");
        WalkTo(3);
        EXPECT_EQ(Call(L"VARD_DeleteCurrentRecord", {permanent}), L"0");
        EXPECT_EQ(Call(L"VARD_GetNextRecord"), L"End");
        EXPECT_EQ(In(L"Inbox"), (Subjects{L"2", L"4"}));
        for (int i = 0; i < 2; ++i) {
            WalkTo(1);
            EXPECT_EQ(Call(L"VARD_DeleteCurrentRecord", {L"yes"}), L"0");
        }
    }
    EXPECT_EQ(In(Deleted), (Subjects{L"3", L"1", L"5"})); // those that were not deleted for good
}

TEST_F(DeletingTest, OnlyWhatTheFilterShowsIsDeleted) {
    FillInbox({L"red", L"blue", L"red", L"red"});
    EXPECT_EQ(Call(L"VARD_FilterByFilterString", {L"[Subject] = 'red'"}), L"0");
    WalkTo(2);
    EXPECT_EQ(Call(L"VARD_DeleteCurrentRecord", {L"1"}), L"0");
    Call(L"VARD_GetNextRecord");
    EXPECT_EQ(Subject(), L"red");
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"2");
    EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"no", L"no"}), L"0");
    EXPECT_EQ(In(L"Inbox"), Subjects{L"blue"});
}

TEST_F(DeletingTest, EveryKindIsDeletedWhereTheWalkStands) {
    for (const wchar_t* messageClass : kItemClasses) {
        for (const wchar_t* permanent : {L"no", L"yes"}) {
            Add(messageClass, L"Inbox", messageClass);
            Open(L"/Inbox");
            WalkTo(1);
            EXPECT_EQ(Call(L"VARD_DeleteCurrentRecord", {permanent}), L"0")
                << testing::PrintToString(messageClass) << testing::PrintToString(LastErrorText());
            EXPECT_TRUE(At(L"Inbox").Messages().empty()) << testing::PrintToString(messageClass);
        }
    }
    EXPECT_EQ(In(Deleted).size(), kItemClasses.size());
}

TEST_F(DeletingTest, RightAfterOpeningARecordThereIsNoListToRemoveItFrom) {
    const std::wstring id = Add(L"stays");
    ASSERT_EQ(Call(L"VARD_OpenRecord", {id}), L"0");
    ExpectFailure(L"VARD_DeleteCurrentRecord", {L"yes"}, 1, L"Unhandled exception in function");
    EXPECT_EQ(In(L"Inbox"), Subjects{L"stays"});
    ASSERT_EQ(Call(L"VARD_OpenRecord", {id}), L"0");
    EXPECT_EQ(Call(L"VARD_DeleteCurrentRecord", {L"no"}), L"0");
    EXPECT_EQ(In(Deleted), Subjects{L"stays"});
}

TEST_F(DeletingTest, WithoutARecordNothingIsDeleted) {
    FillInbox({L"1"});
    ExpectFailure(L"VARD_DeleteCurrentRecord", {L"no"}, -1023, kNoRecord);
    WalkTo(1);
    Varden().Watch().FailMember(L"MailItem::Delete", E_ACCESSDENIED);
    EXPECT_EQ(Call(L"VARD_DeleteCurrentRecord", {L"no"}), kError);
    EXPECT_EQ(LastErrorCode(), 0);
    EXPECT_TRUE(LastErrorText().starts_with(L"Error: 80070005"));
    EXPECT_EQ(In(L"Inbox"), Subjects{L"1"});
}

TEST_F(DeletingTest, EveryKindButTwoIsDeletedByItsId) {
    for (const wchar_t* messageClass : kItemClasses) {
        const std::wstring trashed = Add(messageClass, L"Inbox", messageClass);
        const std::wstring removed = Add(messageClass, L"Journal", messageClass);
        if (std::wstring_view(messageClass) == L"IPM.Sharing") {
            for (const wchar_t* permanent : {L"no", L"yes"}) {
                ExpectFailure(L"VARD_DeleteRecord", {trashed, permanent}, -1023, kNoRecord);
            }
            continue;
        }
        EXPECT_EQ(Call(L"VARD_DeleteRecord", {trashed}), L"0") << testing::PrintToString(messageClass);
        EXPECT_EQ(In(Deleted).back(), messageClass);
        if (std::wstring_view(messageClass) == L"IPM.Post") { // never found among its folder's records
            ExpectFailure(L"VARD_DeleteRecord", {removed, L"yes"}, -1028, L"Unable to find records");
            continue;
        }
        EXPECT_EQ(Call(L"VARD_DeleteRecord", {removed, L"yes"}), L"0")
            << testing::PrintToString(messageClass);
    }
    EXPECT_EQ(In(L"Inbox"), Subjects{L"IPM.Sharing"});
    EXPECT_EQ(In(L"Journal"), (Subjects{L"IPM.Post", L"IPM.Sharing"}));
}

TEST_F(DeletingTest, TheFirstLetterOfAWordSaysWhetherARecordGoesForGood) {
    std::size_t trashed = 0;
    for (const wchar_t* word : {L"", L"No", L"0", L"false", L"2", L" yes", L"on"}) {
        EXPECT_EQ(Call(L"VARD_DeleteRecord", {Add(L"x"), word}), L"0");
        EXPECT_EQ(In(Deleted).size(), ++trashed) << testing::PrintToString(word);
    }
    for (const wchar_t* word : {L"Yes", L"y", L"TRUE", L"t", L"1", L"1000", L"Tomorrow"}) {
        Add(L"before");
        const std::wstring id = Add(L"x");
        Add(L"behind");
        EXPECT_EQ(Call(L"VARD_DeleteRecord", {id, word}), L"0");
        EXPECT_EQ(In(Deleted).size(), trashed) << testing::PrintToString(word);
        EXPECT_EQ(In(L"Inbox"), (Subjects{L"before", L"behind"}));
        EXPECT_EQ(Call(L"VARD_GetCurrentFolderName"), L"Inbox");
        EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"no", L"no"}), L"0");
    }
}

TEST_F(DeletingTest, ARecordThatIsNotFoundByItsIdIsTold) {
    ExpectFailure(L"VARD_DeleteRecord", {L""}, -1024, L"Invalid Outlook ID");
    EXPECT_EQ(Call(L"VARD_DeleteRecord", {L"00"}), kError);
    EXPECT_EQ(LastErrorCode(), -1027);
    Outlook().SetUnknownClass(L"IPM.Note.Strange");
    EXPECT_EQ(Call(L"VARD_DeleteRecord", {Add(L"strange", L"Inbox", L"IPM.Note.Strange")}), L"!!ERROR!! ");
    EXPECT_EQ(LastErrorCode(), -1095);
    std::wstring lower = Add(L"x");
    std::transform(lower.begin(), lower.end(), lower.begin(), towlower);
    // Outlook opens it; among the folder's records the id is compared as it is written.
    ExpectFailure(L"VARD_DeleteRecord", {lower, L"yes"}, -1028, L"Unable to find records");
    EXPECT_EQ(In(L"Inbox"), (Subjects{L"strange", L"x"}));
}

TEST_F(DeletingTest, StepsOfDeletingByIdThatOutlookRefusesAreTold) {
    const std::wstring id = Add(L"x");
    Varden().Watch().FailMember(L"MailItem::Delete", E_ACCESSDENIED);
    ExpectFailure(L"VARD_DeleteRecord", {id}, -1023,
                  std::wstring(kNoRecord) + L"\rError: 80070005\rFailed to delete item");
    constexpr std::uint64_t behindTheOpening = 2;
    Varden().Watch().FailMember(L"MailItem::Parent", E_ACCESSDENIED, behindTheOpening);
    ExpectFailure(L"VARD_DeleteRecord", {id, L"yes"}, -1023,
                  std::wstring(kNoRecord) +
                      L"\rError: 80070005\rFailed to access parent folder for permanent deletion");
    EXPECT_EQ(In(L"Inbox"), Subjects{L"x"});
}

TEST_F(DeletingTest, AStandingFilterTurnsTheAnswerThoughTheRecordHasGone) {
    FillInbox({L"x"});
    for (const wchar_t* word : {L"no", L"yes"}) {
        const std::wstring id = Add(L"x");
        Open(L"/Inbox");
        EXPECT_EQ(Call(L"VARD_FilterByFilterString", {L"[Subject] = 'x'"}), L"0");
        ExpectFailure(L"VARD_DeleteRecord", {id, word}, -1026, L"Must navigate to a folder before operation");
        EXPECT_EQ(In(L"Inbox").size(), 1u);
    }
}

TEST_F(DeletingTest, AFolderIsEmptiedForGood) {
    ExpectFailure(L"VARD_DeleteAllRecords", {L"no", L"no"}, -1026,
                  L"Must navigate to a folder before operation");
    FillInbox({});
    EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"no", L"no"}), L"0");
    FillInbox({L"1", L"2", L"3"});
    EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"no"}), L"0");
    EXPECT_EQ(In(L"Inbox"), Subjects{});
    EXPECT_EQ(In(Deleted), Subjects{});
    FillInbox({L"1"});
    Add(L"strange", L"Inbox", L"IPM.Note.Strange");
    Add(L"2");
    Outlook().SetUnknownClass(L"IPM.Note.Strange");
    Open(L"/Inbox");
    ExpectFailure(L"VARD_DeleteAllRecords", {L"no", L"no"}, -1095,
                  L"Item is not supported in this version of the plug-in");
    EXPECT_EQ(In(L"Inbox"), (Subjects{L"strange", L"2"})); // up to there
}

TEST_F(DeletingTest, PrivateRecordsCanBeKept) {
    for (const std::int32_t sensitivity : {0, 1, 2, 3}) {
        MessageToAdd mail{.subject = std::to_wstring(sensitivity)};
        mail.more.Set<PR_SENSITIVITY>(sensitivity);
        AddMessage(At(L"Inbox"), mail);
    }
    Open(L"/Inbox");
    EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"yes", L"no"}), L"0");
    EXPECT_EQ(In(L"Inbox"), Subjects{L"2"});
    EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"no", L"no"}), L"0");
    EXPECT_EQ(In(L"Inbox"), Subjects{});
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
    EXPECT_EQ(In(L"Contacts"), (Subjects{L"member", L"list"}));
    EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"yes", L"no"}), L"0");
    EXPECT_EQ(In(L"Contacts"), Subjects{});
}

TEST_F(DeletingTest, AListWhoseMembersCannotBeReadKeepsEverything) {
    Add(L"stranger", L"Contacts", L"IPM.Contact");
    Add(L"never had a member", L"Contacts", L"IPM.DistList");
    Open(L"/Contacts");
    ExpectFailure(L"VARD_DeleteAllRecords", {L"no", L"yes"}, -1097,
                  L"MAPI Subsystem error\rError: 8004010F\rMAPI_E_NOT_FOUND\rERROR: 8004010F NOT FOUND");
    Varden().Watch().FailMember(L"DistListItem::MAPIOBJECT", E_FAIL);
    EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"no", L"yes"}), kError);
    Varden().Watch().FailMember(L"IMessage::QueryInterface", E_NOINTERFACE);
    ExpectFailure(L"VARD_DeleteAllRecords", {L"no", L"yes"}, -1097,
                  L"MAPI Subsystem error\rError: 80004002\rMAPI_E_INTERFACE_NOT_SUPPORTED\r"
                  L"ERROR: 80004002 INTERFACE NOT SUPPORTED");
    Varden().Watch().FailMember(L"IMessage::GetIDsFromNames", E_FAIL);
    EXPECT_EQ(Call(L"VARD_DeleteAllRecords", {L"no", L"yes"}), L"0"); // nothing was deleted all the same
    EXPECT_EQ(In(L"Contacts"), (Subjects{L"stranger", L"never had a member"}));
}

TEST_F(DeletingTest, TheDeletedItemsAreEmptiedWhateverFolderIsOpen) {
    EXPECT_EQ(Call(L"VARD_EmptyAllDeletedItems"), L"0");
    for (const wchar_t* messageClass : kItemClasses) {
        Add(messageClass, Deleted, messageClass);
    }
    FillInbox({L"1", L"2"});
    WalkTo(1);
    EXPECT_EQ(Call(L"VARD_EmptyAllDeletedItems"), L"0");
    EXPECT_EQ(In(Deleted), Subjects{});
    EXPECT_EQ(Subject(), L"1"); // the record and the walk stay
    Call(L"VARD_GetNextRecord");
    EXPECT_EQ(Subject(), L"2");
}

} // namespace
} // namespace varden::tests
