// Precedence climbing over the table of operators.
#include "ExpressionParser.h"

#include "Text.h"

#include <algorithm>

namespace standin::console {

namespace {

/// What stands between the parentheses of a call. A pair in brackets is two of the arguments.
struct ArgumentList {
    std::vector<ExpressionPtr> arguments;
    std::size_t pairs = 0;

    bool Fits(const ArgumentCount& count) const {
        return pairs > 0 ? arguments.size() == 1 + 2 * pairs : count.Allows(arguments.size());
    }
};

std::wstring CountText(const ArgumentCount& count) {
    std::wstring text = std::to_wstring(count.minimum);
    if (count.maximum < 0) {
        text += L" or more";
    } else if (count.maximum != count.minimum) {
        text += L" to " + std::to_wstring(count.maximum);
    }
    return text + (count.maximum == 1 ? L" argument" : L" arguments");
}

ExpressionPtr Make(auto node) {
    return std::make_unique<Expression>(Expression{std::move(node)});
}

class Parser {
public:
    Parser(Cursor& cursor, const Externals& externals) : m_cursor(cursor), m_externals(externals) {}

    /// Operands joined by operators of this level and above.
    ExpressionPtr Parse(int level = 0) {
        ExpressionPtr left = Operand();
        const Operator* op = FindOperator(m_cursor.Peek());
        while (op && op->level >= level) {
            m_cursor.Take();
            ExpressionPtr right = Parse(op->level + 1);
            left = Make(Joined{op, std::move(left), std::move(right)});
            op = FindOperator(m_cursor.Peek());
        }
        return left;
    }

private:
    ExpressionPtr Operand() {
        if (const PrefixOperator* op = FindPrefixOperator(m_cursor.Peek())) {
            m_cursor.Take();
            return Make(Prefixed{op, Operand()});
        }
        if (m_cursor.TakeSign(L"(")) {
            ExpressionPtr inner = Parse();
            m_cursor.ExpectSign(L")");
            return inner;
        }
        const Token token = m_cursor.Peek();
        switch (token.kind) {
        case TokenKind::Text:
            m_cursor.Take();
            return Make(Constant{token.text});
        case TokenKind::Number:
            m_cursor.Take();
            return Make(Constant{FixedPoint::FindIn(token.text).value()});
        case TokenKind::Variable:
            m_cursor.Take();
            return Make(Variable{token.text});
        case TokenKind::Name:
            m_cursor.Take();
            return Call(token.text);
        default:
            throw Mistake(L"a value is missing before " + Describe(token));
        }
    }

    ExpressionPtr Call(const std::wstring& name) {
        if (const BuiltIn* function = FindBuiltIn(name)) {
            return Make(
                BuiltInCall{function, ArgumentsOf(function->name, function->count, function->takesPairs)});
        }
        if (const auto function = m_externals.Find(name)) {
            return Make(ExternalCall{*function, ArgumentsOf(function->name, function->count, false)});
        }
        throw Mistake(L"unknown function " + name);
    }

    std::vector<ExpressionPtr> ArgumentsOf(std::wstring_view name, const ArgumentCount& count, bool pairs) {
        ArgumentList list = ParenthesisedArguments(pairs);
        if (!list.Fits(count)) {
            throw Mistake(std::wstring(name) + L" takes " + CountText(count) + L", not " +
                          std::to_wstring(list.arguments.size()));
        }
        return std::move(list.arguments);
    }

    ArgumentList ParenthesisedArguments(bool pairs) {
        ArgumentList list;
        if (!m_cursor.TakeSign(L"(") || m_cursor.TakeSign(L")")) {
            return list;
        }
        do {
            const bool isPair = pairs && !list.arguments.empty() && m_cursor.TakeSign(L"[");
            list.arguments.push_back(Parse());
            if (isPair) {
                m_cursor.ExpectSign(L";");
                list.arguments.push_back(Parse());
                m_cursor.ExpectSign(L"]");
                ++list.pairs;
            }
        } while (m_cursor.TakeSign(L";"));
        m_cursor.ExpectSign(L")");
        return list;
    }

    Cursor& m_cursor;
    const Externals& m_externals;
};

} // namespace

const Token& Cursor::Peek(std::size_t ahead) const {
    return m_tokens[std::min(m_next + ahead, m_tokens.size() - 1)];
}

const Token& Cursor::Take() {
    const Token& token = Peek();
    m_next = std::min(m_next + 1, m_tokens.size() - 1);
    return token;
}

bool Cursor::TakeSign(std::wstring_view sign) {
    const bool stands = Peek().IsSign(sign);
    m_next += stands;
    return stands;
}

void Cursor::ExpectSign(std::wstring_view sign) {
    if (!TakeSign(sign)) {
        throw Mistake(std::wstring(sign) + L" is missing before " + Describe(Peek()));
    }
}

bool Cursor::TakeWords(std::wstring_view words) {
    std::size_t count = 0;
    for (std::size_t start = 0; start <= words.size(); ++count) {
        const std::size_t end = std::min(words.find(L' ', start), words.size());
        if (!Peek(count).IsName(words.substr(start, end - start))) {
            return false;
        }
        start = end + 1;
    }
    m_next += count;
    return true;
}

ExpressionPtr ParseExpression(Cursor& cursor, const Externals& externals) {
    return Parser(cursor, externals).Parse();
}

std::wstring Describe(const Token& token) {
    switch (token.kind) {
    case TokenKind::End:
        return L"the end of the line";
    case TokenKind::Text:
        return L"\"" + token.text + L"\"";
    default:
        return token.text;
    }
}

} // namespace standin::console
