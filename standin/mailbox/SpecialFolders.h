// The numbers of special folders (OlDefaultFolders).
#pragma once

#include <cstdint>

namespace standin::mailbox {

inline constexpr std::int32_t kDeletedItems = 3;
inline constexpr std::int32_t kOutbox = 4;
inline constexpr std::int32_t kSentItems = 5;
inline constexpr std::int32_t kInbox = 6;
inline constexpr std::int32_t kCalendar = 9;
inline constexpr std::int32_t kContacts = 10;
inline constexpr std::int32_t kJournal = 11;
inline constexpr std::int32_t kNotes = 12;
inline constexpr std::int32_t kTasks = 13;
inline constexpr std::int32_t kDrafts = 16;
inline constexpr std::int32_t kAllPublicFolders = 18;
inline constexpr std::int32_t kConflicts = 19;
inline constexpr std::int32_t kSyncIssues = 20;
inline constexpr std::int32_t kLocalFailures = 21;
inline constexpr std::int32_t kServerFailures = 22;
inline constexpr std::int32_t kJunk = 23;

} // namespace standin::mailbox
