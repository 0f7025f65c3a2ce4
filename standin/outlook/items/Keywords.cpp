// Lists of keywords in one text.
#include "standin/outlook/items/Conversions.h"

namespace standin::outlook {

std::vector<std::wstring> SplitKeywords(std::wstring_view text) {
    std::vector<std::wstring> keywords;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(L",;"), text.size());
        const std::wstring_view part = text.substr(0, end);
        const std::size_t first = part.find_first_not_of(L' ');
        if (first != part.npos)
            keywords.emplace_back(part.substr(first, part.find_last_not_of(L' ') - first + 1));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return keywords;
}

std::wstring JoinKeywords(const std::vector<std::wstring>& keywords) {
    std::wstring text;
    for (const std::wstring& keyword : keywords)
        text += (text.empty() ? L"" : L", ") + keyword;
    return text;
}

} // namespace standin::outlook
