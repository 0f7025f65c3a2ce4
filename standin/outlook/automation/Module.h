// The library as the system knows it.
#pragma once

#include <windows.h>

namespace standin::outlook {

/// The handle of this library.
HMODULE ThisModule();

} // namespace standin::outlook
