// TaskRequestAcceptItem: the members of accepted task requests beyond those of all items.
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kTaskRequestAcceptItem{
    .kind = {L"TaskRequestAcceptItem", 0x00063038, 51, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.TaskRequest.Accept",
};

} // namespace standin::outlook
