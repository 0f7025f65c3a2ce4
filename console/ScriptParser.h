// Makes trees of scripts, line by line.
#pragma once

#include "ExpressionParser.h"
#include "Script.h"
#include "Text.h"

#include <string_view>
#include <utility>
#include <vector>

namespace standin::console {

/// A mistake with the line that it is in.
class ScriptMistake : public Mistake {
public:
    ScriptMistake(int line, std::wstring reason) : Mistake(std::move(reason)), m_line(line) {}
    int Line() const { return m_line; }

private:
    int m_line;
};

/// Collects steps until every Loop and If has its end. All operations raise ScriptMistake.
class ScriptParser {
public:
    explicit ScriptParser(const Externals& externals) : m_externals(externals) {}

    void AddLine(int number, std::wstring_view line);
    /// Whether no Loop or If is open.
    bool IsComplete() const { return m_open.empty(); }
    /// The steps so far; the parser starts anew.
    Block Take();
    /// Forgets everything, open blocks too.
    void Clear();

private:
    /// A Loop or If whose end is still to come.
    struct Open {
        int line;
        std::variant<Loop, If> block;
    };
    struct StepForm;
    static const StepForm kStepForms[];

    void ParseLine(Cursor& cursor);
    void ParseSetVariable(Cursor& cursor);
    void ParseShow(Cursor& cursor);
    void ParseExitLoopIf(Cursor& cursor);
    void ParseExitScript(Cursor& cursor);
    void ParseLoop(Cursor& cursor);
    void ParseEndLoop(Cursor& cursor);
    void ParseIf(Cursor& cursor);
    void ParseElseIf(Cursor& cursor);
    void ParseElse(Cursor& cursor);
    void ParseEndIf(Cursor& cursor);

    ExpressionPtr BracketedExpression(Cursor& cursor);
    void Add(decltype(Step::action) action);
    void AddBranch(Branch branch, std::wstring_view word);
    template <typename BlockType>
    void Close(std::wstring_view word, std::wstring_view opener);

    const Externals& m_externals;
    int m_line = 0;
    Block m_steps;
    std::vector<Open> m_open;
};

} // namespace standin::console
