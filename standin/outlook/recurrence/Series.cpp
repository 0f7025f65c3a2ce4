// What was done to single occurrences of a series.
#include "standin/outlook/recurrence/Series.h"

#include <algorithm>

namespace standin::outlook::recurrence {
namespace {

Day OriginalDay(const Exception& exception) {
    return DayOf(exception.original);
}

void RemoveException(Series& series, Day day) {
    std::erase_if(series.exceptions, [day](const Exception& each) { return OriginalDay(each) == day; });
}

} // namespace

DayState StateOf(const Series& series, Day day) {
    if (std::ranges::binary_search(series.deleted, day))
        return DayState::Deleted;
    if (std::ranges::find(series.exceptions, day, OriginalDay) != series.exceptions.end())
        return DayState::Changed;
    return FallsOn(series.pattern, day) ? DayState::Regular : DayState::NotInPattern;
}

Minute StartOn(const Series& series, Day day) {
    return MidnightOf(day) + series.startOffset;
}

const Exception* FindException(const Series& series, Minute start) {
    const auto found = std::ranges::find(series.exceptions, start, &Exception::start);
    return found == series.exceptions.end() ? nullptr : &*found;
}

void DeleteDay(Series& series, Day day) {
    RemoveException(series, day);
    const auto place = std::ranges::lower_bound(series.deleted, day);
    if (place == series.deleted.end() || *place != day)
        series.deleted.insert(place, day);
}

void ChangeDay(Series& series, Exception exception) {
    RemoveException(series, OriginalDay(exception));
    const auto place =
        std::ranges::lower_bound(series.exceptions, exception.original, {}, &Exception::original);
    series.exceptions.insert(place, std::move(exception));
}

} // namespace standin::outlook::recurrence
