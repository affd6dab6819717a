#pragma once

#include "core/Geodesy.h"
#include "core/Records.h"

#include <cstddef>
#include <cstdint>
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
    /// another way that is not much longer.
    class Ways {
    public:
        /// Whether a way leads to a node.
        [[nodiscard]] bool Reaches(std::size_t node) const noexcept { return m_costNm[node] < Unreached; }
        /// What the way there costs: nautical miles, those along runways several times.
        [[nodiscard]] double CostNm(std::size_t node) const noexcept { return m_costNm[node]; }
        /// The way from there, both ends included; empty where none leads there.
        [[nodiscard]] std::vector<LatLon> From(std::size_t node) const;

    private:
        friend class TaxiNetwork;
        static constexpr double Unreached = 1e9;
        const TaxiNetwork* m_network = nullptr;
        std::vector<double> m_costNm;
        std::vector<std::size_t> m_next; ///< on the way to where they lead
    };
    /// Takes time in proportion to the network's size. The network must outlive them.
    [[nodiscard]] Ways WaysTo(std::size_t node) const;

    [[nodiscard]] const std::vector<LatLon>& Nodes() const noexcept { return m_nodes; }
    /// The node nearest to a place; the network is not empty.
    [[nodiscard]] std::size_t Nearest(const LatLon& place) const noexcept;

private:
    struct Edge {
        std::size_t To = 0;
        double CostNm = 0;
    };
    void Join(std::size_t one, std::size_t other, double costlier);

    std::vector<LatLon> m_nodes;
    std::vector<std::vector<Edge>> m_edges; ///< by node
};
} // namespace corvane
