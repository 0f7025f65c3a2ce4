// Makes trees of calculations.
#pragma once

#include "Expression.h"
#include "Lexer.h"

#include <string_view>
#include <vector>

namespace standin::console {

/// A line's tokens with a place in them.
class Cursor {
public:
    explicit Cursor(std::wstring_view line) : m_tokens(Tokens(line)) {}

    /// The token `ahead` places from here; the end stays the end.
    const Token& Peek(std::size_t ahead = 0) const;
    const Token& Take();
    bool AtEnd() const { return Peek().kind == TokenKind::End; }
    /// Goes behind the sign if it stands here.
    bool TakeSign(std::wstring_view sign);
    /// Raises Mistake if the sign does not stand here.
    void ExpectSign(std::wstring_view sign);
    /// Goes behind these words, separated by blanks, if they stand here; case does not matter.
    bool TakeWords(std::wstring_view words);

private:
    std::vector<Token> m_tokens;
    std::size_t m_next = 0;
};

/// Reads the calculation that begins here and leaves the cursor behind it. Raises Mistake for what is no
/// calculation, an unknown function, or a wrong count of arguments.
ExpressionPtr ParseExpression(Cursor& cursor, const Externals& externals);

/// What stands here, for messages.
std::wstring Describe(const Token& token);

} // namespace standin::console
