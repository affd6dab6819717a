#include "practice/TaxiNetwork.h"

#include "core/GreatCircle.h"

#include <queue>

#include <cassert>
#include <limits>
#include <map>
#include <optional>
#include <utility>

namespace corvane {
static constexpr std::int32_t RunwayPath = 1;
static constexpr std::int32_t ParkingPath = 2;

/// Where a path begins or ends, if the airport has such a place.
template <class Place>
static std::optional<LatLon> PlaceOf(const std::vector<Place>& places, std::int32_t index, const LatLon& field)
{
    constexpr double OwnGroundNm = 5;
    if (index < 0 || static_cast<std::size_t>(index) >= places.size())
        return std::nullopt;
    const auto& place = places[static_cast<std::size_t>(index)];
    const LatLon at{place.Lat, place.Lon};
    return RangeNm(at, field) < OwnGroundNm ? std::optional(at) : std::nullopt;
}

TaxiNetwork::TaxiNetwork(const AirportRecord& airport)
{
    const LatLon field{airport.Lat, airport.Lon};
    std::map<std::pair<bool, std::int32_t>, std::size_t> known; ///< by parking or not, and index
    const auto node = [&](bool parking, std::int32_t index) -> std::optional<std::size_t> {
        const auto place =
            parking ? PlaceOf(airport.Parkings, index, field) : PlaceOf(airport.TaxiPoints, index, field);
        if (!place)
            return std::nullopt;
        const auto [entry, isNew] = known.try_emplace({parking, index}, m_nodes.size());
        if (isNew) {
            m_nodes.push_back(*place);
            m_edges.emplace_back();
        }
        return entry->second;
    };
    constexpr double AlongRunwayCosts = 5;
    for (const TaxiPath& path : airport.TaxiPaths) {
        const auto from = node(false, path.StartPoint);
        const auto to = node(path.Kind == ParkingPath, path.EndPoint);
        if (from && to && *from != *to)
            Join(*from, *to, path.Kind == RunwayPath ? AlongRunwayCosts : 1);
    }
}

void TaxiNetwork::Join(std::size_t one, std::size_t other, double costlier)
{
    constexpr double LeastNm = 1e-5; // so that every step of a way costs something
    const double costNm = (RangeNm(m_nodes[one], m_nodes[other]) + LeastNm) * costlier;
    m_edges[one].push_back({other, costNm});
    m_edges[other].push_back({one, costNm});
}

std::size_t TaxiNetwork::Nearest(const LatLon& place) const noexcept
{
    assert(!m_nodes.empty());
    std::size_t nearest = 0;
    double nearestNm = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < m_nodes.size(); ++i)
        if (const double nm = RangeNm(m_nodes[i], place); nm < nearestNm) {
            nearestNm = nm;
            nearest = i;
        }
    return nearest;
}

TaxiNetwork::Ways TaxiNetwork::WaysTo(std::size_t node) const
{
    assert(node < m_nodes.size());
    Ways ways;
    ways.m_network = this;
    ways.m_costNm.assign(m_nodes.size(), Ways::Unreached);
    ways.m_next.assign(m_nodes.size(), node);
    using Entry = std::pair<double, std::size_t>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> open;
    ways.m_costNm[node] = 0;
    open.emplace(0, node);
    while (!open.empty()) {
        const auto [costNm, at] = open.top();
        open.pop();
        if (costNm > ways.m_costNm[at])
            continue;
        for (const Edge& edge : m_edges[at])
            if (const double there = costNm + edge.CostNm; there < ways.m_costNm[edge.To]) {
                ways.m_costNm[edge.To] = there;
                ways.m_next[edge.To] = at;
                open.emplace(there, edge.To);
            }
    }
    return ways;
}

std::vector<LatLon> TaxiNetwork::Ways::From(std::size_t node) const
{
    std::vector<LatLon> way;
    if (!Reaches(node))
        return way;
    way.push_back(m_network->m_nodes[node]);
    for (; m_next[node] != node; node = m_next[node])
        way.push_back(m_network->m_nodes[m_next[node]]);
    return way;
}
} // namespace corvane
