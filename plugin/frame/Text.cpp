// Text as scripts know it.
#include "Text.h"

#include <windows.h>

#include <algorithm>
#include <cstdarg>
#include <cwchar>
#include <cwctype>

namespace varden {

std::wstring FormatText(const wchar_t* format, ...) {
    std::wstring text(256, L'\0');
    for (;;) {
        std::va_list arguments;
        va_start(arguments, format);
        const int length = std::vswprintf(text.data(), text.size(), format, arguments);
        va_end(arguments);
        if (length >= 0 && static_cast<std::size_t>(length) < text.size()) {
            text.resize(static_cast<std::size_t>(length));
            return text;
        }
        text.resize(text.size() * 2);
    }
}

bool EqualIgnoringCase(std::wstring_view a, std::wstring_view b) {
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                TRUE) == CSTR_EQUAL;
}

std::wstring Without(std::wstring text, wchar_t what) {
    std::erase(text, what);
    return text;
}

std::wstring Trimmed(const std::wstring& text) {
    const auto isSpace = [](wchar_t c) { return std::iswspace(c) != 0; };
    const auto first = std::ranges::find_if_not(text, isSpace);
    const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), isSpace).base();
    return std::wstring(first, last);
}

std::wstring Replaced(std::wstring text, wchar_t what, wchar_t replacement) {
    std::ranges::replace(text, what, replacement);
    return text;
}

long LeadingNumber(const std::wstring& text) {
    return _wtol(text.c_str());
}

std::vector<std::wstring> SplitText(std::wstring_view text, std::wstring_view separators) {
    std::vector<std::wstring> pieces;
    std::size_t start = text.find_first_not_of(separators);
    while (start != std::wstring_view::npos) {
        const std::size_t end = text.find_first_of(separators, start);
        pieces.emplace_back(text.substr(start, end - start));
        start = text.find_first_not_of(separators, end);
    }
    return pieces;
}

std::string Narrow(std::wstring_view text) {
    if (text.empty()) {
        return {};
    }
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_THREAD_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_THREAD_ACP, 0, text.data(), length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

std::wstring Widen(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    const int length = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(CP_THREAD_ACP, 0, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_THREAD_ACP, 0, text.data(), length, wide.data(), size);
    return wide;
}

} // namespace varden
