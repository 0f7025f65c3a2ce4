// One use of each script function, as a script makes it: what the three harnesses run through. A new function
// joins by one row.
#pragma once

#include "ScriptTest.h"

#include <span>

namespace varden::tests {

/// What a script has done before the call.
enum class Standing {
    Nothing, ///< not even logged on
    LoggedOn,
    InInbox, ///< a folder with two mails is open
    OnMail,  ///< a mail of it is the current record, with recipients, a sender, a body
    OnNewMail,
    OnContact,
    OnAppointment,
    OnAcceptance, ///< the appointment of a request that arrived, about to be accepted
    OnTask,
    OnNote,
    OnPattern,    ///< the recurrence pattern of an appointment is open
    OnExceptions, ///< and its exceptions have been counted
    OnDistList,
};

struct ScriptedUse {
    const wchar_t* function;
    Texts arguments;
    Standing before;
    const wchar_t* variant = L""; ///< tells uses of the same function apart
};

/// At least one use of every function that the full plug-in registers.
std::span<const ScriptedUse> ScriptedUses();

/// "VARD_GetFieldData_Subject" for test names.
std::string NameOf(const ScriptedUse& use);

/// Fills the world with what the uses look for.
void FillWorld(standin::mailbox::Mailbox& world);

/// Brings the plug-in to where the use begins, by script calls. An arrangement that fails is a failure of the
/// test.
void Arrange(Plugin& plugin, Standing standing);

/// The arguments of the use, with what stands for entry ids and paths replaced.
Texts ArgumentsOf(Plugin& plugin, const ScriptedUse& use);

} // namespace varden::tests
