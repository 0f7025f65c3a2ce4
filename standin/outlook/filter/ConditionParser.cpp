// Conditions joined by And, Or and Not, and comparisons.
#include "standin/outlook/filter/ConditionParser.h"

#include "standin/mailbox/Platform.h"

#include <algorithm>

namespace standin::outlook {
namespace {

/// Deeper than this goes no filter that somebody means.
constexpr int kDeepest = 200;

struct Both final : Filter {
    Both(FilterPtr left, FilterPtr right) : left(std::move(left)), right(std::move(right)) {}
    bool Matches(const mailbox::MessageProperties& message) const override {
        return left->Matches(message) && right->Matches(message);
    }
    FilterPtr left, right;
};

struct Either final : Filter {
    Either(FilterPtr left, FilterPtr right) : left(std::move(left)), right(std::move(right)) {}
    bool Matches(const mailbox::MessageProperties& message) const override {
        return left->Matches(message) || right->Matches(message);
    }
    FilterPtr left, right;
};

struct Opposite final : Filter {
    explicit Opposite(FilterPtr inner) : inner(std::move(inner)) {}
    bool Matches(const mailbox::MessageProperties& message) const override {
        return !inner->Matches(message);
    }
    FilterPtr inner;
};

bool Holds(Operator comparison, std::weak_ordering order) {
    switch (comparison) {
    case Operator::Equal:
        return order == 0;
    case Operator::NotEqual:
        return order != 0;
    case Operator::Less:
        return order < 0;
    case Operator::LessOrEqual:
        return order <= 0;
    case Operator::Greater:
        return order > 0;
    case Operator::GreaterOrEqual:
        return order >= 0;
    }
    return false;
}

struct Comparison final : Filter {
    Comparison(Field field, Operator comparison, Comparable value)
        : field(std::move(field)), comparison(comparison), value(std::move(value)) {}

    bool Matches(const mailbox::MessageProperties& message) const override {
        const Comparable found = field.read(message);
        if (found.IsNothing() || value.IsNothing())
            return false;
        if (const auto* keywords = std::get_if<std::vector<std::wstring>>(&found.value))
            return MatchesOneOf(*keywords) == (comparison == Operator::Equal);
        return Holds(comparison, Compare(found, value));
    }

    bool MatchesOneOf(const std::vector<std::wstring>& keywords) const {
        const std::wstring& wanted = std::get<std::wstring>(value.value);
        if (wanted.empty())
            return keywords.empty();
        return std::ranges::any_of(keywords,
                                   [&](const auto& each) { return CompareText(each, wanted) == 0; });
    }

    Field field;
    Operator comparison;
    Comparable value;
};

struct OperatorWord {
    std::wstring_view word;
    Operator comparison;
};

constexpr OperatorWord kOperators[] = {
    {L"=", Operator::Equal},        {L"<>", Operator::NotEqual}, {L"<", Operator::Less},
    {L"<=", Operator::LessOrEqual}, {L">", Operator::Greater},   {L">=", Operator::GreaterOrEqual},
};

} // namespace

Operator OperatorOf(const Token& token) {
    const auto row = std::ranges::find(kOperators, token.text, &OperatorWord::word);
    if (token.kind != TokenKind::Operator || row == std::end(kOperators))
        RaiseInvalidCondition();
    return row->comparison;
}

FilterPtr MakeComparison(Field field, Operator comparison, Comparable value) {
    const bool isOrdered = field.type != FieldType::Flag && field.type != FieldType::Keywords;
    if (!isOrdered && comparison != Operator::Equal && comparison != Operator::NotEqual)
        RaiseInvalidCondition();
    return std::make_shared<Comparison>(std::move(field), comparison, std::move(value));
}

FilterPtr ConditionParser::Parse() {
    FilterPtr filter = ReadOr();
    if (Peek().kind != TokenKind::End)
        RaiseInvalidCondition();
    return filter;
}

Token ConditionParser::Take() {
    Token token = m_tokens[m_next];
    if (token.kind != TokenKind::End)
        ++m_next;
    return token;
}

bool ConditionParser::TakeWord(std::wstring_view word) {
    if (Peek().kind != TokenKind::Word || !mailbox::SameIgnoringCase(Peek().text, word))
        return false;
    Take();
    return true;
}

FilterPtr ConditionParser::ReadOr() {
    FilterPtr left = ReadAnd();
    while (TakeWord(L"Or"))
        left = std::make_shared<Either>(std::move(left), ReadAnd());
    return left;
}

FilterPtr ConditionParser::ReadAnd() {
    FilterPtr left = ReadNot();
    while (TakeWord(L"And"))
        left = std::make_shared<Both>(std::move(left), ReadNot());
    return left;
}

FilterPtr ConditionParser::ReadNot() {
    if (++m_depth > kDeepest)
        RaiseInvalidCondition();
    FilterPtr filter = TakeWord(L"Not") ? std::make_shared<Opposite>(ReadNot()) : ReadPrimary();
    --m_depth;
    return filter;
}

FilterPtr ConditionParser::ReadPrimary() {
    if (Peek().kind != TokenKind::Open)
        return ReadComparison();
    Take();
    FilterPtr inner = ReadOr();
    if (Take().kind != TokenKind::Close)
        RaiseInvalidCondition();
    return inner;
}

} // namespace standin::outlook
