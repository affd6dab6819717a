#include "area/DistanceBound.h"

#include <cassert>

namespace corvane {
static constexpr double NmPerDegree = 60;
static constexpr double Slack = 0.9999; // more than sin(x)/x loses along the meridian, and all rounding

DistanceBound::DistanceBound(LatLon center, std::int16_t reachNm) noexcept
    : m_center(center),
      m_onEarth(OnEarth(center)),
      m_beyondNm(reachNm + 1),
      m_latReach(m_beyondNm / NmPerDegree),
      m_latWeight(Slack * NmPerDegree * NmPerDegree)
{
    assert(reachNm > 0);
    constexpr double NearPole = 89.9;
    if (!m_onEarth || std::abs(center.Lat) + m_latReach >= NearPole)
        return;
    const double reach = m_latReach * RadiansPerDegree;
    const double phi = std::abs(center.Lat) * RadiansPerDegree;
    const double lonReach = std::asin(std::sin(reach) / std::cos(phi));
    m_lonReach = lonReach * DegreesPerRadian;
    const double sineLoss = std::sin(lonReach / 2) / (lonReach / 2);
    m_lonWeight = m_latWeight * std::cos(phi) * std::cos(phi + reach) * sineLoss * sineLoss;
}
} // namespace corvane
