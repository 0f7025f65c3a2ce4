// Notes, journal entries and posts.
#include "Stored.h"

#include <mapicode.h>

namespace outlook_tests {
namespace {

using FiledItemTest = KindTest;

constexpr int kJournalItem = 4, kNoteItem = 5, kPostItem = 6;
constexpr double kMinute = 1.0 / (24 * 60);

TEST_F(FiledItemTest, TheSubjectOfANoteIsItsFirstLine) {
    const Object note = New(kNoteItem, kNotes);
    EXPECT_EQ(note.Text(L"Subject"), L"");
    note.Put(L"Body", L"RE: Milk\r\nand bread");
    EXPECT_EQ(note.Text(L"Subject"), L"RE: Milk");
    EXPECT_EQ(note.TryPut(L"Subject", L"x").Status(), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(note.IdOf(L"MAPIOBJECT"), DISPID_UNKNOWN);
    Store(note, Tag(0x1000001F), L"Written by another way\nbelow");
    const Object saved = Reopened(note);
    EXPECT_EQ(saved.Text(L"Subject"), L"Written by another way");
    EXPECT_EQ(StoredText(saved, Tag(0x0070001F)), L"Written by another way");
    EXPECT_EQ(Stored(saved, Tag(0x0C1A001F)).vt, VT_EMPTY) << "notes have no author";
}

TEST_F(FiledItemTest, NotesHaveAColourAndAWindow) {
    const Object note = New(kNoteItem, kNotes);
    const std::tuple<const wchar_t*, std::uint32_t, int, int> rows[] = {{L"Color", 0x8B000003, 3, 4},
                                                                        {L"Width", 0x8B020003, 200, 90},
                                                                        {L"Height", 0x8B030003, 166, 91},
                                                                        {L"Left", 0x8B040003, 80, 92},
                                                                        {L"Top", 0x8B050003, 80, 93}};
    for (const auto& [member, id, initial, value] : rows) {
        EXPECT_EQ(note.Number(member), initial) << member;
        note.Put(member, value);
    }
    const Object saved = Reopened(note);
    for (const auto& [member, id, initial, value] : rows) {
        EXPECT_EQ(saved.Number(member), value) << member;
        EXPECT_EQ(Stored(saved, Id(kNoteSet, id)), Value(value)) << member;
    }
    EXPECT_EQ(Stored(saved, Tag(0x10800003)), Value(0x304)) << "the icon has the colour";
    EXPECT_EQ(note.TryPut(L"Color", 5).Status(), E_INVALIDARG);
}

TEST_F(FiledItemTest, JournalStartEndAndDurationGoTogether) {
    const Object entry = New(kJournalItem);
    Expect(entry, {{L"Type", L"Phone call"}, {L"Duration", 0}});
    EXPECT_EQ(entry.Get(L"Start"), entry.Get(L"End"));
    const auto expect = [&entry](double start, double end, int duration) {
        EXPECT_NEAR(entry.Get(L"Start").date, start, kMinute / 100);
        EXPECT_NEAR(entry.Get(L"End").date, end, kMinute / 100);
        EXPECT_EQ(entry.Number(L"Duration"), duration);
    };
    constexpr double kNine = 45000 + 9.0 / 24;
    entry.Put(L"Start", Date(kNine));
    expect(kNine, kNine, 0);
    entry.Put(L"Duration", 90);
    expect(kNine, kNine + 90 * kMinute, 90);
    entry.Put(L"Start", Date(kNine + 1));
    expect(kNine + 1, kNine + 1 + 90 * kMinute, 90);
    entry.Put(L"End", Date(kNine + 1 + 15 * kMinute));
    expect(kNine + 1, kNine + 1 + 15 * kMinute, 15);
    EXPECT_EQ(entry.TryPut(L"End", Date(kNine)).Status(), E_INVALIDARG);
    EXPECT_EQ(entry.TryPut(L"Duration", -1).Status(), E_INVALIDARG);
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
    const Object entry = New(kJournalItem);
    const std::pair<const wchar_t*, std::uint32_t> flags[] = {{L"DocPosted", 0x8711000B},
                                                              {L"DocPrinted", 0x870E000B},
                                                              {L"DocRouted", 0x8710000B},
                                                              {L"DocSaved", 0x870F000B}};
    for (const auto& [member, id] : flags) {
        EXPECT_EQ(entry.Get(member), Value(false)) << member;
        entry.Put(member, true);
        EXPECT_EQ(Stored(entry, Id(kLogSet, id)), Value(true)) << member;
    }
    entry.Put(L"Type", L"Fax");
    ExpectStored(entry, {{Id(kLogSet, 0x8700001F), L"Fax"}, {Id(kLogSet, 0x8712001F), L"Fax"}});
    entry.Put(L"ContactNames", L"Lee, Ann;Poe, Bob ");
    EXPECT_EQ(entry.Text(L"ContactNames"), L"Lee, Ann; Poe, Bob");
    EXPECT_EQ(StoredText(entry, Id(kCommonSet, 0x853A101F)), L"Lee, Ann | Poe, Bob");
    entry.Put(L"Companies", L"One, Two");
    EXPECT_EQ(StoredText(entry, Id(kCommonSet, 0x8539101F)), L"One | Two");
    entry.Put(L"Duration", 3);
    entry.Call(L"StopTimer");
    entry.Call(L"StartTimer");
    entry.Call(L"StopTimer");
    EXPECT_EQ(entry.Number(L"Duration"), 3) << "no whole minute went by";
    entry.Call(L"Save");
    const Object items = Items(kInbox);
    EXPECT_TRUE(items.Child(L"Find", {L"[Type] = 'Fax' And [Duration] = 3"}))
        << "a text here, whatever it is in other kinds";
}

TEST_F(FiledItemTest, PostsAreSignedAndStayInTheirFolder) {
    const Object post = New(kPostItem);
    PutAll(post, {{L"Subject", L"News"}, {L"HTMLBody", L"<html><body>All is well</body></html>"}});
    PutAll(post, {{L"ExpiryTime", Date(50000)}});
    post.Call(L"Post");
    EXPECT_EQ(post.TryGet(L"Subject").Status(), MAPI_E_OBJECT_DELETED);
    const Object items = Items(kInbox);
    ASSERT_EQ(items.Number(L"Count"), 1);
    const Object posted = items.Item(1);
    Expect(posted, {{L"Subject", L"News"}, {L"SenderName", L"Front Desk"}, {L"BodyFormat", 2}});
    EXPECT_NE(posted.Get(L"SentOn"), Date(kNoDate));
    EXPECT_NE(posted.Get(L"ReceivedTime"), Date(kNoDate));
    EXPECT_EQ(Stored(posted, Tag(0x0E070003)), Value(1)) << "read, and no draft";
    const Object reply = posted.Child(L"Reply");
    Expect(reply, {{L"MessageClass", L"IPM.Note"}, {L"To", L"Front Desk"}});
}

} // namespace
} // namespace outlook_tests
