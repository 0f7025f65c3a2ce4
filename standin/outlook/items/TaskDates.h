// Start and due date of tasks, and of other items that are marked as tasks.
#pragma once

#include "standin/outlook/items/Conversions.h"

namespace standin::outlook {

/// Days, without time; kNoDate for none. A task that starts some day is due some day, and not before.
struct TaskSpan {
    Date start = kNoDate;
    Date due = kNoDate;
    bool operator==(const TaskSpan&) const = default;
};

/// What becomes of the span when one end is moved: a later start takes the due date along, an earlier due
/// date the start, and without a due date there is no start.
TaskSpan WithStart(TaskSpan span, Date start);
TaskSpan WithDue(TaskSpan span, Date due);

/// In messages both are midnight of the local day as if it were UTC ([MS-OXOTASK] 2.2.2.2.4, 2.2.2.2.5), and
/// stand once more in UTC proper as PidLidCommonStart and PidLidCommonEnd.
TaskSpan ReadTaskSpan(const mailbox::MessageProperties& message);
void WriteTaskSpan(mailbox::OpenMessage& message, const TaskSpan& span);

/// The properties by themselves.
extern const StoredProperty kTaskStartDate, kTaskDueDate, kTaskDateCompleted;
/// Their conversions: writing one moves the other as the span demands.
extern const Conversion kTaskStart, kTaskDue;

/// Today, without time.
Date Today();
Date WholeDay(Date date);

} // namespace standin::outlook
