// The function shell, and memory.
#include "Bench.h"
#include "Jobs.h"
#include "Mailbox.h"

#include <cstdio>

namespace varden::bench {

void MeasureShell() {
    constexpr int kCalls = 100'000;
    struct Case {
        const char* what;
        const wchar_t* function;
        int calls;
    };
    Bench bench;
    std::printf("shell: functions that never reach the engine\n");
    for (const Case& each : {Case{"VARD_Version, without hooks", L"VARD_Version", kCalls},
                             Case{"VARD_GetLastError, with hooks", L"VARD_GetLastError", kCalls / 20}}) {
        const Cost cost = bench.Measure(0, [&] {
            for (int i = 0; i < each.calls; ++i) {
                bench.Plugin().Call(each.function);
            }
            return each.calls;
        });
        std::printf("  %-30s %8.2f us, %.0f calls of FileMaker's\n", each.what, cost.microseconds,
                    static_cast<double>(bench.Watch().Calls(standin::Side::FileMaker)) / each.calls);
    }
}

void MeasureMemory() {
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
            bytes = ResidentBytes();
            live = bench.Outlook().Live();
        }
    }
    std::printf("memory: %d calls\n", kCalls);
    std::printf("  resident bytes after %d calls %zu, at the end %zu; live counts %s\n", kWarm, bytes,
                ResidentBytes(), bench.Outlook().Live() == live ? "unchanged" : "CHANGED");
}

} // namespace varden::bench
