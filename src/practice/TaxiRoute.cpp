#include "practice/TaxiRoute.h"

#include "core/GreatCircle.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace corvane {
static constexpr double TaxiwayNm = 0.1; ///< between a runway and the taxiway beside it, where none is known
static constexpr double HoldNm = 0.04;   ///< a holding point is at least so far from the centreline

LatLon LineUpPoint(const PracticeRunway& runway) noexcept
{
    constexpr double LineUpNm = 0.01;
    return Along(runway.Threshold, runway.Course, LineUpNm);
}

/// A point of the taxiway beside a runway, on the side of a place; outNm counts back from the threshold.
static LatLon Turnoff(const PracticeRunway& runway, const LatLon& toward, double outNm) noexcept
{
    const bool onTheLeft = OffsetFromLine(runway.Threshold, runway.Course, toward).LeftNm >= 0;
    const LatLon onTheLine = Along(runway.Threshold, runway.Course + 180, outNm);
    return Along(onTheLine, runway.Course + (onTheLeft ? -90 : 90), TaxiwayNm);
}

static double BesideTheRunway(const PracticeRunway& runway, const LatLon& place) noexcept
{
    return std::clamp(OffsetFromLine(runway.Threshold, runway.Course, place).OutNm, -runway.LengthFt / FeetPerNm, 0.0);
}

static bool IsOnRunway(const PracticeRunway& runway, const LatLon& place, double besideNm) noexcept
{
    const LineOffset offset = OffsetFromLine(runway.Threshold, runway.Course, place);
    return std::abs(offset.LeftNm) < besideNm && offset.OutNm < besideNm &&
           offset.OutNm > -runway.LengthFt / FeetPerNm - besideNm;
}

/// How far from its beginning a runway is entered on a way that ends on it.
static constexpr double NearBeginningNm = 0.2;

/// The cheapest node from which a runway can be entered near its beginning; nothing where no way leads to one.
/// onRunway  whether it may lie on the runway itself, as the end of an entry that a controller names
static std::optional<std::size_t> EntryTo(const PracticeRunway& runway, const TaxiNetwork& taxiways,
                                          const TaxiNetwork::Ways& ways, bool onRunway)
{
    constexpr double FarthestNm = 0.35;
    constexpr double BacktrackCosts = 4; // a mile down the runway is one less for the take-off
    const LatLon lineUp = LineUpPoint(runway);
    std::optional<std::size_t> best;
    double bestNm = 0;
    for (std::size_t i = 0; i < taxiways.Nodes().size(); ++i) {
        const double nm = RangeNm(taxiways.Nodes()[i], lineUp);
        if (nm > FarthestNm || !ways.Reaches(i))
            continue;
        if (IsOnRunway(runway, taxiways.Nodes()[i], HoldNm) && (!onRunway || nm > NearBeginningNm))
            continue;
        if (const double cost = ways.CostNm(i) + nm * BacktrackCosts; !best || cost < bestNm) {
            best = i;
            bestNm = cost;
        }
    }
    return best;
}

/// Ends a way before it comes onto the runway near its beginning, at a holding point.
static void StopBefore(const PracticeRunway& runway, std::deque<LatLon>& way)
{
    const LatLon lineUp = LineUpPoint(runway);
    for (std::size_t i = 1; i < way.size(); ++i) {
        const double from = OffsetFromLine(runway.Threshold, runway.Course, way[i - 1]).LeftNm;
        const double to = OffsetFromLine(runway.Threshold, runway.Course, way[i]).LeftNm;
        const bool crosses = std::abs(from) > HoldNm && (from * to <= 0 || std::abs(to) < HoldNm);
        const double lengthNm = RangeNm(way[i - 1], way[i]);
        const double share = crosses ? std::abs(from) / std::max(std::abs(from - to), 1e-9) : 0;
        const LatLon crossing = Along(way[i - 1], CourseTo(way[i - 1], way[i]), lengthNm * share);
        if (!crosses || RangeNm(crossing, lineUp) > NearBeginningNm)
            continue;
        const double holdShare = (std::abs(from) - HoldNm) / std::abs(from - to);
        const LatLon hold = Along(way[i - 1], CourseTo(way[i - 1], way[i]), lengthNm * holdShare);
        way.resize(i);
        way.push_back(hold);
        return;
    }
}

/// Back on ways from a node to where they lead, and onto the runway.
static std::deque<LatLon> OntoRunway(const PracticeRunway& runway, const TaxiNetwork::Ways& ways, std::size_t entry)
{
    const std::vector<LatLon> back = ways.From(entry);
    std::deque<LatLon> route(back.rbegin(), back.rend());
    route.push_back(LineUpPoint(runway));
    StopBefore(runway, route);
    route.push_back(LineUpPoint(runway));
    return route;
}

/// Over the taxiways; empty where they do not lead there.
static std::deque<LatLon> TaxiwaysToRunway(const PracticeAirport& airport, const PracticeRunway& runway,
                                           const LatLon& from)
{
    const TaxiNetwork& taxiways = airport.Taxiways;
    if (taxiways.IsEmpty())
        return {};
    const TaxiNetwork::Ways ways = taxiways.WaysTo(taxiways.Nearest(from));
    const auto entry = EntryTo(runway, taxiways, ways, false);
    return entry ? OntoRunway(runway, ways, *entry) : std::deque<LatLon>();
}

NamedRoute RouteVia(const PracticeAirport& airport, const PracticeRunway& runway, const LatLon& from,
                    std::span<const std::string> names)
{
    constexpr double StubNm = 0.15; // such as the entries of a runway, which have names of their own
    const TaxiNetwork& taxiways = airport.Taxiways;
    if (!taxiways.HasTaxiway({}))
        return {{}, "we do not know the taxiways"};
    for (const std::string& name : names)
        if (!taxiways.HasTaxiway(name))
            return {{}, "there is no taxiway " + name + " at " + airport.Icao};
    const TaxiNetwork::Ways ways = taxiways.WaysVia(taxiways.Nearest(from), names);
    const auto entry = EntryTo(runway, taxiways, ways, true);
    if (!entry || ways.AsideNm(*entry) > StubNm)
        return {{}, "that way does not lead to runway " + runway.Name};
    return {OntoRunway(runway, ways, *entry), {}};
}

std::deque<LatLon> RouteToRunway(const PracticeAirport& airport, const PracticeRunway& runway, const LatLon& from)
{
    if (std::deque<LatLon> route = TaxiwaysToRunway(airport, runway, from); !route.empty())
        return route;
    return {Turnoff(runway, from, BesideTheRunway(runway, from)),
            Turnoff(runway, from, OffsetFromLine(runway.Threshold, runway.Course, LineUpPoint(runway)).OutNm),
            LineUpPoint(runway)};
}

/// The node of the runway, ahead of a place on it, from which the way to the stand is the shortest.
static std::optional<std::size_t> ExitFrom(const PracticeRunway& runway, const LatLon& from,
                                           const TaxiNetwork& taxiways, const TaxiNetwork::Ways& ways)
{
    constexpr double OnTheRunwayNm = 0.02;
    constexpr double TurnAheadNm = 0.02;
    const double outNm = OffsetFromLine(runway.Threshold, runway.Course, from).OutNm;
    std::optional<std::size_t> best;
    double bestNm = 0;
    for (std::size_t i = 0; i < taxiways.Nodes().size(); ++i) {
        if (!ways.Reaches(i) || !IsOnRunway(runway, taxiways.Nodes()[i], OnTheRunwayNm))
            continue;
        const double aheadNm = outNm - OffsetFromLine(runway.Threshold, runway.Course, taxiways.Nodes()[i]).OutNm;
        if (aheadNm < TurnAheadNm)
            continue;
        constexpr double RunwayCosts = 5; // the next one to land is near
        if (const double cost = aheadNm * RunwayCosts + ways.CostNm(i); !best || cost < bestNm) {
            best = i;
            bestNm = cost;
        }
    }
    return best;
}

std::deque<LatLon> RouteToStand(const PracticeAirport& airport, const PracticeRunway& runway, const LatLon& from,
                                const LatLon& stand)
{
    if (!airport.Taxiways.IsEmpty()) {
        const TaxiNetwork::Ways ways = airport.Taxiways.WaysTo(airport.Taxiways.Nearest(stand));
        if (const auto exit = ExitFrom(runway, from, airport.Taxiways, ways)) {
            const std::vector<LatLon> way = ways.From(*exit);
            std::deque<LatLon> route(way.begin(), way.end());
            route.push_back(stand);
            return route;
        }
    }
    const double outNm = OffsetFromLine(runway.Threshold, runway.Course, from).OutNm;
    constexpr double TurnAheadNm = 0.03;
    return {Turnoff(runway, stand, outNm - TurnAheadNm), Turnoff(runway, stand, BesideTheRunway(runway, stand)), stand};
}
} // namespace corvane
