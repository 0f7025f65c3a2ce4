// Conversion of automation values.
#include "standin/outlook/automation/Variants.h"

namespace standin::outlook {

_variant_t Result(std::wstring_view text) {
    const BSTR copy = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (!copy)
        _com_issue_error(E_OUTOFMEMORY);
    _variant_t value;
    value.vt = VT_BSTR;
    value.bstrVal = copy;
    return value;
}

const VARIANT& Dereference(const VARIANT& value) {
    const VARIANT* inner = &value;
    while (inner->vt == (VT_BYREF | VT_VARIANT) && inner->pvarVal)
        inner = inner->pvarVal;
    return *inner;
}

HRESULT Convert(const VARIANT& value, VARTYPE type, LCID locale, _variant_t& converted) {
    _variant_t plain;
    if (const HRESULT status = VariantCopyInd(&plain, const_cast<VARIANT*>(&value)); FAILED(status))
        return status;
    if (type == VT_VARIANT || plain.vt == type) {
        converted.Attach(plain);
        return S_OK;
    }
    converted.Clear();
    return VariantChangeTypeEx(&converted, &plain, locale, 0, type);
}

std::wstring_view TextOf(const VARIANT& value) {
    return value.vt == VT_BSTR && value.bstrVal
               ? std::wstring_view(value.bstrVal, SysStringLen(value.bstrVal))
               : std::wstring_view();
}

} // namespace standin::outlook
