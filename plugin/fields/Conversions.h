// The conversions between an item's values and the texts that scripts see.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace varden {

/// The date by which Outlook stands for none: 1 January 4501, in days from 30 December 1899.
inline constexpr DATE kNoDate = 949998.0;
/// The same date as a MAPI time.
inline constexpr FILETIME kNoTime{0xA3DD4000, 0x0CB34557};

/// A MAPI time (UTC) in local time; none for one beyond the calendar.
std::optional<SYSTEMTIME> LocalTime(const FILETIME& time);

/// A date of the object model in the user's short form; "Invalid DateTime" for one that has none.
std::wstring DateText(DATE date);

/// A date and time that a script gave, in whatever form the user's locale accepts. `flags` are those of
/// VarDateFromStr. None for a text that is no date.
std::optional<DATE> ParseDate(const std::wstring& text, ULONG flags = 0);

/// The value of a date field: the no-date value for an empty text and for "None" in any case. None for a text
/// that is no date.
std::optional<DATE> ParseDateOrNone(const std::wstring& text);

/// A MAPI time (UTC) as local date and time, always with both; empty for one beyond the calendar.
std::wstring MapiTimeText(const FILETIME& time);

struct EnumWord {
    long value;
    const wchar_t* word;
};

/// The words by which a script reads a number.
struct EnumWords {
    std::span<const EnumWord> words;
    const wchar_t* otherwise = L""; ///< for every other value
};

std::wstring WordFor(long value, const EnumWords& words);

struct EnumLetter {
    wchar_t letter;
    long value;
};

/// The texts by which a script writes a number: a first letter, or a whole word.
struct EnumChoice {
    std::span<const EnumLetter> letters; ///< with case; tried first
    std::span<const EnumWord> words;
    bool ignoresCase = false; ///< of the words
};

/// The number that the text picks; none for any other text.
std::optional<long> Choose(const std::wstring& text, const EnumChoice& choice);

// The enumerations that several kinds of item share.

extern const EnumWords kImportanceWords;
extern const EnumWords kSensitivityWords;
extern const EnumWords kBodyFormatWords;
extern const EnumWords kFlagStatusWords;
extern const EnumWords kRemoteStatusWords;
extern const EnumWords kGenderWords;

extern const EnumChoice kImportanceLetters;
extern const EnumChoice kSensitivityLetters;
extern const EnumChoice kFlagStatusLetters;
extern const EnumChoice kRemoteStatusChoice;
extern const EnumChoice kGenderLetters;

} // namespace varden
