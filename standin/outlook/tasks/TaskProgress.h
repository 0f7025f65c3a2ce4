// How far a task is: status, percents, completion and its day, kept together; and the next task of a series.
#pragma once

#include "standin/mailbox/Message.h"
#include "standin/outlook/automation/Variants.h"

namespace standin::outlook::tasks {

/// Done, on a day. The reminder is turned off.
void SetDone(mailbox::OpenMessage& task, Date day);
void SetDoneToday(mailbox::OpenMessage& task);
/// Not done any longer, or not yet.
void SetUndone(mailbox::OpenMessage& task, std::int32_t status, double percent);

// What follows from writing one of them.
void FollowStatus(mailbox::OpenMessage& task);
void FollowPercent(mailbox::OpenMessage& task);
void FollowComplete(mailbox::OpenMessage& task);
void FollowDateCompleted(mailbox::OpenMessage& task);

/// A task of a series moves on to its next day, not done. False, and nothing changes, if there is none.
bool MoveOn(mailbox::OpenMessage& task);
/// A task of a series that is done stays behind as a task of its own, and the series moves on; with its last
/// task the series ends. For before a save.
void LeaveDoneBehind(mailbox::OpenMessage& task);

} // namespace standin::outlook::tasks
