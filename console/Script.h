// Scripts as trees.
#pragma once

#include "Expression.h"

#include <string>
#include <variant>
#include <vector>

namespace standin::console {

struct Step;
using Block = std::vector<Step>;

struct SetVariable {
    std::wstring name;
    ExpressionPtr value;
};

/// Show Custom Dialog, or an expression alone on its line.
struct Show {
    ExpressionPtr text;
};

struct ExitLoopIf {
    ExpressionPtr condition;
};

struct ExitScript {
    ExpressionPtr result; ///< null: none
};

struct Loop {
    Block body;
};

struct Branch {
    int line = 0;
    ExpressionPtr condition; ///< null for Else
    Block body;
};

struct If {
    std::vector<Branch> branches;
};

struct Step {
    int line = 0;
    std::variant<SetVariable, Show, ExitLoopIf, ExitScript, Loop, If> action;
};

} // namespace standin::console
