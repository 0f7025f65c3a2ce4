// MailItem: the members of mail beyond those of all items.
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kMailItem{
    .kind = {L"MailItem", 0x00063034, 43, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Note",
    .itemType = 0,
    .home = mailbox::kDrafts,
};

} // namespace standin::outlook
