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
            ExpectFailure(L"VARD_SetFieldData", {name, L"x"}, errors::kNoRecord);
        }
    }
};

TEST_F(OtherKindsTest, ANotesFieldsAreReadAndThreeOfThemWritten) {
    ExpectOrdinary(L"IPM.StickyNote.Yellow", {L"Categories"},
                   {L"Body", L"Form Name", L"Message Class", L"Subject"});
    ExpectUnreadable({L"To", L"ID", L"Importance", L"Size", L"Saved", L"color"});
    ExpectUnwritable({L"Subject", L"Form Name", L"Message Class", L"Contacts", L"Importance"});
    ExpectShown({.messageClass = L"IPM.StickyNote"},
                {{L"Created", LocalText(Utc(2026, 2, 1, 8)), {PR_CREATION_TIME, Utc(2026, 2, 1, 8)}}});
    ExpectBothWays({.messageClass = L"IPM.StickyNote", .body = L"one\r\ntwo"},
                   {{L"Color", L"4", {sets::kNote, 0x8B00, 4}}});
    // Outlook gives no MAPI view of an open note, so that its body is read as it was saved.
    ExpectWrites({{L"Body", L"Milk\r\nBread\r\n", L"one\rtw"}});
    EXPECT_EQ(Get(L"Subject"), L"Milk"); // Outlook's own doing
    OpenRecord(Call(L"VARD_SaveRecord"));
    ExpectReads({{L"Body", L"Milk\rBread"}});
}

TEST_F(OtherKindsTest, AJournalEntrysFieldsAreReadFromTheirProperties) {
    ExpectOrdinary(
        L"IPM.Activity",
        {L"Billing Information", L"Categories", L"Companies", L"Importance", L"Mileage", L"Subject"},
        {L"Body", L"Conversation Index", L"Conversation Topic", L"Form Name", L"Is Conflict",
         L"Message Class", L"No Aging", L"Saved", L"Sensitivity", L"Size", L"Unread"});
    ExpectBothWays({.messageClass = L"IPM.Activity"},
                   {{L"Doc Posted", L"True", {sets::kLog, 0x8711, true}},
                    {L"Doc Printed", L"True", {sets::kLog, 0x870E, true}},
                    {L"Doc Routed", L"True", {sets::kLog, 0x8710, true}},
                    {L"Doc Saved", L"True", {sets::kLog, 0x870F, true}},
                    {L"Duration", L"45", {sets::kLog, 0x8707, 45}},
                    {L"Type", L"Meeting", {sets::kLog, 0x8700, L"Meeting"}}});
    ExpectShown({.messageClass = L"IPM.Activity"},
                {{L"Contacts", L"Ann", {sets::kCommon, 0x853A, Strings{L"Ann"}}},
                 {L"Start", DateAsShown(L"3/1/2026 9:00 AM"), {sets::kLog, 0x8706, Utc(2026, 3, 1, 9)}},
                 {L"End", DateAsShown(L"3/1/2026 9:45 AM"), {sets::kLog, 0x8708, Utc(2026, 3, 1, 9, 45)}}});
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
    ExpectWrites({{L"Body", L"Hello.\r\n", L"Hello."},
                  {L"Start", L"3/1/2026 9:00 AM", DateAsShown(L"3/1/2026 9:00 AM")},
                  {L"End", L"3/1/2026 9:45 AM", DateAsShown(L"3/1/2026 9:45 AM")},
                  {L"Duration", L"30", L"30"},
                  {L"Message Class", L"IPM.Activity.Visit", L"IPM.Activity.Visit"}});
    EXPECT_EQ(Get(L"End"), DateAsShown(L"3/1/2026 9:30 AM"));
    EXPECT_EQ(Set(L"Contact Names", L"Ann; Bob"), L"0");
    EXPECT_EQ(Get(L"Contacts"), L"Ann\rBob");
    ExpectInvalid({{L"Start", {L"soon"}}, {L"End", {L"never"}}, {L"Importance", {L"x"}}});
    ExpectUnwritable({L"Form Name", L"Saved", L"ID.", L"Company", L"Mark As Task"});
}

TEST_F(OtherKindsTest, APostsFieldsAreReadFromTheirProperties) {
    ExpectOrdinary(L"IPM.Post",
                   {L"Billing Information", L"Categories", L"Companies", L"Mileage", L"No Aging",
                    L"Sensitivity", L"Subject"},
                   {L"Body", L"Conversation Index", L"Conversation Topic", L"EntryID", L"Form Name",
                    L"Importance", L"Is Conflict", L"Message Class", L"Saved", L"Unread"});
    ExpectShown(
        {.messageClass = L"IPM.Post", .body = L"text"},
        {{L"Body Format", L"Plain Text"},
         {L"Expires", DateAsShown(L"4/1/2026 10:00 AM"), {PR_EXPIRY_TIME, Utc(2026, 4, 1, 10)}},
         {L"Last Modification Time",
          DateAsShown(L"2/2/2026 9:00 AM"),
          {PR_LAST_MODIFICATION_TIME, Utc(2026, 2, 2, 9)}},
         {L"Last Modified", LocalText(Utc(2026, 2, 2, 9))},
         {L"Creation Time", LocalText(Utc(2026, 2, 1, 8)), {PR_CREATION_TIME, Utc(2026, 2, 1, 8)}},
         {L"Received Time", LocalText(Utc(2026, 3, 1, 10)), {PR_MESSAGE_DELIVERY_TIME, Utc(2026, 3, 1, 10)}},
         {L"Sent On", LocalText(Utc(2026, 3, 1, 9)), {PR_CLIENT_SUBMIT_TIME, Utc(2026, 3, 1, 9)}},
         {L"Size", DateAsShown(L"3/1/2026 9:00 AM")}, // the same date under this name
         {L"Sender Name", L"Service North", {PR_SENDER_NAME_W, L"Service North"}},
         {L"Is Marked As Task", L"False"},
         {L"Task Due Date", L"None"}});
    ExpectUnreadable({L"ID", L"Entry ID", L"Company", L"Mark As Task", L"Class"});
    ExpectShown({.messageClass = L"IPM.Post"},
                {{L"HTML Body", L"<p>\u00fc</p>", {kPrHtml, Bytes{'<', 'p', '>', 0xFC, '<', '/', 'p', '>'}}},
                 {L"Size", L"None"},
                 {L"Sender Name", L""}});
}

TEST_F(OtherKindsTest, APostIsWrittenInWholeWords) {
    New(L"Post");
    ExpectWrites({{L"Body", L"Hello.\r\n", L"Hello."},
                  {L"Contacts", L"Ann;Bob", L"Ann\rBob"},
                  {L"Expires", L"4/1/2026 10:00 AM", DateAsShown(L"4/1/2026 10:00 AM")},
                  {L"Expires", L"none", L"None"},
                  {L"HTML Body", L"<html><body>Hi</body></html>", L"<html><body>Hi</body></html>"},
                  {L"Importance", L"High", L"Normal"}, // known, and ignored
                  {L"Importance", L"anything", L"Normal"},
                  {L"Message Class", L"IPM.Post.Order", L"IPM.Post.Order"},
                  {L"No Aging", L"True", L"True"},
                  {L"No Aging", L"TRUE", L"False"},
                  {L"No Aging", L"T", L"False"},
                  {L"Sensitivity", L"Confidential", L"Confidential"},
                  {L"Sensitivity", L"Private", L"Private"},
                  {L"Sensitivity", L"Normal", L"Normal"},
                  {L"Body Format", L"Rich Text", L"Rich Text"},
                  {L"Body Format", L"HTML", L"HTML"},
                  {L"Body Format", L"Plain", L"Plain Text"},
                  {L"Body Format", L"Plain Text", L"Plain Text"}});
    ExpectInvalid({{L"Sensitivity", {L"C", L"Confidentially", L"private"}},
                   {L"Body Format", {L"Unspecified", L"html", L""}},
                   {L"Expires", {L"soon"}},
                   {L"Mark As Task", {L"someday"}}});
    EXPECT_EQ(Set(L"Mark As Task", L"Next Week"), L"0");
    EXPECT_EQ(Set(L"task subject", L"Answer"), L"0"); // in any case
    ExpectUnreadable({L"task subject"});
    ExpectReads({{L"Is Marked As Task", L"True"}, {L"Task Subject", L"Answer"}});
    ExpectUnwritable({L"Form Name", L"EntryID", L"Creation Time", L"Last Modification Time", L"Received Time",
                      L"Sent On", L"Saved", L"Sender Name", L"Task Completed Date"});
    ExpectFaults(L"VARD_SetFieldData", {L"Body", L"x"}, {Denied(L"MAPI32::HrSetOneProp", L"")});
}

TEST_F(OtherKindsTest, AMeetingsFieldsAreReadFromTheirProperties) {
    ExpectOrdinary(L"IPM.Schedule.Meeting.Request",
                   {L"Billing Information", L"Categories", L"Companies", L"Importance", L"Mileage",
                    L"Sensitivity", L"Subject"},
                   {L"Conversation Index", L"Conversation Topic", L"Form Name", L"ID", L"Is Conflict",
                    L"Message Class", L"Size"});
    ExpectReads({{L"Body", L"one\ntwo"}, {L"Class", L"53"}}); // a mail's body
    ExpectBothWays(
        {.messageClass = L"IPM.Schedule.Meeting.Request"},
        {{L"Due Date", DateAsShown(L"3/2/2026 12:00 PM"), {PR_REPLY_TIME, Utc(2026, 3, 2, 12)}},
         {L"Expiry Time", DateAsShown(L"4/1/2026 10:00 AM"), {PR_EXPIRY_TIME, Utc(2026, 4, 1, 10)}},
         {L"Flag Icon", L"Red", {kPrFollowupIcon, 6}}, // a word, unlike a mail's
         {L"Flag Request", L"Follow up", {sets::kCommon, 0x8530, L"Follow up"}},
         {L"Flag Status", L"Marked", {kPrFlagStatus, 2}}});
    ExpectShown(
        {.messageClass = L"IPM.Schedule.Meeting.Request"},
        {{L"From Name", L"Service North", {PR_SENDER_NAME_W, L"Service North"}},
         {L"Is Sent", L"True"},
         {L"Is Submitted", L"False"},
         {L"Last Modifier Name", L"Front Desk", {kPrLastModifierName, L"Front Desk"}},
         {L"Received", DateAsShown(L"3/1/2026 10:00 AM"), {PR_MESSAGE_DELIVERY_TIME, Utc(2026, 3, 1, 10)}},
         {L"Reminder Set", L"True", {sets::kCommon, 0x8503, true}},
         {L"Sent On", LocalText(Utc(2026, 3, 1, 9)), {PR_CLIENT_SUBMIT_TIME, Utc(2026, 3, 1, 9)}}});
    ExpectUnreadable({L"Sent Date", L"EntryID", L"Company", L"Unread", L"Is Marked As Task"});
    ExpectWrites({{L"Body", L"Hello", L"Hello"},
                  {L"Expiry Time", L"None", L"None"},
                  {L"Flag Icon", L"Green", L"Green"},
                  {L"Flag Status", L"Complete", L"Complete"},
                  {L"Form Name", L"IPM.Schedule.Meeting.Request.A", L"IPM.Schedule.Meeting.Request.A"},
                  {L"Message Class", L"IPM.Schedule.Meeting.Request.B", L"IPM.Schedule.Meeting.Request.B"}});
    ExpectReadOnly({L"Associated Appointment", L"Sent Date", L"Reminder Time", L"Reminder Set", L"Received",
                    L"Is Submitted", L"Is Sent"});
    ExpectInvalid({{L"Flag Status", {L"x"}}, {L"Due Date", {L"x"}}, {L"Importance", {L"x"}}});
    ExpectUnwritable({L"From", L"From Name", L"Last Modifier Name", L"Sent On", L"Contacts"});
}

TEST_F(OtherKindsTest, AMeetingGivesWayToItsAppointment) {
    Open({.messageClass = L"IPM.Schedule.Meeting.Canceled", .subject = L"Nowhere"});
    Fail(L"MeetingItem::GetAssociatedAppointment", E_FAIL);
    ExpectComError(L"VARD_GetFieldData", {L"Associated Appointment"}, E_FAIL);
    ExpectFailure(L"VARD_GetFieldData", {L"Associated Appointment"},
                  errors::Mapi(L"Unable to get associated appt for item"));
    EXPECT_EQ(Get(L"Class"), L"54"); // still the meeting
    MessageToAdd request{.messageClass = L"IPM.Schedule.Meeting.Request", .subject = L"Rota"};
    Put(request, std::vector<StoredProperty>{{sets::kAppointment, 0x820D, Utc(2026, 3, 1, 9)},
                                             {sets::kAppointment, 0x820E, Utc(2026, 3, 1, 10)}});
    Open(request);
    ExpectFaults(L"VARD_GetFieldData", {L"Associated Appointment"},
                 {{L"IMessage::QueryInterface",
                   errors::Mapi(L"Error: 80004002\rMAPI_E_INTERFACE_NOT_SUPPORTED"), E_NOINTERFACE},
                  Denied(L"AppointmentItem::MAPIOBJECT", L"")});
    ExpectUnreadable({L"Start"}); // an appointment's
    EXPECT_EQ(Get(L"Class"), L"53");
    EXPECT_EQ(Get(L"Associated Appointment"), L"0");
    EXPECT_EQ(Get(L"Start"), DateAsShown(L"3/1/2026 9:00 AM"));
    ExpectUnreadable({L"Associated Appointment"}); // an appointment has no such field
}

TEST_F(OtherKindsTest, ReportsAndTaskRequestsDifferInBodyAndCompanies) {
    for (const wchar_t* messageClass : {L"REPORT.IPM.Note.NDR", L"IPM.TaskRequest"}) {
        SCOPED_TRACE(testing::PrintToString(messageClass));
        const bool isReport = *messageClass == L'R';
        ExpectOrdinary(messageClass, kUsuallyWritten,
                       {L"Companies", L"Conversation Index", L"Conversation Topic", L"Form Name", L"ID",
                        L"In Folder", L"Is Conflict", L"Message Class", L"Size", L"Unread"});
        ExpectReads({{L"Body", isReport ? L"one\r\ntwo" : L"one\rtw"}, {L"Class", isReport ? L"46" : L"49"}});
        ExpectUnreadable({L"Company", L"EntryID", L"Saved", L"No Aging"});
        const std::wstring form = std::wstring(messageClass) + L".Own";
        ExpectWrites(
            {{L"Body", L"Hello\r\n", isReport ? L"Hello\r\n" : L"Hello"}, {L"Form Name", form, form}});
        EXPECT_EQ(Set(L"Company", L"Other"), L"0");
        EXPECT_EQ(Get(L"Companies"), L"Other");
        if (isReport) {
            ExpectWrites({{L"Companies", L"Third", L"Third"}});
        } else {
            ExpectUnwritable({L"Companies"});
        }
        ExpectUnwritable({L"Message Class", L"Contacts", L"No Aging"});
        ExpectInvalid({{L"Importance", {L"x"}}, {L"Sensitivity", {L"x"}}});
    }
}

struct KindToRead {
    const wchar_t* messageClass;
    const wchar_t* number; ///< what its field Class reads
    FieldNames shown;      ///< beside those that all these kinds show
    FieldNames unreadable;
};

TEST_F(OtherKindsTest, SomeKindsAreReadAndNotWritten) {
    const std::vector<KindToRead> kinds{
        {L"IPM.TaskRequest.Accept",
         L"51",
         {L"Auto Resolved Winner", L"Entry ID", L"ID", L"In Folder", L"Mark for Download", L"Parent"},
         {L"Mark For Download", L"EntryID", L"Company"}},
        {L"IPM.TaskRequest.Decline",
         L"52",
         {L"Auto Resolved Winner", L"Entry ID", L"ID", L"In Folder", L"Mark For Download", L"Parent"},
         {L"Mark for Download", L"EntryID", L"Company"}},
        {L"IPM.TaskRequest.Update",
         L"50",
         {L"Auto Resolved Winner", L"Entry ID", L"ID", L"In Folder", L"Mark For Download", L"Parent"},
         {L"Mark for Download", L"EntryID", L"Company"}},
        {L"IPM.Document.txtfile",
         L"41",
         {L"Auto Resolved Winner", L"EntryID", L"Mark for Download"},
         {L"ID", L"Entry ID", L"In Folder", L"Mark For Download", L"Remote Message Class", L"Transfer Size",
          L"Transfer Time"}},
        {L"IPM.Remote",
         L"47",
         {L"Auto Resolved Winner", L"EntryID", L"Mark for Download"},
         {L"ID", L"Entry ID", L"In Folder", L"Mark For Download"}},
        {L"IPM.Sharing",
         L"104",
         {L"EntryID", L"Mark for Download"},
         {L"ID", L"type", L"Mark For Download", L"Auto Forwarded", L"Mark As Task"}},
    };
    for (const auto& [messageClass, number, shown, unreadable] : kinds) {
        SCOPED_TRACE(testing::PrintToString(messageClass));
        ExpectOrdinary(messageClass, {},
                       {L"Billing Information", L"Body", L"Categories", L"Companies", L"Conversation Index",
                        L"Conversation Topic", L"Download State", L"Form Name", L"Importance", L"Is Conflict",
                        L"Message Class", L"Mileage", L"No Aging", L"Saved", L"Sensitivity", L"Size",
                        L"Subject", L"Unread"});
        ExpectOrdinary(messageClass, {}, shown);
        ExpectReads({{L"Class", number}});
        ExpectUnreadable(unreadable);
        ExpectNothingIsWritten({L"Subject", L"Body", L"Categories", L"Company", L"Mark For Download"});
    }
    EXPECT_EQ(Set(L"Contacts", L"Ann"), L"0"); // the one that goes past the kind, for a sharing item
    EXPECT_EQ(Get(L"Contacts"), L"Ann");
    for (const wchar_t* messageClass : {L"IPM.Document.txtfile", L"IPM.Remote"}) {
        Open({.messageClass = messageClass});
        ExpectNothingIsWritten({L"Contacts"});
    }
}

TEST_F(OtherKindsTest, AnAnswerToATaskRequestShowsNothingOfWhatItHasNot) {
    for (const wchar_t* answer : {L"Accept", L"Decline", L"Update"}) {
        const bool isAccept = *answer == L'A';
        ExpectShown({.messageClass = std::wstring(L"IPM.TaskRequest.") + answer},
                    {{L"No Aging", L""},
                     {isAccept ? L"Mark for Download" : L"Mark For Download", L""},
                     {L"Categories", L""}});
        ExpectNothingIsWritten({L"Contacts"});
    }
}

TEST_F(OtherKindsTest, ARemoteItemShowsWhatIsToBeFetched) {
    ExpectShown({.messageClass = L"IPM.Remote"},
                {{L"Remote Message Class", L"IPM.Note", {sets::kRemote, 0x8F02, L"IPM.Note"}},
                 {L"Transfer Size", L"12000", {sets::kRemote, 0x8F05, 12000}},
                 {L"Transfer Time", L"3", {sets::kRemote, 0x8F04, 3}}});
}

TEST_F(OtherKindsTest, ASharingItemsFieldsAreReadFromTheirProperties) {
    constexpr GUID exchange = sets::Outlook(0x0006F0AE);
    Bytes provider(sizeof exchange);
    std::memcpy(provider.data(), &exchange, sizeof exchange);
    const wchar_t* const path = L"http://example.com/calendar";
    ExpectShown(
        {.messageClass = L"IPM.Sharing", .body = L"text"},
        {{L"Allow Write Access", L"True", {sets::kSharing, 0x8A1B, 0x047B}},
         {L"Alternate Recipient Allowed", L"True"},
         {L"Body Format", L"Plain Text"},
         {L"Delete After Submit", L"True", {PR_DELETE_AFTER_SUBMIT, true}},
         {L"Enable Shared Attachments", L"False"},
         {L"Expires", DateAsShown(L"4/1/2026 10:00 AM"), {PR_EXPIRY_TIME, Utc(2026, 4, 1, 10)}},
         {L"Expiry Time", DateAsShown(L"4/1/2026 10:00 AM")},
         {L"Flag Icon", L"6", {kPrFollowupIcon, 6}}, // as a mail's
         {L"Flag Request", L"Follow up", {sets::kCommon, 0x8530, L"Follow up"}},
         {L"Flag Status", L"Marked", {kPrFlagStatus, 2}},
         {L"Is Marked As Task", L"False"},
         {L"Task Start Date", L"None"},
         {L"Originator Delivery Report Requested", L"True", {PR_ORIGINATOR_DELIVERY_REPORT_REQUESTED, true}},
         {L"Permission", L"unrestricted"},
         {L"Permission Service", L"unknown"},
         {L"Read Receipt Requested", L"True", {PR_READ_RECEIPT_REQUESTED, true}},
         {L"Recipient Reassignment Prohibited", L"True", {PR_RECIPIENT_REASSIGNMENT_PROHIBITED, true}},
         {L"Reminder Override Default", L"True", {sets::kCommon, 0x851C, true}},
         {L"Reminder Play Sound", L"True", {sets::kCommon, 0x851E, true}},
         {L"Reminder Set", L"True", {sets::kCommon, 0x8503, true}},
         {L"Reminder Sound File", L"ring.wav", {sets::kCommon, 0x851F, L"ring.wav"}},
         {L"Remote ID", L"00AB", {sets::kSharing, 0x8A06, L"00AB"}},
         {L"Remote Name", L"Rota", {sets::kSharing, 0x8A05, L"Rota"}},
         {L"Remote Path", path, {sets::kSharing, 0x8A04, path}},
         {L"Reply Recipient Names", L"Back Office", {PR_REPLY_RECIPIENT_NAMES_W, L"Back Office"}},
         {L"Sender Name", L"Service North", {PR_SENDER_NAME_W, L"Service North"}},
         {L"Sent", L"True"},
         {L"Sharing Provider", L"exchange", {sets::kSharing, 0x8A01, provider}},
         {L"Submitted", L"False"}});
    ExpectNothingIsWritten({L"Type", L"Task Subject", L"Allow Write Access"});
    ExpectShown({.messageClass = L"IPM.Sharing"},
                {{L"HTML Body", L"<p>", {kPrHtml, Bytes{'<', 'p', '>'}}}, {L"Remote Status", L"none"}});
}

TEST_F(OtherKindsTest, ASharingItemsNumbersHaveTheirWords) {
    const auto expect = [&](const wchar_t* field, const wchar_t* word, StoredProperty property) {
        ExpectShown({.messageClass = L"IPM.Sharing"}, {{field, word, std::move(property)}});
    };
    for (const auto& [number, word] : std::vector<std::pair<int, const wchar_t*>>{
             {0, L"none"}, {1, L""}, {2, L"download"}, {3, L"copy"}, {4, L"delete"}, {7, L""}}) {
        expect(L"Remote Status", word, {0x3E0B0003, number});
    }
    for (const auto& [flavor, word] :
         std::vector<std::pair<int, const wchar_t*>>{{0, L"unknown"},
                                                     {0x0500, L"request"},
                                                     {0x0310, L"inviation"}, // spelled so
                                                     {0x0710, L"invitationrequest"},
                                                     {0x3310, L"responseallow"},
                                                     {0x5100, L"responsedeny"}}) {
        expect(L"Type", word, {sets::kSharing, 0x8A18, flavor});
    }
    ExpectReads({{L"Sharing Provider", L"unknown"}, {L"Requested Folder", L""}});
    for (const auto& [containerClass, word] :
         std::vector<std::pair<const wchar_t*, const wchar_t*>>{{L"IPF.Appointment", L"Calendar"},
                                                                {L"IPF.Contact", L"Contacts"},
                                                                {L"IPF.Journal", L"Journal"},
                                                                {L"IPF.StickyNote", L"Notes"},
                                                                {L"IPF.Task", L"Tasks"},
                                                                {L"IPF.Note", L"Inbox"}}) {
        expect(L"Requested Folder", word, {sets::kSharing, 0x8A1D, containerClass});
    }
}

TEST_F(OtherKindsTest, AStorageItemIsReadAndNotWritten) {
    ExpectOrdinary(L"IPM.Storage", {},
                   {L"Body", L"ID", L"Entry ID", L"In Folder", L"Parent", L"Size", L"Subject"});
    ExpectUnreadable({L"Message Class", L"Categories", L"EntryID"});
    ExpectNothingIsWritten({L"Subject", L"Body", L"Creator", L"Contacts"});
    ExpectShown({.messageClass = L"IPM.Storage"},
                {{L"Class", L"113"},
                 {L"Creator", L"Service North", {kPrCreatorName, L"Service North"}},
                 {L"Creator Name", L"Service North"}});
}

} // namespace
} // namespace varden::tests
