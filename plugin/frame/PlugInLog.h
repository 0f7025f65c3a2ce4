// The session log: a plain text trace of what the plug-in does, a line per event, indented by call depth.
#pragma once

#include "Text.h"

#include <windows.h>

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace varden {

/// The log of a session. A line is lost, silently, when the file can't be opened: nothing that the log does
/// can change the answer of a function. The file is open only while a line is written, so that it survives a
/// crash of the host up to the last line and can be read, moved or deleted between lines.
class CPlugInLog {
public:
    /// Starts the log with its session line. Without a path, the file is "LogFile.txt" in the product's
    /// folder below "TEMBO" on the desktop; the folders are made, and the process's current directory is left
    /// in the last of them.
    explicit CPlugInLog(std::wstring_view product, const std::optional<std::wstring>& path = std::nullopt);
    /// Ends the log with its closing line.
    ~CPlugInLog();
    CPlugInLog(const CPlugInLog&) = delete;
    CPlugInLog& operator=(const CPlugInLog&) = delete;

    /// A time stamp, one tab more than the level, the message, carriage return and line feed; all in the ANSI
    /// code page of the thread.
    void WriteLine(std::wstring_view message);
    void SetLevel(int level) { m_nLevel = level; }
    /// "FUNCTION ENTER: %s"; the lines that follow stand one level deeper.
    void FunctionEnter(std::wstring_view name);
    /// "FUNCTION EXIT: %s", one level up again.
    void FunctionExit(std::wstring_view name);
    /// "PARAM:%s  VAL:%s", at the level of the function's enter line.
    void LogParam(std::wstring_view name, std::wstring_view value);
    /// Empties the file.
    void Clear();
    /// Moves the file, if it is there, and goes on under the new path.
    void MoveFile(std::wstring_view newPath);
    /// Deletes the default file of a product, then sleeps for a second.
    static void DeleteFile(std::wstring_view product);
    /// Moves the product's default file to the desktop, over any file of that name. The log object has no say
    /// in which file is moved. 0, or -1 when there is no desktop.
    static int MoveToDesktop(std::wstring_view newName, std::wstring_view product, const CPlugInLog* log);

private:
    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    bool Open(const wchar_t* mode);

    int m_nLevel = 0;
    std::wstring m_pszPath;
    std::wstring m_pszProduct;
    std::unique_ptr<std::FILE, CloseFile> m_pFile;
};

/// The log of the process, null unless a script has switched it on. Everything that writes tests it first.
std::unique_ptr<CPlugInLog>& SessionLog();

/// A free line, if there is a log.
void LogLine(std::wstring_view message);
/// The same, formatted; nothing is formatted without a log.
template <typename First, typename... Others>
void LogLine(const wchar_t* format, const First& first, const Others&... others) {
    if (SessionLog()) {
        SessionLog()->WriteLine(FormatText(format, first, others...));
    }
}

/// The name on the exit line of an operation that failed.
inline constexpr const wchar_t* kFailedExit = L"error in function";

/// One operation in the log: its enter line at once, its exit line at the end of the block. An operation that
/// an exception leaves has no exit line; the next call sets the level anew.
class LoggedOperation {
public:
    explicit LoggedOperation(const wchar_t* name);
    ~LoggedOperation();
    LoggedOperation(const LoggedOperation&) = delete;
    LoggedOperation& operator=(const LoggedOperation&) = delete;

    void Param(const wchar_t* name, std::wstring_view value) const;
    /// Nothing is written for a missing value.
    void OptionalParam(const wchar_t* name, const ScriptText& value) const;
    /// The name that the exit line will bear in place of the operation's own.
    void ExitAs(const wchar_t* name) { m_exitName = name; }

private:
    const wchar_t* m_exitName;
    int m_exceptions;
};

} // namespace varden
