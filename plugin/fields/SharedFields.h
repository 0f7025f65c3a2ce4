// Fields that several kinds of item read or write in a way of their own, and words that several share.
#pragma once

#include "FieldTable.h"

namespace varden {

/// The name of the current folder, which is no property of the item.
std::wstring GetInFolder(const FieldContext& context, const FieldRow& row);

/// The text body with line feeds as line ends, whatever they were.
std::wstring GetBodyWithLineFeeds(const FieldContext& context, const FieldRow& row);

/// The number of the flag's colour; "Complete" for a completed flag without one, "None" where it can't be
/// read.
std::wstring GetFlagIcon(const FieldContext& context, const FieldRow& row);
/// Marks the item and gives the flag a colour by its first letter; saves the item.
bool SetFlagIcon(const FieldContext& context, const FieldRow& row, const std::wstring& data);
/// Writes the flag by its first letter; saves the item.
bool SetFlagStatus(const FieldContext& context, const FieldRow& row, const std::wstring& data);

/// A truth handed on as if it were a text: false is empty.
std::wstring GetTruthOrEmpty(const FieldContext& context, const FieldRow& row);
constexpr FieldGet truthOrEmpty(const wchar_t* member) {
    return {.conversion = GetBy::Special, .member = member, .special = GetTruthOrEmpty};
}

extern const EnumWords kDownloadStateWords;
extern const EnumWords kMarkForDownloadWords;

} // namespace varden
