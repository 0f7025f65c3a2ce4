// Single appointments: their times, what new ones have, what is stored of them.
#include "Calendar.h"

#include <cmath>

namespace outlook_tests {
namespace {

TEST_F(CalendarTest, NewAppointmentsAreHalfAnHourFromTheNextHalfHourOn) {
    const Object item = NewItem(kAppointmentItem);
    SYSTEMTIME now{};
    GetLocalTime(&now);
    double present = 0;
    SystemTimeToVariantTime(&now, &present);
    const double start = item.Get(L"Start").date;
    EXPECT_GT(start, present - 1.0 / 1440);
    EXPECT_LE(start, present + 30.0 / 1440);
    EXPECT_NEAR(start * 48, std::round(start * 48), 0.001);
    Expect(item, {{L"Duration", 30}, {L"ReminderMinutesBeforeStart", 15}, {L"ReminderSet", true}});
    Expect(item, {{L"BusyStatus", 2}, {L"MeetingStatus", 0}, {L"ResponseStatus", 0}});
    Expect(item, {{L"ResponseRequested", true}, {L"AllDayEvent", false}, {L"IsRecurring", false}});
    Expect(item, {{L"RecurrenceState", 0}, {L"Organizer", L"Front Desk"}});
    EXPECT_EQ(item.Child(L"GetOrganizer").Text(L"Name"), L"Front Desk");
    EXPECT_EQ(Shown(item.Get(L"ReplyTime")), L"none");
}

TEST_F(CalendarTest, StartEndAndDurationKeepTogether) {
    const auto times = [](const _variant_t& start, const _variant_t& end, int duration) {
        return Facts{{L"Start", start}, {L"End", end}, {L"Duration", duration}};
    };
    const auto on = [](int day, int hour, int minute = 0) { return At(2026, 3, day, hour, minute); };
    const std::tuple<const char*, Is, Facts> rows[] = {
        {"the end follows the start", {L"Start", on(3, 14)}, times(on(3, 14), on(3, 15, 30), 90)},
        {"the end makes the duration", {L"End", on(2, 10)}, times(on(2, 9), on(2, 10), 60)},
        {"the start gives way to an earlier end", {L"End", on(1, 9)}, times(on(1, 7, 30), on(1, 9), 90)},
        {"the duration moves the end", {L"Duration", 45}, times(on(2, 9), on(2, 9, 45), 45)},
        {"nothing is a duration too", {L"Duration", 0}, times(on(2, 9), on(2, 9), 0)},
        {"all day", {L"AllDayEvent", true}, times(on(2, 0), on(3, 0), 1440)},
    };
    for (const auto& [what, change, after] : rows) {
        SCOPED_TRACE(what);
        const Object item = NewAppointment(At(2026, 3, 2, 9), 90);
        PutAll(item, {change});
        Expect(item, after);
    }
}

TEST_F(CalendarTest, WholeDaysStayWholeDays) {
    const Object item = NewAppointment(At(2026, 3, 2, 22), 4 * 60);
    item.Put(L"AllDayEvent", true);
    EXPECT_EQ(Shown(item.Get(L"End")), L"2026-03-04 00:00") << "it reaches into the second day";
    item.Put(L"Start", At(2026, 3, 5, 8));
    EXPECT_EQ(Shown(item.Get(L"Start")), L"2026-03-05 00:00");
    EXPECT_EQ(item.Number(L"Duration") % 1440, 0);
}

TEST_F(CalendarTest, ImpossibleTimesAreRefused) {
    const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
    ExpectRefused(item, E_INVALIDARG,
                  {{L"Duration", -1},
                   {L"Start", Date(kNoDate)},
                   {L"Start", Date(-1e9)},
                   {L"ReminderMinutesBeforeStart", -5},
                   {L"BusyStatus", 9}});
    ExpectRefused(item, DISP_E_MEMBERNOTFOUND, {{L"ResponseStatus", 3}});
    EXPECT_EQ(Shown(item.Get(L"Start")), L"2026-03-02 09:00") << "and nothing changed";
}

/// Whoever reads one of the many properties finds the same time.
TEST_F(CalendarTest, AllTimesAreStored) {
    const Object item = NewAppointment(At(2026, 7, 6, 9), 45);
    item.Put(L"ReminderMinutesBeforeStart", 20);
    const Object saved = Reopened(item);
    const _variant_t start = saved.Get(L"StartUTC"), end = saved.Get(L"EndUTC");
    for (const std::wstring& property :
         {Tag(0x00600040), Id(kAppointmentSet, 0x820D0040), Id(kAppointmentSet, 0x82350040),
          Id(kCommonSet, 0x85160040), Id(kCommonSet, 0x85020040)})
        EXPECT_EQ(Shown(Stored(saved, property)), Shown(start)) << property;
    for (const std::wstring& property : {Tag(0x00610040), Id(kAppointmentSet, 0x820E0040),
                                         Id(kAppointmentSet, 0x82360040), Id(kCommonSet, 0x85170040)})
        EXPECT_EQ(Shown(Stored(saved, property)), Shown(end)) << property;
    ExpectStored(saved, {{Id(kAppointmentSet, 0x82130003), 45}});
    const _variant_t signal = Stored(saved, Id(kCommonSet, 0x85600040));
    EXPECT_NEAR(start.date - signal.date, 20.0 / 1440, 1e-6);
    EXPECT_EQ(saved.Get(L"StartInStartTimeZone"), saved.Get(L"Start")) << "in this zone it was made";
}

TEST_F(CalendarTest, MembersAreTheirProperties) {
    const std::tuple<const wchar_t*, Value, std::uint32_t> rows[] = {
        {L"Location", L"Room 5", 0x8208001F},       {L"BusyStatus", 3, 0x82050003},
        {L"IsOnlineMeeting", true, 0x8240000B},     {L"NetMeetingType", 2, 0x82410003},
        {L"NetMeetingServer", L"srv", 0x8242001F},  {L"NetMeetingOrganizerAlias", L"me", 0x8243001F},
        {L"NetMeetingAutoStart", true, 0x8244000B}, {L"NetMeetingDocPathName", L"C:\\a.doc", 0x8247001F},
        {L"NetShowURL", L"http://x", 0x8248001F},   {L"MeetingStatus", 1, 0x82170003},
    };
    const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
    for (const auto& [member, value, id] : rows)
        item.Put(member, value);
    const Object saved = Reopened(item);
    for (const auto& [member, value, id] : rows) {
        Expect(saved, {{member, value}});
        ExpectStored(saved, {{Id(kAppointmentSet, id), value}});
    }
    EXPECT_EQ(saved.Number(L"ResponseStatus"), 1) << "a meeting of one's own is organized";
}

TEST_F(CalendarTest, AttendeesAreRecipients) {
    const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
    PutAll(item, {{L"RequiredAttendees", L"Warehouse; Service North"}});
    PutAll(item, {{L"OptionalAttendees", L"Back Office"}, {L"Resources", L"Beamer"}});
    EXPECT_EQ(item.Child(L"Recipients").Number(L"Count"), 4);
    item.Put(L"RequiredAttendees", L"Warehouse");
    EXPECT_EQ(item.Child(L"Recipients").Number(L"Count"), 3);
    const Object resource = item.Child(L"Recipients").Item(L"Beamer");
    EXPECT_EQ(resource.Number(L"Type"), 3);
    resource.Put(L"Type", 2);
    Expect(item, {{L"Resources", L""}, {L"OptionalAttendees", L"Back Office; Beamer"}});
    ExpectStored(Reopened(item), {{Id(kAppointmentSet, 0x823B001F), L"Warehouse"},
                                  {Id(kAppointmentSet, 0x8238001F), L"Warehouse; Back Office; Beamer"}});
}

TEST_F(CalendarTest, EachAppointmentHasItsOwnGlobalId) {
    const Object one = NewAppointment(At(2026, 3, 2, 9), 30), two = NewAppointment(At(2026, 3, 2, 9), 30);
    one.Call(L"Save");
    two.Call(L"Save");
    const std::wstring id = one.Text(L"GlobalAppointmentID");
    EXPECT_EQ(id.substr(0, 32), L"040000008200E00074C5B7101A82E008");
    EXPECT_NE(id, two.Text(L"GlobalAppointmentID"));
    one.Put(L"Location", L"Elsewhere");
    one.Call(L"Save");
    EXPECT_EQ(one.Text(L"GlobalAppointmentID"), id) << "it stays";
}

TEST_F(CalendarTest, AppointmentsAreFoundByTheirTimes) {
    for (const int day : {3, 1, 2}) {
        const Object item = NewAppointment(At(2026, 3, day, 9), 30);
        item.Put(L"Subject", std::to_wstring(day));
        item.Call(L"Save");
    }
    const Object items = Items(kCalendar);
    items.Call(L"Sort", {L"[Start]"});
    EXPECT_EQ(items.Child(L"GetFirst").Text(L"Subject"), L"1");
    const Object found = items.Child(L"Restrict", {L"[Start] >= '3/2/2026 9:00 AM' AND [End] < '3/3/2026'"});
    ASSERT_EQ(found.Number(L"Count"), 1);
    EXPECT_EQ(found.Child(L"GetFirst").Text(L"Subject"), L"2");
}

TEST_F(CalendarTest, CopiesGoToOtherFolders) {
    const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
    item.Put(L"Subject", L"Twice");
    item.Call(L"Save");
    const Object folder = Archive().Child(L"Folders", {L"Inbox"});
    // Names of properties differ from store to store.
    Expect(item.Child(L"CopyTo", {folder, 0}), {{L"Subject", L"Twice"}, {L"Start", At(2026, 3, 2, 9)}});
    EXPECT_EQ(folder.Child(L"Items").Number(L"Count"), 1);
    EXPECT_EQ(item.Status(L"CopyTo", {folder, 7}), E_INVALIDARG);
}

TEST_F(CalendarTest, RealAppointmentsShowTheirFacts) {
    const Object item = OpenReal(L"msgClassAppointment.msg");
    if (!item)
        GTEST_SKIP() << "The MSG files of real mail clients are missing: " << VARDEN_MSG_FOLDER;
    Expect(item, {{L"Subject", L"Quick brown fox"}, {L"StartUTC", At(2017, 2, 28, 18, 30)}});
    Expect(item, {{L"EndUTC", At(2017, 2, 28, 19)}});
    EXPECT_EQ(Shown(item.Get(L"StartInStartTimeZone")), L"2017-02-28 13:30") << "Eastern, where it was made";
    Expect(item, {{L"Duration", 30}, {L"Location", L"under lazy dog"}});
    Expect(item, {{L"Organizer", L"Allison, Timothy B."}, {L"RequiredAttendees", L"Allison, Timothy B."}});
    Expect(item, {{L"RecurrenceState", 0}});
}

} // namespace
} // namespace outlook_tests
