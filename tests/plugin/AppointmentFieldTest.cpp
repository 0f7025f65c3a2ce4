// The fields of appointments, both ways. What a field wrote is looked up in the mailbox.
#include "FieldTest.h"

#include "standin/mailbox/Tags.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class AppointmentFieldTest : public FieldTest {
protected:
    AppointmentFieldTest() : FieldTest(L"Calendar") {}

    void NewAppointment() {
        New(L"Calendar");
        EXPECT_EQ(Set(L"Start", L"3/2/2026 9:00 AM"), L"0");
    }
};

TEST_F(AppointmentFieldTest, FieldsAndTheirPropertiesFollowEachOther) {
    const wchar_t* const url = L"http://x";
    ExpectOrdinary(L"IPM.Appointment", kUsuallyWritten,
                   {L"Body", L"ID", L"Form Name", L"Message Class", L"Size"});
    ExpectBothWays({.messageClass = L"IPM.Appointment"},
                   {{L"All Day Event", L"True", {sets::kAppointment, 0x8215, true}},
                    {L"Location", L"Room 5", {sets::kAppointment, 0x8208, L"Room 5"}},
                    {L"NetMeeting AutoStart", L"True", {sets::kAppointment, 0x8244, true}},
                    {L"NetMeeting Doc Path Name", L"a.doc", {sets::kAppointment, 0x8247, L"a.doc"}},
                    {L"NetMeeting Office Document", L"a.doc", {sets::kAppointment, 0x8247, L"a.doc"}},
                    {L"NetMeeting Organizer Alias", L"desk", {sets::kAppointment, 0x8243, L"desk"}},
                    {L"NetMeeting Server", L"ils", {sets::kAppointment, 0x8242, L"ils"}},
                    {L"NetShowURL", url, {sets::kAppointment, 0x8248, url}},
                    {L"Remind Beforehand", L"30", {sets::kCommon, 0x8501, 30}},
                    {L"Reminder", L"True", {sets::kCommon, 0x8503, true}},
                    {L"Reminder Override Default", L"True", {sets::kCommon, 0x851C, true}},
                    {L"Reminder Sound", L"True", {sets::kCommon, 0x851E, true}},
                    {L"Reminder Sound File", L"ding.wav", {sets::kCommon, 0x851F, L"ding.wav"}}});
}

TEST_F(AppointmentFieldTest, WhatIsWrittenIsReadBackAndStored) {
    NewAppointment();
    ExpectWrites({{L"BusyStatus", L"Out of Office", L"Out of Office", {sets::kAppointment, 0x8205, 3}},
                  {L"Busy Status", L"Free", L"Free", {sets::kAppointment, 0x8205, 0}},
                  {L"Busy Status", L"OutOfOffice", L"Out of Office", {sets::kAppointment, 0x8205, 3}},
                  {L"Busy Status", L"Tentative", L"Tentative", {sets::kAppointment, 0x8205, 1}},
                  {L"Busy Status", L"busy", L"Tentative", {sets::kAppointment, 0x8205, 1}}, // passed over
                  {L"Busy Status", L"Busy", L"Busy", {sets::kAppointment, 0x8205, 2}},
                  {L"Categories", L"Red;Blue", L"Red, Blue"},
                  {L"Duration", L"45 minutes", L"45", {sets::kAppointment, 0x8213, 45}},
                  {L"End", L"3/2/2026 10:00 AM", DateAsShown(L"3/2/2026 10:00 AM")},
                  {L"Start", L"3/2/2026 8:00 AM", DateAsShown(L"3/2/2026 8:00 AM")},
                  {L"Importance", L"N", L"Normal"},
                  {L"Label", L"1", L"Important", {sets::kAppointment, 0x8214, 1}},
                  {L"Label", L"must attend", L"Must Attend", {sets::kAppointment, 0x8214, 5}},
                  {L"Label", L"10", L"Phone Call", {sets::kAppointment, 0x8214, 10}},
                  {L"Label", L"BUSINESS", L"Business", {sets::kAppointment, 0x8214, 2}},
                  {L"Label", L"", L"None", {sets::kAppointment, 0x8214, 0}},
                  {L"Label", L"Anniversary", L"Anniversary", {sets::kAppointment, 0x8214, 9}},
                  {L"Label", L"0", L"None", {sets::kAppointment, 0x8214, 0}},
                  {L"Meeting Status", L"Meeting", L"Meeting", {sets::kAppointment, 0x8217, 1}},
                  {L"Meeting Status", L"Received", L"Received", {sets::kAppointment, 0x8217, 3}},
                  {L"Meeting Status", L"Canceled", L"Canceled", {sets::kAppointment, 0x8217, 5}},
                  {L"Meeting Status", L"", L"NonMeeting", {sets::kAppointment, 0x8217, 0}},
                  {L"NetMeeting AutoStart", L"T", L"True"},
                  {L"NetMeeting AutoStart", L"False", L"False", {sets::kAppointment, 0x8244, false}},
                  {L"NetMeeting Type", L"Net Show", L"Net Show", {sets::kAppointment, 0x8241, 1}},
                  {L"NetMeeting Type",
                   L"Exchange Conferencing",
                   L"Exchange Conferencing",
                   {sets::kAppointment, 0x8241, 2}},
                  {L"NetMeeting Type", L"Net Meeting", L"Net Meeting", {sets::kAppointment, 0x8241, 0}},
                  {L"Reminder", L"False", L"False", {sets::kCommon, 0x8503, false}},
                  {L"Reminder", L"T", L"True", {sets::kCommon, 0x8503, true}},
                  {L"Remind Beforehand", L"30 minutes", L"30"},
                  {L"Response Requested", L"yes", L"False"},
                  {L"Response Requested", L"True", L"True"},
                  {L"Sensitivity", L"Confidential", L"Confidential"},
                  {L"All Day Event", L"T", L"True", {sets::kAppointment, 0x8215, true}},
                  {L"AllDayEvent", L"true", L"False", {sets::kAppointment, 0x8215, false}},
                  {L"Form Name", L"IPM.Appointment.Visit", L"IPM.Appointment.Visit"}});
    EXPECT_EQ(Get(L"MessageClass"), L"IPM.Appointment.Visit");
    EXPECT_EQ(Set(L"Companies", L"Hay & Co"), L"0"); // written only
    ExpectUnreadable({L"Companies"});
    Save();
    ExpectStored({sets::kCommon, 0x8539, Strings{L"Hay & Co"}});
}

TEST_F(AppointmentFieldTest, ValuesAndNamesThatAreNoneAreRefusedAndChangeNothing) {
    NewAppointment();
    ExpectInvalid({{L"Label", {L"11", L"busy", L"-1"}},
                   {L"Meeting Status", {L"meeting", L"Cancelled"}},
                   {L"Meeting Response", {L"accepted", L""}},
                   {L"NetMeeting Type", {L"net show"}},
                   {L"NetMeeting AutoStart", {L"true"}},
                   {L"Importance", {L"high"}},
                   {L"Sensitivity", {L"private"}},
                   {L"Start", {L"someday"}},
                   {L"End", {L"someday"}}});
    ExpectUnwritable({L"Is Recurring", L"Recurrence State", L"RecurrenceState", L"BinaryRecurrence",
                      L"Last Modifier Name", L"CreatorName", L"subject", L"Busystatus"});
    ExpectUnreadable({L"subject", L"CreatorName", L"recurrencestate", L"No Such"});
    ExpectReads({{L"Start", DateAsShown(L"3/2/2026 9:00 AM")},
                 {L"IsRecurring", L"False"},
                 {L"Is Recurring", L"False"}});
}

TEST_F(AppointmentFieldTest, WhatOthersWroteIsReadFromTheMessage) {
    PropertyBag to, cc;
    for (auto [row, type, name] : {std::tuple(&to, MAPI_TO, L"Back Office"), {&cc, MAPI_CC, L"Beamer"}}) {
        row->Set<PR_RECIPIENT_TYPE>(type);
        row->Set<PR_DISPLAY_NAME_W>(name);
    }
    const FieldTexts fields{
        {L"Body",
         L"one\rtwo",
         {PR_BODY_W, L"one\r\ntwo\r\n"}}, // no line feeds, and without its last character
        {L"Last Modifier Name", L"Service North", {kPrLastModifierName, L"Service North"}},
        {L"Organizer", L"Warehouse", {PR_SENDER_NAME_W, L"Warehouse"}},
        {L"Required Attendees", L"Back Office"},
        {L"Optional Attendees", L"Beamer"},
        {L"Location", L"Room 5", {sets::kAppointment, 0x8208, L"Room 5"}},
        {L"Resources", L"Room 5"}, // the location, by a deliberate mismatch
        {L"Label", L"Unknown", {sets::kAppointment, 0x8214, 12}},
        {L"Busy Status", L"", {sets::kAppointment, 0x8205, 4}},
        {L"Meeting Status", L"", {sets::kAppointment, 0x8217, 2}},
        {L"NetMeeting Type", L"", {sets::kAppointment, 0x8241, 7}},
        {L"Recurrence State", L"Not Recurring"},
        {L"Binary Recurrence", L""},
        {L"NetMeetingOrganizerAlias", L""},
    };
    MessageToAdd appointment{.messageClass = L"IPM.Appointment"};
    Put(appointment, fields);
    Open(appointment, {to, cc});
    ExpectReads(fields);
    EXPECT_EQ(Set(L"Resources", L"Beamer"), L"0");
    EXPECT_EQ(Get(L"Resources"), L"Room 5");
    Open({.messageClass = L"IPM.Appointment"});
    ExpectFailure(L"VARD_GetFieldData", {L"Label"}, errors::Mapi(L"Unable to get MAPI field for label"));
}

TEST_F(AppointmentFieldTest, TheResponseIsReadFromTheAppointmentAndWaitsWhenItIsWritten) {
    for (const auto& [number, word] : std::vector<std::pair<int, const wchar_t*>>{
             {0, L""}, {1, L""}, {2, L"Tentative"}, {3, L"Accepted"}, {4, L"Declined"}, {5, L""}}) {
        ExpectShown({.messageClass = L"IPM.Appointment"},
                    {{L"Meeting Response", word, {sets::kAppointment, 0x8218, number}}});
    }
    for (const wchar_t* word : {L"Tentative", L"Accepted", L"Declined"}) {
        ExpectWrites({{L"MeetingResponse", word, L""}}); // the item doesn't know of it
    }
}

TEST_F(AppointmentFieldTest, SomeFieldsKeepWhatTheyHeldBefore) {
    NewAppointment();
    ExpectWrites(
        {{L"Location", L"Room 5", L"Room 5", {sets::kMeeting, 0x28, L"Room 5"}}, // there was none before
         {L"Location", L"Room 6", L"Room 6", {sets::kMeeting, 0x28, L"Room 5"}}});
    ExpectStored({sets::kAppointment, 0x8208, L"Room 6"});

    // A name that the store doesn't know isn't entered there.
    EXPECT_EQ(Set(L"Optional Attendees", L""), L"0");
    EXPECT_FALSE(Home().Names().Id(PropertyName{sets::kCommon, 0x823Cu}));
    for (const std::uint32_t number : {0x823Bu, 0x823Cu}) {
        Home().Names().Id(PropertyName{sets::kCommon, number}, true);
    }
    for (const wchar_t* attendee : {L"Warehouse", L"Back Office"}) {
        EXPECT_EQ(Set(L"Optional Attendees", attendee), L"0");
        Save();
        ExpectStored({sets::kCommon, 0x823C, L"Warehouse"});
        EXPECT_EQ(Get(L"Optional Attendees"), attendee);
    }

    // The trace of the required attendees goes where the store computes: it is refused, and told, and the
    // attendees are there all the same.
    EXPECT_EQ(Set(L"Required Attendees", L"Warehouse"), L"0");
    EXPECT_EQ(LastErrorText(), L"MAPI Subsystem error\rError: 8004011A\rMAPI_E_COMPUTED");
    Save();
    EXPECT_EQ(Get(L"Required Attendees"), L"Warehouse");
    EXPECT_FALSE(StoredValue(sets::kCommon, 0x823B));

    for (const wchar_t* field : {L"Optional Attendees", L"RequiredAttendees"}) {
        ExpectFailure(L"VARD_SetFieldData", {field, L"a; (null)"}, -1089,
                      L"Invalid value for field\rThe value '(null)' is an unacceptable Attendee");
    }
    EXPECT_EQ(Set(L"Optional Attendees", L"(NULL)"), L"0"); // with case
    Fail(L"MAPI32::HrSetOneProp");
    EXPECT_EQ(Set(L"Location", L"Room 7"), L"0"); // without its trace
    EXPECT_EQ(Get(L"Location"), L"Room 7");
}

TEST_F(AppointmentFieldTest, FailuresBelowTheFieldsAreTold) {
    Open({.messageClass = L"IPM.Appointment"});
    ExpectFaults(
        L"VARD_GetFieldData", {L"RecurrenceState"},
        {{L"AppointmentItem::RecurrenceState",
          errors::Mapi(L"Error: 80004005\rMAPI_E_CALL_FAILED\rUnable to get recurrence state"), E_FAIL}});
    Fail(L"IMessage::GetIDsFromNames");
    EXPECT_EQ(Get(L"binaryrecurrence"), kError);
    EXPECT_EQ(LastErrorCode(), static_cast<int>(E_ACCESSDENIED));
    ExpectFaults(L"VARD_GetFieldData", {L"BinaryRecurrence"},
                 {{L"IMessage::OpenProperty", errors::Mapi(L"Interface not supported"), E_NOINTERFACE}});
}

} // namespace
} // namespace varden::tests
