// Text from values and values from text.
#include "standin/mailbox/PropertyText.h"

#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Platform.h"

#include <charconv>
#include <cwchar>

namespace standin::mailbox {
namespace {

constexpr std::size_t kTypeDigits = 4;
constexpr std::size_t kGuidLength = 38;

std::wstring Hex(std::uint32_t number, int digits) {
    wchar_t text[16];
    std::swprintf(text, std::size(text), L"%0*X", digits, number);
    return text;
}

template <class T>
std::optional<T> ParseNumber(std::wstring_view text, int base = 10) {
    const std::string narrow = Narrow(text, CP_UTF8);
    T number{};
    const auto [end, error] = std::from_chars(narrow.data(), narrow.data() + narrow.size(), number, base);
    return error == std::errc() && end == narrow.data() + narrow.size() ? std::optional(number)
                                                                        : std::nullopt;
}

// One kind of value each: to text, and back.

template <class T>
struct Codec;

template <class T>
requires std::is_integral_v<T>
struct Codec<T> {
    static std::wstring Write(T value) { return std::to_wstring(value); }
    static std::optional<T> Read(std::wstring_view text) { return ParseNumber<T>(text); }
};
template <>
struct Codec<bool> {
    static std::wstring Write(bool value) { return value ? L"1" : L"0"; }
    static std::optional<bool> Read(std::wstring_view text) {
        return text == L"1" || text == L"0" ? std::optional(text == L"1") : std::nullopt;
    }
};
template <class T>
requires std::is_floating_point_v<T>
struct Codec<T> {
    static std::wstring Write(T value) {
        wchar_t text[64];
        std::swprintf(text, std::size(text), L"%.17g", static_cast<double>(value));
        return text;
    }
    static std::optional<T> Read(std::wstring_view text) {
        const std::wstring whole(text);
        wchar_t* end = nullptr;
        const double value = std::wcstod(whole.c_str(), &end);
        return !whole.empty() && *end == L'\0' ? std::optional(static_cast<T>(value)) : std::nullopt;
    }
};
/// Values that wrap a single number.
template <class T, class Number>
struct WrappedCodec {
    static std::wstring Write(const T& value) {
        const auto& [number] = value;
        return Codec<Number>::Write(number);
    }
    static std::optional<T> Read(std::wstring_view text) {
        const std::optional<Number> number = Codec<Number>::Read(text);
        return number ? std::optional(T{*number}) : std::nullopt;
    }
};
template <>
struct Codec<Currency> : WrappedCodec<Currency, std::int64_t> {};
template <>
struct Codec<SysTime> : WrappedCodec<SysTime, std::uint64_t> {};
template <>
struct Codec<AppTime> : WrappedCodec<AppTime, double> {};
template <>
struct Codec<std::wstring> {
    static std::wstring Write(const std::wstring& value) { return value; }
    static std::optional<std::wstring> Read(std::wstring_view text) { return std::wstring(text); }
};
template <>
struct Codec<GUID> {
    static std::wstring Write(const GUID& value) { return TextOfGuid(value); }
    static std::optional<GUID> Read(std::wstring_view text) { return GuidFromText(std::wstring(text)); }
};
template <>
struct Codec<Bytes> {
    static std::wstring Write(const Bytes& value) { return ToHex(value); }
    static std::optional<Bytes> Read(std::wstring_view text) { return FromHex(text); }
};
template <class T>
concept Kept = requires(const T& value) {
    Codec<T>::Write(value);
};

template <Kept T>
struct Codec<std::vector<T>> {
    static std::wstring Write(const std::vector<T>& values) {
        std::wstring text;
        for (const T& value : values)
            text += EscapeLine(Codec<T>::Write(value)) + L";";
        return text;
    }
    static std::optional<std::vector<T>> Read(std::wstring_view text) {
        std::vector<T> values;
        while (!text.empty()) {
            const std::size_t end = text.find(L';');
            if (end == std::wstring_view::npos)
                return std::nullopt;
            const std::optional<std::wstring> item = UnescapeLine(text.substr(0, end));
            std::optional<T> value = item ? Codec<T>::Read(*item) : std::nullopt;
            if (!value)
                return std::nullopt;
            values.push_back(std::move(*value));
            text.remove_prefix(end + 1);
        }
        return values;
    }
};

template <std::size_t index>
std::optional<Value> ReadAlternative(std::wstring_view text) {
    using T = std::variant_alternative_t<index, Value>;
    if constexpr (Kept<T>) {
        if (std::optional<T> value = Codec<T>::Read(text))
            return Value(std::in_place_index<index>, std::move(*value));
    }
    return std::nullopt;
}

template <std::size_t... indexes>
constexpr auto MakeReaders(std::index_sequence<indexes...>) {
    return std::array{&ReadAlternative<indexes>...};
}
constexpr auto kReaders = MakeReaders(std::make_index_sequence<kTypeOfAlternative.size()>());

std::wstring KeyOf(PropertyTag tag, const NamedProperties& names) {
    const PropertyName* name = IsNamed(tag) ? names.Name(IdOf(tag)) : nullptr;
    if (!name)
        return Hex(tag, 8);
    const auto* number = std::get_if<std::uint32_t>(&name->id);
    const std::wstring id = number ? L"#" + Hex(*number, 8) : L"$" + std::get<std::wstring>(name->id);
    return TextOfGuid(name->set) + id + L" " + Hex(TypeOf(tag), kTypeDigits);
}

std::optional<PropertyTag> TagFromKey(std::wstring_view key, NamedProperties& names) {
    if (!key.starts_with(L'{'))
        return ParseNumber<PropertyTag>(key, 16);
    if (key.size() < kGuidLength + 2 + kTypeDigits)
        return std::nullopt;
    const auto set = GuidFromText(std::wstring(key.substr(0, kGuidLength)));
    const auto type = ParseNumber<PropertyType>(key.substr(key.size() - kTypeDigits), 16);
    const std::wstring_view id = key.substr(kGuidLength, key.size() - kGuidLength - kTypeDigits - 1);
    if (!set || !type || id.empty())
        return std::nullopt;
    PropertyName name{*set, std::wstring(id.substr(1))};
    if (id.front() == L'#') {
        const auto number = ParseNumber<std::uint32_t>(id.substr(1), 16);
        if (!number)
            return std::nullopt;
        name.id = *number;
    }
    const PropertyId found = names.Id(name, true);
    return found == 0 ? std::nullopt : std::optional(MakeTag(found, *type));
}

} // namespace

std::optional<std::wstring> TextOfValue(const Value& value) {
    return std::visit(
        [](const auto& what) -> std::optional<std::wstring> {
            using T = std::decay_t<decltype(what)>;
            if constexpr (Kept<T>)
                return Codec<T>::Write(what);
            return std::nullopt;
        },
        value);
}

std::optional<Value> ValueFromText(PropertyType type, std::wstring_view text) {
    const std::size_t index = AlternativeOf(type);
    return index < kReaders.size() ? kReaders[index](text) : std::nullopt;
}

IniSection PropertySection(const PropertyBag& bag, const NamedProperties& names) {
    IniSection section{L"Properties", 0, {}};
    for (const Property& property : bag)
        if (std::optional<std::wstring> text = TextOfValue(property.value))
            section.Add(KeyOf(property.Tag(), names), std::move(*text));
    return section;
}

void ParseProperty(const IniEntry& entry, NamedProperties& names, PropertyBag& bag) {
    const std::optional<PropertyTag> tag = TagFromKey(entry.key, names);
    if (!tag)
        throw IniError{entry.line,
                       L"\"" + entry.key + L"\" is neither a key that belongs here nor a property"};
    std::optional<Value> value = ValueFromText(TypeOf(*tag), entry.value);
    if (!value)
        throw IniError{entry.line, L"\"" + entry.value + L"\" is no value of the property's type"};
    bag.Put(*tag, std::move(*value));
}

PropertyBag ParseProperties(const IniSection& section, NamedProperties& names) {
    PropertyBag bag;
    for (const IniEntry& entry : section.entries)
        ParseProperty(entry, names, bag);
    return bag;
}

} // namespace standin::mailbox
