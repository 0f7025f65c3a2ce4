// Meetings: asking people to them, answering, and what each side's calendar learns of the other.
#pragma once

#include "standin/outlook/items/Item.h"

namespace standin::outlook::calendar {

/// The names of those who are asked, in the properties of their own that they stand in ([MS-OXOCAL] 2.2.1.16
/// to 2.2.1.18).
void WriteAttendeeTexts(mailbox::OpenMessage& message);

/// Send of an appointment: saves it, and sends its request, update or, of a cancelled one, its cancellation.
/// Raises MAPI_E_NO_SUPPORT for what is no meeting of the user's, MAPI_E_NO_RECIPIENTS, and E_FAIL for names
/// that nobody knows.
void SendMeeting(ItemObject& item);

/// Respond: notes the answer in the appointment, saves it and gives the response, unsent. Raises E_INVALIDARG
/// for no answer, MAPI_E_NO_SUPPORT for an appointment that nobody asked the user to, and E_NOTIMPL where the
/// user is to be asked.
ComPtr<ItemObject> Respond(ItemObject& item, const Arguments& arguments);

/// GetAssociatedAppointment. What a request asks to: the appointment in the calendar, brought up to date, or
/// a new one, saved there with `addToCalendar`. What was answered or cancelled: the appointment, which learns
/// of it; null if there is none.
ComPtr<ItemObject> AssociatedAppointment(ItemObject& item, bool addToCalendar);

/// Whether the calendar knows of nothing later about the meeting.
bool IsLatestVersion(ItemObject& item);

} // namespace standin::outlook::calendar
