// ContactItem: the members of contacts beyond those of all items.
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kContactItem{
    .kind = {L"ContactItem", 0x00063021, 40, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Contact",
    .itemType = 2,
    .home = mailbox::kContacts,
};

} // namespace standin::outlook
