// A walk over the tree of a calculation.
#include "Evaluator.h"

#include "Text.h"

namespace standin::console {

namespace {

class LazyArguments final : public Arguments {
public:
    LazyArguments(const std::vector<ExpressionPtr>& arguments, const Evaluator& evaluator)
        : m_arguments(arguments), m_evaluator(evaluator) {}
    std::size_t Count() const override { return m_arguments.size(); }
    Value At(std::size_t index) const override { return m_evaluator.Evaluate(*m_arguments[index]); }

private:
    const std::vector<ExpressionPtr>& m_arguments;
    const Evaluator& m_evaluator;
};

} // namespace

void Variables::Set(std::wstring_view name, Value value) {
    m_values.insert_or_assign(Folded(name), std::move(value));
}

Value Variables::Get(std::wstring_view name) const {
    const auto variable = m_values.find(Folded(name));
    return variable == m_values.end() ? Value() : variable->second;
}

Value Evaluator::Evaluate(const Expression& expression) const {
    return std::visit([this](const auto& node) { return Of(node); }, expression.node);
}

Value Evaluator::Of(const Joined& joined) const {
    const Value left = Evaluate(*joined.left);
    if (joined.op->decidedBy && left.AsBoolean() == *joined.op->decidedBy) {
        return *joined.op->decidedBy;
    }
    return joined.op->apply(left, Evaluate(*joined.right));
}

Value Evaluator::Of(const BuiltInCall& call) const {
    return call.function->function(LazyArguments(call.arguments, *this));
}

Value Evaluator::Of(const ExternalCall& call) const {
    std::vector<Value> arguments;
    for (const ExpressionPtr& argument : call.arguments) {
        arguments.push_back(Evaluate(*argument));
    }
    return m_externals.Call(call.function, arguments);
}

} // namespace standin::console
