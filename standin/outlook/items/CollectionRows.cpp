// The collections that items have.
#include "standin/outlook/items/Item.h"
#include "standin/outlook/items/ItemTopics.h"
#include "standin/outlook/objects/Attachments.h"
#include "standin/outlook/objects/ItemFields.h"
#include "standin/outlook/objects/Recipients.h"

namespace standin::outlook {
namespace {

ComPtr<AttachmentsObject> Attachments(ItemObject& item) {
    return Make<AttachmentsObject>(ComPtr<Object>(&item), item.Shared());
}

ComPtr<RecipientsObject> Recipients(ItemObject& item) {
    return Make<RecipientsObject>(ComPtr<Object>(&item), RecipientsOf(item.Shared()));
}

ComPtr<RecipientsObject> ReplyRecipients(ItemObject& item) {
    return Make<RecipientsObject>(ComPtr<Object>(&item), ReplyRecipientsOf(item.Shared()));
}

ComPtr<UserPropertiesObject> UserProperties(ItemObject& item) {
    item.Message();
    return Make<UserPropertiesObject>(ComPtr<ItemObject>(&item));
}

ComPtr<ItemPropertiesObject> ItemProperties(ItemObject& item) {
    item.Message();
    return Make<ItemPropertiesObject>(ComPtr<ItemObject>(&item));
}

constexpr Row kRows[] = {
    {L"Attachments", Get<Attachments>},       {L"ItemProperties", Get<ItemProperties>},
    {L"Recipients", Get<Recipients>},         {L"ReplyRecipients", Get<ReplyRecipients>},
    {L"UserProperties", Get<UserProperties>},
};

} // namespace

constinit const std::span<const Row> kItemCollectionRows = kRows;

} // namespace standin::outlook
