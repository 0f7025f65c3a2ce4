// Records shown in Outlook's window, and messages passed on.
#include "ItemClasses.h"
#include "MailboxTest.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

/// Passing on is built and not registered, so that the file with every function is needed.
class DisplayTest : public MailboxTest {
protected:
    DisplayTest() : MailboxTest(kFullPlugin) {}

    /// The arguments that pass a message on.
    static Texts PassingOn(const std::wstring& id, const wchar_t* addedBody = L"",
                           const wchar_t* keepAttachments = L"yes") {
        return {id, L"Back Office", L"warehouse@example.com", L"", addedBody, keepAttachments};
    }
    void PassOn(const std::wstring& id, const wchar_t* addedBody, const wchar_t* keepAttachments = L"yes") {
        ExpectSuccess(L"VARD_ReplyToMessage", PassingOn(id, addedBody, keepAttachments));
    }
    std::vector<std::wstring> AttachmentNames() {
        std::vector<std::wstring> names;
        for (int i = 1; i <= std::stoi(Call(L"VARD_GetAttachmentCount")); ++i) {
            names.push_back(Call(L"VARD_GetAttachmentName", {i}));
        }
        return names;
    }
};

TEST_F(DisplayTest, EveryKindButStoredSettingsIsShownAndStays) {
    ExpectFailure(L"VARD_Display", {}, errors::kNoRecord);
    for (const wchar_t* messageClass : kItemClasses) {
        OpenRecord(Add({.messageClass = messageClass}));
        EXPECT_EQ(Call(L"VARD_Display"), L"0") << testing::PrintToString(messageClass);
        EXPECT_EQ(Call(L"VARD_Display", {false}), L"0");
        EXPECT_EQ(Get(L"Message Class"), messageClass);
    }
    OpenRecord(Add({.messageClass = L"IPM.Storage"}));
    ExpectFailure(L"VARD_Display", {}, errors::kNoRecord);
    New(L"Mail");
    Fail(L"MailItem::Display", E_FAIL);
    ExpectFailureLike(L"VARD_Display", {}, {0, L"Error: 80004005"});
}

TEST_F(DisplayTest, AMessageIsPassedOnAsANewMailThatCanBeSent) {
    for (const wchar_t* messageClass : {L"IPM.Note", L"IPM.Post", L"IPM.Activity"}) {
        SCOPED_TRACE(testing::PrintToString(messageClass));
        const std::wstring id = Add({.messageClass = messageClass, .subject = L"Plan", .body = L"Old text"});
        PassOn(id, L"New text\r\n");
        EXPECT_EQ(Get(L"Message Class"), L"IPM.Note");
        EXPECT_NE(Get(L"Subject").find(L"Plan"), std::wstring::npos);
        EXPECT_NE(Get(L"ID"), id);
        const std::wstring body = Get(L"Body");
        EXPECT_TRUE(body.starts_with(L"New text")) << testing::PrintToString(body);
        EXPECT_NE(Call(L"VARD_SaveRecord"), kError) << testing::PrintToString(LastErrorText());
        const Message& delivered = *At(L"Inbox", L"Back Office").Messages().back();
        EXPECT_EQ(delivered.Current().recipients.size(), 2u);
    }
    EXPECT_EQ(At(L"Inbox").Messages().size(), 3u); // the originals stay
}

TEST_F(DisplayTest, TextIsAddedInsideTheBodyOfAnHtmlMail) {
    MessageToAdd mail{.subject = L"Plan"};
    const std::string html = "<html><body lang=EN><p>Old</p></body></html>";
    mail.more.Set<0x10130102>(Bytes(html.begin(), html.end()));
    PassOn(Add(mail), L"<p>New</p>");
    const std::wstring body = Get(L"HTML Body");
    const std::size_t tag = body.find(L"<body");
    ASSERT_NE(tag, std::wstring::npos) << testing::PrintToString(body);
    EXPECT_EQ(body.find(L"<p>New</p>"), body.find(L'>', tag) + 1) << testing::PrintToString(body);
    EXPECT_NE(body.find(L"Old"), std::wstring::npos);
}

TEST_F(DisplayTest, TextIsAddedBehindTheFirstParagraphMarkOfARichTextMail) {
    MessageToAdd mail{.subject = L"Plan"};
    // "{\\rtf1\\ansi\\par Old}" as [MS-OXRTFCP] 2.1.3.1.4 stores it uncompressed: sizes, "MELA", no checksum.
    const std::string rtf = "{\\rtf1\\ansi\\par Old}";
    const auto size = static_cast<std::uint32_t>(rtf.size());
    const std::uint32_t header[]{size + 12, size, 0x414C454D, 0};
    const auto* headerBytes = reinterpret_cast<const std::uint8_t*>(header);
    Bytes stored(headerBytes, headerBytes + sizeof header);
    stored.insert(stored.end(), rtf.begin(), rtf.end());
    mail.more.Set<PR_RTF_COMPRESSED>(stored);
    PassOn(Add(mail), L" New");
    // It is written in wide characters: who reads it as RTF sees the first.
    EXPECT_EQ(Get(L"RTF Body"), L"{");
    EXPECT_EQ(Get(L"Message Class"), L"IPM.Note");
}

TEST_F(DisplayTest, EverySecondAttachmentStaysWhereNoneAreWanted) {
    Content content;
    content.properties.Set<PR_MESSAGE_CLASS_W>(L"IPM.Note");
    for (const wchar_t* name : {L"1.txt", L"2.txt", L"3.txt"}) {
        auto attachment = std::make_shared<Attachment>();
        attachment->number = static_cast<std::uint32_t>(content.attachments.size());
        attachment->properties.Set<PR_ATTACH_METHOD>(ATTACH_BY_VALUE);
        attachment->properties.Set<PR_ATTACH_LONG_FILENAME_W>(name);
        attachment->properties.Set<PR_ATTACH_DATA_BIN>({1, 2, 3});
        content.attachments.push_back(attachment);
    }
    const auto message = AddToInbox(std::move(content));
    const std::wstring id = ToHex(message->EntryId());
    using Names = std::vector<std::wstring>;
    PassOn(id, L"", L"yes");
    EXPECT_EQ(AttachmentNames(), (Names{L"1.txt", L"2.txt", L"3.txt"}));
    PassOn(id, L"", L"no");
    EXPECT_EQ(Call(L"VARD_GetAttachmentCount"), L"1");
    EXPECT_EQ(Call(L"VARD_GetAttachmentName", {2}), L"2.txt"); // under the number that it had
    EXPECT_EQ(message->Current().attachments.size(), 3u);      // of the original none goes
}

TEST_F(DisplayTest, WhatCannotBePassedOnIsTold) {
    ExpectFailure(L"VARD_ReplyToMessage", {L"", L"a", L"", L"", L"", L""}, -1000,
                  L"Outlook Logon Failed\rMust include an EntryID for the message to be forwarded");
    ExpectFailure(L"VARD_ReplyToMessage", PassingOn(L"00"), -1038, L"Unable to locate record\r!!ERROR!!");
    Outlook().SetUnknownClass(L"IPM.Note.Strange");
    ExpectFailure(L"VARD_ReplyToMessage", PassingOn(Add({.messageClass = L"IPM.Note.Strange"})), -1038,
                  L"Unable to locate record\r!!ERROR!! "); // with the blank of that answer
    const std::wstring lunch = Add({.messageClass = L"IPM.Appointment", .subject = L"Lunch"});
    ExpectFailureLike(L"VARD_ReplyToMessage", PassingOn(lunch), {-1023, L""});
    EXPECT_EQ(Get(L"Subject"), L"Lunch"); // stays the record
    Fail(L"MailItem::Forward");
    ExpectFailureLike(L"VARD_ReplyToMessage", PassingOn(Add({.subject = L"x"})),
                      {999, L"\rError: 80070005\nMessage:"});
}

} // namespace
} // namespace varden::tests
