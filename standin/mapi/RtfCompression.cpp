// LZFu ([MS-OXRTFCP] 2.2, 3.1).
#include "standin/mapi/RtfCompression.h"

#include "standin/mailbox/ByteOrder.h"

#include <algorithm>
#include <array>
#include <memory>

namespace standin::mapi {
namespace {

using mailbox::Bytes;
using ByteSpan = std::span<const std::uint8_t>;

constexpr std::uint32_t kCompressed = 0x75465A4C;   // "LZFu"
constexpr std::uint32_t kUncompressed = 0x414C454D; // "MELA"
constexpr std::size_t kHeaderSize = 16;
constexpr std::uint32_t kCountedHeaderSize = 12; // of the header, what COMPSIZE counts in

constexpr std::size_t kDictionarySize = 4096;
constexpr std::size_t kLongestMatch = 17;
constexpr std::size_t kShortestMatch = 2;

// [MS-OXRTFCP] 2.1.2.1: what the dictionary holds at the start.
constexpr std::string_view kPrelude =
    "{\\rtf1\\ansi\\mac\\deff0\\deftab720{\\fonttbl;}{\\f0\\fnil \\froman \\fswiss \\fmodern \\fscript "
    "\\fdecor MS Sans SerifSymbolArialTimes New RomanCourier{\\colortbl\\red0\\green0\\blue0\r\n\\par "
    "\\pard\\plain\\f0\\fs20\\b\\i\\u\\tab\\tx";
static_assert(kPrelude.size() == 207);

Bytes WithHeader(std::uint32_t type, ByteSpan contents, std::size_t rawSize) {
    mailbox::ByteWriter writer;
    writer.Add(static_cast<std::uint32_t>(contents.size()) + kCountedHeaderSize);
    writer.Add(static_cast<std::uint32_t>(rawSize));
    writer.Add(type);
    writer.Add(type == kCompressed ? Checksum(contents) : std::uint32_t{0});
    writer.AddBytes(contents.data(), contents.size());
    return writer.Take();
}

/// Takes runs of eight tokens apart, each led by a byte that tells which of them are references.
HRESULT Unpack(ByteSpan contents, std::size_t rawSize, Bytes& rtf) {
    std::array<std::uint8_t, kDictionarySize> dictionary{};
    std::ranges::copy(kPrelude, dictionary.begin());
    std::size_t write = kPrelude.size();
    const auto put = [&](std::uint8_t byte) {
        rtf.push_back(byte);
        dictionary[write] = byte;
        write = (write + 1) % kDictionarySize;
    };
    mailbox::ByteReader reader(contents);
    while (reader.Left() > 0) {
        const auto control = reader.Take<std::uint8_t>();
        for (int bit = 0; bit < 8 && reader.Left() > 0; ++bit) {
            if (!(control >> bit & 1)) {
                put(reader.Take<std::uint8_t>());
                continue;
            }
            const std::size_t high = reader.Take<std::uint8_t>();
            const std::size_t low = reader.Take<std::uint8_t>();
            if (!reader.Ok())
                return MAPI_E_CORRUPT_DATA;
            const std::size_t offset = high << 4 | low >> 4;
            if (offset == write) // a reference to the place that is written next ends it all
                return rtf.size() == rawSize ? S_OK : MAPI_E_CORRUPT_DATA;
            for (std::size_t i = 0; i < (low & 0xF) + kShortestMatch; ++i)
                put(dictionary[(offset + i) % kDictionarySize]);
        }
    }
    return MAPI_E_CORRUPT_DATA; // there was no end
}

/// Finds earlier occurrences of what comes next, by its first two bytes.
class Matcher {
public:
    explicit Matcher(ByteSpan text) : m_text(text), m_before(text.size(), kNone) { m_last.fill(kNone); }

    struct Match {
        std::size_t position = 0;
        std::size_t length = 0;
    };

    void Pass(std::size_t position) {
        if (position + 1 >= m_text.size())
            return;
        std::size_t& last = m_last[Key(position)];
        m_before[position] = last;
        last = position;
    }

    /// The longest, which doesn't reach into what comes next itself and is still in the dictionary.
    Match Find(std::size_t position) const {
        constexpr int kMostTries = 64;
        Match best;
        if (position + 1 >= m_text.size())
            return best;
        std::size_t candidate = m_last[Key(position)];
        for (int tries = 0; candidate != kNone && tries < kMostTries; ++tries) {
            const std::size_t distance = position - candidate;
            if (distance >= kDictionarySize)
                break;
            const std::size_t most = std::min({kLongestMatch, distance, m_text.size() - position});
            const auto [end, ignored] =
                std::mismatch(m_text.begin() + static_cast<std::ptrdiff_t>(candidate),
                              m_text.begin() + static_cast<std::ptrdiff_t>(candidate + most),
                              m_text.begin() + static_cast<std::ptrdiff_t>(position));
            const auto length = static_cast<std::size_t>(end - m_text.begin()) - candidate;
            if (length > best.length)
                best = {candidate, length};
            candidate = m_before[candidate];
        }
        return best;
    }

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    std::size_t Key(std::size_t position) const {
        return static_cast<std::size_t>(m_text[position]) << 8 | m_text[position + 1];
    }

    ByteSpan m_text;
    std::vector<std::size_t> m_before;
    std::array<std::size_t, 65536> m_last;
};

/// Puts tokens together in runs of eight.
class TokenWriter {
public:
    void Literal(std::uint8_t byte) {
        Begin(false);
        m_bytes.push_back(byte);
    }
    void Reference(std::size_t offset, std::size_t length) {
        Begin(true);
        m_bytes.push_back(static_cast<std::uint8_t>(offset >> 4));
        m_bytes.push_back(static_cast<std::uint8_t>(offset << 4 | (length - kShortestMatch)));
    }
    Bytes Take() { return std::move(m_bytes); }

private:
    void Begin(bool isReference) {
        if (m_tokens % 8 == 0) {
            m_control = m_bytes.size();
            m_bytes.push_back(0);
        }
        m_bytes[m_control] |= static_cast<std::uint8_t>(isReference << m_tokens % 8);
        ++m_tokens;
    }

    Bytes m_bytes;
    std::size_t m_control = 0;
    std::size_t m_tokens = 0;
};

} // namespace

std::uint32_t Checksum(std::span<const std::uint8_t> bytes) {
    static constexpr auto kTable = [] {
        std::array<std::uint32_t, 256> table{};
        for (std::uint32_t i = 0; i < table.size(); ++i) {
            table[i] = i;
            for (int bit = 0; bit < 8; ++bit)
                table[i] = table[i] & 1 ? table[i] >> 1 ^ 0xEDB88320 : table[i] >> 1;
        }
        return table;
    }();
    std::uint32_t sum = 0;
    for (const std::uint8_t byte : bytes)
        sum = kTable[(sum ^ byte) & 0xFF] ^ sum >> 8;
    return sum;
}

HRESULT DecompressRtf(ByteSpan compressed, Bytes& rtf) {
    rtf.clear();
    mailbox::ByteReader reader(compressed);
    const auto countedSize = reader.Take<std::uint32_t>();
    const auto rawSize = reader.Take<std::uint32_t>();
    const auto type = reader.Take<std::uint32_t>();
    const auto checksum = reader.Take<std::uint32_t>();
    if (!reader.Ok() || countedSize < kCountedHeaderSize || countedSize - kCountedHeaderSize > reader.Left())
        return MAPI_E_CORRUPT_DATA;
    const ByteSpan contents = compressed.subspan(kHeaderSize, countedSize - kCountedHeaderSize);
    if (type == kUncompressed) {
        if (rawSize > contents.size())
            return MAPI_E_CORRUPT_DATA;
        rtf.assign(contents.begin(), contents.begin() + rawSize);
        return S_OK;
    }
    if (type != kCompressed || Checksum(contents) != checksum)
        return MAPI_E_CORRUPT_DATA;
    return Unpack(contents, rawSize, rtf);
}

Bytes CompressRtf(ByteSpan rtf) {
    Bytes text(kPrelude.begin(), kPrelude.end());
    text.insert(text.end(), rtf.begin(), rtf.end());
    auto matcher = std::make_unique<Matcher>(text);
    TokenWriter writer;
    std::size_t passed = 0;
    for (std::size_t position = kPrelude.size(); position < text.size();) {
        while (passed < position)
            matcher->Pass(passed++);
        const Matcher::Match match = matcher->Find(position);
        if (match.length < kShortestMatch) {
            writer.Literal(text[position++]);
            continue;
        }
        writer.Reference(match.position % kDictionarySize, match.length);
        position += match.length;
    }
    writer.Reference(text.size() % kDictionarySize, kShortestMatch);
    return WithHeader(kCompressed, writer.Take(), rtf.size());
}

Bytes WrapRtf(ByteSpan rtf) {
    return WithHeader(kUncompressed, rtf, rtf.size());
}

} // namespace standin::mapi
