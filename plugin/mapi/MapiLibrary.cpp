// Finding MAPI32.dll's functions.
#include "MapiLibrary.h"

namespace varden::mapi {

FARPROC FindLibraryFunction(const char* plain, const char* decorated) {
    // Loaded once and kept: Outlook's MAPI leaves threads of its own behind.
    static const HMODULE library = LoadLibraryW(L"MAPI32.dll");
    if (!library) {
        return nullptr;
    }
    const FARPROC function = GetProcAddress(library, plain);
    return function ? function : GetProcAddress(library, decorated);
}

} // namespace varden::mapi
