// The words of a filter.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace standin::outlook {

enum class TokenKind {
    Name,         ///< [Last Name]
    Word,         ///< And, True, Subject
    SingleQuoted, ///< 'text', quotes within doubled
    DoubleQuoted, ///< "text", quotes within doubled
    Number,       ///< -12.5
    Operator,     ///< = <> < <= > >=
    Open,
    Close,
    End,
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::wstring text; ///< without brackets and quotes
};

/// Takes a filter apart; the last token is the end. Raises "Condition is not valid." for anything that is no
/// word of a filter.
std::vector<Token> ReadTokens(std::wstring_view filter);

[[noreturn]] void RaiseInvalidCondition();

} // namespace standin::outlook
