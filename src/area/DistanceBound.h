#pragma once

#include "core/Geodesy.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

namespace corvane {
/// Passes over the positions that cannot lie within a reach of one centre, without computing their distance. What it
/// says about positions on earth always agrees with DistanceNm; of others it says nothing.
///
/// The shortest way to a position is no shorter than its difference in latitude, and stays within m_lonReach of the
/// centre's meridian while it stays within reach. Both bounds allow a mile more than the reach, half a mile more than
/// what rounds to it, which is thousands of times what the distance formula can be off. There is one exception: close
/// to the centre's antipode the cosine of the distance may round past -1, and the distance then reads 0.
class DistanceBound {
public:
    /// reachNm  the longest distance, in whole miles as DistanceNm gives them, that lies within reach
    DistanceBound(LatLon center, std::int16_t reachNm) noexcept;

    /// True for almost all positions beyond the reach: it compares degrees alone.
    [[nodiscard]] bool PlainlyBeyond(LatLon at) const noexcept
    {
        if (!m_onEarth || !OnEarth(at))
            return false;
        const bool antipodalLat = std::abs(at.Lat + m_center.Lat) <= AntipodeDegrees;
        if (std::abs(at.Lat - m_center.Lat) > m_latReach)
            return !antipodalLat;
        const double turn = std::abs(at.Lon - m_center.Lon);
        if (turn > m_lonReach && turn < 360 - m_lonReach)
            return !(antipodalLat && std::abs(turn - 180) <= AntipodeDegrees);
        return false;
    }

    /// Whole miles that the distance of a position is not below, or nothing for one beyond the reach.
    ///
    /// The haversine of the angle is sin2(dLat/2) + cos lat1 cos lat2 sin2(dLon/2), and the angle is at least twice its
    /// root. Within reach of the centre, cos lat2 and sin(x)/x are at least what they are at the reach's edge, which
    /// leaves a weighted sum of squares of the two differences. Of positions beyond the reach it may say anything.
    [[nodiscard]] std::optional<std::size_t> LeastNm(LatLon at) const noexcept
    {
        if (!m_onEarth || !OnEarth(at))
            return 0;
        const double dLat = at.Lat - m_center.Lat;
        const double oneWay = std::abs(at.Lon - m_center.Lon);
        const double dLon = std::min(oneWay, 360 - oneWay);
        const double squaredNm = m_latWeight * (dLat * dLat) + m_lonWeight * (dLon * dLon);
        if (squaredNm < m_beyondNm * m_beyondNm)
            return static_cast<std::size_t>(std::sqrt(squaredNm));
        const bool antipodal =
            std::abs(at.Lat + m_center.Lat) <= AntipodeDegrees && std::abs(oneWay - 180) <= AntipodeDegrees;
        return antipodal ? std::optional<std::size_t>(0) : std::nullopt;
    }

private:
    static constexpr double AntipodeDegrees = 0.01;

    LatLon m_center;
    bool m_onEarth; ///< the bounds hold for such centres only: the formula itself takes any number of turns
    double m_beyondNm;
    double m_latReach;       ///< degrees
    double m_lonReach = 360; ///< degrees; a circle that comes near a pole has every meridian in reach
    double m_latWeight;      ///< squared miles to the squared degree; so the other
    double m_lonWeight = 0;
};
} // namespace corvane
