// PostItem: the members of posts beyond those of all items.
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kPostItem{
    .kind = {L"PostItem", 0x00063024, 45, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Post",
    .itemType = 6,
    .home = mailbox::kInbox,
};

} // namespace standin::outlook
