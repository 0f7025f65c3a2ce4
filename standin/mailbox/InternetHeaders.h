// The header of a message as it travels between mail servers (RFC 5322, RFC 2047).
#pragma once

#include "standin/mailbox/Content.h"

namespace standin::mailbox {

/// The header lines of a sent message, an empty line at the end. Bcc recipients are not told.
std::wstring MakeInternetHeaders(const Content& message);

} // namespace standin::mailbox
