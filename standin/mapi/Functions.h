// The functions that MAPI32.dll exports, under their plain names. Text is narrow where the platform's headers
// say LPTSTR: the library has these functions in that form alone. Every one that can tell of a failure is a
// call that is traced and can be made to fail, by the interface name MAPI32; what it does with the objects
// that it is given is part of that call. Those that free memory are watched by the count of live buffers
// instead, and UlPropSize and HexFromBin can't fail.
#pragma once

#include <windows.h>

#include <mapix.h>

#include <imessage.h>
#include <objidl.h>

extern "C" {

HRESULT WINAPI HrGetOneProp(LPMAPIPROP object, ULONG tag, LPSPropValue* property);
HRESULT WINAPI HrSetOneProp(LPMAPIPROP object, LPSPropValue property);
HRESULT WINAPI HrQueryAllRows(LPMAPITABLE table, LPSPropTagArray columns, LPSRestriction restriction,
                              LPSSortOrderSet order, LONG mostRows, LPSRowSet* rows);
void WINAPI FreePadrlist(LPADRLIST list);
void WINAPI FreeProws(LPSRowSet rows);
ULONG WINAPI UlPropSize(LPSPropValue property);

/// Two upper-case digits a byte, and a NUL.
void WINAPI HexFromBin(LPBYTE bytes, int size, LPSTR text);
/// False, with nothing written, for an odd count of digits or anything that is none.
BOOL WINAPI FBinFromHex(LPSTR text, LPBYTE bytes);

SCODE WINAPI ScCreateConversationIndex(ULONG parentSize, LPBYTE parent, ULONG* size, LPBYTE* index);

LPMALLOC WINAPI MAPIGetDefaultMalloc();
HRESULT WINAPI OpenStreamOnFile(LPALLOCATEBUFFER allocate, LPFREEBUFFER free, ULONG flags, LPSTR fileName,
                                LPSTR prefix, LPSTREAM* stream);
HRESULT WINAPI WrapCompressedRTFStream(LPSTREAM compressed, ULONG flags, LPSTREAM* uncompressed);
HRESULT WINAPI RTFSync(LPMESSAGE message, ULONG flags, BOOL* updated);

} // extern "C"
