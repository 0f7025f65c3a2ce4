// What each step does.
#include "Runner.h"

#include "ScriptParser.h"

namespace standin::console {

namespace {

/// Does something that belongs to a line; a mistake that has no line yet gets this one.
auto AtLine(int line, auto action) {
    try {
        return action();
    } catch (const ScriptMistake&) {
        throw;
    } catch (const Mistake& mistake) {
        throw ScriptMistake(line, mistake.Reason());
    }
}

} // namespace

std::optional<int> Runner::Run(const Block& block) {
    if (RunBlock(block) != Next::ScriptEnd) {
        return std::nullopt;
    }
    return m_exitNumber;
}

Runner::Next Runner::RunBlock(const Block& block) {
    for (const Step& step : block) {
        const Next next = AtLine(step.line, [&] {
            return std::visit([this](const auto& action) { return Do(action); }, step.action);
        });
        if (next != Next::Step) {
            return next;
        }
    }
    return Next::Step;
}

Runner::Next Runner::Do(const SetVariable& step) {
    m_variables.Set(step.name, m_evaluator.Evaluate(*step.value));
    return Next::Step;
}

Runner::Next Runner::Do(const Show& step) {
    m_show(m_evaluator.Evaluate(*step.text).AsText());
    return Next::Step;
}

Runner::Next Runner::Do(const ExitLoopIf& step) {
    return Holds(step.condition) ? Next::LoopEnd : Next::Step;
}

Runner::Next Runner::Do(const ExitScript& step) {
    m_exitNumber = step.result ? m_evaluator.Evaluate(*step.result).AsNumber().AsLong() : 0;
    return Next::ScriptEnd;
}

Runner::Next Runner::Do(const Loop& step) {
    Next next;
    do {
        next = RunBlock(step.body);
    } while (next == Next::Step);
    return next == Next::LoopEnd ? Next::Step : next;
}

Runner::Next Runner::Do(const If& step) {
    for (const Branch& branch : step.branches) {
        if (!branch.condition || AtLine(branch.line, [&] { return Holds(branch.condition); })) {
            return RunBlock(branch.body);
        }
    }
    return Next::Step;
}

} // namespace standin::console
