// Recurrence patterns of appointments and tasks: every type, what it takes and refuses, and how it is stored.
#include "Calendar.h"

#include "standin/mailbox/Tags.h"

#include <algorithm>

namespace outlook_tests {
namespace {

namespace mailbox = standin::mailbox;

constexpr int kDaily = 0, kWeekly = 1, kMonthly = 2, kMonthNth = 3, kYearly = 5, kYearNth = 6;

/// A series from Monday, 2 March 2026, at nine, for half an hour.
class RecurrenceTest : public CalendarTest {
protected:
    Object NewSeries(const wchar_t* subject, int type = kWeekly) const {
        const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
        item.Put(L"Subject", Value(subject));
        item.Child(L"GetRecurrencePattern").Put(L"RecurrenceType", Value(type));
        return item;
    }

    /// The item as whoever opens it anew sees it.
    Object Reopened(const Object& item) const {
        return NameSpace().Child(L"GetItemFromID", {Value(item.Text(L"EntryID"))});
    }

    mailbox::Bytes BlobOf(const std::wstring& subject) {
        const auto message = Find(kCalendar, subject);
        return message ? NamedAs<mailbox::Bytes>(*message, kAppointmentSet, 0x8216, PT_BINARY)
                             .value_or(mailbox::Bytes())
                       : mailbox::Bytes();
    }
};

TEST_F(RecurrenceTest, OpeningThePatternMakesASeries) {
    const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
    const Object pattern = item.Child(L"GetRecurrencePattern");
    EXPECT_EQ(item.Get(L"IsRecurring"), Value(true));
    EXPECT_EQ(item.Number(L"RecurrenceState"), 1);
    EXPECT_EQ(pattern.Number(L"RecurrenceType"), kWeekly);
    EXPECT_EQ(pattern.Number(L"DayOfWeekMask"), 2);
    EXPECT_EQ(pattern.Number(L"Interval"), 1);
    EXPECT_EQ(pattern.Get(L"NoEndDate"), Value(true));
    EXPECT_EQ(Shown(pattern.Get(L"PatternStartDate")), L"2026-03-02 00:00");
    EXPECT_EQ(Shown(pattern.Get(L"PatternEndDate")), L"none");
    EXPECT_EQ(pattern.Get(L"StartTime"), TimeOfDay(9));
    EXPECT_EQ(pattern.Get(L"EndTime"), TimeOfDay(9, 30));
    EXPECT_EQ(pattern.Number(L"Duration"), 30);
    EXPECT_EQ(pattern.Child(L"Exceptions").Number(L"Count"), 0);
    EXPECT_EQ(pattern.Child(L"Parent").Text(L"MessageClass"), L"IPM.Appointment");

    item.Call(L"ClearRecurrencePattern");
    EXPECT_EQ(item.Number(L"RecurrenceState"), 0);
    EXPECT_EQ(Shown(item.Get(L"Start")), L"2026-03-02 09:00");
    EXPECT_EQ(pattern.TryGet(L"Interval").Status(), E_FAIL) << "the pattern is gone";
}

struct PatternValue {
    const wchar_t* member;
    int value;
};

TEST_F(RecurrenceTest, EachTypeKeepsItsOwnNumbersAndRefusesOthers) {
    constexpr const wchar_t* kMembers[] = {L"DayOfMonth", L"DayOfWeekMask", L"Instance", L"Interval",
                                           L"MonthOfYear"};
    struct Row {
        int type;
        std::vector<PatternValue> values;
        const wchar_t* first; ///< occurrence
        int storedType;
    };
    const Row rows[] = {
        {kDaily, {{L"Interval", 3}}, L"2026-03-02 09:00", 1},
        {kWeekly, {{L"Interval", 2}, {L"DayOfWeekMask", 40}}, L"2026-03-04 09:00", 2},
        {kMonthly, {{L"Interval", 2}, {L"DayOfMonth", 31}}, L"2026-03-31 09:00", 3},
        {kMonthNth, {{L"Interval", 1}, {L"DayOfWeekMask", 32}, {L"Instance", 5}}, L"2026-03-27 09:00", 3},
        {kYearly, {{L"Interval", 12}, {L"DayOfMonth", 24}, {L"MonthOfYear", 12}}, L"2026-12-24 09:00", 4},
        {kYearNth,
         {{L"Interval", 24}, {L"DayOfWeekMask", 1}, {L"Instance", 2}, {L"MonthOfYear", 5}},
         L"2026-05-10 09:00",
         4},
    };
    for (const Row& row : rows) {
        const std::wstring subject = L"Type " + std::to_wstring(row.type);
        const Object item = NewSeries(subject.c_str(), row.type);
        const Object pattern = item.Child(L"GetRecurrencePattern");
        for (const wchar_t* member : kMembers) {
            const auto own =
                std::ranges::find(row.values, std::wstring_view(member),
                                  [](const PatternValue& each) { return std::wstring_view(each.member); });
            if (own != row.values.end()) {
                pattern.Put(member, Value(own->value));
            } else {
                EXPECT_EQ(pattern.TryPut(member, Value(1)).Status(), E_FAIL) << subject << ' ' << member;
                EXPECT_EQ(pattern.Number(member), 0) << subject << ' ' << member;
            }
        }
        item.Call(L"Save");
        const Object again = Reopened(item);
        const Object stored = again.Child(L"GetRecurrencePattern");
        EXPECT_EQ(stored.Number(L"RecurrenceType"), row.type);
        for (const PatternValue& each : row.values)
            EXPECT_EQ(stored.Number(each.member), each.value) << subject << ' ' << each.member;
        EXPECT_EQ(Shown(again.Get(L"Start")), row.first) << subject;
        EXPECT_EQ(Shown(stored.Get(L"PatternStartDate")).substr(0, 10), std::wstring(row.first).substr(0, 10))
            << subject;
        const auto message = Find(kCalendar, subject);
        EXPECT_EQ(NamedAs<std::int32_t>(*message, kAppointmentSet, 0x8231, PT_LONG), row.storedType)
            << subject;
    }
}

TEST_F(RecurrenceTest, NumbersOutOfRangeAreRefused) {
    struct Row {
        int type;
        const wchar_t* member;
        int value;
    };
    const Row rows[] = {
        {kDaily, L"Interval", 0},         {kDaily, L"Interval", 1000},     {kYearly, L"Interval", 5},
        {kWeekly, L"DayOfWeekMask", 128}, {kWeekly, L"DayOfWeekMask", -1}, {kMonthly, L"DayOfMonth", 32},
        {kMonthly, L"DayOfMonth", 0},     {kMonthNth, L"Instance", 6},     {kYearNth, L"MonthOfYear", 13},
        {kDaily, L"Occurrences", 0},      {kDaily, L"Occurrences", 1000},  {kDaily, L"Duration", -1},
        {kDaily, L"RecurrenceType", 4},   {kDaily, L"RecurrenceType", 7},
    };
    for (const Row& row : rows) {
        const Object pattern = NewSeries(L"Range", row.type).Child(L"GetRecurrencePattern");
        const _variant_t before = pattern.Get(row.member);
        EXPECT_EQ(pattern.TryPut(row.member, Value(row.value)).Status(), E_INVALIDARG) << row.member;
        EXPECT_EQ(pattern.Get(row.member), before) << row.member;
    }
    const Object pattern = NewSeries(L"Range").Child(L"GetRecurrencePattern");
    EXPECT_EQ(pattern.TryPut(L"PatternEndDate", At(2026, 3, 1)).Status(), E_INVALIDARG) << "before the start";
    EXPECT_EQ(pattern.TryPut(L"PatternStartDate", Date(-1e9)).Status(), E_INVALIDARG) << "no date";
    EXPECT_EQ(pattern.TryPut(L"StartTime", Date(-1e9)).Status(), E_INVALIDARG);
    EXPECT_EQ(pattern.TryPut(L"Regenerate", Value(true)).Status(), E_FAIL) << "for tasks only";
}

TEST_F(RecurrenceTest, AnotherTypeBeginsAnew) {
    const Object item = NewSeries(L"Anew", kMonthNth);
    const Object pattern = item.Child(L"GetRecurrencePattern");
    pattern.Put(L"Interval", Value(4));
    pattern.Put(L"Occurrences", Value(6));
    pattern.Put(L"RecurrenceType", Value(kMonthly));
    EXPECT_EQ(pattern.Number(L"Interval"), 1);
    EXPECT_EQ(pattern.Number(L"DayOfMonth"), 2);
    EXPECT_EQ(pattern.Number(L"Instance"), 0);
    EXPECT_EQ(pattern.Get(L"NoEndDate"), Value(true));
    EXPECT_EQ(pattern.Get(L"StartTime"), TimeOfDay(9));
}

TEST_F(RecurrenceTest, OneEndTakesTheOthersPlace) {
    const Object pattern = NewSeries(L"End").Child(L"GetRecurrencePattern");
    pattern.Put(L"Occurrences", Value(4));
    EXPECT_EQ(Shown(pattern.Get(L"PatternEndDate")), L"2026-03-23 00:00");
    EXPECT_EQ(pattern.Get(L"NoEndDate"), Value(false));
    pattern.Put(L"PatternEndDate", At(2026, 4, 1));
    EXPECT_EQ(pattern.Number(L"Occurrences"), 5);
    EXPECT_EQ(Shown(pattern.Get(L"PatternEndDate")), L"2026-04-01 00:00");
    pattern.Put(L"DayOfWeekMask", Value(6));
    EXPECT_EQ(pattern.Number(L"Occurrences"), 10) << "twice a week until then";
    pattern.Put(L"NoEndDate", Value(true));
    EXPECT_EQ(Shown(pattern.Get(L"PatternEndDate")), L"none");
    pattern.Put(L"NoEndDate", Value(false));
    EXPECT_EQ(pattern.Number(L"Occurrences"), 10);
}

TEST_F(RecurrenceTest, TheTimesOfDayKeepTogether) {
    const Object item = NewSeries(L"Times");
    const Object pattern = item.Child(L"GetRecurrencePattern");
    pattern.Put(L"StartTime", TimeOfDay(14));
    EXPECT_EQ(pattern.Get(L"EndTime"), TimeOfDay(14, 30));
    EXPECT_EQ(Shown(item.Get(L"Start")), L"2026-03-02 14:00") << "the appointment follows";
    pattern.Put(L"EndTime", TimeOfDay(1));
    EXPECT_EQ(pattern.Number(L"Duration"), 11 * 60) << "into the next day";
    pattern.Put(L"Duration", Value(60));
    EXPECT_EQ(pattern.Get(L"EndTime"), TimeOfDay(15));
    pattern.Put(L"PatternStartDate", At(2026, 3, 10));
    EXPECT_EQ(Shown(item.Get(L"Start")), L"2026-03-16 14:00") << "the first Monday from then on";
    item.Put(L"Start", At(2026, 3, 23, 8));
    EXPECT_EQ(pattern.Get(L"StartTime"), TimeOfDay(8)) << "and the pattern follows the appointment";
    EXPECT_EQ(Shown(pattern.Get(L"PatternStartDate")), L"2026-03-23 00:00");
}

/// The product's own edit of the bytes: a weekly pattern becomes one of the five working days.
TEST_F(RecurrenceTest, BytesThatOthersWroteAreSeen) {
    const Object item = NewSeries(L"Bytes", kMonthly);
    item.Call(L"Save");
    const Object open = Reopened(item);
    const Object accessor = open.Child(L"PropertyAccessor");
    const wchar_t* const name =
        L"http://schemas.microsoft.com/mapi/id/{00062002-0000-0000-C000-000000000046}/82160102";
    mailbox::Bytes blob = BlobOf(L"Bytes");
    ASSERT_GT(blob.size(), 22u);
    for (const auto& [offset, byte] :
         {std::pair{4, 0x0B}, {5, 0x20}, {6, 0x02}, {10, 0xC0}, {14, 0x01}, {22, 0x3E}})
        blob[static_cast<std::size_t>(offset)] = static_cast<std::uint8_t>(byte);
    SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(blob.size()));
    void* data = nullptr;
    ASSERT_EQ(SafeArrayAccessData(array, &data), S_OK);
    std::ranges::copy(blob, static_cast<std::uint8_t*>(data));
    SafeArrayUnaccessData(array);
    _variant_t value;
    value.vt = VT_ARRAY | VT_UI1;
    value.parray = array;
    accessor.Call(L"SetProperty", {Value(name), value});
    const Object pattern = open.Child(L"GetRecurrencePattern");
    EXPECT_EQ(pattern.Number(L"RecurrenceType"), kWeekly);
    EXPECT_EQ(pattern.Number(L"DayOfWeekMask"), 62);
}

TEST_F(RecurrenceTest, ASeriesIsStoredWithItsCompanions) {
    const Object item = NewSeries(L"Stored");
    item.Child(L"GetRecurrencePattern").Put(L"Occurrences", Value(3));
    item.Call(L"Save");
    const auto message = Find(kCalendar, L"Stored");
    ASSERT_TRUE(message);
    EXPECT_EQ(NamedAs<bool>(*message, kAppointmentSet, 0x8223, PT_BOOLEAN), true);
    EXPECT_EQ(NamedAs<bool>(*message, kMeetingSet, 0x0005, PT_BOOLEAN), true);
    EXPECT_EQ(NamedAs<std::wstring>(*message, kAppointmentSet, 0x8232, PT_UNICODE),
              L"every Monday from 9:00 AM to 9:30 AM");
    EXPECT_EQ(NamedAs<mailbox::Bytes>(*message, kAppointmentSet, 0x8233, PT_BINARY)->size(), 48u);
    EXPECT_TRUE(Named(*message, kAppointmentSet, 0x8260, PT_BINARY));
    EXPECT_EQ(message->Get<mailbox::kPrIconIndex>(), 1025);
    const mailbox::Bytes blob = BlobOf(L"Stored");
    EXPECT_EQ(mailbox::Bytes(blob.begin(), blob.begin() + 8),
              mailbox::Bytes({4, 0x30, 4, 0x30, 0x0B, 0x20, 1, 0}));
    EXPECT_EQ(blob[22], 2) << "Monday";
    EXPECT_EQ(blob[26], 0x22) << "ends after a count";
    EXPECT_EQ(blob[30], 3);
}

TEST_F(RecurrenceTest, RealSeriesShowTheirFacts) {
    const Object weekly = OpenReal("appointment-weekly.msg", kCalendar);
    const Object daily = OpenReal("appointment-daily.msg", kCalendar);
    if (!weekly || !daily)
        GTEST_SKIP() << "The MSG files of real mail clients are missing: " << VARDEN_MSG_FOLDER;
    const Object pattern = weekly.Child(L"GetRecurrencePattern");
    EXPECT_EQ(pattern.Number(L"RecurrenceType"), kWeekly);
    EXPECT_EQ(pattern.Number(L"Interval"), 1);
    EXPECT_EQ(pattern.Number(L"Duration"), 30);
    EXPECT_EQ(Shown(weekly.Get(L"StartUTC")), L"2022-12-12 07:00");
    const Object first = pattern.Child(L"GetOccurrence", {weekly.Get(L"Start")});
    EXPECT_EQ(first.Text(L"Subject"), L"A weekly 1");
    EXPECT_EQ(Shown(first.Get(L"StartUTC")), L"2022-12-12 07:00") << "in the zone in which it was made";

    // Every weekday, which the file calls daily, looks like a weekly pattern.
    const Object everyDay = daily.Child(L"GetRecurrencePattern");
    EXPECT_EQ(everyDay.Number(L"RecurrenceType"), kWeekly);
    EXPECT_EQ(everyDay.Number(L"Interval"), 1);
}

TEST_F(RecurrenceTest, TasksRecurWithoutTimes) {
    const Object task = NewItem(kTaskItem);
    task.Put(L"DueDate", At(2026, 3, 4));
    task.Put(L"Subject", Value(L"Again"));
    const Object pattern = task.Child(L"GetRecurrencePattern");
    EXPECT_EQ(task.Get(L"IsRecurring"), Value(true));
    EXPECT_EQ(Shown(pattern.Get(L"StartTime")), L"none");
    EXPECT_EQ(pattern.TryPut(L"StartTime", TimeOfDay(9)).Status(), E_FAIL);
    EXPECT_EQ(pattern.TryCall(L"GetOccurrence", {At(2026, 3, 4)}).Status(), MAPI_E_NO_SUPPORT);
    pattern.Put(L"RecurrenceType", Value(kDaily));
    pattern.Put(L"Interval", Value(3));
    pattern.Put(L"Regenerate", Value(true));
    task.Call(L"Save");
    const auto message = Find(kTasks, L"Again");
    ASSERT_TRUE(message);
    const auto blob = NamedAs<mailbox::Bytes>(*message, kTaskSet, 0x8116, PT_BINARY);
    ASSERT_TRUE(blob);
    EXPECT_EQ((*blob)[18], 1) << "counts from the last one's end";
    EXPECT_EQ(NamedAs<bool>(*message, kTaskSet, 0x8126, PT_BOOLEAN), true);
    EXPECT_EQ(Reopened(task).Child(L"GetRecurrencePattern").Number(L"Interval"), 3);
    task.Call(L"ClearRecurrencePattern");
    EXPECT_EQ(task.Get(L"IsRecurring"), Value(false));
}

} // namespace
} // namespace outlook_tests
