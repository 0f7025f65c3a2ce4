// The properties that meeting messages carry, copied and made by tables.
#pragma once

#include "Ownership.h"

namespace varden::mapi {

/// Gives an appointment the properties that a meeting message must carry. What can't be written is told to
/// the log.
void PrepareMeetingProperties(IMessage& message);

enum class SendKind { FirstRequest, Update };

/// What a first request must not take over from the appointment, or what an update must not.
Block<SPropTagArray> ExcludedFromRequest(SendKind kind, IMessage& appointment);

/// Marks an accepted meeting's copy as the calendar's own entry, linked to the organizer's meeting.
void StampCalendarEntry(IMessage& meeting, IMessage& entry);

/// Gives a response what links it to the meeting: 18 named properties, and the six of a recurrence where
/// there is one.
void CopyResponseNames(IMessage& entry, IMessage& response);

} // namespace varden::mapi
