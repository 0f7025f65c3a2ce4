// StorageItem: the members of storage items beyond those of all items.
#include "standin/mailbox/Tags.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr Row kRows[] = {
    Stored(L"Creator", kText, mailbox::kPrCreatorName),
};

} // namespace

const ItemKind kStorageItem{
    .kind = {L"StorageItem", 0x000630CB, 113, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Storage",
};

} // namespace standin::outlook
