#pragma once

#include "core/Bytes.h"
#include "core/Geodesy.h"
#include "traffic/flightgear/Properties.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::flightgear {
inline constexpr std::size_t LargestPacket = 1200; ///< bytes; larger ones are nobody's
inline constexpr std::size_t CallsignLength = 7;

/// A position packet as it came, in a controller's units.
struct PositionPacket {
    std::string Callsign; ///< 1 to 7 bytes, as sent
    std::string Model;    ///< path of the 3-D model, as sent
    double TimeS = 0;     ///< the sender's clock
    LatLon Position;
    double AltitudeFt = 0;
    double TrueHeading = 0; ///< 0 .. 360
    double GroundSpeedKt = 0;
    Properties Told;
};

/// Reads a datagram. Nothing for one that is not a whole position packet of a place and a speed that an aircraft can
/// have: other kinds of packet are passed over, too. Layout: docs/formats/flightgear.md
std::optional<PositionPacket> DecodePosition(ByteSpan datagram);

/// What is sent: a level attitude, and a speed along the heading.
struct OwnPosition {
    std::string_view Callsign; ///< at most 7 bytes
    std::string_view Model;    ///< fewer than 96 bytes
    std::uint16_t RangeNm = 0; ///< from which the sender wants to be fed
    double TimeS = 0;
    double IntervalS = 1;
    LatLon Position;
    double AltitudeFt = 0;
    double TrueHeading = 0;
    double GroundSpeedKt = 0;
    std::string_view Chat; ///< UTF-8, at most 767 bytes; empty where nothing is said
    std::optional<std::int32_t> Squawk;
};

/// The bytes of a position packet in the encoding of today.
Bytes EncodePosition(const OwnPosition& own);
} // namespace corvane::flightgear
