#pragma once

#include <cstddef>
#include <cstdint>

namespace corvane::directplay {
/// Why a packet was dropped.
enum class DropReason : std::uint8_t {
    Truncated,      ///< fewer bytes than its size field or its shape needs
    Oversized,      ///< more bytes than its size field, or than any message may have
    BadMagic,       ///< no known token, no internet address, or no signature where one is needed
    WrongVersion,   ///< older than any machine that speaks this protocol
    UnknownCommand, ///< a command number without a meaning
    Malformed,      ///< a length, offset or count inside that does not fit
    Stranger,       ///< from a machine that may not say this
    Flooding,       ///< above a rate or a number that is capped
};
inline constexpr std::size_t DropReasons = 8;
} // namespace corvane::directplay
