#pragma once

#include "core/Result.h"
#include "practice/AircraftClass.h"
#include "practice/Wind.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// One aircraft of a scenario. Times are seconds since the session began; a time that is not set never comes.
struct ScenarioAircraft {
    std::string Callsign = {}; ///< empty: one is invented
    AircraftKind Kind = AircraftKind::Airliner;
    double AtS = 0;         ///< joins then
    bool OnGround = false;  ///< begins at a stand; else in the air
    double BearingDeg = 0;  ///< in the air: true, from the airport in the middle
    double DistanceNm = 30; ///< in the air: from there
    std::optional<double> AltitudeFt = {};
    std::string From = {}; ///< ICAO code of the airport on whose ground it begins; empty: the one in the middle
    std::string To = {};   ///< ICAO code; empty: the one in the middle for arrivals, away from it for departures
    std::string Over = {}; ///< in the air: ident of a navaid on its way; empty: none
    std::optional<double> FuelMin = {}; ///< minutes of flight that its fuel lasts; nothing: as long as it needs
    std::optional<double> SilentAtS = {};
    double SilentForS = 120;
    std::optional<double> EmergencyAtS = {};
    std::string Emergency = "engine trouble";
    std::optional<double> LeavesAtS = {};
    double ReadBackErrors = 0; ///< share of the instructions that it takes wrongly, and reads back so
};

struct ScenarioHint {
    double AtS = 0;
    std::string Text = {}; ///< the host says it to all
};

/// What happens in a practice session that is planned; docs/formats/scenario.md describes the file.
struct PracticeScenario {
    std::string Name = {};
    std::string About = {};
    PracticeWind Wind = {};
    std::vector<std::string> Landing = {}; ///< runways of the airport in the middle; empty: as the wind has it
    std::vector<std::string> TakeOff = {};
    bool PilotsAsk = true; ///< on the ground they wait for the controller's word
    std::vector<ScenarioAircraft> Aircraft = {};
    std::vector<ScenarioHint> Hints = {};
    std::optional<double> HostLeavesAtS = {};
};

/// Reads a scenario. An Error names the file and what is wrong in it, with the path inside: "/Aircraft/2/Class: ...".
Result<PracticeScenario> ReadScenario(const std::filesystem::path& path);
/// The same of a text; name is what errors call it.
Result<PracticeScenario> ParseScenario(std::string_view text, const std::string& name);
} // namespace corvane
