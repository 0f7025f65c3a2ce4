// TaskItem: the members of tasks beyond those of all items.
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kTaskItem{
    .kind = {L"TaskItem", 0x00063035, 48, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Task",
    .itemType = 3,
    .home = mailbox::kTasks,
};

} // namespace standin::outlook
