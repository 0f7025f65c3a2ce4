// Fields that several kinds of item read or write in a way of their own, and words that several share.
#pragma once

#include "FieldTable.h"

#include "mapi/Tags.h"

#include <algorithm>
#include <array>

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

/// What documents, remote and sharing items and the answers to task requests have in common: all is read and
/// nothing written.
inline constexpr std::array kUnwrittenFields{
    FieldRow{L"Billing Information", get::text(L"BillingInformation")},
    FieldRow{L"Body", get::mapiText(mapi::tag::kBody)},
    FieldRow{L"Categories", get::text(L"Categories")},
    FieldRow{L"Class", get::integer(L"Class")},
    FieldRow{L"Companies", get::text(L"Companies")},
    FieldRow{L"Conversation Index", get::text(L"ConversationIndex")},
    FieldRow{L"Conversation Topic", get::text(L"ConversationTopic")},
    FieldRow{L"Download State", get::words(L"DownloadState", kDownloadStateWords)},
    FieldRow{L"Form Name", get::text(L"MessageClass")},
    FieldRow{L"Importance", get::words(L"Importance", kImportanceWords)},
    FieldRow{L"Is Conflict", get::boolean(L"IsConflict")},
    FieldRow{L"Message Class", get::text(L"MessageClass")},
    FieldRow{L"Mileage", get::text(L"Mileage")},
    FieldRow{L"Saved", get::boolean(L"Saved")},
    FieldRow{L"Sensitivity", get::words(L"Sensitivity", kSensitivityWords)},
    FieldRow{L"Size", get::integer(L"Size")},
    FieldRow{L"Subject", get::text(L"Subject")},
    FieldRow{L"Unread", get::boolean(L"UnRead")},
};

/// The rows of both, by name.
template <std::size_t CountA, std::size_t CountB>
constexpr auto Joined(const std::array<FieldRow, CountA>& shared, const std::array<FieldRow, CountB>& own) {
    std::array<FieldRow, CountA + CountB> fields{};
    std::ranges::copy(own, std::ranges::copy(shared, fields.begin()).out);
    std::ranges::sort(fields, {}, &FieldRow::name);
    return fields;
}

} // namespace varden
