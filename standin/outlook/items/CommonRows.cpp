// The members that all kinds of item have in common.
#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/Tags.h"
#include "standin/mapi/Views.h"
#include "standin/outlook/folders/Folder.h"
#include "standin/outlook/items/Item.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/SaveAs.h"
#include "standin/outlook/objects/PropertyAccessor.h"
#include "standin/outlook/session/Session.h"

namespace standin::outlook {
namespace {

constexpr mailbox::PropertyTag kPrConversationId = PROP_TAG(PT_BINARY, 0x3013); // [MS-OXPROPS] 2.644

bool Saved(ItemObject& item) {
    return !item.Message().IsChanged();
}

ComPtr<IUnknown> MapiObject(ItemObject& item) {
    return ComPtr<IUnknown>::Adopt(mapi::MakeMessage(item.Shared()));
}

ComPtr<PropertyAccessorObject> Accessor(ItemObject& item) {
    return Make<PropertyAccessorObject>(ComPtr<Object>(&item), item.Shared());
}

void Save(ItemObject& item) {
    item.Save();
}

void Delete(ItemObject& item) {
    item.Delete();
}

std::wstring EntryId(ItemObject& item) {
    return item.EntryId();
}

/// What wasn't saved goes along. The item that is given back takes the place of this one, which is dead.
ComPtr<ItemObject> Move(ItemObject& item, const Arguments& arguments) {
    const ComPtr<FolderObject> target = arguments.As<FolderObject>(0);
    item.Save();
    mailbox::Folder* folder = item.Message().ParentFolder();
    if (!folder)
        throw Failure(MAPI_E_NO_SUPPORT);
    if (folder == &target->Folder())
        return ComPtr<ItemObject>(&item);
    TakeBackFromSending(*item.Message().Saved());
    std::shared_ptr<mailbox::Message> moved;
    Check(folder->MoveMessage(*item.Message().Saved(), target->Folder(), &moved));
    item.LetGo();
    return OpenItem(*moved);
}

/// The copy has what wasn't saved too, and is saved at once, beside the item.
ComPtr<ItemObject> Copy(ItemObject& item) {
    mailbox::Folder* folder = item.Message().ParentFolder();
    if (!folder)
        throw Failure(MAPI_E_NO_SUPPORT);
    std::shared_ptr<mailbox::Message> copy;
    Check(folder->Receive(item.Message().Current(), item.Message().IsAssociated(), copy));
    return OpenItem(*copy);
}

/// OlInspectorClose. Nobody is there to be asked: what would be asked is answered by saving.
void Close(ItemObject& item, const Arguments& arguments) {
    item.CloseWindow();
    constexpr std::int32_t kSave = 0, kDiscard = 1, kPromptForSave = 2;
    switch (arguments.Number(0)) {
    case kSave:
    case kPromptForSave:
        return item.Message().IsChanged() ? item.Save() : void();
    case kDiscard:
        return item.Message().Discard();
    default:
        throw InvalidValue();
    }
}

void Display(ItemObject& item, const Arguments& arguments) {
    item.Display(arguments.Flag(0, false));
}

constexpr std::int32_t kFullItem = 1; // OlDownloadState

constexpr Row kRows[] = {
    Stored(L"Body", kBody, PR_BODY_W),
    Stored(L"ConversationID", kHex, kPrConversationId),
    Stored(L"ConversationIndex", kHex, PR_CONVERSATION_INDEX),
    Stored(L"ConversationTopic", kText, PR_CONVERSATION_TOPIC_W),
    Stored(L"CreationTime", kSavedTime, PR_CREATION_TIME),
    Stored(L"Importance", kNumber, PR_IMPORTANCE, IMPORTANCE_NORMAL),
    Stored(L"LastModificationTime", kSavedTime, PR_LAST_MODIFICATION_TIME),
    Stored(L"MessageClass", kText, PR_MESSAGE_CLASS_W),
    Stored(L"Sensitivity", kNumber, PR_SENSITIVITY),
    Stored(L"Size", kSavedNumber, PR_MESSAGE_SIZE),
    Stored(L"Subject", kText, PR_SUBJECT_W),
    Stored(L"UnRead", kUnread, PR_MESSAGE_FLAGS),
    Named(L"BillingInformation", kText, PT_UNICODE, kPsCommon, 0x8535),
    Named(L"Categories", kKeywords, PT_MV_UNICODE, kPsPublicStrings, L"Keywords"),
    Named(L"Companies", kKeywords, PT_MV_UNICODE, kPsCommon, 0x8539),
    Named(L"MarkForDownload", kNumber, PT_LONG, kPsCommon, 0x8511),
    Named(L"Mileage", kText, PT_UNICODE, kPsCommon, 0x8534),
    Named(L"NoAging", kFlag, PT_BOOLEAN, kPsCommon, 0x850E),
    Named(L"OutlookInternalVersion", kNumber, PT_LONG, kPsCommon, 0x8552),
    Named(L"OutlookVersion", kText, PT_UNICODE, kPsCommon, 0x8554),
    {L"AutoResolvedWinner", Always<false>},
    {L"Close", Get<Close>},
    {L"Copy", Get<Copy>},
    {L"Delete", Get<Delete>},
    {L"Display", Get<Display>},
    {L"EntryID", Get<EntryId>},
    {L"DownloadState", Always<kFullItem>},
    {L"IsConflict", Always<false>},
    {L"MAPIOBJECT", Get<MapiObject>},
    {L"Move", Get<Move>},
    {L"PropertyAccessor", Get<Accessor>},
    {L"Save", Get<Save>},
    {L"SaveAs", Get<SaveItemAs>},
    {L"Saved", Get<Saved>},
};

} // namespace

constinit const std::span<const Row> kCommonItemRows = kRows;

} // namespace standin::outlook
