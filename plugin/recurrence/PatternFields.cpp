// The fields of a recurrence pattern and their texts.
#include "PatternFields.h"

#include "fields/Conversions.h"
#include "frame/Text.h"

#include <algorithm>
#include <array>
#include <limits>

namespace varden {

namespace {

constexpr std::array kFields{
    PatternField{L"Day of Month", L"DayOfMonth", PatternForm::Integer},
    PatternField{L"Day of Week Mask", L"DayOfWeekMask", PatternForm::DayMask},
    PatternField{L"Duration", L"Duration", PatternForm::Integer},
    PatternField{L"End Time", L"EndTime", PatternForm::Time},
    PatternField{L"Instance", L"Instance", PatternForm::Integer},
    PatternField{L"Interval", L"Interval", PatternForm::Integer},
    PatternField{L"Month of Year", L"MonthOfYear", PatternForm::Integer},
    PatternField{L"No End Date", L"NoEndDate", PatternForm::LowTruth},
    PatternField{L"Occurrences", L"Occurrences", PatternForm::Integer},
    PatternField{L"Pattern End Date", L"PatternEndDate", PatternForm::Date},
    PatternField{L"Pattern Start Date", L"PatternStartDate", PatternForm::Date},
    PatternField{L"Recurrence Type", L"RecurrenceType", PatternForm::Type},
    PatternField{L"Regenerate", L"Regenerate", PatternForm::HighTruth},
    PatternField{L"Start Time", L"StartTime", PatternForm::Time},
};

constexpr std::array kTypes{EnumWord{0, L"Daily"},     EnumWord{1, L"Weekly"}, EnumWord{2, L"Monthly"},
                            EnumWord{3, L"Nth Month"}, EnumWord{5, L"Yearly"}, EnumWord{6, L"Nth Year"}};
constexpr EnumWords kTypeWords{kTypes, L"Unknown"};
constexpr EnumChoice kTypeChoice{{}, kTypes, true};

/// In the order of the week; the values are the bits of OlDaysOfWeek.
constexpr std::array kDays{EnumWord{1, L"Sunday"},    EnumWord{2, L"Monday"},    EnumWord{4, L"Tuesday"},
                           EnumWord{8, L"Wednesday"}, EnumWord{16, L"Thursday"}, EnumWord{32, L"Friday"},
                           EnumWord{64, L"Saturday"}};

std::wstring Lower(std::wstring text) {
    CharLowerBuffW(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

/// A bit for each day whose name stands anywhere in the text.
long DayMaskFrom(const std::wstring& text) {
    const std::wstring lower = Lower(text);
    long mask = 0;
    for (const EnumWord& day : kDays) {
        if (lower.find(Lower(day.word)) != std::wstring::npos) {
            mask |= day.value;
        }
    }
    return mask;
}

std::wstring DayNames(long mask) {
    std::wstring names;
    for (const EnumWord& day : kDays) {
        if ((mask & day.value) != 0) {
            names += names.empty() ? day.word : std::wstring(L"\r") + day.word;
        }
    }
    return names;
}

/// A failed parse isn't reported: the date that no calendar has goes on to Outlook, which refuses it.
_variant_t DateOrInvalid(const std::wstring& text, ULONG flags) {
    constexpr DATE invalid = -1e9;
    return outlook::DateValue(ParseDate(text, flags).value_or(invalid));
}

std::wstring DateOrNone(DATE date) {
    return date == kNoDate ? L"None" : DateText(date);
}

} // namespace

std::span<const PatternField> PatternFields() {
    return kFields;
}

const PatternField* FindPatternFieldToWrite(const std::wstring& name) {
    return FindByWord(kFields, &PatternField::name, name);
}

const PatternField* FindPatternFieldToRead(const std::wstring& name) {
    const auto field = std::ranges::find_if(kFields, [&](const PatternField& known) {
        return EqualIgnoringCase(Without(known.name, L' '), name);
    });
    return field == kFields.end() ? nullptr : &*field;
}

bool IsKnownRecurrenceType(long type) {
    return std::ranges::find(kTypes, type, &EnumWord::value) != kTypes.end();
}

std::optional<long> RecurrenceTypeFrom(const std::wstring& word) {
    return Choose(word, kTypeChoice);
}

_variant_t PatternValue(PatternForm form, const std::wstring& text) {
    switch (form) {
    case PatternForm::DayMask:
        return outlook::LongValue(DayMaskFrom(text));
    case PatternForm::Time:
        return DateOrInvalid(text, VAR_TIMEVALUEONLY);
    case PatternForm::Date:
        return DateOrInvalid(text, VAR_DATEVALUEONLY);
    case PatternForm::LowTruth:
    case PatternForm::HighTruth:
        return outlook::BoolValue(EqualIgnoringCase(text, L"True"));
    default:
        return outlook::LongValue(LeadingNumber(text));
    }
}

std::wstring PatternText(const PatternField& field, const outlook::Reference& pattern) {
    switch (field.form) {
    case PatternForm::Time:
    case PatternForm::Date:
        return DateOrNone(pattern.GetDate(field.member));
    case PatternForm::LowTruth:
        return pattern.GetBool(field.member) ? L"true" : L"false";
    case PatternForm::HighTruth:
        return pattern.GetBool(field.member) ? L"True" : L"False";
    case PatternForm::DayMask:
        return DayNames(pattern.GetLong(field.member));
    case PatternForm::Type:
        return WordFor(pattern.GetLong(field.member), kTypeWords);
    default:
        return FormatText(L"%ld", pattern.GetLong(field.member));
    }
}

} // namespace varden
