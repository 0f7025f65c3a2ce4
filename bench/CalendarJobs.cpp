// Recurrence and meetings.
#include "Bench.h"
#include "DirectClient.h"
#include "Jobs.h"
#include "OtherProcess.h"

#include <cstdio>

namespace varden::bench {

namespace {

constexpr int kExceptions = 100;

std::wstring DayOf(int month, int day) {
    return std::to_wstring(month) + L"/" + std::to_wstring(day) + L"/2026 ";
}

/// A daily appointment of half an hour with some of its occurrences moved, saved and current.
void MakeSeries(PluginClient& plugin) {
    plugin.Call(L"VARD_OpenFolder", {L"/Calendar"});
    plugin.Call(L"VARD_NewRecord", {L"Calendar"});
    plugin.Call(L"VARD_SetFieldData", {L"Start", L"1/1/2026 9:00 AM"});
    plugin.Call(L"VARD_SetFieldData", {L"Duration", L"30"});
    plugin.Call(L"VARD_RPOpenRecurrencePattern");
    plugin.Call(L"VARD_SetFieldData", {L"Recurrence Type", L"Daily"});
    plugin.Call(L"VARD_SetFieldData", {L"Occurrences", L"200"});
    const std::wstring id = plugin.Call(L"VARD_SaveRecord");
    plugin.Call(L"VARD_OpenRecord", {id});
    plugin.Call(L"VARD_RPOpenRecurrencePattern");
    for (int i = 0; i < kExceptions; ++i) {
        const std::wstring day = DayOf(1 + i / 28, 1 + i % 28);
        plugin.Call(L"VARD_RPOpenOccurrence", {day + L"9:00 AM"});
        plugin.Call(L"VARD_SetFieldData", {L"Start", day + L"2:00 PM"});
        plugin.Call(L"VARD_RPCloseOccurrenceItem", {L"1"});
    }
    plugin.Call(L"VARD_RPCloseRecurrencePattern");
}

} // namespace

void MeasurePattern() {
    constexpr int kRounds = 50;
    Bench bench;
    bench.Plugin().LogOn();
    MakeSeries(bench.Plugin());
    DirectClient direct;
    std::printf("pattern: opened, its fields read, %d exceptions walked\n", kExceptions);
    direct.ReadPattern(1);
    bench.Plugin().ReadPattern(1);
    for (const Pace& pace : PacesOf(kRounds)) {
        bench.Compare(
            pace, [&] { return direct.ReadPattern(pace.records); },
            [&] { return bench.Plugin().ReadPattern(pace.records); });
    }
}

void MeasureAttendees() {
    Bench bench;
    PluginClient& plugin = bench.Plugin();
    plugin.LogOn();
    plugin.Call(L"VARD_OpenFolder", {L"/Calendar"});
    std::printf("attendees: a meeting request sent\n");
    for (const int attendees : {1, 1, 10, 100}) {
        std::wstring list;
        for (int i = 0; i < attendees; ++i) {
            list += L"guest" + std::to_wstring(i) + L"@example.com;";
        }
        plugin.Call(L"VARD_NewRecord", {L"Calendar"});
        plugin.Call(L"VARD_SetFieldData", {L"Start", L"3/2/2026 9:00 AM"});
        plugin.Call(L"VARD_SetFieldData", {L"Meeting Status", L"Meeting"});
        plugin.Call(L"VARD_SetFieldData", {L"Required Attendees", list});
        const Cost cost = bench.Measure(0, [&] {
            plugin.Call(L"VARD_SaveRecord", {L"Send"});
            return 1;
        });
        std::printf("  %4d attendees %10.1f us %8.0f calls\n", attendees, cost.microseconds, cost.calls);
    }
}

} // namespace varden::bench
