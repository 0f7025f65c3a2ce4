// Works out calculations.
#pragma once

#include "Expression.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace standin::console {

/// A script's variables. Names go without regard to case.
class Variables {
public:
    void Set(std::wstring_view name, Value value);
    /// An empty text for one that was never set.
    Value Get(std::wstring_view name) const;

private:
    std::map<std::wstring, Value> m_values;
};

class Evaluator {
public:
    Evaluator(const Variables& variables, Externals& externals)
        : m_variables(variables), m_externals(externals) {}

    /// Raises Mistake when a plug-in's function throws.
    Value Evaluate(const Expression& expression) const;

private:
    Value Of(const Constant& constant) const { return constant.value; }
    Value Of(const Variable& variable) const { return m_variables.Get(variable.name); }
    Value Of(const Prefixed& prefixed) const { return prefixed.op->apply(Evaluate(*prefixed.operand)); }
    Value Of(const Joined& joined) const;
    Value Of(const BuiltInCall& call) const;
    Value Of(const ExternalCall& call) const;

    const Variables& m_variables;
    Externals& m_externals;
};

} // namespace standin::console
