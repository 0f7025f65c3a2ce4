// StorageItem: the members of storage items beyond those of all items.
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"
#include "standin/outlook/items/PropertySets.h"

namespace standin::outlook {
namespace {

constexpr Row kRows[] = {
    // PR_CREATOR_NAME is the person, and the store's to write; this is the program, and the client's.
    Named(L"Creator", kText, PT_UNICODE, kPsPublicStrings, L"Creator"),
};

} // namespace

const ItemKind kStorageItem{
    .kind = {L"StorageItem", 0x000630CB, 113, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Storage",
};

} // namespace standin::outlook
