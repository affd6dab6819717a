#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {
/// Texts inside the program, in its files and in messages are 8-bit Windows-1252, one byte a character. These convert
/// at the edges. The five codes that Windows-1252 leaves open map to the control characters of the same number, so
/// every byte survives the way there and back.
std::string Windows1252ToUtf8(std::string_view text);
/// Characters without a Windows-1252 code, and malformed UTF-8, become "?".
std::string Utf8ToWindows1252(std::string_view text);
/// As Utf8ToWindows1252, or nothing where a character would become "?".
std::optional<std::string> Utf8ToWindows1252Exactly(std::string_view text);
bool IsUtf8(std::string_view text) noexcept;

/// Change a-z and A-Z only: file names and identifiers are compared this way whatever the code page.
std::string ToLower(std::string_view text);
std::string ToUpper(std::string_view text);
/// A text from outside as one line of a list or a conversation shows it: control characters, line breaks among them,
/// become middle dots, except that a tab stays. text is Windows-1252.
std::string OneLine(std::string_view text);
/// A text for a terminal, always valid UTF-8: control characters, and those that break lines or turn their direction,
/// are written as \n, \x1b or \u0085, bytes that are no UTF-8 as \xff. Other text is unchanged.
std::string TerminalText(std::string_view utf8);

/// Removes spaces (character 32 alone) at both ends.
std::string_view TrimSpaces(std::string_view text);
} // namespace corvane
