// Times of the mailbox model as automation dates.
#include "standin/outlook/items/Conversions.h"

#include "standin/outlook/automation/Failure.h"

#include <algorithm>
#include <cmath>

namespace standin::outlook {
namespace {

using mailbox::SysTime;

constexpr double kSecondsPerDay = 86400;
constexpr std::uint64_t kTicksPerSecond = 10'000'000;
/// 30 December 1899, day 0 of automation, in days since 1601.
constexpr double kFirstDay = 109205;
/// Those of the year 9999, the last of automation dates.
constexpr double kDaysOfTime = 2958466 + kFirstDay;

/// Before day 0 the fraction of a date still counts forward: -1.25 is six in the morning of day -1.
double FromLinear(double days) {
    const double whole = std::floor(days);
    return days >= 0 ? days : whole - (days - whole);
}

double ToLinear(double days) {
    const double whole = std::trunc(days);
    return days >= 0 ? days : whole + (whole - days);
}

/// Asked for once: the system takes its time over it.
const TIME_ZONE_INFORMATION& TimeZone() {
    static const TIME_ZONE_INFORMATION zone = [] {
        TIME_ZONE_INFORMATION present{};
        GetTimeZoneInformation(&present);
        return present;
    }();
    return zone;
}

FILETIME FileTimeOf(SysTime time) {
    return {static_cast<DWORD>(time.ticks), static_cast<DWORD>(time.ticks >> 32)};
}

SysTime TimeOf(const FILETIME& time) {
    return {static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime};
}

using Shift = BOOL(WINAPI*)(const TIME_ZONE_INFORMATION*, const SYSTEMTIME*, SYSTEMTIME*);

/// The time shifted by the time zone; as it was for a year that the system can't shift.
SysTime Shifted(SysTime time, Shift shift) {
    const FILETIME before = FileTimeOf(time);
    SYSTEMTIME from{}, to{};
    FILETIME after{};
    const bool done = FileTimeToSystemTime(&before, &from) && shift(&TimeZone(), &from, &to) &&
                      SystemTimeToFileTime(&to, &after);
    return done ? TimeOf(after) : time;
}

} // namespace

Date UtcDate(SysTime time) {
    const auto wholeSeconds = time.ticks / kTicksPerSecond;
    const auto seconds = static_cast<double>(wholeSeconds);
    return {FromLinear(seconds / kSecondsPerDay - kFirstDay)};
}

SysTime TimeOfUtc(Date date) {
    const double days = ToLinear(date.days) + kFirstDay;
    const double within = days > 0 ? std::min(days, kDaysOfTime) : 0;
    return {static_cast<std::uint64_t>(std::llround(within * kSecondsPerDay)) * kTicksPerSecond};
}

bool HasTime(Date date) {
    const double days = ToLinear(date.days) + kFirstDay;
    return days >= 0 && days < kDaysOfTime;
}

Date CheckedDate(Date date) {
    constexpr double kFirst = -109115, kLast = 949875; // 1 April 1601, 31 August 4500
    const double day = std::trunc(date.days);
    if (date != kNoDate && !(day >= kFirst && day <= kLast))
        throw InvalidValue();
    return date;
}

Date LocalDate(SysTime time) {
    const Date utc = UtcDate(time);
    return utc == kNoDate ? kNoDate : UtcDate(Shifted(time, SystemTimeToTzSpecificLocalTime));
}

SysTime TimeOfLocal(Date date) {
    const SysTime time = TimeOfUtc(date);
    return date == kNoDate ? time : Shifted(time, TzSpecificLocalTimeToSystemTime);
}

} // namespace standin::outlook
