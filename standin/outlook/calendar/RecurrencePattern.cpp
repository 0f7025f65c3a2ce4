// RecurrencePattern: which properties a type of pattern has, and what follows from writing them.
#include "standin/outlook/calendar/RecurrencePattern.h"

#include "standin/outlook/calendar/ExceptionMessages.h"
#include "standin/outlook/calendar/Occurrence.h"
#include "standin/outlook/calendar/SeriesStore.h"

#include <algorithm>
#include <cmath>

namespace standin::outlook::calendar {
namespace {

using recurrence::End;
using recurrence::Minute;
using recurrence::Pattern;
using recurrence::Series;
using recurrence::Type;

using PatternObject = RecurrencePatternObject;

constexpr std::int32_t kMinutesPerDay = recurrence::kMinutesPerDay;

constexpr unsigned Bit(Type type) {
    return 1u << static_cast<unsigned>(type);
}
constexpr unsigned kEveryType = ~0u;
constexpr unsigned kByDayOfMonth = Bit(Type::Monthly) | Bit(Type::Yearly);
constexpr unsigned kByInstance = Bit(Type::MonthNth) | Bit(Type::YearNth);
constexpr unsigned kByMask = Bit(Type::Weekly) | kByInstance;
constexpr unsigned kByMonth = Bit(Type::Yearly) | Bit(Type::YearNth);

/// A number of the pattern. Types that haven't got it show 0, and can't be given it.
struct NumberRule {
    const wchar_t* name;
    std::int32_t Pattern::*number;
    unsigned types;
    std::int32_t least, most;
};

constexpr NumberRule kNumbers[] = {
    {L"DayOfMonth", &Pattern::dayOfMonth, kByDayOfMonth, 1, 31},
    {L"DayOfWeekMask", &Pattern::dayMask, kByMask, 0, recurrence::kAllDays},
    {L"Instance", &Pattern::instance, kByInstance, 1, recurrence::kLastInstance},
    {L"Interval", &Pattern::interval, kEveryType, 1, 999},
    {L"MonthOfYear", &Pattern::monthOfYear, kByMonth, 1, recurrence::kMonthsPerYear},
};

const NumberRule& RuleOf(const Call& call) {
    return *std::ranges::find(kNumbers, call.member.name,
                              [](const NumberRule& rule) { return std::wstring_view(rule.name); });
}

Failure NotOfThisType() {
    return {E_FAIL, L"The operation failed. This type of recurrence pattern does not have the property."};
}

std::int32_t Number(PatternObject& object, const Call& call) {
    return object.Series().pattern.*RuleOf(call).number;
}

/// Years are counted in months.
bool FitsInterval(const Pattern& pattern) {
    const bool isYearly = Bit(pattern.type) & kByMonth;
    return !isYearly || pattern.interval % recurrence::kMonthsPerYear == 0;
}

void SetNumber(PatternObject& object, const Call& call) {
    const NumberRule& rule = RuleOf(call);
    Series series = object.Series();
    const std::int32_t number = call.arguments.Number(0);
    if (!(rule.types & Bit(series.pattern.type)))
        throw NotOfThisType();
    if (number < rule.least || number > rule.most)
        throw InvalidValue();
    series.pattern.*rule.number = number;
    if (!FitsInterval(series.pattern))
        throw InvalidValue();
    Refresh(series.pattern);
    object.Change(std::move(series));
}

std::int32_t RecurrenceType(PatternObject& object) {
    return static_cast<std::int32_t>(object.Series().pattern.type);
}

/// Another type begins anew on the same day.
void SetRecurrenceType(PatternObject& object, const Arguments& value) {
    Series series = object.Series();
    if (!ObjectModel::Get().HasValue(L"OlRecurrenceType", value.Number(0)))
        throw InvalidValue();
    const auto type = static_cast<Type>(value.Number(0));
    if (type == series.pattern.type)
        return;
    series.pattern = DefaultPattern(type, series.pattern.start);
    object.Change(std::move(series));
}

Date PatternStartDate(PatternObject& object) {
    return DateOfMinute(recurrence::MidnightOf(object.Series().pattern.start));
}

/// The day of a date that a pattern can begin or end on.
recurrence::Day DayIn(const Arguments& value) {
    const Date date = GivenDate(value);
    if (date == kNoDate)
        throw InvalidValue();
    return recurrence::DayOf(MinuteOfDate(date));
}

/// A pattern that ends some day can't begin after it.
void SetPatternStartDate(PatternObject& object, const Arguments& value) {
    Series series = object.Series();
    series.pattern.start = DayIn(value);
    if (series.pattern.ending == End::OnDate && series.pattern.end < series.pattern.start)
        throw InvalidValue();
    Refresh(series.pattern);
    object.Change(std::move(series));
}

Date PatternEndDate(PatternObject& object) {
    const Pattern& pattern = object.Series().pattern;
    return pattern.ending == End::Never ? kNoDate : DateOfMinute(recurrence::MidnightOf(pattern.end));
}

void SetPatternEndDate(PatternObject& object, const Arguments& value) {
    Series series = object.Series();
    const recurrence::Day end = DayIn(value);
    if (end < series.pattern.start)
        throw InvalidValue();
    EndOn(series.pattern, end);
    object.Change(std::move(series));
}

bool NoEndDate(PatternObject& object) {
    return object.Series().pattern.ending == End::Never;
}

/// Without its endlessness the pattern ends after ten times.
void SetNoEndDate(PatternObject& object, const Arguments& value) {
    Series series = object.Series();
    if (value.Flag(0) == (series.pattern.ending == End::Never))
        return;
    if (value.Flag(0))
        NeverEnd(series.pattern);
    else
        EndAfter(series.pattern, series.pattern.count);
    object.Change(std::move(series));
}

std::int32_t Occurrences(PatternObject& object) {
    const Pattern& pattern = object.Series().pattern;
    return pattern.ending == End::Never ? 0 : pattern.count;
}

void SetOccurrences(PatternObject& object, const Arguments& value) {
    constexpr std::int32_t kMost = 999;
    Series series = object.Series();
    if (value.Number(0) < 1 || value.Number(0) > kMost)
        throw InvalidValue();
    EndAfter(series.pattern, value.Number(0));
    object.Change(std::move(series));
}

/// The time of day as tasks, which have none, show it.
Date TimeOfDay(PatternObject& object, Minute offset) {
    return object.IsOfTask() ? kNoDate
                             : Date{(offset % kMinutesPerDay) / static_cast<double>(kMinutesPerDay)};
}

Date StartTime(PatternObject& object) {
    return TimeOfDay(object, object.Series().startOffset);
}

Date EndTime(PatternObject& object) {
    return TimeOfDay(object, object.Series().endOffset);
}

std::int32_t Duration(PatternObject& object) {
    return object.Series().endOffset - object.Series().startOffset;
}

Minute TimeGiven(const Arguments& value) {
    if (!(std::abs(value.Days(0).days) < kNoDate.days))
        throw InvalidValue();
    const Minute minute = MinuteOfDate(value.Days(0)) % kMinutesPerDay;
    return minute < 0 ? minute + kMinutesPerDay : minute;
}

void ChangeTimes(PatternObject& object, Minute start, Minute minutes) {
    if (object.IsOfTask())
        throw NotOfThisType();
    Series series = object.Series();
    series.startOffset = start;
    series.endOffset = start + minutes;
    object.Change(std::move(series));
}

/// The end follows.
void SetStartTime(PatternObject& object, const Arguments& value) {
    ChangeTimes(object, TimeGiven(value), Duration(object));
}

/// An end before the start is one on the next day.
void SetEndTime(PatternObject& object, const Arguments& value) {
    const Minute start = object.Series().startOffset;
    const Minute minutes = TimeGiven(value) - start;
    ChangeTimes(object, start, minutes < 0 ? minutes + kMinutesPerDay : minutes);
}

void SetDuration(PatternObject& object, const Arguments& value) {
    if (value.Number(0) < 0)
        throw InvalidValue();
    ChangeTimes(object, object.Series().startOffset, value.Number(0));
}

bool Regenerate(PatternObject& object) {
    return object.Series().regenerates;
}

/// Counting from the day when the last one was done is for tasks.
void SetRegenerate(PatternObject& object, const Arguments& value) {
    Series series = object.Series();
    if (!object.IsOfTask() && value.Flag(0))
        throw NotOfThisType();
    series.regenerates = value.Flag(0);
    object.Change(std::move(series));
}

ComPtr<ExceptionsObject> Exceptions(PatternObject& object) {
    object.Series();
    return Make<ExceptionsObject>(ComPtr<PatternObject>(&object));
}

/// Occurrences are those of the series as it is saved.
void CheckSaved(PatternObject& object) {
    const mailbox::OpenMessage& message = object.Item().Message();
    const auto& saved = message.Saved();
    if (message.IsNew() || !saved || ReadSeriesBytes(*saved) != ReadSeriesBytes(message))
        throw Failure(E_FAIL, L"You must save the item before you can do this.");
}

/// Single tasks of a series can't be had.
ComPtr<OccurrenceObject> GetOccurrence(PatternObject& object, const Arguments& arguments) {
    if (object.IsOfTask())
        throw Failure(MAPI_E_NO_SUPPORT);
    object.Series();
    CheckSaved(object);
    const Zone zone = ZoneOfSeries(object.Item().Message());
    return OccurrenceAt(object.Item(), MinuteOf(zone, TimeOfLocal(arguments.Days(0))));
}

constexpr Row NumberRow(const NumberRule& rule) {
    return {rule.name, Get<Number>, Put<SetNumber>};
}

constexpr Row kRows[] = {
    NumberRow(kNumbers[0]),
    NumberRow(kNumbers[1]),
    NumberRow(kNumbers[2]),
    NumberRow(kNumbers[3]),
    NumberRow(kNumbers[4]),
    {L"Duration", Get<Duration>, Put<SetDuration>},
    {L"EndTime", Get<EndTime>, Put<SetEndTime>},
    {L"Exceptions", Get<Exceptions>},
    {L"GetOccurrence", Get<GetOccurrence>},
    {L"NoEndDate", Get<NoEndDate>, Put<SetNoEndDate>},
    {L"Occurrences", Get<Occurrences>, Put<SetOccurrences>},
    {L"PatternEndDate", Get<PatternEndDate>, Put<SetPatternEndDate>},
    {L"PatternStartDate", Get<PatternStartDate>, Put<SetPatternStartDate>},
    {L"RecurrenceType", Get<RecurrenceType>, Put<SetRecurrenceType>},
    {L"Regenerate", Get<Regenerate>, Put<SetRegenerate>},
    {L"StartTime", Get<StartTime>, Put<SetStartTime>},
};

constexpr Kind kKind{L"RecurrencePattern", 0x00063044, 28, kRows};

} // namespace

RecurrencePatternObject::RecurrencePatternObject(ComPtr<ItemObject> item)
    : Object(kKind), m_item(std::move(item)) {
}

bool RecurrencePatternObject::IsOfTask() const {
    return IsTask(m_item->Message());
}

/// What is read again loses what the bytes can't tell: the day from which a pattern was to begin. So it is
/// read only if somebody else wrote them.
const Series& RecurrencePatternObject::Series() {
    mailbox::Bytes bytes = ReadSeriesBytes(m_item->Message());
    if (bytes != m_bytes || bytes.empty()) {
        std::optional<recurrence::Series> series = ReadSeries(m_item->Message());
        if (!series)
            throw Failure(E_FAIL, L"The item does not recur.");
        m_series = std::move(*series);
        m_bytes = std::move(bytes);
    }
    return m_series;
}

void RecurrencePatternObject::Change(recurrence::Series series) {
    if (series == Series())
        return;
    series.deleted.clear();
    series.exceptions.clear();
    RemoveExceptionMessages(m_item->Message());
    WriteSeries(m_item->Message(), series);
    m_series = std::move(series);
    m_bytes = ReadSeriesBytes(m_item->Message());
}

ComPtr<RecurrencePatternObject> GetRecurrencePattern(ItemObject& item) {
    if (auto* occurrence = dynamic_cast<OccurrenceObject*>(&item))
        return GetRecurrencePattern(occurrence->SeriesItem());
    if (!IsSeries(item.Message()))
        WriteSeries(item.Message(), SeriesOf(item.Message()));
    auto pattern = Make<RecurrencePatternObject>(ComPtr<ItemObject>(&item));
    pattern->Series();
    return pattern;
}

void ClearRecurrencePattern(ItemObject& item) {
    if (dynamic_cast<OccurrenceObject*>(&item))
        throw Failure(MAPI_E_NO_SUPPORT);
    if (IsSeries(item.Message()))
        ClearSeries(item.Message());
}

std::int32_t RecurrenceState(ItemObject& item) {
    constexpr std::int32_t kNotRecurring = 0, kMaster = 1, kOccurrence = 2, kException = 3;
    if (auto* occurrence = dynamic_cast<OccurrenceObject*>(&item))
        return occurrence->IsException() ? kException : kOccurrence;
    return IsSeries(item.Message()) ? kMaster : kNotRecurring;
}

bool IsRecurring(ItemObject& item) {
    return RecurrenceState(item) != 0;
}

} // namespace standin::outlook::calendar
