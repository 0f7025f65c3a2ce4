// Files that Outlook wrote show what is in them through the members of their kinds.
#include "Stored.h"

#include <filesystem>

namespace outlook_tests {
namespace {

class RealFileTest : public KindTest {
    void SetUp() override {
        if (!std::filesystem::exists(VARDEN_MSG_FOLDER))
            GTEST_SKIP() << "no MSG files in " << VARDEN_MSG_FOLDER;
    }
};

TEST_F(RealFileTest, Contacts) {
    Expect(OpenReal(L"msgClassContact.msg"),
           {{L"FullName", L"Dr Quick Brown Fox Jr"},
            {L"Subject", L"Quick Brown Fox Jr"},
            {L"FileAs", L"Fox, Quick Brown"},
            {L"FirstName", L"Quick"},
            {L"LastName", L"Fox"},
            {L"Initials", L"Q.B.F."},
            {L"CompanyName", L"Fence Co"},
            {L"Email1Address", L"quickbrown@gmail.com"},
            {L"Email1DisplayName", L"Quick Brown Fox Jr (quickbrown@gmail.com)"},
            {L"BusinessTelephoneNumber", L"(123) 456-7890"},
            {L"MobileTelephoneNumber", L"(456) 789-0123"},
            {L"BusinessAddress", L"12 Lazy Dog Lane\r\nSpringfield  01234"},
            {L"SelectedMailingAddress", 2},
            {L"MailingAddressCountry", L"United States of America"},
            {L"WebPage", L"www.quickfox.com"}});
    Expect(OpenReal(L"contact-unicode.msg"), {{L"FirstName", L"コム"},
                                              {L"LastName", L"イグザンプル"},
                                              {L"YomiFirstName", L"komu"},
                                              {L"Email1Address", L"test@example.com"},
                                              {L"BusinessTelephoneNumber", L"06-0001-0002"},
                                              {L"MobileTelephoneNumber", L"080-0001-0001"},
                                              {L"CompanyName", L"My work company"}});
    EXPECT_EQ(OpenReal(L"contact-unicode.msg").Get(L"Birthday"), Date(36526)) << "in whatever time zone";
}

/// What Outlook composed is composed the same way here.
TEST_F(RealFileTest, WhatOutlookKeepsTogetherFollowsTheSame) {
    const Object contact = OpenReal(L"msgClassContact.msg");
    for (const wchar_t* member : {L"FirstName", L"CompanyName", L"BusinessAddressCity", L"Email1Address"})
        contact.Put(member, contact.Get(member));
    Expect(contact, {{L"FullName", L"Dr Quick Brown Fox Jr"},
                     {L"Subject", L"Quick Brown Fox Jr"},
                     {L"FileAs", L"Fox, Quick Brown"},
                     {L"BusinessAddress", L"12 Lazy Dog Lane\r\nSpringfield  01234"},
                     {L"MailingAddress", L"12 Lazy Dog Lane\r\nSpringfield  01234"},
                     {L"Email1DisplayName", L"Quick Brown Fox Jr (quickbrown@gmail.com)"}});
    contact.Put(L"FullName", L"Dr Quick Brown Fox Jr");
    Expect(contact, {{L"Title", L"Dr"}, {L"MiddleName", L"Brown"}, {L"Suffix", L"Jr"}});
}

TEST_F(RealFileTest, NotesAndPosts) {
    Expect(OpenReal(L"msgClassStickyNote.msg"), {{L"Subject", L"This is a note about the quick brown fox"},
                                                 {L"Body", L"This is a note about the quick brown fox\r\n"},
                                                 {L"Color", 3},
                                                 {L"Width", 200},
                                                 {L"Top", 80}});
    Expect(Reopened(OpenReal(L"note-memo.msg")),
           {{L"Subject", L"A memo."}, {L"Body", L"A memo.\r\n"}, {L"Height", 162}, {L"Left", 526}});
    const Object post = OpenReal(L"msgClassPost.msg");
    Expect(post, {{L"Subject", L"QuickBrownFox"},
                  {L"SenderName", L"Allison, Timothy B."},
                  {L"SenderEmailType", L"EX"},
                  {L"ConversationTopic", L"QuickBrownFox"}});
    EXPECT_TRUE(post.Text(L"Body").starts_with(L"Is going to jump over the lazy brown dog!!!"));
}

} // namespace
} // namespace outlook_tests
