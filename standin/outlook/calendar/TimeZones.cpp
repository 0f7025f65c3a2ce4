// Time zones in their binary forms.
#include "standin/outlook/calendar/TimeZones.h"

#include "standin/mailbox/ByteOrder.h"
#include "standin/outlook/calendar/CalendarProperties.h"

namespace standin::outlook::calendar {
namespace {

using mailbox::ByteReader;
using mailbox::Bytes;
using mailbox::ByteWriter;
using mailbox::SysTime;

constexpr std::uint16_t kVersion = 0x0102; // 2 and 1: the lower byte is the major one
constexpr std::uint16_t kReserved = 2, kRuleSize = 62;
constexpr std::uint16_t kSeriesRule = 1, kEffectiveRule = 2; // TZRULE_FLAG_...
/// From when on a rule holds. [MS-OXOCAL] 2.2.1.41.1 has a year and zeros; Outlook writes the
/// year's first day.
constexpr SYSTEMTIME kFirstDay{1601, 1, 0, 1, 0, 0, 0, 0};

using Shift = BOOL(WINAPI*)(const TIME_ZONE_INFORMATION*, const SYSTEMTIME*, SYSTEMTIME*);

SysTime Shifted(const Zone& zone, SysTime time, Shift shift) {
    const FILETIME before{static_cast<DWORD>(time.ticks), static_cast<DWORD>(time.ticks >> 32)};
    SYSTEMTIME from{}, to{};
    FILETIME after{};
    const bool done =
        FileTimeToSystemTime(&before, &from) && shift(&zone, &from, &to) && SystemTimeToFileTime(&to, &after);
    return done ? SysTime{static_cast<std::uint64_t>(after.dwHighDateTime) << 32 | after.dwLowDateTime}
                : time;
}

void AddBiases(const Zone& zone, ByteWriter& out) {
    out.Add(static_cast<std::int32_t>(zone.Bias))
        .Add(static_cast<std::int32_t>(zone.StandardBias))
        .Add(static_cast<std::int32_t>(zone.DaylightBias));
}

void TakeBiases(ByteReader& in, Zone& zone) {
    zone.Bias = in.Take<std::int32_t>();
    zone.StandardBias = in.Take<std::int32_t>();
    zone.DaylightBias = in.Take<std::int32_t>();
}

/// The name by which the registry knows the zone.
std::wstring KeyName() {
    DYNAMIC_TIME_ZONE_INFORMATION present{};
    GetDynamicTimeZoneInformation(&present);
    return present.TimeZoneKeyName;
}

/// One rule of a definition; `flags` tell what it is for.
Zone TakeRule(ByteReader& in, std::uint16_t& flags) {
    Zone zone{};
    in.Skip(sizeof kVersion + sizeof kRuleSize);
    flags = in.Take<std::uint16_t>();
    in.Skip(sizeof kFirstDay);
    TakeBiases(in, zone);
    zone.StandardDate = in.Take<SYSTEMTIME>();
    zone.DaylightDate = in.Take<SYSTEMTIME>();
    return zone;
}

} // namespace

const Zone& LocalZone() {
    static const Zone zone = [] {
        Zone present{};
        GetTimeZoneInformation(&present);
        return present;
    }();
    return zone;
}

Date DateIn(const Zone& zone, SysTime time) {
    const Date utc = UtcDate(time);
    return utc == kNoDate ? kNoDate : UtcDate(Shifted(zone, time, SystemTimeToTzSpecificLocalTime));
}

SysTime TimeIn(const Zone& zone, Date date) {
    const SysTime time = TimeOfUtc(date);
    return date == kNoDate ? time : Shifted(zone, time, TzSpecificLocalTimeToSystemTime);
}

Bytes WriteZoneStruct(const Zone& zone) {
    constexpr std::uint16_t kEveryYear = 0;
    ByteWriter out;
    AddBiases(zone, out);
    out.Add(kEveryYear).Add(zone.StandardDate).Add(kEveryYear).Add(zone.DaylightDate);
    return out.Take();
}

std::optional<Zone> ReadZoneStruct(std::span<const std::uint8_t> bytes) {
    Zone zone{};
    ByteReader in(bytes);
    TakeBiases(in, zone);
    in.Skip(sizeof(std::uint16_t));
    zone.StandardDate = in.Take<SYSTEMTIME>();
    in.Skip(sizeof(std::uint16_t));
    zone.DaylightDate = in.Take<SYSTEMTIME>();
    return in.Ok() ? std::optional(zone) : std::nullopt;
}

Bytes WriteZoneDefinition(const Zone& zone, ZoneUse use) {
    constexpr std::uint16_t kOneRule = 1;
    const std::wstring key = KeyName();
    const auto header = static_cast<std::uint16_t>(3 * sizeof(std::uint16_t) + key.size() * sizeof(wchar_t));
    const std::uint16_t flags = kEffectiveRule | (use == ZoneUse::Series ? kSeriesRule : 0);
    ByteWriter out;
    out.Add(kVersion).Add(header).Add(kReserved);
    out.Add(static_cast<std::uint16_t>(key.size())).AddBytes(key.data(), key.size() * sizeof(wchar_t));
    out.Add(kOneRule);
    out.Add(kVersion).Add(kRuleSize).Add(flags).Add(kFirstDay);
    AddBiases(zone, out);
    return out.Add(zone.StandardDate).Add(zone.DaylightDate).Take();
}

std::optional<Zone> ReadZoneDefinition(std::span<const std::uint8_t> bytes) {
    ByteReader in(bytes);
    if (in.Take<std::uint16_t>() != kVersion)
        return std::nullopt;
    in.Skip(sizeof(std::uint16_t) + sizeof kReserved);
    in.Skip(in.Take<std::uint16_t>() * sizeof(wchar_t));
    std::optional<Zone> found;
    for (auto left = in.Take<std::uint16_t>(); left > 0 && in.Ok(); --left) {
        std::uint16_t flags = 0;
        const Zone zone = TakeRule(in, flags);
        if (!in.Ok())
            return std::nullopt;
        found = zone;
        if (flags & kEffectiveRule)
            break;
    }
    return found;
}

Zone ZoneOfSeries(const mailbox::MessageProperties& message) {
    std::optional<Zone> zone;
    if (const auto definition = ReadAs<Bytes>(message, kZoneOfSeries))
        zone = ReadZoneDefinition(*definition);
    if (const auto bytes = ReadAs<Bytes>(message, kZoneStruct); bytes && !zone)
        zone = ReadZoneStruct(*bytes);
    return zone.value_or(LocalZone());
}

} // namespace standin::outlook::calendar
