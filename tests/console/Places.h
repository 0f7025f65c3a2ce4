// Files and programs of these tests.
#pragma once

#include <string>
#include <vector>

/// A file beside the test program.
std::wstring BesideTests(const std::wstring& name);
inline std::wstring TestPluginFile() {
    return BesideTests(L"console_test_plugin.fmx64");
}

/// A file in the temporary folder, removed at its end.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& bytes, const std::wstring& extension = L".fms");
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::wstring& Path() const { return m_path; }
    std::string Bytes() const;

private:
    std::wstring m_path;
};

struct ProgramResult {
    int status = -1;
    std::string output;
    std::string errors;
};

/// varden.exe at work on the test plug-in, its streams in files.
class ConsoleProcess {
public:
    explicit ConsoleProcess(const std::vector<std::wstring>& arguments, const std::string& input = {});
    ~ConsoleProcess();
    ConsoleProcess(const ConsoleProcess&) = delete;
    ConsoleProcess& operator=(const ConsoleProcess&) = delete;

    ProgramResult Wait();
    bool IsRunning() const;
    /// Ends it as a crash does.
    void Abort();

private:
    TemporaryFile m_input, m_output{""}, m_errors{""};
    void* m_process = nullptr;
};

/// Runs varden.exe on the test plug-in with these arguments and this standard input.
ProgramResult RunConsole(const std::vector<std::wstring>& arguments, const std::string& input = {});
/// The same on a script of this text; "SCRIPT" stands for its path in the error output.
ProgramResult RunScript(const std::string& script, std::vector<std::wstring> arguments = {});
