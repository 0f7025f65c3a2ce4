// The .ini files of a kept mailbox: sections of keys and values, one a line, in UTF-8.
#pragma once

#include "standin/mailbox/Property.h"

#include <span>

namespace standin::mailbox {

struct IniEntry {
    std::wstring key;
    std::wstring value;
    int line = 0;
};

/// A section. Several may have the same name: a list of things has one for each.
struct IniSection {
    std::wstring name;
    int line = 0;
    std::vector<IniEntry> entries;

    void Add(std::wstring key, std::wstring value) { entries.push_back({std::move(key), std::move(value)}); }
};

/// Thrown for what is wrong in a file.
struct IniError {
    int line;
    std::wstring reason;
};

/// Throws IniError. Empty lines and those that begin with a semicolon are passed over.
std::vector<IniSection> ParseIni(std::span<const std::uint8_t> file);
Bytes WriteIni(std::span<const IniSection> sections);

/// Text on one line: control characters, backslashes, equal signs, semicolons and outer blanks as \ and four
/// digits.
std::wstring EscapeLine(std::wstring_view text);
std::optional<std::wstring> UnescapeLine(std::wstring_view text);

} // namespace standin::mailbox
