// The owning reference to COM objects: the platform's own.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <wrl/client.h>

namespace standin::outlook {

using Microsoft::WRL::ComPtr;

} // namespace standin::outlook
