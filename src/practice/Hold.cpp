#include "practice/Hold.h"

#include <cmath>

namespace corvane {
void Hold::Guide(const FlightState& state, FlightTarget& target) noexcept
{
    constexpr double AlignedDeg = 5;
    const double outbound = WrapCourse(m_inbound + 180);
    const bool turning = m_leg == Leg::TurnOut || m_leg == Leg::TurnIn;
    target.Turn = turning ? m_turns : TurnWay::Shorter;
    switch (m_leg) {
    case Leg::TurnOut:
        target.HeadingDeg = outbound;
        if (std::abs(TurnTo(state.HeadingDeg, outbound)) < AlignedDeg) {
            m_leg = Leg::Out;
            m_outSeconds = 0;
        }
        break;
    case Leg::Out:
        target.HeadingDeg = outbound;
        m_outSeconds += StepS;
        if (m_outSeconds >= m_legS)
            m_leg = Leg::TurnIn;
        break;
    case Leg::TurnIn:
        target.HeadingDeg = m_inbound;
        if (std::abs(TurnTo(state.HeadingDeg, m_inbound)) < AlignedDeg)
            m_leg = Leg::In;
        break;
    case Leg::In:
        target.HeadingDeg = CourseTo(state.Position, m_fix);
        target.IsTrack = true;
        if (OffsetFromLine(m_fix, m_inbound, state.Position).OutNm <= 0)
            m_leg = Leg::TurnOut;
        break;
    }
}
} // namespace corvane
