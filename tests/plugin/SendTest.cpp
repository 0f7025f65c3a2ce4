// A mail sent in one call, as its recipients see it, and what keeps a mail from going out.
#include "Files.h"
#include "ScriptTest.h"

#include <algorithm>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class SendTest : public ScriptTest {
protected:
    void SetUp() override { LogOn(); }

    Folder& At(const wchar_t* path, const wchar_t* store = L"Front Desk") {
        return FolderAt(World(), store, path);
    }
    const PropertyBag& Last(const wchar_t* path, const wchar_t* store = L"Front Desk") {
        return At(path, store).Messages().back()->Current().properties;
    }
    std::wstring SendTo(const std::wstring& to) {
        return Call(L"VARD_SendMail", {to, L"", L"", L"Subject", L"Body", L""});
    }
    void ExpectNothingSent() {
        EXPECT_TRUE(At(L"Sent Items").Messages().empty());
        EXPECT_TRUE(At(L"Inbox", L"Back Office").Messages().empty());
    }
};

/// Kind and address of each recipient.
std::vector<std::pair<std::int32_t, std::wstring>> Recipients(const Message& message) {
    std::vector<std::pair<std::int32_t, std::wstring>> recipients;
    for (const PropertyBag& row : message.Current().recipients) {
        recipients.emplace_back(row.GetOr<PR_RECIPIENT_TYPE>(0), row.GetOr<0x39FE001F>(L""));
    }
    return recipients;
}

TEST_F(SendTest, AMailInOneCallReachesItsRecipients) {
    const TemporaryFolder files;
    const std::wstring one = files.Add(L"price list.txt", "one"), two = files.Add(L"b.bin", {"\0\xFF", 2});
    EXPECT_EQ(Call(L"VARD_SendMail",
                   {L"Back Office, warehouse@example.com", L"front.desk@example.com", L"service north",
                    L"Offer \u20AC", L"Line 1\rLine 2", one + L", " + two + L",,"}),
              L"0")
        << testing::PrintToString(LastErrorText());
    EXPECT_EQ(LastErrorText(), L"Success");
    const Message& delivered = *At(L"Inbox", L"Back Office").Messages().back();
    const PropertyBag& properties = delivered.Current().properties;
    EXPECT_EQ(properties.GetOr<PR_SUBJECT_W>({}), L"Offer \u20AC");
    EXPECT_TRUE(properties.GetOr<PR_BODY_W>({}).starts_with(L"Line 1"));
    EXPECT_EQ(properties.GetOr<PR_SENDER_EMAIL_ADDRESS_W>({}),
              Last(L"Inbox").GetOr<PR_SENDER_EMAIL_ADDRESS_W>({}));
    EXPECT_EQ(properties.GetOr<PR_SENDER_NAME_W>({}), L"Front Desk");
    EXPECT_EQ(properties.GetOr<PR_MESSAGE_FLAGS>(0) & (MSGFLAG_READ | MSGFLAG_UNSENT), 0);
    const std::vector<std::pair<std::int32_t, std::wstring>> shown{{MAPI_TO, L"back.office@example.com"},
                                                                   {MAPI_TO, L"warehouse@example.com"},
                                                                   {MAPI_CC, L"front.desk@example.com"}};
    EXPECT_EQ(Recipients(delivered), shown); // the blind copy isn't told
    EXPECT_EQ(At(L"Inbox").Messages().size(), 1u);

    const Message& sent = *At(L"Sent Items").Messages().back();
    EXPECT_EQ(Recipients(sent).size(), 4u);
    EXPECT_EQ(Recipients(sent).back(),
              std::pair(std::int32_t{MAPI_BCC}, std::wstring(L"service.north@example.com")));
    EXPECT_TRUE(At(L"Outbox").Messages().empty());
    for (const Message* message : {&delivered, &sent}) {
        const auto& attachments = message->Current().attachments;
        ASSERT_EQ(attachments.size(), 2u);
        EXPECT_EQ(attachments[0]->properties.GetOr<PR_ATTACH_LONG_FILENAME_W>({}), L"price list.txt");
        EXPECT_EQ(attachments[0]->properties.GetOr<PR_ATTACH_DATA_BIN>({}), (Bytes{'o', 'n', 'e'}));
        EXPECT_EQ(attachments[1]->properties.GetOr<PR_ATTACH_DATA_BIN>({}), (Bytes{0, 0xFF}));
    }
    ExpectFailure(L"VARD_GetFieldData", {L"Subject"}, -1038,
                  L"Unable to locate record\rno current message selected");
}

TEST_F(SendTest, OnlyAWordForYesMakesTheBodyHtml) {
    constexpr const wchar_t* html = L"<html><body><b>Bold</b></body></html>";
    const auto send = [&](const wchar_t* word) {
        EXPECT_EQ(Call(L"VARD_SendMail", {L"Back Office", L"", L"", L"", html, L"", word}), L"0");
        return Last(L"Inbox", L"Back Office");
    };
    for (const wchar_t* word : {L"TRUE", L"yes", L"1", L"on", L"Y"}) {
        const PropertyBag mail = send(word);
        const Bytes stored = mail.GetOr<0x10130102>({});
        EXPECT_NE(std::string(stored.begin(), stored.end()).find("<b>Bold</b>"), std::string::npos)
            << testing::PrintToString(word);
    }
    for (const wchar_t* word : {L"False", L"maybe", L"", L"2"}) {
        const PropertyBag mail = send(word);
        EXPECT_EQ(mail.GetOr<PR_BODY_W>({}), html) << testing::PrintToString(word);
        EXPECT_EQ(mail.Find(0x10130102), nullptr);
    }
}

TEST_F(SendTest, AnAttachmentThatIsNotThereKeepsTheMailFromGoing) {
    const TemporaryFolder files;
    const std::wstring there = files.Add(L"a.txt", "a");
    std::wstring withSlashes = there;
    std::ranges::replace(withSlashes, L'\\', L'/');
    const std::vector<std::pair<std::wstring, int>> faults{
        {L" ", -1013}, {there + L", ", -1013}, {files.File(L"none.txt"), -1016}, {withSlashes, -1016}};
    for (const auto& [attachments, code] : faults) {
        EXPECT_EQ(Call(L"VARD_SendMail", {L"Back Office", L"", L"", L"S", L"B", attachments}), kError);
        EXPECT_EQ(LastErrorCode(), code) << testing::PrintToString(attachments);
        EXPECT_EQ(LastErrorText(), code == -1013 ? L"Missing Path to Attachment\rMissing path to attachment"
                                                 : L"Invalid Path or File Name");
        EXPECT_NE(Call(L"VARD_GetFieldData", {L"Message Class"}), kError); // the mail, as far as it was made
    }
    ExpectNothingSent();
    EXPECT_TRUE(At(L"Outbox").Messages().empty());
}

TEST_F(SendTest, RecipientsThatCannotBeResolvedAreToldAndTheMailStaysInTheOutbox) {
    struct Case {
        const wchar_t* to;
        const wchar_t* text;
    };
    for (const auto& [to, text] :
         {Case{
              L"Nobody Here",
              L"Error: 8004010F\rMAPI_E_NOT_FOUND\rError Resolving Names in Addrlist - Recipients not found"},
          Case{L"Back Office;Service", L"Error: 80040700\rMAPI_E_AMBIGUOUS_RECIP\rError Resolving Names in "
                                       L"Addrlist - Ambiguous recipients."}}) {
        const std::size_t before = At(L"Outbox").Messages().size();
        EXPECT_EQ(SendTo(to), kError);
        EXPECT_EQ(LastErrorCode(), -1097);
        EXPECT_EQ(LastErrorText(), std::wstring(L"MAPI Subsystem error\r") + text);
        EXPECT_EQ(At(L"Outbox").Messages().size(), before + 1);
    }
    ExpectNothingSent();
}

TEST_F(SendTest, WithoutRecipientsMapiGivesTheAnswer) {
    EXPECT_EQ(SendTo(L""), kError);
    EXPECT_EQ(LastErrorText(), L"MAPI Subsystem error\rError: 80040607\rMAPI_E_NO_RECIPIENTS\r"
                               L"MAPI Send - Failed to submit message.");
    EXPECT_EQ(At(L"Outbox").Messages().size(), 1u);
}

TEST_F(SendTest, StepsOfSendingThatMapiRefusesAreTold) {
    const std::wstring list = L"Error Resolving Names in Addrlist - ";
    const std::vector<std::tuple<const wchar_t*, std::wstring, const wchar_t*>> steps{
        {L"IMessage::GetRecipientTable", list + L"Unable to access recipients table", kError},
        {L"IMAPISession::OpenAddressBook", list + L"no access to address book", kError},
        {L"IAddrBook::ResolveName", list + L"Other Mapi error.", kError},
        {L"IMessage::ModifyRecipients",
         L"You do not have sufficient permission to perform this operation on this object.", kError},
        // These two look like a success; only the last error tells.
        {L"IMsgStore::GetProps", L"MAPI Send - Unable to access store properties.", L"0"},
        {L"IMessage::SetProps", L"MAPI Send - Failed to set sent items folder.", L"0"},
        {L"IMessage::SubmitMessage", L"MAPI Send - Failed to submit message.", kError},
    };
    std::size_t left = 0;
    for (const auto& [member, text, answer] : steps) {
        Varden().Watch().FailMember(member, E_ACCESSDENIED);
        EXPECT_EQ(SendTo(L"Back Office"), answer) << testing::PrintToString(member);
        EXPECT_EQ(LastErrorCode(), -1097);
        EXPECT_EQ(LastErrorText(), L"MAPI Subsystem error\rError: 80070005\rMAPI_E_NO_ACCESS\r" + text);
        EXPECT_EQ(At(L"Outbox").Messages().size(), ++left);
    }
    ExpectNothingSent();
    EXPECT_EQ(SendTo(L"Back Office"), L"0");
    EXPECT_EQ(At(L"Outbox").Messages().size(), left);
}

TEST_F(SendTest, AFieldThatOutlookRefusesRaises) {
    Varden().Watch().FailMember(L"MailItem::put_Subject", E_ACCESSDENIED);
    EXPECT_EQ(SendTo(L"Back Office"), kError);
    EXPECT_EQ(LastErrorCode(), 0);
    EXPECT_TRUE(LastErrorText().starts_with(L"Error: 80070005"));
    ExpectNothingSent();
}

/// The names to resolve are asked for once.
TEST_F(SendTest, RecipientsThatTheTableDoesNotGiveAtOnceComeBackUndelivered) {
    Varden().Watch().Deviate().mostRowsAtOnce = 1;
    EXPECT_EQ(SendTo(L"Back Office, Service North"), L"0");
    EXPECT_EQ(At(L"Inbox", L"Back Office").Messages().size(), 1u);
    ASSERT_EQ(At(L"Inbox").Messages().size(), 1u);
    EXPECT_EQ(Last(L"Inbox").GetOr<PR_MESSAGE_CLASS_W>({}), L"REPORT.IPM.Note.NDR");
    EXPECT_EQ(At(L"Inbox").Messages().back()->Get<PR_DISPLAY_TO_W>(), L"Service North");
}

class SendLogTest : public ScriptTest {
protected:
    SendLogTest() : ScriptTest(kFullPlugin) {}
    void SetUp() override { LogOn(); }

    /// What is logged while the mail is sent.
    std::string LogOfSending(const wchar_t* to) {
        const std::wstring path = m_files.File(L"log.txt");
        Call(L"VARD_LogSet", {L"1", path});
        Call(L"VARD_SendMail", {to, L"", L"", L"Subject", L"Body", L""});
        Call(L"VARD_LogSet", {L"0"});
        std::string log = BytesIn(path);
        DeleteFileW(path.c_str());
        return log;
    }

private:
    TemporaryFolder m_files;
};

TEST_F(SendLogTest, AMailThatDoesNotGoOutLogsWhy) {
    const std::vector<std::pair<const wchar_t*, std::vector<std::string>>> steps{
        {L"IMessage::GetRecipientTable",
         {"Error resolving names in Addrlist - Unable to access recipients table"}},
        {L"IMAPISession::OpenAddressBook", {"Error resolving names in Addrlist - No access to address book"}},
        {L"IAddrBook::ResolveName",
         {"Error resolving names in Addrlist - Other MAPI error encountered", "MAPI_E_NO_ACCESS"}},
        {L"IMessage::ModifyRecipients",
         {"modified list", "Error modifying recipients:",
          "You do not have sufficient permission to perform this operation on this object."}},
        {L"IMsgStore::GetProps", {"Error encountered: Failed to access store properties"}},
        {L"IMessage::SetProps", {"Error encountered: Failed to get sent items folder"}},
        {L"IMessage::SubmitMessage", {"Submitting message", "Error encountered: Failed to submit message"}},
    };
    const auto expectInOrder = [](const std::string& log, const std::vector<std::string>& lines) {
        std::size_t at = 0;
        for (const std::string& line : lines) {
            at = log.find("\t" + line + "\r", at);
            ASSERT_NE(at, std::string::npos) << line << " is missing in\n" << log;
        }
    };
    for (const auto& [member, lines] : steps) {
        Varden().Watch().FailMember(member, E_ACCESSDENIED);
        expectInOrder(LogOfSending(L"Back Office"), lines);
    }
    expectInOrder(LogOfSending(L"Nobody Here"),
                  {"Error resolving names in Addrlist - Recipients not found", "MAPI_E_NOT_FOUND"});
    expectInOrder(LogOfSending(L"Service"),
                  {"Error resolving names in Addrlist - Ambiguous recipients", "MAPI_E_AMBIGUOUS_RECIP"});
}

/// A mailbox that is kept in files.
class TransportTest : public ScriptTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(Outlook().OpenMailbox(m_folder.Path()).ok);
        LogOn();
    }

    const TemporaryFolder& Kept() const { return m_folder; }

private:
    TemporaryFolder m_folder;
};

TEST_F(TransportTest, EachMailThatGoesOutIsAMessageInTheTransportFolder) {
    EXPECT_EQ(Call(L"VARD_SendMail", {L"a@elsewhere.example", L"", L"Back Office", L"One call", L"x", L""}),
              L"0");
    ASSERT_EQ(Call(L"VARD_OpenFolder", {L"/Drafts"}), L"0");
    ASSERT_EQ(Call(L"VARD_NewRecord", {L"Mail"}), L"0");
    Call(L"VARD_SetFieldData", {L"Subject", L"Field by field"});
    Call(L"VARD_SetFieldData", {L"To", L"Warehouse"});
    EXPECT_NE(Call(L"VARD_SaveRecord"), kError);
    EXPECT_EQ(Call(L"VARD_SendMail", {L"", L"", L"", L"To nobody", L"x", L""}), kError);
    std::vector<std::wstring> subjects;
    for (const std::wstring& name : Kept().Names(L"transport")) {
        NamedProperties names;
        const Content sent = MessageIn(Kept().File(L"transport\\" + name), names);
        subjects.push_back(sent.properties.GetOr<PR_SUBJECT_W>({}));
        EXPECT_EQ(sent.recipients.size(), subjects.back() == L"One call" ? 2u : 1u);
        EXPECT_EQ(sent.properties.GetOr<PR_SENDER_NAME_W>({}), L"Front Desk");
    }
    std::sort(subjects.begin(), subjects.end());
    EXPECT_EQ(subjects, (std::vector<std::wstring>{L"Field by field", L"One call"}));
}

} // namespace
} // namespace varden::tests
