// The orders in which operations on whole records try the kinds. Each works on the first kind that is held,
// or, for an item that nothing holds yet, on the first that it is, and not at all on one that it leaves out.
// What SaveRecord does is a table of its own, in Saving.cpp.
#pragma once

#include "ItemKind.h"

#include <array>

namespace varden::kinds {

using enum ItemKind;

/// DeleteRecord.
inline constexpr std::array kDeleted{Appointment,
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
                                     Task,
                                     TaskRequestAccept,
                                     TaskRequestDecline,
                                     TaskRequest,
                                     TaskRequestUpdate};

/// DeleteRecord's search for the record in its folder. A post isn't looked for, and where it would stand a
/// declined task request is.
inline constexpr std::array kSearched{Appointment,
                                      Contact,
                                      DistList,
                                      Document,
                                      Journal,
                                      Mail,
                                      Meeting,
                                      Note,
                                      TaskRequestDecline,
                                      Remote,
                                      Report,
                                      Sharing,
                                      Storage,
                                      Task,
                                      TaskRequestAccept,
                                      TaskRequestDecline,
                                      TaskRequest,
                                      TaskRequestUpdate};

/// MoveRecord.
inline constexpr std::array kMoved{Appointment,
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
                                   Task,
                                   TaskRequest,
                                   TaskRequestAccept,
                                   TaskRequestDecline,
                                   TaskRequestUpdate};

/// Display.
inline constexpr std::array kDisplayed{Appointment,
                                       Contact,
                                       DistList,
                                       Document,
                                       Journal,
                                       Meeting,
                                       Mail,
                                       Note,
                                       Post,
                                       Report,
                                       Remote,
                                       Sharing,
                                       Task,
                                       TaskRequest,
                                       TaskRequestAccept,
                                       TaskRequestDecline,
                                       TaskRequestUpdate};

/// ReplyToMessage.
inline constexpr std::array kForwarded{Journal, Mail, Post};

} // namespace varden::kinds
