// Meetings arranged by a script: what goes out, what the attendee gets, and the answer.
#include "CalendarTest.h"

#include "standin/mailbox/Tags.h"

#include <algorithm>
#include <array>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

constexpr PropertyTag kReplyRequested = 0x0C17000B, kIconIndex = 0x10800003, kLastVerb = 0x10810003,
                      kLastVerbTime = 0x10820040;

PropertyBag Attendee(const wchar_t* name) {
    PropertyBag row;
    row.Set<PR_RECIPIENT_TYPE>(MAPI_TO);
    row.Set<PR_DISPLAY_NAME_W>(name);
    return row;
}

std::wstring TextOf(const Message& message, PropertyTag tag) {
    StoredValue value;
    return SUCCEEDED(message.Read(tag, value)) ? std::get<std::wstring>(value) : L"(none)";
}

void ExpectNamed(const Message& message, const std::vector<NamedValue>& values) {
    for (const auto& [set, number, value] : values) {
        EXPECT_EQ(Named(message, *set, number), value) << number;
    }
}

/// A request of number 17 as other mail clients send it.
MessageToAdd Request(const SysTime& start = {0x01D1000000000000}, const SysTime& end = {0x01D1000100000000}) {
    MessageToAdd request{.messageClass = L"IPM.Schedule.Meeting.Request", .subject = L"Review"};
    request.more.Set<PR_START_DATE>(start);
    request.more.Set<PR_END_DATE>(end);
    request.more.Set<PR_OWNER_APPT_ID>(17);
    return request;
}

class MeetingTest : public CalendarTest {
protected:
    Message* Last(const wchar_t* store, const wchar_t* path) {
        const auto& messages = At(path, store).Messages();
        return messages.empty() ? nullptr : messages.back();
    }
    /// "Review" on 2 March 2026 at nine, for half an hour, in Room 5; Back Office is asked to come.
    void NewMeeting() {
        NewAppointment(L"Review", L"3/2/2026 9:00 AM");
        EXPECT_EQ(Set(L"Location", L"Room 5"), L"0");
        EXPECT_EQ(Set(L"Meeting Status", L"Meeting"), L"0");
        EXPECT_EQ(Set(L"Required Attendees", L"Back Office"), L"0");
    }
    /// The same, sent; its record is open again.
    void SendMeeting() {
        NewMeeting();
        const std::wstring id = Call(L"VARD_SaveRecord", {L"Send"});
        ASSERT_NE(id, kError) << testing::PrintToString(LastErrorText());
        OpenRecord(id);
    }
    std::wstring SendAgain() {
        const std::wstring id = Call(L"VARD_SaveRecord", {L"appointment"});
        EXPECT_NE(id, kError) << testing::PrintToString(LastErrorText());
        OpenRecord(id);
        return id;
    }
    /// What the sender has of the message that went out last.
    Message& Sent() { return *Last(L"Front Desk", L"Sent Items"); }
    /// Logs on as Back Office and opens the appointment of the request that arrived last.
    void BecomeAttendee() {
        ASSERT_EQ(Call(L"VARD_Authenticate", {L"Back Office"}), L"0");
        Open(L"/Inbox");
        Message* request = Last(L"Back Office", L"Inbox");
        ASSERT_TRUE(request);
        OpenRecord(ToHex(request->EntryId()));
        ASSERT_EQ(Get(L"Associated Appointment"), L"0") << testing::PrintToString(LastErrorText());
    }
    std::wstring Accept() {
        EXPECT_EQ(Set(L"Meeting Response", L"Accepted"), L"0");
        return Call(L"VARD_SaveRecord", {L"ApptResponse"});
    }
    /// Back Office is about to answer a meeting of Front Desk's that it will come to.
    void BeAboutToAccept() {
        LogOn();
        SendMeeting();
        BecomeAttendee();
        EXPECT_EQ(Set(L"Meeting Response", L"Accepted"), L"0");
    }
    void ExpectHeading(const Message& message, const wchar_t* messageClass, const wchar_t* subject,
                       const wchar_t* prefix) {
        EXPECT_EQ(TextOf(message, PR_MESSAGE_CLASS_W), messageClass);
        EXPECT_EQ(TextOf(message, PR_SUBJECT_W), subject);
        EXPECT_EQ(TextOf(message, PR_SUBJECT_PREFIX_W), prefix);
    }
    /// How often this member was called since lines are kept.
    std::uint64_t CallsOf(const wchar_t* member) {
        return static_cast<std::uint64_t>(
            std::ranges::count_if(Varden().Watch().Lines(), [&](const std::wstring& line) {
                return line.find(member) != std::wstring::npos;
            }));
    }
};

TEST_F(MeetingTest, AFirstRequestArrives) {
    SendMeeting();
    const Message& request = *Last(L"Back Office", L"Inbox");
    EXPECT_EQ(TextOf(request, PR_MESSAGE_CLASS_W), L"IPM.Schedule.Meeting.Request");
    EXPECT_EQ(TextOf(request, PR_SUBJECT_W), L"Review");
    EXPECT_EQ(TextOf(request, PR_CONVERSATION_TOPIC_W), L"Review");
    EXPECT_EQ(request.Get<PR_OWNER_APPT_ID>(), 1);
    EXPECT_EQ(request.Current().recipients.size(), 1u);
    ExpectNamed(request, {{&kAppointmentSet, 33303, 3}, // the status 1 and 2 more
                          {&kAppointmentSet, 33312, false},
                          {&kAppointmentSet, 33304, 5},
                          {&kAppointmentSet, 33285, 1},
                          {&kAppointmentSet, 33316, 0},
                          {&kAppointmentSet, 33288, L"Room 5"}});
    EXPECT_TRUE(At(L"Outbox").Messages().empty());
    EXPECT_EQ(TextOf(Sent(), PR_MESSAGE_CLASS_W), L"IPM.Schedule.Meeting.Request");

    const Message& appointment = Stored(); // what the organizer's appointment remembers
    ExpectNamed(appointment,
                {{&kAppointmentSet, 0x8229, true}, {&kAppointmentSet, 0x8218, 1}, {&kMeetingSet, 38, 1}});
    EXPECT_EQ(appointment.Stored().GetOr<kIconIndex>(0), 1026);
    EXPECT_EQ(TextOf(appointment, PR_SUBJECT_W), L"Review");
    EXPECT_EQ(TextOf(appointment, PR_MESSAGE_CLASS_W), L"IPM.Appointment");
}

TEST_F(MeetingTest, WhatWentOutBeforeGoesOutAsAnUpdateAndACanceledOneAsACancellation) {
    SendMeeting();
    EXPECT_EQ(Set(L"Location", L"Room 6"), L"0");
    SendAgain();
    ExpectHeading(Sent(), L"IPM.Schedule.Meeting.Request", L"Updated: Review", L"Updated:");
    EXPECT_EQ(Named(Sent(), kAppointmentSet, 33288), StoredValue(L"Room 6"));
    EXPECT_EQ(Sent().Get<PR_OWNER_APPT_ID>(), 1);
    EXPECT_EQ(Named(Stored(), kAppointmentSet, 33283), StoredValue(2)); // counted at each send

    EXPECT_EQ(Set(L"Meeting Status", L"Canceled"), L"0");
    SendAgain();
    ExpectHeading(Sent(), L"IPM.Schedule.Meeting.Canceled", L"Canceled: Review", L"Canceled:");
    EXPECT_EQ(Named(Sent(), kAppointmentSet, 33303), StoredValue(7));
    EXPECT_EQ(At(L"Inbox", L"Back Office").Messages().size(), 3u);
}

TEST_F(MeetingTest, AnAppointmentsStatusAndNumberDecideWhatItGoesOutAs) {
    MessageToAdd numbered{.subject = L"Numbered"};
    numbered.more.Set<PR_OWNER_APPT_ID>(0); // counts as not sent
    OpenAppointment(numbered, {}, {Attendee(L"Back Office")});
    SendAgain();
    EXPECT_EQ(TextOf(Sent(), PR_SUBJECT_W), L"Numbered");
    EXPECT_EQ(Named(Sent(), kAppointmentSet, 33303), StoredValue(2)); // it was given the status 0
    EXPECT_EQ(Stored().Get<PR_OWNER_APPT_ID>(), 1);

    numbered.more.Set<PR_OWNER_APPT_ID>(7);
    OpenAppointment(numbered, {{&kAppointmentSet, 0x8217, 7}}, {Attendee(L"Back Office")});
    SendAgain();
    EXPECT_EQ(TextOf(Sent(), PR_MESSAGE_CLASS_W), L"IPM.Schedule.Meeting.Canceled");
    EXPECT_EQ(Named(Sent(), kAppointmentSet, 33303), StoredValue(9));
    EXPECT_EQ(Stored().Get<PR_OWNER_APPT_ID>(), 7);

    OpenAppointment({.subject = L""}, {}, {Attendee(L"Back Office")});
    SendAgain();
    EXPECT_EQ(Stored().Get<PR_OWNER_APPT_ID>(), 8); // one more than the greatest
    EXPECT_EQ(TextOf(Stored(), PR_CONVERSATION_TOPIC_W), L"");
}

TEST_F(MeetingTest, NumbersAtTheEndOfTheRangeAreTakenFromGaps) {
    const auto numberAfter = [&](const std::vector<std::int32_t>& taken) {
        while (!Calendar().Messages().empty()) {
            Calendar().RemoveMessage(*Calendar().Messages().front());
        }
        for (const std::int32_t number : taken) {
            MessageToAdd other{.messageClass = L"IPM.Appointment"};
            other.more.Set<PR_OWNER_APPT_ID>(number);
            AddMessage(Calendar(), other);
        }
        OpenAppointment({.subject = L"Next"}, {}, {Attendee(L"Back Office")});
        SendAgain();
        return Stored().Get<PR_OWNER_APPT_ID>().value_or(0);
    };
    constexpr std::int32_t top = 0x7FFFFFFF;
    EXPECT_EQ(numberAfter({}), 1);
    EXPECT_EQ(numberAfter({4, 9, 2}), 10);
    EXPECT_EQ(numberAfter({top, top - 1}), top - 2);
    EXPECT_EQ(numberAfter({top, top, 20, 19}), 19);
    EXPECT_EQ(numberAfter({-5, -3}), -6);
    EXPECT_EQ(numberAfter({-3, -5}), -6);
}

constexpr std::array kTrackedNumbers{12u, 13u, 14u, 15u, 16u, 21u, 22u, 23u, 28u};
constexpr std::array kTrackedShortNumbers{17u, 18u, 19u, 20u, 24u, 25u};

/// The properties that a first request leaves behind, with values that no send gives them.
std::vector<NamedValue> Tracking() {
    const SysTime time{0x01D0000000000000};
    std::vector<NamedValue> values{
        {&kAppointmentSet, 33282, time}, {&kCommonSet, 34070, time}, {&kCommonSet, 34071, time}};
    for (const std::uint32_t number : {4u, 9u, 11u}) {
        values.push_back({&kMeetingSet, number, true});
    }
    for (const std::uint32_t number : {6u, 7u, 8u, 29u}) {
        values.push_back({&kMeetingSet, number, L"former"});
    }
    for (const std::uint32_t number : kTrackedNumbers) {
        values.push_back({&kMeetingSet, number, 77});
    }
    for (const std::uint32_t number : kTrackedShortNumbers) {
        values.push_back({&kMeetingSet, number, std::int16_t{77}});
    }
    return values;
}

TEST_F(MeetingTest, ARequestLeavesBehindWhatIsTheAppointmentsOwn) {
    ASSERT_EQ(Tracking().size(), 25u);
    MessageToAdd meeting{.subject = L"Review"};
    const Bytes index(22, 0x01);
    meeting.more.Set<PR_CONVERSATION_INDEX>(index);
    meeting.more.Set<PR_SENDER_NAME_W>(L"Somebody");
    meeting.more.Set<PR_SENDER_ADDRTYPE_W>(L"FAX");
    meeting.more.Set<PR_SENDER_EMAIL_ADDRESS_W>(L"0123");
    meeting.more.Set<PR_SENDER_ENTRYID>(Bytes{1});
    meeting.more.Set<PR_SENDER_SEARCH_KEY>(Bytes{2});
    meeting.more.Set<PR_SENT_REPRESENTING_NAME_W>(L"Somebody");
    meeting.more.Set<PR_SENT_REPRESENTING_SEARCH_KEY>(Bytes{3});
    meeting.more.Set<kReplyRequested>(true);
    meeting.more.Set<kIconIndex>(1);
    meeting.more.Set<kLastVerb>(2);
    meeting.more.Set<kLastVerbTime>(SysTime{3});
    OpenAppointment(meeting, Tracking(), {Attendee(L"Back Office"), Attendee(L"Warehouse")});
    for (const bool isUpdate : {false, true}) {
        SendAgain();
        for (const NamedValue& each : Tracking()) {
            EXPECT_EQ(Named(Sent(), *each.set, each.number).has_value(), isUpdate) << each.number;
        }
        EXPECT_EQ(Sent().Stored().GetOr<PR_CONVERSATION_INDEX>({}) == index, isUpdate);
        EXPECT_EQ(TextOf(Sent(), PR_SENDER_NAME_W), L"Front Desk"); // as it was submitted
        for (const PropertyTag tag : {PropertyTag{PR_SENT_REPRESENTING_SEARCH_KEY}, kReplyRequested,
                                      kIconIndex, kLastVerb, kLastVerbTime}) {
            EXPECT_FALSE(Sent().Stored().Contains(tag)) << std::hex << tag;
        }
        EXPECT_EQ(TextOf(Sent(), PR_SENT_REPRESENTING_NAME_W), L"Somebody"); // goes over
        EXPECT_EQ(Sent().Current().recipients.size(), 2u);                   // once each
    }
}

TEST_F(MeetingTest, AnAppointmentIsPreparedForItsRequest) {
    MessageToAdd meeting{.subject = L"Review"};
    const SysTime start{0x01D1000000000000}, end{0x01D1000100000000};
    for (const std::uint32_t number : {33295u, 33296u, 33297u, 33298u, 33348u, 33283u}) {
        Calendar().Names().Id(PropertyName{kAppointmentSet, number}, true);
    }
    for (const std::uint32_t number : {33339u, 33340u}) {
        Calendar().Names().Id(PropertyName{kCommonSet, number}, true);
    }
    Calendar().Names().Id(PropertyName{kMeetingSet, 36u}, true);
    meeting.more.Set<PR_START_DATE>(start);
    meeting.more.Set<PR_END_DATE>(end);
    OpenAppointment(meeting, Tracking(), {Attendee(L"Back Office")});
    SendAgain();
    std::vector<NamedValue> prepared{{&kMeetingSet, 36, L"IPM.Appointment"},
                                     {&kAppointmentSet, 33348, false},
                                     {&kAppointmentSet, 33295, start},
                                     {&kAppointmentSet, 33298, start},
                                     {&kAppointmentSet, 33334, start},
                                     {&kAppointmentSet, 33296, end},
                                     {&kAppointmentSet, 33297, end},
                                     {&kAppointmentSet, 33333, end},
                                     {&kAppointmentSet, 33303, 0},
                                     {&kAppointmentSet, 33283, 1},
                                     {&kCommonSet, 33339, L"Back Office"},
                                     {&kMeetingSet, 10, false},
                                     {&kMeetingSet, 5, false},
                                     {&kMeetingSet, 4, false},
                                     {&kMeetingSet, 9, false}};
    for (const std::uint32_t number : kTrackedNumbers) {
        prepared.push_back({&kMeetingSet, number, 0});
    }
    for (const std::uint32_t number : kTrackedShortNumbers) {
        prepared.push_back({&kMeetingSet, number, std::int16_t{0}});
    }
    ExpectNamed(Stored(), prepared);
    OpenAppointment({.subject = L"Timeless"}, {}, {Attendee(L"Back Office")});
    SendAgain();
    const auto fallback = Named(Stored(), kAppointmentSet, 33296);
    ASSERT_TRUE(fallback);
    EXPECT_EQ(static_cast<std::uint32_t>(std::get<SysTime>(*fallback).ticks), 0xA3DD4000);
}

TEST_F(MeetingTest, AnAcceptedMeetingIsOnTheCalendarAndTheOrganizerHearsOfIt) {
    SendMeeting();
    const auto globalId = Named(Stored(), kMeetingSet, 3);
    BecomeAttendee();
    EXPECT_EQ(Get(L"Subject"), L"Review");
    EXPECT_EQ(Get(L"Location"), L"Room 5");
    const std::wstring id = Accept();
    ASSERT_NE(id, kError) << testing::PrintToString(LastErrorText());

    Folder& calendar = At(L"Calendar", L"Back Office");
    ASSERT_EQ(calendar.Messages().size(), 1u);
    const Message& entry = *calendar.Messages().front();
    EXPECT_EQ(id, ToHex(entry.EntryId())); // the record that was current is the calendar's
    EXPECT_EQ(TextOf(entry, PR_MESSAGE_CLASS_W), L"IPM.Appointment");
    EXPECT_EQ(Named(entry, kMeetingSet, 3), globalId);
    ExpectNamed(entry, {{&kAppointmentSet, 33285, 2}, {&kAppointmentSet, 33304, 3}});
    EXPECT_TRUE(std::holds_alternative<SysTime>(Named(entry, kAppointmentSet, 33312).value()));

    const Message& answer = *Last(L"Front Desk", L"Inbox");
    ExpectHeading(answer, L"IPM.Schedule.Meeting.Resp.Pos", L"Accepted: Review", L"Accepted:");
    EXPECT_EQ(TextOf(answer, PR_SENDER_NAME_W), L"Back Office");
    EXPECT_EQ(answer.Get<PR_OWNER_APPT_ID>(), 1);
    EXPECT_EQ(Named(answer, kMeetingSet, 3), globalId);
    ExpectNamed(answer, {{&kAppointmentSet, 33288, L"Room 5"},
                         {&kMeetingSet, 2, L"Room 5"},
                         {&kCommonSet, 34064, 7265},
                         {&kAppointmentSet, 33303, 0},
                         {&kAppointmentSet, 33287, 0}});
    const Bytes parent = entry.Stored().GetOr<PR_CONVERSATION_INDEX>({});
    const Bytes index = answer.Stored().GetOr<PR_CONVERSATION_INDEX>({});
    EXPECT_EQ(index.size(), parent.size() + 5); // one block more
    EXPECT_TRUE(At(L"Outbox", L"Back Office").Messages().empty());
    EXPECT_EQ(Last(L"Back Office", L"Sent Items")->Get<PR_OWNER_APPT_ID>(), 1);
}

TEST_F(MeetingTest, OnlyAnAcceptanceIsSent) {
    SendMeeting();
    BecomeAttendee();
    for (const wchar_t* word : {L"", L"Tentative", L"Declined"}) {
        if (*word) {
            EXPECT_EQ(Set(L"Meeting Response", word), L"0");
        }
        ExpectFailure(L"VARD_SaveRecord", {L"apptresponse"},
                      errors::Mapi(L"Error: 80070057\rMAPI_E_INVALID_PARAMETER\rInvalid meeting response "
                                   L"status. This function can only be used for Accepted meetings."));
        BecomeAttendee();
    }
    EXPECT_TRUE(At(L"Calendar", L"Back Office").Messages().empty());
    EXPECT_TRUE(At(L"Inbox").Messages().empty());
}

TEST_F(MeetingTest, WhoeverWantsNoAnswerGetsNone) {
    NewMeeting();
    EXPECT_EQ(Set(L"Response Requested", L"False"), L"0");
    ASSERT_NE(Call(L"VARD_SaveRecord", {L"Send"}), kError);
    BecomeAttendee();
    const std::wstring id = Accept(); // of what was answered, which is deleted
    EXPECT_NE(id, kError) << testing::PrintToString(LastErrorText());
    EXPECT_NE(id, ToHex(Last(L"Back Office", L"Calendar")->EntryId()));
    EXPECT_EQ(At(L"Calendar", L"Back Office").Messages().size(), 1u);
    EXPECT_TRUE(At(L"Inbox").Messages().empty());
    EXPECT_TRUE(At(L"Outbox", L"Back Office").Messages().empty());
}

/// A request as other mail clients send it, with everything that an answer takes over.
TEST_F(MeetingTest, AnAnswerTakesOverWhatTheRequestTellsOfTheMeeting) {
    Folder& inbox = At(L"Inbox", L"Back Office");
    const SysTime start{0x01D1000000000000}, end{0x01D1000100000000};
    const std::vector<NamedValue> ofASeries{{&kAppointmentSet, 33331, Bytes{1, 2}},
                                            {&kAppointmentSet, 33302, Bytes{3, 4}},
                                            {&kAppointmentSet, 33376, Bytes{5}},
                                            {&kAppointmentSet, 33332, L"every day"}};
    const std::vector<NamedValue> left{{&kMeetingSet, 9, true}, {&kMeetingSet, 12, 42}};
    const std::vector<NamedValue> made{{&kAppointmentSet, 33285, 2},     {&kAppointmentSet, 33287, 0},
                                       {&kAppointmentSet, 33303, 0},     {&kMeetingSet, 2, L"Room 5"},
                                       {&kAppointmentSet, 33293, start}, {&kCommonSet, 34070, start},
                                       {&kAppointmentSet, 33294, end},   {&kCommonSet, 34071, end}};
    for (const bool isSeries : {true, false}) {
        const std::vector<NamedValue> taken{{&kMeetingSet, 3, Bytes{6, isSeries}}, // another meeting
                                            {&kMeetingSet, 35, Bytes{6, isSeries}},
                                            {&kMeetingSet, 5, isSeries},
                                            {&kMeetingSet, 10, true},
                                            {&kAssistantSet, 21, 99},
                                            {&kAppointmentSet, 33281, 4},
                                            {&kAppointmentSet, 33288, L"Room 5"}};
        MessageToAdd request = Request(start, end);
        request.more.Set<PR_SENSITIVITY>(2);
        request.more.Set<PR_CONVERSATION_INDEX>(Bytes(22, 0x01));
        for (const auto* list : {&ofASeries, &left, &taken}) {
            for (const NamedValue& each : *list) {
                PutNamed(request.more, inbox.Names(), each);
            }
        }
        AddMessage(inbox, request);
        BecomeAttendee();
        EXPECT_EQ(Set(L"Required Attendees", L"Front Desk"), L"0");
        ASSERT_NE(Accept(), kError) << testing::PrintToString(LastErrorText());
        const Message& answer = *Last(L"Back Office", L"Sent Items");
        for (const auto& [set, number, value] : ofASeries) {
            EXPECT_EQ(Named(answer, *set, number), isSeries ? std::optional(value) : std::nullopt) << number;
        }
        EXPECT_FALSE(Named(answer, kMeetingSet, 9));
        ExpectNamed(answer, taken);
        ExpectNamed(answer, made);
        EXPECT_EQ(answer.Get<PR_OWNER_APPT_ID>(), 17);
        EXPECT_EQ(answer.Get<PR_SENSITIVITY>(), 2);
        EXPECT_EQ(answer.Get<PR_START_DATE>(), start);
        EXPECT_EQ(answer.Get<PR_END_DATE>(), end);
        EXPECT_EQ(answer.Stored().GetOr<PR_CONVERSATION_INDEX>({}).size(), 27u);
    }
}

TEST_F(MeetingTest, ARequestThatDoesNotGoOutTellsWhy) {
    const std::vector<Fault> faults{
        Denied(L"IMsgStore::GetProps", L"Unable to access store properties"),
        Denied(L"IMsgStore::GetProps", L"Unable to access store properties", 2),
        {L"IMsgStore::OpenEntry", {-1015, L"Folder Not Found\rError: 80070005"}},
        Denied(L"IMAPIFolder::CreateMessage", L"Unable to create message"),
        Denied(L"IMessage::ModifyRecipients", L"Failed to modify recipients."),
        Denied(L"IMessage::GetRecipientTable",
               L"Error Resolving Names in Addrlist - Unable to access recipients table"),
        Denied(L"IMessage::SubmitMessage", L"Failed to submit message"),
    };
    NewMeeting();
    const std::wstring id = Save();
    for (const Fault& fault : faults) {
        OpenRecord(id);
        ExpectFaults(L"VARD_SaveRecord", {L"Send"}, {fault});
        EXPECT_TRUE(At(L"Outbox").Messages().empty()); // nothing of it stays
    }
    EXPECT_EQ(Stored().Get<PR_OWNER_APPT_ID>(), 1); // which makes of a retry an update
    OpenRecord(id);
    SendAgain();
    EXPECT_EQ(TextOf(Sent(), PR_SUBJECT_W), L"Updated: Review");
}

TEST_F(MeetingTest, WhatTheNewMessageRefusesIsToldByItsPart) {
    NewMeeting();
    const std::wstring id = Save();
    SendAgain(); // so that there is a prefix
    Varden().Watch().KeepLines(true);
    SendAgain();
    // The headings are the last three single properties that are written.
    std::uint64_t call = CallsOf(L"MAPI32::HrSetOneProp") - 2;
    Varden().Watch().KeepLines(false);
    for (const wchar_t* text :
         {L"Failed to set prefix message.", L"Failed to set subject.", L"Failed to set message class."}) {
        OpenRecord(id);
        ExpectFaults(L"VARD_SaveRecord", {L"Send"}, {Denied(L"MAPI32::HrSetOneProp", text, call++)});
    }
}

TEST_F(MeetingTest, AnAcceptanceThatDoesNotGoOutTellsWhy) {
    const std::vector<Fault> faults{
        Denied(L"IMsgStore::OpenEntry", L"Failed to open Calendar folder"),
        Denied(L"IMessage::CopyTo",
               L"Failed to copy properties from old meeting message to new meeting message"),
        Denied(L"IMessage::SaveChanges", L"Failed to save message after setting appointment properties"),
        Denied(L"IMAPIFolder::CreateMessage", L"Unable to create message", 2),
        Denied(L"IMsgStore::GetProps", L"Unable to access store properties"),
        Denied(L"IAddrBook::ResolveName", L"Unable to set Sent On Behalf - Failed to resolve"),
        Denied(L"IMAPISession::OpenAddressBook",
               L"Unable to set Sent On Behalf - unable to open Address Book."),
        Denied(L"IMsgStore::GetProps", L"MAPI Create - Unable to access store properties.", 2),
        Denied(L"IMsgStore::GetProps", L"Unable to access store properties", 3),
        {L"AppointmentItem::Delete", {0, L"Success"}},
        Denied(L"MAPI32::ScCreateConversationIndex", L"Failed to increment Conversation Index: %s"),
        Denied(L"IMessage::GetRecipientTable", L"Failed to get address list: %s"),
        Denied(L"IMessage::ModifyRecipients", L"Failed to modify recipients."),
        Denied(L"IMessage::SetProps", L"Failed to set final properties.", 2),
        Denied(L"IMessage::SaveChanges", L"Failed to save message prior to submitting", 6),
        Denied(L"IMessage::SubmitMessage", L"Failed to submit message"),
    };
    for (const Fault& fault : faults) {
        BeAboutToAccept();
        ExpectFaults(L"VARD_SaveRecord", {L"ApptResponse"}, {fault});
        EXPECT_TRUE(At(L"Inbox").Messages().empty());
    }
}

TEST_F(MeetingTest, WhatAnAcceptanceRefusesIsToldByItsPart) {
    BeAboutToAccept();
    Varden().Watch().KeepLines(true);
    ASSERT_NE(Call(L"VARD_SaveRecord", {L"ApptResponse"}), kError);
    const std::uint64_t written = CallsOf(L"MAPI32::HrSetOneProp"), read = CallsOf(L"MAPI32::HrGetOneProp");
    Varden().Watch().KeepLines(false);
    // The heading is written last; behind the sensitivity the index, the subject and the entry's id are read.
    const std::vector<Fault> faults{
        Denied(L"MAPI32::HrSetOneProp", L"Failed to set prefix message.", written - 2),
        Denied(L"MAPI32::HrSetOneProp", L"Failed to set subject.", written - 1),
        Denied(L"MAPI32::HrSetOneProp", L"Failed to set message class.", written),
        Denied(L"MAPI32::HrGetOneProp", L"Failed to get subject property", read - 1),
        Denied(L"MAPI32::HrGetOneProp", L"Failed to set Sensitivity property: %s", read - 3),
    };
    for (const Fault& fault : faults) {
        BeAboutToAccept();
        const auto& outbox = At(L"Outbox", L"Back Office").Messages();
        const auto& calendar = At(L"Calendar", L"Back Office").Messages();
        const std::size_t unsent = outbox.size(), entries = calendar.size();
        ExpectFaults(L"VARD_SaveRecord", {L"ApptResponse"}, {fault});
        const bool isSaved = fault.number != read - 3;
        EXPECT_EQ(outbox.size(), unsent + isSaved); // it stays there
        EXPECT_EQ(calendar.size(), entries + 1);
    }
}

TEST_F(MeetingTest, PropertiesThatAnAnswerNeedsAreMissed) {
    Folder& inbox = At(L"Inbox", L"Back Office");
    const std::vector<std::pair<PropertyTag, const wchar_t*>> missing{
        {PR_START_DATE, L"Failed to set StartDate property: %s"},
        {PR_END_DATE, L"Failed to set EndDate property: %s"},
        {PR_OWNER_APPT_ID, L"Failed to set Owner Appointment ID property: %s"}};
    for (const auto& [tag, text] : missing) {
        MessageToAdd request = Request();
        request.more.Remove(tag);
        AddMessage(inbox, request);
        BecomeAttendee();
        EXPECT_EQ(Set(L"Meeting Response", L"Accepted"), L"0");
        ExpectFailure(L"VARD_SaveRecord", {L"ApptResponse"}, errors::NotFound(text));
    }
}

/// The current record is a meeting that goes out again: nothing is prepared, so that its status is its own.
TEST_F(MeetingTest, AMeetingItemIsSentAsItIs) {
    Content content;
    content.properties.Set<PR_MESSAGE_CLASS_W>(L"IPM.Schedule.Meeting.Request");
    content.properties.Set<PR_SUBJECT_W>(L"Again");
    content.recipients = {Attendee(L"Back Office")};
    std::shared_ptr<Message> meeting;
    ASSERT_EQ(At(L"Drafts").Receive(std::move(content), false, meeting), S_OK);
    OpenRecord(ToHex(meeting->EntryId()));
    EXPECT_EQ(Call(L"VARD_SaveRecord", {L"keep open"}), ToHex(meeting->EntryId()));
    EXPECT_TRUE(At(L"Sent Items").Messages().empty());
    EXPECT_EQ(Get(L"Subject"), L"Again"); // still current
    EXPECT_EQ(Call(L"VARD_SaveRecord", {L"SEND"}), ToHex(meeting->EntryId()));
    EXPECT_EQ(TextOf(Sent(), PR_MESSAGE_CLASS_W), L"IPM.Schedule.Meeting.Request");
    EXPECT_EQ(Named(Sent(), kAppointmentSet, 33303), StoredValue(5)); // without a status it counts as 3
    OpenRecord(ToHex(meeting->EntryId()));
    ExpectFaults(L"VARD_SaveRecord", {L"Send"},
                 {{L"IMessage::SubmitMessage", errors::Mapi(L"Failed to send meeting")}});
}

} // namespace
} // namespace varden::tests
