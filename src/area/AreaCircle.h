#pragma once

#include "area/DistanceBound.h"

#include <cmath>
#include <cstdint>

namespace corvane {
inline constexpr std::int16_t AreaRadiusNm = 90;

/// The circle of an airport area: every position whose whole-mile distance from the centre is at most AreaRadiusNm.
/// A position that is not finite lies nowhere, so not in the circle either.
class AreaCircle {
public:
    explicit AreaCircle(LatLon center) noexcept : m_center(center), m_bound(center, AreaRadiusNm) {}

    [[nodiscard]] bool Contains(LatLon at) const noexcept
    {
        return !m_bound.PlainlyBeyond(at) && std::isfinite(at.Lat) && std::isfinite(at.Lon) &&
               DistanceNm(m_center, at) <= AreaRadiusNm;
    }

private:
    LatLon m_center;
    DistanceBound m_bound;
};
} // namespace corvane
