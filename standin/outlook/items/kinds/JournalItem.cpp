// JournalItem: the members of journal entries beyond those of all items.
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kJournalItem{
    .kind = {L"JournalItem", 0x00063022, 42, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Activity",
    .itemType = 4,
    .home = mailbox::kJournal,
};

} // namespace standin::outlook
