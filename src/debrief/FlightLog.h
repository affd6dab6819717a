#pragma once

#include "core/MagVarGrid.h"
#include "debrief/Debrief.h"
#include "practice/PracticeScene.h"
#include "session/PlayerTable.h"

#include <functional>
#include <map>
#include <optional>
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
    /// All flights in the order of their coming, with what landings and departures would have taken unhindered.
    /// firstCallS  when an aircraft first called, if it did
    [[nodiscard]] std::vector<DebriefFlight>
    Flights(const MagVarGrid& grid,
            const std::function<std::optional<double>(const std::string& callsign)>& firstCallS) const;

private:
    struct Flight {
        DebriefFlight What;
        std::string AircraftType;
        bool Airborne = false;
        bool BeganInTheAir = false;
        std::optional<double> MovedS; ///< first, on the ground
        double EveryS = 2;            ///< between two places of the track; doubled whenever that is full
    };

    void Follow(Flight& flight, const PlayerRecord& pilot, double nowS) const;
    static void AddPlace(Flight& flight, const PlayerRecord& pilot, double nowS);
    [[nodiscard]] const PracticeAirport* FieldBelow(const LatLon& at) const;
    void MeasureDeparture(const Flight& flight, DebriefFlight& what, std::optional<double> firstCallS) const;

    const PracticeScene* m_scene;
    std::vector<Flight> m_flights;
    std::map<std::string, std::size_t, std::less<>> m_byCallsign;
};

/// Seconds that a pilot by itself takes from a stand to the air over its runway, from the moment at which it is ready
/// to be pushed back; nothing where it finds no runway. title, engine  as aircraft information names them
std::optional<double> UnhinderedDepartureS(const PracticeScene& scene, const DebriefPlace& from,
                                           const PracticeAirport& field, std::string_view title,
                                           std::string_view engine);

/// Seconds that a pilot by itself takes from a place to the landing at an airport; nothing where it does not land.
/// title, engine  as aircraft information names them
std::optional<double> UnhinderedFlightS(const PracticeScene& scene, const MagVarGrid& grid, const DebriefPlace& from,
                                        const PracticeAirport& to, std::string_view title, std::string_view engine);
} // namespace corvane
