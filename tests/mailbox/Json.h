// Just enough JSON to read a line of facts.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace standin::mailbox::test {

/// A JSON value: text (numbers and words included), a list, or an object.
struct Json {
    std::wstring text;
    std::vector<Json> items;
    std::map<std::wstring, Json> members;

    bool Has(const std::wstring& name) const { return members.contains(name); }
    const std::wstring& Text(const std::wstring& name) const { return members.at(name).text; }
    const std::vector<Json>& Items(const std::wstring& name) const { return members.at(name).items; }
};

/// Throws std::runtime_error for what isn't JSON.
Json ParseJson(std::wstring_view text);

} // namespace standin::mailbox::test
