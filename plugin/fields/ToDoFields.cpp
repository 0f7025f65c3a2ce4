// The to-do family.
#include "ToDoFields.h"

#include "frame/ErrorCodes.h"
#include "frame/Text.h"
#include "session/Operation.h"

#include <algorithm>
#include <array>

namespace varden {

namespace {

/// OlMarkInterval by the words of scripts, blanks taken out.
constexpr std::array kIntervals{
    EnumWord{4, L"none"},     EnumWord{0, L"today"},    EnumWord{1, L"tomorrow"},
    EnumWord{2, L"thisweek"}, EnumWord{3, L"nextweek"},
};
constexpr EnumChoice kIntervalChoice{{}, kIntervals, true};

bool SetMarkAsTask(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    const std::wstring word = Without(data, L' ');
    if (const auto interval = Choose(word, kIntervalChoice)) {
        context.item.Call(L"MarkAsTask", {outlook::LongValue(*interval)});
        return true;
    }
    if (EqualIgnoringCase(word, L"Clear")) {
        context.item.Call(L"ClearTaskFlag");
        return true;
    }
    return Refuse(error::kFieldValue);
}

bool IsMarkedAsTask(const FieldContext& context) {
    return context.item.GetBool(L"IsMarkedAsTask") ||
           Refuse(error::kNoRecord, L"Setting items task field without marking as a task");
}

bool SetTaskSubject(const FieldContext& context, const FieldRow& row, const std::wstring& data) {
    if (!IsMarkedAsTask(context)) {
        return false;
    }
    context.item.PutProperty(row.set.member, outlook::TextValue(data));
    return true;
}

/// These dates have no clearing word.
bool SetTaskDate(const FieldContext& context, const FieldRow& row, const std::wstring& data) {
    if (!IsMarkedAsTask(context)) {
        return false;
    }
    const auto date = ParseDate(data);
    if (!date) {
        return Refuse(error::kFieldValue, L"cannot parse date");
    }
    context.item.PutProperty(row.set.member, outlook::DateValue(*date));
    return true;
}

constexpr bool kInAnyCase = true;

constexpr std::array kToDoFields{
    FieldRow{L"Is Marked As Task", get::boolean(L"IsMarkedAsTask"), set::unknownName},
    FieldRow{L"Mark As Task", get::unknownName, set::special(SetMarkAsTask)},
    FieldRow{L"Task Subject", get::text(L"TaskSubject"), set::special(SetTaskSubject, L"TaskSubject"),
             kInAnyCase},
    FieldRow{L"Task Start Date", get::date(L"TaskStartDate"), set::special(SetTaskDate, L"TaskStartDate"),
             kInAnyCase},
    FieldRow{L"Task Due Date", get::date(L"TaskDueDate"), set::special(SetTaskDate, L"TaskDueDate"),
             kInAnyCase},
    // Can be read and not written, though the check on Outlook's version knows it as written.
    FieldRow{L"Task Completed Date", get::date(L"TaskCompletedDate"), set::unknownName},
    FieldRow{L"To Do Task Ordinal", get::date(L"ToDoTaskOrdinal"),
             set::special(SetTaskDate, L"ToDoTaskOrdinal"), kInAnyCase},
};

} // namespace

std::span<const FieldRow> ToDoFields() {
    return kToDoFields;
}

bool IsToDoFieldToRead(std::wstring_view name) {
    return name != L"Mark As Task" && std::ranges::count(kToDoFields, name, &FieldRow::name) != 0;
}

bool IsToDoFieldToWrite(std::wstring_view name) {
    return name != L"Is Marked As Task" && std::ranges::count(kToDoFields, name, &FieldRow::name) != 0;
}

} // namespace varden
