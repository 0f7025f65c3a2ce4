// The characters of FileMaker's calculations.
#include "Lexer.h"

#include "Text.h"

#include <algorithm>
#include <array>

namespace standin::console {

namespace {

constexpr wchar_t kReturnMark = L'¶';

struct Spelling {
    std::wstring_view written;
    std::wstring_view sign;
};
// A longer spelling before the shorter one that it begins with.
constexpr std::array kSigns{
    Spelling{L"<>", L"≠"}, Spelling{L"<=", L"≤"}, Spelling{L">=", L"≥"}, Spelling{L"≠", L"≠"},
    Spelling{L"≤", L"≤"},  Spelling{L"≥", L"≥"},  Spelling{L"<", L"<"},  Spelling{L">", L">"},
    Spelling{L"=", L"="},  Spelling{L"&", L"&"},  Spelling{L"+", L"+"},  Spelling{L"-", L"-"},
    Spelling{L"*", L"*"},  Spelling{L"/", L"/"},  Spelling{L"(", L"("},  Spelling{L")", L")"},
    Spelling{L"[", L"["},  Spelling{L"]", L"]"},  Spelling{L";", L";"},  Spelling{L":", L":"},
};

bool IsBlank(wchar_t c) {
    return c == L' ' || c == L'\t' || c == L'\u00A0';
}

bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

bool IsNameStart(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || c == L'_' ||
           (c > 0x7F && c != kReturnMark && !IsBlank(c) &&
            std::wstring_view(L"≠≤≥").find(c) == std::wstring_view::npos);
}

bool IsNamePart(wchar_t c) {
    return IsNameStart(c) || IsDigit(c) || c == L'.';
}

class Lexer {
public:
    explicit Lexer(std::wstring_view line) : m_rest(line) {}

    Token Next() {
        TakeWhile(IsBlank);
        if (m_rest.empty()) {
            return {};
        }
        const wchar_t first = m_rest.front();
        if (first == L'"') {
            return QuotedText();
        }
        if (first == kReturnMark) {
            m_rest.remove_prefix(1);
            return {TokenKind::Text, L"\r"};
        }
        if (first == L'$') {
            return Variable();
        }
        if (IsDigit(first) || (first == L'.' && m_rest.size() > 1 && IsDigit(m_rest[1]))) {
            return Number();
        }
        return IsNameStart(first) ? Token{TokenKind::Name, TakeWhile(IsNamePart)} : Sign();
    }

private:
    std::wstring TakeWhile(bool (*belongs)(wchar_t)) {
        const auto end = std::ranges::find_if_not(m_rest, belongs);
        std::wstring taken(m_rest.begin(), end);
        m_rest.remove_prefix(taken.size());
        return taken;
    }

    Token QuotedText() {
        std::wstring text;
        for (std::size_t i = 1; i < m_rest.size(); ++i) {
            const wchar_t c = m_rest[i];
            if (c == L'"') {
                m_rest.remove_prefix(i + 1);
                return {TokenKind::Text, std::move(text)};
            }
            // A backslash before any other character stands for itself, as in a path.
            const bool escapes = c == L'\\' && i + 1 < m_rest.size() &&
                                 std::wstring_view(L"\"\\¶").find(m_rest[i + 1]) != std::wstring_view::npos;
            if (escapes) {
                text += m_rest[++i];
            } else {
                text += c == kReturnMark ? L'\r' : c;
            }
        }
        throw Mistake(L"the text has no closing quote");
    }

    Token Variable() {
        std::wstring name;
        while (name.size() < 2 && !m_rest.empty() && m_rest.front() == L'$') {
            name += L'$';
            m_rest.remove_prefix(1);
        }
        const std::wstring word = TakeWhile(IsNamePart);
        if (word.empty()) {
            throw Mistake(L"a variable without a name");
        }
        return {TokenKind::Variable, name + word};
    }

    Token Number() {
        std::wstring text = TakeWhile(IsDigit);
        if (!m_rest.empty() && m_rest.front() == L'.') {
            m_rest.remove_prefix(1);
            text += L'.' + TakeWhile(IsDigit);
        }
        const std::size_t sign = m_rest.size() > 1 && (m_rest[1] == L'+' || m_rest[1] == L'-') ? 1 : 0;
        const bool hasExponent = m_rest.size() > sign + 1 &&
                                 (m_rest.front() == L'e' || m_rest.front() == L'E') &&
                                 IsDigit(m_rest[sign + 1]);
        if (hasExponent) {
            text += m_rest.substr(0, sign + 1);
            m_rest.remove_prefix(sign + 1);
            text += TakeWhile(IsDigit);
        }
        return {TokenKind::Number, std::move(text)};
    }

    Token Sign() {
        for (const Spelling& spelling : kSigns) {
            if (m_rest.starts_with(spelling.written)) {
                m_rest.remove_prefix(spelling.written.size());
                return {TokenKind::Sign, std::wstring(spelling.sign)};
            }
        }
        throw Mistake(L"unexpected character " + std::wstring(1, m_rest.front()));
    }

    std::wstring_view m_rest;
};

} // namespace

bool Token::IsName(std::wstring_view name) const {
    return kind == TokenKind::Name && EqualIgnoringCase(text, name);
}

std::vector<Token> Tokens(std::wstring_view line) {
    Lexer lexer(line);
    std::vector<Token> tokens;
    do {
        tokens.push_back(lexer.Next());
    } while (tokens.back().kind != TokenKind::End);
    return tokens;
}

} // namespace standin::console
