// The table of codes and messages, and the record's three operations.
#include "LastError.h"

#include "ErrorCodes.h"
#include "Text.h"
#include "mapi/Diagnostics.h"

#include <algorithm>
#include <array>

namespace varden {

namespace {

struct ErrorRow {
    std::int32_t code;
    std::wstring_view message;
};

constexpr std::array kErrorMessages{
    ErrorRow{0, L"SUCCESS"},
    ErrorRow{-3, L"Invalid Number of Parameters"},
    ErrorRow{-4, L"Invalid Parameter value(s)"},
    ErrorRow{-200, L"Library failed to load"},
    ErrorRow{-300, L"The specified file cannot be found"},
    ErrorRow{-301, L"The specified file cannot be found"},
    ErrorRow{-302, L"The specified folder cannot be accessed"},
    ErrorRow{-400, L"System Error"},
    ErrorRow{-998, L"Unknown Exception"},
    ErrorRow{-999, L"COM Exception"},
    ErrorRow{-1000, L"Outlook Logon Failed"},
    ErrorRow{-1001, L"Outlook not started or Authenticate not called"},
    ErrorRow{-1002, L"This Version of Outlook is not supported."},
    ErrorRow{-1003, L"Cannot Find Root Folder"},
    ErrorRow{-1011, L"Missing Field Name Parameter"},
    ErrorRow{-1012, L"Save Path Missing"},
    ErrorRow{-1013, L"Missing Path to Attachment"},
    ErrorRow{-1015, L"Folder Not Found"},
    ErrorRow{-1016, L"Invalid Path or File Name"},
    ErrorRow{-1017, L"Malformed or invalid root folder name"},
    ErrorRow{-1018, L"Root folder not selected"},
    ErrorRow{-1019, L"Custom field does not exist"},
    ErrorRow{-1020, L"Save called without calling New Record first"},
    ErrorRow{-1021, L"Invalid module name called"},
    ErrorRow{-1022, L"Invalid field name passed"},
    ErrorRow{-1023, L"Item operation called without opening/creating a record"},
    ErrorRow{-1024, L"Invalid Outlook ID"},
    ErrorRow{-1025, L"Unable to save record"},
    ErrorRow{-1026, L"Must navigate to a folder before operation"},
    ErrorRow{-1027, L"Outlook Entry ID not found"},
    ErrorRow{-1028, L"Unable to find records"},
    ErrorRow{-1029, L"Unable to locate destination folder"},
    ErrorRow{-1030, L"GetFirstRootFolder not called"},
    ErrorRow{-1031, L"Unable to access root folders"},
    ErrorRow{-1032, L"Unable to access folder"},
    ErrorRow{-1033, L"Folder not created or already exists"},
    ErrorRow{-1034, L"Invalid ExcludeDistList argument"},
    ErrorRow{-1035, L"Invalid ExcludePrivate arguemnet"},
    ErrorRow{-1036, L"Item type does not match destination folder"},
    ErrorRow{-1038, L"Unable to locate record"},
    ErrorRow{-1040, L"Invalid attachment number"},
    ErrorRow{-1041, L"No attachments found"},
    ErrorRow{-1087, L"Invalid folder name"},
    ErrorRow{-1088, L"Invalid folder type"},
    ErrorRow{-1089, L"Invalid value for field"},
    ErrorRow{-1090, L"Unable to access field or invalid custom field type"},
    ErrorRow{-1091, L"Unable to retrieve value or invalid value for the custom field"},
    ErrorRow{-1092, L"Item does not support custom fields"},
    ErrorRow{-1093, L"User properties unavailable for item"},
    ErrorRow{-1094, L"Invalid type for custom field"},
    ErrorRow{-1095, L"Item is not supported in this version of the plug-in"},
    ErrorRow{-1096, L"Field is read-only"},
    ErrorRow{-1097, L"MAPI Subsystem error"},
    ErrorRow{-1098, L"Invalid parameter "},
    ErrorRow{-1099, L"Function unavailable"},
    ErrorRow{-1100, L"Error accessing shared folder"},
    ErrorRow{-1200, L"Unable to restrict items"},
};

constexpr std::wstring_view kUndefinedError = L"Undefined error. ";

} // namespace

std::wstring_view ErrorMessage(std::int32_t code) {
    const auto row = std::ranges::find(kErrorMessages, code, &ErrorRow::code);
    return row == kErrorMessages.end() ? kUndefinedError : row->message;
}

void SetLastErrorRecord(std::int32_t code, std::uint32_t subcode, LastErrorRecord& record,
                        std::wstring_view extra) {
    ClearLastErrorRecord(record);
    record.code = code;
    record.subcode = subcode;
    record.extra = extra;
    record.message = ErrorMessage(code);
}

void ClearLastErrorRecord(LastErrorRecord& record) {
    record.extra.reset();
    record.code = 0;
    record.subcode = 0;
    record.message = L"Success";
}

std::wstring DescribeLastError(const LastErrorRecord& record, const std::optional<std::wstring>& type) {
    const std::wstring message = record.message.value_or(L"");
    const std::wstring extra = record.extra.value_or(L"");
    const bool asText = !type || EqualIgnoringCase(*type, L"text");
    if (!asText) {
        return FormatText(L"%d", record.code);
    }
    std::wstring text = message;
    if (record.subcode != 0) {
        text += FormatText(L"\rError: %0.8X", record.subcode);
        if (record.code == error::kMapi) {
            text += L'\r';
            text += mapi_HResultName(static_cast<HRESULT>(record.subcode));
        }
    }
    if (!extra.empty()) {
        text += L'\r';
        text += extra;
    }
    return text;
}

} // namespace varden
