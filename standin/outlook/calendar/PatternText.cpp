// Puts recurrence patterns into words.
#include "standin/outlook/calendar/PatternText.h"

#include "standin/outlook/calendar/SeriesStore.h"

namespace standin::outlook::calendar {
namespace {

using recurrence::Pattern;
using recurrence::Type;

constexpr std::int32_t kWorkdays = 62, kWeekend = 65;
constexpr const wchar_t* kDays[] = {L"Sunday",   L"Monday", L"Tuesday", L"Wednesday",
                                    L"Thursday", L"Friday", L"Saturday"};
constexpr const wchar_t* kMonths[] = {L"January",   L"February", L"March",    L"April",
                                      L"May",       L"June",     L"July",     L"August",
                                      L"September", L"October",  L"November", L"December"};
constexpr const wchar_t* kPlaces[] = {L"", L"first", L"second", L"third", L"fourth", L"last"};

std::wstring DaysText(std::int32_t mask) {
    switch (mask) {
    case recurrence::kAllDays:
        return L"day";
    case kWorkdays:
        return L"weekday";
    case kWeekend:
        return L"weekend day";
    }
    std::wstring text;
    for (std::int32_t day = 0; day < 7; ++day)
        if (mask & 1 << day)
            text += (text.empty() ? L"" : L", ") + std::wstring(kDays[day]);
    const std::size_t last = text.rfind(L", ");
    return last == text.npos ? text : text.replace(last, 2, L" and ");
}

std::wstring Every(std::int32_t interval, const wchar_t* unit) {
    return interval == 1 ? std::wstring(L"every ") + unit
                         : L"every " + std::to_wstring(interval) + L" " + unit + L"s";
}

std::wstring PlaceText(const Pattern& pattern) {
    return std::wstring(L"the ") + kPlaces[pattern.instance] + L" " + DaysText(pattern.dayMask);
}

std::wstring MonthText(const Pattern& pattern) {
    return kMonths[(pattern.monthOfYear - 1) % recurrence::kMonthsPerYear];
}

std::wstring DaysOf(const Pattern& pattern) {
    switch (pattern.type) {
    case Type::Daily:
        return Every(pattern.interval, L"day");
    case Type::Weekly:
        return pattern.interval == 1 ? L"every " + DaysText(pattern.dayMask)
                                     : Every(pattern.interval, L"week") + L" on " + DaysText(pattern.dayMask);
    case Type::Monthly:
        return L"day " + std::to_wstring(pattern.dayOfMonth) + L" of " + Every(pattern.interval, L"month");
    case Type::MonthNth:
        return PlaceText(pattern) + L" of " + Every(pattern.interval, L"month");
    case Type::Yearly:
        return L"every " + MonthText(pattern) + L" " + std::to_wstring(pattern.dayOfMonth);
    case Type::YearNth:
        return PlaceText(pattern) + L" of " + MonthText(pattern);
    }
    return {};
}

std::wstring TimeText(recurrence::Minute minute) {
    SYSTEMTIME time{};
    wchar_t text[64] = L"";
    if (!VariantTimeToSystemTime(DateOfMinute(minute).days, &time))
        return {};
    GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, text,
                   static_cast<int>(std::size(text)));
    return text;
}

} // namespace

std::wstring PatternText(const recurrence::Series& series) {
    std::wstring days = DaysOf(series.pattern);
    const bool wholeDays = (series.endOffset - series.startOffset) % recurrence::kMinutesPerDay == 0;
    if (wholeDays)
        return days;
    return days + L" from " + TimeText(series.startOffset) + L" to " +
           TimeText(series.endOffset % recurrence::kMinutesPerDay);
}

} // namespace standin::outlook::calendar
