// The script that a user would write instead, run by Windows' script host in a process of its own.
#pragma once

#include "OtherProcess.h"

#include <cstdint>
#include <string>

namespace varden::bench {

struct ScriptResult {
    int records = 0;
    double seconds = 0;
    std::uint64_t calls = 0; ///< into Outlook, of the whole script
};

/// Runs bench/<name> on the mailbox folder at this pace; the script's argument is the count of records.
/// Raises std::runtime_error for a script that failed.
ScriptResult RunScript(const wchar_t* name, const std::wstring& mailbox, const Pace& pace);

} // namespace varden::bench
