#pragma once

namespace corvane {
/// A position in decimal degrees, latitude north and longitude east positive.
struct LatLon {
    double Lat = 0;
    double Lon = 0;
    bool operator==(const LatLon&) const = default;
};
} // namespace corvane
