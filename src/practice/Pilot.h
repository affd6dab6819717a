#pragma once

#include "practice/Obedience.h"

#include <optional>

namespace corvane {
/// How a pilot begins.
enum class Scenario : std::uint8_t { Departure, Arrival, Cruise, Pattern };

/// Where a pilot begins that is planned; what is not said is as the pilot's own plan has it.
struct PilotStart {
    const PracticeAirport* Airport = nullptr; ///< on whose ground it stands; null: in the air
    const PracticeAirport* Destination = nullptr;
    LatLon Position; ///< in the air
    std::optional<double> AltitudeFt;
    std::optional<LatLon> Over;    ///< in the air: a navaid on the way
    std::optional<double> FuelMin; ///< minutes of flight; nothing: as much as it needs
    bool AsksFirst = false;        ///< on the ground it waits for the controller's word
};

/// A simulated pilot: plans flights between the scene's airports, flies them within the limits of the aircraft, and
/// obeys a controller. Knows nothing of sessions. The scene and the grid must outlive it.
class Pilot {
public:
    Pilot(const PracticeScene& scene, const MagVarGrid& grid, AircraftKind kind, Scenario scenario,
          PracticeRandom& random);

    Pilot(const PracticeScene& scene, const MagVarGrid& grid, AircraftKind kind, const PilotStart& start,
          PracticeRandom& random);

    /// Goes to a stand of its own, if it is parked where somebody else stands.
    void StandApart(const GroundView& view);
    /// The stand to which it taxies; nothing while it taxies to none.
    [[nodiscard]] std::optional<LatLon> StandAhead() const { return m_orders.Ground.StandAhead(); }
    /// Lives one step of StepS seconds.
    /// view  the traffic on the ground and about to land
    void Step(PracticeRandom& random, const GroundView& view = {});
    /// Obeys what was said, all of it or, where a part cannot be done, none; returns the read-back or the reason.
    std::string Obey(std::span<const Instruction> instructions);
    /// What is said to a line that made no sense.
    std::string NotUnderstood() { return m_lastSaid = "say again"; }

    /// What it says when it comes: where it is and what it wants.
    [[nodiscard]] std::string FirstCall() const;
    /// What it waits for; empty while it waits for nothing.
    [[nodiscard]] std::string Request() const;

    [[nodiscard]] ReportedPosition Report() const noexcept;
    [[nodiscard]] const FlightState& State() const noexcept { return m_state; }
    [[nodiscard]] const AircraftClass& Aircraft() const noexcept { return m_planner.Aircraft(); }
    [[nodiscard]] PilotPhase Phase() const noexcept { return m_orders.Ground.Phase(); }
    [[nodiscard]] const PracticeAirport* Destination() const noexcept { return m_orders.Trip.Destination; }
    /// Flights ended at a stand since the pilot came.
    [[nodiscard]] int FlightsDone() const noexcept { return m_orders.Ground.FlightsDone(); }
    /// Came down without fuel: its flight is over.
    [[nodiscard]] bool IsDown() const noexcept { return m_isDown; }
    /// What the pilot has to say unasked, such as "going around"; taken once.
    std::optional<std::string> TakeRadioCall();

private:
    void BeginParked(PracticeRandom& random);
    [[nodiscard]] ObeyingPilot Situation() noexcept
    {
        return {m_planner.Scene(), *m_grid, Aircraft(), m_state, m_orders};
    }
    std::string Disregard();
    void BurnFuel();
    [[nodiscard]] bool Glides() const noexcept;
    void Glide();
    void BeginAirborne(Scenario scenario, PracticeRandom& random);

    JourneyPlanner m_planner;
    const MagVarGrid* m_grid;
    FlightState m_state;
    PilotOrders m_orders;
    std::optional<PilotOrders> m_before; ///< the last instruction that was obeyed
    std::string m_lastSaid;
    std::string m_call; ///< to be said unasked
    bool m_isDown = false;
};
} // namespace corvane
