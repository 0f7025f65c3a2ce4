// Postal addresses put together and taken apart.
#include "standin/outlook/items/contacts/PostalText.h"

#include "standin/mailbox/Platform.h"
#include "standin/outlook/items/contacts/NameParts.h"

#include <algorithm>
#include <optional>
#include <span>

namespace standin::outlook {
namespace {

using mailbox::SameIgnoringCase;

std::wstring LocaleText(LCTYPE what) {
    wchar_t text[128] = L"";
    GetLocaleInfoW(LOCALE_USER_DEFAULT, what, text, static_cast<int>(std::size(text)));
    return text;
}

/// Outlook's own name for the United States isn't one of the system's.
bool IsOwnCountry(const std::wstring& country) {
    constexpr const wchar_t *kUnitedStates = L"US", *kLongName = L"United States of America";
    const std::wstring iso = LocaleText(LOCALE_SISO3166CTRYNAME);
    if (iso == kUnitedStates && SameIgnoringCase(country, kLongName))
        return true;
    const std::wstring names[] = {iso, LocaleText(LOCALE_SENGCOUNTRY), LocaleText(LOCALE_SNATIVECTRYNAME),
                                  LocaleText(LOCALE_SABBREVCTRYNAME)};
    return std::ranges::any_of(
        names, [&country](const std::wstring& name) { return SameIgnoringCase(name, country); });
}

bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

bool HasDigit(std::wstring_view text) {
    return std::ranges::any_of(text, IsDigit);
}

/// 12345 or 12345-6789.
bool IsZipCode(std::wstring_view word) {
    constexpr std::size_t kShort = 5, kLong = 10;
    if (word.size() != kShort && word.size() != kLong)
        return false;
    for (std::size_t i = 0; i < word.size(); ++i)
        if (i == kShort ? word[i] != L'-' : !IsDigit(word[i]))
            return false;
    return true;
}

bool IsStateCode(std::wstring_view word) {
    return word.size() == 2 && std::ranges::all_of(word, [](wchar_t c) { return c >= L'A' && c <= L'Z'; });
}

std::wstring Join(std::span<const std::wstring> words, const wchar_t* separator = L" ") {
    return JoinTexts({words.begin(), words.end()}, separator);
}

/// "City, State PostalCode".
std::optional<PostalParts> ParseCityWithComma(std::wstring_view line) {
    const std::size_t comma = line.find(L',');
    if (comma == line.npos)
        return std::nullopt;
    PostalParts parts{.city = Join(WordsOf(line.substr(0, comma)))};
    const std::vector<std::wstring> words = WordsOf(line.substr(comma + 1));
    if (parts.city.empty() || words.empty() || HasDigit(parts.city) ||
        line.find(L',', comma + 1) != line.npos)
        return std::nullopt;
    const auto code = std::ranges::find_if(words, HasDigit);
    parts.state = Join({words.begin(), code});
    parts.postalCode = Join({code, words.end()});
    return parts;
}

/// "City ST 12345".
std::optional<PostalParts> ParseCityWithZipCode(std::wstring_view line) {
    std::vector<std::wstring> words = WordsOf(line);
    if (words.size() < 2 || !IsZipCode(words.back()))
        return std::nullopt;
    PostalParts parts{.postalCode = words.back()};
    words.pop_back();
    if (words.size() > 1 && IsStateCode(words.back())) {
        parts.state = words.back();
        words.pop_back();
    }
    parts.city = Join(words);
    return HasDigit(parts.city) ? std::nullopt : std::optional(parts);
}

std::vector<std::wstring> LinesOf(std::wstring_view text) {
    std::vector<std::wstring> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
        if (end > 0)
            lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

constexpr const wchar_t* kLineEnd = L"\r\n";

} // namespace

std::wstring ComposeAddress(const PostalParts& parts) {
    const std::wstring place =
        JoinTexts({JoinTexts({parts.city, parts.state}, L", "), parts.postalCode}, L"  ");
    return JoinTexts({parts.street, place, IsOwnCountry(parts.country) ? L"" : parts.country}, kLineEnd);
}

PostalParts ParseAddress(std::wstring_view text) {
    const std::vector<std::wstring> lines = LinesOf(text);
    const std::span<const std::wstring> all = lines;
    for (std::size_t below = 0; below < std::min<std::size_t>(2, all.size()); ++below) {
        const std::size_t at = all.size() - 1 - below;
        std::optional<PostalParts> parts = ParseCityWithComma(all[at]);
        if (!parts)
            parts = ParseCityWithZipCode(all[at]);
        if (!parts)
            continue;
        parts->street = Join(all.first(at), kLineEnd);
        parts->country = Join(all.subspan(at + 1));
        return *parts;
    }
    return {.street = Join(all, kLineEnd)};
}

} // namespace standin::outlook
