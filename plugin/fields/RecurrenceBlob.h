// The recurrence blob of an appointment or a task as text.
#pragma once

#include "FieldTable.h"

namespace varden {

/// The blob in hexadecimal, by the catalogue's name for it. A look-up that fails becomes an error whose code
/// is its status.
std::wstring ReadRecurrenceBlob(const FieldContext& context, std::wstring_view catalogueName);

} // namespace varden
