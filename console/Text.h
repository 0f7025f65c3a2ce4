// Text as the script language treats it: case, UTF-8, errors.
#pragma once

#include <compare>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

namespace standin::console {

/// A mistake in a script, or something that ends it. Whoever knows the line adds it.
class Mistake : public std::exception {
public:
    explicit Mistake(std::wstring reason) : m_reason(std::move(reason)) {}
    const std::wstring& Reason() const { return m_reason; }
    const char* what() const noexcept override { return "mistake in a script"; }

private:
    std::wstring m_reason;
};

/// The text in lower case, by no country's rules: equal for two names that FileMaker takes for the same.
std::wstring Folded(std::wstring_view text);

bool EqualIgnoringCase(std::wstring_view a, std::wstring_view b);

/// The order of two texts as FileMaker sorts them, without regard to case.
std::strong_ordering CompareTexts(std::wstring_view a, std::wstring_view b);

/// UTF-16 from UTF-8; nothing when it is not valid.
std::optional<std::wstring> FromUtf8(std::string_view bytes);
/// A surrogate without its other half becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);

} // namespace standin::console
