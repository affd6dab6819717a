#pragma once

#include "core/Geodesy.h"

#include <cmath>
#include <cstdint>

namespace corvane {
inline constexpr std::int16_t AreaRadiusNm = 90;

/// The circle of an airport area: every position whose whole-mile distance from the centre is at most AreaRadiusNm.
/// A position that is not finite lies nowhere, so not in the circle either.
class AreaCircle {
public:
    AreaCircle(double centerLat, double centerLon) noexcept;

    [[nodiscard]] bool Contains(double lat, double lon) const noexcept
    {
        return !PlainlyOutside(lat, lon) && std::isfinite(lat) && std::isfinite(lon) &&
               DistanceNm(m_lat, m_lon, lat, lon) <= AreaRadiusNm;
    }

    /// True only for positions that DistanceNm puts beyond the radius, and for almost all of them: it compares degrees
    /// and computes no distance.
    ///
    /// The shortest way to a position is no shorter than its difference in latitude, and stays within m_lonReach of the
    /// centre's meridian while it stays within reach. Both bounds allow 91 miles, half a mile more than what rounds to
    /// 90, which is thousands of times what the distance formula can be off. There is one exception: close to the
    /// centre's antipode the cosine of the distance may round past -1, and the distance then reads 0.
    [[nodiscard]] bool PlainlyOutside(double lat, double lon) const noexcept
    {
        if (!m_onEarth || !OnEarth(lat, lon))
            return false;
        const bool antipodalLat = std::abs(lat + m_lat) <= AntipodeDegrees;
        if (std::abs(lat - m_lat) > LatReach)
            return !antipodalLat;
        const double turn = std::abs(lon - m_lon);
        if (turn > m_lonReach && turn < 360 - m_lonReach)
            return !(antipodalLat && std::abs(turn - 180) <= AntipodeDegrees);
        return false;
    }

private:
    static constexpr double LatReach = (AreaRadiusNm + 1) / 60.0;
    static constexpr double AntipodeDegrees = 0.01;

    double m_lat;
    double m_lon;
    bool m_onEarth;          ///< the bounds hold for such positions only: the formula itself takes any number of turns
    double m_lonReach = 360; ///< degrees; a circle that comes near a pole has every meridian in reach
};
} // namespace corvane
