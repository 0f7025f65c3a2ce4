// TaskItem: the members of tasks beyond those of all items.
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Tags.h"
#include "standin/outlook/calendar/RecurrencePattern.h"
#include "standin/outlook/calendar/SeriesStore.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"
#include "standin/outlook/items/People.h"
#include "standin/outlook/items/TaskDates.h"
#include "standin/outlook/tasks/Assignments.h"
#include "standin/outlook/tasks/TaskProgress.h"
#include "standin/outlook/tasks/TaskProperties.h"

#include <limits>

namespace standin::outlook {
namespace {

using namespace tasks;
using mailbox::MessageProperties;
using mailbox::OpenMessage;

/// What a task has that was never put in an order.
constexpr std::int32_t kNoOrdinal = std::numeric_limits<std::int32_t>::max();

/// Updates and self-assigned tasks have nothing that is answered.
_variant_t ReadResponse(const MessageProperties& message, const StoredProperty& stored) {
    const std::int32_t mode = ReadAs<std::int32_t>(message, stored).value_or(kSimple);
    return Result(mode > kDecline ? kSimple : mode);
}

/// Minutes of work.
void WriteWork(OpenMessage& message, const StoredProperty& stored, const Call& call) {
    if (call.arguments.Number(0) < 0)
        throw InvalidValue();
    kNumber.write(message, stored, call);
}

_variant_t ReadWork(const MessageProperties& message, const StoredProperty& stored) {
    return kNumber.read(message, stored);
}

constexpr Conversion kResponse{ReadResponse, nullptr};
constexpr Conversion kWork{ReadWork, WriteWork};

void MarkComplete(ItemObject& item) {
    SetDoneToday(item.Message());
}

/// Whether there was a next one.
bool SkipRecurrence(ItemObject& item) {
    return MoveOn(item.Message());
}

constexpr Row kRows[] = {
    Named(L"ActualWork", kWork, PT_LONG, kPsTask, 0x8110),
    Named(L"CardData", kText, PT_UNICODE, kPsTask, 0x812B),
    Then<FollowComplete>(Named(L"Complete", kFlag, PT_BOOLEAN, kPsTask, 0x811C)),
    Named(L"ContactNames", kKeywords, PT_MV_UNICODE, kPsCommon, 0x853A),
    Named(L"Contacts", kKeywords, PT_MV_UNICODE, kPsCommon, 0x853A),
    Then<FollowDateCompleted>(Named(L"DateCompleted", kAsStored, PT_SYSTIME, kPsTask, 0x810F)),
    Named(L"DelegationState", kNumber, PT_LONG, kPsTask, 0x812A),
    Named(L"Delegator", kText, PT_UNICODE, kPsTask, 0x8121),
    Named(L"DueDate", kTaskDue, PT_SYSTIME, kPsTask, 0x8105),
    Named(L"IsRecurring", kFlag, PT_BOOLEAN, kPsTask, 0x8126),
    Named(L"Ordinal", kNumber, PT_LONG, kPsTask, 0x8123, kNoOrdinal),
    Named(L"Owner", kText, PT_UNICODE, kPsTask, 0x811F),
    Named(L"Ownership", kNumber, PT_LONG, kPsTask, 0x8129),
    Then<FollowPercent>(Named(L"PercentComplete", kPercent, PT_DOUBLE, kPsTask, 0x8102)),
    Named(L"ResponseState", kResponse, PT_LONG, kPsCommon, 0x8518),
    Named(L"Role", kText, PT_UNICODE, kPsTask, 0x8127),
    Named(L"SchedulePlusPriority", kText, PT_UNICODE, kPsTask, 0x812F),
    Named(L"StartDate", kTaskStart, PT_SYSTIME, kPsTask, 0x8104),
    Then<FollowStatus>(Named(L"Status", kNumber, PT_LONG, kPsTask, 0x8101)),
    Stored(L"StatusOnCompletionRecipients", kBccNames, PR_DISPLAY_BCC_W),
    Stored(L"StatusUpdateRecipients", kCcNames, PR_DISPLAY_CC_W),
    Named(L"TeamTask", kFlag, PT_BOOLEAN, kPsTask, 0x8103),
    Named(L"ToDoTaskOrdinal", kTime, PT_SYSTIME, kPsCommon, 0x85A0),
    Named(L"TotalWork", kWork, PT_LONG, kPsTask, 0x8111),
    {L"Assign", Get<Assign>},
    {L"CancelResponseState", Get<CancelResponseState>},
    {L"ClearRecurrencePattern", Get<calendar::ClearRecurrencePattern>},
    {L"GetRecurrencePattern", Get<calendar::GetRecurrencePattern>},
    {L"MarkComplete", Get<MarkComplete>},
    {L"Respond", Get<Respond>},
    {L"Send", Get<SendTask>},
    {L"SkipRecurrence", Get<SkipRecurrence>},
    {L"StatusReport", Get<StatusReport>},
};

void Begin(OpenMessage& message) {
    SetUndone(message, kNotStarted, 0);
    for (const StoredProperty* number :
         {&kActualEffort, &kEstimatedEffort, &kOwnership, &kAcceptance, &kMode})
        WriteValue(message, *number, std::int32_t{0});
    for (const StoredProperty* flag : {&kTeamTask, &kRecurring, &kDeadOccurrence, &kAccepted})
        WriteValue(message, *flag, false);
    WriteValue(message, kState, kStateOwn);
    WriteValue(message, kOrdinal, kNoOrdinal);
    WriteValue(message, kCreatedHere, true);
    if (const auto user = CurrentUser())
        WriteValue(message, kOwner, user->Name());
}

/// Its icon ([MS-OXOTASK] 2.2.2.1.1).
std::int32_t IconOf(const OpenMessage& message) {
    constexpr std::int32_t kPlain = 0x500, kRecurs = 0x501, kAssignees = 0x502, kAssigners = 0x503;
    switch (ReadAs<std::int32_t>(message, kOwnership).value_or(kNewTask)) {
    case kAssignersCopy:
        return kAssigners;
    case kAssigneesCopy:
        return kAssignees;
    default:
        return calendar::IsSeries(message) ? kRecurs : kPlain;
    }
}

void Complete(OpenMessage& message) {
    LeaveDoneBehind(message);
    WriteValue(message, kVersion, ReadAs<std::int32_t>(message, kVersion).value_or(0) + 1);
    if (const auto user = CurrentUser())
        WriteValue(message, kLastUser, user->Name());
    Check(message.Write(mailbox::kPrIconIndex, IconOf(message)));
}

} // namespace

const ItemKind kTaskItem{
    .kind = {L"TaskItem", 0x00063035, 48, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Task",
    .itemType = 3,
    .home = mailbox::kTasks,
    .begin = Begin,
    .complete = Complete,
};

} // namespace standin::outlook
