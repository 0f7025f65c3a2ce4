// DocumentItem: the members of documents beyond those of all items.
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kDocumentItem{
    .kind = {L"DocumentItem", 0x00063020, 41, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Document",
};

} // namespace standin::outlook
