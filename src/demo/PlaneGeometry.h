#pragma once

namespace corvane {
/// A point or direction on an airport's ground: metres east and north of the reference point.
struct GroundVector {
    double East = 0;
    double North = 0;
};

constexpr GroundVector operator+(GroundVector a, GroundVector b) noexcept
{
    return {a.East + b.East, a.North + b.North};
}
constexpr GroundVector operator-(GroundVector a, GroundVector b) noexcept
{
    return {a.East - b.East, a.North - b.North};
}
constexpr GroundVector operator*(GroundVector a, double factor) noexcept
{
    return {a.East * factor, a.North * factor};
}
constexpr double Dot(GroundVector a, GroundVector b) noexcept
{
    return a.East * b.East + a.North * b.North;
}
/// Above 0 when b points to the left of a.
constexpr double Cross(GroundVector a, GroundVector b) noexcept
{
    return a.East * b.North - a.North * b.East;
}
double Length(GroundVector a) noexcept;

struct GroundSegment {
    GroundVector A;
    GroundVector B;
};

double DistanceToSegment(GroundVector point, const GroundSegment& segment) noexcept;
/// The segments cut each other, ends that meet or nearly meet not counted: each is taken one metre shorter at both
/// ends.
bool SegmentsCross(const GroundSegment& one, const GroundSegment& other) noexcept;
} // namespace corvane
