#pragma once

#include "area/AreaLoad.h"
#include "core/Bytes.h"
#include "core/Records.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {
/// A database of a few records, with terrain and outlines, held in memory.
struct SmallWorld {
    Bytes Airports;
    Bytes Vors;
    Bytes Ndbs;
    Bytes Terrain;
    Bytes WorldMap;
    std::vector<AirspaceRecord> AllAirspaces;
    SettingsRecord Counts;

    void AddAirport(const AirportRecord& airport);
    void AddVor(std::string_view ident, double lat, double lon);
    void AddNdb(std::string_view ident, double lat, double lon);
    void AddTerrain(double lat, double lon, std::int32_t elevationFt);
    /// A vertex given as it is stored: 2^31 are 90 and 180 degrees.
    void AddMapEntry(std::int32_t lat, std::int32_t lon);

    /// The sources borrow this world's bytes, under names such as "airports".
    [[nodiscard]] AreaFiles Files() const;
};

AirportRecord MakeAirport(std::string_view icao, double lat, double lon);
AirspaceRecord MakeSector(std::string_view comName, double north, double south, double west, double east);

std::vector<std::string> Idents(const std::vector<AirportRecord>& airports);
std::vector<std::string> Idents(const std::vector<NavaidRecord>& navaids);
/// "Kind ComName" of each.
std::vector<std::string> Titles(const std::vector<AirspaceRecord>& airspaces);

/// Writes down the texts and the ends of steps.
class RecordedProgress final : public LoadProgress {
public:
    void StepBegins(std::string_view status) override { Heard.emplace_back(status); }
    void StepEnded() override { Heard.emplace_back("+1"); }

    std::vector<std::string> Heard;
};
} // namespace corvane
