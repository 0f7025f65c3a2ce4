// NoteItem: the members of notes beyond those of all items.
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kNoteItem{
    .kind = {L"NoteItem", 0x00063025, 44, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.StickyNote",
    .itemType = 5,
    .home = mailbox::kNotes,
};

} // namespace standin::outlook
