// Temporary files, and running the console with its streams in files.
#include "Places.h"

#include <windows.h>

#include <fstream>
#include <memory>
#include <stdexcept>

namespace {

struct CloseHandleOf {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseHandleOf>;

Handle OpenInheritable(const std::wstring& path, DWORD access) {
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return Handle(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::wstring Quoted(const std::wstring& argument) {
    return L"\"" + argument + L"\" ";
}

} // namespace

std::wstring BesideTests(const std::wstring& name) {
    wchar_t path[32768];
    const DWORD size = GetModuleFileNameW(nullptr, path, static_cast<DWORD>(std::size(path)));
    const std::wstring program(path, size);
    return program.substr(0, program.find_last_of(L"\\/") + 1) + name;
}

TemporaryFile::TemporaryFile(const std::string& bytes, const std::wstring& extension) {
    static int count = 0;
    wchar_t folder[MAX_PATH + 1];
    GetTempPathW(static_cast<DWORD>(std::size(folder)), folder);
    m_path = std::wstring(folder) + L"console-tests-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
             std::to_wstring(++count) + extension;
    if (!(std::ofstream(m_path.c_str(), std::ios::binary) << bytes)) {
        throw std::runtime_error("no temporary file");
    }
}

TemporaryFile::~TemporaryFile() {
    DeleteFileW(m_path.c_str());
}

std::string TemporaryFile::Bytes() const {
    std::ifstream file(m_path.c_str(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

ConsoleProcess::ConsoleProcess(const std::vector<std::wstring>& arguments, const std::string& input)
    : m_input(input) {
    const std::wstring program = BesideTests(L"varden.exe");
    std::wstring line = Quoted(program) + Quoted(L"--plugin") + Quoted(TestPluginFile());
    for (const std::wstring& argument : arguments) {
        line += Quoted(argument);
    }
    const Handle standardInput = OpenInheritable(m_input.Path(), GENERIC_READ);
    const Handle output = OpenInheritable(m_output.Path(), GENERIC_WRITE);
    const Handle errors = OpenInheritable(m_errors.Path(), GENERIC_WRITE);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = standardInput.get();
    startup.hStdOutput = output.get();
    startup.hStdError = errors.get();
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process)) {
        throw std::runtime_error("varden.exe does not start");
    }
    CloseHandle(process.hThread);
    m_process = process.hProcess;
}

ConsoleProcess::~ConsoleProcess() {
    Abort();
    CloseHandle(m_process);
}

ProgramResult ConsoleProcess::Wait() {
    WaitForSingleObject(m_process, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(m_process, &status);
    return {static_cast<int>(status), m_output.Bytes(), m_errors.Bytes()};
}

bool ConsoleProcess::IsRunning() const {
    return WaitForSingleObject(m_process, 0) == WAIT_TIMEOUT;
}

void ConsoleProcess::Abort() {
    if (IsRunning()) {
        TerminateProcess(m_process, 1);
        WaitForSingleObject(m_process, INFINITE);
    }
}

ProgramResult RunConsole(const std::vector<std::wstring>& arguments, const std::string& input) {
    return ConsoleProcess(arguments, input).Wait();
}

ProgramResult RunScript(const std::string& script, std::vector<std::wstring> arguments) {
    const TemporaryFile file(script);
    arguments.push_back(file.Path());
    ProgramResult result = RunConsole(arguments);
    const std::string path(file.Path().begin(), file.Path().end());
    for (std::size_t at = result.errors.find(path); at != std::string::npos; at = result.errors.find(path)) {
        result.errors.replace(at, path.size(), "SCRIPT");
    }
    return result;
}
