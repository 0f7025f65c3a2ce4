// StorageItem: the members of storage items beyond those of all items.
#include "standin/mailbox/Tags.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"
#include "standin/outlook/items/PropertySets.h"

namespace standin::outlook {
namespace {

/// The program that made the item, by itself the person who did. That is the store's to write, and this the
/// client's.
_variant_t ReadCreator(const mailbox::MessageProperties& message, const StoredProperty& stored) {
    const auto program = ReadAs<std::wstring>(message, stored);
    return Result(program ? *program : message.Get<mailbox::kPrCreatorName>().value_or(L""));
}

void WriteCreator(mailbox::OpenMessage& message, const StoredProperty& stored, const Call& call) {
    WriteValue(message, stored, call.arguments.Text(0));
}

constexpr Conversion kCreator{ReadCreator, WriteCreator};

constexpr Row kRows[] = {
    Named(L"Creator", kCreator, PT_UNICODE, kPsPublicStrings, L"Creator"),
};

} // namespace

const ItemKind kStorageItem{
    .kind = {L"StorageItem", 0x000630CB, 113, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Storage",
};

} // namespace standin::outlook
