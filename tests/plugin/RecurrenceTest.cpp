// Patterns of recurring appointments and tasks, their occurrences and exceptions.
#include "CalendarTest.h"

#include <algorithm>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class RecurrenceTest : public CalendarTest {
protected:
    explicit RecurrenceTest(const wchar_t* file = kShippedPlugin) : CalendarTest(file) {}

    /// "Series", daily from Monday, 2 March 2026, at nine, ten times; its pattern is open.
    void NewSeries() {
        NewAppointment(L"Series", L"3/2/2026 9:00 AM");
        ASSERT_EQ(Call(L"VARD_RPOpenRecurrencePattern"), L"0");
        for (const auto& [field, data] : std::vector<std::pair<const wchar_t*, const wchar_t*>>{
                 {L"Recurrence Type", L"Daily"}, {L"Interval", L"1"}, {L"Occurrences", L"10"}}) {
            ASSERT_EQ(Set(field, data), L"0");
        }
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
    std::wstring Open(const wchar_t* date) { return Call(L"VARD_RPOpenOccurrence", {date}); }
    std::wstring CloseAndSave() { return Call(L"VARD_RPCloseOccurrenceItem", {L"1"}); }
    /// The series of NewSeries with its occurrences of 3 and 5 March moved and that of 4 March deleted.
    void NewSeriesWithExceptions() {
        NewSeries();
        for (const auto& [day, to] : std::vector<std::pair<const wchar_t*, const wchar_t*>>{
                 {L"3/3/2026 9:00 AM", L"3/3/2026 2:00 PM"}, {L"3/5/2026 9:00 AM", L"3/5/2026 3:00 PM"}}) {
            ASSERT_EQ(Open(day), L"0");
            EXPECT_EQ(Set(L"Start", to), L"0");
            EXPECT_EQ(CloseAndSave(), L"0");
        }
        ASSERT_EQ(Call(L"VARD_RPDeleteOccurrence", {L"3/4/2026 9:00 AM"}), L"0");
    }
    Bytes Blob() {
        const auto value = Named(Stored(), kAppointmentSet, 0x8216);
        return value ? std::get<Bytes>(*value) : Bytes();
    }
};

TEST_F(RecurrenceTest, APatternHasTheFieldsOfItsType) {
    using Fields = std::vector<std::array<std::wstring, 3>>; // name, what is written, what is read
    const std::vector<std::pair<const wchar_t*, Fields>> types{
        {L"Daily", {{L"Interval", L"3 days", L"3"}, {L"Occurrences", L"5", L"5"}}},
        {L"weekly",
         {{L"Interval", L"2", L"2"},
          {L"Day of Week Mask", L"Monday, Friday", L"Monday\rFriday"},
          {L"Day of Week Mask", L"saturday and SUNDAY", L"Sunday\rSaturday"},
          {L"Day of Week Mask", L"sunday monday tuesday wednesday thursday friday saturday",
           L"Sunday\rMonday\rTuesday\rWednesday\rThursday\rFriday\rSaturday"}}},
        {L"Monthly", {{L"Interval", L"2", L"2"}, {L"Day of Month", L"15", L"15"}}},
        {L"Nth Month",
         {{L"Interval", L"3", L"3"},
          {L"Day of Week Mask", L"Tuesday", L"Tuesday"},
          {L"Instance", L"2", L"2"}}},
        {L"Yearly", {{L"Month of Year", L"7", L"7"}, {L"Day of Month", L"4", L"4"}}},
        {L"nth year",
         {{L"Month of Year", L"11", L"11"},
          {L"Day of Week Mask", L"Thursday", L"Thursday"},
          {L"Instance", L"5", L"5"}}},
    };
    const std::vector<std::wstring> words{L"Daily",     L"Weekly", L"Monthly",
                                          L"Nth Month", L"Yearly", L"Nth Year"};
    for (std::size_t i = 0; i < types.size(); ++i) {
        const auto& [type, fields] = types[i];
        NewAppointment(words[i], L"3/2/2026 9:00 AM");
        ASSERT_EQ(Call(L"VARD_RPOpenRecurrencePattern"), L"0");
        EXPECT_EQ(Set(L"Recurrence Type", type), L"0");
        EXPECT_EQ(Calendar().Messages().size(), i + 1); // saved at once
        EXPECT_EQ(Get(L"recurrence type"), words[i]);
        for (const auto& [field, data, read] : fields) {
            EXPECT_EQ(Set(field.c_str(), data), L"0") << testing::PrintToString(field);
            EXPECT_EQ(Get(field.c_str()), read) << testing::PrintToString(type);
        }
        EXPECT_EQ(Set(L"recurrence type", L"yEARLY"), L"0"); // names and words in any case
        EXPECT_EQ(Get(L"RECURRENCETYPE"), L"Yearly");
    }
}

TEST_F(RecurrenceTest, TheRangeOfAPatternIsWrittenAndRead) {
    NewSeries();
    struct Written {
        const wchar_t *field, *data;
        std::wstring read;
    };
    const std::vector<Written> fields{
        {L"Start Time", L"10:30 AM", Shown(L"10:30 AM")},
        {L"Duration", L"60", L"60"},
        {L"End Time", L"11:00 AM", Shown(L"11:00 AM")},
        {L"Pattern Start Date", L"3/9/2026", Shown(L"3/9/2026")},
        {L"Pattern End Date", L"3/20/2026 5:00 PM", Shown(L"3/20/2026")}, // the day alone
        {L"No End Date", L"Yes", L"false"},
        {L"no end date", L"true", L"true"},
        {L"Occurrences", L"3", L"3"},
        {L"NO END DATE", L"TRUE", L"true"},
    };
    for (const Written& field : fields) {
        EXPECT_EQ(Set(field.field, field.data), L"0") << testing::PrintToString(field.field);
        EXPECT_EQ(LastErrorCode(), 0);
        EXPECT_EQ(Get(field.field), field.read) << testing::PrintToString(field.field);
    }
    EXPECT_EQ(Get(L"pattern end date"), L"None");
    EXPECT_EQ(Get(L"Duration"), L"30");
    EXPECT_EQ(Get(L"PatternStartDate"), Get(L"Pattern Start Date"));
    EXPECT_EQ(Get(L"Regenerate"), L"False"); // with a capital, unlike the other
}

TEST_F(RecurrenceTest, NamesAndValuesThatAPatternHasNotAreRefused) {
    NewSeries();
    for (const wchar_t* name : {L"DayofMonth", L"Interval ", L"Subject", L"No Such"}) {
        ExpectFailure(L"VARD_SetFieldData", {name, L"1"}, -1022, L"Invalid field name passed");
    }
    for (const wchar_t* name : {L"Subject", L"No Such", L"Deleted"}) {
        ExpectFailure(L"VARD_GetFieldData", {name}, -1022, L"Invalid field name passed");
    }
    ExpectFailure(L"VARD_SetFieldData", {L"Recurrence Type", L"Hourly"}, -1089, L"Invalid value for field");
    EXPECT_EQ(Get(L"Recurrence Type"), L"Daily");
    ExpectRefused(L"VARD_SetFieldData", {L"Pattern Start Date", L"someday"}); // Outlook answers
    ExpectRefused(L"VARD_SetFieldData", {L"Interval", L"none"});
    ExpectRefused(L"VARD_SetFieldData", {L"Regenerate", L"True"}); // tasks alone have it
    Varden().Watch().FailMember(L"AppointmentItem::Save", E_ACCESSDENIED);
    ExpectRefused(L"VARD_SetFieldData", {L"Recurrence Type", L"Weekly"});
}

TEST_F(RecurrenceTest, WeekdaysAreWrittenIntoTheStoredPattern) {
    NewSeries();
    EXPECT_EQ(Set(L"Recurrence Type", L"Weekly"), L"0");
    const Bytes weekly = Blob();
    EXPECT_EQ(Set(L"Day of Week Mask", L"weekdays "), L"0"); // not the word: no day of the week is in it
    EXPECT_EQ(Get(L"Day of Week Mask"), L"");
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
        Varden().Watch().FailMember(member, E_ACCESSDENIED);
        EXPECT_EQ(Set(L"Day of Week Mask", L"weekdays"), L"0") << testing::PrintToString(member);
        EXPECT_TRUE(Varden().Watch().HasFailed()) << testing::PrintToString(member);
        EXPECT_EQ(LastErrorCode(), 0);
        EXPECT_EQ(Blob(), before);
    }
}

/// The edit is of the property that appointments keep their pattern in, on whatever item: here on a task, as
/// Outlook itself wouldn't open an appointment with such a pattern.
TEST_F(RecurrenceTest, AStoredPatternTooShortForTheWeekdaysStaysAsItIs) {
    Folder& tasks = FolderAt(World(), L"Front Desk", L"Tasks");
    for (const std::size_t size : {0u, 1u, 22u, 23u}) {
        const Bytes blob(size, 0x55);
        MessageToAdd task{.messageClass = L"IPM.Task", .subject = L"Short"};
        PutNamed(task.more, tasks.Names(), {&kAppointmentSet, 0x8216, blob});
        const auto message = AddMessage(tasks, task);
        ASSERT_EQ(Call(L"VARD_OpenRecord", {ToHex(message->EntryId())}), L"0");
        ASSERT_EQ(Call(L"VARD_RPOpenRecurrencePattern"), L"0");
        EXPECT_EQ(Set(L"Day of Week Mask", L"Weekdays"), L"0");
        const auto stored = std::get<Bytes>(*Named(*message, kAppointmentSet, 0x8216));
        if (size < 23) {
            EXPECT_EQ(stored, blob) << size;
        } else {
            EXPECT_EQ(stored[22], 0x3E);
        }
    }
}

TEST_F(RecurrenceTest, AClearedPatternLeavesASingleAppointment) {
    NewSeries();
    EXPECT_EQ(Call(L"VARD_RPCloseRecurrencePattern"), L"0");
    EXPECT_EQ(Get(L"Recurrence State"), L"Master");
    EXPECT_EQ(Get(L"IsRecurring"), L"True");
    Varden().Watch().FailMember(L"AppointmentItem::ClearRecurrencePattern", E_FAIL);
    ExpectFailure(L"VARD_RPClearRecurrencePattern", {}, -1097,
                  L"MAPI Subsystem error\rError: 80004005\rMAPI_E_CALL_FAILED\r"
                  L"Error clearing recurrence pattern for Appt");
    Varden().Watch().FailMember(L"AppointmentItem::Save", E_ACCESSDENIED); // left to the function around it
    EXPECT_EQ(Call(L"VARD_RPClearRecurrencePattern"), kError);
    EXPECT_EQ(LastErrorCode(), 0);
    EXPECT_TRUE(LastErrorText().starts_with(L"Error: 80070005\nMessage:"));
    EXPECT_EQ(Call(L"VARD_RPClearRecurrencePattern"), L"0");
    EXPECT_EQ(Get(L"Recurrence State"), L"Not Recurring");
    EXPECT_EQ(Named(Stored(), kAppointmentSet, 0x8223), StoredValue(false)); // saved
}

TEST_F(RecurrenceTest, AnOccurrenceIsReadAndWrittenAsAnAppointment) {
    NewSeries();
    ASSERT_EQ(Open(L"3/4/2026 9:00 AM"), L"0");
    EXPECT_EQ(Get(L"Recurrence State"), L"Occurence");
    EXPECT_EQ(Get(L"Start"), Shown(L"3/4/2026 9:00 AM"));
    EXPECT_EQ(Get(L"Subject"), L"Series");
    EXPECT_EQ(Get(L"Meeting Response"), L"");
    EXPECT_NE(Get(L"Created"), L"");
    for (const wchar_t* name : {L"Interval", L"Received Time", L"Creator Name"}) {
        ExpectFailure(L"VARD_GetFieldData", {name}, -1022, L"Invalid field name passed");
    }
    EXPECT_EQ(Set(L"Start", L"3/4/2026 1:00 PM"), L"0");
    EXPECT_EQ(Set(L"Subject", L"Moved"), L"0");
    EXPECT_EQ(CloseAndSave(), L"0");
    EXPECT_EQ(Get(L"Interval"), L"1"); // the pattern is open still
    EXPECT_EQ(Call(L"VARD_RPGetExceptionCount"), L"1");
    ASSERT_EQ(Open(L"3/5/2026 9:00 AM"), L"0");
    EXPECT_EQ(Set(L"Subject", L"Lost"), L"0");
    EXPECT_EQ(Call(L"VARD_RPCloseOccurrenceItem"), L"0"); // without a save
    ASSERT_EQ(Open(L"3/5/2026 9:00 AM"), L"0");
    EXPECT_EQ(Get(L"Subject"), L"Series");
    EXPECT_EQ(Set(L"Subject", L"Kept"), L"0");
    EXPECT_EQ(Call(L"VARD_RPCloseRecurrencePattern", {L"1"}), L"0"); // saves what is open
    EXPECT_EQ(Get(L"Subject"), L"Series");                           // the appointment's own again
    ASSERT_EQ(Call(L"VARD_RPOpenRecurrencePattern"), L"0");
    EXPECT_EQ(Call(L"VARD_RPGetExceptionCount"), L"2");
}

TEST_F(RecurrenceTest, WhatIsNoOccurrenceIsRefused) {
    NewSeries();
    for (const wchar_t* date : {L"3/4/2026 8:00 AM", L"3/4/2026", L"3/1/2026 9:00 AM", L"1/1/2030 9:00 AM"}) {
        ExpectRefused(L"VARD_RPOpenOccurrence", {date});
        ExpectRefused(L"VARD_RPDeleteOccurrence", {date});
    }
    for (const wchar_t* function : {L"VARD_RPOpenOccurrence", L"VARD_RPDeleteOccurrence"}) {
        ExpectFailure(function, {L"someday"}, -1089, L"Invalid value for field\rInvalid date/time value");
        ExpectFailure(function, {L""}, -1089, L"Invalid value for field\rmissing start date");
    }
    EXPECT_EQ(Get(L"Interval"), L"1"); // none is open
    EXPECT_EQ(Call(L"VARD_RPCloseOccurrenceItem"), L"0");
    ASSERT_EQ(Open(L"3/4/2026 9:00 AM"), L"0");
    Varden().Watch().FailMember(L"AppointmentItem::Save", E_ACCESSDENIED);
    ExpectRefused(L"VARD_RPCloseOccurrenceItem", {L"1"});
    EXPECT_EQ(Get(L"Subject"), L"Series"); // it stays open
    Varden().Watch().FailMember(L"AppointmentItem::Save", E_ACCESSDENIED);
    ExpectRefused(L"VARD_RPCloseRecurrencePattern", {L"1"});
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
            ExpectFailure(L"VARD_GetFieldData", {L"Subject"}, -1022, L"Invalid field name passed");
        } else {
            EXPECT_EQ(Get(L"Subject"), L"Series");
            EXPECT_EQ(Get(L"RecurrenceState"), L"Exception");
        }
    }
    EXPECT_EQ(answer, L"End");
    EXPECT_EQ(Call(L"VARD_RPOpenNextException"), L"End"); // and stays there
    std::ranges::sort(days);
    EXPECT_EQ(days, (std::vector{Shown(L"3/3/2026 9:00 AM"), Shown(L"3/4/2026 9:00 AM"),
                                 Shown(L"3/5/2026 9:00 AM")}));
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
    ASSERT_EQ(Call(L"VARD_RPOpenFirstException"), L"0");
    EXPECT_EQ(Set(L"Subject", L"Lost"), L"0");
    ASSERT_EQ(Call(L"VARD_RPOpenExceptionAt", {L"1"}), L"0");
    EXPECT_NE(Get(L"Subject"), L"Lost");
    EXPECT_EQ(Set(L"Subject", L"Kept"), L"0");
    EXPECT_EQ(CloseAndSave(), L"0");
    ASSERT_EQ(Call(L"VARD_RPOpenFirstException"), L"0");
    EXPECT_EQ(Get(L"Subject"), L"Kept");
    ASSERT_EQ(Call(L"VARD_RPDeleteOccurrence", {L"3/6/2026 9:00 AM"}), L"0");
    EXPECT_EQ(Call(L"VARD_RPGetExceptionCount"), L"4"); // seen by a list that is held already
}

TEST_F(RecurrenceTest, ASeriesWithoutExceptionsIsAtItsEndAtOnce) {
    NewSeries();
    EXPECT_EQ(Call(L"VARD_RPOpenFirstException"), L"End");
    EXPECT_EQ(Call(L"VARD_RPGetExceptionCount"), L"0");
    for (const wchar_t* function : {L"VARD_RPOpenFirstException", L"VARD_RPGetExceptionCount"}) {
        Call(L"VARD_RPOpenRecurrencePattern");
        Varden().Watch().FailMember(L"RecurrencePattern::Exceptions", E_FAIL);
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
        Varden().Watch().FailMember(member, E_ACCESSDENIED);
        ExpectRefused(function, arguments);
        EXPECT_TRUE(Varden().Watch().HasFailed()) << testing::PrintToString(member);
    }
    EXPECT_EQ(Call(L"VARD_RPCloseOccurrenceItem"), L"0");
    EXPECT_EQ(Call(L"VARD_RPGetExceptionCount"), L"3");
    ASSERT_EQ(Call(L"VARD_RPOpenRecurrencePattern"), L"0");
    Varden().Watch().FailMember(L"RecurrencePattern::Exceptions", S_FALSE); // a success without them
    ExpectFailure(L"VARD_RPGetExceptionCount", {}, 2,
                  L"Undefined error. \rUnable to access exceptions for recurrence pattern");
    // An exception that was open outlives the collection that couldn't be had anew.
    ASSERT_EQ(Call(L"VARD_RPOpenFirstException"), L"0");
    Varden().Watch().FailMember(L"RecurrencePattern::Exceptions", E_ACCESSDENIED);
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
    ASSERT_EQ(Call(L"VARD_NewRecord", {L"Tasks"}), L"0");
    EXPECT_EQ(Set(L"Subject", L"Report"), L"0");
    EXPECT_EQ(Set(L"Due Date", L"3/6/2026"), L"0");
    ASSERT_EQ(Call(L"VARD_RPOpenRecurrencePattern"), L"0");
    EXPECT_EQ(Set(L"Recurrence Type", L"Weekly"), L"0");
    EXPECT_EQ(Set(L"Regenerate", L"True"), L"0");
    EXPECT_EQ(Get(L"Regenerate"), L"True");
    EXPECT_TRUE(FolderAt(World(), L"Front Desk", L"Tasks").Messages().empty()); // a task isn't saved by that
    EXPECT_EQ(Call(L"VARD_RPCloseRecurrencePattern"), L"0");
    Save();
    Varden().Watch().FailMember(L"TaskItem::ClearRecurrencePattern", E_FAIL);
    ExpectFailure(L"VARD_RPClearRecurrencePattern", {}, -1097,
                  L"MAPI Subsystem error\rError: 80004005\rMAPI_E_CALL_FAILED\r"
                  L"Error clearing recurrence pattern for Task");
    EXPECT_EQ(Call(L"VARD_RPClearRecurrencePattern"), L"0");
}

TEST_F(RecurrenceTest, WhatIsNotOpenIsTold) {
    const std::wstring noRecord = L"Item operation called without opening/creating a record\r";
    EXPECT_EQ(Call(L"VARD_RPCloseRecurrencePattern"), L"0");
    EXPECT_EQ(Call(L"VARD_RPCloseOccurrenceItem", {L"1"}), L"0");
    for (const wchar_t* kind : {L"", L"Contacts", L"Mail"}) {
        if (*kind) {
            ASSERT_EQ(Call(L"VARD_NewRecord", {kind}), L"0");
        }
        for (const wchar_t* function : {L"VARD_RPOpenRecurrencePattern", L"VARD_RPClearRecurrencePattern"}) {
            ExpectFailure(function, {}, -1023,
                          noRecord + L"Recurrence Patterns are not supported for the current item type");
        }
    }
    NewAppointment(L"Plain", L"3/2/2026 9:00 AM");
    for (const wchar_t* function : {L"VARD_RPOpenOccurrence", L"VARD_RPDeleteOccurrence"}) {
        ExpectFailure(function, {L"3/2/2026"}, -1023, noRecord + L"must open recurrence pattern first");
    }
    for (const wchar_t* function : {L"VARD_RPGetExceptionCount", L"VARD_RPOpenFirstException"}) {
        ExpectFailure(function, {}, -1023, noRecord + L"Must open the recurrence pattern first");
    }
    ExpectFailure(L"VARD_RPOpenNextException", {}, -1023, noRecord + L"Must call RPGetFirstException first");
    ExpectFailure(L"VARD_RPOpenExceptionAt", {L"1"}, -1023,
                  noRecord + L"Must call RPGetFirstException first");
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
    ASSERT_EQ(Call(L"VARD_RPOpenFirstException"), L"0");
    EXPECT_EQ(Call(L"VARD_RPEIOpenPropertyAt", {L"1"}), L"End"); // there is no list yet
    EXPECT_GT(std::stoi(Call(L"VARD_RPEIGetPropertyCount")), 0);
    EXPECT_EQ(Call(L"VARD_RPEIOpenPropertyAt", {L"1"}), L"0");
    Varden().Watch().FailMember(L"Exception::ItemProperties", E_ACCESSDENIED);
    EXPECT_EQ(Call(L"VARD_RPEIGetPropertyCount"), L"MAPI_E_NO_ACCESS");
}

} // namespace
} // namespace varden::tests
