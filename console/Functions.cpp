// The language's own functions. Positions count UTF-16 units from 1.
#include "Functions.h"

#include "Text.h"

#include <algorithm>
#include <array>

namespace standin::console {

namespace {

std::size_t Clamped(std::int32_t count, const std::wstring& text) {
    return std::min(static_cast<std::size_t>(std::max(count, 0)), text.size());
}

Value If(const Arguments& arguments) {
    if (arguments.At(0).AsBoolean()) {
        return arguments.At(1);
    }
    return arguments.Count() > 2 ? arguments.At(2) : Value();
}

Value Length(const Arguments& arguments) {
    return arguments.Text(0).size();
}

Value Left(const Arguments& arguments) {
    const std::wstring text = arguments.Text(0);
    return text.substr(0, Clamped(arguments.Whole(1), text));
}

Value Right(const Arguments& arguments) {
    const std::wstring text = arguments.Text(0);
    return text.substr(text.size() - Clamped(arguments.Whole(1), text));
}

Value Middle(const Arguments& arguments) {
    const std::wstring text = arguments.Text(0);
    const std::size_t before = Clamped(std::max(arguments.Whole(1), 1) - 1, text);
    return text.substr(before, Clamped(arguments.Whole(2), text));
}

/// Where the occurrence-th `sought` lies, counted from `start` on; from `start` backwards for a negative
/// occurrence.
Value Position(const Arguments& arguments) {
    const std::wstring text = Folded(arguments.Text(0));
    const std::wstring sought = Folded(arguments.Text(1));
    const std::size_t start = Clamped(std::max(arguments.Whole(2), 1) - 1, text);
    const std::int32_t occurrence = arguments.Whole(3);
    if (sought.empty() || occurrence == 0) {
        return 0;
    }
    const bool forwards = occurrence > 0;
    std::size_t found = forwards ? text.find(sought, start) : text.rfind(sought, start);
    for (std::int64_t left = std::abs(std::int64_t{occurrence}) - 1; left > 0 && found != std::wstring::npos;
         --left) {
        if (forwards) {
            found = text.find(sought, found + sought.size());
        } else {
            found = found < sought.size() ? std::wstring::npos : text.rfind(sought, found - sought.size());
        }
    }
    return found == std::wstring::npos ? 0 : found + 1;
}

std::wstring Replaced(const std::wstring& text, const std::wstring& sought, const std::wstring& by) {
    if (sought.empty()) {
        return text;
    }
    std::wstring result;
    std::size_t done = 0;
    for (std::size_t at = text.find(sought); at != std::wstring::npos; at = text.find(sought, done)) {
        result.append(text, done, at - done).append(by);
        done = at + sought.size();
    }
    return result.append(text, done);
}

Value Substitute(const Arguments& arguments) {
    std::wstring text = arguments.Text(0);
    for (std::size_t i = 1; i + 1 < arguments.Count(); i += 2) {
        text = Replaced(text, arguments.Text(i), arguments.Text(i + 1));
    }
    return text;
}

Value Exact(const Arguments& arguments) {
    return arguments.Text(0) == arguments.Text(1);
}

Value GetAsNumber(const Arguments& arguments) {
    const auto number = FixedPoint::FindIn(arguments.Text(0));
    return number ? Value(*number) : Value();
}

/// The values of a list: what ends with a carriage return, and what is left behind the last.
std::vector<std::wstring> Values(const std::wstring& list) {
    std::vector<std::wstring> values;
    std::size_t start = 0;
    for (std::size_t end = list.find(L'\r'); end != std::wstring::npos; end = list.find(L'\r', start)) {
        values.push_back(list.substr(start, end - start));
        start = end + 1;
    }
    if (start < list.size()) {
        values.push_back(list.substr(start));
    }
    return values;
}

Value ValueCount(const Arguments& arguments) {
    return Values(arguments.Text(0)).size();
}

Value GetValue(const Arguments& arguments) {
    const std::vector<std::wstring> values = Values(arguments.Text(0));
    const std::int32_t number = arguments.Whole(1);
    return number >= 1 && static_cast<std::size_t>(number) <= values.size()
               ? Value(values[static_cast<std::size_t>(number) - 1])
               : Value();
}

constexpr std::array kFunctions{
    BuiltIn{L"If", {2, 3}, If},
    BuiltIn{L"Length", {1, 1}, Length},
    BuiltIn{L"Left", {2, 2}, Left},
    BuiltIn{L"Right", {2, 2}, Right},
    BuiltIn{L"Middle", {3, 3}, Middle},
    BuiltIn{L"Position", {4, 4}, Position},
    BuiltIn{L"Substitute", {3, 3}, Substitute, true},
    BuiltIn{L"Exact", {2, 2}, Exact},
    BuiltIn{L"GetAsNumber", {1, 1}, GetAsNumber},
    BuiltIn{L"ValueCount", {1, 1}, ValueCount},
    BuiltIn{L"GetValue", {2, 2}, GetValue},
};

} // namespace

const BuiltIn* FindBuiltIn(std::wstring_view name) {
    const auto row = std::ranges::find_if(
        kFunctions, [name](const BuiltIn& entry) { return EqualIgnoringCase(entry.name, name); });
    return row == kFunctions.end() ? nullptr : &*row;
}

} // namespace standin::console
