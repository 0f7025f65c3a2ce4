// A mail sent in one call, as its recipients see it, and what keeps a mail from going out.
#include "Files.h"
#include "MailboxTest.h"

#include <algorithm>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class SendTest : public MailboxTest {
protected:
    explicit SendTest(const wchar_t* file = kShippedPlugin) : MailboxTest(file) {}

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
    ExpectSuccess(L"VARD_SendMail",
                  {L"Back Office, warehouse@example.com", L"front.desk@example.com", L"service north",
                   L"Offer \u20AC", L"Line 1\rLine 2", one + L", " + two + L",,"});
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
    ExpectNoCurrentRecord();
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
    const LastError missing{-1013, L"Missing Path to Attachment\rMissing path to attachment"};
    const std::vector<std::pair<std::wstring, LastError>> cases{
        {L" ", missing},
        {there + L", ", missing},
        {files.File(L"none.txt"), errors::kInvalidPath},
        {withSlashes, errors::kInvalidPath}};
    for (const auto& [attachments, error] : cases) {
        ExpectFailure(L"VARD_SendMail", {L"Back Office", L"", L"", L"S", L"B", attachments}, error);
        EXPECT_NE(Get(L"Message Class"), kError); // the mail, as far as it was made
    }
    ExpectNothingSent();
    EXPECT_TRUE(At(L"Outbox").Messages().empty());
}

TEST_F(SendTest, AFieldThatOutlookRefusesRaises) {
    Fail(L"MailItem::put_Subject");
    ExpectFailureLike(L"VARD_SendMail", {L"Back Office", L"", L"", L"Subject", L"Body", L""},
                      {0, L"Error: 80070005"});
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

/// With the log, which only the file with every function can be told to write.
class SendFailureTest : public SendTest {
protected:
    SendFailureTest() : SendTest(kFullPlugin) {}

    /// The mail stays in the Outbox; these lines of the log say why, in this order.
    void ExpectUnsent(const wchar_t* to, const LastError& error, const std::vector<std::string>& lines,
                      const wchar_t* answer = kError) {
        const std::wstring path = m_files.File(std::to_wstring(m_unsent) + L".txt");
        Call(L"VARD_LogSet", {L"1", path});
        EXPECT_EQ(SendTo(to), answer) << testing::PrintToString(error.text);
        EXPECT_EQ(LastErrorCode(), error.code);
        EXPECT_EQ(LastErrorText(), error.text);
        EXPECT_EQ(At(L"Outbox").Messages().size(), ++m_unsent);
        Call(L"VARD_LogSet", {L"0"});
        const std::string log = BytesIn(path);
        std::size_t at = 0;
        for (const std::string& line : lines) {
            at = log.find("\t" + line + "\r", at);
            ASSERT_NE(at, std::string::npos) << line << " is missing in\n" << log;
        }
    }
    /// The same for a mail to a known recipient because this call is denied.
    void ExpectDenied(const wchar_t* member, const std::wstring& text, const std::vector<std::string>& lines,
                      const wchar_t* answer = kError) {
        Fail(member);
        ExpectUnsent(L"Back Office", errors::Denied(text), lines, answer);
    }

private:
    TemporaryFolder m_files;
    std::size_t m_unsent = 0;
};

TEST_F(SendFailureTest, AMailThatDoesNotGoOutStaysInTheOutboxAndTellsAndLogsWhy) {
    const std::wstring list = L"Error Resolving Names in Addrlist - ";
    const std::string logged = "Error resolving names in Addrlist - ";
    ExpectUnsent(L"Nobody Here", errors::NotFound(list + L"Recipients not found"),
                 {logged + "Recipients not found", "MAPI_E_NOT_FOUND"});
    ExpectUnsent(L"Back Office;Service",
                 errors::Mapi(L"Error: 80040700\rMAPI_E_AMBIGUOUS_RECIP\r" + list + L"Ambiguous recipients."),
                 {logged + "Ambiguous recipients", "MAPI_E_AMBIGUOUS_RECIP"});
    const std::vector<std::string> unsubmitted{"Submitting message",
                                               "Error encountered: Failed to submit message"};
    ExpectUnsent(
        L"", errors::Mapi(L"Error: 80040607\rMAPI_E_NO_RECIPIENTS\rMAPI Send - Failed to submit message."),
        unsubmitted);
    ExpectDenied(L"IMessage::SubmitMessage", L"MAPI Send - Failed to submit message.", unsubmitted);
    ExpectDenied(L"IMessage::GetRecipientTable", list + L"Unable to access recipients table",
                 {logged + "Unable to access recipients table"});
    ExpectDenied(L"IMAPISession::OpenAddressBook", list + L"no access to address book",
                 {logged + "No access to address book"});
    ExpectDenied(L"IAddrBook::ResolveName", list + L"Other Mapi error.",
                 {logged + "Other MAPI error encountered", "MAPI_E_NO_ACCESS"});
    ExpectDenied(L"IMessage::ModifyRecipients",
                 L"You do not have sufficient permission to perform this operation on this object.",
                 {"modified list", "Error modifying recipients:",
                  "You do not have sufficient permission to perform this operation on this object."});
    // These two look like a success; only the last error tells.
    ExpectDenied(L"IMsgStore::GetProps", L"MAPI Send - Unable to access store properties.",
                 {"Error encountered: Failed to access store properties"}, L"0");
    ExpectDenied(L"IMessage::SetProps", L"MAPI Send - Failed to set sent items folder.",
                 {"Error encountered: Failed to get sent items folder"}, L"0");
    ExpectNothingSent();
    const std::size_t unsent = At(L"Outbox").Messages().size();
    EXPECT_EQ(SendTo(L"Back Office"), L"0");
    EXPECT_EQ(At(L"Outbox").Messages().size(), unsent);
}

/// A mailbox that is kept in files.
class TransportTest : public MailboxTest {
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
    ExpectSuccess(L"VARD_SendMail", {L"a@elsewhere.example", L"", L"Back Office", L"One call", L"x", L""});
    Open(L"/Drafts");
    New(L"Mail");
    Set(L"Subject", L"Field by field");
    Set(L"To", L"Warehouse");
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
