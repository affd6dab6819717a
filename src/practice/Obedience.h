#pragma once

#include "practice/PilotOrders.h"
#include "practice/PilotTalk.h"

#include <span>
#include <string>

namespace corvane {
/// Does what a controller says, or tells why it cannot be done: the whole of a message, now or at its moment. What is
/// asked of the flight itself is AirObedience's and GroundObedience's.
class Obedience {
public:
    explicit Obedience(const ObeyingPilot& pilot) noexcept : m_pilot(pilot) {}

    /// Obeys all of what was said or, where a part cannot be done, none.
    ObeyAnswer Obey(std::span<const Instruction> instructions, const ReportedPosition& report);
    /// Does what has waited for this moment. Returns what there is to say of it, or an empty text.
    std::string ObeyPending();

private:
    ObeyAnswer Obey(const Instruction& instruction);
    ObeyAnswer ObeyNow(const Instruction& instruction);
    ObeyAnswer Postpone(const Instruction& instruction);
    ObeyAnswer ObeyHold(const Instruction& instruction);
    ObeyAnswer ObeyCancel(const Instruction& instruction);
    ObeyAnswer ObeyVacate(const Instruction& instruction);
    ObeyAnswer ObeyContact(const Instruction& instruction);
    [[nodiscard]] ObeyAnswer Say(SayWhat what) const;
    void EndThen(const Instruction& instruction);
    [[nodiscard]] bool HasCome(const PendingInstruction& pending) const;

    ObeyingPilot m_pilot;
    ReportedPosition m_report;
    bool m_departs = false;       ///< the message clears a departure: what is said of the air is for after it
    bool m_tellsAltitude = false; ///< the message gives an altitude
};
} // namespace corvane
