// Days and minutes as recurrences count them: since 1 January 1601, in local time.
#pragma once

#include <cstdint>

namespace standin::outlook::recurrence {

using Day = std::int32_t;    ///< days since 1 January 1601
using Minute = std::int32_t; ///< minutes since midnight of that day
using Month = std::int32_t;  ///< months since January 1601

inline constexpr Minute kMinutesPerDay = 1440;
inline constexpr Minute kMinutesPerWeek = 7 * kMinutesPerDay;
inline constexpr Month kMonthsPerYear = 12;

/// 31 December 4500: the end of what never ends ([MS-OXOCAL] 2.2.1.44.1, EndDate).
inline constexpr Day kLastDayOfAll = 0x5AE980DF / kMinutesPerDay;

constexpr Day DayOf(Minute minute) {
    return minute / kMinutesPerDay;
}
constexpr Minute MidnightOf(Day day) {
    return day * kMinutesPerDay;
}

/// 0 for Sunday. 1 January 1601 was a Monday.
constexpr std::int32_t WeekdayOf(Day day) {
    return (day + 1) % 7;
}
/// The day on which the week of a day begins.
constexpr Day WeekOf(Day day, std::int32_t firstWeekday) {
    return day - (WeekdayOf(day) - firstWeekday + 7) % 7;
}

Month MonthOf(Day day);
/// 1 to 31.
std::int32_t DayOfMonth(Day day);
Day FirstOf(Month month);
std::int32_t LengthOf(Month month);
/// 1 to 12.
constexpr std::int32_t MonthOfYear(Month month) {
    return month % kMonthsPerYear + 1;
}

} // namespace standin::outlook::recurrence
