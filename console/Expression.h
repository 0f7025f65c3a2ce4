// Calculations as trees.
#pragma once

#include "Externals.h"
#include "Functions.h"
#include "Operators.h"

#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace standin::console {

struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;

struct Constant {
    Value value;
};

/// Empty until it is set.
struct Variable {
    std::wstring name; ///< with its $ or $$
};

struct Prefixed {
    const PrefixOperator* op;
    ExpressionPtr operand;
};

struct Joined {
    const Operator* op;
    ExpressionPtr left;
    ExpressionPtr right;
};

struct BuiltInCall {
    const BuiltIn* function;
    std::vector<ExpressionPtr> arguments;
};

struct ExternalCall {
    ExternalFunction function;
    std::vector<ExpressionPtr> arguments;
};

struct Expression {
    std::variant<Constant, Variable, Prefixed, Joined, BuiltInCall, ExternalCall> node;
};

} // namespace standin::console
