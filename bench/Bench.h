// One benchmark: a plug-in on a fresh mailbox, what its work costs, and the table's rows.
#pragma once

#include "OtherProcess.h"
#include "PluginClient.h"

#include "standin/mailbox/Mailbox.h"
#include "standin/outlook/Control.h"

#include <functional>
#include <string>

namespace varden::bench {

/// What a stretch of work took.
struct Cost {
    double microseconds = 0; ///< per record
    double calls = 0;        ///< into Outlook and MAPI, per record
};

/// A plug-in, logged on, and its watch, on the sample mailbox.
class Bench {
public:
    Bench();

    /// Keeps the mailbox in a folder from now on, and gives its path.
    std::wstring KeepOnDisk();

    standin::outlook::Control& Outlook() { return *m_plugin.Host().Outlook(); }
    standin::mailbox::Mailbox& World() { return Outlook().World(); }
    PluginClient& Plugin() { return m_plugin; }
    standin::Recorder& Watch() { return m_watch; }

    /// Runs the work, which gives the count of its records, with each call at least this many microseconds
    /// long.
    Cost Measure(double roundTrip, const std::function<int()>& work);
    /// The pace's heading, both clients' rows, and the plug-in's without its hooks. Gives the direct
    /// client's.
    Cost Compare(const Pace& pace, const std::function<int()>& direct, const std::function<int()>& plugin);

private:
    standin::Recorder m_watch;
    PluginClient m_plugin;
};

/// While it lives, the plug-in's input hooks are none. They are the system's own work, of which every
/// function has its share: the plug-in without them shows its own.
class WithoutHooks {
public:
    WithoutHooks();
    ~WithoutHooks();
    WithoutHooks(const WithoutHooks&) = delete;
    WithoutHooks& operator=(const WithoutHooks&) = delete;

private:
    void* m_set;
    void* m_unhook;
};

/// A row of the table: the cost, and its ratios to the limit.
void PrintCost(const char* client, const Cost& cost, const Cost& limit);

/// The row of the script in bench/, run by Windows' script host on the mailbox folder.
void PrintScript(const wchar_t* name, const std::wstring& mailbox, const Pace& pace, const Cost& limit);

/// Writes a file of this many bytes, a multiple of 4 KiB, into the system's folder for such, and gives its
/// path.
std::wstring FileOf(std::size_t bytes);

/// The process's memory that is resident, in bytes: the most so far, and now.
std::size_t PeakBytes();
std::size_t ResidentBytes();

} // namespace varden::bench
