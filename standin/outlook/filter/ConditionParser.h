// What the two filter languages share: And, Or, Not, parentheses.
#pragma once

#include "standin/outlook/filter/Fields.h"
#include "standin/outlook/filter/Filter.h"
#include "standin/outlook/filter/Lexer.h"

namespace standin::outlook {

using FilterPtr = std::shared_ptr<const Filter>;

/// Reads conditions; the languages differ in what a single comparison looks like.
class ConditionParser {
public:
    explicit ConditionParser(std::wstring_view text) : m_tokens(ReadTokens(text)) {}
    virtual ~ConditionParser() = default;

    FilterPtr Parse();

protected:
    /// One comparison, whose first token is the next one.
    virtual FilterPtr ReadComparison() = 0;

    const Token& Peek() const { return m_tokens[m_next]; }
    Token Take();
    /// Takes the word, case ignored, if it is next.
    bool TakeWord(std::wstring_view word);

private:
    FilterPtr ReadOr();
    FilterPtr ReadAnd();
    FilterPtr ReadNot();
    FilterPtr ReadPrimary();

    std::vector<Token> m_tokens;
    std::size_t m_next = 0;
    int m_depth = 0;
};

enum class Operator { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };

/// The operator of a token; raises for one that is none.
Operator OperatorOf(const Token& token);
/// A field compared with a value; nothing fits one that is nothing. Raises for an operator that the field's
/// type doesn't have.
FilterPtr MakeComparison(Field field, Operator comparison, Comparable value);

} // namespace standin::outlook
