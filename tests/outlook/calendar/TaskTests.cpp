// Tasks: progress, dates, series, and tasks that one gives to another.
#include "Calendar.h"

namespace outlook_tests {
namespace {

constexpr int kNotStarted = 0, kInProgress = 1, kDone = 2, kWaiting = 3;

class TaskTest : public CalendarTest {
protected:
    Object NewTask(const wchar_t* subject) const {
        const Object task = NewItem(kTaskItem);
        task.Put(L"Subject", subject);
        return task;
    }
    static _variant_t Today() {
        SYSTEMTIME now{};
        GetLocalTime(&now);
        return At(now.wYear, now.wMonth, now.wDay);
    }
};

TEST_F(TaskTest, NewTasksAreTheUsersOwn) {
    const Object task = NewTask(L"New");
    Expect(task, {{L"Status", kNotStarted}, {L"PercentComplete", 0}, {L"Complete", false}});
    Expect(task, {{L"Owner", L"Front Desk"}, {L"Ownership", 0}, {L"DelegationState", 0}});
    Expect(task, {{L"ResponseState", 0}, {L"ReminderSet", false}});
    for (const wchar_t* date : {L"StartDate", L"DueDate", L"DateCompleted"})
        EXPECT_EQ(Shown(task.Get(date)), L"none") << date;
}

TEST_F(TaskTest, ProgressKeepsTogether) {
    const std::tuple<Facts, int, int, bool> rows[] = {
        {{{L"Status", kDone}}, kDone, 100, true},
        {{{L"PercentComplete", 100}}, kDone, 100, true},
        {{{L"Complete", true}}, kDone, 100, true},
        {{{L"DateCompleted", At(2026, 3, 2)}}, kDone, 100, true},
        {{{L"PercentComplete", 40}}, kInProgress, 40, false},
        {{{L"Status", kWaiting}, {L"PercentComplete", 40}}, kWaiting, 40, false},
        {{{L"PercentComplete", 40}, {L"PercentComplete", 0}}, kNotStarted, 0, false},
        {{{L"PercentComplete", 40}, {L"Status", kNotStarted}}, kNotStarted, 0, false},
        {{{L"Complete", true}, {L"Complete", false}}, kNotStarted, 0, false},
        {{{L"Complete", true}, {L"Status", kInProgress}}, kInProgress, 0, false},
        {{{L"Complete", true}, {L"PercentComplete", 60}}, kInProgress, 60, false},
        {{{L"Complete", true}, {L"DateCompleted", Date(kNoDate)}}, kNotStarted, 0, false},
    };
    for (const auto& [steps, status, percent, complete] : rows) {
        const Object task = NewTask(L"Progress");
        PutAll(task, steps);
        SCOPED_TRACE(steps.back().member);
        Expect(task, {{L"Status", status}, {L"PercentComplete", percent}, {L"Complete", complete}});
        EXPECT_EQ(Shown(task.Get(L"DateCompleted")) != L"none", complete);
    }
    const Object task = NewTask(L"Progress");
    task.Put(L"ReminderSet", true);
    task.Call(L"MarkComplete");
    Expect(task, {{L"DateCompleted", Today()}});
    EXPECT_EQ(task.Get(L"ReminderSet"), Value(false)) << "what is done needs no reminder";
    ExpectRefused(task, E_INVALIDARG,
                  {{L"PercentComplete", 101}, {L"PercentComplete", -1}, {L"Status", 5}, {L"TotalWork", -1}});
}

/// Midnight of the local day as if it were UTC, and in UTC proper beside it.
TEST_F(TaskTest, DatesAreStoredAsLocalDays) {
    const Object task = NewTask(L"Dates");
    PutAll(task, {{L"StartDate", At(2026, 7, 1, 15)}, {L"DueDate", At(2026, 7, 3)}});
    EXPECT_EQ(Shown(task.Get(L"StartDate")), L"2026-07-01 00:00");
    PutAll(task, {{L"TotalWork", 480}, {L"Role", L"Lead"}, {L"TeamTask", true}});
    PutAll(task, {{L"SchedulePlusPriority", L"A1"}});
    task.Call(L"MarkComplete");
    const Object saved = Reopened(task);
    ExpectStored(saved, {{Id(kTaskSet, 0x81040040), At(2026, 7, 1)},
                         {Id(kTaskSet, 0x81050040), At(2026, 7, 3)},
                         {Id(kTaskSet, 0x810F0040), Today()},
                         {Id(kTaskSet, 0x81110003), 480},
                         {Id(kTaskSet, 0x8127001F), L"Lead"},
                         {Id(kTaskSet, 0x812F001F), L"A1"},
                         {Id(kTaskSet, 0x8103000B), true},
                         {Id(kTaskSet, 0x81020005), _variant_t(1.0)}});
    EXPECT_EQ(Stored(saved, Id(kCommonSet, 0x85170040)).vt, VT_DATE);
}

TEST_F(TaskTest, WhatIsDoneOfASeriesStaysBehind) {
    const Object task = NewTask(L"Weekly");
    task.Put(L"DueDate", At(2026, 3, 2));
    const Object pattern = task.Child(L"GetRecurrencePattern");
    pattern.Put(L"Occurrences", 3);
    task.Call(L"Save");
    EXPECT_EQ(task.Call(L"SkipRecurrence"), Value(true));
    EXPECT_EQ(Shown(task.Get(L"DueDate")), L"2026-03-09 00:00");
    task.Put(L"Complete", true);
    task.Call(L"Save");
    Expect(task, {{L"DueDate", At(2026, 3, 16)}, {L"Complete", false}});
    const Object tasks = Items(kTasks);
    ASSERT_EQ(tasks.Number(L"Count"), 2);
    ExpectStored(tasks.Item(2), {{Id(kTaskSet, 0x8109000B), true}, // a dead occurrence
                                 {Id(kTaskSet, 0x811C000B), true},
                                 {Id(kTaskSet, 0x8126000B), false}});
    EXPECT_EQ(task.Call(L"SkipRecurrence"), Value(false)) << "it was the last one";
    task.Call(L"MarkComplete");
    task.Call(L"Save");
    Expect(task, {{L"IsRecurring", false}, {L"Complete", true}});
    EXPECT_EQ(tasks.Number(L"Count"), 2);
}

TEST_F(TaskTest, RegeneratedTasksCountFromTheDayTheLastWasDone) {
    const Object task = NewTask(L"Again");
    task.Put(L"DueDate", At(2020, 1, 1));
    const Object pattern = task.Child(L"GetRecurrencePattern");
    PutAll(pattern, {{L"RecurrenceType", 0}, {L"Interval", 3}, {L"Regenerate", true}});
    task.Call(L"MarkComplete");
    task.Call(L"Save");
    EXPECT_NEAR(task.Get(L"DueDate").date, Today().date + 3, 0.01);
}

TEST_F(TaskTest, AssignedTasksGoToTheirNewOwnerAndBack) {
    for (const bool accepts : {true, false}) {
        Outlook().Reset();
        {
            const Person assigner(Application(), L"Outlook");
            const Object task = NewTask(L"Paint");
            task.Put(L"DueDate", At(2026, 3, 6));
            EXPECT_EQ(task.Status(L"Send"), MAPI_E_NO_SUPPORT) << "nobody is to do it";
            task.Call(L"Assign");
            Expect(task, {{L"Ownership", 1}, {L"DelegationState", 1}, {L"ResponseState", 1}});
            task.Call(L"CancelResponseState");
            EXPECT_EQ(task.Number(L"Ownership"), 0);
            const Object assigned = task.Child(L"Assign");
            EXPECT_EQ(assigned.Status(L"Send"), E_FAIL) << "to nobody";
            assigned.Child(L"Recipients").Call(L"Add", {L"Back Office"});
            assigned.Call(L"Send");
            EXPECT_EQ(task.Text(L"Owner"), L"Back Office");
            const Object sent = assigner.Newest(kSentItems);
            Expect(sent, {{L"Class", 49}, {L"Subject", L"Task Request: Paint"}});
            EXPECT_EQ(sent.Child(L"Attachments").Number(L"Count"), 1) << "the task";
        }
        {
            const Person assignee(Application(), L"Back Office");
            const Object request = assignee.Newest(kInbox);
            request.Child(L"GetAssociatedTask", {false});
            EXPECT_EQ(assignee.Count(kTasks), 0);
            const Object task = request.Child(L"GetAssociatedTask", {true});
            EXPECT_EQ(assignee.Count(kTasks), 1);
            Expect(task, {{L"Subject", L"Paint"}, {L"DueDate", At(2026, 3, 6)}});
            Expect(task, {{L"Delegator", L"Front Desk"}, {L"Ownership", 2}});
            EXPECT_EQ(task.Status(L"Respond", {7, true, false}), E_INVALIDARG);
            task.Child(L"Respond", {accepts ? 2 : 3, true, false}).Call(L"Send");
            EXPECT_EQ(task.Number(L"DelegationState"), accepts ? 2 : 3);
        }
        const Person assigner(Application(), L"Outlook");
        const Object answer = assigner.Newest(kInbox);
        EXPECT_EQ(answer.Number(L"Class"), accepts ? 51 : 52);
        EXPECT_EQ(answer.Text(L"Subject"), accepts ? L"Task Accepted: Paint" : L"Task Declined: Paint");
        const Object task = answer.Child(L"GetAssociatedTask", {false});
        EXPECT_EQ(task.Number(L"DelegationState"), accepts ? 2 : 3);
        EXPECT_EQ(assigner.Count(kTasks), 1);
    }
}

TEST_F(TaskTest, StatusReportsGoToThoseWhoWantThem) {
    const Object task = NewTask(L"Paint");
    PutAll(task, {{L"PercentComplete", 40}, {L"StatusUpdateRecipients", L"Warehouse"}});
    const Object report = task.Child(L"StatusReport");
    Expect(report, {{L"Subject", L"Task Status Report: Paint"}, {L"To", L"Warehouse"}});
    EXPECT_NE(report.Text(L"Body").find(L"In progress"), std::wstring::npos);
    EXPECT_NE(report.Text(L"Body").find(L"40%"), std::wstring::npos);
}

TEST_F(TaskTest, RealTasksShowTheirFacts) {
    const Object task = OpenReal(L"msgClassTask.msg");
    if (!task)
        GTEST_SKIP() << "The MSG files of real mail clients are missing: " << VARDEN_MSG_FOLDER;
    Expect(task, {{L"Subject", L"Must jump over the lazy dog"}});
    Expect(task, {{L"Body", L"Quick brown fox must do what he must\r\n"}, {L"IsRecurring", false}});
    Expect(task, {{L"Ownership", 0}});
    EXPECT_EQ(task.Get(L"Complete"), Value(task.Number(L"Status") == kDone));
}

} // namespace
} // namespace outlook_tests
