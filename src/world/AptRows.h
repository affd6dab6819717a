#pragma once

#include "core/MagVarGrid.h"
#include "core/Records.h"
#include "world/RowReader.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace corvane {
/// Single rows of an apt.dat, read from behind their row code. Where a row cannot be read, or holds what the database
/// leaves out, its reader fails and the result means nothing.

/// A runway's number as the database keeps it: without leading zeros, in capitals.
std::string RunwayNumber(std::string_view written);

/// A runway on land (row 100) or on water (101), between the two positions that the row gives.
RunwayRecord ReadRunway(RowReader& row, bool onWater, std::int32_t elevationFt, const MagVarGrid& grid);

/// Row 10 of older editions: a runway, or where its number is "xxx" a taxiway.
struct StripRow {
    bool IsTaxiway = false;
    LatLon Start; ///< of a taxiway
    LatLon End;
    RunwayRecord Runway; ///< of a runway
};
StripRow ReadStrip(RowReader& row, std::int32_t elevationFt, const MagVarGrid& grid);

/// A helipad (row 102), as the parking place that it is drawn as.
ParkingRecord ReadHelipad(RowReader& row);
/// A parking place: row 1300, or 15 of older editions.
ParkingRecord ReadParking(RowReader& row, bool hasType);
/// Half the wing span of the width class that row 1301 gives, in feet.
std::int32_t ReadParkingRadiusFt(RowReader& row);

/// The frequency of a row 50 to 56 in hundredths of a megahertz, or 1050 to 1056 in thousandths, as the database's
/// text; empty where it is none.
std::string ReadFrequency(RowReader& row, bool inKilohertz);
} // namespace corvane
