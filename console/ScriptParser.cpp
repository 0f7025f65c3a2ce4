// The script steps: a table of their forms, and how blocks open and close.
#include "ScriptParser.h"

#include <algorithm>

namespace standin::console {

struct ScriptParser::StepForm {
    std::wstring_view words;
    void (ScriptParser::*parse)(Cursor& cursor);
};

const ScriptParser::StepForm ScriptParser::kStepForms[] = {
    {L"Set Variable", &ScriptParser::ParseSetVariable},
    {L"Show Custom Dialog", &ScriptParser::ParseShow},
    {L"Exit Loop If", &ScriptParser::ParseExitLoopIf},
    {L"Exit Script", &ScriptParser::ParseExitScript},
    {L"Loop", &ScriptParser::ParseLoop},
    {L"End Loop", &ScriptParser::ParseEndLoop},
    {L"If", &ScriptParser::ParseIf},
    {L"Else If", &ScriptParser::ParseElseIf},
    {L"Else", &ScriptParser::ParseElse},
    {L"End If", &ScriptParser::ParseEndIf},
};

void ScriptParser::AddLine(int number, std::wstring_view line) {
    m_line = number;
    const std::size_t start = line.find_first_not_of(L" \t\u00A0");
    if (start == std::wstring_view::npos || line[start] == L'#') {
        return;
    }
    try {
        Cursor cursor(line);
        ParseLine(cursor);
        if (!cursor.AtEnd()) {
            throw Mistake(L"unexpected " + Describe(cursor.Peek()));
        }
    } catch (const Mistake& mistake) {
        throw ScriptMistake(number, mistake.Reason());
    }
}

Block ScriptParser::Take() {
    if (!m_open.empty()) {
        const bool isLoop = std::holds_alternative<Loop>(m_open.back().block);
        throw ScriptMistake(m_open.back().line, isLoop ? L"Loop without End Loop" : L"If without End If");
    }
    return std::exchange(m_steps, {});
}

void ScriptParser::Clear() {
    m_steps.clear();
    m_open.clear();
}

void ScriptParser::ParseLine(Cursor& cursor) {
    for (const StepForm& form : kStepForms) {
        const Cursor before = cursor;
        // The words of a step stand alone or before a bracket; `If ( ... )` is the function.
        if (cursor.TakeWords(form.words) && (cursor.AtEnd() || cursor.Peek().IsSign(L"["))) {
            return (this->*form.parse)(cursor);
        }
        cursor = before;
    }
    Add(Show{ParseExpression(cursor, m_externals)});
}

void ScriptParser::ParseSetVariable(Cursor& cursor) {
    cursor.ExpectSign(L"[");
    if (cursor.Peek().kind != TokenKind::Variable) {
        throw Mistake(L"a variable is missing before " + Describe(cursor.Peek()));
    }
    std::wstring name = cursor.Take().text;
    cursor.ExpectSign(L";");
    if (cursor.TakeWords(L"Value")) {
        cursor.ExpectSign(L":");
    }
    ExpressionPtr value = ParseExpression(cursor, m_externals);
    cursor.ExpectSign(L"]");
    Add(SetVariable{std::move(name), std::move(value)});
}

void ScriptParser::ParseShow(Cursor& cursor) {
    Add(Show{BracketedExpression(cursor)});
}

void ScriptParser::ParseExitLoopIf(Cursor& cursor) {
    const bool inLoop = std::ranges::any_of(
        m_open, [](const Open& open) { return std::holds_alternative<Loop>(open.block); });
    if (!inLoop) {
        throw Mistake(L"Exit Loop If outside of a Loop");
    }
    Add(ExitLoopIf{BracketedExpression(cursor)});
}

void ScriptParser::ParseExitScript(Cursor& cursor) {
    ExpressionPtr result;
    if (cursor.TakeSign(L"[")) {
        if (cursor.TakeWords(L"Text Result")) {
            cursor.ExpectSign(L":");
        }
        if (!cursor.Peek().IsSign(L"]")) {
            result = ParseExpression(cursor, m_externals);
        }
        cursor.ExpectSign(L"]");
    }
    Add(ExitScript{std::move(result)});
}

void ScriptParser::ParseLoop(Cursor&) {
    m_open.push_back({m_line, Loop{}});
}

void ScriptParser::ParseEndLoop(Cursor&) {
    Close<Loop>(L"End Loop", L"Loop");
}

void ScriptParser::ParseIf(Cursor& cursor) {
    If block;
    block.branches.push_back({m_line, BracketedExpression(cursor), {}});
    m_open.push_back({m_line, std::move(block)});
}

void ScriptParser::ParseElseIf(Cursor& cursor) {
    AddBranch({m_line, BracketedExpression(cursor), {}}, L"Else If");
}

void ScriptParser::ParseElse(Cursor&) {
    AddBranch({m_line, nullptr, {}}, L"Else");
}

void ScriptParser::ParseEndIf(Cursor&) {
    Close<If>(L"End If", L"If");
}

ExpressionPtr ScriptParser::BracketedExpression(Cursor& cursor) {
    cursor.ExpectSign(L"[");
    ExpressionPtr expression = ParseExpression(cursor, m_externals);
    cursor.ExpectSign(L"]");
    return expression;
}

void ScriptParser::Add(decltype(Step::action) action) {
    Block* block = &m_steps;
    if (!m_open.empty()) {
        auto& innermost = m_open.back().block;
        const auto* loop = std::get_if<Loop>(&innermost);
        block = loop ? &std::get<Loop>(innermost).body : &std::get<If>(innermost).branches.back().body;
    }
    block->push_back({m_line, std::move(action)});
}

void ScriptParser::AddBranch(Branch branch, std::wstring_view word) {
    If* block = m_open.empty() ? nullptr : std::get_if<If>(&m_open.back().block);
    if (!block) {
        throw Mistake(std::wstring(word) + L" without If");
    }
    if (!block->branches.back().condition) {
        throw Mistake(std::wstring(word) + L" behind Else");
    }
    block->branches.push_back(std::move(branch));
}

template <typename BlockType>
void ScriptParser::Close(std::wstring_view word, std::wstring_view opener) {
    if (m_open.empty() || !std::holds_alternative<BlockType>(m_open.back().block)) {
        throw Mistake(std::wstring(word) + L" without " + std::wstring(opener));
    }
    Open closed = std::move(m_open.back());
    m_open.pop_back();
    Add(std::get<BlockType>(std::move(closed.block)));
}

} // namespace standin::console
