#pragma once

namespace corvane {
/// A steady wind, the same at all heights.
struct PracticeWind {
    double FromDeg = 0; ///< true, where it comes from
    double SpeedKt = 0; ///< 0: calm

    [[nodiscard]] bool Blows() const noexcept { return SpeedKt > 0; }
    /// Knots against somebody who moves on a true course; below 0 from behind.
    [[nodiscard]] double HeadKt(double course) const noexcept;
    /// The true heading that keeps a true course at an airspeed, as far as that is possible; in a calm the course.
    [[nodiscard]] double HeadingFor(double course, double airspeedKt) const noexcept;
};

/// Course and speed over the ground.
struct GroundVector {
    double TrackDeg = 0;
    double SpeedKt = 0;
};
/// What becomes of a heading and an airspeed in a wind; in a calm the same, to the bit.
GroundVector OverGround(double heading, double airspeedKt, const PracticeWind& wind) noexcept;
} // namespace corvane
