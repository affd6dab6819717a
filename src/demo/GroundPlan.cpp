#include "demo/GroundPlan.h"

#include "core/Geodesy.h"
#include "core/NumberText.h"
#include "core/Rounding.h"
#include "demo/GroundNetwork.h"
#include "demo/RunwayFrame.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace corvane {
namespace {
using Node = GroundNetwork::Node;
using NodeRun = GroundNetwork::NodeRun;

constexpr double HoldShortM = 75; ///< from the centre line

/// Measures of the apron and its taxiway in metres.
struct ApronMeasures {
    double TaxiwayAt = 0; ///< the parallel taxiway, from the runway
    double LaneAt = 0;    ///< the first lane, from the taxiway
    double LaneEvery = 0;
    double StandAt = 0;    ///< from its lane
    double StandEvery = 0; ///< along the lane
    double StandRadius = 0;
};
constexpr ApronMeasures GateMeasures{180, 110, 190, 60, 65, 28};
constexpr ApronMeasures SmallMeasures{150, 70, 120, 40, 45, 15};

/// A place for the apron beside its runway.
struct ApronSite {
    double Side = 1;   ///< +1 right of the runway, -1 left
    double Middle = 0; ///< along the runway
    double HalfLength = 0;
    double Far = 0; ///< outer edge, across
};

/// A way across the lanes, beside the stands, and how far it has come.
struct LinkWay {
    double Along;
    Node Last;
    std::int32_t Name;
};

struct LaneNode {
    double Along;
    Node At;
    bool HasStands;
};

class GroundPlanner {
public:
    GroundPlanner(std::vector<RunwayFrame> frames, const ApronStyle& style);
    GroundLayout Plan();

private:
    [[nodiscard]] double SiteScore(const ApronSite& site) const;
    [[nodiscard]] ApronSite ChooseApron() const;
    [[nodiscard]] std::vector<double> LinkPlaces() const;
    [[nodiscard]] double ChooseSide(std::size_t runway) const;

    NodeRun LayRunwayPaths(std::size_t runway);
    bool LayConnector(std::size_t runway, const Node& onRunway, const Node& onTaxiway, double side,
                      const std::string& name);
    std::vector<NodeRun> LayTaxiway(std::size_t runway, double side, const std::vector<double>& extraPlaces);
    void LayApron(const NodeRun& taxiway);
    void LayLane(int lane, std::vector<LinkWay>& links);
    void LayStands(int lane, const LaneNode& node, int& number);
    void LayStand(const Node& from, GroundVector at, SpotWord word, int number, double radius);
    [[nodiscard]] double LaneAt(int lane) const
    {
        return m_measures.TaxiwayAt + m_measures.LaneAt + lane * m_measures.LaneEvery;
    }

    std::vector<RunwayFrame> m_frames;
    ApronStyle m_style;
    ApronMeasures m_measures;
    GroundNetwork m_network;
    std::size_t m_main = 0; ///< the runway that the apron lies at
    ApronSite m_apron;
    int m_generalSpots = 0;
};
} // namespace

GroundPlanner::GroundPlanner(std::vector<RunwayFrame> frames, const ApronStyle& style)
    : m_frames(std::move(frames)),
      m_style(style),
      m_measures(style.Gates ? GateMeasures : SmallMeasures),
      m_network(CenterLines(m_frames)),
      m_main(MainRunway(m_frames))
{
}

/// Far from other runways first, then towards the reference point, then near the runway's middle.
double GroundPlanner::SiteScore(const ApronSite& site) const
{
    constexpr double EnoughClearM = 400;
    const RunwayFrame& frame = m_frames[m_main];
    double clearance = EnoughClearM;
    for (int along = -2; along <= 2; ++along) {
        for (int across = 0; across <= 4; ++across) {
            const double right = m_measures.TaxiwayAt + (site.Far - m_measures.TaxiwayAt) * across / 4;
            const GroundVector at = frame.At(site.Middle + site.HalfLength * along / 2, right * site.Side);
            clearance = std::min(clearance, m_network.RunwayClearance(at, m_main));
        }
    }
    const bool towardsReference = Dot(GroundVector{} - frame.Center, frame.Right) * site.Side > 0;
    return clearance + (towardsReference ? 100 : 0) - 40 * std::abs(site.Middle) / frame.Half;
}

ApronSite GroundPlanner::ChooseApron() const
{
    constexpr double LinkBesideStandsM = 60;
    ApronSite site;
    site.HalfLength = m_style.StandsInRow * m_measures.StandEvery / 2 + LinkBesideStandsM;
    site.Far = LaneAt(m_style.Lanes - 1) + m_measures.StandAt + m_measures.StandRadius;
    std::optional<ApronSite> best;
    double bestScore = 0;
    for (const double side : {1.0, -1.0}) {
        for (const double part : {0.0, 0.3, -0.3, 0.6, -0.6, 0.85, -0.85}) {
            site.Side = side;
            site.Middle = part * std::max(m_frames[m_main].Half - site.HalfLength, 0.0);
            const double score = SiteScore(site);
            if (!best || score > bestScore) {
                bestScore = score;
                best = site;
            }
        }
    }
    return best.value_or(site);
}

/// Where along the runway the links between its taxiway and the lanes run: beside the stands, or where the runway is
/// shorter than the apron, in the middle.
std::vector<double> GroundPlanner::LinkPlaces() const
{
    std::vector<double> places;
    for (const double place : {m_apron.Middle - m_apron.HalfLength, m_apron.Middle + m_apron.HalfLength}) {
        if (std::abs(place) <= m_frames[m_main].Half)
            places.push_back(place);
    }
    if (places.empty())
        places.push_back(m_apron.Middle);
    return places;
}

/// The side with room for more of the taxiway; of equal ones that of the apron.
double GroundPlanner::ChooseSide(std::size_t runway) const
{
    const RunwayFrame& frame = m_frames[runway];
    const GroundVector apron = m_frames[m_main].At(m_apron.Middle, m_apron.Far * m_apron.Side);
    const double facing = Dot(apron - frame.Center, frame.Right) >= 0 ? 1 : -1;
    const std::vector<double> stations = Stations(frame);
    const auto room = [&](double side) {
        return std::count_if(stations.begin(), stations.end(), [&](double station) {
            return m_network.HasRoom(frame.At(station, m_measures.TaxiwayAt * side), runway);
        });
    };
    return room(facing) >= room(-facing) ? facing : -facing;
}

NodeRun GroundPlanner::LayRunwayPaths(std::size_t runway)
{
    NodeRun run;
    for (const double station : Stations(m_frames[runway])) {
        run.push_back(m_network.AddPoint(m_frames[runway].At(station, 0)));
        if (run.size() > 1)
            m_network.AddRunwayPath(run[run.size() - 2], run.back(), runway);
    }
    return run;
}

/// From the runway past the hold-short point to the taxiway; false where something is in the way.
bool GroundPlanner::LayConnector(std::size_t runway, const Node& onRunway, const Node& onTaxiway, double side,
                                 const std::string& name)
{
    const GroundVector holdAt = onRunway.At + m_frames[runway].Right * (HoldShortM * side);
    const GroundSegment way{onRunway.At, onTaxiway.At};
    if (m_network.CrossesTaxiway(way) || m_network.RunwaysCrossed(way, runway) > 0 ||
        m_network.RunwayClearance(holdAt, runway) < HoldShortM)
        return false;
    const std::int32_t nameIndex = m_network.AddName(name);
    const Node hold = m_network.AddPoint(holdAt, GroundPointKind::HoldShort);
    m_network.AddTaxiway(onRunway, hold, nameIndex);
    m_network.AddTaxiway(hold, onTaxiway, nameIndex);
    return true;
}

/// The parallel taxiway in as many pieces as other taxiways leave, with its connectors. extraPlaces get a point without
/// a connector, for what joins there.
std::vector<NodeRun> GroundPlanner::LayTaxiway(std::size_t runway, double side, const std::vector<double>& extraPlaces)
{
    const NodeRun onRunway = LayRunwayPaths(runway);
    const std::vector<double> stations = Stations(m_frames[runway]);
    const auto taxiwayAt = [&](double along) { return m_frames[runway].At(along, m_measures.TaxiwayAt * side); };
    std::vector<double> places = stations;
    places.insert(places.end(), extraPlaces.begin(), extraPlaces.end());
    std::sort(places.begin(), places.end());
    std::erase_if(places, [&](double along) { return !m_network.HasRoom(taxiwayAt(along), runway); });
    std::vector<NodeRun> runs;
    if (places.size() < 2)
        return runs;

    const std::string letters = m_network.NextLetters();
    const std::int32_t name = m_network.AddName(letters);
    const std::vector<GroundSegment> others = m_network.Taxiways(); // its own connectors are no obstacle
    int connectors = 0;
    for (const double along : places) {
        const Node node = m_network.AddPoint(taxiwayAt(along));
        if (runs.empty() || CrossesAny({runs.back().back().At, node.At}, others))
            runs.emplace_back();
        else
            m_network.AddTaxiway(runs.back().back(), node, name);
        runs.back().push_back(node);
        const auto station = std::find(stations.begin(), stations.end(), along);
        if (station == stations.end())
            continue;
        const Node& start = onRunway[static_cast<std::size_t>(station - stations.begin())];
        if (LayConnector(runway, start, node, side, letters + NumberText(connectors + 1)))
            ++connectors;
    }
    return runs;
}

void GroundPlanner::LayStand(const Node& from, GroundVector at, SpotWord word, int number, double radius)
{
    m_network.AddParking(from, {at.East, at.North, radius, word, number});
}

/// The stand beyond the lane and, with two rows, the one before it.
void GroundPlanner::LayStands(int lane, const LaneNode& node, int& number)
{
    SpotWord word = SpotWord::Parking;
    if (m_style.Gates)
        word = m_style.Lanes == 1 ? SpotWord::Gate
                                  : static_cast<SpotWord>(static_cast<std::int32_t>(SpotWord::GateA) + lane);
    const RunwayFrame& frame = m_frames[m_main];
    const double outer = (LaneAt(lane) + m_measures.StandAt) * m_apron.Side;
    LayStand(node.At, frame.At(node.Along, outer), word, ++number, m_measures.StandRadius);
    if (m_style.TwoRows) {
        const double inner = (LaneAt(lane) - m_measures.StandAt) * m_apron.Side;
        LayStand(node.At, frame.At(node.Along, inner), word, ++number, m_measures.StandRadius);
    }
}

/// The word for general parking in the direction in which a spot lies from the reference point.
static SpotWord CompassParking(GroundVector at)
{
    const double degrees = std::atan2(at.East, at.North) * DegreesPerRadian;
    const std::int32_t eighth = (RoundTo<std::int32_t>(degrees / 45) + 8) % 8;
    return static_cast<SpotWord>(static_cast<std::int32_t>(SpotWord::NParking) + eighth);
}

/// A lane between the links with its stands, and at an apron with gates a general parking spot at its outer end.
void GroundPlanner::LayLane(int lane, std::vector<LinkWay>& links)
{
    const RunwayFrame& frame = m_frames[m_main];
    const double across = LaneAt(lane) * m_apron.Side;
    std::vector<LaneNode> nodes;
    for (LinkWay& link : links) {
        const Node node = m_network.AddPoint(frame.At(link.Along, across));
        m_network.AddTaxiway(link.Last, node, link.Name);
        link.Last = node;
        nodes.push_back({link.Along, node, false});
        m_network.OfferJoints({node});
    }
    for (int i = 0; i < m_style.StandsInRow; ++i) {
        const double along = m_apron.Middle + (i - (m_style.StandsInRow - 1) / 2.0) * m_measures.StandEvery;
        nodes.push_back({along, m_network.AddPoint(frame.At(along, across)), true});
    }
    std::stable_sort(nodes.begin(), nodes.end(),
                     [](const LaneNode& a, const LaneNode& b) { return a.Along < b.Along; });
    int number = 0;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        constexpr std::int32_t NoName = 0; // the first name of an apron's layout is empty
        if (i > 0)
            m_network.AddTaxiway(nodes[i - 1].At, nodes[i].At, NoName);
        if (nodes[i].HasStands)
            LayStands(lane, nodes[i], number);
    }
    if (m_style.Gates && !nodes.back().HasStands) {
        const GroundVector at = nodes.back().At.At + frame.Along * m_measures.StandAt;
        LayStand(nodes.back().At, at, CompassParking(at), ++m_generalSpots, m_measures.StandRadius / 2);
    }
}

void GroundPlanner::LayApron(const NodeRun& taxiway)
{
    std::vector<LinkWay> links;
    for (const double place : LinkPlaces()) {
        const GroundVector wanted = m_frames[m_main].At(place, m_measures.TaxiwayAt * m_apron.Side);
        const auto node = std::find_if(taxiway.begin(), taxiway.end(),
                                       [&](const Node& offered) { return Length(offered.At - wanted) < 1; });
        if (node != taxiway.end())
            links.push_back({place, *node, m_network.AddName(m_network.NextLetters())});
    }
    for (int lane = 0; lane < m_style.Lanes; ++lane)
        LayLane(lane, links);
}

GroundLayout GroundPlanner::Plan()
{
    m_network.AddName("");
    m_apron = ChooseApron();
    NodeRun all;
    for (const NodeRun& run : LayTaxiway(m_main, m_apron.Side, LinkPlaces()))
        all.insert(all.end(), run.begin(), run.end());
    LayApron(all);
    m_network.OfferJoints(all);
    for (std::size_t i = 0; i < m_frames.size(); ++i) {
        if (i == m_main)
            continue;
        for (const NodeRun& run : LayTaxiway(i, ChooseSide(i), {}))
            m_network.Link(run);
    }
    return m_network.TakeLayout();
}

GroundLayout PlanGround(std::span<const PlannedRunway> runways, const ApronStyle& style)
{
    if (runways.empty())
        return {};
    std::vector<RunwayFrame> frames;
    std::transform(runways.begin(), runways.end(), std::back_inserter(frames), FrameOf);
    return GroundPlanner(std::move(frames), style).Plan();
}
} // namespace corvane
