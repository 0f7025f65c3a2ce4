// Bytes in and out.
#include "TextIo.h"

#include "Text.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <memory>

namespace standin::console {

namespace {

/// Writes all bytes at once: a console makes nothing of half a character.
void Write(DWORD stream, const std::string& bytes) {
    DWORD written = 0;
    WriteFile(GetStdHandle(stream), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

/// Cuts the piece up to the separator off, and the separator with it.
std::string_view TakeLine(std::string_view& rest) {
    const std::size_t end = rest.find_first_of("\r\n");
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(line.size());
    rest.remove_prefix(rest.starts_with("\r\n") ? 2 : rest.empty() ? 0 : 1);
    return line;
}

} // namespace

void PrepareStandardStreams() {
    SetConsoleCP(CP_UTF8);
    SetConsoleOutputCP(CP_UTF8);
    _setmode(_fileno(stdin), _O_BINARY);
}

void ShowLine(std::wstring_view text) {
    std::string bytes = ToUtf8(text);
    std::string shown;
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::size_t before = rest.size();
        const std::string_view line = TakeLine(rest);
        shown += line;
        shown.append(before > line.size(), '\n');
    }
    Write(STD_OUTPUT_HANDLE, shown + '\n');
}

void TellLine(std::wstring_view text) {
    Write(STD_ERROR_HANDLE, ToUtf8(text) + '\n');
}

bool InputIsInteractive() {
    return _isatty(_fileno(stdin)) != 0;
}

void ShowPrompt(std::wstring_view prompt) {
    Write(STD_OUTPUT_HANDLE, ToUtf8(prompt));
}

std::optional<std::string> ReadInputLine() {
    std::string line;
    int c = std::getc(stdin);
    if (c == EOF) {
        return std::nullopt;
    }
    for (; c != EOF && c != '\n'; c = std::getc(stdin)) {
        line += static_cast<char>(c);
    }
    if (line.ends_with('\r')) {
        line.pop_back();
    }
    return line;
}

std::optional<std::vector<std::string>> ReadLines(const std::wstring& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(_wfopen(path.c_str(), L"rb"), std::fclose);
    if (!file) {
        return std::nullopt;
    }
    std::string bytes;
    char piece[4096];
    for (std::size_t size = 1; size > 0; bytes.append(piece, size)) {
        size = std::fread(piece, 1, sizeof piece, file.get());
    }
    std::string_view rest = bytes;
    if (rest.starts_with("\xEF\xBB\xBF")) {
        rest.remove_prefix(3);
    }
    std::vector<std::string> lines;
    while (!rest.empty()) {
        lines.emplace_back(TakeLine(rest));
    }
    return lines;
}

} // namespace standin::console
