// Owning pointers to the COM interfaces that the plug-in holds.
#pragma once

#include <windows.h>

#include <ole2.h>

#include <comdef.h>

#include <string>

namespace varden {

/// The platform's smart pointer, which raises E_POINTER when an empty one is used.
template <typename Interface, const IID* iid>
using ComPointer = _com_ptr_t<_com_IIID<Interface, iid>>;

using IUnknownPtr = ComPointer<IUnknown, &IID_IUnknown>;
using IDispatchPtr = ComPointer<IDispatch, &IID_IDispatch>;
using IErrorInfoPtr = ComPointer<IErrorInfo, &IID_IErrorInfo>;
using ICreateErrorInfoPtr = ComPointer<ICreateErrorInfo, &IID_ICreateErrorInfo>;
using IMessageFilterPtr = ComPointer<IMessageFilter, &IID_IMessageFilter>;

/// The text of an automation string; empty for none.
inline std::wstring BstrText(const _bstr_t& text) {
    return text.length() != 0 ? std::wstring(text, text.length()) : std::wstring();
}

} // namespace varden
