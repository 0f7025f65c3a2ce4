// Single occurrences of a series: opening, changing, deleting them, and the exceptions that this makes.
#include "Calendar.h"

#include "standin/mailbox/Tags.h"

namespace outlook_tests {
namespace {

namespace mailbox = standin::mailbox;

/// A time as Shown shows dates.
std::wstring ShownTime(const mailbox::SysTime& time) {
    const FILETIME file{static_cast<DWORD>(time.ticks), static_cast<DWORD>(time.ticks >> 32)};
    SYSTEMTIME utc{};
    FileTimeToSystemTime(&file, &utc);
    return Shown(At(utc.wYear, utc.wMonth, utc.wDay, utc.wHour, utc.wMinute));
}

/// "Standup": five Mondays from 2 March 2026 on, at nine, for half an hour; saved.
class OccurrenceTest : public CalendarTest {
protected:
    Object NewSeries() const {
        const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
        PutAll(item, {{L"Subject", L"Standup"}, {L"Location", L"Hall"}, {L"Body", L"As always"}});
        item.Child(L"GetRecurrencePattern").Put(L"Occurrences", 5);
        item.Call(L"Save");
        return item;
    }
    static Object InMarch(int day, const Object& pattern) {
        return pattern.Child(L"GetOccurrence", {At(2026, 3, day, 9)});
    }
    Object PatternAnew() const { return Items(kCalendar).Child(L"GetFirst").Child(L"GetRecurrencePattern"); }
};

TEST_F(OccurrenceTest, AnOccurrenceIsAsItsSeriesAtItsOwnTime) {
    const Object series = NewSeries();
    const Object occurrence = InMarch(16, series.Child(L"GetRecurrencePattern"));
    Expect(occurrence, {{L"Subject", L"Standup"}, {L"Location", L"Hall"}, {L"Body", L"As always"}});
    Expect(occurrence, {{L"Start", At(2026, 3, 16, 9)}, {L"End", At(2026, 3, 16, 9, 30)}});
    Expect(occurrence,
           {{L"RecurrenceState", 2}, {L"IsRecurring", true}, {L"EntryID", series.Text(L"EntryID")}});
    EXPECT_EQ(occurrence.Child(L"Parent").Text(L"EntryID"), series.Text(L"EntryID"));
    EXPECT_EQ(occurrence.Child(L"GetRecurrencePattern").Number(L"Occurrences"), 5) << "the series'";
    EXPECT_EQ(occurrence.Status(L"ClearRecurrencePattern"), MAPI_E_NO_SUPPORT);
    EXPECT_NE(occurrence.Text(L"GlobalAppointmentID"), series.Text(L"GlobalAppointmentID"));
    EXPECT_EQ(occurrence.Text(L"GlobalAppointmentID").substr(32, 8), L"07EA0310") << "16 March 2026";
    occurrence.Call(L"Save");
    EXPECT_EQ(PatternAnew().Child(L"Exceptions").Number(L"Count"), 0) << "nothing was changed";
}

TEST_F(OccurrenceTest, OccurrencesAreThoseOfTheSavedSeries) {
    const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
    const Object pattern = item.Child(L"GetRecurrencePattern");
    const auto open = [&] { return pattern.Status(L"GetOccurrence", {At(2026, 3, 9, 9)}); };
    EXPECT_EQ(open(), E_FAIL) << "never saved";
    item.Call(L"Save");
    EXPECT_EQ(open(), S_OK);
    pattern.Put(L"Occurrences", 4);
    EXPECT_EQ(open(), E_FAIL) << "another pattern";
    item.Call(L"Save");
    EXPECT_EQ(open(), S_OK);
    item.Put(L"Subject", L"Else");
    EXPECT_EQ(open(), S_OK) << "the pattern is as it was";
}

TEST_F(OccurrenceTest, DatesWithoutAnOccurrenceAreRefused) {
    const Object pattern = NewSeries().Child(L"GetRecurrencePattern");
    for (const _variant_t& date : {At(2026, 3, 3, 9), At(2026, 3, 2, 10), At(2026, 3, 2), At(2026, 2, 23, 9),
                                   At(2026, 4, 6, 9), Date(0), Date(kNoDate), Date(-1e9)})
        EXPECT_EQ(pattern.Status(L"GetOccurrence", {date}), MAPI_E_NOT_FOUND) << Shown(date);
}

/// All that can differ is kept and found again.
TEST_F(OccurrenceTest, ASavedChangeIsAnException) {
    const Object series = NewSeries();
    const Object occurrence = InMarch(9, series.Child(L"GetRecurrencePattern"));
    const Facts changes = {
        {L"Subject", L"Sitdown"},   {L"Location", L"Yard"},
        {L"Body", L"Bring chairs"}, {L"Start", At(2026, 3, 10, 14)},
        {L"Duration", 90},          {L"BusyStatus", 3},
        {L"ReminderSet", false},    {L"ReminderMinutesBeforeStart", 40},
        {L"Sensitivity", 2},        {L"Categories", L"Red"},
    };
    PutAll(occurrence, changes);
    EXPECT_EQ(PatternAnew().Child(L"Exceptions").Number(L"Count"), 0) << "before it is saved";
    occurrence.Call(L"Save");
    EXPECT_EQ(occurrence.Number(L"RecurrenceState"), 3);

    const Object pattern = PatternAnew();
    ASSERT_EQ(pattern.Child(L"Exceptions").Number(L"Count"), 1);
    const Object exception = pattern.Child(L"Exceptions").Item(1);
    Expect(exception, {{L"Deleted", false}, {L"OriginalDate", At(2026, 3, 9, 9)}});
    for (const Object& item :
         {exception.Child(L"AppointmentItem"), pattern.Child(L"GetOccurrence", {At(2026, 3, 10, 14)})})
        Expect(item, changes);
    EXPECT_EQ(pattern.Status(L"GetOccurrence", {At(2026, 3, 9, 9)}), MAPI_E_NOT_FOUND) << "it was moved";
    EXPECT_EQ(exception.Child(L"ItemProperties").Item(L"Subject").Get(L"Value"), Value(L"Sitdown"));
    EXPECT_EQ(InMarch(16, pattern).Text(L"Subject"), L"Standup") << "the others stay as they are";
    const Object master = Items(kCalendar).Child(L"GetFirst");
    EXPECT_EQ(Shown(master.Get(L"Start")), L"2026-03-02 09:00");
    EXPECT_EQ(master.Child(L"Attachments").Number(L"Count"), 0) << "exceptions are no attachments to see";
}

/// As published: an embedded message with its times, hidden from users.
TEST_F(OccurrenceTest, AnExceptionIsStoredWithinTheSeries) {
    const Object occurrence = InMarch(9, NewSeries().Child(L"GetRecurrencePattern"));
    occurrence.Put(L"Subject", L"Sitdown");
    occurrence.Call(L"Save");
    occurrence.Put(L"Location", L"Yard");
    occurrence.Call(L"Save");
    const auto message = Find(kCalendar, L"Standup");
    ASSERT_TRUE(message);
    ASSERT_EQ(message->Current().attachments.size(), 1u) << "one for both saves";
    const mailbox::Attachment& attachment = *message->Current().attachments[0];
    EXPECT_EQ(attachment.properties.GetOr<PR_ATTACH_METHOD>(0), 5);
    EXPECT_EQ(attachment.properties.GetOr<PROP_TAG(PT_LONG, 0x7FFD)>(0), 2);
    EXPECT_TRUE(attachment.properties.GetOr<mailbox::kPrAttachmentHidden>(false));
    EXPECT_EQ(ShownTime(attachment.properties.GetOr<PROP_TAG(PT_SYSTIME, 0x7FFB)>({})), L"2026-03-09 09:00")
        << "local";
    EXPECT_EQ(ShownTime(attachment.properties.GetOr<PROP_TAG(PT_SYSTIME, 0x7FF9)>({})),
              Shown(occurrence.Get(L"StartUTC")));
    ASSERT_TRUE(attachment.embedded);
    EXPECT_EQ(attachment.embedded->properties.GetOr<PR_MESSAGE_CLASS_W>(L""),
              L"IPM.OLE.CLASS.{00061055-0000-0000-C000-000000000046}");
    EXPECT_EQ(attachment.embedded->properties.GetOr<PR_SUBJECT_W>(L""), L"Sitdown");
}

TEST_F(OccurrenceTest, ADeletedOccurrenceIsAnExceptionWithoutAnItem) {
    const Object pattern = NewSeries().Child(L"GetRecurrencePattern");
    InMarch(23, pattern).Call(L"Delete");
    const Object changed = InMarch(9, pattern);
    changed.Put(L"Subject", L"Sitdown");
    changed.Call(L"Save");
    const Object exceptions = PatternAnew().Child(L"Exceptions");
    ASSERT_EQ(exceptions.Number(L"Count"), 2);
    const Object deleted = exceptions.Item(2);
    Expect(deleted, {{L"Deleted", true}, {L"OriginalDate", At(2026, 3, 23, 9)}});
    EXPECT_EQ(deleted.TryGet(L"AppointmentItem").Status(), MAPI_E_NOT_FOUND);
    EXPECT_EQ(deleted.TryGet(L"ItemProperties").Status(), MAPI_E_NOT_FOUND);
    EXPECT_EQ(PatternAnew().Status(L"GetOccurrence", {At(2026, 3, 23, 9)}), MAPI_E_NOT_FOUND);
    for (const int index : {0, 3, -1})
        EXPECT_TRUE(IsOutOfBounds(exceptions.TryCall(L"Item", {index}))) << index;

    InMarch(9, PatternAnew()).Call(L"Delete");
    EXPECT_EQ(PatternAnew().Child(L"Exceptions").Item(1).Get(L"Deleted"), Value(true))
        << "a changed one can be deleted too";
    EXPECT_TRUE(Find(kCalendar, L"Standup")->Current().attachments.empty());
}

TEST_F(OccurrenceTest, AnotherPatternHasNoExceptions) {
    const Object item = NewSeries();
    const Object pattern = item.Child(L"GetRecurrencePattern");
    InMarch(23, pattern).Call(L"Delete");
    const Object occurrence = InMarch(9, pattern);
    occurrence.Put(L"Subject", L"Sitdown");
    occurrence.Call(L"Save");
    pattern.Put(L"Interval", 1);
    EXPECT_EQ(pattern.Child(L"Exceptions").Number(L"Count"), 2) << "the same interval is no change";
    pattern.Put(L"Interval", 2);
    EXPECT_EQ(pattern.Child(L"Exceptions").Number(L"Count"), 0);
    item.Call(L"Save");
    EXPECT_TRUE(Find(kCalendar, L"Standup")->Current().attachments.empty());
    occurrence.Put(L"Subject", L"Too late");
    EXPECT_EQ(occurrence.Status(L"Save"), MAPI_E_NOT_FOUND) << "9 March is no day of it any longer";
}

TEST_F(OccurrenceTest, WholeDayExceptionsAndAttendeesOfTheirOwn) {
    const Object occurrence = InMarch(9, NewSeries().Child(L"GetRecurrencePattern"));
    PutAll(occurrence, {{L"AllDayEvent", true}, {L"RequiredAttendees", L"Warehouse"}});
    occurrence.Call(L"Save");
    const Object again = PatternAnew().Child(L"GetOccurrence", {At(2026, 3, 9)});
    Expect(again, {{L"AllDayEvent", true}, {L"End", At(2026, 3, 10)}, {L"RequiredAttendees", L"Warehouse"}});
    EXPECT_EQ(InMarch(16, PatternAnew()).Text(L"RequiredAttendees"), L"");
}

} // namespace
} // namespace outlook_tests
