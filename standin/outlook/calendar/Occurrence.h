// Single occurrences of a series, as items of their own.
#pragma once

#include "standin/outlook/items/Item.h"
#include "standin/outlook/recurrence/Series.h"

namespace standin::outlook::calendar {

/// An occurrence. Saved with changes it becomes an exception of its series, deleted it is taken out; both
/// save the series too. It has no entry id but the series'.
class OccurrenceObject final : public ItemObject {
public:
    OccurrenceObject(ComPtr<ItemObject> series, std::shared_ptr<mailbox::OpenMessage> message,
                     recurrence::Minute original);

    ItemObject& SeriesItem() const { return *m_series; }
    /// Whether it differs from the others, in what is saved.
    bool IsException() const;

    ComPtr<Object> Parent() override { return m_series; }
    std::wstring EntryId() const override { return m_series->EntryId(); }
    void Delete() override;

private:
    ComPtr<ItemObject> m_series;
    recurrence::Minute m_original; // when it would begin
};

/// The occurrence, or exception, that begins at this minute. Raises MAPI_E_NOT_FOUND for a time at which none
/// does.
ComPtr<OccurrenceObject> OccurrenceAt(ItemObject& series, recurrence::Minute start);
/// The one that would begin then, if it weren't moved.
ComPtr<OccurrenceObject> OccurrenceFrom(ItemObject& series, recurrence::Minute original);

/// What Outlook raises for an occurrence that isn't there.
Failure NoSuchOccurrence();

} // namespace standin::outlook::calendar
