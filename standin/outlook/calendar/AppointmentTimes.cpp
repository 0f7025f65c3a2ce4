// Keeps start, end and length of appointments together.
#include "standin/outlook/calendar/AppointmentTimes.h"

#include "standin/mailbox/Platform.h"
#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/calendar/CalendarProperties.h"
#include "standin/outlook/calendar/SeriesStore.h"
#include "standin/outlook/calendar/TimeZones.h"

#include <cmath>

namespace standin::outlook::calendar {
namespace {

using mailbox::MessageProperties;
using mailbox::OpenMessage;
using mailbox::SysTime;

constexpr std::int64_t kTicksPerMinute = 600'000'000;

/// How a member shows a time of the message.
using Read = Date (*)(const MessageProperties&, const StoredProperty& zone, SysTime time);
using Write = SysTime (*)(const MessageProperties&, const StoredProperty& zone, Date date);

Zone ZoneIn(const MessageProperties& message, const StoredProperty& stored) {
    const auto bytes = ReadAs<mailbox::Bytes>(message, stored);
    return (bytes ? ReadZoneDefinition(*bytes) : std::nullopt).value_or(LocalZone());
}

Date InLocalTime(const MessageProperties&, const StoredProperty&, SysTime time) {
    return LocalDate(time);
}
SysTime FromLocalTime(const MessageProperties&, const StoredProperty&, Date date) {
    return TimeOfLocal(date);
}
Date InUtc(const MessageProperties&, const StoredProperty&, SysTime time) {
    return UtcDate(time);
}
SysTime FromUtc(const MessageProperties&, const StoredProperty&, Date date) {
    return TimeOfUtc(date);
}
Date InOwnZone(const MessageProperties& message, const StoredProperty& zone, SysTime time) {
    return DateIn(ZoneIn(message, zone), time);
}
SysTime FromOwnZone(const MessageProperties& message, const StoredProperty& zone, Date date) {
    return TimeIn(ZoneIn(message, zone), date);
}

/// A date that means none can't be the time of an appointment.
Date Given(const Call& call) {
    const Date date = GivenDate(call.arguments);
    if (date == kNoDate)
        throw InvalidValue();
    return date;
}

/// The message's span has changed by the user: what hangs on it follows.
void Move(OpenMessage& message, const Span& span) {
    WriteSpan(message, span);
    FollowAllDay(message);
    MoveSeries(message);
}

void MoveStart(OpenMessage& message, SysTime start) {
    const auto span = ReadSpan(message);
    Move(message, {start, AddMinutes(start, span ? MinutesOf(*span) : 0)});
}

void MoveEnd(OpenMessage& message, SysTime end) {
    const auto span = ReadSpan(message);
    const SysTime start = !span ? end : end < span->start ? AddMinutes(end, -MinutesOf(*span)) : span->start;
    Move(message, {start, end});
}

template <Read read, const StoredProperty& zone>
_variant_t ReadTime(const MessageProperties& message, const StoredProperty& stored) {
    const auto time = ReadAs<SysTime>(message, stored);
    return Result(time ? read(message, zone, *time) : kNoDate);
}

template <Write write, const StoredProperty& zone, void (*move)(OpenMessage&, SysTime)>
void WriteTime(OpenMessage& message, const StoredProperty&, const Call& call) {
    move(message, write(message, zone, Given(call)));
}

_variant_t ReadLength(const MessageProperties& message, const StoredProperty& stored) {
    const auto span = ReadSpan(message);
    return Result(span ? MinutesOf(*span) : ReadAs<std::int32_t>(message, stored).value_or(0));
}

void WriteLength(OpenMessage& message, const StoredProperty&, const Call& call) {
    const std::int32_t minutes = call.arguments.Number(0);
    const auto span = ReadSpan(message);
    if (minutes < 0)
        throw InvalidValue();
    if (span)
        Move(message, {span->start, AddMinutes(span->start, minutes)});
}

} // namespace

constinit const Conversion kLocalStart{ReadTime<InLocalTime, kZoneOfStart>,
                                       WriteTime<FromLocalTime, kZoneOfStart, MoveStart>};
constinit const Conversion kLocalEnd{ReadTime<InLocalTime, kZoneOfEnd>,
                                     WriteTime<FromLocalTime, kZoneOfEnd, MoveEnd>};
constinit const Conversion kUtcStart{ReadTime<InUtc, kZoneOfStart>,
                                     WriteTime<FromUtc, kZoneOfStart, MoveStart>};
constinit const Conversion kUtcEnd{ReadTime<InUtc, kZoneOfEnd>, WriteTime<FromUtc, kZoneOfEnd, MoveEnd>};
constinit const Conversion kZoneStart{ReadTime<InOwnZone, kZoneOfStart>,
                                      WriteTime<FromOwnZone, kZoneOfStart, MoveStart>};
constinit const Conversion kZoneEnd{ReadTime<InOwnZone, kZoneOfEnd>,
                                    WriteTime<FromOwnZone, kZoneOfEnd, MoveEnd>};
constinit const Conversion kLength{ReadLength, WriteLength};

std::int32_t MinutesOf(const Span& span) {
    const auto ticks = static_cast<std::int64_t>(span.end.ticks - span.start.ticks);
    return static_cast<std::int32_t>(ticks / kTicksPerMinute);
}

SysTime AddMinutes(SysTime time, std::int64_t minutes) {
    return {time.ticks + static_cast<std::uint64_t>(minutes * kTicksPerMinute)};
}

std::optional<Span> ReadSpan(const MessageProperties& message) {
    const auto start = ReadAs<SysTime>(message, kStartWhole), end = ReadAs<SysTime>(message, kEndWhole);
    return start && end ? std::optional(Span{*start, *end}) : std::nullopt;
}

void WriteSpan(OpenMessage& message, const Span& span) {
    Check(message.Write(PR_START_DATE, span.start));
    Check(message.Write(PR_END_DATE, span.end));
    for (const StoredProperty* start : {&kStartWhole, &kCommonStart})
        WriteValue(message, *start, span.start);
    for (const StoredProperty* end : {&kEndWhole, &kCommonEnd})
        WriteValue(message, *end, span.end);
    WriteValue(message, kDuration, MinutesOf(span));
    if (!IsSeries(message)) {
        WriteValue(message, kClipStart, span.start);
        WriteValue(message, kClipEnd, span.end);
    }
    FollowReminder(message);
}

void FollowReminder(OpenMessage& message) {
    const auto span = ReadSpan(message);
    if (!span || !ReadAs<bool>(message, kReminderSet).value_or(false))
        return;
    const std::int32_t minutes = ReadAs<std::int32_t>(message, kReminderMinutes).value_or(0);
    WriteValue(message, kReminderTime, span->start);
    WriteValue(message, kReminderSignal, AddMinutes(span->start, -minutes));
}

void FollowAllDay(OpenMessage& message) {
    const auto span = ReadSpan(message);
    if (!span || !ReadAs<bool>(message, kAllDay).value_or(false))
        return;
    const double first = std::floor(LocalDate(span->start).days);
    const double last = std::max(std::ceil(LocalDate(span->end).days), first + 1);
    const Span days{TimeOfLocal({first}), TimeOfLocal({last})};
    if (days != *span)
        WriteSpan(message, days);
}

Span NextHalfHour() {
    constexpr double kHalfHoursPerDay = 48;
    constexpr std::int32_t kMinutes = 30;
    const Date now = LocalDate(mailbox::Now());
    const SysTime start = TimeOfLocal({(std::floor(now.days * kHalfHoursPerDay) + 1) / kHalfHoursPerDay});
    return {start, AddMinutes(start, kMinutes)};
}

} // namespace standin::outlook::calendar
