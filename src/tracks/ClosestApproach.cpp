#include "tracks/ClosestApproach.h"

#include <algorithm>
#include <cmath>

namespace corvane {
static constexpr double SecondsPerMinute = 60;

Mover MakeMover(const LatLon& position, double course, double speedKt, double altitudeFt, double climbFtPerMin) noexcept
{
    const double radians = course * RadiansPerDegree;
    return {position, speedKt * std::sin(radians), speedKt * std::cos(radians), altitudeFt, climbFtPerMin};
}

namespace {
/// How one target moves as seen from the other, in miles, feet and seconds.
struct RelativeMotion {
    PlaneOffset At;
    double EastPerSecond = 0;
    double NorthPerSecond = 0;
    double Ft = 0;
    double FtPerSecond = 0;

    [[nodiscard]] double DistanceNm(double seconds) const noexcept
    {
        return std::hypot(At.EastNm + EastPerSecond * seconds, At.NorthNm + NorthPerSecond * seconds);
    }
    [[nodiscard]] double HeightFt(double seconds) const noexcept { return std::abs(Ft + FtPerSecond * seconds); }
};

/// The times between From and To, both left out; none where To is not after From.
struct TimeSpan {
    double From = 0;
    double To = 0;
};
} // namespace

static constexpr double Ever = 1e9; ///< seconds; far beyond what is looked ahead
static constexpr TimeSpan Always{-Ever, Ever};
static constexpr TimeSpan Never{0, 0};

static RelativeMotion MotionBetween(const Mover& one, const Mover& other) noexcept
{
    return {OffsetOnPlane(one.Position, other.Position), (other.EastKt - one.EastKt) / SecondsPerHour,
            (other.NorthKt - one.NorthKt) / SecondsPerHour, other.AltitudeFt - one.AltitudeFt,
            (other.ClimbFtPerMin - one.ClimbFtPerMin) / SecondsPerMinute};
}

static double SecondsOfLeastDistance(const RelativeMotion& motion, double within) noexcept
{
    const double speed2 = motion.EastPerSecond * motion.EastPerSecond + motion.NorthPerSecond * motion.NorthPerSecond;
    const double closing = -(motion.At.EastNm * motion.EastPerSecond + motion.At.NorthNm * motion.NorthPerSecond);
    return closing > 0 && speed2 > 0 ? std::min(closing / speed2, within) : 0;
}

/// When the distance is below a limit: between the roots of its square, which is a parabola in time.
static TimeSpan TimesCloserThan(const RelativeMotion& motion, double nm) noexcept
{
    const double a = motion.EastPerSecond * motion.EastPerSecond + motion.NorthPerSecond * motion.NorthPerSecond;
    const double b = motion.At.EastNm * motion.EastPerSecond + motion.At.NorthNm * motion.NorthPerSecond;
    const double c = motion.At.EastNm * motion.At.EastNm + motion.At.NorthNm * motion.At.NorthNm - nm * nm;
    constexpr double Resting = 1e-18; // less than a hundredth of an inch an hour
    if (a < Resting)
        return c < 0 ? Always : Never;
    const double root = b * b - a * c;
    if (root <= 0)
        return Never;
    return {(-b - std::sqrt(root)) / a, (-b + std::sqrt(root)) / a};
}

static TimeSpan TimesLevelWithin(const RelativeMotion& motion, double ft) noexcept
{
    constexpr double Resting = 1e-9;
    if (std::abs(motion.FtPerSecond) < Resting)
        return std::abs(motion.Ft) < ft ? Always : Never;
    const double one = (-ft - motion.Ft) / motion.FtPerSecond;
    const double other = (ft - motion.Ft) / motion.FtPerSecond;
    return {std::min(one, other), std::max(one, other)};
}

static ClosestPoint ClosestOf(const RelativeMotion& motion, double withinSeconds) noexcept
{
    const double seconds = SecondsOfLeastDistance(motion, withinSeconds);
    return {seconds, motion.DistanceNm(seconds), motion.HeightFt(seconds)};
}

ClosestPoint FindClosestPoint(const Mover& one, const Mover& other, double withinSeconds) noexcept
{
    return ClosestOf(MotionBetween(one, other), withinSeconds);
}

std::optional<Conflict> FindConflict(const Mover& one, const Mover& other, const AlertOptions& options) noexcept
{
    const RelativeMotion motion = MotionBetween(one, other);
    const bool violated = motion.DistanceNm(0) < options.ConflictNm && motion.HeightFt(0) < options.ConflictFt;
    if (!violated) {
        const TimeSpan close = TimesCloserThan(motion, options.ConflictNm);
        const TimeSpan level = TimesLevelWithin(motion, options.ConflictFt);
        const double from = std::max(close.From, level.From);
        const double to = std::min(close.To, level.To);
        if (!(from < to) || to <= 0 || from >= options.ConflictSeconds)
            return std::nullopt;
    }
    const ClosestPoint closest = ClosestOf(motion, options.ConflictSeconds);
    return Conflict{violated, closest.Seconds, closest.Nm, closest.Ft};
}
} // namespace corvane
