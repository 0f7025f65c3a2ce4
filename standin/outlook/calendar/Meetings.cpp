// The organizer's side of meetings: requests, updates and cancellations.
#include "standin/outlook/calendar/Meetings.h"

#include "standin/mailbox/Platform.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Store.h"
#include "standin/mailbox/Tags.h"
#include "standin/outlook/calendar/AppointmentTimes.h"
#include "standin/outlook/calendar/CalendarProperties.h"
#include "standin/outlook/calendar/MeetingMessages.h"
#include "standin/outlook/items/People.h"
#include "standin/outlook/items/Sending.h"
#include "standin/outlook/objects/Recipients.h"

#include <algorithm>

namespace standin::outlook::calendar {
namespace {

using mailbox::OpenMessage;

std::int32_t NumberOf(const mailbox::MessageProperties& message, const StoredProperty& stored) {
    return ReadAs<std::int32_t>(message, stored).value_or(0);
}

void CheckSendable(const ItemObject& item) {
    const std::int32_t state = NumberOf(item.Message(), kStateFlags);
    if (!(state & kIsMeeting) || state & kIsReceived)
        throw Failure(MAPI_E_NO_SUPPORT, L"The appointment is not a meeting of yours.");
    if (item.Message().Recipients().empty())
        throw NoRecipients();
    if (!ResolveAll(RecipientsOf(item.Shared())))
        throw Failure(E_FAIL, L"Outlook does not recognize one or more names.");
}

/// A number that no other appointment in the folder has (PidTagOwnerAppointmentId, [MS-OXOCAL] 2.2.1.29).
std::int32_t NextOwnerId(const mailbox::Folder& folder) {
    std::int32_t highest = 0;
    for (const mailbox::Message* each : folder.Messages())
        highest = std::max(highest, each->Get<PR_OWNER_APPT_ID>().value_or(0));
    return highest + 1;
}

/// Each update of what has gone out before has the next number.
void CountUp(OpenMessage& appointment) {
    const bool isUpdate = ReadAs<bool>(appointment, kIsInvited).value_or(false);
    WriteValue(appointment, kSequence, NumberOf(appointment, kSequence) + (isUpdate ? 1 : 0));
    WriteValue(appointment, kSequenceTime, mailbox::Now());
    WriteValue(appointment, kOwnerChange, mailbox::Now());
    WriteValue(appointment, kIsInvited, true);
    if (appointment.Get<PR_OWNER_APPT_ID>().value_or(0) < 1)
        Check(appointment.Write(PR_OWNER_APPT_ID, NextOwnerId(OwnFolder(mailbox::kCalendar))));
}

/// What distinguishes the message from the appointment that it tells of.
void MakeRequest(OpenMessage& message, bool isUpdate) {
    constexpr std::int32_t kNotResponded = 5, kTentative = 1;
    constexpr std::int32_t kFirstRequest = 1, kFullUpdate = 0x00010000; // [MS-OXOCAL] 2.2.6.5
    constexpr std::int32_t kRequestIcon = 1028, kCancellationIcon = 1032;
    const std::int32_t state = NumberOf(message, kStateFlags);
    const bool isCanceled = state & kIsCanceled;
    Check(message.Write(PR_MESSAGE_CLASS_W, std::wstring(isCanceled ? kCancellation : kRequest)));
    Check(message.Write(mailbox::kPrIconIndex, isCanceled ? kCancellationIcon : kRequestIcon));
    WriteValue(message, kStateFlags, state | kIsReceived);
    WriteValue(message, kResponseStatus, kNotResponded);
    WriteValue(message, kIntendedBusyStatus, NumberOf(message, kBusyStatus));
    WriteValue(message, kBusyStatus, kTentative);
    WriteValue(message, kMeetingType, isUpdate ? kFullUpdate : kFirstRequest);
    WriteValue(message, kWhere, ReadAs<std::wstring>(message, kLocation).value_or(L""));
    WriteValue(message, kIsInvited, false);
    if (isCanceled)
        WritePrefixed(message, L"Canceled:", message.Get<PR_NORMALIZED_SUBJECT_W>().value_or(L""));
}

std::wstring Joined(const std::wstring& left, const std::wstring& right) {
    return left.empty() || right.empty() ? left + right : left + L"; " + right;
}

} // namespace

void WriteAttendeeTexts(OpenMessage& message) {
    const std::wstring required = RecipientText(message, MAPI_TO), optional = RecipientText(message, MAPI_CC);
    if (message.Recipients().empty() && !ReadValue(message, kAllAttendees))
        return;
    WriteValue(message, kToAttendees, required);
    WriteValue(message, kCcAttendees, optional);
    WriteValue(message, kAllAttendees, Joined(Joined(required, optional), RecipientText(message, MAPI_BCC)));
}

void SendMeeting(ItemObject& item) {
    CheckSendable(item);
    OpenMessage& appointment = item.Message();
    const bool isUpdate = ReadAs<bool>(appointment, kIsInvited).value_or(false);
    CountUp(appointment);
    item.Save();
    mailbox::Folder& outbox = OwnFolder(mailbox::kOutbox);
    mailbox::Content content =
        mailbox::RemapContent(appointment.Current(), appointment.Names(), outbox.Names());
    constexpr std::int32_t kFresh = MSGFLAG_UNSENT | MSGFLAG_READ;
    content.properties.Set<PR_MESSAGE_FLAGS>(kFresh);
    std::shared_ptr<OpenMessage> message;
    Check(outbox.CreateMessage(std::move(content), message));
    MakeRequest(*message, isUpdate);
    SubmitMessage(*message);
}

} // namespace standin::outlook::calendar
