// The calendar, counted from 1601.
#include "standin/outlook/recurrence/Days.h"

#include <chrono>

namespace standin::outlook::recurrence {
namespace {

using namespace std::chrono;

constexpr sys_days kOrigin = year(1601) / January / 1;
constexpr int kFirstYear = 1601;

constexpr year_month_day DateOf(Day day) {
    return kOrigin + days(day);
}

} // namespace

Month MonthOf(Day day) {
    const year_month_day date = DateOf(day);
    return (static_cast<int>(date.year()) - kFirstYear) * kMonthsPerYear +
           static_cast<Month>(static_cast<unsigned>(date.month())) - 1;
}

std::int32_t DayOfMonth(Day day) {
    return static_cast<std::int32_t>(static_cast<unsigned>(DateOf(day).day()));
}

Day FirstOf(Month month) {
    const year_month first = year(kFirstYear) / January + months(month);
    return static_cast<Day>((sys_days(first / 1) - kOrigin).count());
}

std::int32_t LengthOf(Month month) {
    return FirstOf(month + 1) - FirstOf(month);
}

} // namespace standin::outlook::recurrence
