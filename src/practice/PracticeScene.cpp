#include "practice/PracticeScene.h"

#include "core/GreatCircle.h"
#include "core/Text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace corvane {
static bool CanBeFlown(const LatLon& position) noexcept
{
    constexpr double PolarLimit = 89; // courses lose their meaning beyond it
    return std::abs(position.Lat) <= PolarLimit && std::abs(position.Lon) <= 180;
}

static PracticeRunway RunwayFrom(const std::string& name, const LatLon& threshold, const LatLon& farEnd,
                                 double elevationFt)
{
    return {.Name = ToUpper(TrimSpaces(name)),
            .Threshold = threshold,
            .FarEnd = farEnd,
            .Course = CourseTo(threshold, farEnd),
            .LengthFt = RangeNm(threshold, farEnd) * FeetPerNm,
            .ElevationFt = elevationFt};
}

static void AddRunways(PracticeAirport& airport, const RunwayRecord& record)
{
    const LatLon end1{record.End1Lat, record.End1Lon};
    const LatLon end2{record.End2Lat, record.End2Lon};
    if (!CanBeFlown(end1) || !CanBeFlown(end2))
        return;
    constexpr double ShortestFt = 300;
    constexpr double LongestFt = 30000;
    const double lengthFt = RangeNm(end1, end2) * FeetPerNm;
    if (lengthFt < ShortestFt || lengthFt > LongestFt)
        return;
    airport.Runways.push_back(RunwayFrom(record.Designation, end1, end2, record.ElevationFt));
    airport.Runways.push_back(RunwayFrom(record.ReciprocalDesignation, end2, end1, record.ElevationFt));
}

/// An ILS stands near one end of its runway; its course tells the direction, its place tells parallels apart.
static void MarkIls(std::vector<PracticeRunway>& runways, std::span<const int> headings, const IlsRecord& ils)
{
    constexpr double SameDirectionDeg = 3;
    PracticeRunway* nearest = nullptr;
    double nearestNm = 3;
    for (std::size_t i = 0; i < runways.size(); ++i) {
        if (std::abs(TurnTo(headings[i], ils.MagHeading)) > SameDirectionDeg)
            continue;
        const LatLon place{ils.Lat, ils.Lon};
        const double nm = std::min(RangeNm(runways[i].Threshold, place), RangeNm(runways[i].FarEnd, place));
        if (nm < nearestNm) {
            nearestNm = nm;
            nearest = &runways[i];
        }
    }
    if (nearest != nullptr)
        nearest->HasIls = true;
}

static PracticeAirport AirportFrom(const AirportRecord& record)
{
    PracticeAirport airport{.Icao = ToUpper(TrimSpaces(record.Icao)),
                            .Position = {record.Lat, record.Lon},
                            .ElevationFt = static_cast<double>(record.ElevationFt),
                            .Runways = {},
                            .Stands = {},
                            .Taxiways = TaxiNetwork(record)};
    std::vector<int> headings;
    for (const RunwayRecord& runway : record.Runways) {
        const std::size_t before = airport.Runways.size();
        AddRunways(airport, runway);
        if (airport.Runways.size() > before) {
            headings.push_back(runway.MagHeading);
            headings.push_back(runway.ReciprocalMagHeading);
        }
    }
    for (const IlsRecord& ils : record.Ils)
        MarkIls(airport.Runways, headings, ils);
    constexpr double OwnGroundNm = 5; // a spot further away belongs to a damaged record
    for (const ParkingRecord& spot : record.Parkings)
        if (const LatLon place{spot.Lat, spot.Lon}; RangeNm(airport.Position, place) < OwnGroundNm)
            airport.Stands.push_back(place);
    return airport;
}

/// The first of the given runways that is long enough.
static const PracticeRunway* FirstOf(const PracticeAirport& airport, const std::vector<std::string>& names,
                                     double lengthFt) noexcept
{
    for (const std::string& name : names)
        if (const PracticeRunway* runway = airport.FindRunway(name); runway != nullptr && runway->LengthFt >= lengthFt)
            return runway;
    return nullptr;
}

/// The least headwind of a runway that is used: a few knots below the most that a runway has.
static double LeastHeadKt(const PracticeAirport& airport, double lengthFt) noexcept
{
    constexpr double AsGoodKt = 4;
    double most = -std::numeric_limits<double>::infinity();
    for (const PracticeRunway& runway : airport.Runways)
        if (runway.LengthFt >= lengthFt)
            most = std::max(most, airport.Wind.HeadKt(runway.Course));
    return most - AsGoodKt;
}

const PracticeRunway* PracticeAirport::RunwayInUse(double lengthFt) const noexcept
{
    if (const PracticeRunway* given = FirstOf(*this, Landing, lengthFt))
        return given;
    const double leastKt = Wind.Blows() ? LeastHeadKt(*this, lengthFt) : 0;
    const PracticeRunway* best = nullptr;
    for (const PracticeRunway& runway : Runways) {
        if (runway.LengthFt < lengthFt || (Wind.Blows() && Wind.HeadKt(runway.Course) < leastKt))
            continue;
        const bool better = best == nullptr || (runway.HasIls && !best->HasIls) ||
                            (runway.HasIls == best->HasIls && runway.LengthFt > best->LengthFt);
        if (better)
            best = &runway;
    }
    return best;
}

const PracticeRunway* PracticeAirport::TakeOffRunway(double lengthFt) const noexcept
{
    if (const PracticeRunway* given = FirstOf(*this, TakeOff, lengthFt))
        return given;
    const PracticeRunway* const landing = RunwayInUse(lengthFt);
    if (landing == nullptr || !Wind.Blows())
        return landing;
    constexpr double ParallelDeg = 15;
    const PracticeRunway* best = nullptr;
    for (const PracticeRunway& runway : Runways)
        if (&runway != landing && runway.LengthFt >= lengthFt &&
            std::abs(TurnTo(runway.Course, landing->Course)) < ParallelDeg &&
            (best == nullptr || runway.LengthFt > best->LengthFt))
            best = &runway;
    return best != nullptr ? best : landing;
}

void PracticeScene::SetWind(const PracticeWind& wind) noexcept
{
    m_wind = wind;
    for (PracticeAirport& airport : m_airports)
        airport.Wind = wind;
}

void PracticeScene::UseRunways(std::vector<std::string> landing, std::vector<std::string> takeOff)
{
    const PracticeAirport* const main = MainAirport(0);
    for (PracticeAirport& airport : m_airports)
        if (&airport == main) {
            airport.Landing = std::move(landing);
            airport.TakeOff = std::move(takeOff);
            return;
        }
}

static std::string_view WithoutLeadingZeros(std::string_view name) noexcept
{
    while (name.size() > 1 && name.front() == '0')
        name.remove_prefix(1);
    return name;
}

bool PracticeRunway::IsNamed(std::string_view name) const noexcept
{
    return WithoutLeadingZeros(Name) == WithoutLeadingZeros(name);
}

const PracticeRunway* PracticeAirport::FindRunway(std::string_view name) const noexcept
{
    const auto found = std::find_if(Runways.begin(), Runways.end(),
                                    [&](const PracticeRunway& runway) { return runway.IsNamed(name); });
    return found == Runways.end() ? nullptr : &*found;
}

LatLon PracticeAirport::Stand(std::size_t number) const noexcept
{
    if (!Stands.empty())
        return Stands[number % Stands.size()];
    if (Runways.empty())
        return Position;
    // A row of spots a quarter of a mile off the middle of the first runway.
    const PracticeRunway& runway = Runways.front();
    constexpr double RowNm = 0.25;
    constexpr double SpotNm = 0.03;
    const double along = (static_cast<double>(number % MadeStands) - MadeStands / 2.0) * SpotNm;
    const LatLon middle = Along(runway.Threshold, runway.Course, runway.LengthFt / FeetPerNm / 2 + along);
    return Along(middle, runway.Course + 90, RowNm);
}

PracticeScene::PracticeScene(std::span<const AirportRecord> airports, std::span<const NavaidRecord> vors,
                             std::span<const NavaidRecord> ndbs, LatLon center)
    : m_center(CanBeFlown(center) ? center : LatLon{})
{
    for (const AirportRecord& record : airports)
        if (CanBeFlown({record.Lat, record.Lon}))
            m_airports.push_back(AirportFrom(record));
    for (const auto& navaids : {vors, ndbs})
        for (const NavaidRecord& navaid : navaids)
            if (CanBeFlown({navaid.Lat, navaid.Lon}))
                m_fixes.push_back({ToUpper(TrimSpaces(navaid.Ident)), {navaid.Lat, navaid.Lon}});
}

const PracticeAirport* PracticeScene::MainAirport(double lengthFt) const noexcept
{
    const PracticeAirport* main = nullptr;
    double mainNm = 25;
    for (const PracticeAirport& airport : m_airports)
        if (const double nm = RangeNm(m_center, airport.Position);
            nm < mainNm && airport.RunwayInUse(lengthFt) != nullptr) {
            main = &airport;
            mainNm = nm;
        }
    return main;
}

const PracticeAirport* PracticeScene::FindAirport(std::string_view icao) const noexcept
{
    const auto found = std::find_if(m_airports.begin(), m_airports.end(),
                                    [&](const PracticeAirport& airport) { return airport.Icao == icao; });
    return found == m_airports.end() ? nullptr : &*found;
}

const LatLon* PracticeScene::FindPlace(std::string_view ident, const LatLon& nearTo) const noexcept
{
    const LatLon* nearest = nullptr;
    double nearestNm = std::numeric_limits<double>::infinity();
    const auto consider = [&](const std::string& name, const LatLon& place) {
        if (name != ident)
            return;
        if (const double nm = RangeNm(nearTo, place); nm < nearestNm) {
            nearestNm = nm;
            nearest = &place;
        }
    };
    for (const PracticeAirport& airport : m_airports)
        consider(airport.Icao, airport.Position);
    for (const PracticeFix& fix : m_fixes)
        consider(fix.Ident, fix.Position);
    return nearest;
}
} // namespace corvane
