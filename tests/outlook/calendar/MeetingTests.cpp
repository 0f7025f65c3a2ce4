// Meetings from both sides: the organizer's, Front Desk, and the attendee's, Back Office.
#include "Calendar.h"

#include "standin/mailbox/Tags.h"

#include <filesystem>

namespace outlook_tests {
namespace {

namespace mailbox = standin::mailbox;

constexpr const wchar_t *kOrganizer = L"Outlook", *kAttendee = L"Back Office";
const std::wstring kOwnerId = Tag(0x00620003);
constexpr int kAccepted = 3, kNotResponded = 5;

class MeetingTest : public CalendarTest {
protected:
    /// "Review", 2 March 2026 at nine, for an hour; sent to Back Office and Warehouse.
    Object NewMeeting() const {
        const Object item = NewAppointment(At(2026, 3, 2, 9), 60);
        PutAll(item, {{L"Subject", L"Review"}, {L"Location", L"Room 5"}, {L"Body", L"Bring numbers"}});
        PutAll(item, {{L"MeetingStatus", 1}, {L"RequiredAttendees", L"Back Office; Warehouse"}});
        return item;
    }
    void SendRequest() const {
        const Person organizer(Application(), kOrganizer);
        NewMeeting().Call(L"Send");
    }
    /// What the organizer changes.
    void SendUpdate(const Is& change) const {
        const Person organizer(Application(), kOrganizer);
        const Object meeting = organizer.Newest(kCalendar);
        PutAll(meeting, {change});
        meeting.Call(L"Send");
    }
    /// What the attendee answers.
    void SendAnswer(int response) const {
        const Person attendee(Application(), kAttendee);
        attendee.Appointment(true).Child(L"Respond", {response, true, false}).Call(L"Send");
    }
};

TEST_F(MeetingTest, OthersThanTheOwnerOfTheProfileCanLogOn) {
    const Person attendee(Application(), kAttendee);
    EXPECT_EQ(attendee.NameSpace().Text(L"CurrentProfileName"), kAttendee);
    const Object stores = attendee.NameSpace().Child(L"Folders");
    ASSERT_EQ(stores.Number(L"Count"), 2);
    EXPECT_EQ(stores.Item(1).Text(L"Name"), kAttendee);
    EXPECT_EQ(stores.Item(2).Text(L"Name"), L"Public Folders");
    EXPECT_EQ(attendee.NameSpace().Child(L"CurrentUser").Text(L"Name"), kAttendee);
    for (const int folder : {kInbox, kOutbox, kSentItems, kCalendar, kTasks, kDeletedItems})
        EXPECT_TRUE(attendee.Folder(folder).Text(L"FolderPath").starts_with(L"\\\\Back Office\\")) << folder;
    EXPECT_EQ(attendee.Folder(kCalendar).Child(L"Items").Child(L"Add").Text(L"Organizer"), kAttendee);
    attendee.NameSpace().Call(L"Logoff");
    EXPECT_EQ(attendee.NameSpace().Text(L"CurrentProfileName"), kOrganizer)
        << "the next logon is the usual one";
}

TEST_F(MeetingTest, ARequestGoesToAllAttendees) {
    const Person organizer(Application(), kOrganizer);
    const Object meeting = NewMeeting();
    EXPECT_EQ(meeting.Number(L"ResponseStatus"), 1);
    meeting.Call(L"Send");
    EXPECT_EQ(meeting.Text(L"Subject"), L"Review") << "the appointment stays";
    const Object sent = organizer.Newest(kSentItems);
    EXPECT_EQ(sent.Text(L"MessageClass"), L"IPM.Schedule.Meeting.Request");
    EXPECT_EQ(sent.Child(L"Recipients").Number(L"Count"), 2);
    EXPECT_EQ(organizer.Count(kOutbox), 0);
    ASSERT_EQ(organizer.Count(kCalendar), 1);
    ExpectStored(organizer.Newest(kCalendar), {{Id(kAppointmentSet, 0x8229000B), true}, {kOwnerId, 1}});
    NewMeeting().Call(L"Send");
    ExpectStored(organizer.Newest(kCalendar), {{kOwnerId, 2}});
}

TEST_F(MeetingTest, OnlyMeetingsOfOnesOwnWithKnownAttendeesAreSent) {
    const Person organizer(Application(), kOrganizer);
    const Object plain = NewMeeting();
    plain.Put(L"MeetingStatus", 0);
    EXPECT_EQ(plain.Status(L"Send"), MAPI_E_NO_SUPPORT);
    const Object lonely = NewMeeting();
    lonely.Put(L"RequiredAttendees", L"");
    const Answer toNobody = lonely.TryCall(L"Send");
    EXPECT_EQ(toNobody.Status(), E_FAIL);
    EXPECT_EQ(toNobody.description,
              L"There must be at least one name or distribution list in the To, Cc, or Bcc box.");
    const Object unknown = NewMeeting();
    unknown.Put(L"RequiredAttendees", L"Service");
    EXPECT_EQ(unknown.Status(L"Send"), E_FAIL) << "two people begin like that";
    EXPECT_EQ(NewMeeting().Status(L"Respond", {kAccepted}), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(organizer.Count(kSentItems), 0);
}

TEST_F(MeetingTest, TheAttendeesAppointmentComesFromTheRequest) {
    SendRequest();
    const Person attendee(Application(), kAttendee);
    const Object request = attendee.Newest(kInbox);
    Expect(request, {{L"Class", 53}, {L"UnRead", true}, {L"SenderName", L"Front Desk"}});
    Expect(request, {{L"IsLatestVersion", true}});
    const Object shown = request.Child(L"GetAssociatedAppointment", {false});
    EXPECT_EQ(shown.Text(L"Subject"), L"Review");
    EXPECT_EQ(attendee.Count(kCalendar), 0) << "only shown";

    const Object appointment = request.Child(L"GetAssociatedAppointment", {true});
    EXPECT_EQ(attendee.Count(kCalendar), 1);
    Expect(appointment, {{L"MessageClass", L"IPM.Appointment"}, {L"Location", L"Room 5"}});
    Expect(appointment, {{L"Body", L"Bring numbers"}, {L"Start", At(2026, 3, 2, 9)}, {L"Duration", 60}});
    Expect(appointment, {{L"Organizer", L"Front Desk"}});
    EXPECT_EQ(appointment.Text(L"RequiredAttendees"), L"Front Desk; Back Office; Warehouse")
        << "who asked comes first";
    const auto saved = World().FindMailbox(kAttendee)->SpecialFolder(kCalendar)->Messages();
    EXPECT_EQ(saved.at(0)->Current().recipients.at(0).GetOr<mailbox::kPrRecipientFlags>(0), 3)
        << "the organizer";
    Expect(appointment, {{L"MeetingStatus", 3}, {L"ResponseStatus", kNotResponded}, {L"BusyStatus", 1}});
    EXPECT_EQ(appointment.Status(L"Send"), MAPI_E_NO_SUPPORT) << "it is another's meeting";
    request.Child(L"GetAssociatedAppointment", {true});
    EXPECT_EQ(attendee.Count(kCalendar), 1) << "the same one again";
}

TEST_F(MeetingTest, AnswersReachTheOrganizersAppointment) {
    const std::tuple<int, int, const wchar_t*, int> rows[] = {{2, 57, L"Tentative: Review", 1},
                                                              {kAccepted, 56, L"Accepted: Review", 2},
                                                              {4, 55, L"Declined: Review", 0}};
    for (const auto& [response, objectClass, subject, busy] : rows) {
        Outlook().Reset();
        SendRequest();
        SendAnswer(response);
        {
            const Person attendee(Application(), kAttendee);
            const Object appointment = attendee.Newest(kCalendar);
            Expect(appointment, {{L"ResponseStatus", response}, {L"BusyStatus", busy}});
            EXPECT_NE(Shown(appointment.Get(L"ReplyTime")), L"none");
        }
        const Person organizer(Application(), kOrganizer);
        const Object answer = organizer.Newest(kInbox);
        Expect(answer, {{L"Class", objectClass}, {L"Subject", subject}});
        const Object appointment = answer.Child(L"GetAssociatedAppointment", {false});
        EXPECT_EQ(appointment.Number(L"ResponseStatus"), 1) << "the organizer's own";
        const Object recipients = appointment.Child(L"Recipients");
        EXPECT_EQ(recipients.Item(L"Back Office").Number(L"MeetingResponseStatus"), response);
        EXPECT_EQ(recipients.Item(L"Warehouse").Number(L"MeetingResponseStatus"), 0);
        const auto saved = Find(kCalendar, L"Review");
        ASSERT_TRUE(saved);
        EXPECT_EQ(saved->Current().recipients[0].GetOr<mailbox::kPrRecipientTrackStatus>(0), response);
    }
}

TEST_F(MeetingTest, OnlyTheThreeAnswersThereAreAreTaken) {
    SendRequest();
    const Person attendee(Application(), kAttendee);
    const Object appointment = attendee.Appointment(true);
    for (const int response : {0, 1, 5, -1})
        EXPECT_EQ(appointment.Status(L"Respond", {response, true}), E_INVALIDARG) << response;
    EXPECT_EQ(appointment.Status(L"Respond", {kAccepted, false, true}), E_NOTIMPL)
        << "nobody is there to be asked";
    EXPECT_EQ(appointment.Number(L"ResponseStatus"), kNotResponded);
}

TEST_F(MeetingTest, UpdatesAndCancellationsReachTheAttendee) {
    SendRequest();
    SendAnswer(kAccepted);
    SendUpdate({L"Start", At(2026, 3, 3, 11)});
    {
        const Person attendee(Application(), kAttendee);
        ASSERT_EQ(attendee.Count(kInbox), 2);
        const Object first = attendee.Folder(kInbox).Child(L"Items").Child(L"GetFirst");
        const Object update = attendee.Newest(kInbox);
        const Object appointment = update.Child(L"GetAssociatedAppointment", {true});
        EXPECT_EQ(Shown(appointment.Get(L"Start")), L"2026-03-03 11:00");
        EXPECT_EQ(appointment.Number(L"ResponseStatus"), kNotResponded) << "another time is another question";
        EXPECT_EQ(attendee.Count(kCalendar), 1);
        EXPECT_EQ(first.Get(L"IsLatestVersion"), Value(false));
        EXPECT_EQ(update.Get(L"IsLatestVersion"), Value(true));
        first.Child(L"GetAssociatedAppointment", {true});
        EXPECT_EQ(Shown(attendee.Newest(kCalendar).Get(L"Start")), L"2026-03-03 11:00")
            << "what is old changes nothing";
    }
    SendUpdate({L"MeetingStatus", 5});
    const Person attendee(Application(), kAttendee);
    const Object cancellation = attendee.Newest(kInbox);
    Expect(cancellation, {{L"Class", 54}, {L"Subject", L"Canceled: Review"}});
    const Object appointment = cancellation.Child(L"GetAssociatedAppointment", {false});
    Expect(appointment, {{L"MeetingStatus", 7}, {L"BusyStatus", 0}});
    EXPECT_EQ(appointment.Status(L"Respond", {kAccepted, true}), MAPI_E_NO_SUPPORT);
}

/// Two runs on one mailbox folder, each logged on as another.
TEST_F(MeetingTest, ASecondRunIsTheOtherSide) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / (L"meeting-" + std::to_wstring(GetCurrentProcessId()));
    std::filesystem::remove_all(folder);
    ASSERT_TRUE(Outlook().OpenMailbox(folder.wstring()).ok);
    SendRequest();
    ASSERT_TRUE(Outlook().OpenMailbox(folder.wstring()).ok);
    SendAnswer(kAccepted);
    const auto report = Outlook().OpenMailbox(folder.wstring());
    ASSERT_TRUE(report.ok) << report.error;
    {
        const Object nameSpace = QuietNameSpace();
        EXPECT_EQ(nameSpace.Text(L"CurrentProfileName"), kOrganizer)
            << "the folder's own profile is as it was";
        EXPECT_EQ(nameSpace.Child(L"Folders").Number(L"Count"), 3);
    }
    {
        const Person organizer(Application(), kOrganizer);
        EXPECT_EQ(organizer.Appointment(false).Child(L"Recipients").Item(1).Number(L"MeetingResponseStatus"),
                  kAccepted);
    }
    Outlook().Reset();
    std::filesystem::remove_all(folder);
}

TEST_F(MeetingTest, SeriesOfMeetingsStaySeries) {
    {
        const Person organizer(Application(), kOrganizer);
        const Object meeting = NewMeeting();
        meeting.Child(L"GetRecurrencePattern").Put(L"Occurrences", 4);
        meeting.Call(L"Send");
    }
    const Person attendee(Application(), kAttendee);
    const Object appointment = attendee.Appointment(true);
    EXPECT_EQ(appointment.Number(L"RecurrenceState"), 1);
    EXPECT_EQ(appointment.Child(L"GetRecurrencePattern").Number(L"Occurrences"), 4);
}

TEST_F(MeetingTest, MessagesAboutNoMeetingOfTheUsersGiveNothing) {
    SendRequest();
    SendAnswer(kAccepted);
    const Person organizer(Application(), kOrganizer);
    organizer.Newest(kCalendar).Call(L"Delete");
    EXPECT_FALSE(organizer.Appointment(false));
    const Object forward = organizer.Newest(kSentItems).Child(L"Forward");
    EXPECT_EQ(forward.Text(L"MessageClass"), L"IPM.Schedule.Meeting.Request")
        << "a request is passed on as one";
    EXPECT_EQ(forward.Child(L"Recipients").Number(L"Count"), 0);
}

} // namespace
} // namespace outlook_tests
