#pragma once

#include "core/Bytes.h"

#include <string_view>

namespace corvane {
/// The bytes of hexadecimal digits; blanks separate what a reader should see apart, and 'text' stands for itself behind
/// its 16-bit length.
inline Bytes HexBytes(std::string_view hex)
{
    const auto digit = [](char c) { return static_cast<std::uint8_t>(c <= '9' ? c - '0' : c - 'a' + 10); };
    Bytes bytes;
    for (std::size_t i = 0; i < hex.size();) {
        if (hex[i] == ' ') {
            ++i;
        } else if (hex[i] == '\'') {
            const std::size_t end = hex.find('\'', i + 1);
            ByteWriter(bytes).WriteText16(hex.substr(i + 1, end - i - 1));
            i = end + 1;
        } else {
            bytes.push_back(static_cast<std::uint8_t>(digit(hex[i]) * 16 + digit(hex[i + 1])));
            i += 2;
        }
    }
    return bytes;
}
} // namespace corvane
