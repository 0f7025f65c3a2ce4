// Fields whose calls into Outlook and MAPI fail on the way: what is answered, what the last error tells, and
// what is stored all the same.
#include "FieldTest.h"
#include "Files.h"

#include <algorithm>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class FieldFailureTest : public FieldTest {
protected:
    FieldFailureTest() : FieldTest(L"Inbox", kFullPlugin) {}
};

TEST_F(FieldFailureTest, LinkedContactsAreWrittenAsFarAsTheStepsGo) {
    Open({.messageClass = L"IPM.Contact"});
    ExpectWrites({{L"Contacts", L"Ann", L"Ann"}});
    for (const std::uint64_t lookUp : {1, 2, 3}) {
        Fail(L"IMessage::GetIDsFromNames", E_ACCESSDENIED, lookUp);
        EXPECT_EQ(Set(L"Contacts", L"Bob"), kError);
        EXPECT_TRUE(Varden().Watch().HasFailed());
        EXPECT_EQ(Get(L"Contacts"), L"Ann"); // nothing is written before all names are known
    }
    // The first write is dropped where it fails, the second decides.
    Fail(L"MAPI32::HrSetOneProp");
    EXPECT_EQ(Set(L"Contacts", L"Bob"), L"0");
    EXPECT_EQ(LastErrorText(), errors::Denied().text);
    EXPECT_EQ(Get(L"Contacts"), L"Ann");
    EXPECT_EQ(Stored().properties.GetOr<PR_SUBJECT_W>(L""), L"");
    Fail(L"MAPI32::HrSetOneProp", E_ACCESSDENIED, 2);
    ExpectFailure(L"VARD_SetFieldData", {L"Contacts", L"Carl"}, errors::Denied());
    EXPECT_EQ(Get(L"Contacts"), L"Carl");
}

TEST_F(FieldFailureTest, BodiesThatCannotBeReadOrWrittenTellWhy) {
    for (const wchar_t* messageClass :
         {L"IPM.Contact", L"IPM.Task", L"IPM.Appointment", L"IPM.StickyNote", L"IPM.Activity",
          L"IPM.DistList", L"IPM.TaskRequest", L"IPM.Document"}) {
        Open({.messageClass = messageClass, .body = L"text"});
        ExpectFaults(L"VARD_GetFieldData", {L"Body"},
                     {{L"IMessage::OpenProperty", errors::Mapi(L"Interface not supported"), E_NOINTERFACE},
                      // A success without a stream.
                      {L"IMessage::OpenProperty", errors::Mapi(L"Unable to open field as stream"), S_FALSE}});
    }
    Open({.body = L"text"}); // a mail's is tried twice
    Fail(L"MAPI32::HrGetOneProp");
    EXPECT_EQ(Get(L"Body"), L"tex");
    Fail(L"MAPI32::HrGetOneProp");
    Varden().Watch().AlsoFailMember(L"IMessage::OpenProperty", E_NOINTERFACE);
    ExpectFailure(L"VARD_GetFieldData", {L"Body"}, errors::Mapi(L"Interface not supported"));
    Fail(L"IMessage::OpenProperty", S_FALSE);
    ExpectReads({{L"RTF Body", L""}});
    Fail(L"MailItem::put_HTMLBody");
    ExpectComError(L"VARD_SetFieldData", {L"HTML Body", L"<p>x</p>"});
    EXPECT_EQ(Get(L"Body"), L" "); // what was written before stays
}

TEST_F(FieldFailureTest, ADateBeyondTheCalendarHasNoText) {
    ExpectShown({}, {{L"Expires", L"Invalid DateTime", {PR_EXPIRY_TIME, SysTime{0x7000000000000000}}}});
}

TEST_F(FieldFailureTest, NamesThatCannotBeLookedUpReadAsNothingAndAreNotWritten) {
    ExpectShown({.messageClass = L"IPM.Appointment"},
                {{L"Label", L"Business", {sets::kAppointment, 0x8214, 2}}});
    Fail(L"IMessage::GetIDsFromNames");
    ExpectReads({{L"Label", L""}});
    Fail(L"IMessage::GetIDsFromNames");
    EXPECT_EQ(Set(L"Label", L"Personal"), L"0");
    ExpectReads({{L"Label", L"Business"}});
    Fail(L"IMessage::GetIDsFromNames");
    EXPECT_EQ(Set(L"Location", L"Room 5"), L"0"); // without its trace
    EXPECT_EQ(LastErrorCode(), 0);
    ExpectReads({{L"Location", L"Room 5"}});
    // The trace of the required attendees has a tag of its own: it is tried, and the store refuses it.
    Fail(L"IMessage::GetIDsFromNames");
    EXPECT_EQ(Set(L"Required Attendees", L"Warehouse"), L"0");
    EXPECT_TRUE(Varden().Watch().HasFailed());
    EXPECT_EQ(LastErrorText(), L"MAPI Subsystem error\rError: 8004011A\rMAPI_E_COMPUTED");
    Save();
    ExpectReads({{L"Required Attendees", L"Warehouse"}});

    Open({.messageClass = L"IPM.Contact"});
    Fail(L"IMessage::GetIDsFromNames");
    ExpectReads({{L"E-mail", L""}});
    Open({.messageClass = L"IPM.DistList"});
    ASSERT_EQ(Call(L"VARD_AddOneOffMember", {L"Ann", L"ann@example.com", L"SMTP"}), L"0");
    Fail(L"IMessage::GetIDsFromNames");
    ExpectFailure(L"VARD_GetFieldData", {L"One Off Members"}, errors::Denied());
}

TEST_F(FieldFailureTest, AnItemWithoutAMessageReadsAsNothingBelowTheObjectModel) {
    const auto withoutMessage = [&](const wchar_t* field, const wchar_t* text) {
        Fail(L"IMessage::QueryInterface", E_NOINTERFACE);
        ExpectReads({{field, text}});
        EXPECT_TRUE(Varden().Watch().HasFailed());
    };
    Open({.messageClass = L"IPM.Task", .subject = L"Order"});
    withoutMessage(L"Owner", L"");
    withoutMessage(L"task dead occur", L"");
    withoutMessage(L"Subject", L"Order");
    Open({.messageClass = L"IPM.Appointment"});
    withoutMessage(L"NetMeeting Organizer Alias", L"");
    withoutMessage(L"Label", L"");
    withoutMessage(L"Organizer", L"");
    Fail(L"IMessage::QueryInterface", E_NOINTERFACE);
    EXPECT_EQ(Set(L"Location", L"Room 5"), L"0"); // without its trace
    ExpectReads({{L"Location", L"Room 5"}});
}

TEST_F(FieldFailureTest, AMessageOfNoKindHasOnlyTheFieldsOfEveryKind) {
    const std::wstring id =
        ExpectShown({}, {{L"Sent On Behalf Of", L"Ann", {PR_SENT_REPRESENTING_NAME_W, L"Ann "}}});
    const Texts pass{id, L"Warehouse", L"", L"", L"x", L"no"};
    Varden().Watch().KeepLines(true);
    ASSERT_EQ(Call(L"VARD_ReplyToMessage", pass), L"0");
    const auto asked = std::ranges::count_if(Varden().Watch().Lines(), [](const std::wstring& line) {
        return line.find(L"MailItem::QueryInterface") != std::wstring::npos;
    });
    Varden().Watch().KeepLines(false);
    // The mail that passes it on is asked last, and isn't one.
    Fail(L"MailItem::QueryInterface", E_NOINTERFACE, static_cast<std::uint64_t>(asked));
    EXPECT_EQ(Call(L"VARD_ReplyToMessage", pass), kError);
    EXPECT_TRUE(Varden().Watch().HasFailed());
    ExpectFailure(L"VARD_GetFieldData", {L"Subject"}, errors::kNoRecord);
    ExpectReads({{L"Sent On Behalf Of", L"Ann"}});
}

/// Linked contacts, where the record is an appointment or one of its occurrences.
TEST_F(FieldFailureTest, LinkedContactsBelongToTheOpenOccurrence) {
    MailboxTest::Open(L"/Calendar");
    New(L"Calendar");
    Set(L"Start", L"3/2/2026 9:00 AM");
    EXPECT_EQ(Set(L"Con tacts", L"Ann, Bob"), L"0"); // blanks don't count in an appointment's names
    ExpectReads({{L"Contacts", L"Ann\rBob"}});
    ExpectSuccess(L"VARD_RPOpenRecurrencePattern", {});
    ExpectWrites({{L"Recurrence Type", L"Daily", L"Daily"}, {L"Occurrences", L"5", L"5"}});
    Save();
    ExpectSuccess(L"VARD_RPOpenOccurrence", {L"3/4/2026 9:00 AM"});
    ExpectWrites({{L"Contacts", L"Carl\rDora", L"Carl\rDora"}, {L"Label", L"Business", L"Business"}});
    Fail(L"IMessage::QueryInterface", E_NOINTERFACE);
    EXPECT_EQ(Set(L"Contacts", L"Eve"), kError);
    EXPECT_EQ(Call(L"VARD_RPCloseOccurrenceItem"), L"0");
    EXPECT_EQ(Call(L"VARD_RPCloseRecurrencePattern"), L"0");
    EXPECT_EQ(Get(L"Contacts"), L"Ann\rBob"); // the series' own
}

class FieldLogTest : public FieldFailureTest {
protected:
    /// Whether the lines stand in the log in this order, each within a line, once the field is read, or, with
    /// data, written.
    void ExpectLogged(const wchar_t* field, const wchar_t* data, const std::vector<std::string>& lines) {
        const std::wstring path = m_files.File(L"log.txt");
        Call(L"VARD_LogSet", {L"1", path});
        data ? Set(field, data) : Get(field);
        Call(L"VARD_LogSet", {L"0"});
        const std::string log = BytesIn(path);
        DeleteFileW(path.c_str());
        std::size_t at = 0;
        for (const std::string& line : lines) {
            const std::size_t found = log.find(line + "\r", at);
            EXPECT_NE(found, std::string::npos) << line << " is missing in\n" << log;
            at = found == std::string::npos ? at : found + line.size();
        }
    }

private:
    TemporaryFolder m_files;
};

TEST_F(FieldLogTest, AFieldLogsItsWay) {
    Open({.subject = L"First", .body = L"text"});
    ExpectLogged(L"Subject", nullptr,
                 {"FUNCTION ENTER: GetFieldData", "get mail field data", "FUNCTION ENTER: GetMailFieldData",
                  "FUNCTION EXIT: GetMailFieldData", "Returning First", "FUNCTION EXIT: GetFieldData"});
    ExpectLogged(L"Sent On", nullptr,
                 {"getting datetime prop", "failed to get date time prop", "Returning "});
    ExpectLogged(L"To", nullptr, {"getting smtp address", "FUNCTION ENTER: mapi_GetSMTPAddresses"});
    ExpectLogged(L"From", nullptr,
                 {"getting sender smtp address", "FUNCTION ENTER: mapi_GetSenderEMailAddress", "Returning ",
                  "FUNCTION EXIT: mapi_GetSenderEMailAddress"});
    ExpectLogged(L"Contacts", nullptr, {"getting contact information", "FUNCTION EXIT: GetFieldData"});
    ExpectLogged(L"No Such", nullptr,
                 {"get mail field data", "FUNCTION EXIT: error in function", "Returning !!ERROR!!"});
    ExpectLogged(L"Mileage", L"12 km",
                 {"FUNCTION ENTER: SetFieldData", "seting mail field", "FUNCTION ENTER: SetMailField",
                  "Setting field: Mileage", "Cleaning up before exiting function",
                  "FUNCTION EXIT: SetMailField", "FUNCTION EXIT: SetFieldData"});
    ExpectLogged(L"Importance", L"x",
                 {"seting mail field", "Setting field: Importance", "Cleaning up before exiting function",
                  "An error occurred. Check it with VARD_GetLastError( \"Text\" ).",
                  "FUNCTION EXIT: error in function"});
    Open({.messageClass = L"IPM.Document"});
    ExpectLogged(L"Subject", L"x", {"FUNCTION ENTER: SetFieldData", "FUNCTION EXIT: error in function"});
}

} // namespace
} // namespace varden::tests
