// FileMaker's numbers: decimal, exact in sums and products.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace standin::filemaker {

/// A decimal number of any length.
class FixedPoint {
public:
    FixedPoint() = default;
    FixedPoint(std::int64_t value);

    /// The number that FileMaker reads in a text: its digits, whatever stands between them; the first point
    /// among them; a minus sign before them; an exponent ("e", a sign, digits) directly behind one of them,
    /// which ends the number and counts for 400 at most. Nothing when the text holds no digit.
    static std::optional<FixedPoint> FindIn(std::wstring_view text);

    /// As FileMaker shows it: no zero before the point, none at the end of the decimals (".5", "-1.25",
    /// "100").
    std::wstring AsText() const;
    /// Cut towards zero; a number outside 32 bits gives the nearest end of their range.
    std::int32_t AsLong() const;
    bool IsZero() const { return m_digits.empty(); }

    FixedPoint operator-() const;
    friend FixedPoint operator+(const FixedPoint& a, const FixedPoint& b);
    friend FixedPoint operator-(const FixedPoint& a, const FixedPoint& b) { return a + -b; }
    friend FixedPoint operator*(const FixedPoint& a, const FixedPoint& b);
    /// The quotient, rounded to 16 decimals; nothing when the divisor is 0.
    std::optional<FixedPoint> DividedBy(const FixedPoint& divisor) const;
    friend std::strong_ordering operator<=>(const FixedPoint& a, const FixedPoint& b);
    bool operator==(const FixedPoint&) const = default;

private:
    FixedPoint(bool negative, std::string digits, std::size_t scale);

    // The number is digits / 10^scale. Neither zeros before the digits nor zeros at the end of the decimals;
    // 0 has no digits and is not negative.
    bool m_negative = false;
    std::string m_digits;
    std::size_t m_scale = 0;
};

} // namespace standin::filemaker
