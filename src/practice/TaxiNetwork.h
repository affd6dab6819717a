#pragma once

#include "core/Geodesy.h"
#include "core/Records.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// The taxiways of an airport as pilots find their way on them. Paths that name no point, or one far from the field,
/// are left out.
class TaxiNetwork {
public:
    TaxiNetwork() = default;
    explicit TaxiNetwork(const AirportRecord& airport);

    [[nodiscard]] bool IsEmpty() const noexcept { return m_nodes.empty(); }

    /// The shortest ways from one point of the network to all others, found once. Runways are avoided where there is
    /// another way that is not much longer. Where the ways go over named taxiways, those that do not are none.
    class Ways {
    public:
        /// Whether a way leads to a node.
        [[nodiscard]] bool Reaches(std::size_t node) const noexcept { return m_costNm[m_layer + node] < Unreached; }
        /// What the way there costs: nautical miles, those along runways several times.
        [[nodiscard]] double CostNm(std::size_t node) const noexcept { return m_costNm[m_layer + node]; }
        /// Nautical miles of the way there on taxiways that were not named, from the first named one on, and on runways
        /// before.
        [[nodiscard]] double AsideNm(std::size_t node) const noexcept { return m_asideNm[m_layer + node]; }
        /// The way from there, both ends included; empty where none leads there.
        [[nodiscard]] std::vector<LatLon> From(std::size_t node) const;

    private:
        friend class TaxiNetwork;
        static constexpr double Unreached = 1e9;
        const TaxiNetwork* m_network = nullptr;
        // A place for each node before the first named taxiway, on each of them, and so on: a layer each.
        std::vector<double> m_costNm;
        std::vector<double> m_asideNm;
        std::vector<std::size_t> m_next; ///< on the way to where they lead
        std::size_t m_layer = 0;         ///< where the last layer begins
    };
    /// Takes time in proportion to the network's size. The network must outlive them.
    [[nodiscard]] Ways WaysTo(std::size_t node) const { return WaysVia(node, {}); }
    /// The same over taxiways of these names, one after the other. Paths without a name join any two; those of other
    /// names are avoided. Takes time in proportion to the network's size and the number of names.
    [[nodiscard]] Ways WaysVia(std::size_t node, std::span<const std::string> names) const;
    /// Whether it has a taxiway of a name in capitals, or of any name where that is empty.
    [[nodiscard]] bool HasTaxiway(std::string_view name) const noexcept;

    [[nodiscard]] const std::vector<LatLon>& Nodes() const noexcept { return m_nodes; }
    /// The node nearest to a place; the network is not empty.
    [[nodiscard]] std::size_t Nearest(const LatLon& place) const noexcept;

private:
    struct Edge {
        std::size_t To = 0;
        double CostNm = 0;
        std::size_t Name = 0; ///< index into the names; 0: it has none
    };
    void Join(std::size_t one, std::size_t other, double costlier, std::string_view name);
    std::size_t NameIndex(std::string_view name);

    std::vector<std::string> m_names{std::string()}; ///< in capitals, each once; the first is empty
    std::map<std::string, std::size_t, std::less<>> m_nameIndex;
    std::vector<LatLon> m_nodes;
    std::vector<std::vector<Edge>> m_edges; ///< by node
};
} // namespace corvane
