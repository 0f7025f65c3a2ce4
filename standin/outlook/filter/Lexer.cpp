// The words of a filter.
#include "standin/outlook/filter/Lexer.h"

#include "standin/outlook/automation/Failure.h"

#include <cwctype>

namespace standin::outlook {
namespace {

constexpr std::wstring_view kOperators[] = {L"<>", L"<=", L">=", L"<", L">", L"="}; // longer ones first

class Lexer {
public:
    explicit Lexer(std::wstring_view text) : m_rest(text) {}

    Token Next() {
        SkipBlanks();
        if (m_rest.empty())
            return {};
        switch (const wchar_t first = m_rest.front()) {
        case L'(':
            return {TokenKind::Open, Take(1)};
        case L')':
            return {TokenKind::Close, Take(1)};
        case L'[':
            return Bracketed();
        case L'\'':
            return {TokenKind::SingleQuoted, Quoted(first)};
        case L'"':
            return {TokenKind::DoubleQuoted, Quoted(first)};
        default:
            return Bare();
        }
    }

private:
    void SkipBlanks() {
        while (!m_rest.empty() && std::iswspace(m_rest.front()))
            m_rest.remove_prefix(1);
    }

    std::wstring Take(std::size_t count) {
        std::wstring text(m_rest.substr(0, count));
        m_rest.remove_prefix(text.size());
        return text;
    }

    Token Bracketed() {
        const std::size_t end = m_rest.find(L']');
        if (end == m_rest.npos || end == 1)
            RaiseInvalidCondition();
        Token token{TokenKind::Name, std::wstring(m_rest.substr(1, end - 1))};
        m_rest.remove_prefix(end + 1);
        return token;
    }

    std::wstring Quoted(wchar_t quote) {
        std::wstring text;
        m_rest.remove_prefix(1);
        for (;;) {
            const std::size_t end = m_rest.find(quote);
            if (end == m_rest.npos)
                RaiseInvalidCondition();
            text += m_rest.substr(0, end);
            m_rest.remove_prefix(end + 1);
            if (m_rest.empty() || m_rest.front() != quote)
                return text;
            text += quote;
            m_rest.remove_prefix(1);
        }
    }

    Token Bare() {
        for (const std::wstring_view each : kOperators)
            if (m_rest.starts_with(each))
                return {TokenKind::Operator, Take(each.size())};
        if (std::iswdigit(m_rest.front()) || m_rest.front() == L'-' || m_rest.front() == L'.')
            return {TokenKind::Number, Number()};
        std::size_t length = 0;
        while (length < m_rest.size() && (std::iswalnum(m_rest[length]) || m_rest[length] == L'_'))
            ++length;
        if (length == 0)
            RaiseInvalidCondition();
        return {TokenKind::Word, Take(length)};
    }

    std::wstring Number() {
        std::size_t length = m_rest.front() == L'-' ? 1 : 0;
        bool hasDigits = false, hasPoint = false;
        for (; length < m_rest.size(); ++length) {
            if (std::iswdigit(m_rest[length]))
                hasDigits = true;
            else if (m_rest[length] == L'.' && !hasPoint)
                hasPoint = true;
            else
                break;
        }
        if (!hasDigits)
            RaiseInvalidCondition();
        return Take(length);
    }

    std::wstring_view m_rest;
};

} // namespace

std::vector<Token> ReadTokens(std::wstring_view filter) {
    Lexer lexer(filter);
    std::vector<Token> tokens;
    do
        tokens.push_back(lexer.Next());
    while (tokens.back().kind != TokenKind::End);
    return tokens;
}

void RaiseInvalidCondition() {
    throw Failure(DISP_E_EXCEPTION, L"Condition is not valid.");
}

} // namespace standin::outlook
