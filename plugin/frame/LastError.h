// The last-error record: what a script reads with VARD_GetLastError after a function has answered
// "!!ERROR!!".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace varden {

/// What a failing function answers.
inline constexpr const wchar_t* kErrorText = L"!!ERROR!!";

/// What a function answers that has changed something.
inline constexpr const wchar_t* kSuccessText = L"0";
/// What a walk answers behind its last record or folder.
inline constexpr const wchar_t* kEndText = L"End";

/// One failure. There is one record for the process, made at Init.
struct LastErrorRecord {
    std::int32_t code = 0;               ///< 0 for none
    std::uint32_t subcode = 0;           ///< as a rule the HRESULT of the failed call, 0 for none
    std::optional<std::wstring> message; ///< the words for the code
    std::optional<std::wstring> extra;   ///< what the failing code added
};

/// Fills the record: code and subcode as given, the message from the table of codes, a copy of the extra
/// text.
void SetLastErrorRecord(std::int32_t code, std::uint32_t subcode, LastErrorRecord& record,
                        std::wstring_view extra);

/// Empties the record: code and subcode 0, the message "Success", no extra text.
void ClearLastErrorRecord(LastErrorRecord& record);

/// The message of a code; "Undefined error. " for a code that the table doesn't hold.
std::wstring_view ErrorMessage(std::int32_t code);

/// The answer of VARD_GetLastError. Text is given when `type` is absent or "text" in any case; every other
/// word asks for the code in decimal.
std::wstring DescribeLastError(const LastErrorRecord& record, const std::optional<std::wstring>& type);

} // namespace varden
