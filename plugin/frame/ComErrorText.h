// The words for a COM exception, the same wherever one is caught.
#pragma once

#include <windows.h>

#include <comdef.h>

#include <string>

namespace varden {

/// "Error: %08lx\nMessage:%s\nSource:%s\nDesc:%s": the HRESULT, the system's message for it, and what the
/// failing object told of itself. A part that is missing is empty.
std::wstring ComErrorText(const _com_error& error);

/// What the failing object told of itself, empty where it told nothing.
std::wstring ComErrorDescription(const _com_error& error);

} // namespace varden
