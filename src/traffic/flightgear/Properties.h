#pragma once

#include "traffic/flightgear/XdrReader.h"

#include <cstdint>
#include <optional>
#include <string>

namespace corvane::flightgear {
/// What stands where the properties begin, and tells their encoding.
inline constexpr std::uint32_t LongProperties = 0;
inline constexpr std::uint32_t MixedProperties = 0x1FACE002;

/// The properties of a position packet that a controller is told. What a packet does not hold stays as it was.
struct Properties {
    std::optional<std::int32_t> Squawk; ///< digits as a decimal number, or a value that is no code
    std::optional<std::int32_t> Ident;
    std::optional<std::int32_t> Frequency;
    std::optional<std::string> Chat; ///< the bytes as sent
};

/// Reads the properties of either encoding as far as they can be understood: an id that is not known, or a value that
/// does not fit into the packet, ends the reading, and what stands before it counts.
/// Layout: docs/formats/flightgear.md
Properties ReadProperties(XdrReader& reader, std::uint32_t encoding);
} // namespace corvane::flightgear
