// Patterns of recurring appointments and tasks, their occurrences and exceptions.
#include "FieldTest.h"

#include <algorithm>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class RecurrenceTest : public FieldTest {
protected:
    explicit RecurrenceTest(const wchar_t* file = kShippedPlugin) : FieldTest(L"Calendar", file) {}

    /// A new appointment of half an hour on Monday, 2 March 2026, at nine, with its pattern open.
    void NewPattern(const std::wstring& subject) {
        New(L"Calendar");
        Set(L"Subject", subject);
        Set(L"Start", L"3/2/2026 9:00 AM");
        Set(L"Duration", L"30");
        OpenPattern();
    }
    void OpenPattern() { ExpectSuccess(L"VARD_RPOpenRecurrencePattern", {}); }
    /// "Series", daily, ten times.
    void NewSeries() {
        NewPattern(L"Series");
        ExpectWrites({{L"Recurrence Type", L"Daily", L"Daily"},
                      {L"Interval", L"1", L"1"},
                      {L"Occurrences", L"10", L"10"}});
        Save();
    }
    /// Calls the function and expects a failure of Outlook's: code 999 with the four parts of its text.
    void ExpectRefused(const wchar_t* function, const Texts& arguments) {
        EXPECT_EQ(Call(function, arguments), kError);
        EXPECT_EQ(LastErrorCode(), 999);
        const std::wstring text = LastErrorText();
        std::size_t at = 0;
        for (const wchar_t* part : {L"Error: 8", L"\nMessage:", L"\nSource:", L"\nDesc:"}) {
            at = text.find(part, at);
            EXPECT_NE(at, std::wstring::npos) << testing::PrintToString(part) << testing::PrintToString(text);
        }
    }
    void OpenOccurrence(const wchar_t* date) { ExpectSuccess(L"VARD_RPOpenOccurrence", {date}); }
    void CloseAndSave() { ExpectSuccess(L"VARD_RPCloseOccurrenceItem", {L"1"}); }
    /// The series of NewSeries with its occurrences of 3 and 5 March moved and that of 4 March deleted.
    void NewSeriesWithExceptions() {
        NewSeries();
        for (const auto& [day, to] : std::vector<std::pair<const wchar_t*, const wchar_t*>>{
                 {L"3/3/2026 9:00 AM", L"3/3/2026 2:00 PM"}, {L"3/5/2026 9:00 AM", L"3/5/2026 3:00 PM"}}) {
            OpenOccurrence(day);
            ExpectWrites({{L"Start", to, DateAsShown(to)}});
            CloseAndSave();
        }
        ExpectSuccess(L"VARD_RPDeleteOccurrence", {L"3/4/2026 9:00 AM"});
    }
    Bytes Blob() {
        const PropertyValue* value = StoredValue(sets::kAppointment, 0x8216);
        return value ? std::get<Bytes>(*value) : Bytes();
    }
};

TEST_F(RecurrenceTest, APatternHasTheFieldsOfItsType) {
    struct Type {
        const wchar_t* written;
        const wchar_t* read;
        FieldWrites fields;
    };
    const std::vector<Type> types{
        {L"Daily", L"Daily", {{L"Interval", L"3 days", L"3"}, {L"Occurrences", L"5", L"5"}}},
        {L"weekly",
         L"Weekly",
         {{L"Interval", L"2", L"2"},
          {L"Day of Week Mask", L"Monday, Friday", L"Monday\rFriday"},
          {L"Day of Week Mask", L"saturday and SUNDAY", L"Sunday\rSaturday"},
          {L"Day of Week Mask", L"sunday monday tuesday wednesday thursday friday saturday",
           L"Sunday\rMonday\rTuesday\rWednesday\rThursday\rFriday\rSaturday"}}},
        {L"Monthly", L"Monthly", {{L"Interval", L"2", L"2"}, {L"Day of Month", L"15", L"15"}}},
        {L"Nth Month",
         L"Nth Month",
         {{L"Interval", L"3", L"3"},
          {L"Day of Week Mask", L"Tuesday", L"Tuesday"},
          {L"Instance", L"2", L"2"}}},
        {L"Yearly", L"Yearly", {{L"Month of Year", L"7", L"7"}, {L"Day of Month", L"4", L"4"}}},
        {L"nth year",
         L"Nth Year",
         {{L"Month of Year", L"11", L"11"},
          {L"Day of Week Mask", L"Thursday", L"Thursday"},
          {L"Instance", L"5", L"5"}}},
    };
    std::size_t saved = 0;
    for (const auto& [written, read, fields] : types) {
        SCOPED_TRACE(testing::PrintToString(read));
        NewPattern(read);
        ExpectWrites({{L"Recurrence Type", written, read}});
        EXPECT_EQ(Home().Messages().size(), ++saved); // at once
        ExpectWrites(fields);
        ExpectWrites({{L"recurrence type", L"yEARLY", L"Yearly"}}); // names and words in any case
        EXPECT_EQ(Get(L"RECURRENCETYPE"), L"Yearly");
    }
}

TEST_F(RecurrenceTest, TheRangeOfAPatternIsWrittenAndRead) {
    NewSeries();
    ExpectWrites({{L"Start Time", L"10:30 AM", DateAsShown(L"10:30 AM")},
                  {L"Duration", L"60", L"60"},
                  {L"End Time", L"11:00 AM", DateAsShown(L"11:00 AM")},
                  {L"Pattern Start Date", L"3/9/2026", DateAsShown(L"3/9/2026")},
                  {L"Pattern End Date", L"3/20/2026 5:00 PM", DateAsShown(L"3/20/2026")}, // the day alone
                  {L"No End Date", L"Yes", L"false"},
                  {L"no end date", L"true", L"true"},
                  {L"Occurrences", L"3", L"3"},
                  {L"NO END DATE", L"TRUE", L"true"}});
    ExpectReads({{L"pattern end date", L"None"},
                 {L"Duration", L"30"},
                 {L"PatternStartDate", DateAsShown(L"3/9/2026")},
                 {L"Regenerate", L"False"}}); // with a capital, unlike the other
}

TEST_F(RecurrenceTest, NamesAndValuesThatAPatternHasNotAreRefused) {
    NewSeries();
    ExpectUnwritable({L"DayofMonth", L"Interval ", L"Subject", L"No Such"});
    ExpectUnreadable({L"Subject", L"No Such", L"Deleted"});
    ExpectInvalid({{L"Recurrence Type", {L"Hourly"}}});
    EXPECT_EQ(Get(L"Recurrence Type"), L"Daily");
    ExpectRefused(L"VARD_SetFieldData", {L"Pattern Start Date", L"someday"}); // Outlook answers
    ExpectRefused(L"VARD_SetFieldData", {L"Interval", L"none"});
    ExpectRefused(L"VARD_SetFieldData", {L"Regenerate", L"True"}); // tasks alone have it
    Fail(L"AppointmentItem::Save");
    ExpectRefused(L"VARD_SetFieldData", {L"Recurrence Type", L"Weekly"});
}

TEST_F(RecurrenceTest, WeekdaysAreWrittenIntoTheStoredPattern) {
    NewSeries();
    ExpectWrites({{L"Recurrence Type", L"Weekly", L"Weekly"}});
    const Bytes weekly = Blob();
    ExpectWrites({{L"Day of Week Mask", L"weekdays ", L""}}); // not the word: no day of the week is in it
    EXPECT_EQ(Blob(), weekly);
    EXPECT_EQ(Set(L"Day of Week Mask", L"WEEKDAYS"), L"0");
    Bytes expected = weekly;
    for (const auto& [offset, byte] : std::vector<std::pair<std::size_t, std::uint8_t>>{
             {4, 0x0B}, {5, 0x20}, {6, 0x02}, {10, 0xC0}, {14, 0x01}, {22, 0x3E}}) {
        expected[offset] = byte;
    }
    EXPECT_EQ(Blob(), expected);
    EXPECT_NE(weekly, expected);
}

TEST_F(RecurrenceTest, WhatBecomesOfTheStoredPatternIsNotLookedAt) {
    for (const wchar_t* member : {L"MAPI32::HrGetOneProp", L"MAPI32::HrSetOneProp", L"IMessage::SaveChanges",
                                  L"IMessage::GetIDsFromNames"}) {
        NewSeries();
        const Bytes before = Blob();
        Fail(member);
        EXPECT_EQ(Set(L"Day of Week Mask", L"weekdays"), L"0") << testing::PrintToString(member);
        EXPECT_TRUE(Varden().Watch().HasFailed()) << testing::PrintToString(member);
        EXPECT_EQ(LastErrorCode(), 0);
        EXPECT_EQ(Blob(), before);
    }
}

/// The edit is of the property that appointments keep their pattern in, on whatever item: here on a task, as
/// Outlook itself wouldn't open an appointment with such a pattern.
TEST_F(RecurrenceTest, AStoredPatternTooShortForTheWeekdaysStaysAsItIs) {
    for (const std::size_t size : {0u, 1u, 22u, 23u}) {
        Bytes blob(size, 0x55);
        MessageToAdd task{.messageClass = L"IPM.Task", .subject = L"Short"};
        Put(task, {StoredProperty(sets::kAppointment, 0x8216, blob)});
        Open(task);
        OpenPattern();
        EXPECT_EQ(Set(L"Day of Week Mask", L"Weekdays"), L"0");
        if (size < 23) {
            EXPECT_EQ(Blob(), blob) << size;
        } else {
            EXPECT_EQ(Blob()[22], 0x3E);
        }
    }
}

TEST_F(RecurrenceTest, AClearedPatternLeavesASingleAppointment) {
    NewSeries();
    EXPECT_EQ(Call(L"VARD_RPCloseRecurrencePattern"), L"0");
    ExpectReads({{L"Recurrence State", L"Master"}, {L"IsRecurring", L"True"}});
    ExpectFaults(L"VARD_RPClearRecurrencePattern", {},
                 {{L"AppointmentItem::ClearRecurrencePattern",
                   errors::Mapi(L"Error: 80004005\rMAPI_E_CALL_FAILED\r"
                                L"Error clearing recurrence pattern for Appt"),
                   E_FAIL}});
    Fail(L"AppointmentItem::Save"); // left to the function around it
    ExpectComError(L"VARD_RPClearRecurrencePattern", {});
    EXPECT_EQ(Call(L"VARD_RPClearRecurrencePattern"), L"0");
    EXPECT_EQ(Get(L"Recurrence State"), L"Not Recurring");
    ExpectStored({sets::kAppointment, 0x8223, false}); // saved
}

TEST_F(RecurrenceTest, AnOccurrenceIsReadAndWrittenAsAnAppointment) {
    NewSeries();
    OpenOccurrence(L"3/4/2026 9:00 AM");
    ExpectReads({{L"Recurrence State", L"Occurence"},
                 {L"Start", DateAsShown(L"3/4/2026 9:00 AM")},
                 {L"Subject", L"Series"},
                 {L"Meeting Response", L""}});
    EXPECT_NE(Get(L"Created"), L"");
    ExpectUnreadable({L"Interval", L"Received Time", L"Creator Name"});
    EXPECT_EQ(Set(L"Start", L"3/4/2026 1:00 PM"), L"0");
    EXPECT_EQ(Set(L"Subject", L"Moved"), L"0");
    CloseAndSave();
    EXPECT_EQ(Get(L"Interval"), L"1"); // the pattern is open still
    EXPECT_EQ(Call(L"VARD_RPGetExceptionCount"), L"1");
    OpenOccurrence(L"3/5/2026 9:00 AM");
    EXPECT_EQ(Set(L"Subject", L"Lost"), L"0");
    EXPECT_EQ(Call(L"VARD_RPCloseOccurrenceItem"), L"0"); // without a save
    OpenOccurrence(L"3/5/2026 9:00 AM");
    EXPECT_EQ(Get(L"Subject"), L"Series");
    EXPECT_EQ(Set(L"Subject", L"Kept"), L"0");
    EXPECT_EQ(Call(L"VARD_RPCloseRecurrencePattern", {L"1"}), L"0"); // saves what is open
    EXPECT_EQ(Get(L"Subject"), L"Series");                           // the appointment's own again
    OpenPattern();
    EXPECT_EQ(Call(L"VARD_RPGetExceptionCount"), L"2");
}

TEST_F(RecurrenceTest, WhatIsNoOccurrenceIsRefused) {
    NewSeries();
    for (const wchar_t* function : {L"VARD_RPOpenOccurrence", L"VARD_RPDeleteOccurrence"}) {
        for (const wchar_t* date :
             {L"3/4/2026 8:00 AM", L"3/4/2026", L"3/1/2026 9:00 AM", L"1/1/2030 9:00 AM"}) {
            ExpectRefused(function, {date});
        }
        ExpectFailure(function, {L"someday"}, -1089, L"Invalid value for field\rInvalid date/time value");
        ExpectFailure(function, {L""}, -1089, L"Invalid value for field\rmissing start date");
    }
    EXPECT_EQ(Get(L"Interval"), L"1"); // none is open
    EXPECT_EQ(Call(L"VARD_RPCloseOccurrenceItem"), L"0");
    OpenOccurrence(L"3/4/2026 9:00 AM");
    for (const wchar_t* function : {L"VARD_RPCloseOccurrenceItem", L"VARD_RPCloseRecurrencePattern"}) {
        Fail(L"AppointmentItem::Save");
        ExpectRefused(function, {L"1"});
        EXPECT_EQ(Get(L"Subject"), L"Series"); // it stays open
    }
    EXPECT_EQ(Call(L"VARD_RPCloseRecurrencePattern"), L"0");
}

TEST_F(RecurrenceTest, ExceptionsAreWalkedAndPicked) {
    NewSeriesWithExceptions();
    EXPECT_EQ(Call(L"VARD_RPGetExceptionCount"), L"3");
    ExpectRefused(L"VARD_RPOpenNextException", {}); // no walk: it asks for exception 0
    std::vector<std::wstring> deleted, days;
    std::wstring answer = Call(L"VARD_RPOpenFirstException");
    for (; answer == L"0" && days.size() < 9; answer = Call(L"VARD_RPOpenNextException")) {
        deleted.push_back(Get(L"Deleted"));
        days.push_back(Get(L"original date"));
        if (deleted.back() == L"true") {
            ExpectUnreadable({L"Subject"});
        } else {
            ExpectReads({{L"Subject", L"Series"}, {L"RecurrenceState", L"Exception"}});
        }
    }
    EXPECT_EQ(answer, L"End");
    EXPECT_EQ(Call(L"VARD_RPOpenNextException"), L"End"); // and stays there
    std::ranges::sort(days);
    EXPECT_EQ(days, (std::vector{DateAsShown(L"3/3/2026 9:00 AM"), DateAsShown(L"3/4/2026 9:00 AM"),
                                 DateAsShown(L"3/5/2026 9:00 AM")}));
    EXPECT_EQ(std::ranges::count(deleted, L"true"), 1);
    EXPECT_EQ(std::ranges::count(deleted, L"false"), 2);
    for (const wchar_t* index : {L"0", L"4", L"-1"}) {
        ExpectRefused(L"VARD_RPOpenExceptionAt", {index});
    }
    EXPECT_EQ(Call(L"VARD_RPOpenFirstException"), L"0");
    EXPECT_EQ(Call(L"VARD_RPOpenExceptionAt", {L"3"}), L"0");
    EXPECT_EQ(Call(L"VARD_RPOpenNextException"), L"0"); // the walk stands where it stood: at the second
    EXPECT_EQ(Call(L"VARD_RPOpenNextException"), L"0");
    EXPECT_EQ(Call(L"VARD_RPOpenNextException"), L"End");
}

TEST_F(RecurrenceTest, AnExceptionThatIsReplacedUnsavedIsLost) {
    NewSeriesWithExceptions();
    ExpectSuccess(L"VARD_RPOpenFirstException", {});
    EXPECT_EQ(Set(L"Subject", L"Lost"), L"0");
    ExpectSuccess(L"VARD_RPOpenExceptionAt", {L"1"});
    EXPECT_NE(Get(L"Subject"), L"Lost");
    EXPECT_EQ(Set(L"Subject", L"Kept"), L"0");
    CloseAndSave();
    ExpectSuccess(L"VARD_RPOpenFirstException", {});
    EXPECT_EQ(Get(L"Subject"), L"Kept");
    ExpectSuccess(L"VARD_RPDeleteOccurrence", {L"3/6/2026 9:00 AM"});
    EXPECT_EQ(Call(L"VARD_RPGetExceptionCount"), L"4"); // seen by a list that is held already
}

TEST_F(RecurrenceTest, ASeriesWithoutExceptionsIsAtItsEndAtOnce) {
    NewSeries();
    EXPECT_EQ(Call(L"VARD_RPOpenFirstException"), L"End");
    EXPECT_EQ(Call(L"VARD_RPGetExceptionCount"), L"0");
    for (const wchar_t* function : {L"VARD_RPOpenFirstException", L"VARD_RPGetExceptionCount"}) {
        Call(L"VARD_RPOpenRecurrencePattern");
        Fail(L"RecurrencePattern::Exceptions", E_FAIL);
        ExpectRefused(function, {});
    }
}

TEST_F(RecurrenceTest, EachStepOfAnExceptionThatOutlookRefusesIsTold) {
    NewSeriesWithExceptions();
    struct Refusal {
        const wchar_t* member;
        const wchar_t* function;
        Texts arguments;
    };
    const std::vector<Refusal> refusals{
        {L"Exceptions::Count", L"VARD_RPGetExceptionCount", {}},
        {L"Exceptions::Count", L"VARD_RPOpenFirstException", {}},
        {L"Exceptions::Item", L"VARD_RPOpenExceptionAt", {L"1"}},
        {L"Exception::Deleted", L"VARD_RPOpenExceptionAt", {L"1"}},
        {L"Exception::AppointmentItem", L"VARD_RPOpenExceptionAt", {L"1"}},
        {L"AppointmentItem::Delete", L"VARD_RPDeleteOccurrence", {L"3/9/2026 9:00 AM"}},
    };
    for (const auto& [member, function, arguments] : refusals) {
        Fail(member);
        ExpectRefused(function, arguments);
        EXPECT_TRUE(Varden().Watch().HasFailed()) << testing::PrintToString(member);
    }
    EXPECT_EQ(Call(L"VARD_RPCloseOccurrenceItem"), L"0");
    EXPECT_EQ(Call(L"VARD_RPGetExceptionCount"), L"3");
    OpenPattern();
    Fail(L"RecurrencePattern::Exceptions", S_FALSE); // a success without them
    ExpectFailure(L"VARD_RPGetExceptionCount", {}, 2,
                  L"Undefined error. \rUnable to access exceptions for recurrence pattern");
    // An exception that was open outlives the collection that couldn't be had anew.
    ExpectSuccess(L"VARD_RPOpenFirstException", {});
    Fail(L"RecurrencePattern::Exceptions");
    ExpectRefused(L"VARD_RPOpenFirstException", {});
    ExpectFailure(L"VARD_GetFieldData", {L"Deleted"}, -1023,
                  L"Item operation called without opening/creating a record\r"
                  L"Must open recurrence pattern exception first");
}

TEST_F(RecurrenceTest, TheParentIsSavedByTheRecordsSaveAlone) {
    NewSeries();
    EXPECT_EQ(Set(L"Interval", L"2"), L"0");
    const Bytes before = Blob();
    EXPECT_EQ(Call(L"VARD_RPCloseRecurrencePattern", {L"1"}), L"0");
    EXPECT_EQ(Blob(), before);
    Save();
    EXPECT_NE(Blob(), before);
}

TEST_F(RecurrenceTest, TasksRecurToo) {
    New(L"Tasks");
    ExpectWrites({{L"Subject", L"Report", L"Report"}, {L"Due Date", L"3/6/2026", DateAsShown(L"3/6/2026")}});
    OpenPattern();
    ExpectWrites({{L"Recurrence Type", L"Weekly", L"Weekly"}, {L"Regenerate", L"True", L"True"}});
    EXPECT_TRUE(At(L"Tasks").Messages().empty()); // a task isn't saved by that
    EXPECT_EQ(Call(L"VARD_RPCloseRecurrencePattern"), L"0");
    Save();
    ExpectFaults(L"VARD_RPClearRecurrencePattern", {},
                 {{L"TaskItem::ClearRecurrencePattern",
                   errors::Mapi(L"Error: 80004005\rMAPI_E_CALL_FAILED\r"
                                L"Error clearing recurrence pattern for Task"),
                   E_FAIL}});
    EXPECT_EQ(Call(L"VARD_RPClearRecurrencePattern"), L"0");
}

/// A call without what it needs, and what is told after the words for all of these.
struct Missing {
    const wchar_t* function;
    Texts arguments;
    const wchar_t* text;
};

TEST_F(RecurrenceTest, WhatIsNotOpenIsTold) {
    const auto expect = [&](const std::vector<Missing>& calls) {
        for (const auto& [function, arguments, text] : calls) {
            ExpectFailure(function, arguments, -1023, errors::kNoRecord.text + L"\r" + text);
        }
    };
    EXPECT_EQ(Call(L"VARD_RPCloseRecurrencePattern"), L"0");
    EXPECT_EQ(Call(L"VARD_RPCloseOccurrenceItem", {L"1"}), L"0");
    for (const wchar_t* kind : {L"", L"Contacts", L"Mail"}) {
        if (*kind) {
            New(kind);
        }
        const wchar_t* const text = L"Recurrence Patterns are not supported for the current item type";
        expect({{L"VARD_RPOpenRecurrencePattern", {}, text}, {L"VARD_RPClearRecurrencePattern", {}, text}});
    }
    New(L"Calendar");
    expect({{L"VARD_RPOpenOccurrence", {L"3/2/2026"}, L"must open recurrence pattern first"},
            {L"VARD_RPDeleteOccurrence", {L"3/2/2026"}, L"must open recurrence pattern first"},
            {L"VARD_RPGetExceptionCount", {}, L"Must open the recurrence pattern first"},
            {L"VARD_RPOpenFirstException", {}, L"Must open the recurrence pattern first"},
            {L"VARD_RPOpenNextException", {}, L"Must call RPGetFirstException first"},
            {L"VARD_RPOpenExceptionAt", {L"1"}, L"Must call RPGetFirstException first"}});
    EXPECT_EQ(Get(L"Recurrence State"), L"Not Recurring"); // nothing of this made it recur
}

class ExceptionItemTest : public RecurrenceTest {
protected:
    ExceptionItemTest() : RecurrenceTest(kFullPlugin) {}
};

TEST_F(ExceptionItemTest, PropertiesOfAnExceptionsItemAreCountedAndOpened) {
    const std::wstring noRecord = L"Item operation called without opening/creating a record\r";
    NewSeriesWithExceptions();
    ExpectFailure(L"VARD_RPEIGetPropertyCount", {}, -1023,
                  noRecord + L"Must open recurrence pattern exception first");
    ExpectFailure(L"VARD_RPEIOpenPropertyAt", {L"1"}, -1023,
                  noRecord + L"Must open recurrence pattern exception item first");
    ExpectSuccess(L"VARD_RPOpenFirstException", {});
    EXPECT_EQ(Call(L"VARD_RPEIOpenPropertyAt", {L"1"}), L"End"); // there is no list yet
    EXPECT_GT(std::stoi(Call(L"VARD_RPEIGetPropertyCount")), 0);
    EXPECT_EQ(Call(L"VARD_RPEIOpenPropertyAt", {L"1"}), L"0");
    Fail(L"Exception::ItemProperties");
    EXPECT_EQ(Call(L"VARD_RPEIGetPropertyCount"), L"MAPI_E_NO_ACCESS");
}

} // namespace
} // namespace varden::tests
