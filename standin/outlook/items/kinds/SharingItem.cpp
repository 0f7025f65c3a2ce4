// SharingItem: the members of sharing messages beyond those of all items.
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kSharingItem{
    .kind = {L"SharingItem", 0x0006302F, 104, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Sharing",
};

} // namespace standin::outlook
