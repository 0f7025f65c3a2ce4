// Values as filters and sorting compare them.
#include "standin/outlook/filter/Comparable.h"

#include "standin/outlook/items/Conversions.h"

#include <cmath>

namespace standin::outlook {

double MinutesOf(double date) {
    constexpr double kMinutesPerDay = 24 * 60;
    constexpr double kHalfSecond = 0.5 / 60; // so that a whole minute isn't taken for the one before
    return std::floor(date * kMinutesPerDay + kHalfSecond);
}

Comparable ComparableOf(const VARIANT& value, FieldType type) {
    struct Form {
        FieldType type;
        VARTYPE variant;
        Comparable (*take)(const VARIANT& value);
    };
    constexpr Form kForms[] = {
        {FieldType::Text, VT_BSTR, [](const VARIANT& v) { return Comparable{std::wstring(TextOf(v))}; }},
        {FieldType::Number, VT_R8, [](const VARIANT& v) { return Comparable{v.dblVal}; }},
        {FieldType::Flag, VT_BOOL, [](const VARIANT& v) { return Comparable{v.boolVal != VARIANT_FALSE}; }},
        {FieldType::Date, VT_DATE, [](const VARIANT& v) { return Comparable{MinutesOf(v.date)}; }},
        {FieldType::Keywords, VT_BSTR, [](const VARIANT& v) { return Comparable{SplitKeywords(TextOf(v))}; }},
    };
    const Form& form = kForms[static_cast<std::size_t>(type)];
    _variant_t converted;
    if (value.vt == VT_EMPTY || FAILED(Convert(value, form.variant, LOCALE_USER_DEFAULT, converted)))
        return {};
    return form.take(converted);
}

std::weak_ordering CompareText(std::wstring_view left, std::wstring_view right) {
    const int order =
        CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, left.data(), static_cast<int>(left.size()),
                       right.data(), static_cast<int>(right.size()));
    return order <=> CSTR_EQUAL;
}

std::weak_ordering Compare(const Comparable& left, const Comparable& right) {
    if (left.value.index() != right.value.index())
        return left.value.index() <=> right.value.index();
    if (const auto* text = std::get_if<std::wstring>(&left.value))
        return CompareText(*text, std::get<std::wstring>(right.value));
    if (const auto* keywords = std::get_if<std::vector<std::wstring>>(&left.value))
        return CompareText(JoinKeywords(*keywords),
                           JoinKeywords(std::get<std::vector<std::wstring>>(right.value)));
    if (const auto* number = std::get_if<double>(&left.value))
        return std::weak_order(*number, std::get<double>(right.value));
    if (const auto* flag = std::get_if<bool>(&left.value))
        return *flag <=> std::get<bool>(right.value);
    return std::weak_ordering::equivalent;
}

} // namespace standin::outlook
