#pragma once

#include "core/Records.h"
#include "world/ImportLog.h"
#include "world/Pavement.h"
#include "world/RowReader.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
/// The taxiways of an airport of an apt.dat while its rows are read: the network where there is one, taxiways of older
/// editions as their centre lines, and, at airports without a network, the edges of pavements.
class GroundDraft {
public:
    explicit GroundDraft(bool pavements) noexcept : m_wantsPavements(pavements) {}

    /// Row 1200: node numbers begin anew.
    void BeginNetwork() noexcept { ++m_network; }
    void TakeNode(RowReader& row);                    ///< row 1201
    void TakeEdge(RowReader& row, std::int64_t line); ///< row 1202
    void AddCenterLine(const LatLon& start, const LatLon& end) { m_centerLines.emplace_back(start, end); }

    /// Row 110: the nodes that follow are a pavement's.
    void BeginPavement(std::int64_t line);
    /// Any other row that is no node: the nodes that follow, if there are any, are nothing's.
    void EndPavement();
    /// Whether nodes are read at all.
    [[nodiscard]] bool InPavement() const noexcept { return m_inPavement; }
    void TakePavementNode(int code, RowReader& row); ///< rows 111 to 116

    /// Writes the points and the paths into an airport. Edges without their nodes are passed over.
    /// Returns how many points of pavements were too many.
    std::int64_t Finish(AirportRecord& airport, ImportLog& log);

private:
    using NodeKey = std::pair<int, std::int64_t>; ///< the network and the number within it
    struct Edge {
        NodeKey From;
        NodeKey To;
        bool OnRunway = false;
        std::string Name;
        std::int64_t Line = 0;
    };

    void AddPavements(AirportRecord& airport) const;

    bool m_wantsPavements;
    int m_network = 0;
    std::vector<LatLon> m_nodes;
    std::map<NodeKey, std::int32_t> m_nodeIndices;
    std::vector<Edge> m_edges;
    std::vector<std::pair<LatLon, LatLon>> m_centerLines;
    PavementEdges m_pavements;
    bool m_inPavement = false;
    std::int64_t m_pavementLine = 0; ///< of the row 110 at hand
    std::int64_t m_fullAt = 0;       ///< of the pavement that first had too many points
};
} // namespace corvane
