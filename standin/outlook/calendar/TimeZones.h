// The time zones that appointments carry with them ([MS-OXOCAL] 2.2.1.39 to 2.2.1.43).
#pragma once

#include "standin/mailbox/Message.h"
#include "standin/outlook/items/Conversions.h"

namespace standin::outlook::calendar {

using Zone = TIME_ZONE_INFORMATION;

/// The zone of this computer.
const Zone& LocalZone();

/// Wall clock time in a zone, as an automation date, and back. A year that the system can't shift stays as it
/// is.
Date DateIn(const Zone& zone, mailbox::SysTime time);
mailbox::SysTime TimeIn(const Zone& zone, Date date);

/// PidLidTimeZoneStruct, 48 bytes; nothing for bytes that are none.
mailbox::Bytes WriteZoneStruct(const Zone& zone);
std::optional<Zone> ReadZoneStruct(std::span<const std::uint8_t> bytes);

/// PidLidAppointmentTimeZoneDefinition..., with one rule. Read: the rule that is marked as the effective one,
/// or the last; nothing for bytes that are none.
enum class ZoneUse { Display, Series };
mailbox::Bytes WriteZoneDefinition(const Zone& zone, ZoneUse use);
std::optional<Zone> ReadZoneDefinition(std::span<const std::uint8_t> bytes);

/// The zone in which a message's series counts its days: as its definition says, or its struct; the local one
/// without either.
Zone ZoneOfSeries(const mailbox::MessageProperties& message);

} // namespace standin::outlook::calendar
