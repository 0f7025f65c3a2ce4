// The benchmarks: each job done by the plug-in and by the other clients on the same mailbox in the same run.
// Prints microseconds and platform calls per record, and their ratios.
//
//     varden_bench [shell] [walk] [write] [delete] [growth] [memory]
#include "Clients.h"
#include "Mailbox.h"
#include "OtherProcess.h"
#include "Script.h"

#include "standin/outlook/Control.h"
#include "standin/outlook/registration/Registration.h"

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <string_view>

namespace varden::bench {

namespace {

using standin::Side;

constexpr int kMails = 10'000;

/// What a stretch of work took.
struct Cost {
    double microseconds = 0; ///< per record
    double calls = 0;        ///< into Outlook and MAPI, per record
};

/// One plug-in and its watch, on a fresh mailbox.
class Bench {
public:
    Bench() : m_plugin(m_watch) {
        Outlook().Reset();
        Outlook().CloseWindowsAtOnce(true);
    }

    standin::outlook::Control& Outlook() { return *m_plugin.Host().Outlook(); }
    standin::mailbox::Mailbox& World() { return Outlook().World(); }
    PluginClient& Plugin() { return m_plugin; }
    standin::Recorder& Watch() { return m_watch; }

    /// Runs the work, which gives the count of its records, with each call at least this long.
    Cost Measure(double roundTrip, const std::function<int()>& work) {
        m_watch.Reset();
        m_watch.SetRoundTrip(roundTrip);
        const auto start = std::chrono::steady_clock::now();
        const int records = work();
        const std::chrono::duration<double, std::micro> taken = std::chrono::steady_clock::now() - start;
        m_watch.SetRoundTrip(0);
        const double calls = static_cast<double>(m_watch.Calls(Side::Outlook) + m_watch.Calls(Side::Mapi));
        return {taken.count() / records, calls / records};
    }

private:
    standin::Recorder m_watch;
    PluginClient m_plugin;
};

void PrintCost(const char* client, const Cost& cost, const Cost& limit) {
    std::printf("  %-28s %10.1f us %8.2f calls   time x %.2f, calls x %.2f\n", client, cost.microseconds,
                cost.calls, cost.microseconds / limit.microseconds, cost.calls / limit.calls);
}

/// Microseconds that the input hooks of one script function cost: the system's own work, which every function
/// pays for.
double MeasureHooks() {
    constexpr int kRounds = 1000;
    const HOOKPROC pass = [](int code, WPARAM w, LPARAM l) { return CallNextHookEx(nullptr, code, w, l); };
    const auto start = std::chrono::steady_clock::now();
    const HMODULE module = GetModuleHandleW(nullptr);
    for (int i = 0; i < kRounds; ++i) {
        const HHOOK keyboard = SetWindowsHookExW(WH_KEYBOARD, pass, nullptr, GetCurrentThreadId());
        const HHOOK mouse = SetWindowsHookExW(WH_MOUSE, pass, module, GetCurrentThreadId());
        UnhookWindowsHookEx(keyboard);
        UnhookWindowsHookEx(mouse);
    }
    const std::chrono::duration<double, std::micro> taken = std::chrono::steady_clock::now() - start;
    return taken.count() / kRounds;
}

void Walk() {
    Bench bench;
    const std::wstring folder = (std::filesystem::temp_directory_path() / L"varden-bench-mailbox").wstring();
    std::filesystem::remove_all(folder);
    if (!bench.Outlook().OpenMailbox(folder).ok) {
        throw std::runtime_error("the mailbox folder can't be made");
    }
    AddMails(FolderNamed(bench.World(), L"Inbox"), kMails);
    bench.Plugin().LogOn();
    const double roundTrip = MeasureRoundTrip(), hooks = MeasureHooks();
    constexpr int kHookedCalls = 6; // a step and five fields
    std::printf("walk: %d mails, five fields each\n", kMails);
    std::printf("  a call to another process here: %.1f us; the input hooks of a script function: %.1f us\n",
                roundTrip, hooks);
    DirectClient direct;
    for (const double latency : {roundTrip, 0.0}) {
        std::printf(" each call %s\n", latency > 0 ? "as long as one to another process" : "in this process");
        const Cost limit = bench.Measure(latency, [&] { return direct.WalkInbox(); });
        const Cost plugin = bench.Measure(latency, [&] { return bench.Plugin().WalkInbox(); });
        const ScriptResult script = RunScript(L"walk.vbs", folder, latency);
        PrintCost("C++ client (the limit)", limit, limit);
        PrintCost("plug-in", plugin, limit);
        PrintCost("plug-in less its hooks", {plugin.microseconds - kHookedCalls * hooks, plugin.calls},
                  limit);
        PrintCost("VBScript",
                  {script.seconds * 1e6 / script.records, static_cast<double>(script.calls) / script.records},
                  limit);
    }
}

void Write() {
    constexpr int kContacts = 2'000;
    Bench bench;
    const std::wstring folder = (std::filesystem::temp_directory_path() / L"varden-bench-mailbox").wstring();
    std::filesystem::remove_all(folder);
    if (!bench.Outlook().OpenMailbox(folder).ok) {
        throw std::runtime_error("the mailbox folder can't be made");
    }
    bench.Plugin().LogOn();
    const double roundTrip = MeasureRoundTrip();
    std::printf(
        "write: %d contacts, twenty fields each, saved to disk\n  a call to another process: %.1f us\n",
        kContacts, roundTrip);
    DirectClient direct;
    const Cost limit = bench.Measure(roundTrip, [&] { return direct.WriteContacts(kContacts); });
    const Cost plugin = bench.Measure(roundTrip, [&] { return bench.Plugin().WriteContacts(kContacts); });
    const ScriptResult script = RunScript(L"write.vbs", folder, roundTrip);
    PrintCost("C++ client (the limit)", limit, limit);
    PrintCost("plug-in", plugin, limit);
    PrintCost("VBScript",
              {script.seconds * 1e6 / script.records, static_cast<double>(script.calls) / script.records},
              limit);
}

void DeleteAll() {
    std::printf("delete: VARD_DeleteAllRecords by the count of records\n");
    for (const int mails : {1'000, 2'000, 4'000}) {
        Bench bench;
        AddMails(FolderNamed(bench.World(), L"Inbox"), mails);
        bench.Plugin().LogOn();
        bench.Plugin().Call(L"VARD_OpenFolder", {L"/Inbox"});
        const Cost cost = bench.Measure(0, [&] {
            bench.Plugin().Call(L"VARD_DeleteAllRecords", {L"no"});
            return mails;
        });
        std::printf("  %6d mails %10.1f us %8.3f calls a record\n", mails, cost.microseconds, cost.calls);
    }
}

void Shell() {
    constexpr int kCalls = 100'000;
    Bench bench;
    std::printf("shell: functions that never reach the engine\n");
    struct Case {
        const char* what;
        const wchar_t* function;
        int calls;
    };
    for (const Case& each : {Case{"VARD_Version, without hooks", L"VARD_Version", kCalls},
                             Case{"VARD_GetLastError, with hooks", L"VARD_GetLastError", kCalls / 20}}) {
        bench.Watch().Reset();
        const Cost cost = bench.Measure(0, [&] {
            for (int i = 0; i < each.calls; ++i) {
                bench.Plugin().Call(each.function);
            }
            return each.calls;
        });
        std::printf("  %-30s %8.2f us, %.0f calls of FileMaker's\n", each.what, cost.microseconds,
                    static_cast<double>(bench.Watch().Calls(Side::FileMaker)) / each.calls);
    }
}

void Growth() {
    std::printf("growth: the walk by the size of the Inbox\n");
    Cost first;
    for (const int mails : {1'000, 10'000, 50'000}) {
        Bench bench;
        AddMails(FolderNamed(bench.World(), L"Inbox"), mails);
        bench.Plugin().LogOn();
        const Cost cost = bench.Measure(0, [&] { return bench.Plugin().WalkInbox(); });
        first = first.calls > 0 ? first : cost;
        std::printf("  %6d mails %10.1f us %8.3f calls   time x %.2f\n", mails, cost.microseconds, cost.calls,
                    cost.microseconds / first.microseconds);
    }
    constexpr int kFolders = 10'000;
    Bench bench;
    AddSubfolders(FolderNamed(bench.World(), L"Inbox"), kFolders);
    bench.Plugin().LogOn();
    const Cost cost = bench.Measure(0, [&] {
        bench.Plugin().Call(L"VARD_GetFirstFolder");
        return kFolders;
    });
    std::printf("  %6d folders, VARD_GetFirstFolder: %.1f us, %.3f calls a folder\n", kFolders,
                cost.microseconds, cost.calls);
}

std::size_t PrivateBytes() {
    PROCESS_MEMORY_COUNTERS_EX counters{};
    counters.cb = sizeof counters;
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                         sizeof counters);
    return counters.PrivateUsage;
}

void Memory() {
    constexpr int kCalls = 1'000'000, kWarm = 10'000;
    Bench bench;
    AddMails(FolderNamed(bench.World(), L"Inbox"), 10);
    PluginClient& plugin = bench.Plugin();
    plugin.LogOn();
    plugin.Call(L"VARD_OpenFolder", {L"/Inbox"});
    plugin.Call(L"VARD_GetFirstRecord");
    std::size_t bytes = 0;
    standin::outlook::LiveCounts live;
    for (int i = 0; i < kCalls; ++i) {
        // The functions with hooks are slow here, so most calls are of one without.
        if (i % 10 == 0) {
            plugin.Call(L"VARD_GetFieldData", {i % 20 == 0 ? L"From" : L"Body"});
        } else {
            plugin.Call(L"VARD_Version");
        }
        if (i == kWarm) {
            bytes = PrivateBytes();
            live = bench.Outlook().Live();
        }
    }
    std::printf("memory: %d calls\n", kCalls);
    std::printf("  private bytes after %d calls %zu, at the end %zu; live counts %s\n", kWarm, bytes,
                PrivateBytes(), bench.Outlook().Live() == live ? "unchanged" : "CHANGED");
}

struct Job {
    std::string_view name;
    void (*run)();
};
constexpr std::array kJobs{Job{"shell", Shell},      Job{"walk", Walk},     Job{"write", Write},
                           Job{"delete", DeleteAll}, Job{"growth", Growth}, Job{"memory", Memory}};

} // namespace

} // namespace varden::bench

int main(int count, char** arguments) {
    using namespace varden::bench;
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    CoInitialize(nullptr);
    try {
        const std::vector<std::string_view> words(arguments + 1, arguments + count);
        if (words.size() == 2 && words[0] == "--serve") {
            ServeObject(std::filesystem::path(words[1]).wstring());
            return 0;
        }
        const standin::outlook::Registration registration;
        for (const Job& job : kJobs) {
            if (words.empty() || std::ranges::find(words, job.name) != words.end()) {
                job.run();
            }
        }
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
