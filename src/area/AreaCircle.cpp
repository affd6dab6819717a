#include "area/AreaCircle.h"

namespace corvane {
AreaCircle::AreaCircle(double centerLat, double centerLon) noexcept
    : m_lat(centerLat), m_lon(centerLon), m_onEarth(OnEarth(centerLat, centerLon))
{
    constexpr double NearPole = 89.9;
    if (m_onEarth && std::abs(centerLat) + LatReach < NearPole) {
        const double reach = LatReach * RadiansPerDegree;
        m_lonReach = std::asin(std::sin(reach) / std::cos(centerLat * RadiansPerDegree)) * DegreesPerRadian;
    }
}
} // namespace corvane
