// Start and due date of tasks.
#include "standin/outlook/items/TaskDates.h"

#include "standin/mailbox/Platform.h"
#include "standin/outlook/items/PropertySets.h"

#include <algorithm>
#include <cmath>

namespace standin::outlook {
namespace {

constexpr StoredProperty kCommonStart{.tag = PT_SYSTIME, .set = &kPsCommon, .number = 0x8516};
constexpr StoredProperty kCommonEnd{.tag = PT_SYSTIME, .set = &kPsCommon, .number = 0x8517};

Date ReadDay(const mailbox::MessageProperties& message, const StoredProperty& stored) {
    const auto time = ReadAs<mailbox::SysTime>(message, stored);
    return time ? UtcDate(*time) : kNoDate;
}

void WriteDay(mailbox::OpenMessage& message, const StoredProperty& asStored, const StoredProperty& common,
              Date day) {
    if (day == kNoDate) {
        RemoveValue(message, asStored);
        return RemoveValue(message, common);
    }
    WriteValue(message, asStored, TimeOfUtc(day));
    WriteValue(message, common, TimeOfLocal(day));
}

template <TaskSpan (*with)(TaskSpan, Date)>
void WriteEnd(mailbox::OpenMessage& message, const StoredProperty&, const Call& call) {
    WriteTaskSpan(message, with(ReadTaskSpan(message), GivenDate(call.arguments)));
}

_variant_t ReadAnyDay(const mailbox::MessageProperties& message, const StoredProperty& stored) {
    return Result(ReadDay(message, stored));
}

} // namespace

constinit const StoredProperty kTaskStartDate{.tag = PT_SYSTIME, .set = &kPsTask, .number = 0x8104};
constinit const StoredProperty kTaskDueDate{.tag = PT_SYSTIME, .set = &kPsTask, .number = 0x8105};
constinit const StoredProperty kTaskDateCompleted{.tag = PT_SYSTIME, .set = &kPsTask, .number = 0x810F};
constinit const Conversion kTaskStart{ReadAnyDay, WriteEnd<WithStart>};
constinit const Conversion kTaskDue{ReadAnyDay, WriteEnd<WithDue>};

Date WholeDay(Date date) {
    return {std::floor(date.days)};
}

Date Today() {
    return WholeDay(LocalDate(mailbox::Now()));
}

TaskSpan WithStart(TaskSpan span, Date start) {
    start = WholeDay(start);
    if (start != kNoDate && span.due == kNoDate)
        span.due = start;
    else if (start != kNoDate && span.start != kNoDate)
        span.due.days += start.days - span.start.days;
    span.start = start;
    if (start != kNoDate)
        span.due.days = std::max(span.due.days, start.days);
    return span;
}

TaskSpan WithDue(TaskSpan span, Date due) {
    due = WholeDay(due);
    if (due == kNoDate)
        return {};
    span.due = due;
    if (span.start != kNoDate)
        span.start.days = std::min(span.start.days, due.days);
    return span;
}

TaskSpan ReadTaskSpan(const mailbox::MessageProperties& message) {
    return {ReadDay(message, kTaskStartDate), ReadDay(message, kTaskDueDate)};
}

void WriteTaskSpan(mailbox::OpenMessage& message, const TaskSpan& span) {
    WriteDay(message, kTaskStartDate, kCommonStart, span.start);
    WriteDay(message, kTaskDueDate, kCommonEnd, span.due);
}

} // namespace standin::outlook
