// Writes recurrences in their binary forms.
#include "standin/mailbox/ByteOrder.h"
#include "standin/outlook/recurrence/Blob.h"
#include "standin/outlook/recurrence/Series.h"

#include <algorithm>

namespace standin::outlook::recurrence {
namespace {

using mailbox::ByteWriter;

std::uint32_t Number(Minute minute) {
    return static_cast<std::uint32_t>(minute);
}

struct Form {
    std::uint16_t frequency, patternType;
};

Form FormOf(Type type) {
    switch (type) {
    case Type::Daily:
        return {blob::kDaily, blob::kDay};
    case Type::Weekly:
        return {blob::kWeekly, blob::kWeek};
    case Type::Monthly:
        return {blob::kMonthly, blob::kMonth};
    case Type::MonthNth:
        return {blob::kMonthly, blob::kMonthNth};
    case Type::Yearly:
        return {blob::kYearly, blob::kMonth};
    default:
        return {blob::kYearly, blob::kMonthNth};
    }
}

/// Days are counted in minutes, all else in its own unit.
std::uint32_t PeriodOf(const Pattern& pattern) {
    return Number(pattern.type == Type::Daily ? pattern.interval * kMinutesPerDay : pattern.interval);
}

/// Where in the cycle the start is, as a moment after 1 January 1601.
Minute FirstDateTime(const Pattern& pattern) {
    switch (pattern.type) {
    case Type::Daily:
        return MidnightOf(pattern.start % pattern.interval);
    case Type::Weekly:
        return MidnightOf(WeekOf(pattern.start, pattern.firstWeekday) % (7 * pattern.interval));
    default:
        return MidnightOf(FirstOf(MonthOf(pattern.start) % pattern.interval));
    }
}

void WriteSpecific(const Pattern& pattern, ByteWriter& out) {
    switch (FormOf(pattern.type).patternType) {
    case blob::kWeek:
        out.Add(Number(pattern.dayMask));
        break;
    case blob::kMonth:
        out.Add(Number(pattern.dayOfMonth));
        break;
    case blob::kMonthNth:
        out.Add(Number(pattern.dayMask)).Add(Number(pattern.instance));
        break;
    default:
        break;
    }
}

std::uint32_t EndTypeOf(End ending) {
    return ending == End::OnDate       ? blob::kEndOnDate
           : ending == End::AfterCount ? blob::kEndAfterCount
                                       : blob::kEndNever;
}

void WriteDays(std::vector<Day> days, ByteWriter& out) {
    std::ranges::sort(days);
    out.Add(Number(static_cast<Minute>(days.size())));
    for (const Day day : days)
        out.Add(Number(MidnightOf(day)));
}

/// Both lists have the exceptions: the days they come from, and those they went to.
void WriteChangedDays(const Series& series, ByteWriter& out) {
    std::vector<Day> gone = series.deleted, come;
    for (const Exception& exception : series.exceptions) {
        gone.push_back(DayOf(exception.original));
        come.push_back(DayOf(exception.start));
    }
    WriteDays(std::move(gone), out);
    WriteDays(std::move(come), out);
}

void WritePattern(const Series& series, ByteWriter& out) {
    const Pattern& pattern = series.pattern;
    const Form form = FormOf(pattern.type);
    out.Add(blob::kVersion)
        .Add(blob::kVersion)
        .Add(form.frequency)
        .Add(form.patternType)
        .Add(blob::kGregorian);
    out.Add(Number(FirstDateTime(pattern))).Add(PeriodOf(pattern)).Add(std::uint32_t{series.regenerates});
    WriteSpecific(pattern, out);
    out.Add(EndTypeOf(pattern.ending)).Add(Number(pattern.count)).Add(Number(pattern.firstWeekday));
    WriteChangedDays(series, out);
    out.Add(Number(MidnightOf(pattern.start)));
    out.Add(pattern.ending == End::Never ? blob::kEndDateOfEndless : Number(MidnightOf(pattern.end)));
}

std::uint16_t OverridesOf(const Exception& exception) {
    std::uint16_t flags = 0;
    const auto note = [&flags](bool has, blob::Override flag) { flags |= has ? flag : 0; };
    note(exception.subject.has_value(), blob::kSubject);
    note(exception.meetingStatus.has_value(), blob::kMeetingType);
    note(exception.reminderMinutes.has_value(), blob::kReminderDelta);
    note(exception.reminderSet.has_value(), blob::kReminder);
    note(exception.location.has_value(), blob::kLocation);
    note(exception.busyStatus.has_value(), blob::kBusyStatus);
    note(exception.hasAttachment.has_value(), blob::kAttachment);
    note(exception.allDay.has_value(), blob::kSubType);
    note(exception.color.has_value(), blob::kColor);
    note(exception.hasBody, blob::kBody);
    return flags;
}

void WriteTimes(const Exception& exception, ByteWriter& out) {
    out.Add(Number(exception.start)).Add(Number(exception.end)).Add(Number(exception.original));
}

/// The first of the two lengths counts a NUL that isn't there.
void WriteNarrow(const std::optional<std::wstring>& text, ByteWriter& out) {
    if (!text)
        return;
    const std::string narrow = mailbox::Narrow(*text, CP_ACP);
    out.Add(static_cast<std::uint16_t>(narrow.size() + 1)).Add(static_cast<std::uint16_t>(narrow.size()));
    out.AddBytes(narrow.data(), narrow.size());
}

void WriteWide(const std::optional<std::wstring>& text, ByteWriter& out) {
    if (!text)
        return;
    out.Add(static_cast<std::uint16_t>(text->size()));
    out.AddBytes(text->data(), text->size() * sizeof(wchar_t));
}

template <class T>
void WriteNumber(const std::optional<T>& number, ByteWriter& out) {
    if (number)
        out.Add(static_cast<std::uint32_t>(*number));
}

/// ExceptionInfo.
void WriteException(const Exception& exception, ByteWriter& out) {
    WriteTimes(exception, out);
    out.Add(OverridesOf(exception));
    WriteNarrow(exception.subject, out);
    WriteNumber(exception.meetingStatus, out);
    WriteNumber(exception.reminderMinutes, out);
    WriteNumber(exception.reminderSet, out);
    WriteNarrow(exception.location, out);
    WriteNumber(exception.busyStatus, out);
    WriteNumber(exception.hasAttachment, out);
    WriteNumber(exception.allDay, out);
    WriteNumber(exception.color, out);
}

/// ExtendedException: a change highlight, an empty block, and text as Unicode, if there is any, with a block
/// of its own.
void WriteExtended(const Exception& exception, ByteWriter& out) {
    constexpr std::uint32_t kHighlightSize = 4, kNothing = 0;
    out.Add(kHighlightSize).Add(kNothing).Add(kNothing);
    if (!exception.subject && !exception.location)
        return;
    WriteTimes(exception, out);
    WriteWide(exception.subject, out);
    WriteWide(exception.location, out);
    out.Add(kNothing);
}

} // namespace

mailbox::Bytes WriteTask(const Series& series) {
    ByteWriter out;
    WritePattern(series, out);
    return out.Take();
}

mailbox::Bytes WriteAppointment(const Series& series) {
    constexpr std::uint32_t kEmptyBlock = 0;
    ByteWriter out;
    WritePattern(series, out);
    out.Add(blob::kReaderVersion2).Add(blob::kWriterVersion2);
    out.Add(Number(series.startOffset)).Add(Number(series.endOffset));
    out.Add(static_cast<std::uint16_t>(series.exceptions.size()));
    for (const Exception& exception : series.exceptions)
        WriteException(exception, out);
    out.Add(kEmptyBlock);
    for (const Exception& exception : series.exceptions)
        WriteExtended(exception, out);
    out.Add(kEmptyBlock);
    return out.Take();
}

} // namespace standin::outlook::recurrence
