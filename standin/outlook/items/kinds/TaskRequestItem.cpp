// TaskRequestItem: the members of task requests beyond those of all items.
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

const ItemKind kTaskRequestItem{
    .kind = {L"TaskRequestItem", 0x00063036, 49, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.TaskRequest",
};

} // namespace standin::outlook
