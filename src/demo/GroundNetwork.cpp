#include "demo/GroundNetwork.h"

#include <algorithm>
#include <string_view>

namespace corvane {
GroundNetwork::Node GroundNetwork::AddPoint(GroundVector at, GroundPointKind kind)
{
    m_layout.Points.push_back({kind, at.East, at.North});
    return {static_cast<std::int32_t>(m_layout.Points.size()) - 1, at};
}

void GroundNetwork::AddTaxiway(const Node& from, const Node& to, std::int32_t name)
{
    m_layout.Paths.push_back({GroundPathKind::Taxiway, from.Index, to.Index, name});
    m_taxiways.push_back({from.At, to.At});
}

void GroundNetwork::AddRunwayPath(const Node& from, const Node& to, std::size_t runway)
{
    m_layout.Paths.push_back({GroundPathKind::Runway, from.Index, to.Index, static_cast<std::int32_t>(runway)});
}

void GroundNetwork::AddParking(const Node& from, const GroundParking& parking)
{
    const auto spot = static_cast<std::int32_t>(m_layout.Parkings.size());
    m_layout.Parkings.push_back(parking);
    m_layout.Paths.push_back({GroundPathKind::Parking, from.Index, spot, 0});
    m_taxiways.push_back({from.At, {parking.East, parking.North}});
}

std::int32_t GroundNetwork::AddName(std::string name)
{
    m_layout.Names.push_back(std::move(name));
    return static_cast<std::int32_t>(m_layout.Names.size()) - 1;
}

std::string GroundNetwork::NextLetters()
{
    constexpr std::string_view Letters = "ABCDEFGHJKLMNPQRSTUVWYZ";
    const std::size_t used = m_lettersUsed++;
    const std::string letter(1, Letters[used % Letters.size()]);
    return used < Letters.size() ? letter : Letters[used / Letters.size() % Letters.size() - 1] + letter;
}

double GroundNetwork::RunwayClearance(GroundVector at, std::size_t except) const
{
    double clearance = 10000;
    for (std::size_t i = 0; i < m_centerLines.size(); ++i) {
        if (i != except)
            clearance = std::min(clearance, DistanceToSegment(at, m_centerLines[i]));
    }
    return clearance;
}

bool GroundNetwork::HasRoom(GroundVector at, std::size_t runway) const
{
    constexpr double RunwayClearM = 100;
    constexpr double TaxiwayClearM = 40;
    const auto tooNear = [at](const GroundSegment& taxiway) { return DistanceToSegment(at, taxiway) < TaxiwayClearM; };
    return RunwayClearance(at, runway) >= RunwayClearM && std::none_of(m_taxiways.begin(), m_taxiways.end(), tooNear);
}

bool CrossesAny(const GroundSegment& segment, const std::vector<GroundSegment>& others)
{
    return std::any_of(others.begin(), others.end(),
                       [&](const GroundSegment& other) { return SegmentsCross(other, segment); });
}

bool GroundNetwork::CrossesTaxiway(const GroundSegment& segment) const
{
    return CrossesAny(segment, m_taxiways);
}

int GroundNetwork::RunwaysCrossed(const GroundSegment& segment, std::size_t except) const
{
    int crossed = 0;
    for (std::size_t i = 0; i < m_centerLines.size(); ++i)
        crossed += i != except && SegmentsCross(m_centerLines[i], segment) ? 1 : 0;
    return crossed;
}

void GroundNetwork::Link(const NodeRun& run)
{
    constexpr double LongestLinkM = 4000;
    struct Way {
        double LengthM;
        Node From, To;
    };
    std::vector<Way> ways;
    for (const Node& from : run) {
        for (const Node& to : m_joints)
            ways.push_back({Length(to.At - from.At), from, to});
    }
    std::stable_sort(ways.begin(), ways.end(), [](const Way& a, const Way& b) { return a.LengthM < b.LengthM; });
    const auto open = std::find_if(ways.begin(), ways.end(), [&](const Way& way) {
        const GroundSegment segment{way.From.At, way.To.At};
        return !CrossesTaxiway(segment) && RunwaysCrossed(segment, m_centerLines.size()) <= 1;
    });
    if (open != ways.end() && open->LengthM <= LongestLinkM)
        AddTaxiway(open->From, open->To, AddName(NextLetters()));
    OfferJoints(run);
}
} // namespace corvane
