// Start, end and length of appointments: one span in many properties, kept together.
#pragma once

#include "standin/mailbox/Message.h"
#include "standin/outlook/items/Conversions.h"

namespace standin::outlook::calendar {

/// In UTC.
struct Span {
    mailbox::SysTime start, end;
    bool operator==(const Span&) const = default;
};

std::int32_t MinutesOf(const Span& span);
mailbox::SysTime AddMinutes(mailbox::SysTime time, std::int64_t minutes);

/// Nothing for a message without a start or an end.
std::optional<Span> ReadSpan(const mailbox::MessageProperties& message);
/// Writes all that says when the appointment is ([MS-OXOCAL] 2.2.1.5 to 2.2.1.7, 2.2.1.30, 2.2.1.31), and
/// when its reminder comes up. What a series is clipped to stays.
void WriteSpan(mailbox::OpenMessage& message, const Span& span);

/// The reminder comes up its minutes before the start ([MS-OXORMDR] 2.2.1.2).
void FollowReminder(mailbox::OpenMessage& message);
/// Makes whole local days of the span if the appointment takes all day.
void FollowAllDay(mailbox::OpenMessage& message);

/// Conversions of the members, with all that follows from writing them: a start takes the end along, an end
/// before the start takes the start along, a length moves the end. Of a series that moves the pattern.
extern const Conversion kLocalStart, kLocalEnd, kUtcStart, kUtcEnd, kZoneStart, kZoneEnd, kLength;

/// What a new appointment has: half an hour from the next half hour on.
Span NextHalfHour();

} // namespace standin::outlook::calendar
