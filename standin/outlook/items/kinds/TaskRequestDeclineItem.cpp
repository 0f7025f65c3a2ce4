// TaskRequestDeclineItem: the members of declined task requests beyond those of all items.
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"
#include "standin/outlook/tasks/Assignments.h"

namespace standin::outlook {
namespace {

constexpr Row kRows[] = {
    {L"GetAssociatedTask", Get<tasks::AssociatedTask>},
};

} // namespace

const ItemKind kTaskRequestDeclineItem{
    .kind = {L"TaskRequestDeclineItem", 0x00063039, 52, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.TaskRequest.Decline",
};

} // namespace standin::outlook
