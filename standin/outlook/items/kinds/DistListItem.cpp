// DistListItem: the members of distribution lists beyond those of all items.
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kDistListItem{
    .kind = {L"DistListItem", 0x00063081, 69, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.DistList",
    .itemType = 7,
    .home = mailbox::kContacts,
};

} // namespace standin::outlook
