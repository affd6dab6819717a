#include "practice/TaxiNetwork.h"

#include "core/GreatCircle.h"
#include "core/Text.h"

#include <queue>

#include <cassert>
#include <limits>
#include <map>
#include <optional>
#include <utility>

namespace corvane {
static constexpr std::int32_t RunwayPath = 1;
static constexpr std::int32_t ParkingPath = 2;
static constexpr std::string_view RunwayName = "(RUNWAY)"; ///< as if it were a taxiway's, so that it joins none

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
            Join(*from, *to, path.Kind == RunwayPath ? AlongRunwayCosts : 1,
                 path.Kind == RunwayPath ? RunwayName : std::string_view(path.Name));
    }
}

std::size_t TaxiNetwork::NameIndex(std::string_view name)
{
    std::string capitals = ToUpper(TrimSpaces(name));
    if (capitals.empty())
        return 0;
    const auto [known, isNew] = m_nameIndex.try_emplace(std::move(capitals), m_names.size());
    if (isNew)
        m_names.push_back(known->first);
    return known->second;
}

bool TaxiNetwork::HasTaxiway(std::string_view name) const noexcept
{
    const auto runways = static_cast<std::size_t>(m_nameIndex.contains(RunwayName));
    return name.empty() ? m_nameIndex.size() > runways : m_nameIndex.contains(name);
}

void TaxiNetwork::Join(std::size_t one, std::size_t other, double costlier, std::string_view name)
{
    constexpr double LeastNm = 1e-5; // so that every step of a way costs something
    const double costNm = (RangeNm(m_nodes[one], m_nodes[other]) + LeastNm) * costlier;
    const std::size_t index = NameIndex(name);
    m_edges[one].push_back({other, costNm, index});
    m_edges[other].push_back({one, costNm, index});
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

TaxiNetwork::Ways TaxiNetwork::WaysVia(std::size_t node, std::span<const std::string> names) const
{
    assert(node < m_nodes.size());
    constexpr double AsideCosts = 10;
    const std::size_t count = m_nodes.size();
    Ways ways;
    ways.m_network = this;
    ways.m_layer = names.size() * count;
    ways.m_costNm.assign(ways.m_layer + count, Ways::Unreached);
    ways.m_asideNm.assign(ways.m_layer + count, 0);
    ways.m_next.assign(ways.m_layer + count, node);
    using Entry = std::pair<double, std::size_t>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> open;
    ways.m_costNm[node] = 0;
    open.emplace(0, node);
    while (!open.empty()) {
        const auto [costNm, at] = open.top();
        open.pop();
        if (costNm > ways.m_costNm[at])
            continue;
        const std::size_t done = at / count; // so many of the names
        for (const Edge& edge : m_edges[at % count]) {
            if (!names.empty() && edge.To == ways.m_next[at] % count && at != node)
                continue; // nobody turns round on a taxiway
            const std::string& name = m_names[edge.Name];
            const bool next = done < names.size() && name == names[done];
            const bool named = next || edge.Name == 0 || names.empty() || (done > 0 && name == names[done - 1]);
            const std::size_t to = (done + (next ? 1 : 0)) * count + edge.To;
            const double there = costNm + edge.CostNm * (named ? 1 : AsideCosts);
            if (there >= ways.m_costNm[to])
                continue;
            ways.m_costNm[to] = there;
            ways.m_asideNm[to] = ways.m_asideNm[at] + (named || (done == 0 && name != RunwayName) ? 0 : edge.CostNm);
            ways.m_next[to] = at;
            open.emplace(there, to);
        }
    }
    return ways;
}

std::vector<LatLon> TaxiNetwork::Ways::From(std::size_t node) const
{
    std::vector<LatLon> way;
    if (!Reaches(node))
        return way;
    const std::size_t count = m_network->m_nodes.size();
    way.push_back(m_network->m_nodes[node]);
    for (std::size_t at = m_layer + node; m_next[at] != at; at = m_next[at])
        way.push_back(m_network->m_nodes[m_next[at] % count]);
    return way;
}
} // namespace corvane
