// The error codes that functions record.
#pragma once

#include <cstdint>

namespace varden::error {

inline constexpr std::int32_t kParameterCount = -3;
inline constexpr std::int32_t kParameterValue = -4;
inline constexpr std::int32_t kLibraryNotLoaded = -200;
inline constexpr std::int32_t kFolderMissing = -301;
inline constexpr std::int32_t kFolderNotWritable = -302;
inline constexpr std::int32_t kLogonFailed = -1000;
inline constexpr std::int32_t kNoSession = -1001;
inline constexpr std::int32_t kOutlookVersion = -1002;
inline constexpr std::int32_t kRootFolderNotFound = -1003;
inline constexpr std::int32_t kFieldNameMissing = -1011;
inline constexpr std::int32_t kSavePathMissing = -1012;
inline constexpr std::int32_t kAttachmentPathMissing = -1013;
inline constexpr std::int32_t kFolderNotFound = -1015;
inline constexpr std::int32_t kPath = -1016;
inline constexpr std::int32_t kRootFolderName = -1017;
inline constexpr std::int32_t kNoRootFolder = -1018;
inline constexpr std::int32_t kCustomFieldMissing = -1019;
inline constexpr std::int32_t kModuleName = -1021;
inline constexpr std::int32_t kFieldName = -1022;
inline constexpr std::int32_t kNoRecord = -1023;
inline constexpr std::int32_t kOutlookId = -1024;
inline constexpr std::int32_t kNotSaved = -1025;
inline constexpr std::int32_t kNoFolder = -1026;
inline constexpr std::int32_t kIdNotFound = -1027;
inline constexpr std::int32_t kRecordsNotFound = -1028;
inline constexpr std::int32_t kRecordNotFound = -1038;
inline constexpr std::int32_t kFolderName = -1087;
inline constexpr std::int32_t kFolderType = -1088;
inline constexpr std::int32_t kFieldValue = -1089;
inline constexpr std::int32_t kCustomFieldType = -1090;
inline constexpr std::int32_t kNoCustomFields = -1092;
inline constexpr std::int32_t kNoUserProperties = -1093;
inline constexpr std::int32_t kCustomFieldTypeWord = -1094;
inline constexpr std::int32_t kItemKind = -1095;
inline constexpr std::int32_t kReadOnly = -1096;
inline constexpr std::int32_t kMapi = -1097;
inline constexpr std::int32_t kParameter = -1098;
inline constexpr std::int32_t kSharedFolder = -1100;
inline constexpr std::int32_t kRestriction = -1200;

// Three codes stand outside the table of messages.

/// An exception that nothing else has named, caught around an engine operation.
inline constexpr std::int32_t kUnhandledException = 1;
/// The exceptions of a recurrence pattern could not be had.
inline constexpr std::int32_t kNoExceptions = 2;
/// A COM failure caught by the operation itself. Not the -999 of the table, which nothing records.
inline constexpr std::int32_t kComException = 999;

} // namespace varden::error
