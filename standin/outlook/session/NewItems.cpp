// New items that no folder was asked for.
#include "standin/outlook/session/NewItems.h"

#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/SaveAs.h"
#include "standin/outlook/session/Session.h"

namespace standin::outlook {
namespace {

mailbox::Folder& DefaultFolder(std::int32_t number) {
    const mailbox::Store* store = LoggedOnWorld().DefaultStore();
    mailbox::Folder* folder = store ? store->SpecialFolder(number) : nullptr;
    if (!folder)
        throw Failure(MAPI_E_NOT_FOUND);
    return *folder;
}

} // namespace

mailbox::Folder& HomeOf(const ItemKind& kind) {
    return DefaultFolder(kind.home ? kind.home : mailbox::kDrafts);
}

ComPtr<ItemObject> CreateItem(std::int32_t itemType) {
    const ItemKind* kind = KindOfItemType(itemType);
    if (!kind)
        throw InvalidValue();
    return NewItem(HomeOf(*kind), kind->messageClass);
}

/// The file is read for the folder of its kind's store, which is known only once it is read: any folder of
/// the default store will do for that, as the names of properties are the store's.
ComPtr<ItemObject> CreateItemFromFile(const std::wstring& path, mailbox::Folder* folder) {
    mailbox::Folder& reader = folder ? *folder : DefaultFolder(mailbox::kDrafts);
    mailbox::Content content = ReadMsgFile(path, reader.Names());
    const ItemKind& kind = KindOfClass(content.properties.GetOr<PR_MESSAGE_CLASS_W>(L""));
    mailbox::Folder& home = folder ? *folder : HomeOf(kind);
    std::shared_ptr<mailbox::OpenMessage> message;
    Check(home.CreateMessage(std::move(content), message));
    return ItemFor(std::move(message));
}

} // namespace standin::outlook
