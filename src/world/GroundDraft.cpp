#include "world/GroundDraft.h"

#include <string>

namespace corvane {
static constexpr std::int32_t TaxiPointKind = 1;
static constexpr std::int32_t TaxiwayKind = 0;
static constexpr std::int32_t RunwayKind = 1;

void GroundDraft::TakeNode(RowReader& row)
{
    const LatLon position = row.Position();
    row.Skip(1); // use
    const std::int64_t number = row.Whole();
    if (row.Failed())
        return;
    m_nodeIndices.emplace(NodeKey(m_network, number), static_cast<std::int32_t>(m_nodes.size()));
    m_nodes.push_back(position);
}

void GroundDraft::TakeEdge(RowReader& row, std::int64_t line)
{
    Edge edge;
    edge.From = {m_network, row.Whole()};
    edge.To = {m_network, row.Whole()};
    edge.Line = line;
    if (row.HasMore())
        row.Skip(1); // direction
    edge.OnRunway = row.HasMore() && row.Field() == "runway";
    edge.Name = row.Rest();
    if (!row.Failed())
        m_edges.push_back(std::move(edge));
}

void GroundDraft::BeginPavement(std::int64_t line)
{
    EndPavement();
    m_pavementLine = line;
    m_inPavement = m_wantsPavements;
}

void GroundDraft::EndPavement()
{
    if (m_inPavement)
        m_pavements.End(false);
    m_inPavement = false;
}

void GroundDraft::TakePavementNode(int code, RowReader& row)
{
    PavementNode node;
    node.Position = row.Position();
    if (code % 2 == 0) // 112, 114, 116
        node.Control = row.Position();
    if (!row.Failed())
        m_pavements.Add(node);
    if (code == 113 || code == 114)
        m_pavements.End(true);
    else if (code == 115 || code == 116)
        m_pavements.End(false);
    if (m_fullAt == 0 && m_pavements.LeftOut() > 0)
        m_fullAt = m_pavementLine;
}

void GroundDraft::AddPavements(AirportRecord& airport) const
{
    const auto base = static_cast<std::int32_t>(airport.TaxiPoints.size());
    airport.TaxiPoints.reserve(airport.TaxiPoints.size() + m_pavements.Points().size());
    airport.TaxiPaths.reserve(airport.TaxiPaths.size() + m_pavements.Points().size());
    for (const LatLon& point : m_pavements.Points())
        airport.TaxiPoints.push_back({TaxiPointKind, point.Lat, point.Lon});
    for (const PavementEdges::Line& line : m_pavements.Lines()) {
        const std::int32_t first = base + static_cast<std::int32_t>(line.First);
        const std::int32_t last = first + static_cast<std::int32_t>(line.Count) - 1;
        for (std::int32_t point = first; point < last; ++point)
            airport.TaxiPaths.push_back({TaxiwayKind, point, point + 1, {}});
        if (line.Closed)
            airport.TaxiPaths.push_back({TaxiwayKind, last, first, {}});
    }
}

std::int64_t GroundDraft::Finish(AirportRecord& airport, ImportLog& log)
{
    EndPavement();
    for (const LatLon& node : m_nodes)
        airport.TaxiPoints.push_back({TaxiPointKind, node.Lat, node.Lon});
    for (Edge& edge : m_edges) {
        const auto from = m_nodeIndices.find(edge.From);
        const auto to = m_nodeIndices.find(edge.To);
        if (from == m_nodeIndices.end() || to == m_nodeIndices.end()) {
            log.PassOver(edge.Line, "the taxiway leads to a node that is not there");
            continue;
        }
        airport.TaxiPaths.push_back({edge.OnRunway ? RunwayKind : TaxiwayKind, from->second, to->second,
                                     edge.OnRunway ? "Runway " + edge.Name : std::move(edge.Name)});
    }
    const bool hasNetwork = !airport.TaxiPaths.empty();
    for (const auto& [start, end] : m_centerLines) {
        const auto index = static_cast<std::int32_t>(airport.TaxiPoints.size());
        airport.TaxiPoints.push_back({TaxiPointKind, start.Lat, start.Lon});
        airport.TaxiPoints.push_back({TaxiPointKind, end.Lat, end.Lon});
        airport.TaxiPaths.push_back({TaxiwayKind, index, index + 1, {}});
    }
    if (hasNetwork)
        return 0;
    AddPavements(airport);
    if (m_pavements.LeftOut() > 0)
        log.PassOver(m_fullAt, "the airport's pavements have " + std::to_string(m_pavements.LeftOut()) +
                                   " points more than it can have; they are left out");
    return m_pavements.LeftOut();
}
} // namespace corvane
