// Text as scripts know it: comparing, formatting, cutting.
#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varden {

/// A text argument of a script function. An empty argument and a missing one are the same: no value.
using ScriptText = std::optional<std::wstring>;

/// Formats as wprintf does. Wide texts are "%ls".
std::wstring FormatText(const wchar_t* format, ...);

/// Whether the texts are equal without regard to case.
bool EqualIgnoringCase(std::wstring_view a, std::wstring_view b);

/// The first row of a table whose word equals the text without regard to case; null for none.
template <typename Row, std::size_t size>
const Row* FindByWord(const std::array<Row, size>& rows, const wchar_t* Row::*word, std::wstring_view text) {
    const auto row =
        std::ranges::find_if(rows, [&](const Row& known) { return EqualIgnoringCase(known.*word, text); });
    return row == rows.end() ? nullptr : &*row;
}

/// The text with every `what` taken out.
std::wstring Without(std::wstring text, wchar_t what);

/// The text without the white space at its ends.
std::wstring Trimmed(const std::wstring& text);

/// The text with every `what` replaced.
std::wstring Replaced(std::wstring text, wchar_t what, wchar_t replacement);

/// The number that the text begins with, 0 when there is none: leading blanks, a sign, digits.
long LeadingNumber(const std::wstring& text);

/// The pieces between any of the separators, without empty ones.
std::vector<std::wstring> SplitText(std::wstring_view text, std::wstring_view separators);

/// Narrow text in the ANSI code page of the current thread.
std::string Narrow(std::wstring_view text);
/// Wide text from narrow text in the ANSI code page of the current thread.
std::wstring Widen(std::string_view text);

} // namespace varden
