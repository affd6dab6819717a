#pragma once

#include "practice/PilotOrders.h"

namespace corvane {
/// Does what a controller asks of a pilot on the ground.
class GroundObedience {
public:
    explicit GroundObedience(const ObeyingPilot& pilot) noexcept : m_pilot(pilot) {}

    ObeyAnswer Obey(const Instruction& instruction);

private:
    ObeyAnswer ObeyTaxi(const Instruction& instruction);
    ObeyAnswer ObeyRunwayEntry(const Instruction& instruction);

    const ObeyingPilot& m_pilot;
};
} // namespace corvane
