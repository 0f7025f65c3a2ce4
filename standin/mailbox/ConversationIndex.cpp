// Header and response levels.
#include "standin/mailbox/ConversationIndex.h"

#include "standin/mailbox/ByteOrder.h"
#include "standin/mailbox/Platform.h"

namespace standin::mailbox {
namespace {

using ByteSpan = std::span<const std::uint8_t>;

constexpr std::size_t kHeaderSize = 22;
constexpr std::size_t kLevelSize = 5;
constexpr std::size_t kTimeSize = 6; // the reserved byte is the first of the time

void AddHighFirst(Bytes& bytes, std::uint64_t value, std::size_t size) {
    for (std::size_t i = size; i-- > 0;)
        bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
}

/// The header's time: the upper 48 bits of a FILETIME, of which the first byte is 1 until the year 2057.
Bytes Header(SysTime now, const GUID& guid) {
    Bytes header;
    AddHighFirst(header, now.ticks >> 16, kTimeSize);
    const Bytes id = BytesOf(guid);
    header.insert(header.end(), id.begin(), id.end());
    return header;
}

std::uint64_t HeaderTime(ByteSpan header) {
    std::uint64_t ticks = 0;
    for (const std::uint8_t byte : header.first(kTimeSize))
        ticks = ticks << 8 | byte;
    return ticks << 16;
}

/// 31 bits of the time since the header's: those from 18 on, or, for more than 1.7 years, those from 23 on
/// and a mark.
std::uint32_t TimeDelta(std::uint64_t difference) {
    constexpr std::uint64_t kMask = 0x7FFFFFFF;
    constexpr std::uint32_t kLongDelta = 0x80000000;
    if (difference >> 18 <= kMask)
        return static_cast<std::uint32_t>(difference >> 18);
    return kLongDelta | static_cast<std::uint32_t>(difference >> 23 & kMask);
}

} // namespace

std::optional<Bytes> MakeConversationIndex(ByteSpan parent, SysTime now, const GUID& guid,
                                           std::uint8_t random) {
    if (parent.empty())
        return Header(now, guid);
    if (parent.size() < kHeaderSize || (parent.size() - kHeaderSize) % kLevelSize != 0)
        return std::nullopt;
    Bytes index(parent.begin(), parent.end());
    const std::uint64_t begun = HeaderTime(parent);
    AddHighFirst(index, TimeDelta(now.ticks > begun ? now.ticks - begun : 0), sizeof(std::uint32_t));
    index.push_back(random);
    return index;
}

std::optional<Bytes> MakeConversationIndex(ByteSpan parent) {
    const GUID guid = NewGuid();
    return MakeConversationIndex(parent, Now(), guid, guid.Data4[7]);
}

} // namespace standin::mailbox
