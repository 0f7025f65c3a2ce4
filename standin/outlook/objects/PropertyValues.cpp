// Property values of any type as automation values, and back.
#include "standin/outlook/objects/PropertyValues.h"

#include "standin/mailbox/Platform.h"
#include "standin/outlook/items/Conversions.h"

#include <algorithm>

namespace standin::outlook {
namespace {

struct ToVariant {
    _variant_t operator()(std::int16_t number) const { return _variant_t(number); }
    _variant_t operator()(std::int32_t number) const { return Result(number); }
    _variant_t operator()(float number) const { return _variant_t(number); }
    _variant_t operator()(double number) const { return _variant_t(number); }
    _variant_t operator()(mailbox::Currency amount) const {
        return _variant_t(CY{.int64 = amount.tenThousandths});
    }
    _variant_t operator()(mailbox::AppTime time) const { return Result(Date{time.days}); }
    _variant_t operator()(bool truth) const { return Result(truth); }
    _variant_t operator()(const std::string& text) const { return Result(mailbox::Widen(text, CP_ACP)); }
    _variant_t operator()(const std::wstring& text) const { return Result(text); }
    _variant_t operator()(mailbox::SysTime time) const { return Result(UtcDate(time)); }
    _variant_t operator()(const GUID& guid) const { return Result(mailbox::TextOfGuid(guid)); }
    _variant_t operator()(const mailbox::Bytes& bytes) const { return ByteArray(bytes); }
    template <class T>
    _variant_t operator()(const std::vector<T>& values) const {
        std::vector<_variant_t> elements;
        elements.reserve(values.size());
        for (const T& each : values)
            elements.push_back((*this)(each));
        return ArrayOf(std::move(elements));
    }
    _variant_t operator()(std::int64_t number) const { return _variant_t(static_cast<double>(number)); }
    template <class T>
    _variant_t operator()(const T&) const {
        return {};
    }
};

struct TypeRow {
    mailbox::PropertyType type;
    VARTYPE variant;
    mailbox::Value (*take)(const VARIANT& value);
};

constexpr TypeRow kTypes[] = {
    {PT_I2, VT_I2, [](const VARIANT& v) { return mailbox::Value(std::int16_t{v.iVal}); }},
    {PT_LONG, VT_I4, [](const VARIANT& v) { return mailbox::Value(static_cast<std::int32_t>(v.lVal)); }},
    {PT_R4, VT_R4, [](const VARIANT& v) { return mailbox::Value(v.fltVal); }},
    {PT_DOUBLE, VT_R8, [](const VARIANT& v) { return mailbox::Value(v.dblVal); }},
    {PT_CURRENCY, VT_CY, [](const VARIANT& v) { return mailbox::Value(mailbox::Currency{v.cyVal.int64}); }},
    {PT_APPTIME, VT_DATE, [](const VARIANT& v) { return mailbox::Value(mailbox::AppTime{v.date}); }},
    {PT_SYSTIME, VT_DATE, [](const VARIANT& v) { return mailbox::Value(TimeOfUtc({v.date})); }},
    {PT_BOOLEAN, VT_BOOL, [](const VARIANT& v) { return mailbox::Value(v.boolVal != VARIANT_FALSE); }},
    {PT_STRING8, VT_BSTR, [](const VARIANT& v) { return mailbox::Value(std::wstring(TextOf(v))); }},
    {PT_UNICODE, VT_BSTR, [](const VARIANT& v) { return mailbox::Value(std::wstring(TextOf(v))); }},
};

} // namespace

_variant_t VariantOf(const mailbox::Value& value) {
    return std::visit(ToVariant(), value);
}

std::optional<mailbox::Value> ValueOf(const VARIANT& value, mailbox::PropertyType type) {
    if (type == PT_BINARY) {
        std::optional<mailbox::Bytes> bytes = BytesOfArray(value);
        return bytes ? std::optional<mailbox::Value>(std::move(*bytes)) : std::nullopt;
    }
    if (type == PT_MV_UNICODE) {
        std::optional<std::vector<std::wstring>> texts = TextsOfArray(value);
        return texts ? std::optional<mailbox::Value>(std::move(*texts)) : std::nullopt;
    }
    const auto row = std::ranges::find(kTypes, type, &TypeRow::type);
    _variant_t converted;
    if (row == std::end(kTypes) || FAILED(Convert(value, row->variant, LOCALE_USER_DEFAULT, converted)))
        return std::nullopt;
    if (type == PT_SYSTIME && !HasTime({converted.date}))
        return std::nullopt;
    return row->take(converted);
}

bool IsOfType(const VARIANT& value, mailbox::PropertyType type) {
    if (type == PT_BINARY)
        return value.vt == (VT_ARRAY | VT_UI1);
    if (type == PT_MV_UNICODE)
        return value.vt & VT_ARRAY;
    const auto row = std::ranges::find(kTypes, type, &TypeRow::type);
    return row != std::end(kTypes) && value.vt == row->variant;
}

_variant_t ByteArray(std::span<const std::uint8_t> bytes) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    if (!array)
        _com_issue_error(E_OUTOFMEMORY);
    std::ranges::copy(bytes, static_cast<std::uint8_t*>(array->pvData));
    _variant_t value;
    value.vt = VT_ARRAY | VT_UI1;
    value.parray = array;
    return value;
}

std::optional<mailbox::Bytes> BytesOfArray(const VARIANT& value) {
    if (value.vt != (VT_ARRAY | VT_UI1) || !value.parray || SafeArrayGetDim(value.parray) != 1)
        return std::nullopt;
    const auto* first = static_cast<const std::uint8_t*>(value.parray->pvData);
    return mailbox::Bytes(first, first + value.parray->rgsabound[0].cElements);
}

_variant_t ArrayOf(std::vector<_variant_t> elements) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(elements.size()));
    if (!array)
        _com_issue_error(E_OUTOFMEMORY);
    _variant_t value;
    value.vt = VT_ARRAY | VT_VARIANT;
    value.parray = array;
    for (LONG i = 0; i < static_cast<LONG>(elements.size()); ++i)
        SafeArrayPutElement(array, &i, &elements[static_cast<std::size_t>(i)]);
    return value;
}

std::vector<_variant_t> ElementsOf(const VARIANT& value) {
    std::vector<_variant_t> elements;
    VARTYPE type = VT_EMPTY;
    if (!(value.vt & VT_ARRAY) || !value.parray || SafeArrayGetDim(value.parray) != 1 ||
        FAILED(SafeArrayGetVartype(value.parray, &type)))
        return elements;
    LONG first = 0, last = -1;
    SafeArrayGetLBound(value.parray, 1, &first);
    SafeArrayGetUBound(value.parray, 1, &last);
    for (LONG i = first; i <= last; ++i) {
        _variant_t element;
        const bool ofVariants = type == VT_VARIANT;
        element.vt = ofVariants ? VARTYPE{VT_EMPTY} : type;
        void* place = ofVariants ? static_cast<void*>(&element) : &element.llVal;
        if (FAILED(SafeArrayGetElement(value.parray, &i, place)))
            element.vt = VT_EMPTY;
        elements.push_back(std::move(element));
    }
    return elements;
}

std::optional<std::vector<std::wstring>> TextsOfArray(const VARIANT& value) {
    if (value.vt == VT_BSTR)
        return SplitKeywords(TextOf(value));
    if (!(value.vt & VT_ARRAY))
        return std::nullopt;
    std::vector<std::wstring> texts;
    for (const _variant_t& element : ElementsOf(value)) {
        if (element.vt != VT_BSTR)
            return std::nullopt;
        texts.emplace_back(TextOf(element));
    }
    return texts;
}

} // namespace standin::outlook
