// The properties of tasks that more than one source needs ([MS-OXOTASK] 2.2.2.2).
#pragma once

#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/PropertySets.h"

namespace standin::outlook::tasks {

namespace detail {

constexpr StoredProperty Task(mailbox::PropertyType type, std::uint32_t number) {
    return {.tag = type, .set = &kPsTask, .number = number};
}

} // namespace detail

inline constexpr StoredProperty kStatus = detail::Task(PT_LONG, 0x8101);
inline constexpr StoredProperty kFractionDone = detail::Task(PT_DOUBLE, 0x8102); ///< from 0 to 1
inline constexpr StoredProperty kTeamTask = detail::Task(PT_BOOLEAN, 0x8103);
inline constexpr StoredProperty kAccepted = detail::Task(PT_BOOLEAN, 0x8108);
inline constexpr StoredProperty kDeadOccurrence = detail::Task(PT_BOOLEAN, 0x8109);
inline constexpr StoredProperty kActualEffort = detail::Task(PT_LONG, 0x8110);
inline constexpr StoredProperty kEstimatedEffort = detail::Task(PT_LONG, 0x8111);
inline constexpr StoredProperty kVersion = detail::Task(PT_LONG, 0x8112);
inline constexpr StoredProperty kState = detail::Task(PT_LONG, 0x8113);
inline constexpr StoredProperty kLastUpdate = detail::Task(PT_SYSTIME, 0x8115);
inline constexpr StoredProperty kHistory = detail::Task(PT_LONG, 0x811A);
inline constexpr StoredProperty kComplete = detail::Task(PT_BOOLEAN, 0x811C);
inline constexpr StoredProperty kCreatedHere = detail::Task(PT_BOOLEAN, 0x811E);
inline constexpr StoredProperty kOwner = detail::Task(PT_UNICODE, 0x811F);
inline constexpr StoredProperty kAssigner = detail::Task(PT_UNICODE, 0x8121);
inline constexpr StoredProperty kLastUser = detail::Task(PT_UNICODE, 0x8122);
inline constexpr StoredProperty kOrdinal = detail::Task(PT_LONG, 0x8123);
inline constexpr StoredProperty kLastDelegate = detail::Task(PT_UNICODE, 0x8125);
inline constexpr StoredProperty kRecurring = detail::Task(PT_BOOLEAN, 0x8126);
inline constexpr StoredProperty kOwnership = detail::Task(PT_LONG, 0x8129);
inline constexpr StoredProperty kAcceptance = detail::Task(PT_LONG, 0x812A);
inline constexpr StoredProperty kMode{.tag = PT_LONG, .set = &kPsCommon, .number = 0x8518};
inline constexpr StoredProperty kGlobalId{.tag = PT_BINARY, .set = &kPsCommon, .number = 0x8519};

// OlTaskStatus.
inline constexpr std::int32_t kNotStarted = 0, kInProgress = 1, kDone = 2;
// OlTaskOwnership: whose copy it is.
inline constexpr std::int32_t kNewTask = 0, kAssignersCopy = 1, kAssigneesCopy = 2;
// OlTaskDelegationState.
inline constexpr std::int32_t kNotDelegated = 0, kUnknown = 1, kAcceptedByAssignee = 2,
                              kDeclinedByAssignee = 3;
// PidLidTaskMode ([MS-OXOTASK] 2.2.3.2); the first four are OlTaskResponse's too.
inline constexpr std::int32_t kSimple = 0, kRequested = 1, kAccept = 2, kDecline = 3;
// PidLidTaskState.
inline constexpr std::int32_t kStateOwn = 1, kStateAssignee = 2, kStateAssigner = 3, kStateRejected = 4;
// PidLidTaskHistory: what was done last.
inline constexpr std::int32_t kHistoryNone = 0, kHistoryAccepted = 1, kHistoryRejected = 2,
                              kHistoryChanged = 3, kHistoryAssigned = 5;

} // namespace standin::outlook::tasks
