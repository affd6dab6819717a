#pragma once

#include "core/Geodesy.h"
#include "core/Records.h"

#include <optional>
#include <vector>

namespace corvane {
/// The boundary of an airspace as it is put together. Circles and arcs become lines, in steps of at most 2 degrees on
/// the sphere of a mile to the minute: the record's own circles and arcs go by whole miles.
class OpenAirOutline {
public:
    static constexpr std::size_t MostPoints = 1000000;
    static constexpr double LargestRadiusNm = 5400; ///< a quarter of the earth

    void SetCenter(const LatLon& center) noexcept { m_center = center; }
    void SetClockwise(bool clockwise) noexcept { m_clockwise = clockwise; }
    [[nodiscard]] bool HasCenter() const noexcept { return m_center.has_value(); }

    void AddCorner(const LatLon& corner);
    /// The centre must be set for these three.
    void AddCircle(double radiusNm);
    /// Bearings are true.
    void AddArc(double radiusNm, double fromBearing, double toBearing);
    /// The radius and the bearing both run evenly from the one place to the other.
    void AddArcBetween(const LatLon& from, const LatLon& to);

    /// Closes the outline and writes points, box and centre; false where it has fewer than three points or too many.
    bool Finish(AirspaceRecord& airspace);

private:
    struct Ray {
        double Bearing = 0;
        double RangeNm = 0;
    };
    void Sweep(const Ray& from, const Ray& to, bool clockwise);
    void ClosePiece();
    [[nodiscard]] LatLon On(const Ray& ray) const noexcept;

    std::optional<LatLon> m_center;
    bool m_clockwise = true;
    std::vector<LatLon> m_piece; ///< the closed line at hand; a circle is one of its own
    std::vector<BoundaryPoint> m_points;
    bool m_tooMany = false;
};

/// Sets box and centre of an airspace around its points, which are not empty.
void SetBoxAround(AirspaceRecord& airspace);
} // namespace corvane
