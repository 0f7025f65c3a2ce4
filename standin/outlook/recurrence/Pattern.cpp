// Which days a pattern has.
#include "standin/outlook/recurrence/Pattern.h"

#include <algorithm>

namespace standin::outlook::recurrence {
namespace {

constexpr std::int32_t kCountOfEndless = 10;
constexpr std::int32_t kMostOccurrences = 999;

Day NextDaily(const Pattern& pattern, Day from) {
    const Day steps = (from - pattern.start + pattern.interval - 1) / pattern.interval;
    return pattern.start + steps * pattern.interval;
}

/// Weeks count from the one that the start is in.
Day NextWeekly(const Pattern& pattern, Day from) {
    const Day firstWeek = WeekOf(pattern.start, pattern.firstWeekday);
    const Day cycle = 7 * pattern.interval;
    for (Day day = from;; ++day) {
        const Day intoCycle = (day - firstWeek) % cycle;
        if (intoCycle >= 7)
            day += cycle - intoCycle;
        if (MaskOf(day) & pattern.dayMask)
            return day;
    }
}

Day NthDay(Month month, std::int32_t mask, std::int32_t instance) {
    const Day first = FirstOf(month);
    const Day last = first + LengthOf(month) - 1;
    Day found = first;
    for (Day day = first; day <= last && instance > 0; ++day)
        if (MaskOf(day) & mask) {
            found = day;
            --instance;
        }
    return found;
}

Day DayIn(Month month, const Pattern& pattern) {
    if (pattern.type == Type::MonthNth || pattern.type == Type::YearNth)
        return NthDay(month, pattern.dayMask,
                      pattern.instance == kLastInstance ? LengthOf(month) : pattern.instance);
    return FirstOf(month) + std::min(pattern.dayOfMonth, LengthOf(month)) - 1;
}

bool IsYearly(Type type) {
    return type == Type::Yearly || type == Type::YearNth;
}

/// The month from which the interval counts.
Month FirstMonth(const Pattern& pattern) {
    Month month = MonthOf(pattern.start);
    if (IsYearly(pattern.type))
        month += (pattern.monthOfYear - MonthOfYear(month) + kMonthsPerYear) % kMonthsPerYear;
    return IsYearly(pattern.type) && DayIn(month, pattern) < pattern.start ? month + kMonthsPerYear : month;
}

Day NextMonthly(const Pattern& pattern, Day from) {
    const Month first = FirstMonth(pattern);
    const Month whole = std::max(MonthOf(from) - first, 0) / pattern.interval * pattern.interval;
    for (Month month = first + whole;; month += pattern.interval)
        if (const Day day = DayIn(month, pattern); day >= from)
            return day;
}

bool UsesMask(Type type) {
    return type == Type::Weekly || type == Type::MonthNth || type == Type::YearNth;
}

Day NextWithoutEnd(const Pattern& pattern, Day from) {
    from = std::max(from, pattern.start);
    switch (pattern.type) {
    case Type::Daily:
        return NextDaily(pattern, from);
    case Type::Weekly:
        return NextWeekly(pattern, from);
    default:
        return NextMonthly(pattern, from);
    }
}

std::int32_t CountDays(const Pattern& pattern) {
    std::int32_t count = 0;
    for (auto day = NextDay(pattern, pattern.start); day; day = NextDay(pattern, *day + 1))
        ++count;
    return count;
}

} // namespace

Pattern DefaultPattern(Type type, Day start) {
    Pattern pattern{.type = type, .interval = IsYearly(type) ? kMonthsPerYear : 1};
    const std::int32_t dayOfMonth = DayOfMonth(start);
    const bool isNth = type == Type::MonthNth || type == Type::YearNth;
    if (UsesMask(type))
        pattern.dayMask = MaskOf(start);
    if (type == Type::Monthly || type == Type::Yearly)
        pattern.dayOfMonth = dayOfMonth;
    if (isNth)
        pattern.instance = (dayOfMonth - 1) / 7 + 1;
    if (IsYearly(type))
        pattern.monthOfYear = MonthOfYear(MonthOf(start));
    pattern.start = start;
    NeverEnd(pattern);
    return pattern;
}

std::optional<Day> NextDay(const Pattern& pattern, Day from) {
    const bool hasDays = !UsesMask(pattern.type) || (pattern.dayMask & kAllDays);
    if (!hasDays || pattern.interval < 1 || from > pattern.end)
        return std::nullopt;
    const Day day = NextWithoutEnd(pattern, from);
    return day <= pattern.end ? std::optional(day) : std::nullopt;
}

bool FallsOn(const Pattern& pattern, Day day) {
    return day >= pattern.start && NextDay(pattern, day) == day;
}

void EndOn(Pattern& pattern, Day day) {
    pattern.ending = End::OnDate;
    pattern.end = day;
    pattern.count = CountDays(pattern);
}

void EndAfter(Pattern& pattern, std::int32_t count) {
    NeverEnd(pattern);
    Day last = pattern.start;
    std::optional<Day> day = NextDay(pattern, pattern.start);
    for (std::int32_t i = 0; day && i < std::min(count, kMostOccurrences); ++i) {
        last = *day;
        day = NextDay(pattern, last + 1);
    }
    pattern.ending = End::AfterCount;
    pattern.end = last;
    pattern.count = count;
}

void NeverEnd(Pattern& pattern) {
    pattern.ending = End::Never;
    pattern.end = kLastDayOfAll;
    pattern.count = kCountOfEndless;
}

void Refresh(Pattern& pattern) {
    switch (pattern.ending) {
    case End::OnDate:
        return EndOn(pattern, pattern.end);
    case End::AfterCount:
        return EndAfter(pattern, pattern.count);
    case End::Never:
        return NeverEnd(pattern);
    }
}

} // namespace standin::outlook::recurrence
