// The plug-in's mailbox and watch, memory, the table's rows.
#include "Bench.h"

#include "Script.h"

#include "tests/support/ImportSpy.h"

#include <windows.h>

#include <psapi.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace varden::bench {

namespace {

using standin::Side;

PROCESS_MEMORY_COUNTERS_EX MemoryCounters() {
    PROCESS_MEMORY_COUNTERS_EX counters{};
    counters.cb = sizeof counters;
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                         sizeof counters);
    return counters;
}

HHOOK WINAPI NoHook(int, HOOKPROC, HINSTANCE, DWORD) {
    return nullptr;
}

BOOL WINAPI NoUnhook(HHOOK) {
    return TRUE;
}

void* Replace(const char* function, void* replacement) {
    return tests::ReplaceImport(GetModuleHandleW(L"VardenBridge.fmx64"), "user32.dll", function, replacement);
}

} // namespace

Bench::Bench() : m_plugin(m_watch) {
    Outlook().Reset();
    Outlook().CloseWindowsAtOnce(true);
}

std::wstring Bench::KeepOnDisk() {
    std::wstring folder = (std::filesystem::temp_directory_path() / L"varden-bench-mailbox").wstring();
    std::filesystem::remove_all(folder);
    if (!Outlook().OpenMailbox(folder).ok) {
        throw std::runtime_error("the mailbox folder can't be made");
    }
    return folder;
}

Cost Bench::Measure(double roundTrip, const std::function<int()>& work) {
    m_watch.Reset();
    m_watch.SetRoundTrip(roundTrip);
    const auto start = std::chrono::steady_clock::now();
    const int records = work();
    const std::chrono::duration<double, std::micro> taken = std::chrono::steady_clock::now() - start;
    m_watch.SetRoundTrip(0);
    const double calls = static_cast<double>(m_watch.Calls(Side::Outlook) + m_watch.Calls(Side::Mapi));
    return {taken.count() / records, calls / records};
}

Cost Bench::Compare(const Pace& pace, const std::function<int()>& direct,
                    const std::function<int()>& plugin) {
    PrintPace(pace);
    const Cost limit = Measure(pace.microseconds, direct);
    PrintCost("C++ client (the limit)", limit, limit);
    PrintCost("plug-in", Measure(pace.microseconds, plugin), limit);
    const WithoutHooks none;
    PrintCost("plug-in without its hooks", Measure(pace.microseconds, plugin), limit);
    return limit;
}

WithoutHooks::WithoutHooks()
    : m_set(Replace("SetWindowsHookExW", reinterpret_cast<void*>(&NoHook))),
      m_unhook(Replace("UnhookWindowsHookEx", reinterpret_cast<void*>(&NoUnhook))) {
}

WithoutHooks::~WithoutHooks() {
    Replace("SetWindowsHookExW", m_set);
    Replace("UnhookWindowsHookEx", m_unhook);
}

void PrintCost(const char* client, const Cost& cost, const Cost& limit) {
    std::printf("  %-28s %10.1f us %8.2f calls   time x %.2f, calls x %.2f\n", client, cost.microseconds,
                cost.calls, cost.microseconds / limit.microseconds, cost.calls / limit.calls);
}

void PrintScript(const wchar_t* name, const std::wstring& mailbox, const Pace& pace, const Cost& limit) {
    const ScriptResult script = RunScript(name, mailbox, pace);
    PrintCost("VBScript",
              {script.seconds * 1e6 / script.records, static_cast<double>(script.calls) / script.records},
              limit);
}

std::wstring FileOf(std::size_t bytes) {
    std::wstring path = (std::filesystem::temp_directory_path() / L"varden-bench-file.bin").wstring();
    std::vector<char> block(4 * 1024);
    for (std::size_t i = 0; i < block.size(); ++i) {
        block[i] = static_cast<char>(i * 31 + i / 251);
    }
    std::ofstream file(path.c_str(), std::ios::binary);
    for (std::size_t written = 0; written < bytes; written += block.size()) {
        file.write(block.data(), static_cast<std::streamsize>(block.size()));
    }
    return path;
}

std::size_t PeakBytes() {
    return MemoryCounters().PeakWorkingSetSize;
}

std::size_t ResidentBytes() {
    return MemoryCounters().WorkingSetSize;
}

} // namespace varden::bench
