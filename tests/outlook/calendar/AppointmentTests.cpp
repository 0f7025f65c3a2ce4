// Single appointments: their times, what new ones have, what is stored of them.
#include "Calendar.h"

#include <cmath>

namespace outlook_tests {
namespace {

namespace mailbox = standin::mailbox;

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
    EXPECT_EQ(item.Number(L"Duration"), 30);
    EXPECT_EQ(item.Number(L"ReminderMinutesBeforeStart"), 15);
    EXPECT_EQ(item.Get(L"ReminderSet"), Value(true));
    EXPECT_EQ(item.Number(L"BusyStatus"), 2);
    EXPECT_EQ(item.Number(L"MeetingStatus"), 0);
    EXPECT_EQ(item.Number(L"ResponseStatus"), 0);
    EXPECT_EQ(item.Get(L"ResponseRequested"), Value(true));
    EXPECT_EQ(item.Get(L"AllDayEvent"), Value(false));
    EXPECT_EQ(item.Get(L"IsRecurring"), Value(false));
    EXPECT_EQ(item.Number(L"RecurrenceState"), 0);
    EXPECT_EQ(item.Text(L"Organizer"), L"Front Desk");
    EXPECT_EQ(item.Child(L"GetOrganizer").Text(L"Name"), L"Front Desk");
    EXPECT_EQ(Shown(item.Get(L"ReplyTime")), L"none");
}

TEST_F(CalendarTest, StartEndAndDurationKeepTogether) {
    struct Row {
        const wchar_t* what;
        const wchar_t* member;
        _variant_t value;
        const wchar_t *start, *end;
        int duration;
    };
    const Row rows[] = {
        {L"the end follows the start", L"Start", At(2026, 3, 3, 14), L"2026-03-03 14:00", L"2026-03-03 15:30",
         90},
        {L"the end makes the duration", L"End", At(2026, 3, 2, 10), L"2026-03-02 09:00", L"2026-03-02 10:00",
         60},
        {L"the start gives way to an earlier end", L"End", At(2026, 3, 1, 9), L"2026-03-01 07:30",
         L"2026-03-01 09:00", 90},
        {L"the duration moves the end", L"Duration", Value(45), L"2026-03-02 09:00", L"2026-03-02 09:45", 45},
        {L"nothing is a duration too", L"Duration", Value(0), L"2026-03-02 09:00", L"2026-03-02 09:00", 0},
        {L"all day", L"AllDayEvent", Value(true), L"2026-03-02 00:00", L"2026-03-03 00:00", 1440},
    };
    for (const Row& row : rows) {
        const Object item = NewAppointment(At(2026, 3, 2, 9), 90);
        item.Put(row.member, row.value);
        EXPECT_EQ(Shown(item.Get(L"Start")), row.start) << row.what;
        EXPECT_EQ(Shown(item.Get(L"End")), row.end) << row.what;
        EXPECT_EQ(item.Number(L"Duration"), row.duration) << row.what;
    }
}

TEST_F(CalendarTest, WholeDaysStayWholeDays) {
    const Object item = NewAppointment(At(2026, 3, 2, 22), 4 * 60);
    item.Put(L"AllDayEvent", Value(true));
    EXPECT_EQ(Shown(item.Get(L"End")), L"2026-03-04 00:00") << "it reaches into the second day";
    item.Put(L"Start", At(2026, 3, 5, 8));
    EXPECT_EQ(Shown(item.Get(L"Start")), L"2026-03-05 00:00");
    EXPECT_EQ(item.Number(L"Duration") % 1440, 0);
}

TEST_F(CalendarTest, ImpossibleTimesAreRefused) {
    const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
    EXPECT_EQ(item.TryPut(L"Duration", Value(-1)).Status(), E_INVALIDARG);
    EXPECT_EQ(item.TryPut(L"Start", Date(kNoDate)).Status(), E_INVALIDARG);
    EXPECT_EQ(item.TryPut(L"Start", Date(-1e9)).Status(), E_INVALIDARG);
    EXPECT_EQ(item.TryPut(L"ReminderMinutesBeforeStart", Value(-5)).Status(), E_INVALIDARG);
    EXPECT_EQ(item.TryPut(L"BusyStatus", Value(9)).Status(), E_INVALIDARG);
    EXPECT_EQ(item.TryPut(L"ResponseStatus", Value(3)).Status(), DISP_E_MEMBERNOTFOUND) << "read-only";
    EXPECT_EQ(Shown(item.Get(L"Start")), L"2026-03-02 09:00") << "and nothing changed";
}

/// Whoever reads one of the many properties finds the same time.
TEST_F(CalendarTest, AllTimesAreStored) {
    const Object item = NewAppointment(At(2026, 7, 6, 9), 45);
    item.Put(L"Subject", Value(L"Times"));
    item.Put(L"ReminderMinutesBeforeStart", Value(20));
    item.Call(L"Save");
    const auto message = Find(kCalendar, L"Times");
    ASSERT_TRUE(message);
    const std::wstring start = Shown(item.Get(L"StartUTC")), end = Shown(item.Get(L"EndUTC"));
    EXPECT_EQ(ShownTime(*message->Get<PR_START_DATE>()), start);
    EXPECT_EQ(ShownTime(*message->Get<PR_END_DATE>()), end);
    struct Row {
        const GUID& set;
        unsigned number;
        const std::wstring& time;
    };
    for (const Row& row :
         {Row{kAppointmentSet, 0x820D, start}, Row{kAppointmentSet, 0x820E, end},
          Row{kAppointmentSet, 0x8235, start}, Row{kAppointmentSet, 0x8236, end},
          Row{kCommonSet, 0x8516, start}, Row{kCommonSet, 0x8517, end}, Row{kCommonSet, 0x8502, start}})
        EXPECT_EQ(ShownTime(Named(*message, row.set, row.number, PT_SYSTIME).value_or(mailbox::Null())),
                  row.time)
            << row.number;
    EXPECT_EQ(NamedAs<std::int32_t>(*message, kAppointmentSet, 0x8213, PT_LONG), 45);
    const auto signal = NamedAs<mailbox::SysTime>(*message, kCommonSet, 0x8560, PT_SYSTIME);
    ASSERT_TRUE(signal);
    EXPECT_EQ(message->Get<PR_START_DATE>()->ticks - signal->ticks, 20 * 600'000'000ull);
    EXPECT_EQ(item.Get(L"StartInStartTimeZone"), item.Get(L"Start")) << "in this zone it was made";
}

TEST_F(CalendarTest, MembersAreTheirProperties) {
    struct Row {
        const wchar_t* member;
        _variant_t value;
        const GUID& set;
        unsigned number, type;
    };
    const Row rows[] = {
        {L"Location", Value(L"Room 5"), kAppointmentSet, 0x8208, PT_UNICODE},
        {L"BusyStatus", Value(3), kAppointmentSet, 0x8205, PT_LONG},
        {L"IsOnlineMeeting", Value(true), kAppointmentSet, 0x8240, PT_BOOLEAN},
        {L"NetMeetingType", Value(2), kAppointmentSet, 0x8241, PT_LONG},
        {L"NetMeetingServer", Value(L"srv"), kAppointmentSet, 0x8242, PT_UNICODE},
        {L"NetMeetingOrganizerAlias", Value(L"me"), kAppointmentSet, 0x8243, PT_UNICODE},
        {L"NetMeetingAutoStart", Value(true), kAppointmentSet, 0x8244, PT_BOOLEAN},
        {L"NetMeetingDocPathName", Value(L"C:\\a.doc"), kAppointmentSet, 0x8247, PT_UNICODE},
        {L"NetShowURL", Value(L"http://x"), kAppointmentSet, 0x8248, PT_UNICODE},
        {L"MeetingStatus", Value(1), kAppointmentSet, 0x8217, PT_LONG},
    };
    const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
    for (const Row& row : rows)
        item.Put(row.member, row.value);
    item.Put(L"Subject", Value(L"Stored"));
    item.Call(L"Save");
    const auto message = Find(kCalendar, L"Stored");
    ASSERT_TRUE(message);
    for (const Row& row : rows) {
        EXPECT_EQ(item.Get(row.member), row.value) << row.member;
        const auto stored = Named(*message, row.set, row.number, row.type);
        ASSERT_TRUE(stored) << row.member;
        if (row.type == PT_UNICODE) {
            EXPECT_EQ(std::get<std::wstring>(*stored), std::wstring(row.value.bstrVal)) << row.member;
        } else if (row.type == PT_LONG) {
            EXPECT_EQ(std::get<std::int32_t>(*stored), row.value.lVal) << row.member;
        } else {
            EXPECT_EQ(std::get<bool>(*stored), row.value.boolVal != VARIANT_FALSE) << row.member;
        }
    }
    EXPECT_EQ(item.Number(L"ResponseStatus"), 1) << "a meeting of one's own is organized";
}

TEST_F(CalendarTest, AttendeesAreRecipients) {
    const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
    item.Put(L"RequiredAttendees", Value(L"Warehouse; Service North"));
    item.Put(L"OptionalAttendees", Value(L"Back Office"));
    item.Put(L"Resources", Value(L"Beamer"));
    EXPECT_EQ(item.Child(L"Recipients").Number(L"Count"), 4);
    item.Put(L"RequiredAttendees", Value(L"Warehouse"));
    EXPECT_EQ(item.Child(L"Recipients").Number(L"Count"), 3);
    const Object resource = item.Child(L"Recipients").Child(L"Item", {Value(L"Beamer")});
    EXPECT_EQ(resource.Number(L"Type"), 3);
    resource.Put(L"Type", Value(2));
    EXPECT_EQ(item.Text(L"Resources"), L"");
    EXPECT_EQ(item.Text(L"OptionalAttendees"), L"Back Office; Beamer");
    item.Put(L"Subject", Value(L"People"));
    item.Call(L"Save");
    const auto message = Find(kCalendar, L"People");
    EXPECT_EQ(NamedAs<std::wstring>(*message, kAppointmentSet, 0x823B, PT_UNICODE), L"Warehouse");
    EXPECT_EQ(NamedAs<std::wstring>(*message, kAppointmentSet, 0x8238, PT_UNICODE),
              L"Warehouse; Back Office; Beamer");
}

TEST_F(CalendarTest, EachAppointmentHasItsOwnGlobalId) {
    const Object one = NewAppointment(At(2026, 3, 2, 9), 30), two = NewAppointment(At(2026, 3, 2, 9), 30);
    one.Call(L"Save");
    two.Call(L"Save");
    const std::wstring id = one.Text(L"GlobalAppointmentID");
    EXPECT_EQ(id.substr(0, 32), L"040000008200E00074C5B7101A82E008");
    EXPECT_NE(id, two.Text(L"GlobalAppointmentID"));
    one.Put(L"Location", Value(L"Elsewhere"));
    one.Call(L"Save");
    EXPECT_EQ(one.Text(L"GlobalAppointmentID"), id) << "it stays";
}

TEST_F(CalendarTest, AppointmentsAreFoundByTheirTimes) {
    for (const int day : {3, 1, 2}) {
        const Object item = NewAppointment(At(2026, 3, day, 9), 30);
        item.Put(L"Subject", Value(std::to_wstring(day)));
        item.Call(L"Save");
    }
    const Object items = DefaultFolder(kCalendar).Child(L"Items");
    items.Call(L"Sort", {Value(L"[Start]")});
    EXPECT_EQ(items.Child(L"GetFirst").Text(L"Subject"), L"1");
    const Object found =
        items.Child(L"Restrict", {Value(L"[Start] >= '3/2/2026 9:00 AM' AND [End] < '3/3/2026'")});
    ASSERT_EQ(found.Number(L"Count"), 1);
    EXPECT_EQ(found.Child(L"GetFirst").Text(L"Subject"), L"2");
}

TEST_F(CalendarTest, CopiesGoToOtherFolders) {
    const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
    item.Put(L"Subject", Value(L"Twice"));
    item.Call(L"Save");
    const Object archive = NameSpace().Child(L"Folders").Child(L"Item", {Value(L"Archive")});
    const Object folder = archive.Child(L"Folders").Child(L"Item", {Value(L"Inbox")});
    const Object copy = item.Child(L"CopyTo", {_variant_t(folder.Raw()), Value(0)});
    EXPECT_EQ(copy.Text(L"Subject"), L"Twice");
    EXPECT_EQ(Shown(copy.Get(L"Start")), L"2026-03-02 09:00")
        << "names of properties differ from store to store";
    EXPECT_EQ(folder.Child(L"Items").Number(L"Count"), 1);
    EXPECT_EQ(item.TryCall(L"CopyTo", {_variant_t(folder.Raw()), Value(7)}).Status(), E_INVALIDARG);
}

TEST_F(CalendarTest, RealAppointmentsShowTheirFacts) {
    const Object item = OpenReal("msgClassAppointment.msg", kCalendar);
    if (!item)
        GTEST_SKIP() << "The MSG files of real mail clients are missing: " << VARDEN_MSG_FOLDER;
    EXPECT_EQ(item.Text(L"Subject"), L"Quick brown fox");
    EXPECT_EQ(Shown(item.Get(L"StartUTC")), L"2017-02-28 18:30");
    EXPECT_EQ(Shown(item.Get(L"EndUTC")), L"2017-02-28 19:00");
    EXPECT_EQ(Shown(item.Get(L"StartInStartTimeZone")), L"2017-02-28 13:30") << "Eastern, where it was made";
    EXPECT_EQ(item.Number(L"Duration"), 30);
    EXPECT_EQ(item.Text(L"Location"), L"under lazy dog");
    EXPECT_EQ(item.Text(L"Organizer"), L"Allison, Timothy B.");
    EXPECT_EQ(item.Text(L"RequiredAttendees"), L"Allison, Timothy B.");
    EXPECT_EQ(item.Number(L"RecurrenceState"), 0);
}

} // namespace
} // namespace outlook_tests
