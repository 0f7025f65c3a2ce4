// Takes a line of a script apart into its words, texts, numbers and signs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace standin::console {

enum class TokenKind {
    Text,     ///< without its quotes, escapes resolved
    Number,   ///< as written
    Name,     ///< a word: function, step, `and`
    Variable, ///< with its $ or $$
    Sign, ///< one of & + - * / = ≠ < ≤ > ≥ ( ) [ ] ; : with the other spellings of ≠ ≤ ≥ made these
    End, ///< stands once behind the last
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::wstring text;

    bool IsSign(std::wstring_view sign) const { return kind == TokenKind::Sign && text == sign; }
    /// Without regard to case.
    bool IsName(std::wstring_view name) const;
};

/// Raises Mistake for a text without its closing quote and for a character that means nothing.
std::vector<Token> Tokens(std::wstring_view line);

} // namespace standin::console
