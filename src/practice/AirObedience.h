#pragma once

#include "practice/PilotOrders.h"

namespace corvane {
/// Does what a controller asks of a pilot in the air.
class AirObedience {
public:
    /// tellsAltitude  the message gives an altitude, which an approach does not take back
    AirObedience(const ObeyingPilot& pilot, bool tellsAltitude) noexcept
        : m_pilot(pilot), m_tellsAltitude(tellsAltitude)
    {
    }

    ObeyAnswer Obey(const Instruction& instruction);

private:
    ObeyAnswer ObeyHeading(const Instruction& instruction);
    ObeyAnswer ObeyAltitude(const Instruction& instruction);
    ObeyAnswer ObeySpeed(const Instruction& instruction);
    ObeyAnswer ObeyDirect(const Instruction& instruction);
    ObeyAnswer ObeyRunwayHeading(const Instruction& instruction);
    ObeyAnswer ObeyApproach(const Instruction& instruction);
    ObeyAnswer ObeyLand(const Instruction& instruction);
    ObeyAnswer ObeyGoAround(const Instruction& instruction);
    [[nodiscard]] const PracticeAirport* AirportWithRunway(std::string_view runway) const;
    /// The runway that an approach without a name is for; null when there is none.
    [[nodiscard]] const PracticeRunway* UsualRunway(bool ils) const;

    const ObeyingPilot& m_pilot;
    bool m_tellsAltitude;
};
} // namespace corvane
