#pragma once

#include "practice/FlightModel.h"
#include "practice/Journey.h"

#include <deque>

namespace corvane {
enum class PilotPhase : std::uint8_t { Parked, TaxiOut, LineUp, TakeOff, Airborne, LandingRoll, TaxiIn };

/// What a pilot does between two flights: from touchdown to the stand, and from there to the take-off.
class GroundRun {
public:
    explicit GroundRun(const AircraftClass& aircraft, std::size_t stand) noexcept
        : m_aircraft(&aircraft), m_stand(stand)
    {
    }

    /// Stands at an airport for some seconds.
    void BeginParked(FlightState& state, const PracticeAirport& airport, double heading);
    void Wait(double seconds) noexcept { m_parkedS = seconds; }
    void BeginAirborne() noexcept { m_phase = PilotPhase::Airborne; }
    /// Comes down on a runway.
    void Touchdown(FlightState& state, const PracticeRunway& runway) noexcept;

    /// One step of whatever goes on; while airborne there is nothing to do.
    void Step(FlightState& state, Journey& journey);

    void HoldPosition() noexcept { m_holdPosition = true; }
    void Continue() noexcept { m_holdPosition = false; }

    [[nodiscard]] PilotPhase Phase() const noexcept { return m_phase; }
    [[nodiscard]] bool IsRolling() const noexcept
    {
        return m_phase == PilotPhase::TakeOff || m_phase == PilotPhase::LandingRoll;
    }
    /// The runway in use; null before the first.
    [[nodiscard]] const PracticeRunway* Runway() const noexcept { return m_runway; }
    /// Flights ended at a stand.
    [[nodiscard]] int FlightsDone() const noexcept { return m_flightsDone; }

private:
    void StartTaxiOut(const FlightState& state, const Journey& journey);
    void StartTaxiIn(const FlightState& state, const Journey& journey);
    void StepTaxi(FlightState& state, Journey& journey);
    void StepLineUp(FlightState& state);
    void StepTakeOff(FlightState& state);
    void StepLandingRoll(FlightState& state, const Journey& journey);

    const AircraftClass* m_aircraft;
    const PracticeRunway* m_runway = nullptr;
    std::size_t m_stand;
    std::deque<LatLon> m_taxiRoute;
    double m_parkedS = 0; ///< until the next flight
    int m_flightsDone = 0;
    PilotPhase m_phase = PilotPhase::Parked;
    bool m_holdPosition = false;
};
} // namespace corvane
