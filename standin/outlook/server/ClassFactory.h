// How COM makes the application object.
#pragma once

#include <windows.h>

#include <unknwn.h>

namespace standin::outlook {

/// One for the life of the library.
IClassFactory& TheClassFactory();

} // namespace standin::outlook
