// The fields of the kinds of item beyond contacts, mails, appointments, tasks and lists: each kind's
// vocabulary read as a whole, and written as far as scripts may.
#include "FieldTest.h"

#include "standin/mailbox/Tags.h"

#include <cstring>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class OtherKindsTest : public FieldTest {
protected:
    OtherKindsTest() : FieldTest(L"Inbox") {}

    /// Whatever the record, every setting ends here.
    void ExpectNothingIsWritten(const FieldNames& names) {
        for (const wchar_t* name : names) {
            ExpectFailure(L"VARD_SetFieldData", {name, L"x"}, -1023,
                          L"Item operation called without opening/creating a record");
        }
    }
};

TEST_F(OtherKindsTest, ANotesFieldsAreReadAndThreeOfThemWritten) {
    MessageToAdd note = Ordinary(L"IPM.StickyNote.Yellow");
    Put(note, {{sets::kNote, 0x8B00, PT_LONG, std::int32_t{1}}});
    note.more.Set<PR_CREATION_TIME>(Utc(2026, 2, 1, 8));
    Open(note);
    ExpectReads(OrdinaryTexts({L"Categories", L"Subject"}));
    ExpectReads({{L"Body", L"one\rtw"},
                 {L"Color", L"1"},
                 {L"Created", LocalText(Utc(2026, 2, 1, 8))},
                 {L"Form Name", L"IPM.StickyNote.Yellow"},
                 {L"Message Class", L"IPM.StickyNote.Yellow"}});
    ExpectUnreadable({L"To", L"ID", L"Importance", L"Size", L"Saved", L"color"});
    ExpectWrites({{L"Categories", L"Blue", L"Blue"}, {L"Color", L"4", L"4"}});
    // Outlook gives no MAPI view of an open note, so that its body is read as it was saved.
    ExpectWrites({{L"Body", L"Milk\r\nBread\r\n", L"one\rtw"}});
    EXPECT_EQ(Get(L"Subject"), L"Milk"); // Outlook's own doing
    ExpectUnwritable({L"Subject", L"Form Name", L"Message Class", L"Contacts", L"Importance"});
    const std::wstring saved = Call(L"VARD_SaveRecord");
    ASSERT_EQ(Call(L"VARD_OpenRecord", {saved}), L"0");
    ExpectReads({{L"Body", L"Milk\rBread"}, {L"Color", L"4"}});
}

TEST_F(OtherKindsTest, AJournalEntrysFieldsAreReadFromTheirProperties) {
    MessageToAdd entry = Ordinary(L"IPM.Activity");
    Put(entry, {{sets::kLog, 0x8700, PT_UNICODE, L"Meeting"},
                {sets::kLog, 0x8706, PT_SYSTIME, Utc(2026, 3, 1, 9)},
                {sets::kLog, 0x8707, PT_LONG, std::int32_t{45}},
                {sets::kLog, 0x8708, PT_SYSTIME, Utc(2026, 3, 1, 9, 45)},
                {sets::kLog, 0x870E, PT_BOOLEAN, true},
                {sets::kLog, 0x870F, PT_BOOLEAN, true},
                {sets::kLog, 0x8710, PT_BOOLEAN, true},
                {sets::kLog, 0x8711, PT_BOOLEAN, true},
                {sets::kCommon, 0x853A, PT_MV_UNICODE, std::vector<std::wstring>{L"Ann"}}});
    Open(entry);
    ExpectReads(OrdinaryTexts({L"Billing Information", L"Categories", L"Companies", L"Conversation Index",
                               L"Conversation Topic", L"Importance", L"Is Conflict", L"Mileage", L"No Aging",
                               L"Saved", L"Sensitivity", L"Subject", L"Unread"}));
    ExpectReads({{L"Body", L"one\rtw"},
                 {L"Contacts", L"Ann"},
                 {L"Doc Posted", L"True"},
                 {L"Doc Printed", L"True"},
                 {L"Doc Routed", L"True"},
                 {L"Doc Saved", L"True"},
                 {L"Duration", L"45"},
                 {L"Start", DateAsShown(L"3/1/2026 9:00 AM")},
                 {L"End", DateAsShown(L"3/1/2026 9:45 AM")},
                 {L"Form Name", L"IPM.Activity"},
                 {L"Message Class", L"IPM.Activity"},
                 {L"Type", L"Meeting"}});
    EXPECT_GT(std::stol(Get(L"Size")), 10);
    ExpectUnreadable({L"ID", L"EntryID", L"Contact Names", L"Company", L"Is Marked As Task"});
}

TEST_F(OtherKindsTest, SixFieldsOfAJournalEntryCannotBeCleared) {
    New(L"Journal");
    for (const wchar_t* data : {L"False", L"", L"Normal", L"True"}) {
        ExpectWrites({{L"Doc Posted", data, L"True"},
                      {L"Doc Printed", data, L"True"},
                      {L"Doc Routed", data, L"True"},
                      {L"Doc Saved", data, L"True"},
                      {L"No Aging", data, L"True"},
                      {L"Sensitivity", data, L"Confidential"}});
    }
    ExpectWrites({{L"Billing Information", L"4711", L"4711"},
                  {L"Body", L"Hello.\r\n", L"Hello."},
                  {L"Categories", L"Red", L"Red"},
                  {L"Companies", L"Example Trading", L"Example Trading"},
                  {L"Start", L"3/1/2026 9:00 AM", DateAsShown(L"3/1/2026 9:00 AM")},
                  {L"End", L"3/1/2026 9:45 AM", DateAsShown(L"3/1/2026 9:45 AM")},
                  {L"Duration", L"30", L"30"},
                  {L"Importance", L"H", L"High"},
                  {L"Message Class", L"IPM.Activity.Visit", L"IPM.Activity.Visit"},
                  {L"Mileage", L"12 km", L"12 km"},
                  {L"Subject", L"Visit", L"Visit"},
                  {L"Type", L"E-mail Message", L"E-mail Message"}});
    EXPECT_EQ(Get(L"End"), DateAsShown(L"3/1/2026 9:30 AM"));
    EXPECT_EQ(Set(L"Contact Names", L"Ann; Bob"), L"0");
    EXPECT_EQ(Get(L"Contacts"), L"Ann\rBob");
    ExpectRefusals({{L"Start", L"soon"}, {L"End", L"never"}, {L"Importance", L"x"}}, -1089,
                   L"Invalid value for field");
    ExpectUnwritable({L"Form Name", L"Saved", L"ID.", L"Company", L"Mark As Task"});
    ExpectRefusals({{L"Unread", L"x"}, {L"Is Conflict", L"x"}, {L"Conversation Topic", L"x"}}, -1096,
                   L"Field is read-only");
}

TEST_F(OtherKindsTest, APostsFieldsAreReadFromTheirProperties) {
    MessageToAdd post = Ordinary(L"IPM.Post");
    post.more.Set<PR_CLIENT_SUBMIT_TIME>(Utc(2026, 3, 1, 9));
    post.more.Set<PR_MESSAGE_DELIVERY_TIME>(Utc(2026, 3, 1, 10));
    post.more.Set<PR_EXPIRY_TIME>(Utc(2026, 4, 1, 10));
    post.more.Set<PR_CREATION_TIME>(Utc(2026, 2, 1, 8));
    post.more.Set<PR_LAST_MODIFICATION_TIME>(Utc(2026, 2, 2, 9));
    post.more.Set<PR_SENDER_NAME_W>(L"Service North");
    const std::wstring entryId = Open(post);
    ExpectReads(OrdinaryTexts({L"Billing Information", L"Categories", L"Companies", L"Conversation Index",
                               L"Conversation Topic", L"Importance", L"Is Conflict", L"Mileage", L"No Aging",
                               L"Saved", L"Sensitivity", L"Subject", L"Unread"}));
    ExpectReads({{L"Body", L"one\rtw"},
                 {L"Body Format", L"Plain Text"},
                 {L"Creation Time", LocalText(Utc(2026, 2, 1, 8))},
                 {L"EntryID", entryId},
                 {L"Expires", DateAsShown(L"4/1/2026 10:00 AM")},
                 {L"Form Name", L"IPM.Post"},
                 {L"Message Class", L"IPM.Post"},
                 {L"Last Modification Time", DateAsShown(L"2/2/2026 9:00 AM")},
                 {L"Last Modified", LocalText(Utc(2026, 2, 2, 9))},
                 {L"Received Time", LocalText(Utc(2026, 3, 1, 10))},
                 {L"Sent On", LocalText(Utc(2026, 3, 1, 9))},
                 {L"Size", DateAsShown(L"3/1/2026 9:00 AM")}, // a date under this name
                 {L"Sender Name", L"Service North"},
                 {L"Is Marked As Task", L"False"},
                 {L"Task Due Date", L"None"}});
    ExpectUnreadable({L"ID", L"Entry ID", L"Company", L"Mark As Task", L"Class"});
    MessageToAdd html{.messageClass = L"IPM.Post"};
    html.more.Set<kPrHtml>(Bytes{'<', 'p', '>', 0xFC, '<', '/', 'p', '>'});
    Open(html);
    ExpectReads({{L"HTML Body", L"<p>\u00fc</p>"}, {L"Size", L"None"}, {L"Sender Name", L""}});
}

TEST_F(OtherKindsTest, APostIsWrittenInWholeWords) {
    New(L"Post");
    ExpectWrites({{L"Billing Information", L"4711", L"4711"},
                  {L"Body", L"Hello.\r\n", L"Hello."},
                  {L"Categories", L"Red", L"Red"},
                  {L"Companies", L"Example Trading", L"Example Trading"},
                  {L"Contacts", L"Ann;Bob", L"Ann\rBob"},
                  {L"Expires", L"4/1/2026 10:00 AM", DateAsShown(L"4/1/2026 10:00 AM")},
                  {L"Expires", L"none", L"None"},
                  {L"HTML Body", L"<html><body>Hi</body></html>", L"<html><body>Hi</body></html>"},
                  {L"Importance", L"High", L"Normal"}, // known, and ignored
                  {L"Importance", L"anything", L"Normal"},
                  {L"Message Class", L"IPM.Post.Order", L"IPM.Post.Order"},
                  {L"Mileage", L"12 km", L"12 km"},
                  {L"No Aging", L"True", L"True"},
                  {L"No Aging", L"TRUE", L"False"},
                  {L"No Aging", L"T", L"False"},
                  {L"Sensitivity", L"Confidential", L"Confidential"},
                  {L"Sensitivity", L"Personal", L"Personal"},
                  {L"Sensitivity", L"Private", L"Private"},
                  {L"Sensitivity", L"Normal", L"Normal"},
                  {L"Subject", L"Hello", L"Hello"},
                  {L"Body Format", L"Rich Text", L"Rich Text"},
                  {L"Body Format", L"HTML", L"HTML"},
                  {L"Body Format", L"Plain", L"Plain Text"},
                  {L"Body Format", L"Plain Text", L"Plain Text"}});
    ExpectRefusals({{L"Sensitivity", L"C"},
                    {L"Sensitivity", L"Confidentially"},
                    {L"Sensitivity", L"private"},
                    {L"Body Format", L"Unspecified"},
                    {L"Body Format", L"html"},
                    {L"Body Format", L""},
                    {L"Expires", L"soon"},
                    {L"Mark As Task", L"someday"}},
                   -1089, L"Invalid value for field");
    EXPECT_EQ(Set(L"Mark As Task", L"Next Week"), L"0");
    ExpectWrites({{L"task subject", L"Answer", L"!!ERROR!!"}});
    ExpectReads({{L"Is Marked As Task", L"True"}});
    EXPECT_EQ(Get(L"Task Subject"), L"Answer");
    ExpectUnwritable({L"Form Name", L"EntryID", L"Creation Time", L"Last Modification Time", L"Received Time",
                      L"Sent On", L"Saved", L"Sender Name", L"Task Completed Date"});
    Varden().Watch().FailMember(L"MAPI32::HrSetOneProp", E_ACCESSDENIED);
    EXPECT_EQ(Set(L"Body", L"x"), kError);
    EXPECT_EQ(LastErrorText(), L"MAPI Subsystem error\rError: 80070005\rMAPI_E_NO_ACCESS");
}

/// The properties of a flagged message that was sent and received.
MessageToAdd Delivered(MessageToAdd message) {
    message.more.Set<PR_CLIENT_SUBMIT_TIME>(Utc(2026, 3, 1, 9));
    message.more.Set<PR_MESSAGE_DELIVERY_TIME>(Utc(2026, 3, 1, 10));
    message.more.Set<PR_EXPIRY_TIME>(Utc(2026, 4, 1, 10));
    message.more.Set<PR_REPLY_TIME>(Utc(2026, 3, 2, 12));
    message.more.Set<PR_SENDER_NAME_W>(L"Service North");
    message.more.Set<kPrLastModifierName>(L"Front Desk");
    message.more.Set<0x10900003>(2); // marked
    message.more.Set<0x10950003>(6); // in red
    return message;
}

TEST_F(OtherKindsTest, AMeetingsFieldsAreReadFromTheirProperties) {
    MessageToAdd meeting = Delivered(Ordinary(L"IPM.Schedule.Meeting.Request"));
    Put(meeting,
        {{sets::kCommon, 0x8530, PT_UNICODE, L"Follow up"}, {sets::kCommon, 0x8503, PT_BOOLEAN, true}});
    const std::wstring entryId = Open(meeting);
    ExpectReads(OrdinaryTexts({L"Billing Information", L"Categories", L"Companies", L"Conversation Index",
                               L"Conversation Topic", L"Importance", L"Is Conflict", L"Mileage",
                               L"Sensitivity", L"Subject"}));
    ExpectReads({{L"Body", L"one\ntwo"}, // as a mail's
                 {L"Class", L"53"},
                 {L"Due Date", DateAsShown(L"3/2/2026 12:00 PM")},
                 {L"Expiry Time", DateAsShown(L"4/1/2026 10:00 AM")},
                 {L"Flag Icon", L"Red"}, // a word, unlike a mail's
                 {L"Flag Request", L"Follow up"},
                 {L"Flag Status", L"Marked"},
                 {L"Form Name", L"IPM.Schedule.Meeting.Request"},
                 {L"Message Class", L"IPM.Schedule.Meeting.Request"},
                 {L"From Name", L"Service North"},
                 {L"ID", entryId},
                 {L"Is Sent", L"True"},
                 {L"Is Submitted", L"False"},
                 {L"Last Modifier Name", L"Front Desk"},
                 {L"Received", DateAsShown(L"3/1/2026 10:00 AM")},
                 {L"Reminder Set", L"True"},
                 {L"Sent On", LocalText(Utc(2026, 3, 1, 9))}});
    EXPECT_GT(std::stol(Get(L"Size")), 10);
    ExpectUnreadable({L"Sent Date", L"EntryID", L"Company", L"Unread", L"Is Marked As Task"});
    ExpectWrites({{L"Billing Information", L"12", L"12"},
                  {L"Body", L"Hello", L"Hello"},
                  {L"Categories", L"Blue", L"Blue"},
                  {L"Companies", L"Other", L"Other"},
                  {L"Due Date", L"3/5/2026 8:00 AM", DateAsShown(L"3/5/2026 8:00 AM")},
                  {L"Expiry Time", L"None", L"None"},
                  {L"Flag Icon", L"Green", L"Green"},
                  {L"Flag Request", L"Call", L"Call"},
                  {L"Flag Status", L"Complete", L"Complete"},
                  {L"Form Name", L"IPM.Schedule.Meeting.Request.A", L"IPM.Schedule.Meeting.Request.A"},
                  {L"Message Class", L"IPM.Schedule.Meeting.Request.B", L"IPM.Schedule.Meeting.Request.B"},
                  {L"Importance", L"Low", L"Low"},
                  {L"Mileage", L"1", L"1"},
                  {L"Sensitivity", L"Confidential", L"Confidential"},
                  {L"Subject", L"Later", L"Later"}});
    ExpectRefusals({{L"Associated Appointment", L"x"},
                    {L"Sent Date", L"x"},
                    {L"Reminder Time", L"x"},
                    {L"Reminder Set", L"True"},
                    {L"Received", L"x"},
                    {L"Is Submitted", L"x"},
                    {L"Is Sent", L"x"},
                    {L"Class", L"x"}},
                   -1096, L"Field is read-only");
    ExpectRefusals({{L"Flag Status", L"x"}, {L"Due Date", L"x"}, {L"Importance", L"x"}}, -1089,
                   L"Invalid value for field");
    ExpectUnwritable({L"From", L"From Name", L"Last Modifier Name", L"Sent On", L"Contacts"});
}

TEST_F(OtherKindsTest, AMeetingGivesWayToItsAppointment) {
    Open({.messageClass = L"IPM.Schedule.Meeting.Canceled", .subject = L"Nowhere"});
    Varden().Watch().FailMember(L"MeetingItem::GetAssociatedAppointment", E_FAIL);
    EXPECT_EQ(Get(L"Associated Appointment"), kError);
    EXPECT_NE(LastErrorText().find(L"Error: 80004005"), std::wstring::npos);
    ExpectFailure(L"VARD_GetFieldData", {L"Associated Appointment"}, -1097,
                  L"MAPI Subsystem error\rUnable to get associated appt for item");
    EXPECT_EQ(Get(L"Class"), L"54"); // still the meeting
    MessageToAdd request{.messageClass = L"IPM.Schedule.Meeting.Request", .subject = L"Rota"};
    constexpr GUID appointments = sets::Outlook(0x00062002);
    Put(request, {{appointments, 0x820D, PT_SYSTIME, Utc(2026, 3, 1, 9)},
                  {appointments, 0x820E, PT_SYSTIME, Utc(2026, 3, 1, 10)}});
    Open(request);
    Varden().Watch().FailMember(L"IMessage::QueryInterface", E_NOINTERFACE);
    ExpectFailure(L"VARD_GetFieldData", {L"Associated Appointment"}, -1097,
                  L"MAPI Subsystem error\rError: 80004002\rMAPI_E_INTERFACE_NOT_SUPPORTED");
    EXPECT_EQ(Get(L"Class"), L"53");
    EXPECT_EQ(Get(L"Associated Appointment"), L"0");
    EXPECT_EQ(Get(L"Start"), DateAsShown(L"3/1/2026 9:00 AM"));
    ExpectUnreadable({L"Associated Appointment"}); // an appointment has no such field
}

TEST_F(OtherKindsTest, ReportsAndTaskRequestsDifferInBodyAndCompanies) {
    for (const wchar_t* messageClass : {L"REPORT.IPM.Note.NDR", L"IPM.TaskRequest"}) {
        SCOPED_TRACE(testing::PrintToString(messageClass));
        const bool isReport = *messageClass == L'R';
        const std::wstring entryId = Open(Ordinary(messageClass));
        ExpectReads(OrdinaryTexts({L"Billing Information", L"Categories", L"Companies", L"Conversation Index",
                                   L"Conversation Topic", L"Importance", L"Is Conflict", L"Mileage",
                                   L"Sensitivity", L"Subject", L"Unread"}));
        ExpectReads({{L"Body", isReport ? L"one\r\ntwo" : L"one\rtw"},
                     {L"Class", isReport ? L"46" : L"49"},
                     {L"Form Name", messageClass},
                     {L"Message Class", messageClass},
                     {L"ID", entryId},
                     {L"In Folder", L"Inbox"}});
        EXPECT_GT(std::stol(Get(L"Size")), 10);
        ExpectUnreadable({L"Company", L"EntryID", L"Saved", L"No Aging"});
        const std::wstring form = std::wstring(messageClass) + L".Own";
        ExpectWrites({{L"Billing Information", L"12", L"12"},
                      {L"Body", L"Hello\r\n", isReport ? L"Hello\r\n" : L"Hello"},
                      {L"Categories", L"Blue", L"Blue"},
                      {L"Form Name", form, form},
                      {L"Importance", L"Low", L"Low"},
                      {L"Mileage", L"1", L"1"},
                      {L"Sensitivity", L"Private", L"Private"},
                      {L"Subject", L"Later", L"Later"}});
        EXPECT_EQ(Set(L"Company", L"Other"), L"0");
        EXPECT_EQ(Get(L"Companies"), L"Other");
        if (isReport) {
            ExpectWrites({{L"Companies", L"Third", L"Third"}});
        } else {
            ExpectUnwritable({L"Companies"});
        }
        ExpectUnwritable({L"Message Class", L"Contacts", L"No Aging"});
        ExpectRefusals({{L"In Folder", L"x"}, {L"Unread", L"x"}}, -1096, L"Field is read-only");
        ExpectRefusals({{L"Importance", L"x"}, {L"Sensitivity", L"x"}}, -1089, L"Invalid value for field");
    }
}

TEST_F(OtherKindsTest, AnswersToATaskRequestAreReadAndNotWritten) {
    const std::vector<std::tuple<const wchar_t*, const wchar_t*, const wchar_t*>> answers{
        {L"IPM.TaskRequest.Accept", L"51", L"Mark for Download"},
        {L"IPM.TaskRequest.Decline", L"52", L"Mark For Download"},
        {L"IPM.TaskRequest.Update", L"50", L"Mark For Download"}};
    for (const auto& [messageClass, number, mark] : answers) {
        SCOPED_TRACE(testing::PrintToString(messageClass));
        const std::wstring entryId = Open(Ordinary(messageClass));
        ExpectReads(OrdinaryTexts({L"Auto Resolved Winner", L"Billing Information", L"Categories",
                                   L"Companies", L"Conversation Index", L"Conversation Topic",
                                   L"Download State", L"Importance", L"Is Conflict", mark, L"Mileage",
                                   L"No Aging", L"Saved", L"Sensitivity", L"Subject", L"Unread"}));
        ExpectReads({{L"Body", L"one\rtw"},
                     {L"Class", number},
                     {L"Form Name", messageClass},
                     {L"Message Class", messageClass},
                     {L"ID", entryId},
                     {L"Entry ID", entryId},
                     {L"In Folder", L"Inbox"},
                     {L"Parent", L"Inbox"}});
        EXPECT_GT(std::stol(Get(L"Size")), 10);
        ExpectUnreadable(
            {std::wcscmp(mark, L"Mark for Download") == 0 ? L"Mark For Download" : L"Mark for Download",
             L"EntryID", L"Company"});
        ExpectNothingIsWritten({L"Subject", L"Body", L"Contacts", L"Company"});
        Open({.messageClass = messageClass});
        ExpectReads({{L"No Aging", L""}, {mark, L""}, {L"Categories", L""}});
    }
}

TEST_F(OtherKindsTest, DocumentsAndRemoteItemsAreReadAndNotWritten) {
    for (const wchar_t* messageClass : {L"IPM.Document.txtfile", L"IPM.Remote"}) {
        SCOPED_TRACE(testing::PrintToString(messageClass));
        const bool isRemote = messageClass[4] == L'R';
        MessageToAdd message = Ordinary(messageClass);
        Put(message, {{sets::kRemote, 0x8F02, PT_UNICODE, L"IPM.Note"},
                      {sets::kRemote, 0x8F04, PT_LONG, std::int32_t{3}},
                      {sets::kRemote, 0x8F05, PT_LONG, std::int32_t{12000}}});
        const std::wstring entryId = Open(message);
        ExpectReads(
            OrdinaryTexts({L"Auto Resolved Winner", L"Billing Information", L"Categories", L"Companies",
                           L"Conversation Index", L"Conversation Topic", L"Download State", L"Importance",
                           L"Is Conflict", L"Mark for Download", L"Mileage", L"No Aging", L"Saved",
                           L"Sensitivity", L"Subject", L"Unread"}));
        ExpectReads({{L"Body", L"one\rtw"},
                     {L"Class", isRemote ? L"47" : L"41"},
                     {L"EntryID", entryId},
                     {L"Form Name", messageClass},
                     {L"Message Class", messageClass}});
        EXPECT_GT(std::stol(Get(L"Size")), 10);
        if (isRemote) {
            ExpectReads({{L"Remote Message Class", L"IPM.Note"},
                         {L"Transfer Size", L"12000"},
                         {L"Transfer Time", L"3"}});
        } else {
            ExpectUnreadable({L"Remote Message Class", L"Transfer Size", L"Transfer Time"});
        }
        ExpectUnreadable({L"ID", L"Entry ID", L"In Folder", L"Mark For Download"});
        ExpectNothingIsWritten({L"Subject", L"Categories", L"Contacts", L"Mark For Download"});
    }
}

TEST_F(OtherKindsTest, ASharingItemsFieldsAreReadFromTheirProperties) {
    MessageToAdd message = Delivered(Ordinary(L"IPM.Sharing"));
    constexpr GUID exchange = sets::Outlook(0x0006F0AE);
    Bytes provider(sizeof exchange);
    std::memcpy(provider.data(), &exchange, sizeof exchange);
    Put(message, {{sets::kSharing, 0x8A01, PT_BINARY, provider},
                  {sets::kSharing, 0x8A04, PT_UNICODE, L"http://example.com/calendar"},
                  {sets::kSharing, 0x8A05, PT_UNICODE, L"Rota"},
                  {sets::kSharing, 0x8A06, PT_UNICODE, L"00AB"},
                  {sets::kSharing, 0x8A18, PT_LONG, std::int32_t{0x0310}},
                  {sets::kSharing, 0x8A1B, PT_LONG, std::int32_t{0x047B}},
                  {sets::kSharing, 0x8A1D, PT_UNICODE, L"IPF.Contact"},
                  {sets::kCommon, 0x8503, PT_BOOLEAN, true},
                  {sets::kCommon, 0x851C, PT_BOOLEAN, true},
                  {sets::kCommon, 0x851E, PT_BOOLEAN, true},
                  {sets::kCommon, 0x851F, PT_UNICODE, L"ring.wav"},
                  {sets::kCommon, 0x8530, PT_UNICODE, L"Follow up"}});
    message.more.Set<PR_DELETE_AFTER_SUBMIT>(true);
    message.more.Set<PR_ORIGINATOR_DELIVERY_REPORT_REQUESTED>(true);
    message.more.Set<PR_READ_RECEIPT_REQUESTED>(true);
    message.more.Set<PR_RECIPIENT_REASSIGNMENT_PROHIBITED>(true);
    message.more.Set<PR_REPLY_RECIPIENT_NAMES_W>(L"Back Office");
    const std::wstring entryId = Open(message);
    ExpectReads(OrdinaryTexts({L"Billing Information", L"Categories", L"Companies", L"Conversation Index",
                               L"Conversation Topic", L"Download State", L"Importance", L"Is Conflict",
                               L"Mark for Download", L"Mileage", L"No Aging", L"Saved", L"Sensitivity",
                               L"Subject", L"Unread"}));
    ExpectReads({{L"Allow Write Access", L"True"},
                 {L"Alternate Recipient Allowed", L"True"},
                 {L"Body", L"one\rtw"},
                 {L"Body Format", L"Plain Text"},
                 {L"Class", L"104"},
                 {L"Delete After Submit", L"True"},
                 {L"Enable Shared Attachments", L"False"},
                 {L"EntryID", entryId},
                 {L"Expires", DateAsShown(L"4/1/2026 10:00 AM")},
                 {L"Expiry Time", DateAsShown(L"4/1/2026 10:00 AM")},
                 {L"Flag Icon", L"6"}, // as a mail's
                 {L"Flag Request", L"Follow up"},
                 {L"Flag Status", L"Marked"},
                 {L"Form Name", L"IPM.Sharing"},
                 {L"Message Class", L"IPM.Sharing"},
                 {L"Is Marked As Task", L"False"},
                 {L"Task Start Date", L"None"},
                 {L"Originator Delivery Report Requested", L"True"},
                 {L"Permission", L"unrestricted"},
                 {L"Permission Service", L"unknown"},
                 {L"Read Receipt Requested", L"True"},
                 {L"Recipient Reassignment Prohibited", L"True"},
                 {L"Reminder Override Default", L"True"},
                 {L"Reminder Play Sound", L"True"},
                 {L"Reminder Set", L"True"},
                 {L"Reminder Sound File", L"ring.wav"},
                 {L"Remote ID", L"00AB"},
                 {L"Remote Name", L"Rota"},
                 {L"Remote Path", L"http://example.com/calendar"},
                 {L"Remote Status", L"none"},
                 {L"Reply Recipient Names", L"Back Office"},
                 {L"Requested Folder", L"Contacts"},
                 {L"Sender Name", L"Service North"},
                 {L"Sent", L"True"},
                 {L"Sharing Provider", L"exchange"},
                 {L"Submitted", L"False"},
                 {L"Type", L"inviation"}}); // spelled so
    EXPECT_GT(std::stol(Get(L"Size")), 10);
    ExpectUnreadable({L"ID", L"type", L"Mark For Download", L"Auto Forwarded", L"Mark As Task"});
    ExpectNothingIsWritten({L"Subject", L"Type", L"Task Subject", L"Allow Write Access"});
    EXPECT_EQ(Set(L"Contacts", L"Ann"), L"0"); // the one that goes past the kind
    EXPECT_EQ(Get(L"Contacts"), L"Ann");
    MessageToAdd html{.messageClass = L"IPM.Sharing"};
    html.more.Set<kPrHtml>(Bytes{'<', 'p', '>'});
    Open(html);
    ExpectReads({{L"HTML Body", L"<p>"}});
}

TEST_F(OtherKindsTest, ASharingItemsNumbersHaveTheirWords) {
    const std::vector<std::pair<std::int32_t, std::wstring>> statuses{
        {0, L"none"}, {1, L""}, {2, L"download"}, {3, L"copy"}, {4, L"delete"}, {7, L""}};
    for (const auto& [number, word] : statuses) {
        MessageToAdd message{.messageClass = L"IPM.Sharing"};
        message.more.Set<0x3E0B0003>(number);
        Open(message);
        ExpectReads({{L"Remote Status", word}});
    }
    const std::vector<std::pair<std::int32_t, std::wstring>> types{{0, L"unknown"},
                                                                   {0x0500, L"request"},
                                                                   {0x0310, L"inviation"},
                                                                   {0x0710, L"invitationrequest"},
                                                                   {0x3310, L"responseallow"},
                                                                   {0x5100, L"responsedeny"}};
    for (const auto& [flavor, word] : types) {
        MessageToAdd message{.messageClass = L"IPM.Sharing"};
        Put(message, {{sets::kSharing, 0x8A18, PT_LONG, flavor}});
        Open(message);
        ExpectReads({{L"Type", word}, {L"Sharing Provider", L"unknown"}, {L"Requested Folder", L""}});
    }
    const std::vector<std::pair<const wchar_t*, std::wstring>> folders{{L"IPF.Appointment", L"Calendar"},
                                                                       {L"IPF.Journal", L"Journal"},
                                                                       {L"IPF.StickyNote", L"Notes"},
                                                                       {L"IPF.Task", L"Tasks"},
                                                                       {L"IPF.Note", L"Inbox"}};
    for (const auto& [containerClass, word] : folders) {
        MessageToAdd message{.messageClass = L"IPM.Sharing"};
        Put(message, {{sets::kSharing, 0x8A1D, PT_UNICODE, containerClass}});
        Open(message);
        ExpectReads({{L"Requested Folder", word}});
    }
}

TEST_F(OtherKindsTest, AStorageItemIsReadAndNotWritten) {
    MessageToAdd message = Ordinary(L"IPM.Storage");
    message.more.Set<kPrCreatorName>(L"Service North");
    const std::wstring entryId = Open(message);
    ExpectReads({{L"Body", L"one\rtw"},
                 {L"Class", L"113"},
                 {L"Creator", L"Service North"},
                 {L"Creator Name", L"Service North"},
                 {L"ID", entryId},
                 {L"Entry ID", entryId},
                 {L"In Folder", L"Inbox"},
                 {L"Parent", L"Inbox"},
                 {L"Subject", L"Order 12"}});
    EXPECT_GT(std::stol(Get(L"Size")), 10);
    ExpectUnreadable({L"Message Class", L"Categories", L"EntryID"});
    ExpectNothingIsWritten({L"Subject", L"Body", L"Creator", L"Contacts"});
}

} // namespace
} // namespace varden::tests
