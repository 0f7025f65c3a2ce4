// What a sender hears of recipients whom nothing can be delivered to.
#pragma once

#include "standin/mailbox/Content.h"

#include <vector>

namespace standin::mailbox {

/// The report on a message that went out, about those of its recipient rows that name nobody: a message of
/// its class with REPORT before and NDR behind ([MS-OXOMSG] 2.2.2.1), for the sender's Inbox.
Content MakeNonDeliveryReport(const Content& sent, std::vector<PropertyBag> unreached);

} // namespace standin::mailbox
