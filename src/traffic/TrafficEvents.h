#pragma once

#include "core/Geodesy.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace corvane {
/// A source's own name for one aircraft, from when it appears until it vanishes; never given to another one.
using TrafficKey = std::uint32_t;

/// Where an aircraft is and what it says of itself all the time.
struct TrafficReport {
    LatLon Position;
    double AltitudeFt = 0;  ///< -6,000 .. 200,000
    double TrueHeading = 0; ///< 0 .. 360
    double GroundSpeedKt = 0;
    std::optional<std::uint16_t> Squawk; ///< four octal digits as a decimal number: 0021 is 21
    bool Ident = false;
    bool Emergency = false;
    std::optional<std::int32_t> FrequencyKhz; ///< of the radio that it talks on
    bool operator==(const TrafficReport&) const = default;
};

/// Texts are Windows-1252 without control characters.
struct AircraftAppeared {
    TrafficKey Key = 0;
    std::string Name;            ///< callsign, or the address while that is unknown; not empty
    std::string ShortType;       ///< "c172p", "A320"; empty: not known
    std::string Title;           ///< the type's full name; empty: not known
    std::string EngineType = {}; ///< as session messages call it: "Jet Plane"; empty: not known
    bool IsPilot = true;         ///< or a controller, who has no target
};
struct AircraftMoved {
    TrafficKey Key = 0;
    TrafficReport Report;
};
struct AircraftRenamed {
    TrafficKey Key = 0;
    std::string Name;
};
struct AircraftSaid {
    TrafficKey Key = 0;
    std::string Text;
};
/// A line of somebody who is heard, but of whom nothing else is told: there are too many, or they are too far away.
struct OutsiderSaid {
    std::string Name;
    std::string Text;
};
struct AircraftVanished {
    TrafficKey Key = 0;
};
/// What the user should know of the link: it fell silent, was refused, is back.
struct SourceNotice {
    std::string Text;
};

/// What a source tells. An aircraft appears before anything else is told of it, and nothing is told after it vanished.
using TrafficEvent = std::variant<AircraftAppeared, AircraftMoved, AircraftRenamed, AircraftSaid, OutsiderSaid,
                                  AircraftVanished, SourceNotice>;
using TrafficEvents = std::vector<TrafficEvent>;

/// Most characters of a name and of a line; sources cut what is longer.
inline constexpr std::size_t TrafficNameLimit = 64;
inline constexpr std::size_t TrafficLineLimit = 2000;

/// A line of chat of this side.
struct LineSaid {
    std::string Text;
};
/// A pilot of this side, to be shown to the other one.
struct MemberMoved {
    std::string Name;
    TrafficReport Report;
};
struct MemberLeft {
    std::string Name;
};
/// What a source can be told. Texts are Windows-1252.
using TrafficWord = std::variant<LineSaid, MemberMoved, MemberLeft>;
} // namespace corvane
