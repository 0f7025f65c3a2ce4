// Puts the arguments of a call in order and in type.
#include "standin/outlook/automation/Arguments.h"

#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/automation/Object.h"

namespace standin::outlook {
namespace {

/// How automation marks an argument that is left out.
bool IsMissing(const VARIANT& value) {
    return value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND;
}

bool IsObject(const VARIANT& value) {
    return value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN;
}

} // namespace

HRESULT Arguments::Read(std::size_t index, const TypeName& type, const VARIANT& value, LCID locale) {
    m_given[index] = true;
    if (type.type != VT_DISPATCH)
        return Convert(value, type.type, locale, m_values[index]);
    if (const HRESULT status = Convert(value, VT_VARIANT, locale, m_values[index]); FAILED(status))
        return status;
    return IsObject(m_values[index]) ? S_OK : DISP_E_TYPEMISMATCH;
}

HRESULT Arguments::ReadCall(const Member& member, const DISPPARAMS& given, LCID locale, UINT* badArgument) {
    if (given.cArgs > member.parameters.size() || given.cNamedArgs > given.cArgs)
        return DISP_E_BADPARAMCOUNT;
    for (UINT place = 0; place < given.cArgs; ++place) {
        const bool isNamed = place < given.cNamedArgs;
        const auto index = static_cast<std::size_t>(isNamed ? given.rgdispidNamedArgs[place]
                                                            : static_cast<DISPID>(given.cArgs - 1 - place));
        if (index >= member.parameters.size() || m_given[index])
            return DISP_E_PARAMNOTFOUND;
        const Parameter& parameter = member.parameters[index];
        const VARIANT& value = Dereference(given.rgvarg[place]);
        if (IsMissing(value)) {
            if (!parameter.optional)
                return DISP_E_PARAMNOTOPTIONAL;
            continue;
        }
        if (const HRESULT status = Read(index, parameter.type, value, locale); FAILED(status)) {
            if (badArgument)
                *badArgument = place;
            return status;
        }
    }
    for (std::size_t index = 0; index < member.parameters.size(); ++index)
        if (!m_given[index] && !member.parameters[index].optional)
            return DISP_E_BADPARAMCOUNT;
    return S_OK;
}

HRESULT Arguments::ReadValue(const Member& member, const DISPPARAMS& given, LCID locale, UINT* badArgument) {
    if (given.cNamedArgs != 1 || given.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT)
        return DISP_E_PARAMNOTFOUND;
    if (given.cArgs != 1)
        return DISP_E_BADPARAMCOUNT;
    const HRESULT status = Read(0, member.type, Dereference(given.rgvarg[0]), locale);
    if (FAILED(status) && badArgument)
        *badArgument = 0;
    return status;
}

_variant_t Arguments::Converted(std::size_t index, VARTYPE type) const {
    _variant_t converted;
    if (FAILED(Convert(m_values[index], type, LOCALE_USER_DEFAULT, converted)))
        RaiseInvalidValue();
    return converted;
}

std::wstring Arguments::Text(std::size_t index, const wchar_t* fallback) const {
    return m_given[index] ? std::wstring(TextOf(Converted(index, VT_BSTR))) : fallback;
}

std::int32_t Arguments::Number(std::size_t index, std::int32_t fallback) const {
    return m_given[index] ? Converted(index, VT_I4).lVal : fallback;
}

bool Arguments::Flag(std::size_t index, bool fallback) const {
    return m_given[index] ? Converted(index, VT_BOOL).boolVal != VARIANT_FALSE : fallback;
}

ComPtr<Object> OwnObject(const VARIANT& value) {
    ComPtr<Object> object;
    if (IsObject(value) && value.punkVal)
        value.punkVal->QueryInterface(kOwnObject, reinterpret_cast<void**>(object.Out()));
    return object;
}

void RaiseInvalidValue() {
    throw InvalidValue();
}

} // namespace standin::outlook
