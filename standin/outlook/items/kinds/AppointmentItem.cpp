// AppointmentItem: the members of appointments beyond those of all items.
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/calendar/AppointmentTimes.h"
#include "standin/outlook/calendar/CalendarProperties.h"
#include "standin/outlook/calendar/GlobalId.h"
#include "standin/outlook/calendar/Meetings.h"
#include "standin/outlook/calendar/RecurrencePattern.h"
#include "standin/outlook/calendar/SeriesStore.h"
#include "standin/outlook/folders/Folder.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"
#include "standin/outlook/items/People.h"
#include "standin/outlook/objects/AddressEntry.h"

namespace standin::outlook {
namespace {

using namespace calendar;
using mailbox::OpenMessage;

constexpr std::int32_t kBusy = 2;            // OlBusyStatus
constexpr std::int32_t kOrganizedByUser = 1; // OlResponseStatus
constexpr std::int32_t kMinutesOfReminder = 15;

/// What a user turns into a meeting is the user's own.
void FollowStatus(OpenMessage& message) {
    const std::int32_t state = ReadAs<std::int32_t>(message, kStateFlags).value_or(0);
    if ((state & kIsMeeting) && !(state & kIsReceived))
        WriteValue(message, kResponseStatus, kOrganizedByUser);
}

void CheckMinutes(Object& item, const Call& call) {
    if (call.arguments.Number(0) < 0)
        throw InvalidValue();
    PutThen<FollowReminder>(item, call);
}

constexpr Row Checked(Row row, Setter put) {
    row.put = put;
    return row;
}

/// A whole-day appointment lasts from midnight to midnight; of a series that is the pattern's time too.
void FollowAllDayOfSeries(OpenMessage& message) {
    FollowAllDay(message);
    MoveSeries(message);
}

/// A member that tells more of a single occurrence than its properties do.
template <auto function>
constexpr Row Told(Row row) {
    row.get = Get<function>;
    return row;
}

ComPtr<AddressEntryObject> GetOrganizer(ItemObject& item) {
    auto person = ReadPerson(item.Message(), kSentRepresentingTags);
    return person ? Make<AddressEntryObject>(std::move(person)) : nullptr;
}

/// The copy is another appointment: nobody is told of it. Of a meeting that the user was asked to, the first
/// option would have the user choose.
ComPtr<ItemObject> CopyTo(ItemObject& item, const Arguments& arguments) {
    constexpr std::size_t kFolder = 0, kOptions = 1;
    mailbox::Folder& folder = arguments.As<FolderObject>(kFolder)->Folder();
    constexpr std::int32_t kPromptUser = 0, kCopyAsAccept = 2; // OlAppointmentCopyOptions
    const std::int32_t options = arguments.Number(kOptions);
    if (options < kPromptUser || options > kCopyAsAccept)
        throw InvalidValue();
    if (options == kPromptUser && ReadAs<std::int32_t>(item.Message(), kStateFlags).value_or(0) & kIsReceived)
        throw NotBuilt(L"CopyTo with a question to the user");
    std::shared_ptr<mailbox::Message> copy;
    Check(folder.Receive(
        mailbox::RemapContent(item.Message().Current(), item.Message().Names(), folder.Names()), false,
        copy));
    return OpenItem(*copy);
}

constexpr Row kRows[] = {
    Then<FollowAllDayOfSeries>(Named(L"AllDayEvent", kFlag, PT_BOOLEAN, kPsAppointment, 0x8215)),
    Named(L"BusyStatus", kNumber, PT_LONG, kPsAppointment, 0x8205, kBusy),
    Named(L"ConferenceServerAllowExternal", kFlag, PT_BOOLEAN, kPsAppointment, 0x8246),
    Named(L"ConferenceServerPassword", kText, PT_UNICODE, kPsAppointment, 0x8249),
    Named(L"Duration", kLength, PT_LONG, kPsAppointment, 0x8213),
    Named(L"End", kLocalEnd, PT_SYSTIME, kPsAppointment, 0x820E),
    Named(L"EndInEndTimeZone", kZoneEnd, PT_SYSTIME, kPsAppointment, 0x820E),
    Named(L"EndUTC", kUtcEnd, PT_SYSTIME, kPsAppointment, 0x820E),
    Named(L"GlobalAppointmentID", kHex, PT_BINARY, kPsMeeting, 0x0003),
    Named(L"IsOnlineMeeting", kFlag, PT_BOOLEAN, kPsAppointment, 0x8240),
    Told<IsRecurring>(Named(L"IsRecurring", kFlag, PT_BOOLEAN, kPsAppointment, 0x8223)),
    Named(L"Location", kText, PT_UNICODE, kPsAppointment, 0x8208),
    Then<FollowStatus>(Named(L"MeetingStatus", kNumber, PT_LONG, kPsAppointment, 0x8217)),
    Named(L"MeetingWorkspaceURL", kText, PT_UNICODE, kPsAppointment, 0x8209),
    Named(L"NetMeetingAutoStart", kFlag, PT_BOOLEAN, kPsAppointment, 0x8244),
    Named(L"NetMeetingDocPathName", kText, PT_UNICODE, kPsAppointment, 0x8247),
    Named(L"NetMeetingOrganizerAlias", kText, PT_UNICODE, kPsAppointment, 0x8243),
    Named(L"NetMeetingServer", kText, PT_UNICODE, kPsAppointment, 0x8242),
    Named(L"NetMeetingType", kNumber, PT_LONG, kPsAppointment, 0x8241),
    Named(L"NetShowURL", kText, PT_UNICODE, kPsAppointment, 0x8248),
    Stored(L"OptionalAttendees", kCcNames, PR_DISPLAY_CC_W),
    Stored(L"Organizer", kText, PR_SENT_REPRESENTING_NAME_W),
    Checked(Named(L"ReminderMinutesBeforeStart", kNumber, PT_LONG, kPsCommon, 0x8501), CheckMinutes),
    Then<FollowReminder>(Named(L"ReminderSet", kFlag, PT_BOOLEAN, kPsCommon, 0x8503)),
    Named(L"ReplyTime", kTime, PT_SYSTIME, kPsAppointment, 0x8220),
    Stored(L"RequiredAttendees", kToNames, PR_DISPLAY_TO_W),
    Stored(L"Resources", kBccNames, PR_DISPLAY_BCC_W),
    Stored(L"ResponseRequested", kFlag, PR_RESPONSE_REQUESTED, true),
    Named(L"ResponseStatus", kNumber, PT_LONG, kPsAppointment, 0x8218),
    Named(L"Start", kLocalStart, PT_SYSTIME, kPsAppointment, 0x820D),
    Named(L"StartInStartTimeZone", kZoneStart, PT_SYSTIME, kPsAppointment, 0x820D),
    Named(L"StartUTC", kUtcStart, PT_SYSTIME, kPsAppointment, 0x820D),
    // Updates go to all attendees always.
    Constant<false>(L"ForceUpdateToAllAttendees"),
    {L"ClearRecurrencePattern", Get<ClearRecurrencePattern>},
    {L"CopyTo", Get<CopyTo>},
    {L"GetOrganizer", Get<GetOrganizer>},
    {L"GetRecurrencePattern", Get<GetRecurrencePattern>},
    {L"RecurrenceState", Get<RecurrenceState>},
    {L"Respond", Get<Respond>},
    {L"Send", Get<SendMeeting>},
};

/// Half an hour from the next half hour on, of the user's, with a reminder.
void Begin(OpenMessage& message) {
    constexpr std::int32_t kOpensAsForm = 0x171; // what the store is to do with it, [MS-OXCMSG] 2.2.1.16
    if (const auto user = CurrentUser()) {
        WritePerson(message, kSentRepresentingTags, *user);
        WritePerson(message, kSenderTags, *user);
    }
    for (const StoredProperty* zone : {&kZoneOfStart, &kZoneOfEnd})
        WriteValue(message, *zone, WriteZoneDefinition(LocalZone(), ZoneUse::Display));
    WriteValue(message, kSideEffects, kOpensAsForm);
    WriteValue(message, kBusyStatus, kBusy);
    WriteValue(message, kAllDay, false);
    WriteValue(message, kIsRecurring, false);
    WriteValue(message, kStateFlags, std::int32_t{0});
    WriteValue(message, kResponseStatus, std::int32_t{0});
    WriteValue(message, kColor, std::int32_t{0});
    WriteValue(message, kLocation, std::wstring());
    WriteValue(message, kSequence, std::int32_t{0});
    WriteValue(message, kIsInvited, false);
    WriteValue(message, kReminderSet, true);
    WriteValue(message, kReminderMinutes, kMinutesOfReminder);
    Check(message.Write(PR_RESPONSE_REQUESTED, true));
    WriteSpan(message, NextHalfHour());
}

/// Its icon ([MS-OXOCAL] 2.2.1.49): of meetings and series there are others.
std::int32_t IconOf(const OpenMessage& message) {
    constexpr std::int32_t kPlain = 1024, kRecurs = 1, kMeets = 2;
    const bool isMeeting = ReadAs<std::int32_t>(message, kStateFlags).value_or(0) & kIsMeeting;
    return kPlain + (IsSeries(message) ? kRecurs : 0) + (isMeeting ? kMeets : 0);
}

void Complete(OpenMessage& message) {
    SettleSeries(message);
    EnsureGlobalId(message);
    WriteAttendeeTexts(message);
    Check(message.Write(mailbox::kPrIconIndex, IconOf(message)));
}

} // namespace

const ItemKind kAppointmentItem{
    .kind = {L"AppointmentItem", 0x00063033, 26, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Appointment",
    .itemType = 1,
    .home = mailbox::kCalendar,
    .begin = Begin,
    .complete = Complete,
};

} // namespace standin::outlook
