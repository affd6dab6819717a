#include "demo/PlaneGeometry.h"

#include <algorithm>
#include <cmath>

namespace corvane {
double Length(GroundVector a) noexcept
{
    return std::sqrt(Dot(a, a));
}

double DistanceToSegment(GroundVector point, const GroundSegment& segment) noexcept
{
    const GroundVector along = segment.B - segment.A;
    const double square = Dot(along, along);
    const double t = square > 0 ? std::clamp(Dot(point - segment.A, along) / square, 0.0, 1.0) : 0;
    return Length(point - (segment.A + along * t));
}

static GroundSegment Shortened(const GroundSegment& segment) noexcept
{
    constexpr double Margin = 1;
    const GroundVector along = segment.B - segment.A;
    const double length = Length(along);
    if (length <= 2 * Margin)
        return segment;
    const GroundVector step = along * (Margin / length);
    return {segment.A + step, segment.B - step};
}

/// The ends of segment lie on different sides of the line through the other.
static bool Parts(const GroundSegment& line, const GroundSegment& segment) noexcept
{
    const GroundVector along = line.B - line.A;
    return Cross(along, segment.A - line.A) * Cross(along, segment.B - line.A) < 0;
}

bool SegmentsCross(const GroundSegment& one, const GroundSegment& other) noexcept
{
    const GroundSegment a = Shortened(one);
    const GroundSegment b = Shortened(other);
    return Parts(a, b) && Parts(b, a);
}
} // namespace corvane
