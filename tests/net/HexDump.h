#pragma once

#include "core/Bytes.h"

#include <string>
#include <string_view>

namespace corvane::directplay {
/// Bytes from hexadecimal digits; everything else is only there to be read.
inline Bytes FromHex(std::string_view text)
{
    Bytes bytes;
    int high = -1;
    for (const char c : text) {
        const auto digit = std::string_view("0123456789ABCDEF").find(c);
        if (digit == std::string_view::npos)
            continue;
        if (high < 0) {
            high = static_cast<int>(digit);
        } else {
            bytes.push_back(static_cast<std::uint8_t>((high << 4) | static_cast<int>(digit)));
            high = -1;
        }
    }
    return bytes;
}

/// A management message from stream port 2300: size and command as they stand in the header, then the body.
inline Bytes Dump(std::string_view size, std::string_view command, std::string_view body)
{
    return FromHex(std::string(size) + " B0 FA 02 00 08 FC 00 00 00 00 00 00 00 00 00 00 00 00 70 6C 61 79 " +
                   std::string(command) + " 00 0E 00 " + std::string(body));
}
} // namespace corvane::directplay
