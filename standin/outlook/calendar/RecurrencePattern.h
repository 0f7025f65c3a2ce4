// The recurrence pattern of an appointment or a task, and its exceptions, as automation objects.
#pragma once

#include "standin/outlook/automation/Collection.h"
#include "standin/outlook/items/Item.h"
#include "standin/outlook/recurrence/Series.h"

namespace standin::outlook::calendar {

/// RecurrencePattern. It is the item's: what it changes is in the item at once, and saved with it.
class RecurrencePatternObject final : public Object {
public:
    explicit RecurrencePatternObject(ComPtr<ItemObject> item);

    ComPtr<Object> Parent() override { return m_item; }
    ItemObject& Item() const { return *m_item; }
    bool IsOfTask() const;

    /// As the item has it by now. Raises E_FAIL once the item is no series any longer.
    const recurrence::Series& Series();
    /// Another pattern. The exceptions of the old one are lost.
    void Change(recurrence::Series series);

private:
    ComPtr<ItemObject> m_item;
    recurrence::Series m_series;
    mailbox::Bytes m_bytes; // what m_series looks like in the item
};

/// Exceptions: the occurrences that were changed or deleted, by their original days. Live.
class ExceptionsObject final : public Collection {
public:
    explicit ExceptionsObject(ComPtr<RecurrencePatternObject> pattern);

    ComPtr<Object> Parent() override { return m_pattern; }
    std::int32_t Count() override;
    _variant_t At(std::int32_t place) override;

private:
    ComPtr<RecurrencePatternObject> m_pattern;
};

/// GetRecurrencePattern: an item that is no series becomes one; an occurrence has the pattern of its series.
ComPtr<RecurrencePatternObject> GetRecurrencePattern(ItemObject& item);
/// Raises MAPI_E_NO_SUPPORT for a single occurrence.
void ClearRecurrencePattern(ItemObject& item);
/// OlRecurrenceState.
std::int32_t RecurrenceState(ItemObject& item);
/// True of occurrences too.
bool IsRecurring(ItemObject& item);

} // namespace standin::outlook::calendar
