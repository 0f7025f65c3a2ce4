// The conversions between an item's values and the texts that scripts see.
#include "Conversions.h"

#include "frame/Text.h"
#include "outlook/ComPointers.h"

#include <comdef.h>

#include <array>

namespace varden {

namespace {

constexpr std::array kImportance{EnumWord{0, L"Low"}, EnumWord{2, L"High"}};
constexpr std::array kSensitivity{EnumWord{0, L"Normal"}, EnumWord{1, L"Personal"}, EnumWord{2, L"Private"},
                                  EnumWord{3, L"Confidential"}};
constexpr std::array kBodyFormat{EnumWord{0, L"Unspecified"}, EnumWord{1, L"Plain Text"},
                                 EnumWord{2, L"HTML"}, EnumWord{3, L"Rich Text"}};
constexpr std::array kFlagStatus{EnumWord{0, L"None"}, EnumWord{1, L"Complete"}, EnumWord{2, L"Marked"}};
constexpr std::array kRemoteStatus{EnumWord{0, L"None"}, EnumWord{1, L"Unmarked"},
                                   EnumWord{2, L"Marked For Download"}, EnumWord{3, L"Marked For Copy"},
                                   EnumWord{4, L"Marked For Delete"}};
constexpr std::array kGender{EnumWord{1, L"Female"}, EnumWord{2, L"Male"}};

constexpr std::array kImportanceByLetter{EnumLetter{L'H', 2}, EnumLetter{L'L', 0}, EnumLetter{L'N', 1}};
constexpr std::array kSensitivityByLetter{EnumLetter{L'C', 3}, EnumLetter{L'N', 0}};
constexpr std::array kSensitivityByWord{EnumWord{1, L"Personal"}, EnumWord{2, L"Private"}};
constexpr std::array kFlagStatusByLetter{EnumLetter{L'C', 1}, EnumLetter{L'M', 2}, EnumLetter{L'N', 0}};
constexpr std::array kGenderByLetter{EnumLetter{L'F', 1}, EnumLetter{L'M', 2}, EnumLetter{L'U', 0}};

} // namespace

constexpr EnumWords kImportanceWords{kImportance, L"Normal"};
constexpr EnumWords kSensitivityWords{kSensitivity};
constexpr EnumWords kBodyFormatWords{kBodyFormat};
constexpr EnumWords kFlagStatusWords{kFlagStatus};
constexpr EnumWords kRemoteStatusWords{kRemoteStatus};
constexpr EnumWords kGenderWords{kGender, L"Unspecified"};

constexpr EnumChoice kImportanceLetters{kImportanceByLetter, {}};
constexpr EnumChoice kSensitivityLetters{kSensitivityByLetter, kSensitivityByWord};
constexpr EnumChoice kFlagStatusLetters{kFlagStatusByLetter, {}};
constexpr EnumChoice kRemoteStatusChoice{{}, kRemoteStatus};
constexpr EnumChoice kGenderLetters{kGenderByLetter, {}};

std::wstring DateText(DATE date) {
    BSTR text = nullptr;
    if (FAILED(VarBstrFromDate(date, LOCALE_USER_DEFAULT, 0, &text))) {
        return L"Invalid DateTime";
    }
    return BstrText(_bstr_t(text, false));
}

std::optional<DATE> ParseDate(const std::wstring& text, ULONG flags) {
    DATE date = 0;
    if (FAILED(VarDateFromStr(const_cast<LPOLESTR>(text.c_str()), LOCALE_USER_DEFAULT, flags, &date))) {
        return std::nullopt;
    }
    return date;
}

std::optional<DATE> ParseDateOrNone(const std::wstring& text) {
    return text.empty() || EqualIgnoringCase(text, L"None") ? kNoDate : ParseDate(text);
}

std::optional<SYSTEMTIME> LocalTime(const FILETIME& time) {
    SYSTEMTIME utc, local;
    if (!FileTimeToSystemTime(&time, &utc) || !SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local)) {
        return std::nullopt;
    }
    return local;
}

std::wstring MapiTimeText(const FILETIME& time) {
    const auto local = LocalTime(time);
    if (!local) {
        return {};
    }
    constexpr int capacity = 255;
    wchar_t date[capacity] = {};
    wchar_t clock[capacity] = {};
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &*local, nullptr, date, capacity);
    GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &*local, nullptr, clock, capacity);
    return FormatText(L"%ls %ls", date, clock);
}

std::wstring WordFor(long value, const EnumWords& words) {
    for (const EnumWord& known : words.words) {
        if (known.value == value) {
            return known.word;
        }
    }
    return words.otherwise;
}

std::optional<long> Choose(const std::wstring& text, const EnumChoice& choice) {
    for (const EnumLetter& known : choice.letters) {
        if (text.starts_with(known.letter)) {
            return known.value;
        }
    }
    for (const EnumWord& known : choice.words) {
        if (choice.ignoresCase ? EqualIgnoringCase(text, known.word) : text == known.word) {
            return known.value;
        }
    }
    return std::nullopt;
}

} // namespace varden
