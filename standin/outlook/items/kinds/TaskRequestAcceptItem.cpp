// TaskRequestAcceptItem: the members of accepted task requests beyond those of all items.
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

const ItemKind kTaskRequestAcceptItem{
    .kind = {L"TaskRequestAcceptItem", 0x00063038, 51, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.TaskRequest.Accept",
};

} // namespace standin::outlook
