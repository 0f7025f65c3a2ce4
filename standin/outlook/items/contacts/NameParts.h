// The name of a person as a whole, and in its parts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace standin::outlook {

struct NameParts {
    std::wstring title, first, middle, last, suffix;
    bool operator==(const NameParts&) const = default;
};

/// "Dr. Ann Mary Lee Jr." and "Lee, Dr. Ann Mary Jr." as parts. Titles and suffixes are those that Outlook
/// knows in English, with a point or without. A single name is a first name, behind a title a last name.
NameParts ParseName(std::wstring_view fullName);
/// Title, first, middle, last name and suffix, a blank between.
std::wstring FullNameOf(const NameParts& parts);
/// The same without the title: what a contact is called in lists.
std::wstring PlainNameOf(const NameParts& parts);

/// Those of the texts that aren't empty, with a separator between them.
std::wstring JoinTexts(const std::vector<std::wstring>& texts, const wchar_t* separator);
/// The parts of a text between blanks.
std::vector<std::wstring> WordsOf(std::wstring_view text);

} // namespace standin::outlook
