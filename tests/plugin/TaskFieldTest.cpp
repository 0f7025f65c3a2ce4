// The fields of a task, both ways, and giving a task to somebody.
#include "FieldTest.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class TaskFieldTest : public FieldTest {
protected:
    TaskFieldTest() : FieldTest(L"Tasks") {}

    /// What is stored of the last message under a name; nothing if it isn't there.
    const PropertyValue* StoredValue(const GUID& set, std::uint32_t number) {
        return Stored().properties.Find(TagOf(set, number, PT_UNSPECIFIED));
    }
    Bytes GlobalId() {
        const PropertyValue* value = StoredValue(sets::kCommon, 0x8519);
        return value ? std::get<Bytes>(*value) : Bytes();
    }
};

TEST_F(TaskFieldTest, EveryFieldIsReadFromItsProperty) {
    MessageToAdd task = Ordinary(L"IPM.Task.Order");
    Put(task, {{sets::kTask, 0x8101, PT_LONG, std::int32_t{3}},
               {sets::kTask, 0x8102, PT_DOUBLE, 0.25},
               {sets::kTask, 0x8103, PT_BOOLEAN, true},
               {sets::kTask, 0x8104, PT_SYSTIME, Utc(2026, 3, 1)},
               {sets::kTask, 0x8105, PT_SYSTIME, Utc(2026, 3, 9)},
               {sets::kTask, 0x8109, PT_BOOLEAN, true},
               {sets::kTask, 0x8110, PT_LONG, std::int32_t{90}},
               {sets::kTask, 0x8111, PT_LONG, std::int32_t{480}},
               {sets::kTask, 0x8116, PT_BINARY, Bytes{0x04, 0x30, 0xFF}},
               {sets::kTask, 0x811F, PT_UNICODE, L"Service North"},
               {sets::kTask, 0x8126, PT_BOOLEAN, true},
               {sets::kTask, 0x8127, PT_UNICODE, L"Clerk"},
               {sets::kTask, 0x812F, PT_UNICODE, L"A2"},
               {sets::kCommon, 0x8502, PT_SYSTIME, Utc(2026, 3, 8, 7, 30)},
               {sets::kCommon, 0x8503, PT_BOOLEAN, true},
               {sets::kCommon, 0x851C, PT_BOOLEAN, true},
               {sets::kCommon, 0x851E, PT_BOOLEAN, true},
               {sets::kCommon, 0x851F, PT_UNICODE, L"C:\\ring.wav"},
               {sets::kCommon, 0x853A, PT_MV_UNICODE, std::vector<std::wstring>{L"Ann", L" Bob "}}});
    task.more.Set<PR_CREATION_TIME>(Utc(2026, 2, 1, 8));
    task.more.Set<PR_LAST_MODIFICATION_TIME>(Utc(2026, 2, 2, 9));
    const std::wstring entryId = Open(task);
    ExpectReads(OrdinaryTexts({L"Billing Information", L"Categories", L"Company", L"Importance", L"Mileage",
                               L"Sensitivity", L"Subject"}));
    ExpectReads({{L"% Complete", L"25"},
                 {L"Actual Work", L"90"},
                 {L"Binary Recurrence", L"0430FF"},
                 {L"BINARYRECURRENCE", L"0430FF"},
                 {L"Body", L"one\rtw"}, // no line feed, and without its last character
                 {L"Complete", L"False"},
                 {L"Contacts", L"Ann\rBob"},
                 {L"Created", LocalText(Utc(2026, 2, 1, 8))},
                 {L"Modify", LocalText(Utc(2026, 2, 2, 9))},
                 {L"Date Completed", L"None"},
                 {L"Due Date", DateAsShown(L"3/9/2026")},
                 {L"Form Name", L"IPM.Task.Order"},
                 {L"Message Class", L"IPM.Task.Order"},
                 {L"ID", entryId},
                 {L"Is Recurring", L"true"}, // in small letters
                 {L"Owner", L"Service North"},
                 {L"Reminder", L"True"},
                 {L"Reminder Override Default", L"True"},
                 {L"Reminder Sound", L"True"},
                 {L"Reminder Sound File", L"C:\\ring.wav"},
                 {L"Reminder Time", LocalText(Utc(2026, 3, 8, 7, 30))},
                 {L"Role", L"Clerk"},
                 {L"Schedule + Priority", L"A2"},
                 {L"Start Date", DateAsShown(L"3/1/2026")},
                 {L"Status", L"Waiting"},
                 {L"task dead occur", L"True"},
                 {L"Task Dead Occur", L"True"},
                 {L"Team Task", L"True"},
                 {L"Total Work", L"480"}});
    EXPECT_GT(std::stol(Get(L"Size")), 10);
    ExpectUnreadable({L"To", L"Cc", L"Bcc", L"Assign", L"IsRecurring", L"Companies", L"status",
                      L"Is Marked As Task", L"Task Subject", L"Unread", L"In Folder"});
}

TEST_F(TaskFieldTest, WhatATaskDoesNotHaveReadsAsNothing) {
    Open({.messageClass = L"IPM.Task", .subject = L"bare"});
    ExpectReads({{L"Binary Recurrence", L""},
                 {L"Body", L""},
                 {L"Contacts", L""},
                 {L"Due Date", L"None"},
                 {L"Is Recurring", L"false"},
                 {L"Owner", L""},
                 {L"Reminder Time", L""},
                 {L"Start Date", L"None"},
                 {L"Status", L"Not Started"},
                 {L"task dead occur", L""}});
    MessageToAdd strange{.messageClass = L"IPM.Task"};
    Put(strange, {{sets::kTask, 0x8101, PT_LONG, std::int32_t{9}},
                  {sets::kTask, 0x8109, PT_UNICODE, L""}, // a text in place of a truth
                  {sets::kTask, 0x811F, PT_MV_UNICODE, std::vector<std::wstring>{}}});
    Open(strange);
    ExpectReads({{L"Status", L""}, {L"task dead occur", L"False"}, {L"Owner", L""}});
}

TEST_F(TaskFieldTest, WhatIsWrittenIsReadBackAndStoredWithTheRecord) {
    New(L"Tasks");
    ExpectWrites({{L"Actual Work", L"90 minutes", L"90"},
                  {L"Total Work", L"much", L"0"},
                  {L"Total Work", L"480", L"480"},
                  {L"Billing Information", L"4711", L"4711"},
                  {L"Body", L"Call back.\r\n", L"Call back."},
                  {L"Categories", L"Red, Green", L"Red, Green"},
                  {L"Company", L"Example Trading", L"Example Trading"},
                  {L"Start Date", L"3/1/2026", DateAsShown(L"3/1/2026")},
                  {L"Due Date", L"3/9/2026", DateAsShown(L"3/9/2026")},
                  {L"Form Name", L"IPM.Task.Order", L"IPM.Task.Order"},
                  {L"Message Class", L"IPM.Task.Errand", L"IPM.Task.Errand"},
                  {L"Importance", L"High", L"High"},
                  {L"Importance", L"Little", L"Low"},
                  {L"Mileage", L"12 km", L"12 km"},
                  {L"Owner", L"Service South", L"Service South"},
                  {L"Reminder Time", L"3/8/2026 7:30 AM", DateAsShown(L"3/8/2026 7:30 AM")},
                  {L"Reminder", L"True", L"True"},
                  {L"Reminder Override Default", L"T", L"True"},
                  {L"Reminder Sound", L"True", L"True"},
                  {L"Reminder Sound", L"true", L"False"},
                  {L"Reminder Sound File", L"ring.wav", L"ring.wav"},
                  {L"Role", L"Clerk", L"Clerk"},
                  {L"Schedule + Priority", L"A2", L"A2"},
                  {L"Sensitivity", L"Private", L"Private"},
                  {L"Subject", L"Call", L"Call"},
                  {L"Team Task", L"True", L"True"},
                  {L"Contacts", L"Ann, Bob\rCarl", L"Ann\rBob\rCarl"},
                  {L"% Complete", L"25%", L"25"},
                  {L"Status", L"Deferred", L"Deferred"},
                  {L"Status", L"Waiting on someone else", L"Waiting"},
                  {L"Status", L"In Progress", L"In Progress"},
                  {L"Status", L"N", L"Not Started"},
                  {L"Status", L"Completed", L"Complete"},
                  {L"Date Completed", L"3/5/2026", DateAsShown(L"3/5/2026")},
                  {L"Date Completed", L"NONE", L"None"},
                  {L"Due Date", L"", L"None"}});
    ASSERT_NE(Call(L"VARD_SaveRecord"), kError) << testing::PrintToString(LastErrorText());
    EXPECT_EQ(*StoredValue(sets::kTask, 0x811F), PropertyValue(std::wstring(L"Service South")));
    EXPECT_EQ(*StoredValue(sets::kTask, 0x8111), PropertyValue(std::int32_t{480}));
    EXPECT_EQ(Stored().properties.GetOr<PR_IMPORTANCE>(9), 0);
    EXPECT_EQ(*StoredValue(sets::kCommon, 0x8586), PropertyValue(std::wstring(L"Ann; Bob;Carl")));
}

TEST_F(TaskFieldTest, RefusedValuesAndNamesChangeNothing) {
    New(L"Tasks");
    Set(L"Status", L"Waiting");
    ExpectRefusals({{L"Status", L"Pending"},
                    {L"Status", L"waiting"},
                    {L"Status", L""},
                    {L"Importance", L"normal"},
                    {L"Sensitivity", L"Secret"},
                    {L"Due Date", L"soon"},
                    {L"Start Date", L"13/13/2026"},
                    {L"Date Completed", L"x"},
                    {L"Reminder Time", L"noon"}},
                   -1089, L"Invalid value for field");
    EXPECT_EQ(Get(L"Status"), L"Waiting");
    ExpectUnwritable({L"Is Recurring", L"Binary Recurrence", L"task dead occur", L"Companies", L"subject",
                      L"Sent On", L"Last Modified", L"Mark As Task", L"Task Subject"});
    ExpectRefusals({{L"ID", L"x"}, {L"Created", L"x"}, {L"Modify", L"x"}, {L"Size", L"1"}}, -1096,
                   L"Field is read-only");
}

TEST_F(TaskFieldTest, OnlyCompleteSavesTheTask) {
    New(L"Tasks");
    for (const auto& [field, data] : FieldTexts{{L"Subject", L"a"},
                                                {L"Reminder", L"True"},
                                                {L"Status", L"I"},
                                                {L"Owner", L"b"},
                                                {L"Due Date", L"3/9/2026"}}) {
        Set(field, data);
    }
    EXPECT_TRUE(Home().Messages().empty());
    EXPECT_EQ(Set(L"Complete", L"True"), L"0");
    ASSERT_EQ(Home().Messages().size(), 1u);
    ExpectReads({{L"Complete", L"True"}, {L"Status", L"Complete"}, {L"% Complete", L"100"}});
    EXPECT_EQ(Set(L"Complete", L"yes"), L"0");
    EXPECT_EQ(*StoredValue(sets::kTask, 0x811C), PropertyValue(false));
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
    const std::wstring subsystem = L"MAPI Subsystem error\rError: ";
    ExpectFailure(L"VARD_SetFieldData", {L"Assign", L"Nobody"}, -1097,
                  subsystem + L"8004010F\rMAPI_E_NOT_FOUND");
    ExpectFailure(L"VARD_SetFieldData", {L"Assign", L"Service"}, -1097,
                  subsystem + L"80040700\rMAPI_E_AMBIGUOUS_RECIP");
    ASSERT_EQ(Home().Messages().size(), 1u);
    EXPECT_TRUE(Stored().recipients.empty());
    EXPECT_EQ(*StoredValue(sets::kCommon, 0x8518), PropertyValue(std::int32_t{1}));
    const std::vector<std::pair<const wchar_t*, std::uint64_t>> steps{
        {L"IMAPISession::OpenAddressBook", 1}, {L"IMAPISession::OpenAddressBook", 2},
        {L"IAddrBook::ResolveName", 1},        {L"IMessage::ModifyRecipients", 1},
        {L"IMessage::SaveChanges", 1},         {L"IMessage::GetIDsFromNames", 1},
        {L"MAPI32::HrSetOneProp", 1},          {L"IMessage::SaveChanges", 2}};
    for (const auto& [member, number] : steps) {
        SCOPED_TRACE(testing::PrintToString(member));
        Varden().Watch().FailMember(member, E_ACCESSDENIED, number);
        ExpectFailure(L"VARD_SetFieldData", {L"Assign", L"Warehouse"}, -1097,
                      subsystem + L"80070005\rMAPI_E_NO_ACCESS");
        EXPECT_TRUE(Varden().Watch().HasFailed());
    }
}

TEST_F(TaskFieldTest, ToAssignsTheTaskToNobody) {
    New(L"Tasks");
    EXPECT_EQ(Set(L"To", L"Warehouse"), L"0");
    EXPECT_NE(Call(L"VARD_SaveRecord"), kError);
    EXPECT_TRUE(Stored().recipients.empty());
}

TEST_F(TaskFieldTest, MembersThatFailAreComErrors) {
    New(L"Tasks");
    for (const auto& [member, field] : std::vector<std::pair<const wchar_t*, const wchar_t*>>{
             {L"TaskItem::Status", L"Status"},
             {L"TaskItem::DueDate", L"Due Date"},
             {L"TaskItem::PercentComplete", L"% Complete"},
             {L"TaskItem::IsRecurring", L"Is Recurring"}}) {
        Varden().Watch().FailMember(member, E_FAIL);
        EXPECT_EQ(Get(field), kError);
        EXPECT_EQ(LastErrorCode(), 0);
        EXPECT_NE(LastErrorText().find(L"Error: 80004005"), std::wstring::npos);
    }
    Varden().Watch().FailMember(L"TaskItem::Save", E_ACCESSDENIED);
    EXPECT_EQ(Set(L"Complete", L"True"), kError);
    EXPECT_NE(LastErrorText().find(L"Error: 80070005"), std::wstring::npos);
    EXPECT_EQ(Get(L"Complete"), L"True");         // what was stored before the failure stays
    EXPECT_EQ(Set(L"Total Work", L"-5"), kError); // Outlook's own refusal
    EXPECT_NE(LastErrorText().find(L"Error: 80070057"), std::wstring::npos);
}

TEST_F(TaskFieldTest, RecurrenceBlobsThatCannotBeReadAreErrorsWithTheirReason) {
    Open({.messageClass = L"IPM.Task"});
    Varden().Watch().FailMember(L"IMessage::GetIDsFromNames", E_ACCESSDENIED);
    EXPECT_EQ(Get(L"BinaryRecurrence"), kError);
    EXPECT_EQ(LastErrorCode(), static_cast<int>(E_ACCESSDENIED));
    Varden().Watch().FailMember(L"IMessage::OpenProperty", E_NOINTERFACE);
    ExpectFailure(L"VARD_GetFieldData", {L"BinaryRecurrence"}, -1097,
                  L"MAPI Subsystem error\rInterface not supported");
    Varden().Watch().FailMember(L"IMessage::GetIDsFromNames", E_ACCESSDENIED);
    EXPECT_EQ(Get(L"task dead occur"), L"");
    EXPECT_EQ(LastErrorCode(), 0);
}

} // namespace
} // namespace varden::tests
