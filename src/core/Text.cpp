#include "core/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

namespace corvane {
// Unicode code points of the Windows-1252 codes 0x80 to 0x9F, from the code page's published table.
static constexpr std::array<char16_t, 32> HighCodes = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                       0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

static char32_t CodePoint(unsigned char character)
{
    if (character < 0x80 || character >= 0xA0)
        return character;
    return HighCodes[character - 0x80U];
}

static char Windows1252Character(char32_t codePoint)
{
    if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint < 0x100))
        return static_cast<char>(codePoint);
    const auto* const found = std::find(HighCodes.begin(), HighCodes.end(), codePoint);
    return found == HighCodes.end() ? '?' : static_cast<char>(0x80 + (found - HighCodes.begin()));
}

static bool IsControl(char32_t code)
{
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

/// Line and paragraph separators, and the marks that make text run the other way.
static bool BreaksOrTurnsLines(char32_t code)
{
    return (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069) || code == 0x200E || code == 0x200F;
}

/// Takes one UTF-8 sequence off the front of text; a malformed one costs a single byte and gives nothing.
static std::optional<char32_t> TakeCodePoint(std::string_view& text)
{
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byteAt(0);
    std::size_t length = 1;
    if (lead >= 0xC2 && lead < 0xE0)
        length = 2;
    else if (lead >= 0xE0 && lead < 0xF0)
        length = 3;
    else if (lead >= 0xF0 && lead < 0xF5)
        length = 4;
    if ((length == 1 && lead >= 0x80) || length > text.size()) {
        text.remove_prefix(1);
        return std::nullopt;
    }
    char32_t codePoint = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(i) & 0xC0U) != 0x80) {
            text.remove_prefix(1);
            return std::nullopt;
        }
        codePoint = codePoint << 6U | (byteAt(i) & 0x3FU);
    }
    const bool tooLong = (length == 3 && codePoint < 0x800) || (length == 4 && codePoint < 0x10000);
    if (tooLong || (codePoint >= 0xD800 && codePoint < 0xE000) || codePoint > 0x10FFFF) {
        text.remove_prefix(1);
        return std::nullopt;
    }
    text.remove_prefix(length);
    return codePoint;
}

std::string Windows1252ToUtf8(std::string_view text)
{
    std::string utf8;
    utf8.reserve(text.size());
    for (const char character : text) {
        const char32_t codePoint = CodePoint(static_cast<unsigned char>(character));
        if (codePoint < 0x80) {
            utf8 += static_cast<char>(codePoint);
        } else if (codePoint < 0x800) {
            utf8 += static_cast<char>(0xC0U | codePoint >> 6U);
            utf8 += static_cast<char>(0x80U | (codePoint & 0x3FU));
        } else {
            utf8 += static_cast<char>(0xE0U | codePoint >> 12U);
            utf8 += static_cast<char>(0x80U | (codePoint >> 6U & 0x3FU));
            utf8 += static_cast<char>(0x80U | (codePoint & 0x3FU));
        }
    }
    return utf8;
}

std::string Utf8ToWindows1252(std::string_view text)
{
    std::string converted;
    converted.reserve(text.size());
    while (!text.empty()) {
        const std::optional<char32_t> codePoint = TakeCodePoint(text);
        converted += codePoint ? Windows1252Character(*codePoint) : '?';
    }
    return converted;
}

bool IsUtf8(std::string_view text) noexcept
{
    while (!text.empty())
        if (!TakeCodePoint(text))
            return false;
    return true;
}

std::optional<std::string> Utf8ToWindows1252Exactly(std::string_view text)
{
    std::string converted = Utf8ToWindows1252(text);
    if (Windows1252ToUtf8(converted) != text)
        return std::nullopt;
    return converted;
}

std::string OneLine(std::string_view text)
{
    constexpr char MiddleDot = '\xB7';
    std::string line(text);
    for (char& character : line) {
        const char32_t code = CodePoint(static_cast<unsigned char>(character));
        if (IsControl(code) && character != '\t')
            character = MiddleDot;
    }
    return line;
}

static std::string Hexadecimal(std::string_view mark, std::uint32_t value, int digits)
{
    std::string text(mark);
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text += "0123456789abcdef"[(value >> shift) & 0xFU];
    return text;
}

std::string TerminalText(std::string_view utf8)
{
    std::string shown;
    shown.reserve(utf8.size());
    while (!utf8.empty()) {
        const std::string_view before = utf8;
        const std::optional<char32_t> code = TakeCodePoint(utf8);
        const std::string_view taken = before.substr(0, before.size() - utf8.size());
        if (!code || (*code < 0x80 && IsControl(*code)))
            shown += code == U'\n' ? "\\n" : Hexadecimal("\\x", static_cast<unsigned char>(taken[0]), 2);
        else if (IsControl(*code) || BreaksOrTurnsLines(*code))
            shown += Hexadecimal("\\u", *code, 4);
        else
            shown += taken;
    }
    return shown;
}

std::string ToLower(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    return lower;
}

std::string ToUpper(std::string_view text)
{
    std::string upper(text);
    for (char& c : upper)
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
    return upper;
}

std::string_view TrimSpaces(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}
} // namespace corvane
