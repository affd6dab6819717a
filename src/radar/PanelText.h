#pragma once

#include "core/Records.h"
#include "session/PlayerTable.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace corvane {
/// The information panel's text for each kind of object: lines joined by CR LF, without one at the end.

/// Empty for the kinds that the panel says nothing about, for example Class C. The lower of floor and ceiling comes
/// first, whichever it is.
std::string AirspaceText(const AirspaceRecord& airspace);
/// kind is "NDB" or "VOR".
std::string NavaidText(std::string_view kind, const NavaidRecord& navaid);
std::string PilotText(const PlayerRecord& pilot);
std::string ParkingText(const ParkingRecord& parking);
/// One end of a runway.
std::string RunwayText(const RunwayRecord& runway, std::string_view designation, std::int16_t magHeading);
std::string IlsText(const IlsRecord& ils);
} // namespace corvane
