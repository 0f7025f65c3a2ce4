// Values between automation and the code of the members.
#pragma once

#include "standin/outlook/automation/ComPtr.h"

#include <windows.h>

#include <ole2.h>

#include <comdef.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace standin::outlook {

/// An automation date: days since 30 December 1899, local time.
struct Date {
    double days = 0;
    bool operator==(const Date&) const = default;
};

/// 1 January 4501, by which Outlook stands for no date.
inline constexpr Date kNoDate{949998.0};

// What members give back, as a VARIANT. Each type has its own, so that nothing is converted on the way.

_variant_t Result(std::wstring_view text);
inline _variant_t Result(const std::wstring& text) {
    return Result(std::wstring_view(text));
}
inline _variant_t Result(const wchar_t* text) {
    return Result(std::wstring_view(text));
}
inline _variant_t Result(std::int32_t number) {
    return _variant_t(static_cast<long>(number), VT_I4);
}
inline _variant_t Result(bool truth) {
    return _variant_t(truth);
}
inline _variant_t Result(Date date) {
    return _variant_t(date.days, VT_DATE);
}
/// Null: VT_DISPATCH without an object, which scripts see as Nothing.
template <class T>
_variant_t Result(const ComPtr<T>& object) {
    return _variant_t(static_cast<IDispatch*>(object.Get()));
}
/// An object that isn't automation's, as MAPIOBJECT gives it.
inline _variant_t Result(const ComPtr<IUnknown>& object) {
    return _variant_t(object.Get());
}

/// The value behind references to variants, without a copy of it.
const VARIANT& Dereference(const VARIANT& value);

/// A value in another type, as automation converts it. Raises nothing: DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW.
HRESULT Convert(const VARIANT& value, VARTYPE type, LCID locale, _variant_t& converted);

/// The text of a BSTR variant.
std::wstring_view TextOf(const VARIANT& value);

} // namespace standin::outlook
