// The few things that the model asks the system for: time, fresh identifiers, letter case.
#pragma once

#include "standin/mailbox/Property.h"

namespace standin::mailbox {

/// The time now, UTC.
SysTime Now();
/// A GUID that nobody has.
GUID NewGuid();
Bytes BytesOf(const GUID& guid);
/// Text for comparing without regard to case: upper case, character by character.
std::wstring FoldCase(std::wstring_view text);
bool SameIgnoringCase(std::wstring_view left, std::wstring_view right);

/// A GUID as text in braces, and back.
std::wstring TextOfGuid(const GUID& guid);
std::optional<GUID> GuidFromText(const std::wstring& text);

} // namespace standin::mailbox
