#include "net/wire/Guid.h"

#include <algorithm>
#include <cctype>

namespace corvane::directplay {
// Which wire byte each pair of digits of the text shows, from left to right.
static constexpr std::array<std::uint8_t, 16> TextOrder{3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
static constexpr std::string_view Pattern = "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}";
static constexpr std::string_view HexDigits = "0123456789ABCDEF";

std::string GuidText(const Guid& guid)
{
    std::string text(Pattern);
    std::size_t digit = 0;
    for (char& c : text) {
        if (c != 'X')
            continue;
        const unsigned byte = guid.Value[TextOrder[digit / 2]];
        c = HexDigits[digit % 2 == 0 ? byte >> 4 : byte & 0xF];
        ++digit;
    }
    return text;
}

std::optional<Guid> ParseGuid(std::string_view text)
{
    if (text.size() != Pattern.size())
        return std::nullopt;
    Guid guid;
    std::size_t digit = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (Pattern[i] != 'X') {
            if (text[i] != Pattern[i])
                return std::nullopt;
            continue;
        }
        const auto value = HexDigits.find(static_cast<char>(std::toupper(static_cast<unsigned char>(text[i]))));
        if (value == std::string_view::npos)
            return std::nullopt;
        auto& byte = guid.Value[TextOrder[digit / 2]];
        byte = static_cast<std::uint8_t>((unsigned{byte} << 4) | value);
        ++digit;
    }
    return guid;
}

void WriteGuid(ByteWriter& out, const Guid& guid)
{
    out.WriteBytes(guid.Value);
}

Guid ReadGuid(ByteReader& in)
{
    Guid guid;
    std::ranges::copy(in.ReadBytes(guid.Value.size()), guid.Value.begin());
    return guid;
}
} // namespace corvane::directplay
