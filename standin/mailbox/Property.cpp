// Property values and bags.
#include "standin/mailbox/Property.h"

#include "standin/mailbox/Tags.h"

#include <algorithm>

namespace standin::mailbox {
namespace {

std::vector<Property>::const_iterator Position(const std::vector<Property>& properties, PropertyTag tag) {
    return std::ranges::lower_bound(properties, IdOf(tag), {}, &Property::id);
}

template <class From, class To, class Convert>
Value ConvertEach(const std::vector<From>& texts, Convert convert) {
    std::vector<To> converted;
    converted.reserve(texts.size());
    for (const From& text : texts)
        converted.push_back(convert(text));
    return converted;
}

} // namespace

PropertyType TypeOf(const Value& value) {
    if (const auto* pointer = std::get_if<NullPointer>(&value))
        return pointer->type;
    return kTypeOfAlternative[value.index()];
}

std::wstring Widen(std::string_view text, UINT codePage) {
    const int size = static_cast<int>(text.size());
    int length = MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0);
    if (length == 0 && size > 0) { // a code page that this system doesn't have
        codePage = 1252;
        length = MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0);
    }
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), size, wide.data(), length);
    return wide;
}

std::string Narrow(std::wstring_view text, UINT codePage) {
    const int size = static_cast<int>(text.size());
    int length = WideCharToMultiByte(codePage, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    if (length == 0 && size > 0) {
        codePage = 1252;
        length = WideCharToMultiByte(codePage, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    }
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(codePage, 0, text.data(), size, narrow.data(), length, nullptr, nullptr);
    return narrow;
}

std::optional<Value> ConvertValue(const Value& value, PropertyType wanted, UINT codePage) {
    const PropertyType type = TypeOf(value);
    if (wanted == PT_UNSPECIFIED || wanted == type)
        return value;
    if (std::holds_alternative<NullPointer>(value))
        return std::nullopt;
    if (wanted == PT_UNICODE && type == PT_STRING8)
        return Widen(std::get<std::string>(value), codePage);
    if (wanted == PT_STRING8 && type == PT_UNICODE)
        return Narrow(std::get<std::wstring>(value), codePage);
    if (wanted == PT_MV_UNICODE && type == PT_MV_STRING8)
        return ConvertEach<std::string, std::wstring>(std::get<std::vector<std::string>>(value),
                                                      [&](auto& text) { return Widen(text, codePage); });
    if (wanted == PT_MV_STRING8 && type == PT_MV_UNICODE)
        return ConvertEach<std::wstring, std::string>(std::get<std::vector<std::wstring>>(value),
                                                      [&](auto& text) { return Narrow(text, codePage); });
    return std::nullopt;
}

const Value* PropertyBag::Find(PropertyTag tag) const {
    const auto position = Position(m_properties, tag);
    return position != m_properties.end() && position->id == IdOf(tag) ? &position->value : nullptr;
}

Value* PropertyBag::Find(PropertyTag tag) {
    return const_cast<Value*>(std::as_const(*this).Find(tag));
}

HRESULT PropertyBag::Read(PropertyTag tag, Value& value) const {
    const Value* found = Find(tag);
    if (!found)
        return MAPI_E_NOT_FOUND;
    const bool isNarrow = (TypeOf(*found) & ~MV_FLAG) == PT_STRING8;
    std::optional<Value> converted = ConvertValue(*found, TypeOf(tag), isNarrow ? CodePageOf(*this) : CP_ACP);
    if (!converted)
        return MAPI_E_NOT_FOUND;
    value = std::move(*converted);
    return S_OK;
}

void PropertyBag::Put(PropertyTag tag, Value value) {
    const auto position = Position(m_properties, tag);
    if (position != m_properties.end() && position->id == IdOf(tag))
        m_properties[static_cast<std::size_t>(position - m_properties.begin())].value = std::move(value);
    else
        m_properties.insert(position, Property{IdOf(tag), std::move(value)});
}

bool PropertyBag::Remove(PropertyTag tag) {
    const auto position = Position(m_properties, tag);
    if (position == m_properties.end() || position->id != IdOf(tag))
        return false;
    m_properties.erase(position);
    return true;
}

UINT CodePageOf(const PropertyBag& bag) {
    constexpr UINT kWesternEuropean = 1252;
    const auto* codePage = bag.Get<kPrMessageCodepage>();
    return codePage && *codePage > 0 ? static_cast<UINT>(*codePage) : kWesternEuropean;
}

} // namespace standin::mailbox
