// The fields of appointments, both ways. What a field wrote is looked up in the mailbox.
#include "CalendarTest.h"

#include "standin/mailbox/Msg.h"

#include <filesystem>
#include <fstream>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class AppointmentFieldTest : public CalendarTest {};

TEST_F(AppointmentFieldTest, WhatIsWrittenIsReadBackAndStored) {
    struct Written {
        const wchar_t* field;
        std::wstring data;
        std::wstring read;
        std::optional<NamedValue> stored = {};
    };
    const auto appointment = [](std::uint32_t number, StoredValue value) {
        return NamedValue{&kAppointmentSet, number, std::move(value)};
    };
    const auto common = [](std::uint32_t number, StoredValue value) {
        return NamedValue{&kCommonSet, number, std::move(value)};
    };
    const std::vector<Written> fields{
        {L"Billing Information", L"4711", L"4711", common(0x8535, L"4711")},
        {L"BusyStatus", L"Out of Office", L"Out of Office", appointment(0x8205, 3)},
        {L"Busy Status", L"OutOfOffice", L"Out of Office", appointment(0x8205, 3)},
        {L"Busy Status", L"Free", L"Free", appointment(0x8205, 0)},
        {L"Busy Status", L"Tentative", L"Tentative", appointment(0x8205, 1)},
        {L"Busy Status", L"busy", L"Tentative", appointment(0x8205, 1)}, // passed over
        {L"Busy Status", L"Busy", L"Busy", appointment(0x8205, 2)},
        {L"Categories", L"Red;Blue", L"Red, Blue"},
        {L"Duration", L"45 minutes", L"45", appointment(0x8213, 45)},
        {L"End", L"3/2/2026 10:00 AM", Shown(L"3/2/2026 10:00 AM")},
        {L"Start", L"3/2/2026 8:00 AM", Shown(L"3/2/2026 8:00 AM")},
        {L"Importance", L"High", L"High"},
        {L"Importance", L"N", L"Normal"},
        {L"Label", L"1", L"Important", appointment(0x8214, 1)},
        {L"Label", L"must attend", L"Must Attend", appointment(0x8214, 5)},
        {L"Label", L"10", L"Phone Call", appointment(0x8214, 10)},
        {L"Label", L"BUSINESS", L"Business", appointment(0x8214, 2)},
        {L"Label", L"", L"None", appointment(0x8214, 0)},
        {L"Label", L"Anniversary", L"Anniversary", appointment(0x8214, 9)},
        {L"Label", L"0", L"None", appointment(0x8214, 0)},
        {L"Location", L"Room 5", L"Room 5", appointment(0x8208, L"Room 5")},
        {L"Meeting Status", L"Meeting", L"Meeting", appointment(0x8217, 1)},
        {L"Meeting Status", L"Received", L"Received", appointment(0x8217, 3)},
        {L"Meeting Status", L"Canceled", L"Canceled", appointment(0x8217, 5)},
        {L"Meeting Status", L"", L"NonMeeting", appointment(0x8217, 0)},
        {L"Mileage", L"12 km", L"12 km", common(0x8534, L"12 km")},
        {L"NetMeeting AutoStart", L"T", L"True", appointment(0x8244, true)},
        {L"NetMeeting AutoStart", L"False", L"False", appointment(0x8244, false)},
        {L"NetMeeting Doc Path Name", L"a.doc", L"a.doc", appointment(0x8247, L"a.doc")},
        {L"NetMeeting Office Document", L"b.doc", L"b.doc", appointment(0x8247, L"b.doc")},
        {L"NetMeeting Organizer Alias", L"desk", L"desk", appointment(0x8243, L"desk")},
        {L"NetMeeting Server", L"ils", L"ils", appointment(0x8242, L"ils")},
        {L"NetMeeting Type", L"Net Show", L"Net Show", appointment(0x8241, 1)},
        {L"NetMeeting Type", L"Exchange Conferencing", L"Exchange Conferencing", appointment(0x8241, 2)},
        {L"NetMeeting Type", L"Net Meeting", L"Net Meeting", appointment(0x8241, 0)},
        {L"NetShowURL", L"http://x", L"http://x", appointment(0x8248, L"http://x")},
        {L"Reminder", L"False", L"False", common(0x8503, false)},
        {L"Reminder", L"T", L"True", common(0x8503, true)},
        {L"Remind Beforehand", L"30 minutes", L"30", common(0x8501, 30)},
        {L"Reminder Override Default", L"True", L"True", common(0x851C, true)},
        {L"Reminder Sound", L"True", L"True", common(0x851E, true)},
        {L"Reminder Sound File", L"ding.wav", L"ding.wav", common(0x851F, L"ding.wav")},
        {L"Response Requested", L"yes", L"False"},
        {L"Response Requested", L"True", L"True"},
        {L"Sensitivity", L"Private", L"Private"},
        {L"Sensitivity", L"Confidential", L"Confidential"},
        {L"Subject", L"Visit", L"Visit"},
        {L"All Day Event", L"T", L"True", appointment(0x8215, true)},
        {L"AllDayEvent", L"true", L"False", appointment(0x8215, false)},
        {L"Form Name", L"IPM.Appointment.Visit", L"IPM.Appointment.Visit"},
    };
    NewAppointment(L"Table", L"3/2/2026 9:00 AM");
    for (const Written& field : fields) {
        const std::string about = testing::PrintToString(field.field) + testing::PrintToString(field.data);
        EXPECT_EQ(Set(field.field, field.data), L"0") << about;
        EXPECT_EQ(LastErrorCode(), 0) << about;
        EXPECT_EQ(Get(field.field), field.read) << about;
        if (field.stored) {
            Save();
            EXPECT_EQ(Named(Stored(), *field.stored->set, field.stored->number), field.stored->value)
                << about;
        }
    }
    EXPECT_EQ(Get(L"MessageClass"), L"IPM.Appointment.Visit");
    EXPECT_EQ(Set(L"Companies", L"Hay & Co"), L"0"); // written only
    ExpectFailure(L"VARD_GetFieldData", {L"Companies"}, -1022, L"Invalid field name passed");
    EXPECT_EQ(Get(L"ID"), Save());
    EXPECT_EQ(Named(Stored(), kCommonSet, 0x8539), StoredValue(std::vector<std::wstring>{L"Hay & Co"}));
}

TEST_F(AppointmentFieldTest, ValuesAndNamesThatAreNoneAreRefusedAndChangeNothing) {
    NewAppointment(L"Table", L"3/2/2026 9:00 AM");
    for (const auto& [field, data] : std::vector<std::pair<const wchar_t*, const wchar_t*>>{
             {L"Label", L"11"},
             {L"Label", L"busy"},
             {L"Label", L"-1"},
             {L"Meeting Status", L"meeting"},
             {L"Meeting Status", L"Cancelled"},
             {L"Meeting Response", L"accepted"},
             {L"Meeting Response", L""},
             {L"NetMeeting Type", L"net show"},
             {L"NetMeeting AutoStart", L"true"},
             {L"Importance", L"high"},
             {L"Sensitivity", L"private"},
             {L"Start", L"someday"},
             {L"End", L"someday"},
         }) {
        ExpectFailure(L"VARD_SetFieldData", {field, data}, -1089, L"Invalid value for field");
    }
    EXPECT_EQ(Get(L"Start"), Shown(L"3/2/2026 9:00 AM"));
    for (const wchar_t* name : {L"Is Recurring", L"Recurrence State", L"RecurrenceState", L"BinaryRecurrence",
                                L"Last Modifier Name", L"CreatorName", L"subject", L"Busystatus"}) {
        ExpectFailure(L"VARD_SetFieldData", {name, L"x"}, -1022, L"Invalid field name passed");
    }
    for (const wchar_t* name : {L"IsRecurring", L"Organizer", L"Size", L"ID"}) {
        ExpectFailure(L"VARD_SetFieldData", {name, L"x"}, -1096, L"Field is read-only");
    }
    for (const wchar_t* name : {L"subject", L"CreatorName", L"recurrencestate", L"No Such"}) {
        ExpectFailure(L"VARD_GetFieldData", {name}, -1022, L"Invalid field name passed");
    }
    EXPECT_EQ(Get(L"IsRecurring"), L"False");
    EXPECT_EQ(Get(L"Is Recurring"), L"False");
}

TEST_F(AppointmentFieldTest, WhatOthersWroteIsReadFromTheMessage) {
    MessageToAdd appointment{.subject = L"Review", .body = L"one\r\ntwo\r\n"};
    appointment.more.Set<0x3FFA001F>(L"Service North");
    appointment.more.Set<PR_SENDER_NAME_W>(L"Warehouse");
    PropertyBag to, cc;
    for (auto [row, type, name] : {std::tuple(&to, MAPI_TO, L"Back Office"), {&cc, MAPI_CC, L"Beamer"}}) {
        row->Set<PR_RECIPIENT_TYPE>(type);
        row->Set<PR_DISPLAY_NAME_W>(name);
    }
    OpenAppointment(appointment,
                    {{&kAppointmentSet, 0x8208, L"Room 5"},
                     {&kAppointmentSet, 0x8205, 4},
                     {&kAppointmentSet, 0x8214, 12},
                     {&kAppointmentSet, 0x8217, 2},
                     {&kAppointmentSet, 0x8241, 7},
                     {&kAppointmentSet, 0x8218, 4}},
                    {to, cc});
    const std::vector<std::pair<const wchar_t*, const wchar_t*>> fields{
        {L"Body", L"one\rtwo"}, // no line feeds, and without its last character
        {L"Last Modifier Name", L"Service North"},
        {L"Organizer", L"Warehouse"},
        {L"Required Attendees", L"Back Office"},
        {L"Optional Attendees", L"Beamer"},
        {L"Resources", L"Room 5"}, // the location, by a deliberate mismatch
        {L"Location", L"Room 5"},
        {L"Label", L"Unknown"},
        {L"Busy Status", L""},
        {L"Meeting Status", L""},
        {L"NetMeeting Type", L""},
        {L"Meeting Response", L"Declined"},
        {L"Recurrence State", L"Not Recurring"},
        {L"Binary Recurrence", L""},
        {L"NetMeetingOrganizerAlias", L""},
    };
    for (const auto& [field, text] : fields) {
        EXPECT_EQ(Get(field), text) << testing::PrintToString(field);
        EXPECT_EQ(LastErrorCode(), 0) << testing::PrintToString(field);
    }
    EXPECT_EQ(Set(L"Resources", L"Beamer"), L"0");
    EXPECT_EQ(Get(L"Resources"), L"Room 5");
    OpenAppointment({.subject = L"Bare"});
    ExpectFailure(L"VARD_GetFieldData", {L"Label"}, -1097,
                  L"MAPI Subsystem error\rUnable to get MAPI field for label");
}

TEST_F(AppointmentFieldTest, TheResponseIsReadFromTheAppointmentAndWaitsWhenItIsWritten) {
    for (const auto& [number, word] : std::vector<std::pair<int, const wchar_t*>>{
             {0, L""}, {1, L""}, {2, L"Tentative"}, {3, L"Accepted"}, {4, L"Declined"}, {5, L""}}) {
        OpenAppointment({.subject = L"Asked"}, {{&kAppointmentSet, 0x8218, number}});
        EXPECT_EQ(Get(L"Meeting Response"), word);
    }
    for (const wchar_t* word : {L"Tentative", L"Accepted", L"Declined"}) {
        EXPECT_EQ(Set(L"MeetingResponse", word), L"0");
        EXPECT_EQ(Get(L"MeetingResponse"), L""); // the item doesn't know of it
    }
}

TEST_F(AppointmentFieldTest, SomeFieldsKeepWhatTheyHeldBefore) {
    NewAppointment(L"Review", L"3/2/2026 9:00 AM");
    EXPECT_EQ(Set(L"Location", L"Room 5"), L"0");
    Save();
    EXPECT_EQ(Named(Stored(), kMeetingSet, 0x28), StoredValue(L"Room 5")); // there was none before
    EXPECT_EQ(Set(L"Location", L"Room 6"), L"0");
    Save();
    EXPECT_EQ(Named(Stored(), kMeetingSet, 0x28), StoredValue(L"Room 5"));
    EXPECT_EQ(Named(Stored(), kAppointmentSet, 0x8208), StoredValue(L"Room 6"));

    // A name that the store doesn't know isn't entered there.
    EXPECT_EQ(Set(L"Optional Attendees", L""), L"0");
    EXPECT_FALSE(Calendar().Names().Id(PropertyName{kCommonSet, 0x823Cu}));
    for (const std::uint32_t number : {0x823Bu, 0x823Cu}) {
        Calendar().Names().Id(PropertyName{kCommonSet, number}, true);
    }
    EXPECT_EQ(Set(L"Optional Attendees", L"Warehouse"), L"0");
    Save();
    EXPECT_EQ(Named(Stored(), kCommonSet, 0x823C), StoredValue(L"Warehouse"));
    EXPECT_EQ(Set(L"Optional Attendees", L"Back Office"), L"0");
    Save();
    EXPECT_EQ(Named(Stored(), kCommonSet, 0x823C), StoredValue(L"Warehouse"));
    EXPECT_EQ(Get(L"Optional Attendees"), L"Back Office");

    // The trace of the required attendees goes where the store computes: it is refused, and told, and the
    // attendees are there all the same.
    EXPECT_EQ(Set(L"Required Attendees", L"Warehouse"), L"0");
    EXPECT_EQ(LastErrorText(), L"MAPI Subsystem error\rError: 8004011A\rMAPI_E_COMPUTED");
    Save();
    EXPECT_EQ(Get(L"Required Attendees"), L"Warehouse");
    EXPECT_FALSE(Named(Stored(), kCommonSet, 0x823B));

    for (const wchar_t* field : {L"Optional Attendees", L"RequiredAttendees"}) {
        ExpectFailure(L"VARD_SetFieldData", {field, L"a; (null)"}, -1089,
                      L"Invalid value for field\rThe value '(null)' is an unacceptable Attendee");
    }
    EXPECT_EQ(Set(L"Optional Attendees", L"(NULL)"), L"0"); // with case
    Varden().Watch().FailMember(L"MAPI32::HrSetOneProp", E_ACCESSDENIED);
    EXPECT_EQ(Set(L"Location", L"Room 7"), L"0"); // without its trace
    EXPECT_EQ(Get(L"Location"), L"Room 7");
}

TEST_F(AppointmentFieldTest, FailuresBelowTheFieldsAreTold) {
    OpenAppointment({.subject = L"Bare"});
    Varden().Watch().FailMember(L"AppointmentItem::RecurrenceState", E_FAIL);
    ExpectFailure(
        L"VARD_GetFieldData", {L"RecurrenceState"}, -1097,
        L"MAPI Subsystem error\rError: 80004005\rMAPI_E_CALL_FAILED\rUnable to get recurrence state");
    Varden().Watch().FailMember(L"IMessage::GetIDsFromNames", E_ACCESSDENIED);
    EXPECT_EQ(Get(L"binaryrecurrence"), kError);
    EXPECT_EQ(LastErrorCode(), static_cast<int>(E_ACCESSDENIED));
    Varden().Watch().FailMember(L"IMessage::OpenProperty", E_NOINTERFACE);
    ExpectFailure(L"VARD_GetFieldData", {L"BinaryRecurrence"}, -1097,
                  L"MAPI Subsystem error\rInterface not supported");
}

TEST_F(AppointmentFieldTest, AppointmentsOfRealMailClientsShowTheirFacts) {
    const std::filesystem::path folder = RepositoryPath(L"../shared/msg");
    if (!std::filesystem::exists(folder)) {
        GTEST_SKIP() << "no MSG files in " << folder;
    }
    const auto open = [&](const wchar_t* name) {
        std::ifstream file(folder / name, std::ios::binary);
        const Bytes bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        Content content;
        ASSERT_EQ(ReadMsgBytes(bytes, Calendar().Names(), content), S_OK);
        std::shared_ptr<Message> message;
        ASSERT_EQ(Calendar().Receive(std::move(content), false, message), S_OK);
        ASSERT_EQ(Call(L"VARD_OpenRecord", {ToHex(message->EntryId())}), L"0");
    };
    open(L"msgClassAppointment.msg");
    EXPECT_EQ(Get(L"Subject"), L"Quick brown fox");
    EXPECT_EQ(Get(L"Organizer"), L"Allison, Timothy B.");
    EXPECT_TRUE(Get(L"Body").starts_with(L"This is a meeting to discuss j"));
    EXPECT_EQ(Get(L"Recurrence State"), L"Not Recurring");
    open(L"appointment-weekly.msg");
    EXPECT_EQ(Get(L"Subject"), L"A weekly 1");
    EXPECT_EQ(Get(L"Duration"), L"30");
    EXPECT_EQ(Get(L"Recurrence State"), L"Master");
    EXPECT_TRUE(Get(L"Binary Recurrence").starts_with(L"043004300B200100")); // a weekly pattern
    ASSERT_EQ(Call(L"VARD_RPOpenRecurrencePattern"), L"0");
    EXPECT_EQ(Get(L"Recurrence Type"), L"Weekly");
    EXPECT_EQ(Get(L"Interval"), L"1");
    open(L"appointment-daily.msg");
    EXPECT_EQ(Get(L"Subject"), L"A daily 1");
    EXPECT_EQ(Get(L"All Day Event"), L"True");
    ASSERT_EQ(Call(L"VARD_RPOpenRecurrencePattern"), L"0");
    EXPECT_EQ(Get(L"Recurrence Type"), L"Weekly"); // every working day
    EXPECT_EQ(Get(L"Day of Week Mask"), L"Monday\rTuesday\rWednesday\rThursday\rFriday");
    EXPECT_EQ(Get(L"Interval"), L"1");
}

} // namespace
} // namespace varden::tests
