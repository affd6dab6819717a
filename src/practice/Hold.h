#pragma once

#include "practice/FlightModel.h"

namespace corvane {
/// A holding pattern over the place where it was begun: right turns, one-minute legs, inbound on the heading then
/// flown.
class Hold {
public:
    explicit Hold(const FlightState& state) noexcept : m_fix(state.Position), m_inbound(state.HeadingDeg) {}

    /// Fills heading and way of turn of the target for one step.
    void Guide(const FlightState& state, FlightTarget& target) noexcept;

private:
    enum class Leg : std::uint8_t { TurnOut, Out, TurnIn, In };

    LatLon m_fix;
    double m_inbound; ///< true
    double m_outSeconds = 0;
    Leg m_leg = Leg::TurnOut;
};
} // namespace corvane
