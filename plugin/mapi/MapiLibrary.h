// MAPI32.dll, whose functions are looked up when they are first needed: a machine without Outlook loads the
// plug-in.
#pragma once

#include <windows.h>

#include <mapix.h>

#include <imessage.h>
#include <mapiutil.h>

#include <stdexcept>

namespace varden::mapi {

/// Raised for a function of MAPI32.dll that this machine doesn't have, and for a MAPI object that isn't
/// there.
struct Unavailable : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A function of MAPI32.dll by its name. 32-bit builds of the library decorated some of the names, and the
/// decorated names have stayed in 64-bit ones; the plain name is tried first.
template <typename Signature>
class LibraryFunction;

/// The address of the function under one of the two names, null when the library or the function is missing.
FARPROC FindLibraryFunction(const char* plain, const char* decorated);

template <typename Result, typename... Parameters>
class LibraryFunction<Result(Parameters...)> {
public:
    constexpr LibraryFunction(const char* plain, const char* decorated)
        : m_plain(plain), m_decorated(decorated) {}

    bool IsAvailable() const { return Find() != nullptr; }
    /// The function itself, for those that take it as an argument; null when there is none.
    auto Address() const { return Find(); }
    /// Calls the function; raises Unavailable when there is none.
    Result operator()(Parameters... parameters) const {
        if (!Find()) {
            throw Unavailable(m_plain);
        }
        return m_function(parameters...);
    }

private:
    using Pointer = Result(WINAPI*)(Parameters...);

    Pointer Find() const {
        if (!m_function) {
            m_function = reinterpret_cast<Pointer>(FindLibraryFunction(m_plain, m_decorated));
        }
        return m_function;
    }

    const char* m_plain;
    const char* m_decorated;
    mutable Pointer m_function = nullptr;
};

inline LibraryFunction<HRESULT(LPVOID)> Initialize{"MAPIInitialize", "MAPIInitialize@4"};
inline LibraryFunction<void()> Uninitialize{"MAPIUninitialize", "MAPIUninitialize@0"};
inline LibraryFunction<SCODE(ULONG, LPVOID*)> AllocateBuffer{"MAPIAllocateBuffer", "MAPIAllocateBuffer@8"};
inline LibraryFunction<SCODE(ULONG, LPVOID, LPVOID*)> AllocateMore{"MAPIAllocateMore", "MAPIAllocateMore@12"};
inline LibraryFunction<ULONG(LPVOID)> FreeBuffer{"MAPIFreeBuffer", "MAPIFreeBuffer@4"};
inline LibraryFunction<HRESULT(LPMAPIPROP, ULONG, LPSPropValue*)> GetOneProp{"HrGetOneProp",
                                                                             "HrGetOneProp@12"};
inline LibraryFunction<HRESULT(LPMAPIPROP, LPSPropValue)> SetOneProp{"HrSetOneProp", "HrSetOneProp@8"};
inline LibraryFunction<HRESULT(LPMAPITABLE, LPSPropTagArray, LPSRestriction, LPSSortOrderSet, LONG,
                               LPSRowSet*)>
    QueryAllRows{"HrQueryAllRows", "HrQueryAllRows@24"};
inline LibraryFunction<void(LPADRLIST)> FreeAddressList{"FreePadrlist", "FreePadrlist@4"};
inline LibraryFunction<void(LPSRowSet)> FreeRows{"FreeProws", "FreeProws@4"};
inline LibraryFunction<void(LPBYTE, int, LPSTR)> HexFromBin{"HexFromBin", "HexFromBin@12"};
inline LibraryFunction<WINBOOL(LPSTR, LPBYTE)> BinFromHex{"FBinFromHex", "FBinFromHex@8"};
inline LibraryFunction<HRESULT(LPSTREAM, ULONG, LPSTREAM*)> WrapCompressedRtfStream{
    "WrapCompressedRTFStream", "WrapCompressedRTFStream@12"};

inline LibraryFunction<HRESULT(LPMESSAGE, ULONG, WINBOOL*)> RtfSync{"RTFSync", "RTFSync@12"};
inline LibraryFunction<SCODE(ULONG, LPBYTE, ULONG*, LPBYTE*)> CreateConversationIndex{
    "ScCreateConversationIndex", "ScCreateConversationIndex@16"};
inline LibraryFunction<LPMALLOC()> DefaultMalloc{"MAPIGetDefaultMalloc", "MAPIGetDefaultMalloc@0"};
inline LibraryFunction<HRESULT(LPALLOCATEBUFFER, LPFREEBUFFER, ULONG, LPSTR, LPSTR, LPSTREAM*)>
    OpenStreamOnFile{"OpenStreamOnFile", "OpenStreamOnFile@24"};
inline LibraryFunction<SCODE(LPMALLOC, ULONG, LPMSGSESS*)> OpenMsgSession{"OpenIMsgSession",
                                                                          "OpenIMsgSession@12"};
inline LibraryFunction<void(LPMSGSESS)> CloseMsgSession{"CloseIMsgSession", "CloseIMsgSession@4"};
inline LibraryFunction<SCODE(LPMSGSESS, LPALLOCATEBUFFER, LPALLOCATEMORE, LPFREEBUFFER, LPMALLOC, LPVOID,
                             LPSTORAGE, MSGCALLRELEASE*, ULONG, ULONG, LPMESSAGE*)>
    OpenMsgOnStorage{"OpenIMsgOnIStg", "OpenIMsgOnIStg@44"};

} // namespace varden::mapi
