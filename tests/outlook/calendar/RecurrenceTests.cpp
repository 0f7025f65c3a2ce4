// Recurrence patterns of appointments and tasks: every type, what it takes and refuses, and how it is stored.
#include "Calendar.h"

#include <algorithm>

namespace outlook_tests {
namespace {

constexpr int kDaily = 0, kWeekly = 1, kMonthly = 2, kMonthNth = 3, kYearly = 5, kYearNth = 6;

const std::wstring kStoredPattern = Id(kAppointmentSet, 0x82160102);

/// A series from Monday, 2 March 2026, at nine, for half an hour.
class RecurrenceTest : public CalendarTest {
protected:
    Object NewSeries(int type = kWeekly) const {
        const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
        item.Child(L"GetRecurrencePattern").Put(L"RecurrenceType", type);
        return item;
    }
};

TEST_F(RecurrenceTest, OpeningThePatternMakesASeries) {
    const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
    const Object pattern = item.Child(L"GetRecurrencePattern");
    Expect(item, {{L"IsRecurring", true}, {L"RecurrenceState", 1}});
    Expect(pattern, {{L"RecurrenceType", kWeekly}, {L"DayOfWeekMask", 2}, {L"Interval", 1}});
    Expect(pattern, {{L"NoEndDate", true}, {L"PatternStartDate", At(2026, 3, 2)}});
    Expect(pattern, {{L"PatternEndDate", Date(kNoDate)}});
    EXPECT_EQ(pattern.Get(L"StartTime"), TimeOfDay(9));
    EXPECT_EQ(pattern.Get(L"EndTime"), TimeOfDay(9, 30));
    EXPECT_EQ(pattern.Number(L"Duration"), 30);
    EXPECT_EQ(pattern.Child(L"Exceptions").Number(L"Count"), 0);
    EXPECT_EQ(pattern.Child(L"Parent").Text(L"MessageClass"), L"IPM.Appointment");

    item.Call(L"ClearRecurrencePattern");
    Expect(item, {{L"RecurrenceState", 0}, {L"Start", At(2026, 3, 2, 9)}});
    EXPECT_EQ(pattern.TryGet(L"Interval").Status(), E_FAIL) << "the pattern is gone";
}

TEST_F(RecurrenceTest, EachTypeKeepsItsOwnNumbersAndRefusesOthers) {
    struct Row {
        int type;
        Facts own;
        _variant_t first; ///< occurrence's day
        int storedType;
    };
    const Row rows[] = {
        {kDaily, {{L"Interval", 3}}, At(2026, 3, 2), 1},
        {kWeekly, {{L"Interval", 2}, {L"DayOfWeekMask", 40}}, At(2026, 3, 4), 2},
        {kMonthly, {{L"Interval", 2}, {L"DayOfMonth", 31}}, At(2026, 3, 31), 3},
        {kMonthNth, {{L"Interval", 1}, {L"DayOfWeekMask", 32}, {L"Instance", 5}}, At(2026, 3, 27), 3},
        {kYearly, {{L"Interval", 12}, {L"DayOfMonth", 24}, {L"MonthOfYear", 12}}, At(2026, 12, 24), 4},
        {kYearNth,
         {{L"Interval", 24}, {L"DayOfWeekMask", 1}, {L"Instance", 2}, {L"MonthOfYear", 5}},
         At(2026, 5, 10),
         4},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.type);
        const Object item = NewSeries(row.type);
        const Object pattern = item.Child(L"GetRecurrencePattern");
        PutAll(pattern, row.own);
        for (const wchar_t* member :
             {L"DayOfMonth", L"DayOfWeekMask", L"Instance", L"Interval", L"MonthOfYear"})
            if (std::ranges::find(row.own, member, &Is::member) == row.own.end()) {
                ExpectRefused(pattern, E_FAIL, {{member, 1}});
                Expect(pattern, {{member, 0}});
            }
        const Object again = Reopened(item);
        const Object stored = again.Child(L"GetRecurrencePattern");
        Expect(stored, row.own);
        Expect(stored, {{L"RecurrenceType", row.type}, {L"PatternStartDate", row.first}});
        Expect(again, {{L"Start", Date(row.first.date + TimeOfDay(9).date)}});
        ExpectStored(again, {{Id(kAppointmentSet, 0x82310003), row.storedType}});
    }
}

TEST_F(RecurrenceTest, NumbersOutOfRangeAreRefused) {
    const std::tuple<int, const wchar_t*, int> rows[] = {
        {kDaily, L"Interval", 0},         {kDaily, L"Interval", 1000},     {kYearly, L"Interval", 5},
        {kWeekly, L"DayOfWeekMask", 128}, {kWeekly, L"DayOfWeekMask", -1}, {kMonthly, L"DayOfMonth", 32},
        {kMonthly, L"DayOfMonth", 0},     {kMonthNth, L"Instance", 6},     {kYearNth, L"MonthOfYear", 13},
        {kDaily, L"Occurrences", 0},      {kDaily, L"Occurrences", 1000},  {kDaily, L"Duration", -1},
        {kDaily, L"RecurrenceType", 4},   {kDaily, L"RecurrenceType", 7},
    };
    for (const auto& [type, member, value] : rows) {
        const Object pattern = NewSeries(type).Child(L"GetRecurrencePattern");
        const _variant_t before = pattern.Get(member);
        EXPECT_EQ(pattern.TryPut(member, value).Status(), E_INVALIDARG) << member;
        EXPECT_EQ(pattern.Get(member), before) << member;
    }
    const Object pattern = NewSeries().Child(L"GetRecurrencePattern");
    EXPECT_EQ(pattern.TryPut(L"PatternEndDate", At(2026, 3, 1)).Status(), E_INVALIDARG) << "before the start";
    ExpectRefused(pattern, E_INVALIDARG, {{L"PatternStartDate", Date(-1e9)}, {L"StartTime", Date(-1e9)}});
    EXPECT_EQ(pattern.TryPut(L"Regenerate", true).Status(), E_FAIL) << "for tasks only";
}

TEST_F(RecurrenceTest, AnotherTypeBeginsAnew) {
    const Object item = NewSeries(kMonthNth);
    const Object pattern = item.Child(L"GetRecurrencePattern");
    PutAll(pattern, {{L"Interval", 4}, {L"Occurrences", 6}, {L"RecurrenceType", kMonthly}});
    Expect(pattern, {{L"Interval", 1}, {L"DayOfMonth", 2}, {L"Instance", 0}, {L"NoEndDate", true}});
    EXPECT_EQ(pattern.Get(L"StartTime"), TimeOfDay(9));
}

TEST_F(RecurrenceTest, OneEndTakesTheOthersPlace) {
    const Object pattern = NewSeries().Child(L"GetRecurrencePattern");
    pattern.Put(L"Occurrences", 4);
    Expect(pattern, {{L"PatternEndDate", At(2026, 3, 23)}, {L"NoEndDate", false}});
    pattern.Put(L"PatternEndDate", At(2026, 4, 1));
    Expect(pattern, {{L"Occurrences", 5}, {L"PatternEndDate", At(2026, 4, 1)}});
    pattern.Put(L"DayOfWeekMask", 6);
    EXPECT_EQ(pattern.Number(L"Occurrences"), 10) << "twice a week until then";
    pattern.Put(L"NoEndDate", true);
    EXPECT_EQ(Shown(pattern.Get(L"PatternEndDate")), L"none");
    pattern.Put(L"NoEndDate", false);
    EXPECT_EQ(pattern.Number(L"Occurrences"), 10);
}

TEST_F(RecurrenceTest, TheTimesOfDayKeepTogether) {
    const Object item = NewSeries();
    const Object pattern = item.Child(L"GetRecurrencePattern");
    pattern.Put(L"StartTime", TimeOfDay(14));
    EXPECT_EQ(pattern.Get(L"EndTime"), TimeOfDay(14, 30));
    EXPECT_EQ(Shown(item.Get(L"Start")), L"2026-03-02 14:00") << "the appointment follows";
    pattern.Put(L"EndTime", TimeOfDay(1));
    EXPECT_EQ(pattern.Number(L"Duration"), 11 * 60) << "into the next day";
    pattern.Put(L"Duration", 60);
    EXPECT_EQ(pattern.Get(L"EndTime"), TimeOfDay(15));
    pattern.Put(L"PatternStartDate", At(2026, 3, 10));
    EXPECT_EQ(Shown(item.Get(L"Start")), L"2026-03-16 14:00") << "the first Monday from then on";
    item.Put(L"Start", At(2026, 3, 23, 8));
    EXPECT_EQ(pattern.Get(L"StartTime"), TimeOfDay(8)) << "and the pattern follows the appointment";
    EXPECT_EQ(Shown(pattern.Get(L"PatternStartDate")), L"2026-03-23 00:00");
}

/// The product's own edit of the bytes: a weekly pattern becomes one of the five working days.
TEST_F(RecurrenceTest, BytesThatOthersWroteAreSeen) {
    const Object item = Reopened(NewSeries(kMonthly));
    const _variant_t blob = Stored(item, kStoredPattern);
    ASSERT_GT(AsText(blob).size(), 2 * 22u);
    for (const auto& [offset, byte] :
         {std::pair{4, 0x0B}, {5, 0x20}, {6, 0x02}, {10, 0xC0}, {14, 0x01}, {22, 0x3E}})
        static_cast<unsigned char*>(blob.parray->pvData)[offset] = static_cast<unsigned char>(byte);
    Store(item, kStoredPattern, blob);
    Expect(item.Child(L"GetRecurrencePattern"), {{L"RecurrenceType", kWeekly}, {L"DayOfWeekMask", 62}});
}

TEST_F(RecurrenceTest, ASeriesIsStoredWithItsCompanions) {
    const Object item = NewSeries();
    item.Child(L"GetRecurrencePattern").Put(L"Occurrences", 3);
    const Object saved = Reopened(item);
    ExpectStored(
        saved,
        {{Id(kAppointmentSet, 0x8223000B), true},
         {L"http://schemas.microsoft.com/mapi/id/{6ED8DA90-450B-101B-98DA-00AA003F1305}/0005000B", true},
         {Id(kAppointmentSet, 0x8232001F), L"every Monday from 9:00 AM to 9:30 AM"},
         {Tag(0x10800003), 1025}});
    EXPECT_EQ(StoredText(saved, Id(kAppointmentSet, 0x82330102)).size(), 2 * 48u);
    EXPECT_NE(StoredText(saved, Id(kAppointmentSet, 0x82600102)), L"");
    const std::wstring blob = StoredText(saved, kStoredPattern);
    EXPECT_TRUE(blob.starts_with(L"043004300B200100")) << blob;
    EXPECT_EQ(blob.substr(2 * 22, 2), L"02") << "Monday";
    EXPECT_EQ(blob.substr(2 * 26, 2), L"22") << "ends after a count";
    EXPECT_EQ(blob.substr(2 * 30, 2), L"03");
}

TEST_F(RecurrenceTest, RealSeriesShowTheirFacts) {
    const Object file = OpenReal(L"appointment-weekly.msg");
    if (!file)
        GTEST_SKIP() << "The MSG files of real mail clients are missing: " << VARDEN_MSG_FOLDER;
    const Object weekly = Reopened(file);
    const Object pattern = weekly.Child(L"GetRecurrencePattern");
    Expect(pattern, {{L"RecurrenceType", kWeekly}, {L"Interval", 1}, {L"Duration", 30}});
    EXPECT_EQ(Shown(weekly.Get(L"StartUTC")), L"2022-12-12 07:00");
    const Object first = pattern.Child(L"GetOccurrence", {weekly.Get(L"Start")});
    EXPECT_EQ(first.Text(L"Subject"), L"A weekly 1");
    EXPECT_EQ(Shown(first.Get(L"StartUTC")), L"2022-12-12 07:00") << "in the zone in which it was made";

    // Every weekday, which the file calls daily, looks like a weekly pattern.
    Expect(OpenReal(L"appointment-daily.msg").Child(L"GetRecurrencePattern"),
           {{L"RecurrenceType", kWeekly}, {L"Interval", 1}});
}

TEST_F(RecurrenceTest, TasksRecurWithoutTimes) {
    const Object task = NewItem(kTaskItem);
    PutAll(task, {{L"DueDate", At(2026, 3, 4)}, {L"Subject", L"Again"}});
    const Object pattern = task.Child(L"GetRecurrencePattern");
    EXPECT_EQ(task.Get(L"IsRecurring"), Value(true));
    EXPECT_EQ(Shown(pattern.Get(L"StartTime")), L"none");
    EXPECT_EQ(pattern.TryPut(L"StartTime", TimeOfDay(9)).Status(), E_FAIL);
    EXPECT_EQ(pattern.Status(L"GetOccurrence", {At(2026, 3, 4)}), MAPI_E_NO_SUPPORT);
    PutAll(pattern, {{L"RecurrenceType", kDaily}, {L"Interval", 3}, {L"Regenerate", true}});
    const Object saved = Reopened(task);
    EXPECT_EQ(StoredText(saved, Id(kTaskSet, 0x81160102)).substr(36, 2), L"01")
        << "counts from the last one's end";
    ExpectStored(saved, {{Id(kTaskSet, 0x8126000B), true}});
    EXPECT_EQ(saved.Child(L"GetRecurrencePattern").Number(L"Interval"), 3);
    task.Call(L"ClearRecurrencePattern");
    EXPECT_EQ(task.Get(L"IsRecurring"), Value(false));
}

} // namespace
} // namespace outlook_tests
