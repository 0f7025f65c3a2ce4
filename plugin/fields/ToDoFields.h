// The to-do family: the task flag that Outlook puts on items that aren't tasks.
#pragma once

#include "FieldTable.h"

namespace varden {

std::span<const FieldRow> ToDoFields();

/// Whether the name belongs to the family as read, or as written. Compared exactly.
bool IsToDoFieldToRead(std::wstring_view name);
bool IsToDoFieldToWrite(std::wstring_view name);

} // namespace varden
