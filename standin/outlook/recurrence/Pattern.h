// On which days something recurs.
#pragma once

#include "standin/outlook/recurrence/Days.h"

#include <optional>

namespace standin::outlook::recurrence {

/// The numbers are those of OlRecurrenceType.
enum class Type : std::int32_t {
    Daily = 0,
    Weekly = 1,
    Monthly = 2,
    MonthNth = 3,
    Yearly = 5,
    YearNth = 6,
};

enum class End { OnDate, AfterCount, Never };

/// OlDaysOfWeek: one bit a day, Sunday the lowest.
inline constexpr std::int32_t kAllDays = 127;
constexpr std::int32_t MaskOf(Day day) {
    return 1 << WeekdayOf(day);
}

/// What an Instance of 5 means: the last one, whether it is the fourth or the fifth.
inline constexpr std::int32_t kLastInstance = 5;

/// A pattern. What a type doesn't use is 0.
struct Pattern {
    Type type = Type::Weekly;
    /// In days, weeks or months by the type; of the yearly types in months too, 12 for every year.
    std::int32_t interval = 1;
    std::int32_t dayMask = 0;     ///< weekly, month-nth, year-nth
    std::int32_t dayOfMonth = 0;  ///< monthly, yearly: 1 to 31; the last day of months that are shorter
    std::int32_t instance = 0;    ///< month-nth, year-nth: 1 to 5
    std::int32_t monthOfYear = 0; ///< yearly, year-nth: 1 to 12
    std::int32_t firstWeekday = 0;
    Day start = 0; ///< nothing happens before
    Day end = 0;   ///< nothing happens after; kLastDayOfAll if it never ends
    End ending = End::Never;
    std::int32_t count = 10; ///< occurrences from start to end; 10 for what never ends
    bool operator==(const Pattern&) const = default;
};

/// The pattern that a type has by itself for something that first happens on this day.
Pattern DefaultPattern(Type type, Day start);

/// The first day of the pattern that is this day or after it. Nothing after the end, and for a mask of no
/// days.
std::optional<Day> NextDay(const Pattern& pattern, Day from);
bool FallsOn(const Pattern& pattern, Day day);

/// Puts an end to it, and counts the occurrences up to there.
void EndOn(Pattern& pattern, Day day);
/// Ends it with its n-th occurrence.
void EndAfter(Pattern& pattern, std::int32_t count);
void NeverEnd(Pattern& pattern);
/// Brings end and count up to date after any other change: what was given last stays, the other follows.
void Refresh(Pattern& pattern);

} // namespace standin::outlook::recurrence
