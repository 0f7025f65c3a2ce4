// TaskRequestItem: the members of task requests beyond those of all items.
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kTaskRequestItem{
    .kind = {L"TaskRequestItem", 0x00063036, 49, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.TaskRequest",
};

} // namespace standin::outlook
