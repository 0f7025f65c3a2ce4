// The binary forms of recurrences: what other clients wrote is read and written back, what is damaged is
// refused.
#include "standin/mailbox/Msg.h"
#include "standin/outlook/recurrence/Series.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace standin::outlook::recurrence {
namespace {

using mailbox::Bytes;

constexpr Minute kNine = 9 * 60;

Series Rich() {
    Series series{
        .pattern = DefaultPattern(Type::MonthNth, 154000), .startOffset = kNine, .endOffset = kNine + 30};
    EndAfter(series.pattern, 20);
    const Day first = *NextDay(series.pattern, series.pattern.start);
    const Day second = *NextDay(series.pattern, first + 1);
    const Day third = *NextDay(series.pattern, second + 1);
    DeleteDay(series, second);
    ChangeDay(series, {.original = StartOn(series, third),
                       .start = StartOn(series, third + 2),
                       .end = StartOn(series, third + 2) + 90,
                       .subject = L"Žofín – 東京",
                       .reminderMinutes = 5,
                       .reminderSet = true,
                       .location = L"Room",
                       .busyStatus = 3,
                       .allDay = false,
                       .color = 7,
                       .hasBody = true});
    ChangeDay(series, {.original = StartOn(series, first),
                       .start = StartOn(series, first) + 5,
                       .end = StartOn(series, first) + 6});
    return series;
}

TEST(RecurrenceBlob, KeepsEverything) {
    const Series series = Rich();
    const auto read = ReadAppointment(WriteAppointment(series));
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, series);

    for (const Type type :
         {Type::Daily, Type::Weekly, Type::Monthly, Type::MonthNth, Type::Yearly, Type::YearNth}) {
        Series plain{.pattern = DefaultPattern(type, 154321), .regenerates = true};
        EndOn(plain.pattern, 160000);
        const auto back = ReadTask(WriteTask(plain));
        ASSERT_TRUE(back) << static_cast<int>(type);
        EXPECT_EQ(*back, plain) << static_cast<int>(type);
    }
}

/// Both lists of days have the changed ones, under where they come from and where they went.
TEST(RecurrenceBlob, ListsChangedDaysTwice) {
    const Bytes bytes = WriteAppointment(Rich());
    constexpr std::size_t kDeletedCount = 42; // behind a month-nth pattern's header
    EXPECT_EQ(bytes[kDeletedCount], 3);
    EXPECT_EQ(bytes[kDeletedCount + 4 + 3 * 4], 2);
}

TEST(RecurrenceBlob, RefusesDamage) {
    const Bytes whole = WriteAppointment(Rich());
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(ReadAppointment(std::span(whole).first(size))) << size;
    const std::tuple<const char*, std::size_t, std::uint8_t> rows[] = {
        {"version", 3, 0x31},       {"frequency", 4, 0x0E}, {"type", 6, 9},
        {"interval", 14, 0},        {"instance", 26, 6},    {"end type", 30, 0x24},
        {"count of days", 45, 0x7F}};
    for (const auto& [what, offset, value] : rows) {
        Bytes damaged = whole;
        damaged[offset] = value;
        EXPECT_FALSE(ReadAppointment(damaged)) << what;
    }
}

Bytes BlobOf(const char* file) {
    constexpr GUID kAppointment{0x00062002, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    const std::filesystem::path path = std::filesystem::path(VARDEN_MSG_FOLDER) / file;
    std::ifstream in(path, std::ios::binary);
    const Bytes bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    mailbox::NamedProperties names;
    mailbox::Content content;
    EXPECT_EQ(mailbox::ReadMsgBytes(bytes, names, content), S_OK) << file;
    const mailbox::Value* value =
        content.properties.Find(mailbox::MakeTag(names.Id({kAppointment, 0x8216u}), PT_BINARY));
    const Bytes* blob = value ? std::get_if<Bytes>(value) : nullptr;
    EXPECT_TRUE(blob) << file;
    return blob ? *blob : Bytes();
}

class RealRecurrences : public testing::Test {
    void SetUp() override {
        if (!std::filesystem::exists(VARDEN_MSG_FOLDER))
            GTEST_SKIP() << "The MSG files of real mail clients are missing: " << VARDEN_MSG_FOLDER;
    }
};

TEST_F(RealRecurrences, AreReadAndWrittenBackByteByByte) {
    const Bytes weekly = BlobOf("appointment-weekly.msg");
    const auto series = ReadAppointment(weekly);
    ASSERT_TRUE(series);
    EXPECT_EQ(series->pattern.type, Type::Weekly);
    EXPECT_EQ(series->pattern.dayMask, 2);
    EXPECT_EQ(series->pattern.ending, End::AfterCount);
    EXPECT_EQ(series->pattern.count, 1);
    EXPECT_EQ(series->startOffset, 16 * 60);
    EXPECT_EQ(series->endOffset, 16 * 60 + 30);
    EXPECT_EQ(WriteAppointment(*series), weekly);
}

TEST_F(RealRecurrences, OnEveryWeekdayAreWeekly) {
    Bytes daily = BlobOf("appointment-daily.msg");
    const auto series = ReadAppointment(daily);
    ASSERT_TRUE(series);
    EXPECT_EQ(series->pattern.type, Type::Weekly);
    EXPECT_EQ(series->pattern.dayMask, 62);
    EXPECT_EQ(series->endOffset - series->startOffset, kMinutesPerDay);
    constexpr std::size_t kFrequency = 4;
    daily[kFrequency] = 0x0B;
    EXPECT_EQ(WriteAppointment(*series), daily);
}

/// Six bytes over a blob of another weekly pattern make it one of every weekday.
TEST_F(RealRecurrences, WithWeekdaysWrittenOverThem) {
    Bytes blob = BlobOf("appointment-weekly.msg");
    constexpr std::pair<std::size_t, std::uint8_t> kEdits[] = {{4, 0x0B},  {5, 0x20}, {6, 2},
                                                               {10, 0xC0}, {14, 1},   {22, 62}};
    for (const auto& [offset, byte] : kEdits)
        blob[offset] = byte;
    const auto series = ReadAppointment(blob);
    ASSERT_TRUE(series);
    EXPECT_EQ(series->pattern.type, Type::Weekly);
    EXPECT_EQ(series->pattern.dayMask, 62);
}

} // namespace
} // namespace standin::outlook::recurrence
