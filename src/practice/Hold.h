#pragma once

#include "practice/FlightModel.h"

namespace corvane {
/// A holding pattern: flown inbound over a fix, then outbound beside it.
class Hold {
public:
    static constexpr int UsualMinutes = 1;
    /// Over the place where it is begun, inbound on the heading then flown: right turns, one-minute legs.
    explicit Hold(const FlightState& state) noexcept
        : Hold(state.Position, state.HeadingDeg, TurnWay::Right, UsualMinutes)
    {
    }
    /// inbound  true course to the fix
    /// turns    Left or Right
    /// minutes  length of the legs
    Hold(const LatLon& fix, double inbound, TurnWay turns, int minutes) noexcept
        : m_fix(fix), m_inbound(inbound), m_turns(turns), m_legS(60.0 * minutes)
    {
    }

    /// Fills heading and way of turn of the target for one step.
    void Guide(const FlightState& state, FlightTarget& target) noexcept;

private:
    enum class Leg : std::uint8_t { TurnOut, Out, TurnIn, In };

    LatLon m_fix;
    double m_inbound; ///< true
    TurnWay m_turns;
    double m_legS;
    double m_outSeconds = 0;
    Leg m_leg = Leg::TurnOut;
};
} // namespace corvane
