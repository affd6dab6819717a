#pragma once

#include "practice/FlightModel.h"
#include "practice/GroundTraffic.h"
#include "practice/Journey.h"

#include <deque>
#include <optional>

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
    void Step(FlightState& state, Journey& journey, const GroundView& view);

    // What a controller asks for
    void HoldPosition() noexcept { m_holdPosition = true; }
    void Continue() noexcept { m_holdPosition = false; }
    /// Ready to taxi in a moment.
    void Pushback() noexcept;
    /// Taxies to a runway, from now on or anew.
    void TaxiTo(const PracticeRunway& runway, const FlightState& state, const PracticeAirport& airport);
    /// The same on a way to the runway as RouteVia finds one.
    void TaxiOn(const PracticeRunway& runway, std::deque<LatLon> way);
    void HoldShort() noexcept { m_atHoldingPoint = true; }
    void LineUpAndWait() noexcept;
    void ClearTakeOff() noexcept;
    /// Stops on the runway; a take-off that is too fast already goes on, which the caller rules out.
    void StopTakeOff() noexcept;

    /// Whether its stand at an airport lies to the left of a runway there.
    [[nodiscard]] bool StandIsLeftOf(const PracticeRunway& runway, const PracticeAirport& airport) const noexcept
    {
        return OffsetFromLine(runway.Threshold, runway.Course, airport.Stand(m_stand)).LeftNm >= 0;
    }

    /// Goes to the next stand of the airport where nobody stands, if its own is taken; it is parked.
    void FindFreeStand(FlightState& state, const PracticeAirport& airport, const GroundView& view);
    /// The stand to which it taxies; nothing while it taxies to none.
    [[nodiscard]] std::optional<LatLon> StandAhead() const
    {
        return m_phase == PilotPhase::TaxiIn && !m_taxiRoute.empty() ? std::optional(m_taxiRoute.back()) : std::nullopt;
    }

    /// Waits for the controller's word before it taxies and before it enters the runway.
    void AskFirst() noexcept;
    /// Waits at the stand, ready to go; or at the runway.
    [[nodiscard]] bool WaitsAtStand() const noexcept { return m_phase == PilotPhase::Parked && m_parkedS <= 0; }
    [[nodiscard]] bool WaitsAtRunway() const noexcept;

    [[nodiscard]] PilotPhase Phase() const noexcept { return m_phase; }
    [[nodiscard]] bool IsRolling() const noexcept
    {
        return m_phase == PilotPhase::TakeOff || m_phase == PilotPhase::LandingRoll;
    }
    [[nodiscard]] bool IsOnWayIn() const noexcept
    {
        return m_phase == PilotPhase::LandingRoll || m_phase == PilotPhase::TaxiIn;
    }
    /// The runway in use; null before the first.
    [[nodiscard]] const PracticeRunway* Runway() const noexcept { return m_runway; }
    /// Flights ended at a stand.
    [[nodiscard]] int FlightsDone() const noexcept { return m_flightsDone; }

private:
    void StartTaxiOut(const FlightState& state, const Journey& journey);
    void PlanTaxiOut(const FlightState& state, const PracticeAirport& airport);
    void PickStand(const PracticeAirport& airport, const GroundView& view);
    void StartTaxiIn(const FlightState& state, const Journey& journey, const GroundView& view);
    [[nodiscard]] bool GivesWay(const FlightState& state, const PracticeAirport& airport, const GroundView& view);
    [[nodiscard]] bool IsNearLine(const FlightState& state) const noexcept;
    void StepTaxi(FlightState& state, Journey& journey, const GroundView& view);
    void StepLineUp(FlightState& state, const GroundView& view);
    void StepTakeOff(FlightState& state);
    void StepLandingRoll(FlightState& state, const Journey& journey, const GroundView& view);

    const AircraftClass* m_aircraft;
    const PracticeRunway* m_runway = nullptr;
    std::size_t m_stand;
    std::deque<LatLon> m_taxiRoute;
    double m_parkedS = 0; ///< until the next flight
    int m_flightsDone = 0;
    PilotPhase m_phase = PilotPhase::Parked;
    const PracticeRunway* m_givenRunway = nullptr; ///< by the controller, instead of the one in use
    bool m_holdPosition = false;
    bool m_atHoldingPoint = false; ///< stops before the runway
    bool m_waitsLinedUp = false;
    bool m_asksFirst = false;
    double m_blockedS = 0; ///< somebody has been ahead for so long
    double m_passingS = 0; ///< goes by others for so long
};
} // namespace corvane
