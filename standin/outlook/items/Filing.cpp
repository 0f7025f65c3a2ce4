// New items that are filed and not sent.
#include "standin/outlook/items/Filing.h"

#include "standin/mailbox/Platform.h"
#include "standin/mailbox/Tags.h"
#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/items/People.h"

namespace standin::outlook {

void BeginFiled(mailbox::OpenMessage& message, std::int32_t icon) {
    const mailbox::SysTime now = mailbox::Now();
    Check(message.Write(PR_MESSAGE_FLAGS, std::int32_t{MSGFLAG_READ}));
    Check(message.Write(PR_CLIENT_SUBMIT_TIME, now));
    Check(message.Write(PR_MESSAGE_DELIVERY_TIME, now));
    Check(message.Write(mailbox::kPrIconIndex, icon));
}

void EnterAuthor(mailbox::OpenMessage& message) {
    const auto user = CurrentUser();
    if (!user)
        return;
    WritePerson(message, kSenderTags, *user);
    WritePerson(message, kSentRepresentingTags, *user);
}

} // namespace standin::outlook
