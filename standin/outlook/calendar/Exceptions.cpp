// Exceptions and Exception: what was done to single occurrences of a series.
#include "standin/outlook/calendar/Occurrence.h"
#include "standin/outlook/calendar/RecurrencePattern.h"
#include "standin/outlook/calendar/SeriesStore.h"
#include "standin/outlook/objects/ItemFields.h"

#include <algorithm>

namespace standin::outlook::calendar {
namespace {

using recurrence::Minute;

/// An occurrence that is not as the others.
struct Change {
    Minute original;
    bool isDeleted;
};

std::vector<Change> ChangesOf(const recurrence::Series& series) {
    std::vector<Change> changes;
    for (const recurrence::Day day : series.deleted)
        changes.push_back({StartOn(series, day), true});
    for (const recurrence::Exception& exception : series.exceptions)
        changes.push_back({exception.original, false});
    std::ranges::sort(changes, {}, &Change::original);
    return changes;
}

/// Exception.
class ExceptionObject final : public Object {
public:
    ExceptionObject(ComPtr<RecurrencePatternObject> pattern, Change change);

    ComPtr<Object> Parent() override { return m_pattern; }
    const Change& What() const { return m_change; }
    ComPtr<OccurrenceObject> Item() const;
    Date OriginalDate() const;

private:
    ComPtr<RecurrencePatternObject> m_pattern;
    Change m_change;
};

bool Deleted(ExceptionObject& exception) {
    return exception.What().isDeleted;
}

Date OriginalDate(ExceptionObject& exception) {
    return exception.OriginalDate();
}

ComPtr<OccurrenceObject> AppointmentItem(ExceptionObject& exception) {
    return exception.Item();
}

ComPtr<ItemPropertiesObject> ItemProperties(ExceptionObject& exception) {
    return Make<ItemPropertiesObject>(ComPtr<ItemObject>(exception.Item()));
}

constexpr Row kExceptionRows[] = {
    {L"AppointmentItem", Get<AppointmentItem>},
    {L"Deleted", Get<Deleted>},
    {L"ItemProperties", Get<ItemProperties>},
    {L"OriginalDate", Get<OriginalDate>},
};

constexpr Kind kExceptionKind{L"Exception", 0x0006304D, 30, kExceptionRows};
const Kind kExceptionsKind{L"Exceptions", 0x0006304C, 29, {}, kCollectionRows};

ExceptionObject::ExceptionObject(ComPtr<RecurrencePatternObject> pattern, Change change)
    : Object(kExceptionKind), m_pattern(std::move(pattern)), m_change(change) {
}

/// Of a deleted occurrence nothing is left to be had.
ComPtr<OccurrenceObject> ExceptionObject::Item() const {
    if (m_change.isDeleted)
        throw NoSuchOccurrence();
    m_pattern->Series();
    return OccurrenceFrom(m_pattern->Item(), m_change.original);
}

Date ExceptionObject::OriginalDate() const {
    return LocalDate(TimeOf(ZoneOfSeries(m_pattern->Item().Message()), m_change.original));
}

} // namespace

ExceptionsObject::ExceptionsObject(ComPtr<RecurrencePatternObject> pattern)
    : Collection(kExceptionsKind), m_pattern(std::move(pattern)) {
}

std::int32_t ExceptionsObject::Count() {
    return static_cast<std::int32_t>(ChangesOf(m_pattern->Series()).size());
}

_variant_t ExceptionsObject::At(std::int32_t place) {
    const Change change = ChangesOf(m_pattern->Series())[static_cast<std::size_t>(place - 1)];
    return Result(Make<ExceptionObject>(m_pattern, change));
}

} // namespace standin::outlook::calendar
