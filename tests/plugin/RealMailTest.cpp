// Mail that real Outlook wrote, in a mailbox folder, walked by scripts; and the same mailbox read by a
// VBScript, a client that is none of ours.
#include "FieldTest.h"
#include "Files.h"
#include "tests/mailbox/Json.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace varden::tests {
namespace {

using standin::mailbox::test::Json;
namespace fs = std::filesystem;

std::wstring FromUtf8(const std::string& text) {
    std::wstring wide(text.size(), L'\0');
    wide.resize(static_cast<std::size_t>(MultiByteToWideChar(
        CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(), static_cast<int>(wide.size()))));
    return wide;
}

Strings LinesOf(const fs::path& file) {
    std::istringstream in(BytesIn(file.wstring()));
    Strings lines;
    for (std::string line; std::getline(in, line);) {
        std::erase(line, '\r');
        lines.push_back(FromUtf8(line));
    }
    return lines;
}

const fs::path& RealFiles() {
    static const fs::path folder = RepositoryPath(L"../shared/msg");
    return folder;
}

class RealMailTest : public MailboxTest {
protected:
    void SetUp() override {} // logs on once the mailbox is filled

    fs::path Inbox() const { return fs::path(MailboxFolder()) / L"Front Desk" / L"Inbox"; }
    std::wstring MailboxFolder() const { return m_folder.File(L"mailbox"); }
    void OpenMailbox() { ASSERT_TRUE(Outlook().OpenMailbox(MailboxFolder()).ok); }
    void OpenInbox() {
        LogOn();
        Open(L"/Inbox");
    }
    Strings RunScript(const char* script);

private:
    TemporaryFolder m_folder;
};

/// The addresses of one kind of recipient.
std::wstring Addresses(const Json& facts, const wchar_t* type) {
    std::wstring text;
    for (const Json& recipient : facts.Items(L"recipients")) {
        if (recipient.Has(L"type") && recipient.Text(L"type") == type) {
            text += recipient.Text(L"email") + L"\n";
        }
    }
    return text;
}

TEST_F(RealMailTest, IsWalkedWithItsClassSubjectSenderAndRecipients) {
    if (!fs::exists(RealFiles())) {
        GTEST_SKIP() << "the folder of real MSG files is missing";
    }
    OpenMailbox();
    std::map<std::wstring, Json> mails; // by file
    for (const std::wstring& line : LinesOf(RealFiles() / L"facts.jsonl")) {
        Json facts = standin::mailbox::test::ParseJson(line);
        if (facts.Text(L"messageClass") == L"IPM.Note" && !facts.Text(L"file").starts_with(L"damaged")) {
            const fs::path copy = Inbox() / facts.Text(L"file");
            fs::copy_file(RealFiles() / facts.Text(L"file"), copy);
            fs::permissions(copy, fs::perms::owner_write, fs::perm_options::add);
            mails.emplace(facts.Text(L"file"), std::move(facts));
        }
    }
    OpenMailbox();
    OpenInbox();
    EXPECT_EQ(Call(L"VARD_GetRecordCount"), std::to_wstring(mails.size()));
    std::size_t walked = 0;
    for (std::wstring id = Call(L"VARD_GetFirstRecord"); id != L"End"; id = Call(L"VARD_GetNextRecord")) {
        ASSERT_NE(id, kError) << testing::PrintToString(LastErrorText());
        ASSERT_LT(walked++, mails.size());
        EXPECT_EQ(Get(L"Message Class"), L"IPM.Note");
        const std::wstring subject = Get(L"Subject"), sender = Get(L"Sender Email Address");
        const auto found = std::ranges::find_if(mails, [&](const auto& mail) {
            const Json& facts = mail.second;
            const std::wstring address = facts.Has(L"senderEmail") ? facts.Text(L"senderEmail") : L"";
            // The field comes without its last character.
            const std::wstring shown = address.substr(0, address.empty() ? 0 : address.size() - 1);
            return (facts.Has(L"subject") ? facts.Text(L"subject") : L"") == subject &&
                   _wcsicmp(shown.c_str(), sender.c_str()) == 0;
        });
        if (found == mails.end()) {
            ADD_FAILURE() << testing::PrintToString(subject) << " from " << testing::PrintToString(sender);
            continue;
        }
        std::wstring to = Get(L"To");
        std::ranges::replace(to, L';', L'\n');
        for (std::wistringstream expected(Addresses(found->second, L"to")); expected;) {
            std::wstring address;
            std::getline(expected, address);
            std::wstring lower = to;
            std::ranges::transform(lower, lower.begin(), towlower);
            std::ranges::transform(address, address.begin(), towlower);
            // Of an address in an Exchange directory the SMTP form is shown.
            EXPECT_NE(lower.find(address.starts_with(L'/') ? L"@" : address), lower.npos)
                << testing::PrintToString(address) << " in " << testing::PrintToString(to);
        }
    }
    EXPECT_EQ(walked, mails.size());
}

/// Runs a VBScript on the mailbox folder; gives the lines that it printed.
Strings RealMailTest::RunScript(const char* script) {
    const std::wstring file = m_folder.Add(L"script.vbs", script), output = m_folder.File(L"output.txt");
    SetEnvironmentVariableW(L"VARDEN_MAILBOX", MailboxFolder().c_str());
    std::wstring line = L"cmd /c cscript //nologo " + file + L" > " + output + L" 2>&1";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process)) {
        throw std::runtime_error("the script host can't be started");
    }
    WaitForSingleObject(process.hProcess, 60'000);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    SetEnvironmentVariableW(L"VARDEN_MAILBOX", nullptr);
    return LinesOf(output);
}

TEST_F(RealMailTest, AScriptEngineReadsTheSameValues) {
    OpenMailbox();
    for (const wchar_t* subject : {L"First", L"Second", L"Third"}) {
        MessageToAdd mail{.subject = subject, .body = L"Text of it"};
        mail.more.Set<PR_IMPORTANCE>(2);
        mail.more.Set<PR_SENDER_EMAIL_ADDRESS_W>(L"service.north@example.com ");
        mail.more.Set<PR_DISPLAY_TO_W>(L"Front Desk");
        Add(mail);
    }
    OpenInbox();
    Strings expected;
    for (std::wstring id = Call(L"VARD_GetFirstRecord"); id != L"End"; id = Call(L"VARD_GetNextRecord")) {
        ASSERT_NE(id, kError);
        expected.push_back(id + L"|" + Get(L"Subject") + L"|" + Get(L"Sender Email Address") + L"|" +
                           (Get(L"Importance") == L"High" ? L"2" : L"?") + L"|" + Get(L"Body"));
    }
    ASSERT_EQ(expected.size(), 3u);
    EXPECT_EQ(RunScript(R"(
        Set session = CreateObject("Outlook.Application").GetNamespace("MAPI")
        session.Logon "Outlook"
        For Each mail In session.GetDefaultFolder(6).Items
            WScript.Echo mail.EntryID & "|" & mail.Subject & "|" & RTrim(mail.SenderEmailAddress) & "|" & mail.Importance & "|" & mail.Body
        Next
    )"),
              expected);
}

class RealAppointmentTest : public FieldTest {
protected:
    RealAppointmentTest() : FieldTest(L"Calendar") {}

    void SetUp() override {
        if (!fs::exists(RealFiles())) {
            GTEST_SKIP() << "the folder of real MSG files is missing";
        }
        FieldTest::SetUp();
    }
    /// The appointment, received into the Calendar, shows these facts.
    void ExpectFacts(const wchar_t* file, const FieldTexts& facts) {
        std::shared_ptr<standin::mailbox::Message> message;
        ASSERT_EQ(Home().Receive(MessageIn(RealFiles() / file, Home().Names()), false, message), S_OK);
        OpenRecord(standin::mailbox::ToHex(message->EntryId()));
        ExpectReads(facts);
    }
};

TEST_F(RealAppointmentTest, ShowsItsFacts) {
    ExpectFacts(L"msgClassAppointment.msg", {{L"Subject", L"Quick brown fox"},
                                             {L"Organizer", L"Allison, Timothy B."},
                                             {L"Recurrence State", L"Not Recurring"}});
    EXPECT_TRUE(Get(L"Body").starts_with(L"This is a meeting to discuss j"));
    ExpectFacts(L"appointment-weekly.msg",
                {{L"Subject", L"A weekly 1"}, {L"Duration", L"30"}, {L"Recurrence State", L"Master"}});
    EXPECT_TRUE(Get(L"Binary Recurrence").starts_with(L"043004300B200100")); // a weekly pattern
    ExpectFacts(L"appointment-daily.msg", {{L"Subject", L"A daily 1"}, {L"All Day Event", L"True"}});
}

/// What another reader makes of the stored patterns, in the words of scripts.
TEST_F(RealAppointmentTest, ShowsItsWholeRecurrencePattern) {
    struct Fields {
        const wchar_t* name;
        const wchar_t* weekly;
        const wchar_t* daily; ///< every working day, all day: kept as a weekly pattern
    };
    constexpr Fields kExpected[] = {
        {L"Recurrence Type", L"Weekly", L"Weekly"},
        {L"Day of Week Mask", L"Monday", L"Monday\rTuesday\rWednesday\rThursday\rFriday"},
        {L"Interval", L"1", L"1"},
        {L"Day of Month", L"0", L"0"},
        {L"Instance", L"0", L"0"},
        {L"Month of Year", L"0", L"0"},
        {L"Pattern Start Date", L"12/12/2022", L"12/12/2022"},
        {L"Pattern End Date", L"12/12/2022", L"12/12/2022"},
        {L"No End Date", L"false", L"false"},
        {L"Occurrences", L"1", L"1"},
        {L"Start Time", L"4:00:00 PM", L"12:00:00 AM"},
        {L"End Time", L"4:30:00 PM", L"12:00:00 AM"},
        {L"Duration", L"30", L"1440"},
        {L"Regenerate", L"False", L"False"},
    };
    for (const bool isWeekly : {true, false}) {
        const fs::path file = RealFiles() / (isWeekly ? L"appointment-weekly.msg" : L"appointment-daily.msg");
        ExpectSuccess(L"VARD_OpenSavedItem", {file.wstring()});
        ExpectSuccess(L"VARD_RPOpenRecurrencePattern", {});
        for (const auto& [name, weekly, daily] : kExpected) {
            ExpectReads({{name, isWeekly ? weekly : daily}});
        }
    }
}

} // namespace
} // namespace varden::tests
