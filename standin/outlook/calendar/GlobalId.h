// The ids by which meetings are known in every mailbox.
#pragma once

#include "standin/mailbox/Message.h"

namespace standin::outlook::calendar {

/// A new PidLidGlobalObjectId ([MS-OXOCAL] 2.2.1.27): the time now and a GUID, for no day in particular.
mailbox::Bytes NewGlobalId();
/// The id of a single occurrence of the meeting: on the day, in the series' zone, when it would take place.
mailbox::Bytes GlobalIdOn(mailbox::Bytes id, const SYSTEMTIME& day);
/// PidLidCleanGlobalObjectId: without the day.
mailbox::Bytes CleanGlobalId(mailbox::Bytes id);

/// Gives the message both ids, if it has none.
void EnsureGlobalId(mailbox::OpenMessage& message);
/// The id of the meeting that a message is about, without a day; empty for none.
mailbox::Bytes MeetingOf(const mailbox::MessageProperties& message);

} // namespace standin::outlook::calendar
