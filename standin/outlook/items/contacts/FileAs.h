// The forms under which a contact may be filed.
#pragma once

#include "standin/outlook/items/contacts/NameParts.h"

#include <cstdint>
#include <span>

namespace standin::outlook {

/// One form. Its number is that of PidLidFileUnderId ([MS-OXOCNTC] 2.2.1.1.12).
struct FileAsForm {
    std::int32_t number;
    std::wstring (*make)(const NameParts& name, const std::wstring& company);
};

std::span<const FileAsForm> FileAsForms();

/// "Last, First Middle": the form that new contacts have.
inline constexpr std::int32_t kLastCommaFirst = 0x8017;
/// A text of the user's own.
inline constexpr std::int32_t kOwnFileAs = -1;

/// The name in a form; empty for a number that no form has.
std::wstring MakeFileAs(std::int32_t number, const NameParts& name, const std::wstring& company);
/// The form that gives this text, or kOwnFileAs.
std::int32_t FindFileAs(const std::wstring& text, const NameParts& name, const std::wstring& company);

} // namespace standin::outlook
