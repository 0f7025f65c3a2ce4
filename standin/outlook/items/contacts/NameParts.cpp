// Names of people put together and taken apart.
#include "standin/outlook/items/contacts/NameParts.h"

#include "standin/mailbox/Platform.h"

#include <algorithm>
#include <span>

namespace standin::outlook {
namespace {

constexpr std::wstring_view kTitles[] = {L"Dr", L"Miss", L"Mr", L"Mrs", L"Ms", L"Prof"};
constexpr std::wstring_view kSuffixes[] = {L"I", L"II", L"III", L"Jr", L"Sr"};

bool IsOneOf(std::span<const std::wstring_view> known, std::wstring_view word) {
    if (word.ends_with(L'.'))
        word.remove_suffix(1);
    return std::ranges::any_of(
        known, [word](std::wstring_view each) { return mailbox::SameIgnoringCase(each, word); });
}

std::wstring JoinWords(std::span<const std::wstring> words) {
    return JoinTexts({words.begin(), words.end()}, L" ");
}

/// Takes a title off the front of the words.
std::wstring TakeTitle(std::vector<std::wstring>& words) {
    if (words.size() < 2 || !IsOneOf(kTitles, words.front()))
        return {};
    std::wstring title = std::move(words.front());
    words.erase(words.begin());
    return title;
}

/// Takes a suffix off their end; `fewest` words stay.
std::wstring TakeSuffix(std::vector<std::wstring>& words, std::size_t fewest) {
    if (words.size() <= fewest || !IsOneOf(kSuffixes, words.back()))
        return {};
    std::wstring suffix = std::move(words.back());
    words.pop_back();
    return suffix;
}

NameParts ParseInOrder(std::vector<std::wstring> words) {
    NameParts parts;
    parts.title = TakeTitle(words);
    parts.suffix = TakeSuffix(words, 1);
    if (words.empty())
        return parts;
    if (words.size() == 1) {
        (parts.title.empty() ? parts.first : parts.last) = words.front();
        return parts;
    }
    parts.first = words.front();
    parts.last = words.back();
    parts.middle = JoinWords(std::span(words).subspan(1, words.size() - 2));
    return parts;
}

/// "Last, First Middle".
NameParts ParseLastFirst(std::vector<std::wstring> last, std::vector<std::wstring> others) {
    NameParts parts;
    parts.title = TakeTitle(last);
    if (parts.title.empty())
        parts.title = TakeTitle(others);
    parts.suffix = TakeSuffix(others, 1);
    if (parts.suffix.empty())
        parts.suffix = TakeSuffix(last, 1);
    parts.last = JoinWords(last);
    if (others.empty())
        return parts;
    parts.first = others.front();
    parts.middle = JoinWords(std::span(others).subspan(1));
    return parts;
}

} // namespace

std::vector<std::wstring> WordsOf(std::wstring_view text) {
    constexpr std::wstring_view kBlanks = L" \t\r\n\u00A0";
    std::vector<std::wstring> words;
    while (true) {
        const std::size_t first = text.find_first_not_of(kBlanks);
        if (first == text.npos)
            return words;
        const std::size_t end = std::min(text.find_first_of(kBlanks, first), text.size());
        words.emplace_back(text.substr(first, end - first));
        text.remove_prefix(end);
    }
}

std::wstring JoinTexts(const std::vector<std::wstring>& texts, const wchar_t* separator) {
    std::wstring whole;
    for (const std::wstring& text : texts)
        if (!text.empty())
            whole += (whole.empty() ? L"" : separator) + text;
    return whole;
}

NameParts ParseName(std::wstring_view fullName) {
    const std::size_t comma = fullName.find(L',');
    if (comma == fullName.npos)
        return ParseInOrder(WordsOf(fullName));
    std::vector<std::wstring> front = WordsOf(fullName.substr(0, comma));
    std::vector<std::wstring> rest = WordsOf(fullName.substr(comma + 1));
    const bool isOnlySuffix = rest.size() == 1 && IsOneOf(kSuffixes, rest.front());
    if (!isOnlySuffix && !front.empty())
        return ParseLastFirst(std::move(front), std::move(rest));
    front.insert(front.end(), rest.begin(), rest.end());
    return ParseInOrder(std::move(front));
}

std::wstring FullNameOf(const NameParts& parts) {
    return JoinTexts({parts.title, parts.first, parts.middle, parts.last, parts.suffix}, L" ");
}

std::wstring PlainNameOf(const NameParts& parts) {
    return JoinTexts({parts.first, parts.middle, parts.last, parts.suffix}, L" ");
}

} // namespace standin::outlook
