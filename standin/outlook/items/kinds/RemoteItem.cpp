// RemoteItem: the members of remote items beyond those of all items.
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kRemoteItem{
    .kind = {L"RemoteItem", 0x00063023, 47, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Remote",
};

} // namespace standin::outlook
