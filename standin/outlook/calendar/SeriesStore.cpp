// Keeps recurrences in messages, with what stands beside them.
#include "standin/outlook/calendar/SeriesStore.h"

#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/calendar/AppointmentTimes.h"
#include "standin/outlook/calendar/CalendarProperties.h"
#include "standin/outlook/calendar/ExceptionMessages.h"
#include "standin/outlook/calendar/PatternText.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/TaskDates.h"

#include <algorithm>
#include <cmath>

namespace standin::outlook::calendar {
namespace {

using mailbox::Bytes;
using mailbox::MessageProperties;
using mailbox::OpenMessage;
using mailbox::SysTime;
using recurrence::Day;
using recurrence::Minute;
using recurrence::Series;
using recurrence::Type;

/// How a kind of item keeps its series.
struct Form {
    StoredProperty bytes, isRecurring;
    Bytes (*write)(const Series&);
    std::optional<Series> (*read)(std::span<const std::uint8_t>);
};

constexpr Form kAppointmentForm{kRecurrence, kIsRecurring, recurrence::WriteAppointment,
                                recurrence::ReadAppointment};
constexpr Form kTaskForm{{.tag = PT_BINARY, .set = &kPsTask, .number = 0x8116},
                         {.tag = PT_BOOLEAN, .set = &kPsTask, .number = 0x8126},
                         recurrence::WriteTask,
                         recurrence::ReadTask};

const Form& FormOf(const MessageProperties& message) {
    return IsTask(message) ? kTaskForm : kAppointmentForm;
}

/// 1 January 1601 as an automation date.
constexpr double kFirstDay = -109205;
constexpr double kMinutesPerDay = recurrence::kMinutesPerDay;

/// Linear days of an automation date: those before 30 December 1899 count their fraction forward.
double ToLinear(double days) {
    const double whole = std::trunc(days);
    return days >= 0 ? days : whole + (whole - days);
}

/// PidLidRecurrenceType ([MS-OXOCAL] 2.2.1.45).
std::int32_t TypeNumber(Type type) {
    constexpr std::int32_t kDaily = 1, kWeekly = 2, kMonthly = 3, kYearly = 4;
    switch (type) {
    case Type::Daily:
        return kDaily;
    case Type::Weekly:
        return kWeekly;
    case Type::Monthly:
    case Type::MonthNth:
        return kMonthly;
    default:
        return kYearly;
    }
}

Day FirstDay(const Series& series) {
    return NextDay(series.pattern, series.pattern.start).value_or(series.pattern.start);
}

/// The days that a calendar looks at for the series ([MS-OXOCAL] 2.2.1.14, 2.2.1.15); 31 August 4500 for one
/// without end.
void WriteClip(OpenMessage& message, const Series& series, const Zone& zone) {
    constexpr Date kForever{949875 + 1439.0 / 1440};
    const bool isEndless = series.pattern.ending == recurrence::End::Never;
    WriteValue(message, kClipStart, TimeOf(zone, recurrence::MidnightOf(FirstDay(series))));
    WriteValue(message, kClipEnd,
               isEndless
                   ? TimeOfUtc(kForever)
                   : TimeOf(zone, recurrence::MidnightOf(std::max(series.pattern.end, FirstDay(series)))));
}

void WriteZones(OpenMessage& message, const Zone& zone) {
    if (!ReadValue(message, kZoneStruct)) {
        WriteValue(message, kZoneStruct, WriteZoneStruct(zone));
        WriteValue(message, kZoneDescription, std::wstring(zone.StandardName));
    }
    if (!ReadValue(message, kZoneOfSeries))
        WriteValue(message, kZoneOfSeries, WriteZoneDefinition(zone, ZoneUse::Series));
}

void WriteAppointmentSeries(OpenMessage& message, const Series& series) {
    const Zone zone = ZoneOfSeries(message);
    WriteZones(message, zone);
    WriteValue(message, kMeetingIsRecurring, true);
    WriteValue(message, kRecurrenceType, TypeNumber(series.pattern.type));
    WriteValue(message, kRecurrenceText, PatternText(series));
    WriteClip(message, series, zone);
    const Minute midnight = recurrence::MidnightOf(FirstDay(series));
    const Span first{TimeOf(zone, midnight + series.startOffset), TimeOf(zone, midnight + series.endOffset)};
    if (ReadSpan(message) != first)
        WriteSpan(message, first);
}

/// A task that recurs is due some day.
void WriteTaskSeries(OpenMessage& message, const Series& series) {
    const TaskSpan span = ReadTaskSpan(message);
    if (span.due == kNoDate)
        WriteTaskSpan(message, WithDue(span, DateOfMinute(recurrence::MidnightOf(FirstDay(series)))));
}

/// The forms have no place for the month of a yearly pattern: it is that of the start.
Series WithMonthInStart(Series series) {
    if (series.pattern.monthOfYear != 0)
        series.pattern.start = FirstDay(series);
    return series;
}

Day DayOfTask(const MessageProperties& message) {
    const TaskSpan span = ReadTaskSpan(message);
    const Date day = span.start != kNoDate ? span.start : span.due != kNoDate ? span.due : Today();
    return recurrence::DayOf(MinuteOfDate(day));
}

} // namespace

bool IsTask(const MessageProperties& message) {
    return &KindOfClass(message.Get<PR_MESSAGE_CLASS_W>().value_or(L"")) == &kTaskItem;
}

bool IsSeries(const MessageProperties& message) {
    return ReadAs<bool>(message, FormOf(message).isRecurring).value_or(false);
}

Bytes ReadSeriesBytes(const MessageProperties& message) {
    return ReadAs<Bytes>(message, FormOf(message).bytes).value_or(Bytes());
}

std::optional<Series> ReadSeries(const MessageProperties& message) {
    if (!IsSeries(message))
        return std::nullopt;
    std::optional<Series> series = FormOf(message).read(ReadSeriesBytes(message));
    if (!series)
        throw Failure(E_FAIL, L"The recurrence pattern is not valid.");
    return series;
}

void WriteSeries(OpenMessage& message, const Series& series) {
    const Form& form = FormOf(message);
    WriteValue(message, form.bytes, form.write(WithMonthInStart(series)));
    WriteValue(message, form.isRecurring, true);
    IsTask(message) ? WriteTaskSeries(message, series) : WriteAppointmentSeries(message, series);
}

void ClearSeries(OpenMessage& message) {
    const Form& form = FormOf(message);
    RemoveValue(message, form.bytes);
    WriteValue(message, form.isRecurring, false);
    if (IsTask(message))
        return;
    constexpr std::int32_t kNotRecurring = 0;
    for (const StoredProperty* stored : {&kRecurrenceText, &kZoneStruct, &kZoneDescription, &kZoneOfSeries})
        RemoveValue(message, *stored);
    WriteValue(message, kRecurrenceType, kNotRecurring);
    WriteValue(message, kMeetingIsRecurring, false);
    RemoveExceptionMessages(message);
    if (const auto span = ReadSpan(message))
        WriteSpan(message, *span);
}

Series SeriesOf(const MessageProperties& message) {
    if (IsTask(message))
        return {.pattern = DefaultPattern(Type::Weekly, DayOfTask(message))};
    const Zone zone = ZoneOfSeries(message);
    const Span span = ReadSpan(message).value_or(NextHalfHour());
    const Minute start = MinuteOf(zone, span.start);
    const Minute offset = start % recurrence::kMinutesPerDay;
    return {.pattern = DefaultPattern(Type::Weekly, recurrence::DayOf(start)),
            .startOffset = offset,
            .endOffset = offset + MinutesOf(span)};
}

void MoveSeries(OpenMessage& message) {
    std::optional<Series> series = IsTask(message) ? std::nullopt : ReadSeries(message);
    if (!series)
        return;
    const Series moved = SeriesOf(message);
    series->startOffset = moved.startOffset;
    series->endOffset = moved.endOffset;
    if (FirstDay(*series) != moved.pattern.start)
        series->pattern.start = moved.pattern.start;
    Refresh(series->pattern);
    series->deleted.clear();
    series->exceptions.clear();
    RemoveExceptionMessages(message);
    WriteSeries(message, *series);
}

void SettleSeries(OpenMessage& message) {
    std::optional<Series> series;
    if (IsSeries(message))
        series =
            FormOf(message).read(ReadSeriesBytes(message)); // what others wrote is none of a save's business
    if (!series || FirstDay(*series) == series->pattern.start)
        return;
    series->pattern.start = FirstDay(*series);
    WriteSeries(message, *series);
}

Minute MinuteOfDate(Date date) {
    constexpr double kRounding = 0.001; // of what a date can't tell exactly
    return static_cast<Minute>(std::floor((ToLinear(date.days) - kFirstDay) * kMinutesPerDay + kRounding));
}

Date DateOfMinute(Minute minute) {
    const double linear = minute / kMinutesPerDay + kFirstDay;
    const double whole = std::floor(linear);
    return {linear >= 0 ? linear : whole - (linear - whole)};
}

Minute MinuteOf(const Zone& zone, SysTime time) {
    return MinuteOfDate(DateIn(zone, time));
}

SysTime TimeOf(const Zone& zone, Minute minute) {
    return TimeIn(zone, DateOfMinute(minute));
}

} // namespace standin::outlook::calendar
