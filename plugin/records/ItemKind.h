// The kinds of item that Outlook hands out, and what each is to the engine.
#pragma once

#include "outlook/Objects.h"

#include <cstdint>

namespace varden {

class COutlookFuncs;

/// In the order in which kinds are told apart.
enum class ItemKind : std::uint8_t {
    Appointment,
    Contact,
    DistList,
    Document,
    Journal,
    Mail,
    Meeting,
    Note,
    Post,
    Remote,
    Report,
    Sharing,
    Storage,
    Task,
    TaskRequestAccept,
    TaskRequestDecline,
    TaskRequest,
    TaskRequestUpdate,
};
inline constexpr std::size_t kItemKindCount = 18;

/// A record of one of these kinds has no MAPIOBJECT: its message is opened by its entry id.
constexpr bool IsOpenedByEntryId(ItemKind kind) {
    return kind == ItemKind::Note || kind == ItemKind::Storage;
}

/// A kind: the engine's member that holds a record of it, and its words.
struct ItemKindRow {
    ItemKind kind;
    outlook::Reference COutlookFuncs::*member;
    const wchar_t* openWord; ///< in the log, when a record is opened by its id
    const wchar_t* nextWord; ///< in the log, when a walk comes to the record
};

} // namespace varden
