// Tasks: progress, dates, series, and tasks that one gives to another.
#include "Calendar.h"

#include "standin/mailbox/Tags.h"

namespace outlook_tests {
namespace {

namespace mailbox = standin::mailbox;

constexpr int kNotStarted = 0, kInProgress = 1, kDone = 2, kWaiting = 3;

class TaskTest : public CalendarTest {
protected:
    Object NewTask(const wchar_t* subject) const {
        const Object task = NewItem(kTaskItem);
        task.Put(L"Subject", Value(subject));
        return task;
    }
    std::wstring TodayText() const {
        SYSTEMTIME now{};
        GetLocalTime(&now);
        return Shown(At(now.wYear, now.wMonth, now.wDay));
    }
};

TEST_F(TaskTest, NewTasksAreTheUsersOwn) {
    const Object task = NewTask(L"New");
    EXPECT_EQ(task.Number(L"Status"), kNotStarted);
    EXPECT_EQ(task.Number(L"PercentComplete"), 0);
    EXPECT_EQ(task.Get(L"Complete"), Value(false));
    EXPECT_EQ(task.Text(L"Owner"), L"Front Desk");
    EXPECT_EQ(task.Number(L"Ownership"), 0);
    EXPECT_EQ(task.Number(L"DelegationState"), 0);
    EXPECT_EQ(task.Number(L"ResponseState"), 0);
    EXPECT_EQ(task.Get(L"ReminderSet"), Value(false));
    for (const wchar_t* date : {L"StartDate", L"DueDate", L"DateCompleted"})
        EXPECT_EQ(Shown(task.Get(date)), L"none") << date;
}

TEST_F(TaskTest, ProgressKeepsTogether) {
    struct Step {
        const wchar_t* member;
        _variant_t value;
    };
    struct Row {
        std::vector<Step> steps;
        int status, percent;
        bool complete;
    };
    const Row rows[] = {
        {{{L"Status", Value(kDone)}}, kDone, 100, true},
        {{{L"PercentComplete", Value(100)}}, kDone, 100, true},
        {{{L"Complete", Value(true)}}, kDone, 100, true},
        {{{L"DateCompleted", At(2026, 3, 2)}}, kDone, 100, true},
        {{{L"PercentComplete", Value(40)}}, kInProgress, 40, false},
        {{{L"Status", Value(kWaiting)}, {L"PercentComplete", Value(40)}}, kWaiting, 40, false},
        {{{L"PercentComplete", Value(40)}, {L"PercentComplete", Value(0)}}, kNotStarted, 0, false},
        {{{L"PercentComplete", Value(40)}, {L"Status", Value(kNotStarted)}}, kNotStarted, 0, false},
        {{{L"Complete", Value(true)}, {L"Complete", Value(false)}}, kNotStarted, 0, false},
        {{{L"Complete", Value(true)}, {L"Status", Value(kInProgress)}}, kInProgress, 0, false},
        {{{L"Complete", Value(true)}, {L"PercentComplete", Value(60)}}, kInProgress, 60, false},
        {{{L"Complete", Value(true)}, {L"DateCompleted", Date(kNoDate)}}, kNotStarted, 0, false},
    };
    for (const Row& row : rows) {
        const Object task = NewTask(L"Progress");
        for (const Step& step : row.steps)
            task.Put(step.member, step.value);
        const wchar_t* what = row.steps.back().member;
        EXPECT_EQ(task.Number(L"Status"), row.status) << what;
        EXPECT_EQ(task.Number(L"PercentComplete"), row.percent) << what;
        EXPECT_EQ(task.Get(L"Complete"), Value(row.complete)) << what;
        EXPECT_EQ(Shown(task.Get(L"DateCompleted")) != L"none", row.complete) << what;
    }
    const Object task = NewTask(L"Progress");
    task.Put(L"ReminderSet", Value(true));
    task.Call(L"MarkComplete");
    EXPECT_EQ(Shown(task.Get(L"DateCompleted")), TodayText());
    EXPECT_EQ(task.Get(L"ReminderSet"), Value(false)) << "what is done needs no reminder";
    for (const auto& [member, value] :
         {std::pair{L"PercentComplete", 101}, {L"PercentComplete", -1}, {L"Status", 5}, {L"TotalWork", -1}})
        EXPECT_EQ(task.TryPut(member, Value(value)).Status(), E_INVALIDARG) << member;
}

/// Midnight of the local day as if it were UTC, and in UTC proper beside it.
TEST_F(TaskTest, DatesAreStoredAsLocalDays) {
    const Object task = NewTask(L"Dates");
    task.Put(L"StartDate", At(2026, 7, 1, 15));
    task.Put(L"DueDate", At(2026, 7, 3));
    EXPECT_EQ(Shown(task.Get(L"StartDate")), L"2026-07-01 00:00");
    task.Put(L"TotalWork", Value(480));
    task.Put(L"Role", Value(L"Lead"));
    task.Put(L"TeamTask", Value(true));
    task.Put(L"SchedulePlusPriority", Value(L"A1"));
    task.Call(L"MarkComplete");
    task.Call(L"Save");
    const auto message = Find(kTasks, L"Dates");
    ASSERT_TRUE(message);
    EXPECT_EQ(ShownTime(*Named(*message, kTaskSet, 0x8104, PT_SYSTIME)), L"2026-07-01 00:00");
    EXPECT_EQ(ShownTime(*Named(*message, kTaskSet, 0x8105, PT_SYSTIME)), L"2026-07-03 00:00");
    EXPECT_EQ(ShownTime(*Named(*message, kTaskSet, 0x810F, PT_SYSTIME)), TodayText());
    EXPECT_TRUE(Named(*message, kCommonSet, 0x8517, PT_SYSTIME));
    EXPECT_EQ(NamedAs<std::int32_t>(*message, kTaskSet, 0x8111, PT_LONG), 480);
    EXPECT_EQ(NamedAs<std::wstring>(*message, kTaskSet, 0x8127, PT_UNICODE), L"Lead");
    EXPECT_EQ(NamedAs<std::wstring>(*message, kTaskSet, 0x812F, PT_UNICODE), L"A1");
    EXPECT_EQ(NamedAs<bool>(*message, kTaskSet, 0x8103, PT_BOOLEAN), true);
    EXPECT_EQ(NamedAs<double>(*message, kTaskSet, 0x8102, PT_DOUBLE), 1.0);
}

TEST_F(TaskTest, WhatIsDoneOfASeriesStaysBehind) {
    const Object task = NewTask(L"Weekly");
    task.Put(L"DueDate", At(2026, 3, 2));
    const Object pattern = task.Child(L"GetRecurrencePattern");
    pattern.Put(L"Occurrences", Value(3));
    task.Call(L"Save");
    EXPECT_EQ(task.Call(L"SkipRecurrence"), Value(true));
    EXPECT_EQ(Shown(task.Get(L"DueDate")), L"2026-03-09 00:00");
    task.Put(L"Complete", Value(true));
    task.Call(L"Save");
    EXPECT_EQ(Shown(task.Get(L"DueDate")), L"2026-03-16 00:00");
    EXPECT_EQ(task.Get(L"Complete"), Value(false));
    const auto& messages = Folder(kTasks).Messages();
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(NamedAs<bool>(*messages[1], kTaskSet, 0x8109, PT_BOOLEAN), true) << "a dead occurrence";
    EXPECT_EQ(NamedAs<bool>(*messages[1], kTaskSet, 0x811C, PT_BOOLEAN), true);
    EXPECT_EQ(NamedAs<bool>(*messages[1], kTaskSet, 0x8126, PT_BOOLEAN), false);
    EXPECT_EQ(task.Call(L"SkipRecurrence"), Value(false)) << "it was the last one";
    task.Call(L"MarkComplete");
    task.Call(L"Save");
    EXPECT_EQ(task.Get(L"IsRecurring"), Value(false));
    EXPECT_EQ(task.Get(L"Complete"), Value(true));
    EXPECT_EQ(Folder(kTasks).Messages().size(), 2u);
}

TEST_F(TaskTest, RegeneratedTasksCountFromTheDayTheLastWasDone) {
    const Object task = NewTask(L"Again");
    task.Put(L"DueDate", At(2020, 1, 1));
    const Object pattern = task.Child(L"GetRecurrencePattern");
    pattern.Put(L"RecurrenceType", Value(0));
    pattern.Put(L"Interval", Value(3));
    pattern.Put(L"Regenerate", Value(true));
    task.Call(L"MarkComplete");
    task.Call(L"Save");
    SYSTEMTIME now{};
    GetLocalTime(&now);
    EXPECT_NEAR(task.Get(L"DueDate").date, At(now.wYear, now.wMonth, now.wDay).date + 3, 0.01);
}

TEST_F(TaskTest, AssignedTasksGoToTheirNewOwnerAndBack) {
    for (const bool accepts : {true, false}) {
        Outlook().Reset();
        {
            const Person assigner(Application(), L"Outlook");
            const Object task = NewTask(L"Paint");
            task.Put(L"DueDate", At(2026, 3, 6));
            EXPECT_EQ(task.TryCall(L"Send").Status(), MAPI_E_NO_SUPPORT) << "nobody is to do it";
            task.Call(L"Assign");
            EXPECT_EQ(task.Number(L"Ownership"), 1);
            EXPECT_EQ(task.Number(L"DelegationState"), 1);
            EXPECT_EQ(task.Number(L"ResponseState"), 1);
            task.Call(L"CancelResponseState");
            EXPECT_EQ(task.Number(L"Ownership"), 0);
            const Object assigned = task.Child(L"Assign");
            EXPECT_EQ(assigned.TryCall(L"Send").Status(), E_FAIL) << "to nobody";
            assigned.Child(L"Recipients").Call(L"Add", {Value(L"Back Office")});
            assigned.Call(L"Send");
            EXPECT_EQ(task.Text(L"Owner"), L"Back Office");
            const Object sent = assigner.Newest(kSentItems);
            EXPECT_EQ(sent.Number(L"Class"), 49);
            EXPECT_EQ(sent.Text(L"Subject"), L"Task Request: Paint");
            EXPECT_EQ(sent.Child(L"Attachments").Number(L"Count"), 1) << "the task";
        }
        {
            const Person assignee(Application(), L"Back Office");
            const Object request = assignee.Newest(kInbox);
            request.Child(L"GetAssociatedTask", {Value(false)});
            EXPECT_EQ(assignee.Count(kTasks), 0);
            const Object task = request.Child(L"GetAssociatedTask", {Value(true)});
            EXPECT_EQ(assignee.Count(kTasks), 1);
            EXPECT_EQ(task.Text(L"Subject"), L"Paint");
            EXPECT_EQ(Shown(task.Get(L"DueDate")), L"2026-03-06 00:00");
            EXPECT_EQ(task.Text(L"Delegator"), L"Front Desk");
            EXPECT_EQ(task.Number(L"Ownership"), 2);
            EXPECT_EQ(task.TryCall(L"Respond", {Value(7), Value(true), Value(false)}).Status(), E_INVALIDARG);
            task.Child(L"Respond", {Value(accepts ? 2 : 3), Value(true), Value(false)}).Call(L"Send");
            EXPECT_EQ(task.Number(L"DelegationState"), accepts ? 2 : 3);
        }
        const Person assigner(Application(), L"Outlook");
        const Object answer = assigner.Newest(kInbox);
        EXPECT_EQ(answer.Number(L"Class"), accepts ? 51 : 52);
        EXPECT_EQ(answer.Text(L"Subject"), accepts ? L"Task Accepted: Paint" : L"Task Declined: Paint");
        const Object task = answer.Child(L"GetAssociatedTask", {Value(false)});
        EXPECT_EQ(task.Number(L"DelegationState"), accepts ? 2 : 3);
        EXPECT_EQ(assigner.Count(kTasks), 1);
    }
}

TEST_F(TaskTest, StatusReportsGoToThoseWhoWantThem) {
    const Object task = NewTask(L"Paint");
    task.Put(L"PercentComplete", Value(40));
    task.Put(L"StatusUpdateRecipients", Value(L"Warehouse"));
    const Object report = task.Child(L"StatusReport");
    EXPECT_EQ(report.Text(L"Subject"), L"Task Status Report: Paint");
    EXPECT_EQ(report.Text(L"To"), L"Warehouse");
    EXPECT_NE(report.Text(L"Body").find(L"In progress"), std::wstring::npos);
    EXPECT_NE(report.Text(L"Body").find(L"40%"), std::wstring::npos);
}

TEST_F(TaskTest, RealTasksShowTheirFacts) {
    const Object task = OpenReal("msgClassTask.msg", kTasks);
    if (!task)
        GTEST_SKIP() << "The MSG files of real mail clients are missing: " << VARDEN_MSG_FOLDER;
    EXPECT_EQ(task.Text(L"Subject"), L"Must jump over the lazy dog");
    EXPECT_EQ(task.Text(L"Body"), L"Quick brown fox must do what he must\r\n");
    EXPECT_EQ(task.Get(L"IsRecurring"), Value(false));
    EXPECT_EQ(task.Number(L"Ownership"), 0);
    EXPECT_EQ(task.Get(L"Complete"), Value(task.Number(L"Status") == kDone));
}

} // namespace
} // namespace outlook_tests
