// PR_CONVERSATION_INDEX for users of the MAPI view: the model makes it.
#pragma once

#include "standin/mailbox/ConversationIndex.h"

namespace standin::mapi {

using mailbox::MakeConversationIndex;

} // namespace standin::mapi
