#include "net/wire/WireText.h"

#include "core/Text.h"
#include "net/wire/Protocol.h"

namespace corvane::directplay {
std::size_t WideTextSize(std::u16string_view text) noexcept
{
    return 2 * (text.size() + 1);
}

void WriteWideText(ByteWriter& out, std::u16string_view text)
{
    for (const char16_t unit : text)
        out.WriteU16(unit);
    out.WriteU16(0);
}

std::optional<std::u16string> ReadWideText(ByteReader& in)
{
    std::u16string text;
    while (true) {
        const std::uint16_t unit = in.ReadU16();
        if (in.Failed() || text.size() > MaxTextUnits)
            return std::nullopt;
        if (unit == 0)
            return text;
        text.push_back(static_cast<char16_t>(unit));
    }
}

std::optional<std::u16string> ReadWideTextAt(ByteSpan bytes, std::size_t at)
{
    if (at > bytes.size())
        return std::nullopt;
    ByteReader in(bytes.subspan(at));
    return ReadWideText(in);
}

std::u16string WideFromWindows1252(std::string_view text)
{
    // Windows-1252 lies in the plane of two and three byte sequences: no pairs are needed.
    const std::string utf8 = Windows1252ToUtf8(text);
    std::u16string wide;
    wide.reserve(text.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        const std::size_t length = lead < 0x80 ? 1U : lead < 0xE0 ? 2U : 3U;
        unsigned code = length == 1 ? lead : length == 2 ? lead & 0x1FU : lead & 0x0FU;
        for (std::size_t k = 1; k < length; ++k)
            code = (code << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3FU);
        wide.push_back(static_cast<char16_t>(code));
        i += length;
    }
    return wide;
}

static void AppendUtf8(std::string& out, char16_t unit)
{
    const unsigned code = unit;
    if (code < 0x80) {
        out.push_back(static_cast<char>(code));
    } else if (code < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (code >> 6)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xE0 | (code >> 12)));
        out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    }
}

std::string Windows1252FromWide(std::u16string_view text)
{
    std::string utf8;
    for (const char16_t unit : text) {
        const bool half = unit >= 0xD800 && unit <= 0xDFFF;
        if (half)
            utf8.push_back('?');
        else
            AppendUtf8(utf8, unit);
    }
    return Utf8ToWindows1252(utf8);
}
} // namespace corvane::directplay
