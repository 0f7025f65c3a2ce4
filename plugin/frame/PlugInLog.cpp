// The session log's file and lines.
#include "PlugInLog.h"

#include <shlobj.h>

#include <ctime>
#include <exception>

namespace varden {

namespace {

constexpr const wchar_t* kCollection = L"TEMBO";
constexpr const wchar_t* kFileName = L"LogFile.txt";

constexpr int kStampCapacity = 128;

/// The desktop as the given shell folder names it; none when the shell has no such folder.
std::optional<std::wstring> Desktop(int folder) {
    wchar_t path[2056] = {};
    if (FAILED(SHGetFolderPathW(nullptr, folder, nullptr, SHGFP_TYPE_CURRENT, path))) {
        return std::nullopt;
    }
    return path;
}

bool EnterFolder(const wchar_t* name) {
    return SetCurrentDirectoryW(name) || (CreateDirectoryW(name, nullptr) && SetCurrentDirectoryW(name));
}

/// Makes the product's log folder and leaves the process's current directory in it. Empty when that fails.
std::wstring BuildDefaultPath(const std::wstring& product) {
    const auto desktop = Desktop(CSIDL_DESKTOPDIRECTORY);
    if (!desktop || !SetCurrentDirectoryW(desktop->c_str()) || !EnterFolder(kCollection) ||
        !EnterFolder(product.c_str())) {
        return {};
    }
    return *desktop + L'\\' + kCollection + L'\\' + product + L'\\' + kFileName;
}

bool FileExists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string TimeStamp() {
    const std::time_t now = std::time(nullptr);
    char stamp[kStampCapacity];
    const std::tm* local = std::localtime(&now);
    return local && std::strftime(stamp, sizeof stamp, "%Y-%m-%d %H:%M:%S", local) != 0 ? stamp
                                                                                        : std::string();
}

} // namespace

CPlugInLog::CPlugInLog(std::wstring_view product, const std::optional<std::wstring>& path)
    : m_pszProduct(product) {
    m_pszPath = path ? *path : BuildDefaultPath(m_pszProduct);
    WriteLine(L"******** Session Started ********");
}

CPlugInLog::~CPlugInLog() {
    WriteLine(L"******** Session Ended ********");
}

bool CPlugInLog::Open(const wchar_t* mode) {
    if (m_pszPath.empty()) {
        return false;
    }
    m_pFile.reset(_wfopen(m_pszPath.c_str(), mode));
    return m_pFile != nullptr;
}

void CPlugInLog::WriteLine(std::wstring_view message) {
    if (!Open(L"a+t")) {
        return;
    }
    // Text mode turns the line feed into carriage return and line feed.
    const std::string line = TimeStamp() +
                             std::string(static_cast<std::size_t>(m_nLevel < 0 ? 0 : m_nLevel) + 1, '\t') +
                             Narrow(message) + "\n";
    std::fwrite(line.data(), 1, line.size(), m_pFile.get());
    m_pFile.reset();
}

void CPlugInLog::FunctionEnter(std::wstring_view name) {
    WriteLine(L"FUNCTION ENTER: " + std::wstring(name));
    ++m_nLevel;
}

void CPlugInLog::FunctionExit(std::wstring_view name) {
    --m_nLevel;
    WriteLine(L"FUNCTION EXIT: " + std::wstring(name));
}

void CPlugInLog::LogParam(std::wstring_view name, std::wstring_view value) {
    --m_nLevel;
    WriteLine(L"PARAM:" + std::wstring(name) + L"  VAL:" + std::wstring(value));
    ++m_nLevel;
}

void CPlugInLog::Clear() {
    if (Open(L"wt")) {
        m_pFile.reset();
        WriteLine(L"***** CONTENT CLEARED ******");
    }
}

void CPlugInLog::MoveFile(std::wstring_view newPath) {
    const std::wstring target(newPath);
    if (FileExists(m_pszPath)) {
        ::MoveFileExW(m_pszPath.c_str(), target.c_str(), MOVEFILE_COPY_ALLOWED);
    }
    m_pszPath = target;
}

void CPlugInLog::DeleteFile(std::wstring_view product) {
    ::DeleteFileW(BuildDefaultPath(std::wstring(product)).c_str());
    Sleep(1000);
}

int CPlugInLog::MoveToDesktop(std::wstring_view newName, std::wstring_view product, const CPlugInLog*) {
    const std::wstring path = BuildDefaultPath(std::wstring(product));
    const auto desktop = Desktop(CSIDL_DESKTOP);
    if (!desktop) {
        return -1;
    }
    SetCurrentDirectoryW(desktop->c_str());
    const std::wstring target = *desktop + L'\\' + std::wstring(newName);
    ::DeleteFileW(target.c_str());
    if (FileExists(path)) {
        ::MoveFileW(path.c_str(), target.c_str());
    }
    return 0;
}

std::unique_ptr<CPlugInLog>& SessionLog() {
    // Never destroyed with the library: a host that ends without a Shutdown message must not get a line
    // written while the process is torn down.
    static auto& log = *new std::unique_ptr<CPlugInLog>;
    return log;
}

void LogLine(std::wstring_view message) {
    if (SessionLog()) {
        SessionLog()->WriteLine(message);
    }
}

LoggedOperation::LoggedOperation(const wchar_t* name)
    : m_exitName(name), m_exceptions(std::uncaught_exceptions()) {
    if (SessionLog()) {
        SessionLog()->FunctionEnter(name);
    }
}

LoggedOperation::~LoggedOperation() {
    if (SessionLog() && std::uncaught_exceptions() == m_exceptions) {
        SessionLog()->FunctionExit(m_exitName);
    }
}

void LoggedOperation::Param(const wchar_t* name, std::wstring_view value) const {
    if (SessionLog()) {
        SessionLog()->LogParam(name, value);
    }
}

void LoggedOperation::OptionalParam(const wchar_t* name, const ScriptText& value) const {
    if (value) {
        Param(name, *value);
    }
}

} // namespace varden
