// Values as filters and sorting compare them.
#pragma once

#include "standin/outlook/automation/Variants.h"

#include <compare>
#include <string>
#include <variant>
#include <vector>

namespace standin::outlook {

enum class FieldType { Text, Number, Flag, Date, Keywords };

/// Text compares without case, by the user's locale. Dates are minutes: Outlook looks at no seconds. Nothing
/// at all stands before everything.
struct Comparable {
    std::variant<std::monostate, std::wstring, double, bool, std::vector<std::wstring>> value;

    bool IsNothing() const { return std::holds_alternative<std::monostate>(value); }
};

/// What a member gives, for comparing as this type; nothing for a value that doesn't convert.
Comparable ComparableOf(const VARIANT& value, FieldType type);

/// Keywords are compared as one text.
std::weak_ordering Compare(const Comparable& left, const Comparable& right);
std::weak_ordering CompareText(std::wstring_view left, std::wstring_view right);
/// A date in whole minutes.
double MinutesOf(double date);

} // namespace standin::outlook
