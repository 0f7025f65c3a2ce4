// A small recursive reader of JSON.
#include "tests/mailbox/Json.h"

#include <stdexcept>

namespace standin::mailbox::test {
namespace {

class Parser {
public:
    explicit Parser(std::wstring_view text) : m_text(text) {}

    Json ParseValue() {
        Json value;
        SkipBlanks();
        if (Accept(L'{')) {
            while (!Accept(L'}')) {
                Accept(L',');
                const std::wstring name = ParseString();
                Expect(L':');
                value.members[name] = ParseValue();
            }
        } else if (Accept(L'[')) {
            while (!Accept(L']')) {
                Accept(L',');
                value.items.push_back(ParseValue());
            }
        } else if (Peek() == L'"') {
            value.text = ParseString();
        } else {
            value.text = ParseWord();
        }
        SkipBlanks();
        return value;
    }

private:
    wchar_t Peek() const {
        if (m_text.empty())
            throw std::runtime_error("JSON ends too early");
        return m_text.front();
    }
    wchar_t Take() {
        const wchar_t unit = Peek();
        m_text.remove_prefix(1);
        return unit;
    }
    bool Accept(wchar_t unit) {
        SkipBlanks();
        if (Peek() != unit)
            return false;
        Take();
        return true;
    }
    void Expect(wchar_t unit) {
        if (!Accept(unit))
            throw std::runtime_error("JSON has something else than was expected");
    }
    void SkipBlanks() {
        while (!m_text.empty() &&
               (m_text.front() == L' ' || m_text.front() == L'\r' || m_text.front() == L'\n'))
            m_text.remove_prefix(1);
    }
    std::wstring ParseWord() {
        const std::wstring word(m_text.substr(0, m_text.find_first_of(L",]}")));
        m_text.remove_prefix(word.size());
        return word;
    }
    std::wstring ParseString() {
        Expect(L'"');
        std::wstring text;
        for (wchar_t unit = Take(); unit != L'"'; unit = Take())
            text += unit == L'\\' ? ParseEscape() : unit;
        return text;
    }
    wchar_t ParseEscape() {
        const wchar_t unit = Take();
        if (unit == L'u') {
            const std::wstring digits(m_text.substr(0, 4));
            m_text.remove_prefix(digits.size());
            return static_cast<wchar_t>(std::stoi(digits, nullptr, 16));
        }
        const std::size_t at = std::wstring_view(L"nrt").find(unit);
        return at == std::wstring_view::npos ? unit : L"\n\r\t"[at];
    }

    std::wstring_view m_text;
};

} // namespace

Json ParseJson(std::wstring_view text) {
    return Parser(text).ParseValue();
}

} // namespace standin::mailbox::test
