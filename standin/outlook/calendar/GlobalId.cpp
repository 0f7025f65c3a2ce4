// Makes and reads the global ids of meetings.
#include "standin/outlook/calendar/GlobalId.h"

#include "standin/mailbox/ByteOrder.h"
#include "standin/mailbox/Platform.h"
#include "standin/outlook/calendar/CalendarProperties.h"

#include <algorithm>

namespace standin::outlook::calendar {
namespace {

using mailbox::Bytes;

constexpr std::uint8_t kArrayId[] = {0x04, 0x00, 0x00, 0x00, 0x82, 0x00, 0xE0, 0x00,
                                     0x74, 0xC5, 0xB7, 0x10, 0x1A, 0x82, 0xE0, 0x08};
/// Year (upper half first), month, day.
constexpr std::size_t kDayOffset = sizeof kArrayId, kDaySize = 4;

Bytes WithDay(Bytes id, const std::array<std::uint8_t, kDaySize>& day) {
    if (id.size() >= kDayOffset + kDaySize)
        std::ranges::copy(day, id.begin() + kDayOffset);
    return id;
}

} // namespace

Bytes NewGlobalId() {
    constexpr std::size_t kReserved = 8;
    const Bytes data = mailbox::BytesOf(mailbox::NewGuid());
    mailbox::ByteWriter out;
    out.Add(kArrayId).AddZeros(kDaySize).Add(mailbox::Now().ticks).AddZeros(kReserved);
    return out.Add(static_cast<std::uint32_t>(data.size())).AddBytes(data.data(), data.size()).Take();
}

Bytes GlobalIdOn(Bytes id, const SYSTEMTIME& day) {
    return WithDay(std::move(id),
                   {static_cast<std::uint8_t>(day.wYear >> 8), static_cast<std::uint8_t>(day.wYear),
                    static_cast<std::uint8_t>(day.wMonth), static_cast<std::uint8_t>(day.wDay)});
}

Bytes CleanGlobalId(Bytes id) {
    return WithDay(std::move(id), {});
}

void EnsureGlobalId(mailbox::OpenMessage& message) {
    if (!ReadValue(message, kGlobalId))
        WriteValue(message, kGlobalId, NewGlobalId());
    if (!ReadValue(message, kCleanGlobalId))
        WriteValue(message, kCleanGlobalId, CleanGlobalId(*ReadAs<Bytes>(message, kGlobalId)));
}

Bytes MeetingOf(const mailbox::MessageProperties& message) {
    if (auto clean = ReadAs<Bytes>(message, kCleanGlobalId); clean && !clean->empty())
        return std::move(*clean);
    return CleanGlobalId(ReadAs<Bytes>(message, kGlobalId).value_or(Bytes()));
}

} // namespace standin::outlook::calendar
