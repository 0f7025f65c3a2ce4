// A modest reader and writer of RTF.
#include "standin/mapi/Rtf.h"

#include "standin/mapi/Html.h"

#include <algorithm>

namespace standin::mapi {
namespace {

constexpr std::size_t kDeepestNesting = 200;
constexpr int kNoParameter = -1;

/// Control words that stand for characters.
struct Symbol {
    std::string_view word;
    std::wstring_view text;
};
constexpr Symbol kSymbols[] = {
    {"par", L"\r\n"},         {"line", L"\r\n"},        {"row", L"\r\n"},      {"tab", L"\t"},
    {"cell", L"\t"},          {"lquote", L"\u2018"},    {"rquote", L"\u2019"}, {"bullet", L"\u2022"},
    {"ldblquote", L"\u201C"}, {"rdblquote", L"\u201D"}, {"endash", L"\u2013"}, {"emdash", L"\u2014"},
};

/// Groups that hold no text of the document.
constexpr std::string_view kHidden[] = {"fonttbl", "colortbl", "stylesheet", "info",    "pict",     "object",
                                        "header",  "footer",   "footnote",   "fldinst", "generator"};

/// Reads RTF for one of two things: the text that it shows, or the HTML that it was made from.
class RtfReader {
public:
    RtfReader(std::span<const std::uint8_t> rtf, bool wantsHtml) : m_rtf(rtf), m_wantsHtml(wantsHtml) {}

    std::wstring Read() {
        while (m_next < m_rtf.size()) {
            const char unit = static_cast<char>(m_rtf[m_next++]);
            if (unit == '{')
                BeginGroup();
            else if (unit == '}')
                EndGroup();
            else if (unit == '\\')
                ReadControl();
            else if (unit != '\r' && unit != '\n')
                AddByte(unit);
        }
        FlushBytes();
        return std::move(m_text);
    }

    bool IsFromHtml() const { return m_isFromHtml; }

private:
    struct Group {
        bool isHidden = false;
        bool isHtmlTag = false;
        bool isForRtfAlone = false; // between \htmlrtf and \htmlrtf0
        int skippedAfterUnicode = 1;
    };

    void BeginGroup() {
        FlushBytes();
        if (m_outer.size() < kDeepestNesting)
            m_outer.push_back(m_group);
        else
            ++m_tooDeep;
    }
    void EndGroup() {
        FlushBytes();
        if (m_tooDeep > 0)
            --m_tooDeep;
        else if (!m_outer.empty()) {
            m_group = m_outer.back();
            m_outer.pop_back();
        }
    }

    bool IsShown() const {
        if (m_group.isHidden)
            return false;
        return m_wantsHtml ? m_group.isHtmlTag || !m_group.isForRtfAlone : !m_group.isHtmlTag;
    }

    void AddByte(char unit) {
        if (m_toSkip > 0)
            --m_toSkip;
        else if (IsShown())
            m_bytes += unit;
    }
    void Add(std::wstring_view text) {
        FlushBytes();
        if (IsShown())
            m_text += text;
    }
    /// Bytes are gathered first: a character may have several.
    void FlushBytes() {
        m_text += mailbox::Widen(m_bytes, m_codePage);
        m_bytes.clear();
    }

    void ReadControl() {
        if (m_next >= m_rtf.size())
            return;
        const char unit = static_cast<char>(m_rtf[m_next]);
        if (IsLetter(unit)) {
            ReadWord();
            return;
        }
        ++m_next;
        switch (unit) {
        case '\'':
            ReadHexadecimal();
            break;
        case '*':
            m_group.isHidden = m_group.isHidden || !IsWanted(PeekWord());
            break;
        case '~':
            Add(L"\u00A0");
            break;
        case '_':
            Add(L"-");
            break;
        case '-':
            break;
        case '\r':
        case '\n':
            Add(L"\r\n");
            break;
        default:
            AddByte(unit); // \\, \{, \}
        }
    }

    static bool IsLetter(char unit) { return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z'); }
    static bool IsDigit(char unit) { return unit >= '0' && unit <= '9'; }

    /// Groups that a reader may pass over are passed over, but for the HTML where that is wanted.
    bool IsWanted(std::string_view word) const { return m_wantsHtml && word == "htmltag"; }

    std::string_view WordAt(std::size_t position) const {
        const auto* text = reinterpret_cast<const char*>(m_rtf.data());
        std::size_t end = position;
        while (end < m_rtf.size() && IsLetter(text[end]))
            ++end;
        return {text + position, end - position};
    }
    std::string_view PeekWord() const {
        return m_next < m_rtf.size() && m_rtf[m_next] == '\\' ? WordAt(m_next + 1) : std::string_view();
    }

    void ReadHexadecimal() {
        const auto digit = [this](std::size_t position) -> int {
            const int unit = position < m_rtf.size() ? m_rtf[position] : 0;
            if (unit >= '0' && unit <= '9')
                return unit - '0';
            const int lower = unit | 0x20;
            return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 0;
        };
        AddByte(static_cast<char>(digit(m_next) << 4 | digit(m_next + 1)));
        m_next = std::min(m_next + 2, m_rtf.size());
    }

    void ReadWord() {
        const std::string_view word = WordAt(m_next);
        m_next += word.size();
        const auto peek = [this] { return m_next < m_rtf.size() ? static_cast<char>(m_rtf[m_next]) : '\0'; };
        const bool isNegative = peek() == '-';
        m_next += isNegative;
        int parameter = kNoParameter;
        for (; IsDigit(peek()); ++m_next)
            parameter = std::min(std::max(parameter, 0) * 10 + (peek() - '0'), 1000000);
        m_next += peek() == ' ';
        Obey(word, isNegative ? -parameter : parameter);
    }

    void Obey(std::string_view word, int parameter) {
        if (word == "u") {
            Add(std::wstring(1, static_cast<wchar_t>(parameter)));
            m_toSkip = m_group.skippedAfterUnicode;
        } else if (word == "uc") {
            m_group.skippedAfterUnicode = std::max(parameter, 0);
        } else if (word == "ansicpg") {
            m_codePage = static_cast<UINT>(parameter);
        } else if (word == "fromhtml") {
            m_isFromHtml = parameter != 0;
        } else if (word == "htmltag") {
            m_group.isHtmlTag = true;
        } else if (word == "htmlrtf") {
            FlushBytes();
            m_group.isForRtfAlone = parameter != 0;
        } else if (std::ranges::find(kHidden, word) != std::end(kHidden)) {
            m_group.isHidden = true;
        } else if (const auto symbol = std::ranges::find(kSymbols, word, &Symbol::word);
                   symbol != std::end(kSymbols)) {
            Add(symbol->text);
        }
    }

    std::span<const std::uint8_t> m_rtf;
    bool m_wantsHtml;
    std::size_t m_next = 0;
    std::wstring m_text;
    std::string m_bytes;
    UINT m_codePage = 1252;
    bool m_isFromHtml = false;
    int m_toSkip = 0;
    std::size_t m_tooDeep = 0;
    Group m_group;
    std::vector<Group> m_outer;
};

std::string Escaped(wchar_t unit) {
    switch (unit) {
    case L'\\':
        return "\\\\";
    case L'{':
        return "\\{";
    case L'}':
        return "\\}";
    case L'\t':
        return "\\tab ";
    case L'\n':
        return "\\par\r\n";
    case L'\r':
        return {};
    default:
        break;
    }
    if (unit < 0x80)
        return std::string(1, static_cast<char>(unit));
    return "\\u" + std::to_string(static_cast<std::int16_t>(unit)) + '?';
}

std::string Escaped(std::wstring_view text) {
    std::string escaped;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isLoneReturn = text[i] == L'\r' && (i + 1 == text.size() || text[i + 1] != L'\n');
        escaped += Escaped(isLoneReturn ? L'\n' : text[i]);
    }
    return escaped;
}

/// Where markup ends that begins at `start`: behind the > of a tag, or the ; of a character reference.
std::size_t EndOfMarkup(std::wstring_view html, std::size_t start) {
    constexpr std::size_t kLongestReference = 10;
    const bool isTag = html[start] == L'<';
    const std::wstring_view rest = html.substr(start, isTag ? html.size() : kLongestReference);
    const std::size_t end = rest.find(isTag ? L'>' : L';');
    if (end == std::wstring_view::npos)
        return isTag ? html.size() : start + 1;
    return start + end + 1;
}

mailbox::Bytes BytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

} // namespace

std::wstring TextOfRtf(std::span<const std::uint8_t> rtf) {
    if (const auto html = HtmlOfRtf(rtf))
        return TextOfHtml(*html);
    return RtfReader(rtf, false).Read();
}

std::optional<std::wstring> HtmlOfRtf(std::span<const std::uint8_t> rtf) {
    RtfReader reader(rtf, true);
    std::wstring html = reader.Read();
    return reader.IsFromHtml() ? std::optional(std::move(html)) : std::nullopt;
}

mailbox::Bytes RtfOfText(std::wstring_view text) {
    return BytesOf("{\\rtf1\\ansi\\ansicpg1252\\fromtext \\deff0{\\fonttbl{\\f0\\fswiss Arial;}}\r\n"
                   "\\uc1\\pard\\plain\\deftab360 \\f0\\fs20 " +
                   Escaped(text) + "}");
}

mailbox::Bytes RtfOfHtml(std::wstring_view html) {
    std::string rtf = "{\\rtf1\\ansi\\ansicpg1252\\fromhtml1 \\deff0{\\fonttbl{\\f0\\fswiss Arial;}}\r\n"
                      "\\uc1\\pard\\plain\\deftab360 \\f0\\fs24 ";
    for (std::size_t position = 0; position < html.size();) {
        const bool isMarkup = html[position] == L'<' || html[position] == L'&';
        const std::size_t end = isMarkup ? EndOfMarkup(html, position)
                                         : std::min(html.find_first_of(L"<&", position), html.size());
        const std::string part = Escaped(html.substr(position, end - position));
        rtf += isMarkup ? "{\\*\\htmltag64 " + part + "}" : part;
        position = end;
    }
    return BytesOf(rtf + "}");
}

} // namespace standin::mapi
