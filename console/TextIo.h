// Standard input, output and error, and script files: UTF-8, lines end with a line feed.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace standin::console {

/// Makes the standard streams carry bytes as they are, and a console understand UTF-8. Once, before any
/// other.
void PrepareStandardStreams();

/// A text and a line end. Each carriage return in the text, with or without a line feed, is a line end.
void ShowLine(std::wstring_view text);
/// A message on standard error.
void TellLine(std::wstring_view text);

/// Whether someone types the input.
bool InputIsInteractive();
void ShowPrompt(std::wstring_view prompt);
/// The next line of standard input, in bytes; nothing at its end.
std::optional<std::string> ReadInputLine();

/// A file's lines, in bytes, without a byte order mark at the beginning; nothing when it cannot be read.
/// Lines end with a line feed, a carriage return, or both.
std::optional<std::vector<std::string>> ReadLines(const std::wstring& path);

} // namespace standin::console
