#pragma once

#include "core/GreatCircle.h"
#include "practice/AircraftClass.h"
#include "practice/Wind.h"

#include <cstdint>
#include <optional>

namespace corvane {
/// The limits that hold for every aircraft at every step.
inline constexpr double StandardRateDegPerS = 3;
inline constexpr double BankLimitDeg = 25;
inline constexpr double VerticalChangeFpmPerS = 400; ///< how fast a climb or a descent builds up
inline constexpr double GroundTurnDegPerS = 30;
inline constexpr double StepS = 1; ///< the flight model's step, seconds

/// Where an aircraft is and how it moves.
struct FlightState {
    LatLon Position = {};
    double AltitudeFt = 0;
    double HeadingDeg = 0; ///< true
    double SpeedKt = 0;    ///< through the air; on the ground over it
    double VerticalFpm = 0;
    double BankDeg = 0; ///< positive to the right
    bool OnGround = true;
    PracticeWind Wind = {};
    std::optional<double> FuelMin = std::nullopt; ///< minutes of flight left; nothing: as much as it needs

    [[nodiscard]] GroundVector Ground() const noexcept
    {
        return OnGround ? GroundVector{HeadingDeg, SpeedKt} : OverGround(HeadingDeg, SpeedKt, Wind);
    }
};

enum class TurnWay : std::uint8_t { Shorter, Left, Right };

/// What the pilot wants; the aircraft gets there within its limits.
struct FlightTarget {
    double HeadingDeg = 0; ///< true
    bool IsTrack = false;  ///< that is to be the course over the ground, whatever the wind
    TurnWay Turn = TurnWay::Shorter;
    double AltitudeFt = 0;
    double SpeedKt = 0;
    std::optional<double> VerticalFpm =
        std::nullopt; ///< flown instead of the class's own climb or descent, as on a glide path
};

/// Degrees a second: the standard rate, or less where it would need more than the bank limit.
double TurnRate(double speedKt) noexcept;
/// Nautical miles, of a turn at that rate.
double TurnRadiusNm(double speedKt) noexcept;

/// The same over the ground, where a wind carries the aircraft on in its turn.
double GroundTurnRadiusNm(const FlightState& state) noexcept;

/// Flies one step in the air.
void FlyStep(FlightState& state, const FlightTarget& target, const AircraftClass& aircraft) noexcept;

/// Runs along the ground for one step toward a speed, straight on.
void RollStep(FlightState& state, double targetKt, double changeKtPerS) noexcept;

/// Taxies one step toward a point; returns true once it is there.
bool TaxiStep(FlightState& state, const LatLon& point, double taxiKt) noexcept;
} // namespace corvane
