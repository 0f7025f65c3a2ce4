// The comparisons of Outlook's own filter language and of DASL.
#include "standin/outlook/filter/Filter.h"

#include "standin/mailbox/Platform.h"
#include "standin/outlook/filter/ConditionParser.h"

#include <algorithm>

namespace standin::outlook {
namespace {

constexpr std::wstring_view kDaslMark = L"@SQL=";

struct TruthWord {
    std::wstring_view word;
    bool truth;
};

constexpr TruthWord kTruthWords[] = {
    {L"True", true}, {L"False", false}, {L"Yes", true}, {L"No", false}, {L"On", true}, {L"Off", false},
};

bool IsQuoted(const Token& token) {
    return token.kind == TokenKind::SingleQuoted || token.kind == TokenKind::DoubleQuoted;
}

Comparable TextLiteral(const Token& token) {
    if (!IsQuoted(token))
        RaiseInvalidCondition();
    return {token.text};
}

Comparable NumberLiteral(const Token& token) {
    if (!IsQuoted(token) && token.kind != TokenKind::Number)
        RaiseInvalidCondition();
    wchar_t* end = nullptr;
    const double number = std::wcstod(token.text.c_str(), &end);
    if (end == token.text.c_str() || *end)
        RaiseInvalidCondition();
    return {number};
}

/// A word without quotes; in quotes it is a text, and only the empty one is False.
Comparable FlagLiteral(const Token& token) {
    if (IsQuoted(token))
        return {!token.text.empty()};
    const auto row = std::ranges::find_if(
        kTruthWords, [&](const TruthWord& each) { return mailbox::SameIgnoringCase(each.word, token.text); });
    if (token.kind != TokenKind::Word || row == std::end(kTruthWords))
        RaiseInvalidCondition();
    return {row->truth};
}

Comparable DateLiteral(const Token& token) {
    if (!IsQuoted(token))
        RaiseInvalidCondition();
    DATE date = kNoDate.days;
    if (!token.text.empty() &&
        FAILED(VarDateFromStr(const_cast<LPOLESTR>(token.text.c_str()), LOCALE_USER_DEFAULT, 0, &date)))
        RaiseInvalidCondition();
    return {MinutesOf(date)};
}

Comparable ReadLiteral(const Token& token, FieldType type) {
    switch (type) {
    case FieldType::Text:
    case FieldType::Keywords:
        return TextLiteral(token);
    case FieldType::Number:
        return NumberLiteral(token);
    case FieldType::Flag:
        return FlagLiteral(token);
    case FieldType::Date:
        return DateLiteral(token);
    }
    RaiseInvalidCondition();
}

/// Whether a time in the text has seconds, zero or not.
bool HasSeconds(const std::wstring& text) {
    return std::ranges::count(text, L':') > 1;
}

/// [Property] operator literal
class FilterParser final : public ConditionParser {
public:
    FilterParser(std::wstring_view text, const mailbox::Folder& folder)
        : ConditionParser(text), m_folder(folder) {}

private:
    FilterPtr ReadComparison() override {
        const Token name = Take();
        if (name.kind != TokenKind::Name && name.kind != TokenKind::Word)
            RaiseInvalidCondition();
        const Operator comparison = OperatorOf(Take());
        std::optional<Field> field = FindField(name.text, m_folder);
        if (!field)
            RaiseInvalidCondition();
        const Token literal = Take();
        Comparable value = ReadLiteral(literal, field->type);
        if (field->type == FieldType::Date && HasSeconds(literal.text))
            value = {};
        return MakeComparison(std::move(*field), comparison, std::move(value));
    }

    const mailbox::Folder& m_folder;
};

/// Whether an item has the property.
struct Absence final : Filter {
    Absence(Field field, bool absent) : field(std::move(field)), absent(absent) {}
    bool Matches(const mailbox::MessageProperties& message) const override {
        return field.read(message).IsNothing() == absent;
    }
    Field field;
    bool absent;
};

/// Whether text begins with, ends with, contains or is another, case ignored.
struct Likeness final : Filter {
    Likeness(Field field, std::wstring_view text, bool openStart, bool openEnd)
        : field(std::move(field)), text(mailbox::FoldCase(text)), openStart(openStart), openEnd(openEnd) {}

    bool Matches(const mailbox::MessageProperties& message) const override {
        const Comparable value = field.read(message);
        if (const auto* found = std::get_if<std::wstring>(&value.value))
            return Fits(mailbox::FoldCase(*found));
        const auto* keywords = std::get_if<std::vector<std::wstring>>(&value.value);
        return keywords && std::ranges::any_of(
                               *keywords, [&](const auto& each) { return Fits(mailbox::FoldCase(each)); });
    }
    bool Fits(std::wstring_view found) const {
        if (openStart && openEnd)
            return found.find(text) != found.npos;
        if (openStart)
            return found.ends_with(text);
        return openEnd ? found.starts_with(text) : found == text;
    }

    Field field;
    std::wstring text;
    bool openStart, openEnd;
};

/// "schema name" operator 'literal'
class DaslParser final : public ConditionParser {
public:
    using ConditionParser::ConditionParser;

private:
    FilterPtr ReadComparison() override {
        const Token name = Take();
        std::optional<Field> field =
            name.kind == TokenKind::DoubleQuoted ? FindSchemaField(name.text) : std::nullopt;
        if (!field)
            RaiseInvalidCondition();
        if (TakeWord(L"Is"))
            return ReadAbsence(std::move(*field));
        if (TakeWord(L"Like"))
            return ReadLike(std::move(*field));
        if (TakeWord(L"ci_startswith"))
            return MakeLikeness(std::move(*field), TakeText(), false, true);
        if (TakeWord(L"ci_phrasematch"))
            return MakeLikeness(std::move(*field), TakeText(), true, true);
        const Operator comparison = OperatorOf(Take());
        const Token literal = Take();
        if (literal.kind == TokenKind::DoubleQuoted)
            RaiseInvalidCondition();
        Comparable value = ReadLiteral(literal, field->type);
        return MakeComparison(std::move(*field), comparison, std::move(value));
    }

    FilterPtr ReadAbsence(Field field) {
        const bool absent = !TakeWord(L"Not");
        if (!TakeWord(L"Null"))
            RaiseInvalidCondition();
        return std::make_shared<Absence>(std::move(field), absent);
    }

    std::wstring TakeText() {
        const Token literal = Take();
        if (literal.kind != TokenKind::SingleQuoted)
            RaiseInvalidCondition();
        return literal.text;
    }

    static FilterPtr MakeLikeness(Field field, std::wstring_view text, bool openStart, bool openEnd) {
        if (field.type != FieldType::Text && field.type != FieldType::Keywords)
            RaiseInvalidCondition();
        return std::make_shared<Likeness>(std::move(field), text, openStart, openEnd);
    }

    FilterPtr ReadLike(Field field) {
        const std::wstring pattern = TakeText();
        std::wstring_view text = pattern;
        const bool openStart = text.starts_with(L'%');
        text.remove_prefix(openStart);
        const bool openEnd = text.ends_with(L'%');
        text.remove_suffix(openEnd);
        if (text.find(L'%') != text.npos)
            RaiseInvalidCondition();
        return MakeLikeness(std::move(field), text, openStart, openEnd);
    }
};

} // namespace

std::shared_ptr<const Filter> ParseFilter(const std::wstring& text, const mailbox::Folder& folder) {
    const std::wstring_view whole = text;
    if (mailbox::SameIgnoringCase(whole.substr(0, kDaslMark.size()), kDaslMark))
        return DaslParser(whole.substr(kDaslMark.size())).Parse();
    return FilterParser(whole, folder).Parse();
}

} // namespace standin::outlook
