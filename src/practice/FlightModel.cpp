#include "practice/FlightModel.h"

#include <algorithm>
#include <cmath>

namespace corvane {
static constexpr double GravityMs2 = 9.80665;
static constexpr double MsPerKt = 1852.0 / 3600.0;
static constexpr double NmPerKtStep = StepS / 3600.0;

static double Toward(double from, double to, double largestChange) noexcept
{
    return from + std::clamp(to - from, -largestChange, largestChange);
}

double TurnRate(double speedKt) noexcept
{
    const double tanLimit = std::tan(BankLimitDeg * RadiansPerDegree);
    const double bankLimited = GravityMs2 * tanLimit / (std::max(speedKt, 1.0) * MsPerKt) * DegreesPerRadian;
    return std::min(StandardRateDegPerS, bankLimited);
}

double TurnRadiusNm(double speedKt) noexcept
{
    return speedKt / 3600.0 / (TurnRate(speedKt) * RadiansPerDegree);
}

double GroundTurnRadiusNm(const FlightState& state) noexcept
{
    if (!state.Wind.Blows())
        return TurnRadiusNm(state.SpeedKt);
    return state.Ground().SpeedKt / 3600.0 / (TurnRate(state.SpeedKt) * RadiansPerDegree);
}

/// The turn that is left, positive to the right; a turn way ordered by the controller may take the long way round.
static double TurnLeft(const FlightState& state, const FlightTarget& target) noexcept
{
    const double heading = target.IsTrack ? state.Wind.HeadingFor(target.HeadingDeg, state.SpeedKt) : target.HeadingDeg;
    const double turn = TurnTo(state.HeadingDeg, heading);
    constexpr double AsGoodAsThere = 0.01;
    if (std::abs(turn) < AsGoodAsThere)
        return turn;
    if (target.Turn == TurnWay::Right && turn < 0)
        return turn + 360;
    if (target.Turn == TurnWay::Left && turn > 0)
        return turn - 360;
    return turn;
}

static double WantedFpm(const FlightState& state, const FlightTarget& target, const AircraftClass& aircraft) noexcept
{
    const double most = state.AltitudeFt < target.AltitudeFt ? aircraft.ClimbFpm : aircraft.DescentFpm;
    if (target.VerticalFpm)
        return std::clamp(*target.VerticalFpm, -aircraft.DescentFpm, aircraft.ClimbFpm);
    constexpr double LevelOffS = 6; // the last feet are flown ever slower, so that the altitude is not overshot
    return std::clamp((target.AltitudeFt - state.AltitudeFt) / LevelOffS * 60, -most, most);
}

void FlyStep(FlightState& state, const FlightTarget& target, const AircraftClass& aircraft) noexcept
{
    state.SpeedKt = Toward(state.SpeedKt, target.SpeedKt, aircraft.AccelerationKtPerS * StepS);
    const double rate = TurnRate(state.SpeedKt);
    const double turn = std::clamp(TurnLeft(state, target), -rate * StepS, rate * StepS);
    state.HeadingDeg = WrapCourse(state.HeadingDeg + turn);
    state.BankDeg =
        std::atan(state.SpeedKt * MsPerKt * (turn / StepS * RadiansPerDegree) / GravityMs2) * DegreesPerRadian;
    state.VerticalFpm = Toward(state.VerticalFpm, WantedFpm(state, target, aircraft), VerticalChangeFpmPerS * StepS);
    state.AltitudeFt += state.VerticalFpm / 60 * StepS;
    // Half of the turn before the step and half after it: the chord of the arc, not its tangent.
    const GroundVector ground = OverGround(state.HeadingDeg - turn / 2, state.SpeedKt, state.Wind);
    state.Position = Along(state.Position, ground.TrackDeg, ground.SpeedKt * NmPerKtStep);
    state.OnGround = false;
}

void RollStep(FlightState& state, double targetKt, double changeKtPerS) noexcept
{
    state.SpeedKt = Toward(state.SpeedKt, targetKt, changeKtPerS * StepS);
    state.VerticalFpm = 0;
    state.BankDeg = 0;
    state.Position = Along(state.Position, state.HeadingDeg, state.SpeedKt * NmPerKtStep);
    state.OnGround = true;
}

bool TaxiStep(FlightState& state, const LatLon& point, double taxiKt) noexcept
{
    constexpr double TaxiKtPerS = 4;
    const double left = RangeNm(state.Position, point);
    const double turn = left > 0 ? TurnTo(state.HeadingDeg, CourseTo(state.Position, point)) : 0;
    state.HeadingDeg =
        WrapCourse(state.HeadingDeg + std::clamp(turn, -GroundTurnDegPerS * StepS, GroundTurnDegPerS * StepS));
    constexpr double SharpTurnDeg = 60;
    const double wanted = std::abs(turn) > SharpTurnDeg ? 0 : taxiKt; // turns on the spot first
    state.SpeedKt = Toward(state.SpeedKt, wanted, TaxiKtPerS * StepS);
    state.VerticalFpm = 0;
    state.BankDeg = 0;
    state.OnGround = true;
    const double nm = state.SpeedKt * NmPerKtStep;
    if (nm >= left) {
        state.Position = point;
        return true;
    }
    // While a turn goes on the aircraft rolls where it points, so that its track shows no corner.
    state.Position = Along(state.Position, state.HeadingDeg, nm);
    return false;
}
} // namespace corvane
