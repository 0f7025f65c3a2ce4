// The fields of a recurrence pattern and their texts.
#pragma once

#include "outlook/Reference.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace varden {

/// How a pattern field's value is written as text.
enum class PatternForm : std::uint8_t {
    Integer,
    DayMask, ///< names of days
    Time,
    Date,
    LowTruth,  ///< "true" or "false"
    HighTruth, ///< "True" or "False"
    Type,      ///< a word for the recurrence type
};

struct PatternField {
    const wchar_t* name;   ///< as written; read without its blanks
    const wchar_t* member; ///< of RecurrencePattern
    PatternForm form;
};

/// The whole vocabulary of patterns, in the order in which it is documented.
std::span<const PatternField> PatternFields();
/// By the name with its blanks, without regard to case; null for an unknown name.
const PatternField* FindPatternFieldToWrite(const std::wstring& name);
/// By the name without blanks, without regard to case; null for an unknown name.
const PatternField* FindPatternFieldToRead(const std::wstring& name);

/// Whether a pattern's RecurrenceType is one that has a word.
bool IsKnownRecurrenceType(long type);
/// The type for a word, without regard to case; none for any other text.
std::optional<long> RecurrenceTypeFrom(const std::wstring& word);

/// The value that is written for a text. A text that is no date gives a date that Outlook refuses.
_variant_t PatternValue(PatternForm form, const std::wstring& text);

/// The text of a field of the pattern.
std::wstring PatternText(const PatternField& field, const outlook::Reference& pattern);

} // namespace varden
