// On which days patterns fall, and where they end.
#include "standin/outlook/recurrence/Series.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>

namespace standin::outlook::recurrence {
namespace {

constexpr Day Date(int year, unsigned month, unsigned day) {
    using namespace std::chrono;
    return static_cast<Day>(
        (sys_days(std::chrono::year(year) / month / day) - sys_days(1601y / 1 / 1)).count());
}

/// "2024-02-29".
std::string Text(Day day) {
    const Month month = MonthOf(day);
    char text[16];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", static_cast<int>(1601 + month / 12),
                  static_cast<int>(MonthOfYear(month)), static_cast<int>(DayOfMonth(day)));
    return text;
}

std::string Days(const Pattern& pattern, int most) {
    std::string text;
    for (auto day = NextDay(pattern, pattern.start); day && most > 0;
         day = NextDay(pattern, *day + 1), --most)
        text += (text.empty() ? "" : " ") + Text(*day);
    return text;
}

struct Row {
    const char* what;
    Pattern pattern;
    const char* days;
};

constexpr std::int32_t kSun = 1, kMon = 2, kTue = 4, kFri = 32, kWeekdays = 62, kWeekend = 65;

Pattern From(Pattern pattern) {
    NeverEnd(pattern);
    return pattern;
}

TEST(Patterns, FallOnTheirDays) {
    const Row rows[] = {
        {"every third day",
         {.type = Type::Daily, .interval = 3, .start = Date(2024, 2, 27)},
         "2024-02-27 2024-03-01 2024-03-04"},
        {"every weekday",
         {.dayMask = kWeekdays, .start = Date(2024, 3, 1)},
         "2024-03-01 2024-03-04 2024-03-05"},
        {"weeks begin on Sunday",
         {.interval = 2, .dayMask = kSun | kTue, .start = Date(2024, 3, 5)},
         "2024-03-05 2024-03-17 2024-03-19"},
        {"weeks begin on Monday",
         {.interval = 2, .dayMask = kSun | kTue, .firstWeekday = 1, .start = Date(2024, 3, 5)},
         "2024-03-05 2024-03-10 2024-03-19"},
        {"the start is no day of it",
         {.dayMask = kMon, .start = Date(2024, 3, 5)},
         "2024-03-11 2024-03-18 2024-03-25"},
        {"the 31st, or the last",
         {.type = Type::Monthly, .dayOfMonth = 31, .start = Date(2023, 12, 31)},
         "2023-12-31 2024-01-31 2024-02-29 2024-03-31"},
        {"a day before the start",
         {.type = Type::Monthly, .dayOfMonth = 5, .start = Date(2024, 1, 10)},
         "2024-02-05 2024-03-05"},
        {"every other month",
         {.type = Type::Monthly, .interval = 2, .dayOfMonth = 15, .start = Date(2024, 11, 1)},
         "2024-11-15 2025-01-15 2025-03-15"},
        {"second Friday",
         {.type = Type::MonthNth, .dayMask = kFri, .instance = 2, .start = Date(2024, 1, 1)},
         "2024-01-12 2024-02-09 2024-03-08"},
        {"last Friday",
         {.type = Type::MonthNth, .dayMask = kFri, .instance = 5, .start = Date(2024, 1, 1)},
         "2024-01-26 2024-02-23 2024-03-29"},
        {"first day of the weekend",
         {.type = Type::MonthNth, .dayMask = kWeekend, .instance = 1, .start = Date(2024, 8, 1)},
         "2024-08-03 2024-09-01 2024-10-05"},
        {"last weekday",
         {.type = Type::MonthNth, .dayMask = kWeekdays, .instance = 5, .start = Date(2024, 3, 1)},
         "2024-03-29 2024-04-30 2024-05-31"},
        {"leap day",
         {.type = Type::Yearly,
          .interval = 12,
          .dayOfMonth = 29,
          .monthOfYear = 2,
          .start = Date(2023, 5, 1)},
         "2024-02-29 2025-02-28 2026-02-28"},
        {"every second year",
         {.type = Type::Yearly, .interval = 24, .dayOfMonth = 4, .monthOfYear = 7, .start = Date(2024, 7, 4)},
         "2024-07-04 2026-07-04 2028-07-04"},
        {"fourth Friday of November",
         {.type = Type::YearNth,
          .interval = 12,
          .dayMask = kFri,
          .instance = 4,
          .monthOfYear = 11,
          .start = Date(2024, 11, 23)},
         "2025-11-28 2026-11-27"},
        {"no day of the week", {.dayMask = 0, .start = Date(2024, 3, 1)}, ""},
    };
    for (const Row& row : rows) {
        const int most = static_cast<int>(std::string(row.days).size() + 1) / 11;
        EXPECT_EQ(Days(From(row.pattern), most), row.days) << row.what;
    }
}

TEST(Patterns, ADayIsFoundFromAnywhere) {
    Pattern pattern =
        From({.type = Type::Monthly, .interval = 3, .dayOfMonth = 30, .start = Date(2024, 1, 30)});
    EXPECT_EQ(Text(*NextDay(pattern, Date(2031, 4, 30))), "2031-04-30");
    EXPECT_EQ(Text(*NextDay(pattern, Date(2031, 5, 1))), "2031-07-30");
    EXPECT_TRUE(FallsOn(pattern, Date(2024, 4, 30)));
    EXPECT_FALSE(FallsOn(pattern, Date(2024, 3, 30)));
    EXPECT_FALSE(FallsOn(pattern, Date(2023, 10, 30))) << "before the start";
}

TEST(Patterns, EndAndCountFollowEachOther) {
    Pattern pattern = From({.dayMask = kMon | kFri, .start = Date(2024, 3, 1)});
    EndAfter(pattern, 4);
    EXPECT_EQ(Text(pattern.end), "2024-03-11");
    EXPECT_EQ(Days(pattern, 9), "2024-03-01 2024-03-04 2024-03-08 2024-03-11");
    EndOn(pattern, Date(2024, 3, 10));
    EXPECT_EQ(pattern.count, 3);
    pattern.dayMask = kMon;
    Refresh(pattern);
    EXPECT_EQ(pattern.count, 1) << "the date stays, the count follows";
    EndAfter(pattern, 2);
    pattern.interval = 2;
    Refresh(pattern);
    EXPECT_EQ(Text(pattern.end), "2024-03-25")
        << "the count stays, the date follows; weeks count from the start's";
    NeverEnd(pattern);
    EXPECT_TRUE(
        FallsOn(pattern, Date(2424, 3, 11) - 7 * (((Date(2424, 3, 11) - Date(2024, 3, 11)) / 7) % 2)));
    EXPECT_FALSE(NextDay(pattern, kLastDayOfAll + 1));
}

TEST(Patterns, ChangedAndDeletedDaysTakeEachOthersPlace) {
    Series series{.pattern = From({.type = Type::Daily, .start = Date(2024, 3, 1)}),
                  .startOffset = 600,
                  .endOffset = 630};
    const Day day = Date(2024, 3, 5);
    EXPECT_EQ(StateOf(series, day), DayState::Regular);
    EXPECT_EQ(StateOf(series, Date(2024, 2, 5)), DayState::NotInPattern);
    ChangeDay(series, {.original = StartOn(series, day),
                       .start = StartOn(series, day) + 60,
                       .end = StartOn(series, day) + 90});
    EXPECT_EQ(StateOf(series, day), DayState::Changed);
    ASSERT_NE(FindException(series, MidnightOf(day) + 660), nullptr);
    EXPECT_EQ(FindException(series, MidnightOf(day) + 600), nullptr);
    DeleteDay(series, day);
    DeleteDay(series, day);
    EXPECT_EQ(StateOf(series, day), DayState::Deleted);
    EXPECT_TRUE(series.exceptions.empty());
    EXPECT_EQ(series.deleted, std::vector{day});
}

} // namespace
} // namespace standin::outlook::recurrence
