// The arguments of one call, in the order of the member's parameters and in their types.
#pragma once

#include "standin/outlook/automation/ObjectModel.h"
#include "standin/outlook/automation/Variants.h"

#include <array>

namespace standin::outlook {

class Object;

/// What a client handed to Invoke, put in order: last argument first, named ones by their parameters. Each is
/// converted to its parameter's type; parameters left out stay empty.
class Arguments {
public:
    Arguments() = default;
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    /// For a method. DISP_E_BADPARAMCOUNT: too many, or one missing that can't be left out.
    /// DISP_E_PARAMNOTOPTIONAL: such a one given as missing. DISP_E_PARAMNOTFOUND: a name that isn't a
    /// parameter's, or comes twice. DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW: `badArgument` is its place in
    /// `given`, where one is asked for.
    HRESULT ReadCall(const Member& member, const DISPPARAMS& given, LCID locale, UINT* badArgument);
    /// For the value of a property, which is the one argument and bears the name DISPID_PROPERTYPUT:
    /// DISP_E_PARAMNOTFOUND without it, as a type library's Invoke has it.
    HRESULT ReadValue(const Member& member, const DISPPARAMS& given, LCID locale, UINT* badArgument);

    bool IsGiven(std::size_t index) const { return m_given[index]; }
    const _variant_t& operator[](std::size_t index) const { return m_values[index]; }

    // The typed parameters.
    std::wstring Text(std::size_t index) const { return std::wstring(TextOf(m_values[index])); }
    std::int32_t Number(std::size_t index) const { return m_values[index].lVal; }
    bool Flag(std::size_t index) const { return m_values[index].boolVal != VARIANT_FALSE; }
    Date Days(std::size_t index) const { return {m_values[index].date}; }

    // Parameters that take a VARIANT, and may be left out. Raise E_INVALIDARG for what doesn't convert.
    std::wstring Text(std::size_t index, const wchar_t* fallback) const;
    std::int32_t Number(std::size_t index, std::int32_t fallback) const;
    bool Flag(std::size_t index, bool fallback) const;

    /// An object of this library, as an object of its class. Raises E_INVALIDARG for any other.
    template <class T>
    ComPtr<T> As(std::size_t index) const;

private:
    HRESULT Read(std::size_t index, const TypeName& type, const VARIANT& value, LCID locale);
    _variant_t Converted(std::size_t index, VARTYPE type) const;

    std::array<_variant_t, kMostParameters> m_values;
    std::array<bool, kMostParameters> m_given{};
};

/// The object of this library that is in a value; null for anything else.
ComPtr<Object> OwnObject(const VARIANT& value);

[[noreturn]] void RaiseInvalidValue();

template <class T>
ComPtr<T> Arguments::As(std::size_t index) const {
    const ComPtr<Object> object = OwnObject(m_values[index]);
    T* wanted = dynamic_cast<T*>(object.Get());
    if (!wanted)
        RaiseInvalidValue();
    return wanted;
}

} // namespace standin::outlook
