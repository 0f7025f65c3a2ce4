// Runs scripts.
#pragma once

#include "Evaluator.h"
#include "Script.h"

#include <functional>
#include <optional>
#include <string_view>

namespace standin::console {

/// Runs steps one behind the other; variables stay from one run to the next.
class Runner {
public:
    /// `show` gets each text that a step shows.
    Runner(Externals& externals, std::function<void(std::wstring_view)> show)
        : m_evaluator(m_variables, externals), m_show(std::move(show)) {}
    Runner(const Runner&) = delete;
    Runner& operator=(const Runner&) = delete;

    /// The number that Exit Script gave, 0 for one without a number; nothing when the steps ran to their end.
    /// Raises ScriptMistake.
    std::optional<int> Run(const Block& block);

private:
    enum class Next { Step, LoopEnd, ScriptEnd };

    Next RunBlock(const Block& block);
    Next Do(const SetVariable& step);
    Next Do(const Show& step);
    Next Do(const ExitLoopIf& step);
    Next Do(const ExitScript& step);
    Next Do(const Loop& step);
    Next Do(const If& step);
    bool Holds(const ExpressionPtr& condition) const { return m_evaluator.Evaluate(*condition).AsBoolean(); }

    Variables m_variables;
    Evaluator m_evaluator;
    std::function<void(std::wstring_view)> m_show;
    int m_exitNumber = 0;
};

} // namespace standin::console
