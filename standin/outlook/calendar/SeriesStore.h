// Where messages of appointments and tasks keep their recurrence.
#pragma once

#include "standin/outlook/calendar/TimeZones.h"
#include "standin/outlook/recurrence/Series.h"

namespace standin::outlook::calendar {

/// Whether the message is a series, of appointments or of tasks.
bool IsSeries(const mailbox::MessageProperties& message);
bool IsTask(const mailbox::MessageProperties& message);

/// The bytes that the series is kept in; empty for none.
mailbox::Bytes ReadSeriesBytes(const mailbox::MessageProperties& message);
/// Nothing for a message that is no series. Raises E_FAIL for bytes that are none.
std::optional<recurrence::Series> ReadSeries(const mailbox::MessageProperties& message);

/// Makes a series of the message: the pattern and what is kept beside it ([MS-OXOCAL] 2.2.1.44 to 2.2.1.46,
/// [MS-OXOTASK] 2.2.2.2.15). An appointment is at the time of its first occurrence then.
void WriteSeries(mailbox::OpenMessage& message, const recurrence::Series& series);
/// The series becomes the single appointment or task that it began with.
void ClearSeries(mailbox::OpenMessage& message);

/// What becomes of an appointment or task by itself when it is to recur: weekly, from its own day on, without
/// end.
recurrence::Series SeriesOf(const mailbox::MessageProperties& message);

/// The series follows its appointment, which was moved. Its exceptions are lost.
void MoveSeries(mailbox::OpenMessage& message);
/// Before a save: the series begins on the day of its first occurrence ([MS-OXOCAL] 2.2.1.44.1, StartDate).
void SettleSeries(mailbox::OpenMessage& message);

/// Minutes of a series, in the series' own zone, and times.
recurrence::Minute MinuteOf(const Zone& zone, mailbox::SysTime time);
mailbox::SysTime TimeOf(const Zone& zone, recurrence::Minute minute);
/// The same for dates without a zone.
recurrence::Minute MinuteOfDate(Date date);
Date DateOfMinute(recurrence::Minute minute);

} // namespace standin::outlook::calendar
