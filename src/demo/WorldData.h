#pragma once

#include "core/Geodesy.h"
#include "core/Result.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace corvane {
/// The open data from which the demonstration world is made; data/README.md describes the files and their sources.

struct RunwayData {
    std::string Ident; ///< of the first end, two digits and a side letter where needed
    LatLon Center;
    double TrueHeading = 0; ///< from the first end towards the other
    int LengthFt = 0;
    int WidthFt = 0;
    int ElevationFt = 0;
};

struct AirportSource {
    std::string Icao;
    std::string Name;
    std::string City;
    LatLon Position;
    int ElevationFt = 0;
    bool Large = false;
    bool Scheduled = false;
    std::optional<double> TowerMhz;
    std::optional<double> GroundMhz;
    std::optional<double> ClearanceMhz;
    std::optional<double> ApproachMhz;
    std::optional<double> DepartureMhz;
    std::vector<RunwayData> Runways;
};

struct NavaidSource {
    bool IsVor = false;
    std::string Ident;
    std::string Name;
    LatLon Position;
    double Frequency = 0; ///< MHz for a VOR, kHz for an NDB
    int RangeNm = 0;
    int ElevationFt = 0;
    std::string Icao; ///< the airport it stands by
};

/// One piece of a control sector; the last vertex is joined to the first.
struct SectorSource {
    std::string Name;
    int Piece = 1;
    double FrequencyMhz = 0;
    double South = 0;
    double West = 0; ///< above East where the piece crosses the 180 degree meridian
    double North = 0;
    double East = 0;
    std::vector<LatLon> Polygon;
};

using Polyline = std::vector<LatLon>;

struct TerrainSource {
    LatLon Position;
    int ElevationFt = 0;
};

struct WorldData {
    std::vector<AirportSource> Airports; ///< most important first, see LoadWorldData
    std::vector<NavaidSource> Navaids;
    std::vector<SectorSource> Sectors;
    std::vector<Polyline> Outlines;
    std::vector<Polyline> Borders;
    std::vector<TerrainSource> Terrain;
    std::vector<std::int16_t> MagVar; ///< 65160 values, longitude by longitude
};

/// Reads airports.csv, runways.csv, navaids.csv, sectors.csv, outlines.csv, borders.csv, terrain.csv and magvar.csv.
///
/// Airports are ranked: large ones first, those with scheduled service before the rest, then by the length of all their
/// runways together, then by identifier. A file that is missing or a line that makes no sense is an error that names
/// it.
Result<WorldData> LoadWorldData(const std::filesystem::path& dataFolder);

/// Reads outlines.csv, borders.csv and terrain.csv alone.
Result<WorldData> LoadMapData(const std::filesystem::path& dataFolder);

/// Reads magvar.csv alone: 65160 values, longitude by longitude.
Result<std::vector<std::int16_t>> LoadMagVar(const std::filesystem::path& dataFolder);
} // namespace corvane
