// The command line.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace standin::console {

/// A call that is to fail by plan.
struct PlannedFailure {
    std::uint64_t number = 0; ///< which Outlook or MAPI call of the script, from 1
    HRESULT status = S_OK;
};

struct Options {
    std::wstring script; ///< empty: the prompt
    std::wstring plugin; ///< empty: the plug-in beside the program
    std::optional<std::wstring> mailbox;
    std::optional<std::wstring> versionText;
    std::optional<std::wstring> trace;
    std::optional<PlannedFailure> failure;
    bool withoutOutlook = false;
    bool counts = false;
    bool functions = false;
    bool help = false;
};

/// Raises Mistake for a command line that means nothing.
Options ParseOptions(const std::vector<std::wstring>& arguments);

/// How the program is called.
extern const wchar_t* const kUsage;

} // namespace standin::console
