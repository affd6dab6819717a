#include "practice/Wind.h"

#include "core/GreatCircle.h"

#include <algorithm>
#include <cmath>

namespace corvane {
double PracticeWind::HeadKt(double course) const noexcept
{
    return SpeedKt * std::cos((FromDeg - course) * RadiansPerDegree);
}

double PracticeWind::HeadingFor(double course, double airspeedKt) const noexcept
{
    if (!Blows())
        return course;
    constexpr double SteepestSine = 0.7; // more than that and the nose no longer says where it goes
    const double crossKt = SpeedKt * std::sin((FromDeg - course) * RadiansPerDegree);
    const double sine = std::clamp(crossKt / std::max(airspeedKt, 1.0), -SteepestSine, SteepestSine);
    return WrapCourse(course + std::asin(sine) * DegreesPerRadian);
}

GroundVector OverGround(double heading, double airspeedKt, const PracticeWind& wind) noexcept
{
    if (!wind.Blows())
        return {heading, airspeedKt};
    const double north =
        airspeedKt * std::cos(heading * RadiansPerDegree) - wind.SpeedKt * std::cos(wind.FromDeg * RadiansPerDegree);
    const double east =
        airspeedKt * std::sin(heading * RadiansPerDegree) - wind.SpeedKt * std::sin(wind.FromDeg * RadiansPerDegree);
    return {WrapCourse(std::atan2(east, north) * DegreesPerRadian), std::hypot(north, east)};
}
} // namespace corvane
