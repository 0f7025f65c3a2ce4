// TaskRequestUpdateItem: the members of updates of task requests beyond those of all items.
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kTaskRequestUpdateItem{
    .kind = {L"TaskRequestUpdateItem", 0x00063037, 50, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.TaskRequest.Update",
};

} // namespace standin::outlook
