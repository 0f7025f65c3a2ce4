// Case, order and encoding, by Windows' own rules.
#include "Text.h"

#include <windows.h>

namespace standin::console {

std::wstring Folded(std::wstring_view text) {
    std::wstring folded(text);
    // Also a letter whose counterpart lies outside of ASCII is one unit in either case.
    LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, text.data(), static_cast<int>(text.size()),
                  folded.data(), static_cast<int>(folded.size()), nullptr, nullptr, 0);
    return folded;
}

bool EqualIgnoringCase(std::wstring_view a, std::wstring_view b) {
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                TRUE) == CSTR_EQUAL;
}

std::strong_ordering CompareTexts(std::wstring_view a, std::wstring_view b) {
    if (EqualIgnoringCase(a, b)) {
        return std::strong_ordering::equal;
    }
    const int order = CompareStringEx(LOCALE_NAME_INVARIANT, NORM_IGNORECASE | SORT_STRINGSORT, a.data(),
                                      static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                      nullptr, nullptr, 0);
    // Texts that differ only in what sorting passes over are still different.
    return order == CSTR_EQUAL ? Folded(a) <=> Folded(b) : order <=> CSTR_EQUAL;
}

std::optional<std::wstring> FromUtf8(std::string_view bytes) {
    if (bytes.empty()) {
        return std::wstring();
    }
    const auto size = static_cast<int>(bytes.size());
    const int length = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), size, nullptr, 0);
    if (length == 0) {
        return std::nullopt;
    }
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, text.data(), length);
    return text;
}

std::string ToUtf8(std::wstring_view text) {
    const auto size = static_cast<int>(text.size());
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, bytes.data(), length, nullptr, nullptr);
    return bytes;
}

} // namespace standin::console
