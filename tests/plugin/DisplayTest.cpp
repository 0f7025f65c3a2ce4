// Records shown in Outlook's window, and messages passed on.
#include "ScriptTest.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

constexpr const wchar_t* kNoRecord = L"Item operation called without opening/creating a record";

/// Passing on is built and not registered, so that the file with every function is needed.
class DisplayTest : public ScriptTest {
protected:
    DisplayTest() : ScriptTest(kFullPlugin) {}
    void SetUp() override { LogOn(); }

    Folder& Inbox() { return FolderAt(World(), L"Front Desk", L"Inbox"); }
    std::wstring Add(MessageToAdd message) { return ToHex(AddMessage(Inbox(), message)->EntryId()); }
    std::wstring Get(const wchar_t* field) { return Call(L"VARD_GetFieldData", {field}); }
    std::wstring PassOn(const std::wstring& id, const wchar_t* to = L"Back Office",
                        const wchar_t* addedBody = L"", const wchar_t* keepAttachments = L"yes") {
        return Call(L"VARD_ReplyToMessage",
                    {id, to, L"warehouse@example.com", L"", addedBody, keepAttachments});
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
    ExpectFailure(L"VARD_Display", {}, -1023, kNoRecord);
    for (const wchar_t* messageClass :
         {L"IPM.Appointment", L"IPM.Contact", L"IPM.DistList", L"IPM.Activity", L"IPM.Note",
          L"IPM.Schedule.Meeting.Request", L"IPM.StickyNote", L"IPM.Post", L"IPM.Remote",
          L"REPORT.IPM.Note.NDR", L"IPM.Sharing", L"IPM.Task", L"IPM.TaskRequest", L"IPM.TaskRequest.Accept",
          L"IPM.TaskRequest.Decline", L"IPM.TaskRequest.Update", L"IPM.Document.txtfile"}) {
        ASSERT_EQ(Call(L"VARD_OpenRecord", {Add({.messageClass = messageClass})}), L"0");
        EXPECT_EQ(Call(L"VARD_Display"), L"0") << testing::PrintToString(messageClass);
        EXPECT_EQ(Call(L"VARD_Display", {false}), L"0");
        EXPECT_EQ(Get(L"Message Class"), messageClass);
    }
    // A record of a kind before it in order, so that the document isn't held any more.
    ASSERT_EQ(Call(L"VARD_OpenRecord", {Add({.messageClass = L"IPM.Note"})}), L"0");
    ASSERT_EQ(Call(L"VARD_OpenRecord", {Add({.messageClass = L"IPM.Storage"})}), L"0");
    ExpectFailure(L"VARD_Display", {}, -1023, kNoRecord);
    ASSERT_EQ(Call(L"VARD_NewRecord", {L"Mail"}), L"0");
    Varden().Watch().FailMember(L"MailItem::Display", E_FAIL);
    EXPECT_EQ(Call(L"VARD_Display"), kError);
    EXPECT_EQ(LastErrorCode(), 0);
    EXPECT_TRUE(LastErrorText().starts_with(L"Error: 80004005"));
}

TEST_F(DisplayTest, AMessageIsPassedOnAsANewMailThatCanBeSent) {
    for (const wchar_t* messageClass : {L"IPM.Note", L"IPM.Post", L"IPM.Activity"}) {
        SCOPED_TRACE(testing::PrintToString(messageClass));
        const std::wstring id = Add({.messageClass = messageClass, .subject = L"Plan", .body = L"Old text"});
        EXPECT_EQ(PassOn(id, L"Back Office", L"New text\r\n"), L"0")
            << testing::PrintToString(LastErrorText());
        EXPECT_EQ(Get(L"Message Class"), L"IPM.Note");
        EXPECT_NE(Get(L"Subject").find(L"Plan"), std::wstring::npos);
        EXPECT_NE(Get(L"ID"), id);
        const std::wstring body = Get(L"Body");
        EXPECT_TRUE(body.starts_with(L"New text")) << testing::PrintToString(body);
        EXPECT_NE(Call(L"VARD_SaveRecord"), kError) << testing::PrintToString(LastErrorText());
        const Message& delivered = *FolderAt(World(), L"Back Office", L"Inbox").Messages().back();
        EXPECT_EQ(delivered.Current().recipients.size(), 2u);
    }
    EXPECT_EQ(Inbox().Messages().size(), 3u); // the originals stay
}

TEST_F(DisplayTest, TextIsAddedInsideTheBodyOfAnHtmlMail) {
    MessageToAdd mail{.subject = L"Plan"};
    const std::string html = "<html><body lang=EN><p>Old</p></body></html>";
    mail.more.Set<0x10130102>(Bytes(html.begin(), html.end()));
    EXPECT_EQ(PassOn(Add(mail), L"Back Office", L"<p>New</p>"), L"0")
        << testing::PrintToString(LastErrorText());
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
    Bytes stored{static_cast<std::uint8_t>(rtf.size() + 12),
                 0,
                 0,
                 0,
                 static_cast<std::uint8_t>(rtf.size()),
                 0,
                 0,
                 0,
                 'M',
                 'E',
                 'L',
                 'A',
                 0,
                 0,
                 0,
                 0};
    stored.insert(stored.end(), rtf.begin(), rtf.end());
    mail.more.Set<PR_RTF_COMPRESSED>(stored);
    EXPECT_EQ(PassOn(Add(mail), L"Back Office", L" New"), L"0") << testing::PrintToString(LastErrorText());
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
    std::shared_ptr<Message> message;
    ASSERT_EQ(Inbox().Receive(content, false, message), S_OK);
    const std::wstring id = ToHex(message->EntryId());
    using Names = std::vector<std::wstring>;
    EXPECT_EQ(PassOn(id, L"Back Office", L"", L"yes"), L"0");
    EXPECT_EQ(AttachmentNames(), (Names{L"1.txt", L"2.txt", L"3.txt"}));
    EXPECT_EQ(PassOn(id, L"Back Office", L"", L"no"), L"0");
    EXPECT_EQ(Call(L"VARD_GetAttachmentCount"), L"1");
    EXPECT_EQ(Call(L"VARD_GetAttachmentName", {2}), L"2.txt"); // under the number that it had
    EXPECT_EQ(message->Current().attachments.size(), 3u);      // of the original none goes
}

TEST_F(DisplayTest, WhatCannotBePassedOnIsTold) {
    ExpectFailure(L"VARD_ReplyToMessage", {L"", L"a", L"", L"", L"", L""}, -1000,
                  L"Outlook Logon Failed\rMust include an EntryID for the message to be forwarded");
    EXPECT_EQ(PassOn(L"00"), kError);
    EXPECT_EQ(LastErrorCode(), -1038);
    EXPECT_EQ(LastErrorText(), L"Unable to locate record\r!!ERROR!!");
    Outlook().SetUnknownClass(L"IPM.Note.Strange");
    EXPECT_EQ(PassOn(Add({.messageClass = L"IPM.Note.Strange"})), kError);
    EXPECT_EQ(LastErrorText(), L"Unable to locate record\r!!ERROR!! "); // with the blank of that answer
    EXPECT_EQ(PassOn(Add({.messageClass = L"IPM.Appointment", .subject = L"Lunch"})), kError);
    EXPECT_EQ(LastErrorCode(), -1023);
    EXPECT_EQ(Get(L"Subject"), L"Lunch"); // stays the record
    Varden().Watch().FailMember(L"MailItem::Forward", E_ACCESSDENIED);
    EXPECT_EQ(PassOn(Add({.subject = L"x"})), kError);
    EXPECT_EQ(LastErrorCode(), 999);
    EXPECT_TRUE(LastErrorText().starts_with(L"\rError: 80070005\nMessage:"));
}

} // namespace
} // namespace varden::tests
