#pragma once

#include "core/MagVarGrid.h"
#include "debrief/Debrief.h"
#include "practice/PracticeScene.h"
#include "session/PlayerTable.h"

#include <map>
#include <string>
#include <vector>

namespace corvane {
/// Follows where aircraft go: their tracks, take-offs and landings. The scene must outlive it.
class FlightLog {
public:
    explicit FlightLog(const PracticeScene& scene) noexcept : m_scene(&scene) {}

    /// A pilot's position of this second.
    void Report(const PlayerRecord& pilot, double nowS);
    [[nodiscard]] bool IsAirborne(const std::string& callsign) const;
    /// All flights in the order of their coming, with what landings would have taken unhindered.
    [[nodiscard]] std::vector<DebriefFlight> Flights(const MagVarGrid& grid) const;

private:
    struct Flight {
        DebriefFlight What;
        std::string AircraftType;
        bool Airborne = false;
        bool BeganInTheAir = false;
        double EveryS = 2; ///< between two places of the track; doubled whenever that is full
    };

    void Follow(Flight& flight, const PlayerRecord& pilot, double nowS) const;
    static void AddPlace(Flight& flight, const PlayerRecord& pilot, double nowS);
    [[nodiscard]] const PracticeAirport* FieldBelow(const PlayerRecord& pilot) const;

    const PracticeScene* m_scene;
    std::vector<Flight> m_flights;
    std::map<std::string, std::size_t, std::less<>> m_byCallsign;
};

/// Seconds that a pilot by itself takes from a place to the landing at an airport; nothing where it does not land.
/// title, engine  as aircraft information names them
std::optional<double> UnhinderedFlightS(const PracticeScene& scene, const MagVarGrid& grid, const DebriefPlace& from,
                                        const PracticeAirport& to, std::string_view title, std::string_view engine);
} // namespace corvane
