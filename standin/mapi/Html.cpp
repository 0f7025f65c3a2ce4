// A modest reader and writer of HTML.
#include "standin/mapi/Html.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cwctype>
#include <optional>

namespace standin::mapi {
namespace {

struct NamedCharacter {
    std::wstring_view name;
    wchar_t character;
};
constexpr NamedCharacter kCharacters[] = {
    {L"amp", L'&'},     {L"lt", L'<'},      {L"gt", L'>'},      {L"quot", L'"'},    {L"apos", L'\''},
    {L"nbsp", 0xA0},    {L"copy", 0xA9},    {L"reg", 0xAE},     {L"deg", 0xB0},     {L"euro", 0x20AC},
    {L"pound", 0xA3},   {L"auml", 0xE4},    {L"ouml", 0xF6},    {L"uuml", 0xFC},    {L"Auml", 0xC4},
    {L"Ouml", 0xD6},    {L"Uuml", 0xDC},    {L"szlig", 0xDF},   {L"eacute", 0xE9},  {L"egrave", 0xE8},
    {L"agrave", 0xE0},  {L"ccedil", 0xE7},  {L"ndash", 0x2013}, {L"mdash", 0x2014}, {L"lsquo", 0x2018},
    {L"rsquo", 0x2019}, {L"ldquo", 0x201C}, {L"rdquo", 0x201D}, {L"bull", 0x2022},  {L"hellip", 0x2026},
    {L"laquo", 0xAB},   {L"raquo", 0xBB},   {L"trade", 0x2122}, {L"middot", 0xB7},  {L"sect", 0xA7},
};

constexpr std::wstring_view kBlocks[] = {L"p",     L"div",        L"tr",  L"li", L"ul", L"ol",
                                         L"table", L"blockquote", L"h1",  L"h2", L"h3", L"h4",
                                         L"h5",    L"h6",         L"pre", L"hr", L"dt", L"dd"};
/// Elements whose contents aren't shown. One that has no end reaches to that of the page.
constexpr std::wstring_view kHidden[] = {L"style", L"script", L"title"};

template <std::size_t size>
bool Has(const std::wstring_view (&list)[size], std::wstring_view name) {
    return std::ranges::find(list, name) != std::end(list);
}

std::wstring Lower(std::wstring_view text) {
    std::wstring lower(text);
    std::ranges::transform(lower, lower.begin(),
                           [](wchar_t unit) { return static_cast<wchar_t>(std::towlower(unit)); });
    return lower;
}

/// A code point in UTF-16; nothing for what is none.
std::wstring FromCodePoint(std::uint32_t point) {
    if (point == 0 || point > 0x10FFFF || (point >= 0xD800 && point <= 0xDFFF))
        return {};
    if (point < 0x10000)
        return std::wstring(1, static_cast<wchar_t>(point));
    const std::uint32_t offset = point - 0x10000;
    return {static_cast<wchar_t>(0xD800 + (offset >> 10)), static_cast<wchar_t>(0xDC00 + (offset & 0x3FF))};
}

std::optional<std::uint32_t> Number(std::wstring_view digits, std::uint32_t base) {
    std::uint32_t number = 0;
    for (const wchar_t unit : digits) {
        const wchar_t lower = static_cast<wchar_t>(std::towlower(unit));
        const std::uint32_t digit =
            lower >= L'a' ? std::uint32_t{lower} - L'a' + 10 : std::uint32_t{lower} - L'0';
        if (digit >= base || number > 0x10FFFF)
            return std::nullopt;
        number = number * base + digit;
    }
    return digits.empty() ? std::nullopt : std::optional(number);
}

/// The character that a reference between & and ; means; nothing for none that is known.
std::wstring Referenced(std::wstring_view name) {
    if (name.starts_with(L'#')) {
        const bool isHexadecimal = name.size() > 1 && (name[1] == L'x' || name[1] == L'X');
        const auto number = isHexadecimal ? Number(name.substr(2), 16) : Number(name.substr(1), 10);
        return number ? FromCodePoint(*number) : std::wstring();
    }
    const auto found = std::ranges::find(kCharacters, name, &NamedCharacter::name);
    return found == std::end(kCharacters) ? std::wstring() : std::wstring(1, found->character);
}

class TextReader {
public:
    explicit TextReader(std::wstring_view html) : m_html(html) {}

    std::wstring Read() {
        while (!m_html.empty()) {
            if (m_html.starts_with(L"<!--"))
                Skip(L"-->");
            else if (m_html.front() == L'<' && m_html.size() > 1 && IsTagStart(m_html[1]))
                ReadTag();
            else
                ReadCharacter();
        }
        return std::move(m_text);
    }

private:
    static bool IsTagStart(wchar_t unit) {
        return std::iswalpha(unit) || unit == L'/' || unit == L'!' || unit == L'?';
    }

    void Skip(std::wstring_view end) {
        const std::size_t found = m_html.find(end);
        m_html.remove_prefix(found == std::wstring_view::npos ? m_html.size() : found + end.size());
    }

    /// To the > of a tag, but not to one in an attribute's quotes.
    std::wstring_view TakeTag() {
        wchar_t quote = 0;
        std::size_t end = 1;
        for (; end < m_html.size() && (quote || m_html[end] != L'>'); ++end) {
            if (quote ? m_html[end] == quote : (m_html[end] == L'"' || m_html[end] == L'\''))
                quote = quote ? L'\0' : m_html[end];
        }
        const std::wstring_view tag = m_html.substr(1, end - 1);
        m_html.remove_prefix(std::min(end + 1, m_html.size()));
        return tag;
    }

    void ReadTag() {
        std::wstring_view tag = TakeTag();
        const bool isEnd = tag.starts_with(L'/');
        if (isEnd)
            tag.remove_prefix(1);
        const std::wstring name = Lower(tag.substr(0, tag.find_first_of(L" \t\r\n/>")));
        if (Has(kHidden, name) && !isEnd)
            SkipElement(name);
        else if (name == L"br")
            BreakLine();
        else if (name == L"td" && isEnd)
            m_text += L'\t';
        else if (Has(kBlocks, name))
            BeginLine();
        if (name == L"pre")
            m_isPreformatted = !isEnd;
    }

    void SkipElement(const std::wstring& name) {
        const std::wstring lower = Lower(m_html);
        const std::size_t end = lower.find(L"</" + name);
        m_html.remove_prefix(std::min(end, m_html.size()));
    }

    void ReadCharacter() {
        constexpr std::size_t kLongestReference = 10;
        if (m_html.front() == L'&') {
            const std::size_t end = m_html.substr(0, kLongestReference).find(L';');
            const std::wstring character =
                end == std::wstring_view::npos ? std::wstring() : Referenced(m_html.substr(1, end - 1));
            if (!character.empty()) {
                m_text += character;
                m_html.remove_prefix(end + 1);
                return;
            }
        }
        const wchar_t unit = m_html.front();
        m_html.remove_prefix(1);
        const bool isBlank = unit == L' ' || unit == L'\t' || unit == L'\r' || unit == L'\n';
        if (!isBlank || m_isPreformatted)
            m_text += unit;
        else if (!m_text.empty() && !std::iswspace(m_text.back()))
            m_text += L' ';
    }

    void DropBlank() {
        if (m_text.ends_with(L' '))
            m_text.pop_back();
    }
    void BreakLine() {
        DropBlank();
        m_text += L"\r\n";
    }
    void BeginLine() {
        DropBlank();
        if (!m_text.empty() && m_text.back() != L'\n')
            m_text += L"\r\n";
    }

    std::wstring_view m_html;
    std::wstring m_text;
    bool m_isPreformatted = false;
};

/// One character of text; `next` is the one after it.
std::wstring Escaped(wchar_t unit, wchar_t next) {
    switch (unit) {
    case L'&':
        return L"&amp;";
    case L'<':
        return L"&lt;";
    case L'>':
        return L"&gt;";
    case L'\n':
        return L"<br>\r\n";
    case L'\r':
        return next == L'\n' ? L"" : L"<br>\r\n";
    case L' ':
        return next == L' ' ? L"&nbsp;" : L" ";
    default:
        return unit < 0x80 ? std::wstring(1, unit) : std::wstring();
    }
}

} // namespace

std::wstring TextOfHtml(std::wstring_view html) {
    return TextReader(html).Read();
}

std::wstring HtmlOfText(std::wstring_view text) {
    std::wstring html = L"<html>\r\n<body>\r\n";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t next = i + 1 < text.size() ? text[i + 1] : L'\0';
        const std::wstring escaped = Escaped(text[i], next);
        if (text[i] < 0x80) {
            html += escaped;
            continue;
        }
        std::uint32_t point = text[i];
        if (text[i] >= 0xD800 && text[i] <= 0xDBFF && next >= 0xDC00 && next <= 0xDFFF) {
            point = 0x10000 + ((std::uint32_t{text[i]} - 0xD800) << 10) + (std::uint32_t{next} - 0xDC00);
            ++i;
        }
        html += L"&#" + std::to_wstring(point) + L';';
    }
    return html + L"\r\n</body>\r\n</html>\r\n";
}

} // namespace standin::mapi
