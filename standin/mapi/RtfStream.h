// WrapCompressedRTFStream and RTFSync.
#pragma once

#include <windows.h>

#include <mapix.h>

#include <objidl.h>

namespace standin::mapi {

/// The RTF in a compressed stream, read from where the stream is to its end; or, with MAPI_MODIFY, a stream
/// for new RTF that Commit puts into `compressed` in its compressed form (with STORE_UNCOMPRESSED_RTF as it
/// is, behind a header). MAPI_E_CORRUPT_DATA: what is there is no compressed RTF.
HRESULT WrapRtfStream(IStream* compressed, ULONG flags, IStream** stream);

/// Makes the form that the flags name the one that the message keeps; `updated`: it was another one.
/// MAPI_E_INTERFACE_NOT_SUPPORTED: no message of this library's.
HRESULT SyncRtf(IMessage* message, ULONG flags, BOOL* updated);

} // namespace standin::mapi
