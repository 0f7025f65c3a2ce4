// In whose name a mail is sent: fields that go past the object model, through the session's address book.
#pragma once

#include "FieldTable.h"

namespace varden {

/// Resolves the name and stamps the represented sender on the message.
bool SetSendOnBehalfOf(const FieldContext& context, const FieldRow& row, const std::wstring& data);
/// Resolves the name and stamps it as sender and as represented sender.
bool SetFrom(const FieldContext& context, const FieldRow& row, const std::wstring& data);

} // namespace varden
