// Finding the prefix of a subject.
#include "standin/mailbox/Subject.h"

#include <algorithm>

namespace standin::mailbox {
namespace {

std::size_t PrefixLength(std::wstring_view subject) {
    constexpr std::size_t kMostLetters = 3;
    const std::size_t colon = subject.substr(0, kMostLetters + 1).find(L':');
    if (colon == std::wstring_view::npos || colon == 0 || subject.substr(colon + 1, 1) != L" ")
        return 0;
    const bool plain = std::ranges::none_of(subject.substr(0, colon), [](wchar_t unit) {
        return unit == L' ' || (unit >= L'0' && unit <= L'9');
    });
    return plain ? colon + 2 : 0;
}

} // namespace

SubjectParts SplitSubject(std::wstring_view subject, std::wstring_view stated) {
    const bool begins = !stated.empty() && subject.starts_with(stated);
    std::size_t length = begins ? stated.size() : PrefixLength(subject);
    const std::wstring_view prefix = subject.substr(0, length);
    while (length > 0 && subject.substr(length, 1) == L" ")
        ++length;
    return {prefix, subject.substr(length)};
}

} // namespace standin::mailbox
