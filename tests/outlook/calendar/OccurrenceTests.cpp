// Single occurrences of a series: opening, changing, deleting them, and the exceptions that this makes.
#include "Calendar.h"

#include "standin/mailbox/Tags.h"

namespace outlook_tests {
namespace {

namespace mailbox = standin::mailbox;

/// "Standup": five Mondays from 2 March 2026 on, at nine, for half an hour; saved.
class OccurrenceTest : public CalendarTest {
protected:
    Object NewSeries() const {
        const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
        item.Put(L"Subject", Value(L"Standup"));
        item.Put(L"Location", Value(L"Hall"));
        item.Put(L"Body", Value(L"As always"));
        item.Child(L"GetRecurrencePattern").Put(L"Occurrences", Value(5));
        item.Call(L"Save");
        return item;
    }
    Object PatternAnew() const {
        return DefaultFolder(kCalendar).Child(L"Items").Child(L"GetFirst").Child(L"GetRecurrencePattern");
    }
};

TEST_F(OccurrenceTest, AnOccurrenceIsAsItsSeriesAtItsOwnTime) {
    const Object series = NewSeries();
    const Object occurrence =
        series.Child(L"GetRecurrencePattern").Child(L"GetOccurrence", {At(2026, 3, 16, 9)});
    EXPECT_EQ(occurrence.Text(L"Subject"), L"Standup");
    EXPECT_EQ(occurrence.Text(L"Location"), L"Hall");
    EXPECT_EQ(occurrence.Text(L"Body"), L"As always");
    EXPECT_EQ(Shown(occurrence.Get(L"Start")), L"2026-03-16 09:00");
    EXPECT_EQ(Shown(occurrence.Get(L"End")), L"2026-03-16 09:30");
    EXPECT_EQ(occurrence.Number(L"RecurrenceState"), 2);
    EXPECT_EQ(occurrence.Get(L"IsRecurring"), Value(true));
    EXPECT_EQ(occurrence.Text(L"EntryID"), series.Text(L"EntryID"));
    EXPECT_EQ(occurrence.Child(L"Parent").Text(L"EntryID"), series.Text(L"EntryID"));
    EXPECT_EQ(occurrence.Child(L"GetRecurrencePattern").Number(L"Occurrences"), 5) << "the series'";
    EXPECT_EQ(occurrence.TryCall(L"ClearRecurrencePattern").Status(), MAPI_E_NO_SUPPORT);
    EXPECT_NE(occurrence.Text(L"GlobalAppointmentID"), series.Text(L"GlobalAppointmentID"));
    EXPECT_EQ(occurrence.Text(L"GlobalAppointmentID").substr(32, 8), L"07EA0310") << "16 March 2026";
    occurrence.Call(L"Save");
    EXPECT_EQ(PatternAnew().Child(L"Exceptions").Number(L"Count"), 0) << "nothing was changed";
}

TEST_F(OccurrenceTest, OccurrencesAreThoseOfTheSavedSeries) {
    const Object item = NewAppointment(At(2026, 3, 2, 9), 30);
    const Object pattern = item.Child(L"GetRecurrencePattern");
    const auto open = [&] { return pattern.TryCall(L"GetOccurrence", {At(2026, 3, 9, 9)}).Status(); };
    EXPECT_EQ(open(), E_FAIL) << "never saved";
    item.Call(L"Save");
    EXPECT_EQ(open(), S_OK);
    pattern.Put(L"Occurrences", Value(4));
    EXPECT_EQ(open(), E_FAIL) << "another pattern";
    item.Call(L"Save");
    EXPECT_EQ(open(), S_OK);
    item.Put(L"Subject", Value(L"Else"));
    EXPECT_EQ(open(), S_OK) << "the pattern is as it was";
}

TEST_F(OccurrenceTest, DatesWithoutAnOccurrenceAreRefused) {
    const Object pattern = NewSeries().Child(L"GetRecurrencePattern");
    for (const _variant_t& date : {At(2026, 3, 3, 9), At(2026, 3, 2, 10), At(2026, 3, 2), At(2026, 2, 23, 9),
                                   At(2026, 4, 6, 9), Date(0), Date(kNoDate), Date(-1e9)})
        EXPECT_EQ(pattern.TryCall(L"GetOccurrence", {date}).Status(), MAPI_E_NOT_FOUND) << Shown(date);
}

/// All that can differ is kept and found again.
TEST_F(OccurrenceTest, ASavedChangeIsAnException) {
    const Object series = NewSeries();
    const Object occurrence =
        series.Child(L"GetRecurrencePattern").Child(L"GetOccurrence", {At(2026, 3, 9, 9)});
    const std::pair<const wchar_t*, _variant_t> changes[] = {
        {L"Subject", Value(L"Sitdown")},   {L"Location", Value(L"Yard")},
        {L"Body", Value(L"Bring chairs")}, {L"Start", At(2026, 3, 10, 14)},
        {L"Duration", Value(90)},          {L"BusyStatus", Value(3)},
        {L"ReminderSet", Value(false)},    {L"ReminderMinutesBeforeStart", Value(40)},
        {L"Sensitivity", Value(2)},        {L"Categories", Value(L"Red")},
    };
    for (const auto& [member, value] : changes)
        occurrence.Put(member, value);
    EXPECT_EQ(PatternAnew().Child(L"Exceptions").Number(L"Count"), 0) << "before it is saved";
    occurrence.Call(L"Save");
    EXPECT_EQ(occurrence.Number(L"RecurrenceState"), 3);

    const Object pattern = PatternAnew();
    ASSERT_EQ(pattern.Child(L"Exceptions").Number(L"Count"), 1);
    const Object exception = pattern.Child(L"Exceptions").Child(L"Item", {Value(1)});
    EXPECT_EQ(exception.Get(L"Deleted"), Value(false));
    EXPECT_EQ(Shown(exception.Get(L"OriginalDate")), L"2026-03-09 09:00");
    for (const Object& item :
         {exception.Child(L"AppointmentItem"), pattern.Child(L"GetOccurrence", {At(2026, 3, 10, 14)})})
        for (const auto& [member, value] : changes)
            EXPECT_EQ(value.vt == VT_DATE ? Value(Shown(item.Get(member))) : item.Get(member),
                      value.vt == VT_DATE ? Value(Shown(value)) : value)
                << member;
    EXPECT_EQ(pattern.TryCall(L"GetOccurrence", {At(2026, 3, 9, 9)}).Status(), MAPI_E_NOT_FOUND)
        << "it was moved";
    const Object properties = exception.Child(L"ItemProperties");
    EXPECT_EQ(properties.Child(L"Item", {Value(L"Subject")}).Get(L"Value"), Value(L"Sitdown"));
    const Object other = pattern.Child(L"GetOccurrence", {At(2026, 3, 16, 9)});
    EXPECT_EQ(other.Text(L"Subject"), L"Standup") << "the others stay as they are";
    const Object master = DefaultFolder(kCalendar).Child(L"Items").Child(L"GetFirst");
    EXPECT_EQ(Shown(master.Get(L"Start")), L"2026-03-02 09:00");
    EXPECT_EQ(master.Child(L"Attachments").Number(L"Count"), 0) << "exceptions are no attachments to see";
}

/// As published: an embedded message with its times, hidden from users.
TEST_F(OccurrenceTest, AnExceptionIsStoredWithinTheSeries) {
    const Object occurrence =
        NewSeries().Child(L"GetRecurrencePattern").Child(L"GetOccurrence", {At(2026, 3, 9, 9)});
    occurrence.Put(L"Subject", Value(L"Sitdown"));
    occurrence.Call(L"Save");
    occurrence.Put(L"Location", Value(L"Yard"));
    occurrence.Call(L"Save");
    const auto message = Find(kCalendar, L"Standup");
    ASSERT_TRUE(message);
    ASSERT_EQ(message->Current().attachments.size(), 1u) << "one for both saves";
    const mailbox::Attachment& attachment = *message->Current().attachments[0];
    EXPECT_EQ(attachment.properties.GetOr<PR_ATTACH_METHOD>(0), 5);
    EXPECT_EQ(attachment.properties.GetOr<PROP_TAG(PT_LONG, 0x7FFD)>(0), 2);
    EXPECT_TRUE(attachment.properties.GetOr<mailbox::kPrAttachmentHidden>(false));
    const mailbox::Value* start = attachment.properties.Find(PROP_TAG(PT_SYSTIME, 0x7FFB));
    const mailbox::Value* replaced = attachment.properties.Find(PROP_TAG(PT_SYSTIME, 0x7FF9));
    ASSERT_TRUE(start && replaced && attachment.embedded);
    EXPECT_EQ(ShownTime(*start), L"2026-03-09 09:00") << "local";
    EXPECT_EQ(ShownTime(*replaced), Shown(occurrence.Get(L"StartUTC")));
    EXPECT_EQ(attachment.embedded->properties.GetOr<PR_MESSAGE_CLASS_W>(L""),
              L"IPM.OLE.CLASS.{00061055-0000-0000-C000-000000000046}");
    EXPECT_EQ(attachment.embedded->properties.GetOr<PR_SUBJECT_W>(L""), L"Sitdown");
}

TEST_F(OccurrenceTest, ADeletedOccurrenceIsAnExceptionWithoutAnItem) {
    const Object pattern = NewSeries().Child(L"GetRecurrencePattern");
    pattern.Child(L"GetOccurrence", {At(2026, 3, 23, 9)}).Call(L"Delete");
    const Object changed = pattern.Child(L"GetOccurrence", {At(2026, 3, 9, 9)});
    changed.Put(L"Subject", Value(L"Sitdown"));
    changed.Call(L"Save");
    const Object exceptions = PatternAnew().Child(L"Exceptions");
    ASSERT_EQ(exceptions.Number(L"Count"), 2);
    const Object deleted = exceptions.Child(L"Item", {Value(2)});
    EXPECT_EQ(deleted.Get(L"Deleted"), Value(true));
    EXPECT_EQ(Shown(deleted.Get(L"OriginalDate")), L"2026-03-23 09:00");
    EXPECT_EQ(deleted.TryGet(L"AppointmentItem").Status(), MAPI_E_NOT_FOUND);
    EXPECT_EQ(deleted.TryGet(L"ItemProperties").Status(), MAPI_E_NOT_FOUND);
    EXPECT_EQ(PatternAnew().TryCall(L"GetOccurrence", {At(2026, 3, 23, 9)}).Status(), MAPI_E_NOT_FOUND);
    for (const int index : {0, 3, -1})
        EXPECT_EQ(exceptions.TryCall(L"Item", {Value(index)}).description, L"Array index out of bounds.")
            << index;

    PatternAnew().Child(L"GetOccurrence", {At(2026, 3, 9, 9)}).Call(L"Delete");
    EXPECT_EQ(PatternAnew().Child(L"Exceptions").Child(L"Item", {Value(1)}).Get(L"Deleted"), Value(true))
        << "a changed one can be deleted too";
    EXPECT_TRUE(Find(kCalendar, L"Standup")->Current().attachments.empty());
}

TEST_F(OccurrenceTest, AnotherPatternHasNoExceptions) {
    const Object item = NewSeries();
    const Object pattern = item.Child(L"GetRecurrencePattern");
    pattern.Child(L"GetOccurrence", {At(2026, 3, 23, 9)}).Call(L"Delete");
    const Object occurrence = pattern.Child(L"GetOccurrence", {At(2026, 3, 9, 9)});
    occurrence.Put(L"Subject", Value(L"Sitdown"));
    occurrence.Call(L"Save");
    pattern.Put(L"Interval", Value(1));
    EXPECT_EQ(pattern.Child(L"Exceptions").Number(L"Count"), 2) << "the same interval is no change";
    pattern.Put(L"Interval", Value(2));
    EXPECT_EQ(pattern.Child(L"Exceptions").Number(L"Count"), 0);
    item.Call(L"Save");
    EXPECT_TRUE(Find(kCalendar, L"Standup")->Current().attachments.empty());
    occurrence.Put(L"Subject", Value(L"Too late"));
    EXPECT_EQ(occurrence.TryCall(L"Save").Status(), MAPI_E_NOT_FOUND) << "9 March is no day of it any longer";
}

TEST_F(OccurrenceTest, WholeDayExceptionsAndAttendeesOfTheirOwn) {
    const Object occurrence =
        NewSeries().Child(L"GetRecurrencePattern").Child(L"GetOccurrence", {At(2026, 3, 9, 9)});
    occurrence.Put(L"AllDayEvent", Value(true));
    occurrence.Put(L"RequiredAttendees", Value(L"Warehouse"));
    occurrence.Call(L"Save");
    const Object again = PatternAnew().Child(L"GetOccurrence", {At(2026, 3, 9)});
    EXPECT_EQ(again.Get(L"AllDayEvent"), Value(true));
    EXPECT_EQ(Shown(again.Get(L"End")), L"2026-03-10 00:00");
    EXPECT_EQ(again.Text(L"RequiredAttendees"), L"Warehouse");
    const Object other = PatternAnew().Child(L"GetOccurrence", {At(2026, 3, 16, 9)});
    EXPECT_EQ(other.Text(L"RequiredAttendees"), L"");
}

} // namespace
} // namespace outlook_tests
