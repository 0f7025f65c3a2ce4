// RemoteItem: the members of headers of remote mail beyond those of all items: what they tell about the
// message that is still on its server.
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr Row kRows[] = {
    Named(L"HasAttachment", kFlag, PT_BOOLEAN, kPsRemote, 0x8F07),
    Named(L"RemoteMessageClass", kText, PT_UNICODE, kPsRemote, 0x8F02),
    Named(L"TransferSize", kNumber, PT_LONG, kPsRemote, 0x8F05),
    Named(L"TransferTime", kNumber, PT_LONG, kPsRemote, 0x8F04),
};

} // namespace

const ItemKind kRemoteItem{
    .kind = {L"RemoteItem", 0x00063023, 47, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Remote",
};

} // namespace standin::outlook
