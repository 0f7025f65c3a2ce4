// Comparing property values.
#include "standin/mapi/Comparison.h"

#include "standin/mailbox/Platform.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <span>

namespace standin::mapi {
namespace {

using mailbox::Bytes;
using mailbox::Value;
using Order = std::optional<std::weak_ordering>;

std::wstring Wide(const std::string& text) {
    return mailbox::Widen(text, CP_ACP);
}

Order CompareParts(const std::wstring& left, const std::wstring& right) {
    return mailbox::FoldCase(left) <=> mailbox::FoldCase(right);
}
Order CompareParts(const std::string& left, const std::string& right) {
    return CompareParts(Wide(left), Wide(right));
}
Order CompareParts(const GUID& left, const GUID& right) {
    return std::memcmp(&left, &right, sizeof left) <=> 0;
}
Order CompareParts(float left, float right) {
    return std::weak_order(left, right);
}
Order CompareParts(double left, double right) {
    return std::weak_order(left, right);
}
Order CompareParts(const mailbox::AppTime& left, const mailbox::AppTime& right) {
    return CompareParts(left.days, right.days);
}
template <class T>
Order CompareParts(const T& left, const T& right) {
    return left <=> right;
}
template <class T>
Order CompareParts(const std::vector<T>& left, const std::vector<T>& right) {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i)
        if (const Order order = CompareParts(left[i], right[i]); order != std::weak_ordering::equivalent)
            return order;
    return left.size() <=> right.size();
}

/// How text and bytes are searched alike.
template <class T>
bool Contains(std::span<const T> whole, std::span<const T> part, ULONG level) {
    if (part.size() > whole.size())
        return false;
    switch (LOWORD(level)) {
    case FL_FULLSTRING:
        return std::ranges::equal(whole, part);
    case FL_PREFIX:
        return std::ranges::equal(whole.first(part.size()), part);
    default:
        return std::search(whole.begin(), whole.end(), part.begin(), part.end()) != whole.end() ||
               part.empty();
    }
}

/// Text as a level wants it compared. FL_LOOSE leaves it to the provider what to forgive: letter case.
std::wstring Forgiven(const std::wstring& text, ULONG level) {
    constexpr int kTooLong = 0;
    std::wstring plain = text;
    if ((level & FL_IGNORENONSPACE) && !text.empty()) {
        // Decomposed, the marks stand by themselves.
        const int size = static_cast<int>(text.size());
        std::wstring apart(text.size() * 4 + 16, L'\0');
        const int length =
            FoldStringW(MAP_COMPOSITE, text.data(), size, apart.data(), static_cast<int>(apart.size()));
        if (length != kTooLong) {
            apart.resize(static_cast<std::size_t>(length));
            std::erase_if(apart, [](wchar_t unit) { return unit >= 0x0300 && unit <= 0x036F; });
            plain = apart;
        }
    }
    return level & (FL_IGNORECASE | FL_LOOSE) ? mailbox::FoldCase(plain) : plain;
}

bool HoldsText(ULONG level, const std::wstring& text, const std::wstring& pattern) {
    return Contains<wchar_t>(Forgiven(text, level), Forgiven(pattern, level), level);
}

bool HoldsPart(ULONG level, const std::wstring& text, const Value& pattern) {
    const auto* wide = std::get_if<std::wstring>(&pattern);
    return wide && HoldsText(level, text, *wide);
}
bool HoldsPart(ULONG level, const std::string& text, const Value& pattern) {
    const auto* narrow = std::get_if<std::string>(&pattern);
    return narrow && HoldsText(level, Wide(text), Wide(*narrow));
}
bool HoldsPart(ULONG level, const Bytes& bytes, const Value& pattern) {
    const auto* other = std::get_if<Bytes>(&pattern);
    return other && Contains<std::uint8_t>(bytes, *other, level);
}
template <class T>
bool HoldsPart(ULONG, const T&, const Value&) {
    return false;
}

/// Calls `test` for each entry of a multi-valued property until one passes.
template <class Test>
bool AnyEntry(const Value& values, Test test) {
    const auto visit = [&test]<class T>(const T& entries) {
        if constexpr (requires { typename T::value_type; } && !std::is_same_v<T, std::string> &&
                      !std::is_same_v<T, std::wstring> && !std::is_same_v<T, Bytes>)
            return std::ranges::any_of(entries, test);
        else
            return false;
    };
    return std::visit(visit, values);
}

template <class T>
std::size_t SizeOfPart(const T&) {
    return sizeof(T);
}
std::size_t SizeOfPart(bool) {
    return sizeof(std::int16_t);
}
template <class T>
std::size_t SizeOfPart(const std::basic_string<T>& text) {
    return (text.size() + 1) * sizeof(T);
}
std::size_t SizeOfPart(const Bytes& bytes) {
    return bytes.size();
}
std::size_t SizeOfPart(const mailbox::NullPointer&) {
    return 0;
}
template <class T>
std::size_t SizeOfPart(const std::vector<T>& values) {
    std::size_t size = 0;
    for (const T& value : values)
        size += SizeOfPart(value);
    return size;
}

} // namespace

std::optional<std::weak_ordering> Compare(const Value& left, const Value& right) {
    if (left.index() != right.index())
        return std::nullopt;
    return std::visit(
        [&right]<class T>(const T& part) -> Order { return CompareParts(part, std::get<T>(right)); }, left);
}

bool IsComparison(ULONG relation) {
    return relation <= RELOP_NE;
}

bool Holds(ULONG relation, const Value& left, const Value& right) {
    const Order order = Compare(left, right);
    if (!order)
        return false;
    switch (relation) {
    case RELOP_LT:
        return *order < 0;
    case RELOP_LE:
        return *order <= 0;
    case RELOP_GT:
        return *order > 0;
    case RELOP_GE:
        return *order >= 0;
    case RELOP_EQ:
        return *order == 0;
    case RELOP_NE:
        return *order != 0;
    default:
        return false;
    }
}

bool HoldsContent(ULONG fuzzyLevel, const Value& value, const Value& pattern) {
    if (mailbox::TypeOf(value) & MV_FLAG)
        return AnyEntry(value, [&](const auto& entry) { return HoldsPart(fuzzyLevel, entry, pattern); });
    return std::visit([&](const auto& part) { return HoldsPart(fuzzyLevel, part, pattern); }, value);
}

bool AnyHolds(ULONG relation, const Value& values, const Value& single) {
    return AnyEntry(values, [&](const auto& entry) { return Holds(relation, Value(entry), single); });
}

std::size_t PropertySize(const Value& value) {
    return std::visit([](const auto& part) { return SizeOfPart(part); }, value);
}

} // namespace standin::mapi
