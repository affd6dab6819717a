#include "tracks/ConflictSearch.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace corvane {
/// Keeps rounding from parting boxes that touch: some inches in degrees.
static constexpr double SlackDegrees = 1e-6;

/// The way from now to the end of what is looked ahead, as degrees of latitude.
static double NorthReachDegrees(const Mover& mover, const AlertOptions& options) noexcept
{
    return mover.NorthKt * options.ConflictSeconds / (SecondsPerHour * PlaneNmPerDegree);
}

/// The same of longitude, where cosLat shortens it.
static double EastReachDegrees(const Mover& mover, const AlertOptions& options, double cosLat) noexcept
{
    return mover.EastKt * options.ConflictSeconds / (SecondsPerHour * PlaneNmPerDegree * cosLat);
}

void ConflictSearch::MakeBoxes(std::span<const Mover> movers, const AlertOptions& options)
{
    const double halfDegrees = options.ConflictNm / 2 / PlaneNmPerDegree + SlackDegrees;
    double farthest = 0;
    for (const Mover& mover : movers)
        farthest = std::max(farthest, std::abs(NorthReachDegrees(mover, options)));
    m_boxes.clear();
    for (const Mover& mover : movers) {
        assert(OnEarth(mover.Position));
        Box box;
        const double north = NorthReachDegrees(mover, options);
        box.South = mover.Position.Lat + std::min(north, 0.0) - halfDegrees;
        box.North = mover.Position.Lat + std::max(north, 0.0) + halfDegrees;
        // A pair that meets lies no farther apart than both ways and the limit, and its midpoint half as far from here.
        const double midpointLat = std::min(std::abs(mover.Position.Lat) + farthest + 2 * halfDegrees, 90.0);
        const double cosLat = std::max(std::cos(midpointLat * RadiansPerDegree), 1e-9);
        const double east = EastReachDegrees(mover, options, cosLat);
        box.West = mover.Position.Lon + std::min(east, 0.0) - halfDegrees / cosLat;
        box.East = mover.Position.Lon + std::max(east, 0.0) + halfDegrees / cosLat;
        if (box.East - box.West >= 360) {
            box.West = -180;
            box.East = 180;
        } else if (box.West < -180) {
            box.West += 360;
            box.East += 360;
        }
        const double climb = mover.ClimbFtPerMin * options.ConflictSeconds / 60;
        box.Bottom = mover.AltitudeFt + std::min(climb, 0.0) - options.ConflictFt / 2 - 1;
        box.Top = mover.AltitudeFt + std::max(climb, 0.0) + options.ConflictFt / 2 + 1;
        m_boxes.push_back(box);
    }
}

/// The bands are as high as the boxes are on average, or higher, so that a box lies in three on average.
void ConflictSearch::FillBands(const AlertOptions& options)
{
    double height = 0;
    for (const Box& box : m_boxes)
        height += box.North - box.South;
    height = std::max(height / static_cast<double>(m_boxes.size()), options.ConflictNm / PlaneNmPerDegree);
    m_entries.clear();
    for (std::uint32_t mover = 0; mover < m_boxes.size(); ++mover) {
        Box& box = m_boxes[mover];
        const auto bandOf = [&](double lat) {
            return static_cast<std::uint32_t>((std::clamp(lat, -90.0, 90.0) + 90) / height);
        };
        box.FirstBand = bandOf(box.South);
        box.LastBand = bandOf(box.North);
        for (std::uint32_t band = box.FirstBand; band <= box.LastBand; ++band)
            m_entries.push_back({band, box.West, mover});
    }
    std::ranges::sort(m_entries, [](const BandEntry& a, const BandEntry& b) {
        return a.Band != b.Band ? a.Band < b.Band : a.West < b.West;
    });
}

/// Returns false once there have been too many pairs.
bool ConflictSearch::Meet(std::span<const Mover> movers, const AlertOptions& options, const BandEntry& one,
                          const BandEntry& other)
{
    if (m_pairsLeft == 0 || m_found.size() >= movers.size() * ConflictsPerMover)
        return false;
    --m_pairsLeft;
    const Box& a = m_boxes[one.Mover];
    const Box& b = m_boxes[other.Mover];
    const bool overlap = a.South <= b.North && b.South <= a.North && a.Bottom <= b.Top && b.Bottom <= a.Top;
    if (!overlap || std::max(a.FirstBand, b.FirstBand) != one.Band)
        return true; // or met in an earlier band
    const std::uint32_t first = std::min(one.Mover, other.Mover);
    const std::uint32_t second = std::max(one.Mover, other.Mover);
    if (const auto conflict = FindConflict(movers[first], movers[second], options))
        m_found.push_back({first, second, *conflict});
    return true;
}

void ConflictSearch::SearchBand(std::span<const Mover> movers, const AlertOptions& options,
                                std::span<const BandEntry> band)
{
    for (auto one = band.begin(); one != band.end(); ++one) {
        const double east = m_boxes[one->Mover].East;
        for (auto other = one + 1; other != band.end() && other->West <= east; ++other)
            if (!Meet(movers, options, *one, *other))
                return;
        // What reaches across the 180 degree meridian meets those from the band's beginning on.
        for (auto other = band.begin(); other != one && other->West + 360 <= east; ++other)
            if (!Meet(movers, options, *one, *other))
                return;
    }
}

std::span<const ConflictPair> ConflictSearch::Find(std::span<const Mover> movers, const AlertOptions& options)
{
    m_found.clear();
    if (movers.size() < 2)
        return m_found;
    m_pairsLeft = movers.size() * PairsPerMover;
    MakeBoxes(movers, options);
    FillBands(options);
    for (auto first = m_entries.begin(); first != m_entries.end();) {
        const auto last =
            std::find_if(first, m_entries.end(), [&](const BandEntry& entry) { return entry.Band != first->Band; });
        SearchBand(movers, options, {first, last});
        first = last;
    }
    const auto key = [](const ConflictPair& pair) { return std::pair(pair.First, pair.Second); };
    std::ranges::sort(m_found, {}, key);
    const auto sameKey = [&](const ConflictPair& a, const ConflictPair& b) { return key(a) == key(b); };
    m_found.erase(std::unique(m_found.begin(), m_found.end(), sameKey), m_found.end()); // both ways around the earth
    return m_found;
}
} // namespace corvane
