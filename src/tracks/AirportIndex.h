#pragma once

#include "area/AreaModel.h"
#include "core/Geodesy.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// The area's airports, found by where they lie and by their ICAO codes. Distances are those of the plane between
/// target and airport.
class AirportIndex {
public:
    AirportIndex() = default;
    explicit AirportIndex(const AreaModel& area);

    /// Whether both lie within 3 nm of one and the same airport, and less than 1,000 ft above it.
    [[nodiscard]] bool SharePattern(const LatLon& one, double oneFt, const LatLon& other,
                                    double otherFt) const noexcept;
    /// Whether a position lies within 3 nm of an airport and within 300 ft of its elevation.
    [[nodiscard]] bool AtFieldElevation(const LatLon& position, double altitudeFt) const noexcept;
    /// Whether a position lies within nm of an airport of this code, compared trimmed and in upper case.
    [[nodiscard]] bool IsNear(std::string_view icao, const LatLon& position, double nm) const;

private:
    struct Airport {
        LatLon Position;
        double ElevationFt = 0;
        std::string Icao; // trimmed, upper case
    };

    [[nodiscard]] std::span<const Airport> InLatitudes(double south, double north) const noexcept;

    std::vector<Airport> m_byLat;
    std::vector<std::uint32_t> m_byIcao; ///< indices of m_byLat, by code
};
} // namespace corvane
