// A recurring thing as a whole: its pattern, the time of day, and what was done to single occurrences. And
// the binary forms in which appointments and tasks keep it.
#pragma once

#include "standin/mailbox/Property.h"
#include "standin/outlook/recurrence/Pattern.h"

#include <span>

namespace standin::outlook::recurrence {

/// An occurrence that differs from the others. What it doesn't have of its own is as in the others
/// ([MS-OXOCAL] 2.2.1.44.2, ExceptionInfo).
struct Exception {
    Minute original = 0; ///< when it would begin
    Minute start = 0;
    Minute end = 0;
    std::optional<std::wstring> subject;
    std::optional<std::int32_t> meetingStatus;
    std::optional<std::int32_t> reminderMinutes;
    std::optional<bool> reminderSet;
    std::optional<std::wstring> location;
    std::optional<std::int32_t> busyStatus;
    std::optional<std::int32_t> hasAttachment;
    std::optional<bool> allDay;
    std::optional<std::int32_t> color;
    bool hasBody = false; ///< its text is in its own message
    bool operator==(const Exception&) const = default;
};

/// A series. `startOffset` and `endOffset` are minutes from midnight of each day; of tasks they are 0.
struct Series {
    Pattern pattern;
    Minute startOffset = 0;
    Minute endOffset = 0;
    bool regenerates = false;          ///< tasks: the next one counts from the day the last one was done
    std::vector<Day> deleted;          ///< days of the pattern without an occurrence, ascending
    std::vector<Exception> exceptions; ///< by `original`, ascending
    bool operator==(const Series&) const = default;
};

/// What a day of the pattern has become.
enum class DayState { NotInPattern, Regular, Deleted, Changed };
DayState StateOf(const Series& series, Day day);

/// When the occurrence of a day of the pattern begins, as long as it is regular.
Minute StartOn(const Series& series, Day day);
/// The exception that begins at this minute; null for none.
const Exception* FindException(const Series& series, Minute start);
/// Takes an occurrence out, whether it is regular or an exception.
void DeleteDay(Series& series, Day day);
/// Puts an exception in place of the occurrence, or of the exception, that it comes from.
void ChangeDay(Series& series, Exception exception);

/// A pattern as appointments keep it ([MS-OXOCAL] 2.2.1.44.5) and as tasks do (2.2.1.44.1 alone). Text of
/// exceptions is narrow too; its code page is the system's.
mailbox::Bytes WriteAppointment(const Series& series);
mailbox::Bytes WriteTask(const Series& series);
/// Nothing for bytes that are none. A weekly pattern whose form is that of a monthly one is read as weekly.
std::optional<Series> ReadAppointment(std::span<const std::uint8_t> bytes);
std::optional<Series> ReadTask(std::span<const std::uint8_t> bytes);

} // namespace standin::outlook::recurrence
