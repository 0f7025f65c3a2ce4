// Reading and writing .ini files.
#include "standin/mailbox/Ini.h"

#include <cwchar>

namespace standin::mailbox {
namespace {

constexpr std::size_t kDigits = 4;

std::wstring_view TrimLine(std::wstring_view line) {
    constexpr std::wstring_view kBlanks = L" \t\r";
    const std::size_t first = line.find_first_not_of(kBlanks);
    return first == std::wstring_view::npos ? std::wstring_view()
                                            : line.substr(first, line.find_last_not_of(kBlanks) - first + 1);
}

std::wstring Unescape(std::wstring_view text, int line) {
    std::optional<std::wstring> plain = UnescapeLine(text);
    if (!plain)
        throw IniError{line, L"a backslash without four hexadecimal digits"};
    return *plain;
}

void ParseLine(std::wstring_view text, int line, std::vector<IniSection>& sections) {
    if (text.empty() || text.front() == L';')
        return;
    if (text.front() == L'[') {
        if (text.back() != L']')
            throw IniError{line, L"a section without its closing bracket"};
        sections.push_back({std::wstring(text.substr(1, text.size() - 2)), line, {}});
        return;
    }
    const std::size_t equals = text.find(L'=');
    if (equals == std::wstring_view::npos)
        throw IniError{line, L"neither a section nor a key with its value"};
    if (sections.empty())
        throw IniError{line, L"a key outside of any section"};
    sections.back().entries.push_back({Unescape(TrimLine(text.substr(0, equals)), line),
                                       Unescape(TrimLine(text.substr(equals + 1)), line), line});
}

bool NeedsEscape(std::wstring_view text, std::size_t position) {
    const wchar_t unit = text[position];
    const bool isOuterBlank = unit == L' ' && (position == 0 || position + 1 == text.size());
    return unit < L' ' || unit == 0x7F || unit == L'\\' || unit == L'=' || unit == L';' || isOuterBlank ||
           (unit == L'[' && position == 0) || (unit >= 0xD800 && unit < 0xE000) || unit == 0xFEFF;
}

} // namespace

std::wstring EscapeLine(std::wstring_view text) {
    std::wstring escaped;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!NeedsEscape(text, i)) {
            escaped += text[i];
            continue;
        }
        wchar_t digits[8];
        std::swprintf(digits, std::size(digits), L"\\%04X", static_cast<unsigned>(text[i]));
        escaped += digits;
    }
    return escaped;
}

std::optional<std::wstring> UnescapeLine(std::wstring_view text) {
    std::wstring plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'\\') {
            plain += text[i];
            continue;
        }
        const std::wstring digits(text.substr(i + 1, kDigits));
        if (digits.size() < kDigits ||
            digits.find_first_not_of(L"0123456789ABCDEFabcdef") != std::wstring::npos)
            return std::nullopt;
        plain += static_cast<wchar_t>(std::wcstoul(digits.c_str(), nullptr, 16));
        i += kDigits;
    }
    return plain;
}

std::vector<IniSection> ParseIni(std::span<const std::uint8_t> file) {
    constexpr wchar_t kByteOrderMark = 0xFEFF;
    const std::wstring text = Widen({reinterpret_cast<const char*>(file.data()), file.size()}, CP_UTF8);
    std::wstring_view rest = text;
    if (rest.starts_with(kByteOrderMark))
        rest.remove_prefix(1);
    std::vector<IniSection> sections;
    for (int line = 1; !rest.empty(); ++line) {
        const std::size_t end = rest.find(L'\n');
        ParseLine(TrimLine(rest.substr(0, end)), line, sections);
        rest.remove_prefix(end == std::wstring_view::npos ? rest.size() : end + 1);
    }
    return sections;
}

Bytes WriteIni(std::span<const IniSection> sections) {
    std::wstring text;
    for (const IniSection& section : sections) {
        text += L"[" + section.name + L"]\r\n";
        for (const IniEntry& entry : section.entries)
            text += EscapeLine(entry.key) + L"=" + EscapeLine(entry.value) + L"\r\n";
    }
    const std::string narrow = Narrow(text, CP_UTF8);
    return Bytes(narrow.begin(), narrow.end());
}

} // namespace standin::mailbox
