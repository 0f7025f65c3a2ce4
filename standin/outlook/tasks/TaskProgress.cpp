// Keeps the progress of tasks together.
#include "standin/outlook/tasks/TaskProgress.h"

#include "standin/mailbox/Folder.h"
#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/calendar/AppointmentTimes.h"
#include "standin/outlook/calendar/CalendarProperties.h"
#include "standin/outlook/calendar/SeriesStore.h"
#include "standin/outlook/items/TaskDates.h"
#include "standin/outlook/tasks/TaskProperties.h"

namespace standin::outlook::tasks {
namespace {

using mailbox::OpenMessage;
using recurrence::Day;
using recurrence::Series;

std::int32_t StatusOf(const OpenMessage& task) {
    return ReadAs<std::int32_t>(task, kStatus).value_or(kNotStarted);
}

/// The day of the series that the task is for.
Day DayOf(const TaskSpan& span) {
    const Date day = span.due != kNoDate ? span.due : Today();
    return recurrence::DayOf(calendar::MinuteOfDate(day));
}

Date DateOf(Day day) {
    return calendar::DateOfMinute(recurrence::MidnightOf(day));
}

/// A series that regenerates counts from today, and its tasks one by one.
std::optional<Day> NextDayOf(Series& series, const TaskSpan& span) {
    if (!series.regenerates)
        return NextDay(series.pattern, DayOf(span) + 1);
    if (series.pattern.ending == recurrence::End::AfterCount && --series.pattern.count < 1)
        return std::nullopt;
    series.pattern.start = recurrence::DayOf(calendar::MinuteOfDate(Today()));
    const std::optional<Day> next = NextDay(series.pattern, series.pattern.start + 1);
    series.pattern.start = next.value_or(series.pattern.start);
    return next;
}

void MoveReminder(OpenMessage& task, Day days) {
    for (const StoredProperty* time : {&calendar::kReminderTime, &calendar::kReminderSignal})
        if (const auto value = ReadAs<mailbox::SysTime>(task, *time))
            WriteValue(task, *time, calendar::AddMinutes(*value, std::int64_t{recurrence::MidnightOf(days)}));
}

/// What is done, without the series.
void KeepAsDeadOccurrence(const OpenMessage& task, mailbox::Folder& folder) {
    std::shared_ptr<OpenMessage> dead;
    Check(folder.CreateMessage(mailbox::Content(task.Current()), dead));
    calendar::ClearSeries(*dead);
    WriteValue(*dead, kDeadOccurrence, true);
    Check(dead->Save());
}

} // namespace

void SetDone(OpenMessage& task, Date day) {
    WriteValue(task, kStatus, kDone);
    WriteValue(task, kFractionDone, 1.0);
    WriteValue(task, kComplete, true);
    WriteValue(task, kTaskDateCompleted, TimeOfUtc(WholeDay(day)));
    WriteValue(task, calendar::kReminderSet, false);
}

void SetDoneToday(OpenMessage& task) {
    SetDone(task, Today());
}

void SetUndone(OpenMessage& task, std::int32_t status, double percent) {
    WriteValue(task, kStatus, status);
    WriteValue(task, kFractionDone, percent);
    WriteValue(task, kComplete, false);
    RemoveValue(task, kTaskDateCompleted);
}

void FollowStatus(OpenMessage& task) {
    const std::int32_t status = StatusOf(task);
    const double percent = ReadAs<double>(task, kFractionDone).value_or(0);
    if (status == kDone)
        return SetDoneToday(task);
    SetUndone(task, status, status == kNotStarted || percent >= 1 ? 0 : percent);
}

/// Waiting and deferred tasks stay so until they are done.
void FollowPercent(OpenMessage& task) {
    const std::int32_t status = StatusOf(task);
    const double percent = ReadAs<double>(task, kFractionDone).value_or(0);
    if (percent >= 1)
        return SetDoneToday(task);
    const bool follows = status == kNotStarted || status == kInProgress || status == kDone;
    SetUndone(task, !follows ? status : percent > 0 ? kInProgress : kNotStarted, percent);
}

void FollowComplete(OpenMessage& task) {
    if (!ReadAs<bool>(task, kComplete).value_or(false))
        return SetUndone(task, kNotStarted, 0);
    if (StatusOf(task) != kDone)
        SetDoneToday(task);
}

void FollowDateCompleted(OpenMessage& task) {
    if (const auto day = ReadAs<mailbox::SysTime>(task, kTaskDateCompleted))
        return SetDone(task, UtcDate(*day));
    SetUndone(task, kNotStarted, 0);
}

bool MoveOn(OpenMessage& task) {
    std::optional<Series> series = calendar::ReadSeries(task);
    TaskSpan span = ReadTaskSpan(task);
    const std::optional<Day> next = series ? NextDayOf(*series, span) : std::nullopt;
    if (!next)
        return false;
    const Day days = *next - DayOf(span);
    if (span.start != kNoDate)
        span.start.days += days;
    span.due = DateOf(*next);
    WriteTaskSpan(task, span);
    calendar::WriteSeries(task, *series);
    MoveReminder(task, days);
    SetUndone(task, kNotStarted, 0);
    return true;
}

void LeaveDoneBehind(OpenMessage& task) {
    mailbox::Folder* folder = task.ParentFolder();
    if (!folder || !calendar::IsSeries(task) || !ReadAs<bool>(task, kComplete).value_or(false))
        return;
    const TaskSpan before = ReadTaskSpan(task);
    std::optional<Series> series = calendar::ReadSeries(task);
    if (!NextDayOf(*series, before))
        return calendar::ClearSeries(task);
    KeepAsDeadOccurrence(task, *folder);
    MoveOn(task);
}

} // namespace standin::outlook::tasks
