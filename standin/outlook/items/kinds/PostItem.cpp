// PostItem: the members of posts beyond those of all items ([MS-OXOPOST]).
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/Completion.h"
#include "standin/outlook/items/Filing.h"
#include "standin/outlook/items/Item.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

void Begin(mailbox::OpenMessage& message) {
    constexpr std::int32_t kIcon = 1;
    BeginFiled(message, kIcon);
    EnterAuthor(message);
}

/// The object has no item afterwards, as after sending.
void Post(ItemObject& item) {
    mailbox::OpenMessage& message = item.Message();
    EnterAuthor(message);
    Check(message.Write(PR_CLIENT_SUBMIT_TIME, mailbox::Now()));
    Check(message.Write(PR_MESSAGE_DELIVERY_TIME, mailbox::Now()));
    item.Save();
    item.LetGo();
}

constexpr Row kRows[] = {
    {L"Post", Get<Post>},
};

} // namespace

const ItemKind kPostItem{
    .kind = {L"PostItem", 0x00063024, 45, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Post",
    .itemType = 6,
    .home = mailbox::kInbox,
    .begin = Begin,
    .complete = CompleteConversation,
};

} // namespace standin::outlook
