// The operators of calculations.
#pragma once

#include "Externals.h"
#include "Lexer.h"

#include <optional>
#include <string_view>

namespace standin::console {

/// An operator between two operands.
struct Operator {
    std::wstring_view word; ///< sign or name
    int level;              ///< the higher binds the tighter; equal ones go from the left
    Value (*apply)(const Value& left, const Value& right);
    /// The truth of the left operand that is the result already; the right one is then not worked out.
    std::optional<bool> decidedBy;
};

/// An operator before its operand; binds tighter than any between two.
struct PrefixOperator {
    std::wstring_view word;
    Value (*apply)(const Value& operand);
};

/// Null when the token is no such operator.
const Operator* FindOperator(const Token& token);
const PrefixOperator* FindPrefixOperator(const Token& token);

} // namespace standin::console
