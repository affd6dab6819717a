#pragma once

#include "practice/AirNavigation.h"
#include "practice/GroundRun.h"
#include "practice/PilotTalk.h"

#include <span>
#include <string>
#include <variant>

namespace corvane {
/// What of a pilot an instruction can change.
struct PilotOrders {
    Journey Trip;
    GroundRun Ground;
    AirNavigation Air;
};

/// Does what a controller says, or tells why it cannot be done.
class Obedience {
public:
    /// All of it must outlive the obedience.
    Obedience(const PracticeScene& scene, const MagVarGrid& grid, const AircraftClass& aircraft,
              const FlightState& state, PilotOrders& orders) noexcept
        : m_scene(scene), m_grid(grid), m_aircraft(aircraft), m_state(state), m_orders(orders)
    {
    }

    /// Obeys all of what was said or, where a part cannot be done, none; returns the read-back or the reason.
    std::string Obey(std::span<const Instruction> instructions, const ReportedPosition& report);

private:
    struct Refusal {
        std::string Why;
    };
    using Answer = std::variant<std::string, Refusal>;

    Answer Obey(const Instruction& instruction);
    Answer ObeyHeading(const Instruction& instruction);
    Answer ObeyAltitude(const Instruction& instruction);
    Answer ObeySpeed(const Instruction& instruction);
    Answer ObeyDirect(const Instruction& instruction);
    Answer ObeyApproach(const Instruction& instruction);
    Answer ObeyGoAround();
    Answer ObeyHold();
    Answer ObeyResume();
    [[nodiscard]] const PracticeAirport* AirportWithRunway(std::string_view runway) const;
    [[nodiscard]] bool IsAirborne() const noexcept { return m_orders.Ground.Phase() == PilotPhase::Airborne; }

    const PracticeScene& m_scene;
    const MagVarGrid& m_grid;
    const AircraftClass& m_aircraft;
    const FlightState& m_state;
    PilotOrders& m_orders;
};
} // namespace corvane
