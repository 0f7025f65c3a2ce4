// The properties of appointments and meetings that more than one source needs ([MS-OXOCAL] 2.2).
#pragma once

#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/PropertySets.h"

namespace standin::outlook::calendar {

namespace detail {

constexpr StoredProperty Of(const GUID& set, mailbox::PropertyType type, std::uint32_t number) {
    return {.tag = type, .set = &set, .number = number};
}
constexpr StoredProperty Appointment(mailbox::PropertyType type, std::uint32_t number) {
    return Of(kPsAppointment, type, number);
}
constexpr StoredProperty Common(mailbox::PropertyType type, std::uint32_t number) {
    return Of(kPsCommon, type, number);
}
constexpr StoredProperty Meeting(mailbox::PropertyType type, std::uint32_t number) {
    return Of(kPsMeeting, type, number);
}

} // namespace detail

// When it is.
inline constexpr StoredProperty kStartWhole = detail::Appointment(PT_SYSTIME, 0x820D);
inline constexpr StoredProperty kEndWhole = detail::Appointment(PT_SYSTIME, 0x820E);
inline constexpr StoredProperty kDuration = detail::Appointment(PT_LONG, 0x8213);
inline constexpr StoredProperty kAllDay = detail::Appointment(PT_BOOLEAN, 0x8215);
inline constexpr StoredProperty kClipStart = detail::Appointment(PT_SYSTIME, 0x8235);
inline constexpr StoredProperty kClipEnd = detail::Appointment(PT_SYSTIME, 0x8236);
inline constexpr StoredProperty kCommonStart = detail::Common(PT_SYSTIME, 0x8516);
inline constexpr StoredProperty kCommonEnd = detail::Common(PT_SYSTIME, 0x8517);
inline constexpr StoredProperty kZoneStruct = detail::Appointment(PT_BINARY, 0x8233);
inline constexpr StoredProperty kZoneDescription = detail::Appointment(PT_UNICODE, 0x8234);
inline constexpr StoredProperty kZoneOfStart = detail::Appointment(PT_BINARY, 0x825E);
inline constexpr StoredProperty kZoneOfEnd = detail::Appointment(PT_BINARY, 0x825F);
inline constexpr StoredProperty kZoneOfSeries = detail::Appointment(PT_BINARY, 0x8260);

// What it is like.
inline constexpr StoredProperty kBusyStatus = detail::Appointment(PT_LONG, 0x8205);
inline constexpr StoredProperty kIntendedBusyStatus = detail::Appointment(PT_LONG, 0x8224);
inline constexpr StoredProperty kLocation = detail::Appointment(PT_UNICODE, 0x8208);
inline constexpr StoredProperty kColor = detail::Appointment(PT_LONG, 0x8214);
inline constexpr StoredProperty kReminderMinutes = detail::Common(PT_LONG, 0x8501);
inline constexpr StoredProperty kReminderTime = detail::Common(PT_SYSTIME, 0x8502);
inline constexpr StoredProperty kReminderSet = detail::Common(PT_BOOLEAN, 0x8503);
inline constexpr StoredProperty kReminderSignal = detail::Common(PT_SYSTIME, 0x8560);
inline constexpr StoredProperty kSideEffects = detail::Common(PT_LONG, 0x8510);

// Recurrence.
inline constexpr StoredProperty kRecurrence = detail::Appointment(PT_BINARY, 0x8216);
inline constexpr StoredProperty kIsRecurring = detail::Appointment(PT_BOOLEAN, 0x8223);
inline constexpr StoredProperty kRecurrenceType = detail::Appointment(PT_LONG, 0x8231);
inline constexpr StoredProperty kRecurrenceText = detail::Appointment(PT_UNICODE, 0x8232);
inline constexpr StoredProperty kReplacedTime = detail::Appointment(PT_SYSTIME, 0x8228);
inline constexpr StoredProperty kMeetingIsRecurring = detail::Meeting(PT_BOOLEAN, 0x0005);
inline constexpr StoredProperty kMeetingIsException = detail::Meeting(PT_BOOLEAN, 0x000A);

// Meetings.
inline constexpr StoredProperty kStateFlags = detail::Appointment(PT_LONG, 0x8217);
inline constexpr StoredProperty kResponseStatus = detail::Appointment(PT_LONG, 0x8218);
inline constexpr StoredProperty kReplyTime = detail::Appointment(PT_SYSTIME, 0x8220);
inline constexpr StoredProperty kReplyName = detail::Appointment(PT_UNICODE, 0x8230);
inline constexpr StoredProperty kIsInvited = detail::Appointment(PT_BOOLEAN, 0x8229);
inline constexpr StoredProperty kSequence = detail::Appointment(PT_LONG, 0x8201);
inline constexpr StoredProperty kSequenceTime = detail::Appointment(PT_SYSTIME, 0x8202);
inline constexpr StoredProperty kAllAttendees = detail::Appointment(PT_UNICODE, 0x8238);
inline constexpr StoredProperty kToAttendees = detail::Appointment(PT_UNICODE, 0x823B);
inline constexpr StoredProperty kCcAttendees = detail::Appointment(PT_UNICODE, 0x823C);
inline constexpr StoredProperty kGlobalId = detail::Meeting(PT_BINARY, 0x0003);
inline constexpr StoredProperty kCleanGlobalId = detail::Meeting(PT_BINARY, 0x0023);
inline constexpr StoredProperty kAttendeeChange = detail::Meeting(PT_SYSTIME, 0x0001);
inline constexpr StoredProperty kWhere = detail::Meeting(PT_UNICODE, 0x0002);
inline constexpr StoredProperty kOwnerChange = detail::Meeting(PT_SYSTIME, 0x001A);
inline constexpr StoredProperty kMeetingType = detail::Meeting(PT_LONG, 0x0026);

/// Bits of kStateFlags ([MS-OXOCAL] 2.2.1.10); the values of OlMeetingStatus are made of them.
inline constexpr std::int32_t kIsMeeting = 1, kIsReceived = 2, kIsCanceled = 4;

/// The class of the message in which an exception of a series is kept ([MS-OXOCAL] 2.2.10.2.1).
inline constexpr const wchar_t* kExceptionClass = L"IPM.OLE.CLASS.{00061055-0000-0000-C000-000000000046}";

} // namespace standin::outlook::calendar
