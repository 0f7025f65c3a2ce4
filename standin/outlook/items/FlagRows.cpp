// Follow-up flags, and the tasks that they make of items which are none ([MS-OXOFLAG]).
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/Tags.h"
#include "standin/outlook/items/Item.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"
#include "standin/outlook/items/TaskDates.h"

namespace standin::outlook {
namespace {

using mailbox::kPrFlagStatus;   // [MS-OXOFLAG] 2.2.1.1
using mailbox::kPrFollowupIcon; // 2.2.1.2
using mailbox::MessageProperties;
using mailbox::OpenMessage;

constexpr mailbox::PropertyTag kPrFlagCompleteTime = PROP_TAG(PT_SYSTIME, 0x1091); // 2.2.1.3
constexpr mailbox::PropertyTag kPrToDoItemFlags = PROP_TAG(PT_LONG, 0x0E2B);       // 2.2.1.6

/// OlFlagStatus and OlFlagIcon have the numbers of the properties.
constexpr std::int32_t kNoFlag = 0, kComplete = 1, kMarked = 2;
constexpr std::int32_t kNoIcon = 0, kRedIcon = 6;
/// A bit of PR_TODO_ITEM_FLAGS: the item is on the user's list of things to do.
constexpr std::int32_t kTimeFlagged = 1;
constexpr std::int32_t kTaskNotStarted = 0, kTaskComplete = 2; // OlTaskStatus

constexpr StoredProperty kFlagRequest{.tag = PT_UNICODE, .set = &kPsCommon, .number = 0x8530};
constexpr StoredProperty kToDoTitle{.tag = PT_UNICODE, .set = &kPsCommon, .number = 0x85A4};
constexpr StoredProperty kToDoOrdinal{.tag = PT_SYSTIME, .set = &kPsCommon, .number = 0x85A0};
constexpr StoredProperty kToDoSubOrdinal{.tag = PT_UNICODE, .set = &kPsCommon, .number = 0x85A1};
constexpr StoredProperty kTaskStatus{.tag = PT_LONG, .set = &kPsTask, .number = 0x8101};
constexpr StoredProperty kPercentComplete{.tag = PT_DOUBLE, .set = &kPsTask, .number = 0x8102};
constexpr StoredProperty kTaskIsComplete{.tag = PT_BOOLEAN, .set = &kPsTask, .number = 0x811C};

std::int32_t StatusOf(const MessageProperties& message) {
    return message.Get<kPrFlagStatus>().value_or(kNoFlag);
}

bool IsToDo(const MessageProperties& message) {
    return message.Get<kPrToDoItemFlags>().value_or(0) & kTimeFlagged;
}

_variant_t ReadIsToDo(const MessageProperties& message, const StoredProperty&) {
    return Result(IsToDo(message));
}

constexpr Conversion kIsToDo{ReadIsToDo, nullptr};

void CheckToDo(const OpenMessage& message) {
    if (!IsToDo(message))
        throw Failure(E_FAIL, L"The item is not marked as a task.");
}

/// Puts the item on the list, at its end, and gives it a flag.
void Mark(OpenMessage& message) {
    if (StatusOf(message) != kMarked)
        RemoveValue(message, {.tag = kPrFlagCompleteTime});
    Check(message.Write(kPrFlagStatus, kMarked));
    if (message.Get<kPrFollowupIcon>().value_or(kNoIcon) == kNoIcon)
        Check(message.Write(kPrFollowupIcon, kRedIcon));
    WriteValue(message, kTaskStatus, kTaskNotStarted);
    WriteValue(message, kPercentComplete, 0.0);
    WriteValue(message, kTaskIsComplete, false);
    if (!ReadValue(message, kFlagRequest))
        WriteValue(message, kFlagRequest, std::wstring(L"Follow up"));
    if (IsToDo(message))
        return;
    Check(message.Write(kPrToDoItemFlags, kTimeFlagged));
    WriteValue(message, kToDoTitle, message.Get<PR_SUBJECT_W>().value_or(L""));
    WriteValue(message, kToDoOrdinal, mailbox::Now());
    WriteValue(message, kToDoSubOrdinal, std::wstring(L"5555555"));
}

/// Takes it from the list, with all that it had there.
void Clear(OpenMessage& message) {
    for (const StoredProperty& stored :
         {StoredProperty{.tag = kPrFlagStatus}, StoredProperty{.tag = kPrFlagCompleteTime},
          StoredProperty{.tag = kPrFollowupIcon}, StoredProperty{.tag = kPrToDoItemFlags}, kFlagRequest,
          kToDoTitle, kToDoOrdinal, kToDoSubOrdinal, kTaskStatus, kPercentComplete, kTaskIsComplete,
          kTaskDateCompleted})
        RemoveValue(message, stored);
    WriteTaskSpan(message, {});
}

void Complete(OpenMessage& message, Date date) {
    Mark(message);
    Check(message.Write(kPrFlagStatus, kComplete));
    RemoveValue(message, {.tag = kPrFollowupIcon});
    Check(message.Write(kPrFlagCompleteTime, TimeOfLocal(date)));
    WriteValue(message, kTaskDateCompleted, TimeOfUtc(WholeDay(date)));
    WriteValue(message, kTaskStatus, kTaskComplete);
    WriteValue(message, kPercentComplete, 1.0);
    WriteValue(message, kTaskIsComplete, true);
}

/// The work days of the week that a day is in, some weeks on: Monday and Friday.
TaskSpan WorkWeek(Date day, int weeksOn) {
    const int sinceMonday = (static_cast<int>(day.days) + 5) % 7; // day 0 was a Saturday
    const double monday = day.days - sinceMonday + 7 * weeksOn;
    return {{monday}, {monday + 4}};
}

/// What OlMarkInterval says. This week begins the day after tomorrow, as long as that is a day of work.
TaskSpan SpanOf(std::int32_t interval) {
    constexpr std::int32_t kToday = 0, kTomorrow = 1, kThisWeek = 2, kNextWeek = 3;
    const Date today = Today();
    switch (interval) {
    case kToday:
        return {today, today};
    case kTomorrow:
        return {{today.days + 1}, {today.days + 1}};
    case kThisWeek: {
        const Date friday = {std::max(WorkWeek(today, 0).due.days, today.days)};
        return {{std::min(today.days + 2, friday.days)}, friday};
    }
    case kNextWeek:
        return WorkWeek(today, 1);
    default:
        return {};
    }
}

void MarkAsTask(ItemObject& item, const Arguments& arguments) {
    constexpr std::int32_t kMarkComplete = 5;
    const std::int32_t interval = arguments.Number(0);
    if (!ObjectModel::Get().HasValue(L"OlMarkInterval", interval))
        throw InvalidValue();
    if (interval == kMarkComplete)
        return Complete(item.Message(), LocalDate(mailbox::Now()));
    Mark(item.Message());
    WriteTaskSpan(item.Message(), SpanOf(interval));
}

void ClearTaskFlag(ItemObject& item) {
    Clear(item.Message());
}

void WriteFlagStatus(OpenMessage& message, const StoredProperty&, const Call& call) {
    switch (call.arguments.Number(0)) {
    case kNoFlag:
        return Clear(message);
    case kComplete:
        return Complete(message, LocalDate(mailbox::Now()));
    case kMarked:
        return Mark(message);
    default:
        throw InvalidValue();
    }
}

_variant_t ReadLong(const MessageProperties& message, const StoredProperty& stored) {
    return kNumber.read(message, stored);
}

constexpr Conversion kFlagStatus{ReadLong, WriteFlagStatus};

/// Without a colour there is no flag.
void FollowIcon(OpenMessage& message) {
    if (message.Get<kPrFollowupIcon>().value_or(kNoIcon) == kNoIcon)
        Clear(message);
    else
        Mark(message);
}

void FollowRequest(OpenMessage& message) {
    if (StatusOf(message) == kNoFlag && !ReadAs<std::wstring>(message, kFlagRequest).value_or(L"").empty())
        Mark(message);
}

void FollowDateCompleted(OpenMessage& message) {
    if (const auto date = ReadAs<mailbox::SysTime>(message, kTaskDateCompleted))
        Complete(message, UtcDate(*date));
    else
        Mark(message);
}

/// The same, only for items that are marked as tasks.
template <void (*follow)(OpenMessage&)>
void PutToDo(Object& item, const Call& call) {
    CheckToDo(MessageOf(item));
    PutThen<follow>(item, call);
}

constexpr Row CompletedRow() {
    Row row = Named(L"TaskCompletedDate", kAsStored, PT_SYSTIME, kPsTask, 0x810F);
    row.put = PutToDo<FollowDateCompleted>;
    return row;
}

constexpr Row kRows[] = {
    Stored(L"FlagDueBy", kTime, PR_REPLY_TIME),
    Then<FollowIcon>(Stored(L"FlagIcon", kNumber, kPrFollowupIcon)),
    Then<FollowRequest>(Named(L"FlagRequest", kText, PT_UNICODE, kPsCommon, 0x8530)),
    Stored(L"FlagStatus", kFlagStatus, kPrFlagStatus),
    Stored(L"IsMarkedAsTask", kIsToDo, kPrToDoItemFlags),
    CompletedRow(),
    Provided<CheckToDo>(Named(L"TaskDueDate", kTaskDue, PT_SYSTIME, kPsTask, 0x8105)),
    Provided<CheckToDo>(Named(L"TaskStartDate", kTaskStart, PT_SYSTIME, kPsTask, 0x8104)),
    Provided<CheckToDo>(Named(L"TaskSubject", kText, PT_UNICODE, kPsCommon, 0x85A4)),
    Provided<CheckToDo>(Named(L"ToDoTaskOrdinal", kTime, PT_SYSTIME, kPsCommon, 0x85A0)),
    {L"ClearTaskFlag", Get<ClearTaskFlag>},
    {L"MarkAsTask", Get<MarkAsTask>},
};

} // namespace

constinit const std::span<const Row> kFlagRows = kRows;

} // namespace standin::outlook
