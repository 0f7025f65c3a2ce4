// The values of calculations: what scripts compute with and what a plug-in's functions are given.
#pragma once

#include "FixedPoint.h"

#include <concepts>
#include <string>
#include <string_view>
#include <variant>

namespace standin::filemaker {

/// How a value came to be, by FileMaker's numbers for it.
enum class NativeType : std::int32_t {
    Text = 1,
    Number = 2,
    Date = 3,
    Time = 4,
    TimeStamp = 5,
    Container = 6,
    Boolean = 7
};

/// A text, a number or a boolean, readable as each of them by FileMaker's rules.
class Value {
public:
    /// An empty text.
    Value() = default;
    Value(std::wstring text) : m_content(std::move(text)) {}
    Value(std::wstring_view text) : m_content(std::wstring(text)) {}
    Value(const wchar_t* text) : m_content(std::wstring(text)) {}
    Value(FixedPoint number) : m_content(std::move(number)) {}
    Value(std::same_as<bool> auto truth) : m_content(truth) {}
    Value(std::integral auto number) requires(!std::same_as<decltype(number), bool>)
        : m_content(FixedPoint(static_cast<std::int64_t>(number))) {}

    NativeType Type() const;
    /// A number as FileMaker shows it; a boolean as "1" or "0".
    std::wstring AsText() const;
    /// The number that is in a text, 0 when there is none.
    FixedPoint AsNumber() const;
    /// Whether the number is not 0.
    bool AsBoolean() const;

private:
    std::variant<std::wstring, FixedPoint, bool> m_content;
};

} // namespace standin::filemaker
