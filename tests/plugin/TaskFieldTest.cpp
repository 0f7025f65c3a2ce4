// The fields of a task, both ways, and giving a task to somebody.
#include "FieldTest.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class TaskFieldTest : public FieldTest {
protected:
    TaskFieldTest() : FieldTest(L"Tasks") {}

    Bytes GlobalId() {
        const PropertyValue* value = StoredValue(sets::kCommon, 0x8519);
        return value ? std::get<Bytes>(*value) : Bytes();
    }
};

TEST_F(TaskFieldTest, FieldsAndTheirPropertiesFollowEachOther) {
    ExpectOrdinary(L"IPM.Task.Order",
                   {L"Billing Information", L"Categories", L"Company", L"Importance", L"Mileage",
                    L"Sensitivity", L"Subject"},
                   {L"Body", L"Form Name", L"Message Class", L"ID", L"Size"});
    ExpectUnreadable({L"To", L"Cc", L"Bcc", L"Assign", L"IsRecurring", L"Companies", L"status",
                      L"Is Marked As Task", L"Task Subject", L"Unread", L"In Folder"});
    ExpectBothWays({.messageClass = L"IPM.Task"},
                   {{L"% Complete", L"25", {sets::kTask, 0x8102, 0.25}},
                    {L"Actual Work", L"90", {sets::kTask, 0x8110, 90}},
                    {L"Due Date", DateAsShown(L"3/9/2026"), {sets::kTask, 0x8105, Utc(2026, 3, 9)}},
                    {L"Owner", L"Service North", {sets::kTask, 0x811F, L"Service North"}},
                    {L"Reminder", L"True", {sets::kCommon, 0x8503, true}},
                    {L"Reminder Override Default", L"True", {sets::kCommon, 0x851C, true}},
                    {L"Reminder Sound", L"True", {sets::kCommon, 0x851E, true}},
                    {L"Reminder Sound File", L"C:\\ring.wav", {sets::kCommon, 0x851F, L"C:\\ring.wav"}},
                    {L"Reminder Time",
                     DateAsShown(L"3/8/2026 7:30 AM"),
                     {sets::kCommon, 0x8502, Utc(2026, 3, 8, 7, 30)}},
                    {L"Role", L"Clerk", {sets::kTask, 0x8127, L"Clerk"}},
                    {L"Schedule + Priority", L"A2", {sets::kTask, 0x812F, L"A2"}},
                    {L"Start Date", DateAsShown(L"3/1/2026"), {sets::kTask, 0x8104, Utc(2026, 3, 1)}},
                    {L"Status", L"Waiting", {sets::kTask, 0x8101, 3}},
                    {L"Team Task", L"True", {sets::kTask, 0x8103, true}},
                    {L"Total Work", L"480", {sets::kTask, 0x8111, 480}}});
}

TEST_F(TaskFieldTest, FieldsThatAreOnlyReadShowTheirProperties) {
    const Strings people{L"Ann", L" Bob "};
    ExpectShown({.messageClass = L"IPM.Task"},
                {{L"Binary Recurrence", L"0430FF", {sets::kTask, 0x8116, Bytes{0x04, 0x30, 0xFF}}},
                 {L"BINARYRECURRENCE", L"0430FF"},
                 {L"Complete", L"False"},
                 {L"Contacts", L"Ann\rBob", {sets::kCommon, 0x853A, people}},
                 {L"Created", LocalText(Utc(2026, 2, 1, 8)), {PR_CREATION_TIME, Utc(2026, 2, 1, 8)}},
                 {L"Modify", LocalText(Utc(2026, 2, 2, 9)), {PR_LAST_MODIFICATION_TIME, Utc(2026, 2, 2, 9)}},
                 {L"Date Completed", L"None"},
                 {L"Is Recurring", L"true", {sets::kTask, 0x8126, true}}, // in small letters
                 {L"task dead occur", L"True", {sets::kTask, 0x8109, true}},
                 {L"Task Dead Occur", L"True"}});
    ExpectShown({.messageClass = L"IPM.Task", .subject = L"bare"}, {{L"Binary Recurrence", L""},
                                                                    {L"Body", L""},
                                                                    {L"Contacts", L""},
                                                                    {L"Due Date", L"None"},
                                                                    {L"Is Recurring", L"false"},
                                                                    {L"Owner", L""},
                                                                    {L"Reminder Time", L""},
                                                                    {L"Start Date", L"None"},
                                                                    {L"Status", L"Not Started"},
                                                                    {L"task dead occur", L""}});
    ExpectShown({.messageClass = L"IPM.Task"},
                {{L"Status", L"", {sets::kTask, 0x8101, 9}},
                 {L"task dead occur", L"False", {sets::kTask, 0x8109, L""}}, // a text in place of a truth
                 {L"Owner", L"", {sets::kTask, 0x811F, Strings{}}}});
}

TEST_F(TaskFieldTest, WhatIsWrittenIsTakenByItsBeginning) {
    New(L"Tasks");
    ExpectWrites(
        {{L"Actual Work", L"90 minutes", L"90"},
         {L"Total Work", L"much", L"0"},
         {L"Body", L"Call back.\r\n", L"Call back."},
         {L"Form Name", L"IPM.Task.Order", L"IPM.Task.Order"},
         {L"Message Class", L"IPM.Task.Errand", L"IPM.Task.Errand"},
         {L"Importance", L"Little", L"Low"},
         {L"Reminder Override Default", L"T", L"True"},
         {L"Reminder Sound", L"True", L"True"},
         {L"Reminder Sound", L"true", L"False"},
         {L"Contacts", L"Ann, Bob\rCarl", L"Ann\rBob\rCarl", {sets::kCommon, 0x8586, L"Ann; Bob;Carl"}},
         {L"% Complete", L"25%", L"25"},
         {L"Status", L"Deferred", L"Deferred"},
         {L"Status", L"Waiting on someone else", L"Waiting"},
         {L"Status", L"In Progress", L"In Progress"},
         {L"Status", L"N", L"Not Started"},
         {L"Status", L"Completed", L"Complete"},
         {L"Date Completed", L"3/5/2026", DateAsShown(L"3/5/2026")},
         {L"Date Completed", L"NONE", L"None"},
         {L"Due Date", L"3/9/2026", DateAsShown(L"3/9/2026")},
         {L"Due Date", L"", L"None"}});
}

TEST_F(TaskFieldTest, RefusedValuesAndNamesChangeNothing) {
    New(L"Tasks");
    Set(L"Status", L"Waiting");
    ExpectInvalid({{L"Status", {L"Pending", L"waiting", L""}},
                   {L"Importance", {L"normal"}},
                   {L"Sensitivity", {L"Secret"}},
                   {L"Due Date", {L"soon"}},
                   {L"Start Date", {L"13/13/2026"}},
                   {L"Date Completed", {L"x"}},
                   {L"Reminder Time", {L"noon"}}});
    EXPECT_EQ(Get(L"Status"), L"Waiting");
    ExpectUnwritable({L"Is Recurring", L"Binary Recurrence", L"task dead occur", L"Companies", L"subject",
                      L"Sent On", L"Last Modified", L"Mark As Task", L"Task Subject"});
}

TEST_F(TaskFieldTest, OnlyCompleteSavesTheTask) {
    New(L"Tasks");
    ExpectWrites({{L"Subject", L"a", L"a"},
                  {L"Reminder", L"True", L"True"},
                  {L"Status", L"I", L"In Progress"},
                  {L"Owner", L"b", L"b"},
                  {L"Due Date", L"3/9/2026", DateAsShown(L"3/9/2026")}});
    EXPECT_TRUE(Home().Messages().empty());
    EXPECT_EQ(Set(L"Complete", L"True"), L"0");
    ASSERT_EQ(Home().Messages().size(), 1u);
    ExpectReads({{L"Complete", L"True"}, {L"Status", L"Complete"}, {L"% Complete", L"100"}});
    EXPECT_EQ(Set(L"Complete", L"yes"), L"0");
    ExpectStored({sets::kTask, 0x811C, false});
}

TEST_F(TaskFieldTest, AnAssignedTaskHasThePersonAndAnIdOfItsOwn) {
    New(L"Tasks");
    Set(L"Subject", L"Stocktaking");
    EXPECT_EQ(Set(L"Assign", L"warehouse"), L"0") << testing::PrintToString(LastErrorText());
    ASSERT_EQ(Stored().recipients.size(), 1u);
    EXPECT_EQ(Stored().recipients[0].GetOr<PR_DISPLAY_NAME_W>({}), L"Warehouse");
    EXPECT_EQ(Stored().recipients[0].GetOr<PR_RECIPIENT_TYPE>(0), MAPI_TO);
    const Bytes first = GlobalId();
    EXPECT_EQ(first.size(), 16u);
    EXPECT_EQ(Set(L"Assign", L"back.office@example.com"), L"0") << testing::PrintToString(LastErrorText());
    EXPECT_EQ(Stored().recipients.size(), 2u);
    EXPECT_EQ(GlobalId().size(), 16u);
    EXPECT_NE(GlobalId(), first);
}

TEST_F(TaskFieldTest, AnAssigneeThatDoesNotResolveLeavesTheTaskAssigned) {
    New(L"Tasks");
    ExpectFailure(L"VARD_SetFieldData", {L"Assign", L"Nobody"}, errors::NotFound());
    ExpectFailure(L"VARD_SetFieldData", {L"Assign", L"Service"},
                  errors::Mapi(L"Error: 80040700\rMAPI_E_AMBIGUOUS_RECIP"));
    ASSERT_EQ(Home().Messages().size(), 1u);
    EXPECT_TRUE(Stored().recipients.empty());
    ExpectStored({sets::kCommon, 0x8518, 1});
    ExpectFaults(L"VARD_SetFieldData", {L"Assign", L"Warehouse"},
                 {Denied(L"IMAPISession::OpenAddressBook", L"", 1),
                  Denied(L"IMAPISession::OpenAddressBook", L"", 2), Denied(L"IAddrBook::ResolveName", L""),
                  Denied(L"IMessage::ModifyRecipients", L""), Denied(L"IMessage::SaveChanges", L"", 1),
                  Denied(L"IMessage::GetIDsFromNames", L""), Denied(L"MAPI32::HrSetOneProp", L""),
                  Denied(L"IMessage::SaveChanges", L"", 2)});
}

TEST_F(TaskFieldTest, StepsOfAssigningThatOutlookRefusesAreComErrors) {
    Open({.messageClass = L"IPM.Task"});
    for (const auto& [member, field] :
         std::vector<std::pair<const wchar_t*, const wchar_t*>>{{L"TaskItem::Assign", L"Assign"},
                                                                {L"TaskItem::Save", L"Assign"},
                                                                {L"TaskItem::Assign", L"To"},
                                                                {L"TaskItem::Recipients", L"To"}}) {
        Fail(member);
        ExpectComError(L"VARD_SetFieldData", {field, L"Warehouse"});
    }
    EXPECT_EQ(Set(L"To", L"Warehouse"), L"0"); // assigns it to nobody
    Save();
    EXPECT_TRUE(Stored().recipients.empty());
}

TEST_F(TaskFieldTest, MembersThatFailAreComErrors) {
    New(L"Tasks");
    for (const auto& [member, field] : std::vector<std::pair<const wchar_t*, const wchar_t*>>{
             {L"TaskItem::Status", L"Status"},
             {L"TaskItem::DueDate", L"Due Date"},
             {L"TaskItem::PercentComplete", L"% Complete"},
             {L"TaskItem::IsRecurring", L"Is Recurring"}}) {
        Fail(member, E_FAIL);
        ExpectComError(L"VARD_GetFieldData", {field}, E_FAIL);
    }
    Fail(L"TaskItem::Save");
    ExpectComError(L"VARD_SetFieldData", {L"Complete", L"True"});
    EXPECT_EQ(Get(L"Complete"), L"True"); // what was stored before the failure stays
    // Outlook's own refusal
    ExpectFailureLike(L"VARD_SetFieldData", {L"Total Work", L"-5"}, {0, L"Error: 80070057\nMessage:"});
}

TEST_F(TaskFieldTest, RecurrenceBlobsThatCannotBeReadAreErrorsWithTheirReason) {
    Open({.messageClass = L"IPM.Task"});
    Fail(L"IMessage::GetIDsFromNames");
    EXPECT_EQ(Get(L"BinaryRecurrence"), kError);
    EXPECT_EQ(LastErrorCode(), static_cast<int>(E_ACCESSDENIED));
    ExpectFaults(L"VARD_GetFieldData", {L"BinaryRecurrence"},
                 {{L"IMessage::OpenProperty", errors::Mapi(L"Interface not supported"), E_NOINTERFACE},
                  {L"IMessage::QueryInterface", errors::Mapi(L"No Message Opened"), E_NOINTERFACE}});
    Fail(L"IMessage::GetIDsFromNames");
    ExpectReads({{L"task dead occur", L""}});
}

} // namespace
} // namespace varden::tests
