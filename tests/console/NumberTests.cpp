// FileMaker's numbers: what is read in a text, what is shown, how it is reckoned.
#include "standin/filemaker/Value.h"

#include <gtest/gtest.h>

using standin::filemaker::FixedPoint;
using standin::filemaker::Value;

namespace {

FixedPoint Number(const wchar_t* text) {
    return FixedPoint::FindIn(text).value();
}

TEST(Numbers, AreFoundInTextsAsFileMakerFindsThem) {
    const struct {
        const wchar_t* text;
        const wchar_t* number; // null: there is none
    } cases[] = {
        {L"", nullptr},         {L"abc", nullptr},
        {L"-.", nullptr},       {L"0", L"0"},
        {L"007", L"7"},         {L"-0", L"0"},
        {L"0.50", L".5"},       {L"-0.5", L"-.5"},
        {L"100", L"100"},       {L"$1,254.50", L"1254.5"},
        {L"2 + 2", L"22"},      {L"FY98", L"98"},
        {L"abc-5", L"-5"},      {L"5-", L"5"},
        {L"1.2.3", L"1.23"},    {L"1e3", L"1000"},
        {L"1.5E-2x9", L".015"}, {L"12 e3", L"123"},
        {L"3e", L"3"},          {L"4e+x5", L"45"},
        {L".005", L".005"},     {L"12345678901234567890.5", L"12345678901234567890.5"},
    };
    for (const auto& [text, number] : cases) {
        const auto found = FixedPoint::FindIn(text);
        ASSERT_EQ(found.has_value(), number != nullptr)
            << "in " << testing::PrintToString(std::wstring(text));
        if (found) {
            EXPECT_EQ(found->AsText(), number);
        }
    }
    EXPECT_EQ(FixedPoint::FindIn(L"1e999999999999")->AsText().size(), 401U);
}

TEST(Numbers, AreReckonedInDecimals) {
    const struct {
        FixedPoint result;
        const wchar_t* expected;
    } cases[] = {
        {Number(L".1") + Number(L".2"), L".3"},
        {Number(L"999.9") + Number(L".1"), L"1000"},
        {Number(L"5") - Number(L"7.25"), L"-2.25"},
        {Number(L"-5") - Number(L"-5"), L"0"},
        {Number(L"1000") - Number(L"1"), L"999"},
        {Number(L"-1.5") * Number(L".02"), L"-.03"},
        {Number(L"99999999999") * Number(L"99999999999"), L"9999999999800000000001"},
        {*Number(L"1").DividedBy(Number(L"3")), L".3333333333333333"},
        {*Number(L"-2").DividedBy(Number(L"3")), L"-.6666666666666667"},
        {*Number(L"100").DividedBy(Number(L".25")), L"400"},
        {*Number(L"99999999999999999999").DividedBy(Number(L"100000000000000000000")), L"1"},
        {*Number(L"0").DividedBy(Number(L"9")), L"0"},
    };
    for (const auto& [result, expected] : cases) {
        EXPECT_EQ(result.AsText(), expected);
    }
    EXPECT_FALSE(Number(L"1").DividedBy(Number(L"0")));
}

TEST(Numbers, HaveAnOrder) {
    const wchar_t* ascending[] = {L"-100", L"-2.5", L"-2", L"0", L".09", L".1", L"9", L"10", L"10.01"};
    for (std::size_t i = 0; i < std::size(ascending); ++i) {
        for (std::size_t k = 0; k < std::size(ascending); ++k) {
            EXPECT_EQ(Number(ascending[i]) <=> Number(ascending[k]), i <=> k) << i << " and " << k;
        }
    }
    EXPECT_EQ(Number(L"1.50"), Number(L"1.5"));
}

TEST(Numbers, AreCutToWholeOnesWithin32Bits) {
    const struct {
        const wchar_t* text;
        std::int32_t whole;
    } cases[] = {
        {L"2.9", 2},
        {L"-2.9", -2},
        {L".9", 0},
        {L"2147483647", 2147483647},
        {L"2147483648", 2147483647},
        {L"-2147483648", -2147483647 - 1},
        {L"-1e30", -2147483647 - 1},
    };
    for (const auto& [text, whole] : cases) {
        EXPECT_EQ(Number(text).AsLong(), whole);
    }
}

TEST(Values, AreReadAsEachKind) {
    const struct {
        Value value;
        const wchar_t* text;
        const wchar_t* number;
        bool truth;
    } cases[] = {
        {L"", L"", L"0", false},
        {L"no 7", L"no 7", L"7", true},
        {L"true", L"true", L"0", false},
        {true, L"1", L"1", true},
        {false, L"0", L"0", false},
        {-3, L"-3", L"-3", true},
        {Number(L"0.25"), L".25", L".25", true},
    };
    for (const auto& [value, text, number, truth] : cases) {
        EXPECT_EQ(value.AsText(), text);
        EXPECT_EQ(value.AsNumber().AsText(), number);
        EXPECT_EQ(value.AsBoolean(), truth);
    }
}

} // namespace
