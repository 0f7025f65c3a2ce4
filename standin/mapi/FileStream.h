// OpenStreamOnFile.
#pragma once

#include <windows.h>

#include <objidl.h>

namespace standin::mapi {

/// OpenStreamOnFile's SOF_UNIQUEFILENAME.
inline constexpr ULONG kUniqueFileName = 0x80000000;

/// A file as a stream. `flags` are STGM flags: access, STGM_CREATE (an existing file is emptied), and
/// STGM_DELETEONRELEASE. With kUniqueFileName a new file is made in the folder `fileName` (null: the folder
/// for temporary files), whose name begins with `prefix`. Paths are in the ANSI code page. MAPI_E_NOT_FOUND:
/// no such file or folder. MAPI_E_NO_ACCESS, MAPI_E_NOT_ENOUGH_DISK.
HRESULT OpenFileStream(ULONG flags, const char* fileName, const char* prefix, IStream** stream);

} // namespace standin::mapi
