// Arithmetic on decimal digits, by the methods of the school.
#include "FixedPoint.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace standin::filemaker {

namespace {

constexpr int kLargestExponent = 400;
constexpr std::size_t kQuotientDecimals = 16;

bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

/// The exponent that begins at `text`, behind its letter; nothing when no digit follows.
std::optional<int> Exponent(std::wstring_view text) {
    const bool negative = !text.empty() && text.front() == L'-';
    if (!text.empty() && (negative || text.front() == L'+')) {
        text.remove_prefix(1);
    }
    if (text.empty() || !IsDigit(text.front())) {
        return std::nullopt;
    }
    int exponent = 0;
    for (; !text.empty() && IsDigit(text.front()); text.remove_prefix(1)) {
        exponent = std::min(exponent * 10 + (text.front() - L'0'), kLargestExponent);
    }
    return negative ? -exponent : exponent;
}

/// Makes two runs of digits equally long, by zeros in front.
void Align(std::string& a, std::string& b) {
    const std::size_t length = std::max(a.size(), b.size());
    a.insert(0, length - a.size(), '0');
    b.insert(0, length - b.size(), '0');
}

std::string Sum(std::string a, std::string b) {
    Align(a, b);
    int carry = 0;
    for (std::size_t i = a.size(); i-- > 0;) {
        const int digit = (a[i] - '0') + (b[i] - '0') + carry;
        a[i] = static_cast<char>('0' + digit % 10);
        carry = digit / 10;
    }
    return carry ? "1" + a : a;
}

/// a - b for a not below b.
std::string Difference(std::string a, std::string b) {
    Align(a, b);
    int borrow = 0;
    for (std::size_t i = a.size(); i-- > 0;) {
        const int digit = a[i] - b[i] - borrow;
        borrow = digit < 0;
        a[i] = static_cast<char>('0' + digit + 10 * borrow);
    }
    return a;
}

std::strong_ordering CompareDigits(std::string a, std::string b) {
    Align(a, b);
    return a <=> b;
}

std::string Product(const std::string& a, const std::string& b) {
    std::vector<int> sums(a.size() + b.size());
    for (std::size_t i = a.size(); i-- > 0;) {
        for (std::size_t k = b.size(); k-- > 0;) {
            int& sum = sums[i + k + 1];
            sum += (a[i] - '0') * (b[k] - '0');
            sums[i + k] += sum / 10;
            sum %= 10;
        }
    }
    std::string product;
    for (const int digit : sums) {
        product += static_cast<char>('0' + digit);
    }
    return product;
}

/// The whole part of a / b, b not 0.
std::string Quotient(const std::string& a, const std::string& b) {
    std::string quotient, remainder;
    for (const char digit : a) {
        remainder += digit;
        char times = '0';
        while (std::is_gteq(CompareDigits(remainder, b))) {
            remainder = Difference(remainder, b);
            ++times;
        }
        remainder.erase(0, std::min(remainder.find_first_not_of('0'), remainder.size()));
        quotient += times;
    }
    return quotient;
}

/// Both as whole numbers of the finer of the two scales.
std::size_t CommonScale(std::string& a, std::size_t aScale, std::string& b, std::size_t bScale) {
    const std::size_t scale = std::max(aScale, bScale);
    a.append(scale - aScale, '0');
    b.append(scale - bScale, '0');
    return scale;
}

} // namespace

FixedPoint::FixedPoint(bool negative, std::string digits, std::size_t scale)
    : m_negative(negative), m_digits(std::move(digits)), m_scale(scale) {
    while (m_scale > 0 && !m_digits.empty() && m_digits.back() == '0') {
        m_digits.pop_back();
        --m_scale;
    }
    m_digits.erase(0, std::min(m_digits.find_first_not_of('0'), m_digits.size()));
    if (m_digits.empty()) {
        m_negative = false;
        m_scale = 0;
    }
}

FixedPoint::FixedPoint(std::int64_t value)
    : FixedPoint(value < 0, std::to_string(value).substr(value < 0 ? 1 : 0), 0) {
}

std::optional<FixedPoint> FixedPoint::FindIn(std::wstring_view text) {
    bool negative = false, afterPoint = false;
    std::string digits;
    std::size_t scale = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (IsDigit(c)) {
            digits += static_cast<char>(c);
            scale += afterPoint;
        } else if (c == L'.') {
            afterPoint = true;
        } else if (c == L'-' && digits.empty()) {
            negative = true;
        } else if ((c == L'e' || c == L'E') && i > 0 && IsDigit(text[i - 1])) {
            const auto exponent = Exponent(text.substr(i + 1));
            if (!exponent) {
                continue;
            }
            const auto up = static_cast<std::size_t>(std::max(*exponent, 0));
            digits.append(up, '0');
            scale += static_cast<std::size_t>(std::max(-*exponent, 0));
            break;
        }
    }
    if (digits.empty()) {
        return std::nullopt;
    }
    return FixedPoint(negative, std::move(digits), scale);
}

std::wstring FixedPoint::AsText() const {
    if (IsZero()) {
        return L"0";
    }
    std::string text = m_digits;
    if (m_scale > 0) {
        text.insert(0, m_scale > text.size() ? m_scale - text.size() : 0, '0');
        text.insert(text.size() - m_scale, 1, '.');
    }
    return (m_negative ? L"-" : L"") + std::wstring(text.begin(), text.end());
}

std::int32_t FixedPoint::AsLong() const {
    const std::size_t wholeDigits = m_digits.size() > m_scale ? m_digits.size() - m_scale : 0;
    using Limits = std::numeric_limits<std::int32_t>;
    std::int64_t whole = 0;
    for (std::size_t i = 0; i < wholeDigits; ++i) {
        whole = whole * 10 + (m_digits[i] - '0');
        if (whole > Limits::max()) {
            return m_negative ? Limits::min() : Limits::max();
        }
    }
    return static_cast<std::int32_t>(m_negative ? -whole : whole);
}

FixedPoint FixedPoint::operator-() const {
    return FixedPoint(!m_negative, m_digits, m_scale);
}

FixedPoint operator+(const FixedPoint& a, const FixedPoint& b) {
    std::string left = a.m_digits, right = b.m_digits;
    const std::size_t scale = CommonScale(left, a.m_scale, right, b.m_scale);
    if (a.m_negative == b.m_negative) {
        return FixedPoint(a.m_negative, Sum(left, right), scale);
    }
    return std::is_gteq(CompareDigits(left, right))
               ? FixedPoint(a.m_negative, Difference(left, right), scale)
               : FixedPoint(b.m_negative, Difference(right, left), scale);
}

FixedPoint operator*(const FixedPoint& a, const FixedPoint& b) {
    return FixedPoint(a.m_negative != b.m_negative, Product(a.m_digits, b.m_digits), a.m_scale + b.m_scale);
}

std::optional<FixedPoint> FixedPoint::DividedBy(const FixedPoint& divisor) const {
    if (divisor.IsZero()) {
        return std::nullopt;
    }
    std::string dividend = m_digits, by = divisor.m_digits;
    CommonScale(dividend, m_scale, by, divisor.m_scale);
    // One decimal more than is kept, to round by.
    std::string quotient = Quotient(dividend.append(kQuotientDecimals + 1, '0'), by);
    const bool up = quotient.back() >= '5';
    quotient.pop_back();
    return FixedPoint(m_negative != divisor.m_negative, up ? Sum(quotient, "1") : quotient,
                      kQuotientDecimals);
}

std::strong_ordering operator<=>(const FixedPoint& a, const FixedPoint& b) {
    if (a.m_negative != b.m_negative) {
        return a.m_negative ? std::strong_ordering::less : std::strong_ordering::greater;
    }
    std::string left = a.m_digits, right = b.m_digits;
    CommonScale(left, a.m_scale, right, b.m_scale);
    return a.m_negative ? CompareDigits(right, left) : CompareDigits(left, right);
}

} // namespace standin::filemaker
