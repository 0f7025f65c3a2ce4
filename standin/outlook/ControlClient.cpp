// Reaches the switches of the stand-in library from the program that hosts it.
#include "standin/outlook/Control.h"

namespace standin::outlook {

/// The library stays loaded: COM and MAPI32.dll would load it anyway.
Control* OutlookControl() {
    const HMODULE library = LoadLibraryW(L"vardenoutlook.dll");
    if (!library)
        return nullptr;
    using Getter = Control*(WINAPI*)();
    const auto get = reinterpret_cast<Getter>(GetProcAddress(library, "GetOutlookControl"));
    return get ? get() : nullptr;
}

} // namespace standin::outlook
