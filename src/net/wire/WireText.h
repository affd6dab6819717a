#pragma once

#include "core/Bytes.h"

#include <optional>
#include <string>
#include <string_view>

namespace corvane::directplay {
/// Bytes that a text takes in a message: two for each unit and two for the zero that ends it.
std::size_t WideTextSize(std::u16string_view text) noexcept;
void WriteWideText(ByteWriter& out, std::u16string_view text);

/// The text that starts at offset at and ends with a 16-bit zero. Nothing when the zero is missing, or the text is
/// longer than any machine has reason to send. Odd offsets are legal.
std::optional<std::u16string> ReadWideTextAt(ByteSpan bytes, std::size_t at);
/// The same from the reader's position, which moves behind the zero.
std::optional<std::u16string> ReadWideText(ByteReader& in);

/// The program's texts are Windows-1252, the wire's UTF-16.
std::u16string WideFromWindows1252(std::string_view text);
/// Characters without a Windows-1252 code, and halves of pairs, become "?".
std::string Windows1252FromWide(std::u16string_view text);
} // namespace corvane::directplay
