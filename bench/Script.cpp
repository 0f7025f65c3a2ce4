// Starts cscript and reads what it printed.
#include "Script.h"

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace varden::bench {

namespace {

/// Runs the command with its output in a file; gives its exit status.
DWORD RunInto(std::wstring command, const std::wstring& outputFile) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const HANDLE output = CreateFileW(outputFile.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                      CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = output;
    PROCESS_INFORMATION process{};
    const BOOL started = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                        &startup, &process);
    CloseHandle(output);
    if (!started) {
        throw std::runtime_error("the script host can't be started");
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return status;
}

} // namespace

ScriptResult RunScript(const wchar_t* name, const std::wstring& mailbox, const Pace& pace) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    const std::filesystem::path output = folder / L"varden-bench-output",
                                counts = folder / L"varden-bench-counts";
    SetEnvironmentVariableW(L"VARDEN_MAILBOX", mailbox.c_str());
    SetEnvironmentVariableW(L"VARDEN_ROUND_TRIP", std::to_wstring(pace.microseconds).c_str());
    SetEnvironmentVariableW(L"VARDEN_COUNTS", counts.c_str());
    const DWORD status = RunInto(L"cscript.exe //nologo \"Z:" VARDEN_SOURCE_DIR L"/bench/" +
                                     std::wstring(name) + L"\" " + std::to_wstring(pace.records),
                                 output.wstring());
    ScriptResult result;
    double milliseconds = 0;
    std::ifstream(output) >> result.records >> milliseconds;
    std::ifstream(counts) >> result.calls;
    if (status != 0 || result.records == 0 || result.calls == 0) {
        throw std::runtime_error("the script failed");
    }
    result.seconds = milliseconds / 1000;
    return result;
}

} // namespace varden::bench
