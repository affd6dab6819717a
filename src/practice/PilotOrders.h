#pragma once

#include "practice/AirNavigation.h"
#include "practice/GroundRun.h"
#include "practice/Instruction.h"

#include <string>
#include <variant>
#include <vector>

namespace corvane {
/// An instruction that waits for its moment.
struct PendingInstruction {
    Instruction What;
    bool WasAbove = false; ///< the altitude of the moment, when it was given
};

/// What of a pilot an instruction can change.
struct PilotOrders {
    Journey Trip;
    GroundRun Ground;
    AirNavigation Air;
    std::vector<PendingInstruction> Pending = {};
    std::string Transponder = "1200";
    bool Handed = false; ///< to another controller

    [[nodiscard]] bool IsAirborne() const noexcept { return Ground.Phase() == PilotPhase::Airborne; }
};

/// A pilot as far as obeying needs it; all of it outlives the obeying.
struct ObeyingPilot {
    const PracticeScene& Scene;
    const MagVarGrid& Grid;
    const AircraftClass& Aircraft;
    const FlightState& State;
    PilotOrders& Orders;
};

struct ObeyRefusal {
    std::string Why;
};
/// The read-back, or why nothing was done.
using ObeyAnswer = std::variant<std::string, ObeyRefusal>;

inline constexpr double SameAltitudeFt = 50; ///< a smaller change of altitude is none
} // namespace corvane
