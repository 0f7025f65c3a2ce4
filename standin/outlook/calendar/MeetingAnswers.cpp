// The attendee's side of meetings, and what each side's calendar learns from the messages of the other.
#include "standin/mailbox/Folder.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Tags.h"
#include "standin/outlook/calendar/AppointmentTimes.h"
#include "standin/outlook/calendar/CalendarProperties.h"
#include "standin/outlook/calendar/MeetingMessages.h"
#include "standin/outlook/calendar/Meetings.h"
#include "standin/outlook/items/People.h"
#include "standin/outlook/items/Sending.h"
#include "standin/outlook/session/Session.h"

#include <algorithm>

namespace standin::outlook::calendar {
namespace {

using mailbox::Content;
using mailbox::MessageProperties;
using mailbox::OpenMessage;
using mailbox::PropertyTag;
using mailbox::SysTime;

constexpr std::int32_t kFree = 0, kTentative = 1, kBusy = 2;             // OlBusyStatus
constexpr std::int32_t kNotResponded = 5;                                // OlResponseStatus
constexpr PropertyTag kPrTrackStatusTime = PROP_TAG(PT_SYSTIME, 0x5FFB); // [MS-OXPROPS] 2.915

std::int32_t StateOf(const MessageProperties& message) {
    return ReadAs<std::int32_t>(message, kStateFlags).value_or(0);
}

bool IsReceived(const MessageProperties& message) {
    return StateOf(message) & kIsReceived;
}

/// What an answer tells of the meeting, so that the organizer's side knows which one it is about.
constexpr const StoredProperty* kToldInAnswers[] = {
    &kStartWhole,        &kEndWhole,   &kCommonStart,    &kCommonEnd,          &kDuration,     &kAllDay,
    &kLocation,          &kGlobalId,   &kCleanGlobalId,  &kSequence,           &kOwnerChange,  &kIsRecurring,
    &kRecurrence,        &kZoneStruct, &kRecurrenceText, &kMeetingIsRecurring, &kReplacedTime, &kZoneOfSeries,
    &kMeetingIsException};
constexpr PropertyTag kTagsToldInAnswers[] = {PR_START_DATE, PR_END_DATE, PR_OWNER_APPT_ID, PR_SENSITIVITY};

void CopyToAnswer(const OpenMessage& appointment, OpenMessage& answer) {
    for (const StoredProperty* stored : kToldInAnswers)
        if (auto value = ReadValue(appointment, *stored))
            WriteValue(answer, *stored, std::move(*value));
    for (const PropertyTag tag : kTagsToldInAnswers)
        if (mailbox::Value value; SUCCEEDED(appointment.Read(tag, value)))
            Check(answer.Write(tag, std::move(value)));
    WriteValue(answer, kWhere, ReadAs<std::wstring>(appointment, kLocation).value_or(L""));
}

/// A meeting that is accepted takes the time that its organizer wants it to.
std::int32_t BusyAfter(const OpenMessage& appointment, const ResponseKind& response) {
    constexpr std::int32_t kAccepted = 3, kDeclined = 4;
    if (response.number == kAccepted)
        return ReadAs<std::int32_t>(appointment, kIntendedBusyStatus).value_or(kBusy);
    return response.number == kDeclined ? kFree : kTentative;
}

void NoteAnswer(ItemObject& item, const ResponseKind& response) {
    OpenMessage& appointment = item.Message();
    WriteValue(appointment, kBusyStatus, BusyAfter(appointment, response));
    WriteValue(appointment, kResponseStatus, response.number);
    WriteValue(appointment, kReplyTime, mailbox::Now());
    if (const auto user = CurrentUser())
        WriteValue(appointment, kReplyName, user->Name());
    item.Save();
}

ComPtr<ItemObject> MakeAnswer(const OpenMessage& appointment, const ResponseKind& response) {
    ComPtr<ItemObject> item = NewItem(OwnFolder(mailbox::kDrafts), response.messageClass);
    OpenMessage& answer = item->Message();
    CopyToAnswer(appointment, answer);
    WriteValue(answer, kAttendeeChange, mailbox::Now());
    WriteValue(answer, kResponseStatus, response.number);
    Check(answer.Write(mailbox::kPrIconIndex, response.icon));
    WritePrefixed(answer, response.prefix, appointment.Get<PR_NORMALIZED_SUBJECT_W>().value_or(L""));
    if (const auto organizer = ReadPerson(appointment, kSentRepresentingTags))
        Check(answer.AddRecipient(organizer->RecipientProperties()));
    return item;
}

/// What a request has as a message, and an appointment hasn't.
constexpr PropertyTag kOfMessagesOnly[] = {PR_RECEIVED_BY_NAME_W,
                                           PR_RECEIVED_BY_ADDRTYPE_W,
                                           PR_RECEIVED_BY_EMAIL_ADDRESS_W,
                                           PR_RECEIVED_BY_ENTRYID,
                                           PR_RECEIVED_BY_SEARCH_KEY,
                                           PR_RCVD_REPRESENTING_NAME_W,
                                           PR_RCVD_REPRESENTING_ENTRYID,
                                           PR_RCVD_REPRESENTING_ADDRTYPE_W,
                                           PR_RCVD_REPRESENTING_EMAIL_ADDRESS_W,
                                           PR_RCVD_REPRESENTING_SEARCH_KEY,
                                           PR_TRANSPORT_MESSAGE_HEADERS_W,
                                           PR_MESSAGE_TO_ME,
                                           PR_MESSAGE_CC_ME,
                                           PR_MESSAGE_RECIP_ME,
                                           PR_MESSAGE_DELIVERY_TIME,
                                           PR_CLIENT_SUBMIT_TIME,
                                           PR_SUBJECT_PREFIX_W,
                                           mailbox::kPrInternetMessageId,
                                           mailbox::kPrReceivedBySmtpAddress,
                                           mailbox::kPrReceivedRepresentingSmtpAddress,
                                           PR_SEARCH_KEY,
                                           PR_CREATION_TIME,
                                           PR_LAST_MODIFICATION_TIME};

Content ContentFor(const OpenMessage& request, mailbox::NamedProperties& names) {
    constexpr std::int32_t kFresh = MSGFLAG_UNSENT | MSGFLAG_READ;
    Content content = mailbox::RemapContent(request.Current(), request.Names(), names);
    for (const PropertyTag tag : kOfMessagesOnly)
        content.properties.Remove(tag);
    content.properties.Set<PR_MESSAGE_CLASS_W>(kAppointmentItem.messageClass);
    content.properties.Set<PR_SUBJECT_W>(request.Get<PR_NORMALIZED_SUBJECT_W>().value_or(L""));
    content.properties.Set<PR_MESSAGE_FLAGS>(kFresh);
    return content;
}

/// In the appointment of whoever is asked the organizer is the first of the recipients
/// ([MS-OXOCAL] 2.2.4.10.1).
void PutOrganizerFirst(OpenMessage& appointment) {
    constexpr std::int32_t kSendable = 1, kIsOrganizer = 2;
    const auto organizer = ReadPerson(appointment, kSentRepresentingTags);
    const bool isThere = std::ranges::any_of(appointment.Recipients(), [](const mailbox::PropertyBag& row) {
        return row.GetOr<mailbox::kPrRecipientFlags>(0) & kIsOrganizer;
    });
    if (!organizer || isThere)
        return;
    mailbox::PropertyBag row = organizer->RecipientProperties();
    row.Set<PR_RECIPIENT_TYPE>(MAPI_TO);
    row.Set<mailbox::kPrRecipientFlags>(kSendable | kIsOrganizer);
    Check(appointment.AddRecipient(std::move(row)));
    Content* content = nullptr;
    Check(appointment.EditContent(content));
    auto& rows = content->recipients;
    std::rotate(rows.begin(), rows.end() - 1, rows.end());
}

/// Whoever is asked has not answered yet, and counts as perhaps there.
void MarkAsAsked(OpenMessage& appointment) {
    PutOrganizerFirst(appointment);
    WriteValue(appointment, kStateFlags, kIsMeeting | kIsReceived);
    WriteValue(appointment, kResponseStatus, kNotResponded);
    if (!ReadValue(appointment, kIntendedBusyStatus))
        WriteValue(appointment, kIntendedBusyStatus,
                   ReadAs<std::int32_t>(appointment, kBusyStatus).value_or(kBusy));
    WriteValue(appointment, kBusyStatus, kTentative);
    if (!ReadSpan(appointment)) {
        const auto start = appointment.Get<PR_START_DATE>(), end = appointment.Get<PR_END_DATE>();
        if (start && end)
            WriteSpan(appointment, {*start, *end});
    }
    FollowReminder(appointment);
}

bool IsLater(const MessageProperties& message, const MessageProperties& than) {
    const auto order = [](const MessageProperties& each) {
        return std::pair(ReadAs<std::int32_t>(each, kSequence).value_or(0),
                         ReadAs<SysTime>(each, kOwnerChange).value_or(SysTime()));
    };
    return order(message) > order(than);
}

ComPtr<ItemObject> TakeRequest(const OpenMessage& request, const std::shared_ptr<mailbox::Message>& known,
                               bool addToCalendar) {
    mailbox::Folder& calendar = OwnFolder(mailbox::kCalendar);
    if (known) {
        ComPtr<ItemObject> item = OpenItem(*known);
        if (!IsReceived(*known) || !IsLater(request, *known))
            return item;
        Content* content = nullptr;
        Check(item->Message().EditContent(content));
        *content = ContentFor(request, calendar.Names());
        MarkAsAsked(item->Message());
        item->Save();
        return item;
    }
    std::shared_ptr<OpenMessage> message;
    Check(calendar.CreateMessage(ContentFor(request, calendar.Names()), message));
    MarkAsAsked(*message);
    ComPtr<ItemObject> item = ItemFor(std::move(message));
    if (addToCalendar)
        item->Save();
    return item;
}

void TakeCancellation(ItemObject& item) {
    OpenMessage& appointment = item.Message();
    if (!IsReceived(appointment) || StateOf(appointment) & kIsCanceled)
        return;
    WriteValue(appointment, kStateFlags, StateOf(appointment) | kIsCanceled);
    WriteValue(appointment, kBusyStatus, kFree);
    WritePrefixed(appointment, L"Canceled:", appointment.Get<PR_NORMALIZED_SUBJECT_W>().value_or(L""));
    item.Save();
}

/// Notes the answer beside its sender's name.
void TakeAnswer(ItemObject& item, const OpenMessage& answer, const ResponseKind& response) {
    OpenMessage& appointment = item.Message();
    const auto sender = ReadPerson(answer, kSentRepresentingTags);
    if (IsReceived(appointment) || !sender)
        return;
    const auto when = ReadAs<SysTime>(answer, kAttendeeChange);
    const SysTime time = when ? *when : answer.Get<PR_CLIENT_SUBMIT_TIME>().value_or(mailbox::Now());
    const mailbox::AddressBook& addresses = LoggedOnWorld().Addresses();
    const std::vector<mailbox::PropertyBag> rows = appointment.Recipients();
    for (mailbox::PropertyBag row : rows) {
        const auto person = addresses.FindRecipient(row);
        const bool isSender =
            person && mailbox::SameIgnoringCase(person->SmtpAddress(), sender->SmtpAddress());
        if (!isSender || row.GetOr<kPrTrackStatusTime>({}) >= time)
            continue;
        row.Set<mailbox::kPrRecipientTrackStatus>(response.number);
        row.Set<kPrTrackStatusTime>(time);
        const auto rowId = static_cast<std::uint32_t>(row.GetOr<PR_ROWID>(0));
        Check(appointment.ReplaceRecipient(rowId, std::move(row)));
    }
    item.Save();
}

} // namespace

ComPtr<ItemObject> Respond(ItemObject& item, const Arguments& arguments) {
    constexpr std::size_t kResponse = 0, kNoUi = 1, kDialog = 2;
    const ResponseKind* response = FindResponse(arguments.Number(kResponse));
    if (!response)
        throw InvalidValue();
    const std::int32_t state = StateOf(item.Message());
    if (!(state & kIsReceived) || state & kIsCanceled)
        throw Failure(MAPI_E_NO_SUPPORT, L"Nobody waits for an answer to this appointment.");
    if (!arguments.Flag(kNoUi, false) && arguments.Flag(kDialog, false))
        throw NotBuilt(L"Respond with a dialog");
    NoteAnswer(item, *response);
    return MakeAnswer(item.Message(), *response);
}

ComPtr<ItemObject> AssociatedAppointment(ItemObject& item, bool addToCalendar) {
    const OpenMessage& message = item.Message();
    const std::wstring messageClass = message.Get<PR_MESSAGE_CLASS_W>().value_or(L"");
    const std::shared_ptr<mailbox::Message> known = FindAppointment(message);
    if (DescendsFrom(messageClass, kRequest))
        return TakeRequest(message, known, addToCalendar);
    if (!known)
        return nullptr;
    ComPtr<ItemObject> appointment = OpenItem(*known);
    if (DescendsFrom(messageClass, kCancellation))
        TakeCancellation(*appointment);
    else if (const ResponseKind* response = FindResponse(messageClass))
        TakeAnswer(*appointment, message, *response);
    return appointment;
}

bool IsLatestVersion(ItemObject& item) {
    const std::shared_ptr<mailbox::Message> known = FindAppointment(item.Message());
    return !known || !IsLater(*known, item.Message());
}

} // namespace standin::outlook::calendar
