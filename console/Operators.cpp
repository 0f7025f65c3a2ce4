// Arithmetic, comparison and logic as FileMaker works them out.
#include "Operators.h"

#include "Text.h"

#include <algorithm>
#include <array>
#include <compare>

namespace standin::console {

namespace {

/// Two numbers by their size; texts, and a text with a number, as texts without regard to case.
std::strong_ordering Compare(const Value& left, const Value& right) {
    using filemaker::NativeType;
    if (left.Type() != NativeType::Text && right.Type() != NativeType::Text) {
        return left.AsNumber() <=> right.AsNumber();
    }
    return CompareTexts(left.AsText(), right.AsText());
}

Value Quotient(const Value& left, const Value& right) {
    const auto quotient = left.AsNumber().DividedBy(right.AsNumber());
    // FileMaker's answer to what can't be worked out.
    return quotient ? Value(*quotient) : Value(L"?");
}

constexpr std::array kOperators{
    Operator{L"or", 0, [](const Value& a, const Value& b) { return Value(a.AsBoolean() || b.AsBoolean()); },
             true},
    Operator{
        L"xor", 0, [](const Value& a, const Value& b) { return Value(a.AsBoolean() != b.AsBoolean()); }, {}},
    Operator{L"and", 1, [](const Value& a, const Value& b) { return Value(a.AsBoolean() && b.AsBoolean()); },
             false},
    Operator{L"=", 2, [](const Value& a, const Value& b) { return Value(std::is_eq(Compare(a, b))); }, {}},
    Operator{L"≠", 2, [](const Value& a, const Value& b) { return Value(std::is_neq(Compare(a, b))); }, {}},
    Operator{L"<", 2, [](const Value& a, const Value& b) { return Value(std::is_lt(Compare(a, b))); }, {}},
    Operator{L"≤", 2, [](const Value& a, const Value& b) { return Value(std::is_lteq(Compare(a, b))); }, {}},
    Operator{L">", 2, [](const Value& a, const Value& b) { return Value(std::is_gt(Compare(a, b))); }, {}},
    Operator{L"≥", 2, [](const Value& a, const Value& b) { return Value(std::is_gteq(Compare(a, b))); }, {}},
    Operator{L"&", 3, [](const Value& a, const Value& b) { return Value(a.AsText() + b.AsText()); }, {}},
    Operator{L"+", 4, [](const Value& a, const Value& b) { return Value(a.AsNumber() + b.AsNumber()); }, {}},
    Operator{L"-", 4, [](const Value& a, const Value& b) { return Value(a.AsNumber() - b.AsNumber()); }, {}},
    Operator{L"*", 5, [](const Value& a, const Value& b) { return Value(a.AsNumber() * b.AsNumber()); }, {}},
    Operator{L"/", 5, Quotient, {}},
};

constexpr std::array kPrefixOperators{
    PrefixOperator{L"not", [](const Value& operand) { return Value(!operand.AsBoolean()); }},
    PrefixOperator{L"-", [](const Value& operand) { return Value(-operand.AsNumber()); }},
    PrefixOperator{L"+", [](const Value& operand) { return Value(operand.AsNumber()); }},
};

const auto* FindIn(const auto& table, const Token& token) {
    const auto row = std::ranges::find_if(
        table, [&](const auto& entry) { return token.IsSign(entry.word) || token.IsName(entry.word); });
    return row == table.end() ? nullptr : &*row;
}

} // namespace

const Operator* FindOperator(const Token& token) {
    return FindIn(kOperators, token);
}

const PrefixOperator* FindPrefixOperator(const Token& token) {
    return FindIn(kPrefixOperators, token);
}

} // namespace standin::console
