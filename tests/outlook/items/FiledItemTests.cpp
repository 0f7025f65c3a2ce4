// Notes, journal entries and posts.
#include "Stored.h"

#include <mapicode.h>

namespace outlook_tests {
namespace {

using FiledItemTest = KindTest;

constexpr int kJournalItem = 4, kNoteItem = 5, kPostItem = 6;
constexpr double kMinute = 1.0 / (24 * 60);
constexpr double kNoDate = 949998;

TEST_F(FiledItemTest, TheSubjectOfANoteIsItsFirstLine) {
    const Object note = New(Value(kNoteItem), kNotes);
    EXPECT_EQ(note.Text(L"Subject"), L"");
    note.Put(L"Body", Value(L"RE: Milk\r\nand bread"));
    EXPECT_EQ(note.Text(L"Subject"), L"RE: Milk");
    EXPECT_EQ(note.TryPut(L"Subject", Value(L"x")).Status(), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(note.IdOf(L"MAPIOBJECT"), DISPID_UNKNOWN);
    Store(note, Tag(0x1000001F), Value(L"Written by another way\nbelow"));
    const Object saved = Reopened(note);
    EXPECT_EQ(saved.Text(L"Subject"), L"Written by another way");
    EXPECT_EQ(StoredText(saved, Tag(0x0070001F)), L"Written by another way");
    EXPECT_EQ(Stored(saved, Tag(0x0C1A001F)).vt, VT_EMPTY) << "notes have no author";
}

TEST_F(FiledItemTest, NotesHaveAColourAndAWindow) {
    const Object note = New(Value(kNoteItem), kNotes);
    struct Row {
        const wchar_t* member;
        std::uint32_t id;
        int initial, value;
    };
    const Row rows[] = {{L"Color", 0x8B000003, 3, 4},
                        {L"Width", 0x8B020003, 200, 90},
                        {L"Height", 0x8B030003, 166, 91},
                        {L"Left", 0x8B040003, 80, 92},
                        {L"Top", 0x8B050003, 80, 93}};
    for (const Row& row : rows) {
        EXPECT_EQ(note.Number(row.member), row.initial) << row.member;
        note.Put(row.member, Value(row.value));
    }
    const Object saved = Reopened(note);
    for (const Row& row : rows) {
        EXPECT_EQ(saved.Number(row.member), row.value) << row.member;
        EXPECT_EQ(Stored(saved, Id(kNoteSet, row.id)), Value(row.value)) << row.member;
    }
    EXPECT_EQ(Stored(saved, Tag(0x10800003)), Value(0x304)) << "the icon has the colour";
    EXPECT_EQ(note.TryPut(L"Color", Value(5)).Status(), E_INVALIDARG);
}

TEST_F(FiledItemTest, JournalStartEndAndDurationGoTogether) {
    const Object entry = New(Value(kJournalItem));
    EXPECT_EQ(entry.Text(L"Type"), L"Phone call");
    EXPECT_EQ(entry.Number(L"Duration"), 0);
    EXPECT_EQ(entry.Get(L"Start"), entry.Get(L"End"));
    const auto expect = [&entry](double start, double end, int duration) {
        EXPECT_NEAR(entry.Get(L"Start").date, start, kMinute / 100);
        EXPECT_NEAR(entry.Get(L"End").date, end, kMinute / 100);
        EXPECT_EQ(entry.Number(L"Duration"), duration);
    };
    constexpr double kNine = 45000 + 9.0 / 24;
    entry.Put(L"Start", Date(kNine));
    expect(kNine, kNine, 0);
    entry.Put(L"Duration", Value(90));
    expect(kNine, kNine + 90 * kMinute, 90);
    entry.Put(L"Start", Date(kNine + 1));
    expect(kNine + 1, kNine + 1 + 90 * kMinute, 90);
    entry.Put(L"End", Date(kNine + 1 + 15 * kMinute));
    expect(kNine + 1, kNine + 1 + 15 * kMinute, 15);
    EXPECT_EQ(entry.TryPut(L"End", Date(kNine)).Status(), E_INVALIDARG);
    EXPECT_EQ(entry.TryPut(L"Duration", Value(-1)).Status(), E_INVALIDARG);
    expect(kNine + 1, kNine + 1 + 15 * kMinute, 15);

    EXPECT_EQ(Stored(entry, Id(kLogSet, 0x87070003)), Value(15));
    EXPECT_EQ(Stored(entry, Id(kLogSet, 0x87060040)), Stored(entry, Id(kCommonSet, 0x85160040)));
    EXPECT_EQ(Stored(entry, Id(kLogSet, 0x87080040)), Stored(entry, Id(kCommonSet, 0x85170040)));
    entry.Put(L"End", Date(kNoDate));
    expect(kNine + 1, kNoDate, 0);
    entry.Put(L"Start", Date(kNoDate));
    expect(kNoDate, kNoDate, 0);
    EXPECT_EQ(Stored(entry, Id(kLogSet, 0x87060040)).vt, VT_EMPTY);
}

TEST_F(FiledItemTest, JournalEntriesTellWhatTheyAreAbout) {
    const Object entry = New(Value(kJournalItem));
    const std::pair<const wchar_t*, std::uint32_t> flags[] = {{L"DocPosted", 0x8711000B},
                                                              {L"DocPrinted", 0x870E000B},
                                                              {L"DocRouted", 0x8710000B},
                                                              {L"DocSaved", 0x870F000B}};
    for (const auto& [member, id] : flags) {
        EXPECT_EQ(entry.Get(member), Value(false)) << member;
        entry.Put(member, Value(true));
        EXPECT_EQ(Stored(entry, Id(kLogSet, id)), Value(true)) << member;
    }
    entry.Put(L"Type", Value(L"Fax"));
    EXPECT_EQ(StoredText(entry, Id(kLogSet, 0x8700001F)), L"Fax");
    EXPECT_EQ(StoredText(entry, Id(kLogSet, 0x8712001F)), L"Fax");
    entry.Put(L"ContactNames", Value(L"Lee, Ann;Poe, Bob "));
    EXPECT_EQ(entry.Text(L"ContactNames"), L"Lee, Ann; Poe, Bob");
    EXPECT_EQ(StoredText(entry, Id(kCommonSet, 0x853A101F)), L"Lee, Ann | Poe, Bob");
    entry.Put(L"Companies", Value(L"One, Two"));
    EXPECT_EQ(StoredText(entry, Id(kCommonSet, 0x8539101F)), L"One | Two");
    entry.Put(L"Duration", Value(3));
    entry.Call(L"StopTimer");
    entry.Call(L"StartTimer");
    entry.Call(L"StopTimer");
    EXPECT_EQ(entry.Number(L"Duration"), 3) << "no whole minute went by";
    entry.Call(L"Save");
    const Object items = DefaultFolder(kInbox).Child(L"Items");
    EXPECT_TRUE(items.Child(L"Find", {Value(L"[Type] = 'Fax' And [Duration] = 3")}))
        << "a text here, whatever it is in other kinds";
}

TEST_F(FiledItemTest, PostsAreSignedAndStayInTheirFolder) {
    const Object post = New(Value(kPostItem));
    post.Put(L"Subject", Value(L"News"));
    post.Put(L"HTMLBody", Value(L"<html><body>All is well</body></html>"));
    post.Put(L"ExpiryTime", Date(50000));
    post.Call(L"Post");
    EXPECT_EQ(post.TryGet(L"Subject").Status(), MAPI_E_OBJECT_DELETED);
    const Object items = DefaultFolder(kInbox).Child(L"Items");
    ASSERT_EQ(items.Number(L"Count"), 1);
    const Object posted = items.Child(L"Item", {Value(1)});
    EXPECT_EQ(posted.Text(L"Subject"), L"News");
    EXPECT_EQ(posted.Text(L"SenderName"), L"Front Desk");
    EXPECT_EQ(posted.Number(L"BodyFormat"), 2);
    EXPECT_NE(posted.Get(L"SentOn"), Date(kNoDate));
    EXPECT_NE(posted.Get(L"ReceivedTime"), Date(kNoDate));
    EXPECT_EQ(Stored(posted, Tag(0x0E070003)), Value(1)) << "read, and no draft";
    const Object reply = posted.Child(L"Reply");
    EXPECT_EQ(reply.Text(L"MessageClass"), L"IPM.Note");
    EXPECT_EQ(reply.Text(L"To"), L"Front Desk");
}

} // namespace
} // namespace outlook_tests
