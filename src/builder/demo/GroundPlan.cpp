#include "builder/demo/GroundPlan.h"

#include "core/Geodesy.h"
#include "core/NumberText.h"
#include "core/Rounding.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

namespace corvane {
namespace {
constexpr double EndInsetM = 30;     ///< runway paths end this far inside the pavement
constexpr double HoldShortM = 75;    ///< from the centre line
constexpr double RunwayClearM = 100; ///< of taxiways to other runways
constexpr double TaxiwayClearM = 40; ///< of taxiways to one another
constexpr double ConnectorEveryM = 700;
constexpr double LongestLinkM = 5000;

/// Measures of the apron, metres; distances across are counted from the parallel taxiway.
struct ApronMeasures {
    double LaneAt = 0; ///< of the first lane
    double LaneEvery = 190;
    double StandAt = 0;    ///< from its lane
    double StandEvery = 0; ///< along the lane
    double StandRadius = 0;
    double TaxiwayAt = 0; ///< of the parallel taxiway from the runway
};

/// A runway's own axes: along from its first end to the other, across to the side chosen for its taxiway.
struct RunwayFrame {
    GroundVector Center;
    GroundVector Along;
    GroundVector Right;
    double Half = 0;

    [[nodiscard]] GroundVector At(double along, double right) const { return Center + Along * along + Right * right; }
};

/// A place for the apron.
struct ApronSite {
    double Side = 1;   ///< +1 right of the runway, -1 left
    double Middle = 0; ///< along the runway
    double HalfLength = 0;
    double Far = 0; ///< outer edge, across
};

class GroundPlanner {
public:
    GroundPlanner(std::span<const PlannedRunway> runways, const ApronStyle& style);
    GroundLayout Plan();

private:
    struct Node {
        std::int32_t Index = 0;
        GroundVector At;
    };
    using NodeRun = std::vector<Node>;

    static ApronMeasures MeasuresFor(const ApronStyle& style);
    Node AddPoint(GroundVector at, GroundPointKind kind = GroundPointKind::Normal);
    void AddPath(GroundPathKind kind, const Node& from, const Node& to, std::int32_t name);
    std::int32_t AddName(std::string name);
    std::string NextLetters();

    [[nodiscard]] double RunwayClearance(GroundVector at, std::size_t except) const;
    [[nodiscard]] double TaxiwayClearance(GroundVector at) const;
    [[nodiscard]] bool CrossesTaxiway(const GroundSegment& segment) const;
    [[nodiscard]] bool CrossesRunway(const GroundSegment& segment, std::size_t except) const;
    [[nodiscard]] bool HasRoom(GroundVector at, std::size_t runway) const;

    [[nodiscard]] double SiteScore(const ApronSite& site) const;
    [[nodiscard]] ApronSite ChooseApron() const;
    [[nodiscard]] std::vector<double> CrossPlaces() const;
    [[nodiscard]] std::vector<double> Stations(std::size_t runway) const;
    [[nodiscard]] double ChooseSide(std::size_t runway) const;

    NodeRun LayRunwayPaths(std::size_t runway);
    void LayConnector(std::size_t runway, const Node& onRunway, const Node& onTaxiway, double side,
                      const std::string& name);
    std::vector<NodeRun> LayTaxiway(std::size_t runway, double side, std::span<const double> extraPlaces);
    void LayApron(const NodeRun& taxiway);
    void LayStands(int lane, double laneAt, const Node& node, double along, int& number);
    void LayStand(const Node& from, GroundVector at, SpotWord word, int number, double radius);
    void Link(const NodeRun& run);

    std::span<const PlannedRunway> m_runways;
    ApronStyle m_style;
    ApronMeasures m_measures;
    std::vector<RunwayFrame> m_frames;
    std::size_t m_main = 0;
    ApronSite m_apron;
    GroundLayout m_layout;
    std::vector<GroundSegment> m_taxiways; ///< everything laid so far but runways
    std::vector<Node> m_network;           ///< where further taxiways may join
    int m_lettersUsed = 0;
    int m_parkingNumber = 0;
};

RunwayFrame FrameOf(const PlannedRunway& runway)
{
    const double heading = runway.TrueHeading * RadiansPerDegree;
    const GroundVector along{std::sin(heading), std::cos(heading)};
    return {runway.Center, along, {along.North, -along.East}, std::max(runway.LengthM / 2 - EndInsetM, 30.0)};
}
} // namespace

GroundPlanner::GroundPlanner(std::span<const PlannedRunway> runways, const ApronStyle& style)
    : m_runways(runways), m_style(style), m_measures(MeasuresFor(style))
{
    std::transform(runways.begin(), runways.end(), std::back_inserter(m_frames), FrameOf);
    const auto longest = std::max_element(m_frames.begin(), m_frames.end(),
                                          [](const RunwayFrame& a, const RunwayFrame& b) { return a.Half < b.Half; });
    m_main = static_cast<std::size_t>(longest - m_frames.begin());
}

ApronMeasures GroundPlanner::MeasuresFor(const ApronStyle& style)
{
    ApronMeasures measures;
    measures.LaneAt = style.Gates ? 110 : 70;
    measures.StandAt = style.Gates ? 60 : 40;
    measures.StandEvery = style.Gates ? 65 : 45;
    measures.StandRadius = style.Gates ? 28 : 15;
    measures.TaxiwayAt = style.Gates ? 180 : 150;
    return measures;
}

GroundPlanner::Node GroundPlanner::AddPoint(GroundVector at, GroundPointKind kind)
{
    m_layout.Points.push_back({kind, at.East, at.North});
    return {static_cast<std::int32_t>(m_layout.Points.size()) - 1, at};
}

void GroundPlanner::AddPath(GroundPathKind kind, const Node& from, const Node& to, std::int32_t name)
{
    m_layout.Paths.push_back({kind, from.Index, to.Index, name});
    if (kind != GroundPathKind::Runway)
        m_taxiways.push_back({from.At, to.At});
}

std::int32_t GroundPlanner::AddName(std::string name)
{
    m_layout.Names.push_back(std::move(name));
    return static_cast<std::int32_t>(m_layout.Names.size()) - 1;
}

/// A, B, .. Z, AA, AB, ..; I, O and X are not used for taxiways, they are read as figures and crossings.
std::string GroundPlanner::NextLetters()
{
    constexpr std::string_view Letters = "ABCDEFGHJKLMNPQRSTUVWYZ";
    const int used = m_lettersUsed++;
    const auto count = static_cast<int>(Letters.size());
    std::string letters(1, Letters[static_cast<std::size_t>(used % count)]);
    return used < count ? letters : Letters.front() + letters;
}

double GroundPlanner::RunwayClearance(GroundVector at, std::size_t except) const
{
    double clearance = LongestLinkM;
    for (std::size_t i = 0; i < m_frames.size(); ++i) {
        if (i == except)
            continue;
        const RunwayFrame& other = m_frames[i];
        clearance = std::min(clearance, DistanceToSegment(at, {other.At(-other.Half, 0), other.At(other.Half, 0)}));
    }
    return clearance;
}

double GroundPlanner::TaxiwayClearance(GroundVector at) const
{
    double clearance = LongestLinkM;
    for (const GroundSegment& taxiway : m_taxiways)
        clearance = std::min(clearance, DistanceToSegment(at, taxiway));
    return clearance;
}

bool GroundPlanner::CrossesTaxiway(const GroundSegment& segment) const
{
    return std::any_of(m_taxiways.begin(), m_taxiways.end(),
                       [&](const GroundSegment& taxiway) { return SegmentsCross(taxiway, segment); });
}

bool GroundPlanner::CrossesRunway(const GroundSegment& segment, std::size_t except) const
{
    for (std::size_t i = 0; i < m_frames.size(); ++i) {
        const RunwayFrame& other = m_frames[i];
        if (i != except && SegmentsCross({other.At(-other.Half, 0), other.At(other.Half, 0)}, segment))
            return true;
    }
    return false;
}

bool GroundPlanner::HasRoom(GroundVector at, std::size_t runway) const
{
    return RunwayClearance(at, runway) >= RunwayClearM && TaxiwayClearance(at) >= TaxiwayClearM;
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
            clearance = std::min(clearance, RunwayClearance(at, m_main));
        }
    }
    const bool towardsReference = Dot(GroundVector{} - frame.Center, frame.Right) * site.Side > 0;
    return clearance + (towardsReference ? 100 : 0) - 40 * std::abs(site.Middle) / frame.Half;
}

ApronSite GroundPlanner::ChooseApron() const
{
    constexpr double LinkBesideStands = 60;
    ApronSite site;
    site.HalfLength = m_style.StandsInRow * m_measures.StandEvery / 2 + LinkBesideStands;
    site.Far = m_measures.TaxiwayAt + m_measures.LaneAt + (m_style.Lanes - 1) * m_measures.LaneEvery +
               m_measures.StandAt + m_measures.StandRadius;
    ApronSite best = site;
    double bestScore = -LongestLinkM;
    for (const double side : {1.0, -1.0}) {
        for (const double part : {0.0, 0.3, -0.3, 0.6, -0.6, 0.85, -0.85}) {
            site.Side = side;
            site.Middle = part * std::max(m_frames[m_main].Half - site.HalfLength, 0.0);
            if (const double score = SiteScore(site); score > bestScore) {
                bestScore = score;
                best = site;
            }
        }
    }
    return best;
}

/// Where along the main runway the link taxiways between parallel taxiway and apron run: beside the stands, or where
/// the runway is shorter than the apron, in its middle.
std::vector<double> GroundPlanner::CrossPlaces() const
{
    const double half = m_frames[m_main].Half;
    std::vector<double> places;
    for (const double place : {m_apron.Middle - m_apron.HalfLength, m_apron.Middle + m_apron.HalfLength}) {
        if (std::abs(place) <= half)
            places.push_back(place);
    }
    if (places.empty())
        places.push_back(m_apron.Middle);
    return places;
}

std::vector<double> GroundPlanner::Stations(std::size_t runway) const
{
    const double half = m_frames[runway].Half;
    const int parts = std::clamp(RoundTo<std::int32_t>(2 * half / ConnectorEveryM), 1, 6);
    std::vector<double> stations;
    for (int i = 0; i <= parts; ++i)
        stations.push_back(-half + 2 * half * i / parts);
    return stations;
}

/// The side with room for more of the taxiway; of equal ones that of the apron.
double GroundPlanner::ChooseSide(std::size_t runway) const
{
    const RunwayFrame& frame = m_frames[runway];
    const GroundVector apron = m_frames[m_main].At(m_apron.Middle, m_apron.Far * m_apron.Side);
    const double facing = Dot(apron - frame.Center, frame.Right) >= 0 ? 1 : -1;
    const std::vector<double> stations = Stations(runway);
    const auto room = [&](double side) {
        return std::count_if(stations.begin(), stations.end(), [&](double station) {
            return HasRoom(frame.At(station, m_measures.TaxiwayAt * side), runway);
        });
    };
    return room(facing) >= room(-facing) ? facing : -facing;
}

GroundPlanner::NodeRun GroundPlanner::LayRunwayPaths(std::size_t runway)
{
    NodeRun run;
    for (const double station : Stations(runway)) {
        run.push_back(AddPoint(m_frames[runway].At(station, 0)));
        if (run.size() > 1)
            AddPath(GroundPathKind::Runway, run[run.size() - 2], run.back(), static_cast<std::int32_t>(runway));
    }
    return run;
}

void GroundPlanner::LayConnector(std::size_t runway, const Node& onRunway, const Node& onTaxiway, double side,
                                 const std::string& name)
{
    const GroundVector holdAt = onRunway.At + m_frames[runway].Right * (HoldShortM * side);
    const GroundSegment connector{onRunway.At, onTaxiway.At};
    if (CrossesTaxiway(connector) || CrossesRunway(connector, runway) || RunwayClearance(holdAt, runway) < HoldShortM)
        return;
    const std::int32_t nameIndex = AddName(name);
    const Node hold = AddPoint(holdAt, GroundPointKind::HoldShort);
    AddPath(GroundPathKind::Taxiway, onRunway, hold, nameIndex);
    AddPath(GroundPathKind::Taxiway, hold, onTaxiway, nameIndex);
}

/// The parallel taxiway in as many pieces as other runways and taxiways leave, with its connectors. extraPlaces are
/// nodes without a connector, for what joins there.
std::vector<GroundPlanner::NodeRun> GroundPlanner::LayTaxiway(std::size_t runway, double side,
                                                              std::span<const double> extraPlaces)
{
    const NodeRun runwayNodes = LayRunwayPaths(runway);
    struct Place {
        double Along;
        const Node* OnRunway;
    };
    std::vector<Place> places;
    const std::vector<double> stations = Stations(runway);
    for (std::size_t i = 0; i < stations.size(); ++i)
        places.push_back({stations[i], &runwayNodes[i]});
    for (const double extra : extraPlaces)
        places.push_back({extra, nullptr});
    std::stable_sort(places.begin(), places.end(), [](const Place& a, const Place& b) { return a.Along < b.Along; });

    std::erase_if(places, [&](const Place& place) {
        return !HasRoom(m_frames[runway].At(place.Along, m_measures.TaxiwayAt * side), runway);
    });
    std::vector<NodeRun> runs;
    if (places.size() < 2)
        return runs;
    const std::string letters = NextLetters();
    const std::int32_t name = AddName(letters);
    int connectors = 0;
    const std::vector<GroundSegment> before = m_taxiways;
    const auto blocked = [&](const GroundSegment& piece) {
        return std::any_of(before.begin(), before.end(),
                           [&](const GroundSegment& taxiway) { return SegmentsCross(taxiway, piece); });
    };
    for (const Place& place : places) {
        const Node node = AddPoint(m_frames[runway].At(place.Along, m_measures.TaxiwayAt * side));
        if (runs.empty() || blocked({runs.back().back().At, node.At}))
            runs.emplace_back();
        else
            AddPath(GroundPathKind::Taxiway, runs.back().back(), node, name);
        runs.back().push_back(node);
        if (place.OnRunway != nullptr)
            LayConnector(runway, *place.OnRunway, node, side, letters + NumberText(++connectors));
    }
    return runs;
}

void GroundPlanner::LayStand(const Node& from, GroundVector at, SpotWord word, int number, double radius)
{
    m_layout.Parkings.push_back({at.East, at.North, radius, word, number});
    AddPath(GroundPathKind::Parking, from, {static_cast<std::int32_t>(m_layout.Parkings.size()) - 1, at}, 0);
}

void GroundPlanner::LayStands(int lane, double laneAt, const Node& node, double along, int& number)
{
    const RunwayFrame& frame = m_frames[m_main];
    const auto gate = static_cast<std::int32_t>(SpotWord::GateA) + lane;
    SpotWord word = SpotWord::Parking;
    if (m_style.Gates)
        word = m_style.Lanes == 1 ? SpotWord::Gate : static_cast<SpotWord>(gate);
    const double outer = (laneAt + m_measures.StandAt) * m_apron.Side;
    LayStand(node, frame.At(along, outer), word, ++number, m_measures.StandRadius);
    if (m_style.TwoRows) {
        const double inner = (laneAt - m_measures.StandAt) * m_apron.Side;
        LayStand(node, frame.At(along, inner), word, ++number, m_measures.StandRadius);
    }
}

/// The compass word of the direction in which the apron lies from the reference point, for its general parking.
static SpotWord CompassParking(GroundVector at)
{
    const double degrees = std::atan2(at.East, at.North) * DegreesPerRadian;
    const std::int32_t eighth = (RoundTo<std::int32_t>(degrees / 45) + 8) % 8;
    return static_cast<SpotWord>(static_cast<std::int32_t>(SpotWord::NParking) + eighth);
}

/// Link taxiways from the parallel taxiway across all lanes, the lanes with their stands, and at an apron with gates
/// one general parking spot at the outer end of each lane.
void GroundPlanner::LayApron(const NodeRun& taxiway)
{
    const RunwayFrame& frame = m_frames[m_main];
    const std::int32_t laneName = AddName("");
    struct LinkWay {
        double Along;
        Node Last;
        std::int32_t Name;
    };
    std::vector<LinkWay> links;
    for (const double place : CrossPlaces()) {
        const GroundVector wanted = frame.At(place, m_measures.TaxiwayAt * m_apron.Side);
        const auto node =
            std::find_if(taxiway.begin(), taxiway.end(), [&](const Node& n) { return Length(n.At - wanted) < 1; });
        if (node != taxiway.end())
            links.push_back({place, *node, AddName(NextLetters())});
    }
    int spots = 0;
    for (int lane = 0; lane < m_style.Lanes; ++lane) {
        const double laneAt = m_measures.TaxiwayAt + m_measures.LaneAt + lane * m_measures.LaneEvery;
        struct LaneNode {
            double Along;
            Node At;
            bool HasStands;
        };
        std::vector<LaneNode> nodes;
        for (LinkWay& link : links) {
            const Node node = AddPoint(frame.At(link.Along, laneAt * m_apron.Side));
            AddPath(GroundPathKind::Taxiway, link.Last, node, link.Name);
            link.Last = node;
            nodes.push_back({link.Along, node, false});
            m_network.push_back(node);
        }
        for (int i = 0; i < m_style.StandsInRow; ++i) {
            const double along = m_apron.Middle + (i - (m_style.StandsInRow - 1) / 2.0) * m_measures.StandEvery;
            nodes.push_back({along, AddPoint(frame.At(along, laneAt * m_apron.Side)), true});
        }
        std::stable_sort(nodes.begin(), nodes.end(),
                         [](const LaneNode& a, const LaneNode& b) { return a.Along < b.Along; });
        int number = m_style.Gates ? 0 : m_parkingNumber;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            if (i > 0)
                AddPath(GroundPathKind::Taxiway, nodes[i - 1].At, nodes[i].At, laneName);
            if (nodes[i].HasStands)
                LayStands(lane, laneAt, nodes[i].At, nodes[i].Along, number);
        }
        m_parkingNumber = number;
        if (m_style.Gates && !nodes.back().HasStands) {
            const GroundVector at = nodes.back().At.At + frame.Along * m_measures.StandAt;
            LayStand(nodes.back().At, at, CompassParking(at), ++spots, m_measures.StandRadius / 2);
        }
    }
}

/// Joins a taxiway to the network by the shortest straight way that cuts no other taxiway.
void GroundPlanner::Link(const NodeRun& run)
{
    struct Way {
        double LengthM;
        Node From, To;
    };
    std::vector<Way> ways;
    for (const Node& from : run) {
        for (const Node& to : m_network)
            ways.push_back({Length(to.At - from.At), from, to});
    }
    std::stable_sort(ways.begin(), ways.end(), [](const Way& a, const Way& b) { return a.LengthM < b.LengthM; });
    const auto open = std::find_if(ways.begin(), ways.end(), [&](const Way& way) {
        return way.LengthM <= LongestLinkM && !CrossesTaxiway({way.From.At, way.To.At});
    });
    if (open != ways.end() && open->LengthM <= LongestLinkM)
        AddPath(GroundPathKind::Taxiway, open->From, open->To, AddName(NextLetters()));
    m_network.insert(m_network.end(), run.begin(), run.end());
}

GroundLayout GroundPlanner::Plan()
{
    m_apron = ChooseApron();
    const std::vector<NodeRun> mainRuns = LayTaxiway(m_main, m_apron.Side, CrossPlaces());
    NodeRun all;
    for (const NodeRun& run : mainRuns)
        all.insert(all.end(), run.begin(), run.end());
    LayApron(all);
    m_network.insert(m_network.end(), all.begin(), all.end());
    for (std::size_t i = 0; i < m_frames.size(); ++i) {
        if (i == m_main)
            continue;
        for (const NodeRun& run : LayTaxiway(i, ChooseSide(i), {}))
            Link(run);
    }
    return std::move(m_layout);
}

GroundLayout PlanGround(std::span<const PlannedRunway> runways, const ApronStyle& style)
{
    if (runways.empty())
        return {};
    return GroundPlanner(runways, style).Plan();
}
} // namespace corvane
