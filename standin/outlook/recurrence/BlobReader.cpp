// Reads recurrences from their binary forms.
#include "standin/mailbox/ByteOrder.h"
#include "standin/outlook/recurrence/Blob.h"
#include "standin/outlook/recurrence/Series.h"

#include <algorithm>

namespace standin::outlook::recurrence {
namespace {

using mailbox::ByteReader;

std::int32_t TakeNumber(ByteReader& in) {
    return in.Take<std::int32_t>();
}

/// What the header says of the type.
std::optional<Type> TypeFrom(std::uint16_t frequency, std::uint16_t patternType) {
    const bool isNth = patternType == blob::kMonthNth;
    const bool isMonth = patternType == blob::kMonth || patternType == blob::kMonthEnd;
    switch (frequency) {
    case blob::kDaily: // every weekday is a weekly pattern to those who look at it
        if (patternType == blob::kDay || patternType == blob::kWeek)
            return patternType == blob::kDay ? Type::Daily : Type::Weekly;
        break;
    case blob::kWeekly:
        if (patternType == blob::kWeek || isMonth)
            return Type::Weekly;
        break;
    case blob::kMonthly:
        if (isMonth || isNth)
            return isNth ? Type::MonthNth : Type::Monthly;
        break;
    case blob::kYearly:
        if (isMonth || isNth)
            return isNth ? Type::YearNth : Type::Yearly;
        break;
    }
    return std::nullopt;
}

void TakeSpecific(std::uint16_t patternType, ByteReader& in, Pattern& pattern) {
    if (patternType == blob::kDay)
        return;
    const std::int32_t first = TakeNumber(in);
    (pattern.type == Type::Monthly || pattern.type == Type::Yearly ? pattern.dayOfMonth : pattern.dayMask) =
        first;
    if (patternType == blob::kMonthNth)
        pattern.instance = TakeNumber(in);
}

std::optional<End> TakeEnd(ByteReader& in) {
    switch (in.Take<std::uint32_t>()) {
    case blob::kEndOnDate:
        return End::OnDate;
    case blob::kEndAfterCount:
        return End::AfterCount;
    case blob::kEndNever:
    case blob::kEndNeverToo:
        return End::Never;
    default:
        return std::nullopt;
    }
}

bool TakeDays(ByteReader& in, std::vector<Day>& days) {
    const auto count = in.Take<std::uint32_t>();
    if (!in.Ok() || count > in.Left() / sizeof(Minute))
        return false;
    for (std::uint32_t i = 0; i < count; ++i)
        days.push_back(DayOf(TakeNumber(in)));
    std::ranges::sort(days);
    return true;
}

/// The lists of days as they stand in the blob, until the exceptions are known.
struct ChangedDays {
    std::vector<Day> gone, come;
};

bool IsSound(const Pattern& pattern) {
    const bool needsDay = pattern.type == Type::Monthly || pattern.type == Type::Yearly;
    const bool needsInstance = pattern.type == Type::MonthNth || pattern.type == Type::YearNth;
    return pattern.interval > 0 && pattern.start >= 0 && pattern.end >= 0 &&
           (!needsDay || (pattern.dayOfMonth > 0 && pattern.dayOfMonth <= 31)) &&
           (!needsInstance || (pattern.instance > 0 && pattern.instance <= kLastInstance));
}

bool TakePattern(ByteReader& in, Series& series, ChangedDays& changed) {
    Pattern& pattern = series.pattern;
    in.Skip(sizeof blob::kVersion);
    if (in.Take<std::uint16_t>() != blob::kVersion)
        return false;
    const auto frequency = in.Take<std::uint16_t>();
    const auto patternType = in.Take<std::uint16_t>();
    const std::optional<Type> type = TypeFrom(frequency, patternType);
    if (!type)
        return false;
    pattern = {.type = *type};
    in.Skip(sizeof blob::kGregorian + sizeof(Minute)); // CalendarType, FirstDateTime
    const std::int32_t period = TakeNumber(in);
    pattern.interval = pattern.type == Type::Daily ? period / kMinutesPerDay : period;
    series.regenerates = TakeNumber(in) != 0;
    TakeSpecific(patternType, in, pattern);
    const std::optional<End> ending = TakeEnd(in);
    pattern.count = TakeNumber(in);
    pattern.firstWeekday = TakeNumber(in);
    if (!ending || !TakeDays(in, changed.gone) || !TakeDays(in, changed.come))
        return false;
    pattern.ending = *ending;
    pattern.start = DayOf(TakeNumber(in));
    pattern.end = DayOf(TakeNumber(in));
    if (pattern.ending == End::Never)
        pattern.end = kLastDayOfAll;
    if (pattern.type == Type::Yearly || pattern.type == Type::YearNth)
        pattern.monthOfYear = MonthOfYear(MonthOf(pattern.start));
    return in.Ok() && IsSound(pattern);
}

void TakeTimes(ByteReader& in, Exception& exception) {
    exception.start = TakeNumber(in);
    exception.end = TakeNumber(in);
    exception.original = TakeNumber(in);
}

std::wstring TakeWide(ByteReader& in) {
    std::wstring text;
    const auto length = in.Take<std::uint16_t>();
    for (std::uint16_t i = 0; i < length && in.Ok(); ++i)
        text += in.Take<wchar_t>();
    return text;
}

std::wstring TakeNarrow(ByteReader& in) {
    in.Skip(sizeof(std::uint16_t)); // the length with a NUL
    std::string text;
    const auto length = in.Take<std::uint16_t>();
    for (std::uint16_t i = 0; i < length && in.Ok(); ++i)
        text += in.Take<char>();
    return mailbox::Widen(text, CP_ACP);
}

Exception TakeException(ByteReader& in) {
    Exception exception;
    TakeTimes(in, exception);
    const auto flags = in.Take<std::uint16_t>();
    if (flags & blob::kSubject)
        exception.subject = TakeNarrow(in);
    if (flags & blob::kMeetingType)
        exception.meetingStatus = TakeNumber(in);
    if (flags & blob::kReminderDelta)
        exception.reminderMinutes = TakeNumber(in);
    if (flags & blob::kReminder)
        exception.reminderSet = TakeNumber(in) != 0;
    if (flags & blob::kLocation)
        exception.location = TakeNarrow(in);
    if (flags & blob::kBusyStatus)
        exception.busyStatus = TakeNumber(in);
    if (flags & blob::kAttachment)
        exception.hasAttachment = TakeNumber(in);
    if (flags & blob::kSubType)
        exception.allDay = TakeNumber(in) != 0;
    if (flags & blob::kColor)
        exception.color = TakeNumber(in);
    exception.hasBody = flags & blob::kBody;
    return exception;
}

void SkipBlock(ByteReader& in) {
    in.Skip(in.Take<std::uint32_t>());
}

/// The Unicode text replaces the narrow one.
void TakeExtended(ByteReader& in, std::uint32_t writerVersion, Exception& exception) {
    if (writerVersion >= blob::kWriterVersion2)
        SkipBlock(in);
    SkipBlock(in);
    if (!exception.subject && !exception.location)
        return;
    in.Skip(3 * sizeof(Minute));
    if (exception.subject)
        exception.subject = TakeWide(in);
    if (exception.location)
        exception.location = TakeWide(in);
    SkipBlock(in);
}

bool TakeExceptions(ByteReader& in, Series& series) {
    in.Skip(sizeof blob::kReaderVersion2);
    const auto writerVersion = in.Take<std::uint32_t>();
    series.startOffset = TakeNumber(in);
    series.endOffset = TakeNumber(in);
    const auto count = in.Take<std::uint16_t>();
    for (std::uint16_t i = 0; i < count && in.Ok(); ++i)
        series.exceptions.push_back(TakeException(in));
    SkipBlock(in);
    if (!in.Ok())
        return false;
    for (Exception& exception : series.exceptions)
        TakeExtended(in, writerVersion, exception);
    SkipBlock(in);
    std::ranges::sort(series.exceptions, {}, &Exception::original);
    return in.Ok();
}

/// What is gone without having gone elsewhere is deleted.
void TellDeleted(const ChangedDays& changed, Series& series) {
    for (const Day day : changed.gone)
        if (StateOf(series, day) != DayState::Changed)
            series.deleted.push_back(day);
}

} // namespace

std::optional<Series> ReadTask(std::span<const std::uint8_t> bytes) {
    ByteReader in(bytes);
    Series series;
    ChangedDays changed;
    if (!TakePattern(in, series, changed))
        return std::nullopt;
    TellDeleted(changed, series);
    return series;
}

std::optional<Series> ReadAppointment(std::span<const std::uint8_t> bytes) {
    ByteReader in(bytes);
    Series series;
    ChangedDays changed;
    if (!TakePattern(in, series, changed) || !TakeExceptions(in, series))
        return std::nullopt;
    TellDeleted(changed, series);
    return series;
}

} // namespace standin::outlook::recurrence
