#pragma once

#include "core/MagVarGrid.h"
#include "practice/Approach.h"
#include "practice/Hold.h"
#include "practice/Instruction.h"
#include "practice/PracticeScene.h"
#include "practice/Random.h"

#include <deque>
#include <optional>
#include <span>
#include <string>
#include <variant>

namespace corvane {
enum class PilotPhase : std::uint8_t { Parked, TaxiOut, LineUp, TakeOff, Airborne, LandingRoll, TaxiIn };

/// How a pilot begins.
enum class Scenario : std::uint8_t { Departure, Arrival, Cruise, Pattern };

/// What the receiver of a position report is to show.
struct ReportedPosition {
    LatLon Position;
    double AltitudeFt = 0;
    int TrueHeading = 0; ///< 0 .. 360
    double SpeedKt = 0;
};

/// A simulated pilot: plans flights between the scene's airports, flies them within the limits of the aircraft, and
/// obeys a controller. Knows nothing of sessions. The scene and the grid must outlive it.
class Pilot {
public:
    Pilot(const PracticeScene& scene, const MagVarGrid& grid, AircraftKind kind, Scenario scenario,
          PracticeRandom& random);

    /// Lives one step of StepS seconds.
    void Step(PracticeRandom& random);
    /// Obeys what was said, all of it or, where a part cannot be done, none; returns the read-back or the reason.
    std::string Obey(std::span<const Instruction> instructions);

    [[nodiscard]] ReportedPosition Report() const noexcept;
    [[nodiscard]] const FlightState& State() const noexcept { return m_state; }
    [[nodiscard]] const AircraftClass& Aircraft() const noexcept { return *m_aircraft; }
    [[nodiscard]] PilotPhase Phase() const noexcept { return m_phase; }
    [[nodiscard]] const PracticeAirport* Destination() const noexcept { return m_destination; }
    /// Flights ended at a stand since the pilot came.
    [[nodiscard]] int FlightsDone() const noexcept { return m_flightsDone; }
    /// What the pilot has to say unasked, such as "going around"; taken once.
    std::optional<std::string> TakeRadioCall();

private:
    /// The ways to steer in the air. Route: own navigation to the destination, or to the way point before it.
    struct Route {};
    struct UpwindLeg {
        double Course = 0; ///< true
        double UntilFt = 0;
    };
    struct OnHeading {
        int Magnetic = 360;
        TurnWay Turn = TurnWay::Shorter;
        bool Reached = false;
    };
    struct DirectTo {
        LatLon Place;
        std::string Name;
    };
    using Steering = std::variant<Route, UpwindLeg, OnHeading, DirectTo, Hold>;

    struct Refusal {
        std::string Why;
    };
    using Answer = std::variant<std::string, Refusal>;

    // Flights
    void BeginParked(PracticeRandom& random);
    void BeginAirborne(Scenario scenario, PracticeRandom& random);
    const PracticeAirport* PickAirport(PracticeRandom& random) const;
    LatLon RandomPlace(double nearestNm, double farthestNm, PracticeRandom& random) const;
    void PlanFlight(const PracticeAirport* from, PracticeRandom& random);
    void StartTaxiOut();
    void StartTaxiIn();

    // Steps
    void StepTaxi();
    void StepLineUp();
    void StepTakeOff();
    void StepAirborne(PracticeRandom& random);
    void StepLandingRoll();

    // In the air
    void Steer(FlightTarget& target, PracticeRandom& random);
    void SteerRoute(FlightTarget& target, PracticeRandom& random);
    void FlyOwnProfile(FlightTarget& target, double leftNm) const;
    void FlyApproach(FlightTarget& target);
    void StartGoAround();
    [[nodiscard]] double OwnSpeedKt(double altitudeFt, double leftNm) const noexcept;
    [[nodiscard]] double TrueHeadingFor(int magnetic) const noexcept;
    [[nodiscard]] double FieldFt() const noexcept;

    // Obeying
    Answer Obey(const Instruction& instruction);
    Answer ObeyHeading(const Instruction& instruction);
    Answer ObeyAltitude(const Instruction& instruction);
    Answer ObeySpeed(const Instruction& instruction);
    Answer ObeyDirect(const Instruction& instruction);
    Answer ObeyApproach(const Instruction& instruction);
    Answer ObeyGoAround();
    Answer ObeyHold();
    Answer ObeyResume();
    [[nodiscard]] std::string Say(SayWhat what) const;
    [[nodiscard]] const PracticeAirport* AirportWithRunway(std::string_view runway) const;

    const PracticeScene* m_scene;
    const MagVarGrid* m_grid;
    const AircraftClass* m_aircraft;

    FlightState m_state;
    Steering m_steering = Route{};
    std::optional<Approach> m_approach;

    const PracticeAirport* m_airport = nullptr; ///< where it stands, or comes from
    const PracticeAirport* m_destination = nullptr;
    const PracticeRunway* m_runway = nullptr; ///< in use while on the ground
    std::optional<LatLon> m_wayPoint;         ///< flown over before the destination
    std::size_t m_stand = 0;
    double m_cruiseFt = 0;
    std::deque<LatLon> m_taxiRoute;
    double m_parkedS = 0; ///< until the next flight

    std::optional<double> m_askedFt; ///< by the controller
    std::optional<double> m_askedKt;
    std::string m_radioCall;
    int m_flightsDone = 0;
    PilotPhase m_phase = PilotPhase::Parked;
    bool m_pattern = false;      ///< stays at its airport, circuit after circuit
    bool m_askedToLand = false;  ///< the approach is by clearance, not the own plan
    bool m_holdPosition = false; ///< on the ground
};
} // namespace corvane
