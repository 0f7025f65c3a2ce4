// RemoteItem: the members of remote items beyond those of all items.
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kRemoteItem{
    .kind = {L"RemoteItem", 0x00063023, 47, kRows, kCommonItemRows},
    .messageClass = L"IPM.Remote",
};

} // namespace standin::outlook
