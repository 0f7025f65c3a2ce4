// The numbers of the binary forms of recurrences ([MS-OXOCAL] 2.2.1.44).
#pragma once

#include <cstdint>

namespace standin::outlook::recurrence::blob {

inline constexpr std::uint16_t kVersion = 0x3004;
inline constexpr std::uint32_t kReaderVersion2 = 0x3006;
/// From the second one on, extended exceptions begin with a change highlight.
inline constexpr std::uint32_t kWriterVersion2 = 0x3009;

inline constexpr std::uint16_t kDaily = 0x200A, kWeekly = 0x200B, kMonthly = 0x200C, kYearly = 0x200D;
/// PatternType.
inline constexpr std::uint16_t kDay = 0, kWeek = 1, kMonth = 2, kMonthNth = 3, kMonthEnd = 4;
inline constexpr std::uint16_t kGregorian = 0; // CalendarType: the default one
inline constexpr std::uint32_t kEndOnDate = 0x2021, kEndAfterCount = 0x2022, kEndNever = 0x2023,
                               kEndNeverToo = 0xFFFFFFFF;
inline constexpr std::uint32_t kEndDateOfEndless = 0x5AE980DF;

/// OverrideFlags of an exception.
enum Override : std::uint16_t {
    kSubject = 0x0001,
    kMeetingType = 0x0002,
    kReminderDelta = 0x0004,
    kReminder = 0x0008,
    kLocation = 0x0010,
    kBusyStatus = 0x0020,
    kAttachment = 0x0040,
    kSubType = 0x0080,
    kColor = 0x0100,
    kBody = 0x0200,
};

} // namespace standin::outlook::recurrence::blob
