// One run of the console: the stand-ins set up as the options say, the plug-in loaded, the script run.
#pragma once

#include "Options.h"
#include "PluginFunctions.h"
#include "Runner.h"
#include "standin/filemaker/Host.h"
#include "standin/outlook/registration/Registration.h"
#include "standin/watch/Watch.h"

#include <array>
#include <cstdint>
#include <string>

namespace standin::console {

/// Exit status for a script or a command line that is wrong.
inline constexpr int kWrong = 2;

class Session {
public:
    /// Sets up the stand-ins, loads and starts the plug-in. Raises Mistake when that can't be done.
    explicit Session(const Options& options);

    /// Runs the script, or the prompt, or lists the functions. Gives the exit status.
    int Run();
    /// Ends the plug-in and tells what is to be told at the end.
    void Close();

private:
    void SetUpOutlook();
    void StartPlugin();
    void BeginScript();
    void ListFunctions();
    int RunScript();
    int RunPrompt();
    void TellCounts();

    const Options m_options;
    const outlook::Registration m_registration;
    Recorder m_recorder;
    filemaker::Host m_host{m_recorder};
    PluginFunctions m_functions{m_host};
    Runner m_runner;
    std::array<std::uint64_t, kSideCount> m_callsBefore{};
    std::array<std::uint64_t, kSideCount> m_callsOfScript{};
};

} // namespace standin::console
