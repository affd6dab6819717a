#pragma once

#include "core/LatLon.h"
#include "core/Records.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// What the controller controls: one airport, or one ARTCC/FIR sector.
enum class ControlMode : std::uint8_t { None, Airport, Sector };

/// "Airport", "ARTCC/FIR sector", or an empty text before the first load.
constexpr std::string_view AreaModeText(ControlMode mode) noexcept
{
    switch (mode) {
    case ControlMode::Airport: return "Airport";
    case ControlMode::Sector: return "ARTCC/FIR sector";
    case ControlMode::None: break;
    }
    return {};
}

struct TerrainPoint {
    double Lat = 0;
    double Lon = 0;
    std::int32_t ElevationFt = 0;
    bool operator==(const TerrainPoint&) const = default;
};

/// A vertex of a world outline. One whose latitude and longitude are both exactly 0 lifts the pen: the polyline before
/// it ends there.
struct OutlinePoint {
    double Lat = 0;
    double Lon = 0;
    bool operator==(const OutlinePoint&) const = default;
    [[nodiscard]] bool IsSeparator() const noexcept { return Lat == 0 && Lon == 0; }
};

/// The area under control and everything in and around it. One area is loaded at a time; a load replaces the tables.
struct AreaModel {
    std::string AreaName;
    ControlMode AreaMode = ControlMode::None;
    LatLon AreaCenter;
    std::vector<AirportRecord> AreaAirports;
    std::vector<NavaidRecord> AreaVors;
    std::vector<NavaidRecord> AreaNdbs;
    std::vector<AirspaceRecord> AreaAirspaces;
    std::vector<TerrainPoint> TerrainPoints;
    std::vector<OutlinePoint> OutlinePoints;

    /// Empties the tables; name, mode and centre stay until a load overwrites them.
    void ClearTables() noexcept
    {
        AreaAirports.clear();
        AreaVors.clear();
        AreaNdbs.clear();
        AreaAirspaces.clear();
        TerrainPoints.clear();
        OutlinePoints.clear();
    }
};
} // namespace corvane
