#include "demo/AirportScenery.h"

#include "core/Text.h"

#include <algorithm>
#include <cmath>

namespace corvane {
static constexpr double MetresPerDegree = 60 * 1852;

GroundVector MetresFrom(LatLon origin, LatLon position) noexcept
{
    const double lon = NormalizeLongitude(position.Lon - origin.Lon);
    return {lon * MetresPerDegree * std::cos(origin.Lat * RadiansPerDegree),
            (position.Lat - origin.Lat) * MetresPerDegree};
}

/// The point metres from position in a direction; good over the length of a runway.
static LatLon Moved(LatLon position, double heading, double metres)
{
    const double angle = heading * RadiansPerDegree;
    const double lat = position.Lat + metres * std::cos(angle) / MetresPerDegree;
    const double perLon = MetresPerDegree * std::cos(position.Lat * RadiansPerDegree);
    return {lat, NormalizeLongitude(position.Lon + metres * std::sin(angle) / perLon)};
}

ApronStyle ApronOf(const AirportSource& airport, std::size_t rank)
{
    const bool longRunway = std::any_of(airport.Runways.begin(), airport.Runways.end(),
                                        [](const RunwayData& runway) { return runway.LengthFt >= 9000; });
    if (rank < BusiestAirports && airport.Large)
        return {.Lanes = 3, .StandsInRow = 10, .TwoRows = true, .Gates = true};
    if (airport.Large && longRunway)
        return {.Lanes = 2, .StandsInRow = 10, .TwoRows = true, .Gates = true};
    if (airport.Large)
        return {.Lanes = 1, .StandsInRow = 10, .TwoRows = true, .Gates = true};
    return {.Lanes = 1, .StandsInRow = airport.Scheduled ? 8 : 4};
}

static void AddCom(SceneryAirport& airport, ComKind kind, std::int32_t frequencyKhz, const std::string& name)
{
    if (frequencyKhz > 0)
        airport.Coms.push_back({kind, frequencyKhz, name});
}

static void AddComs(SceneryAirport& airport, const std::string& city, const AirportRadio& radio)
{
    AddCom(airport, ComKind::Clearance, radio.Clearance, city + " CLEARANCE");
    AddCom(airport, ComKind::Ground, radio.Ground, city + " GROUND");
    AddCom(airport, ComKind::Tower, radio.Tower, city + " TOWER");
    AddCom(airport, ComKind::Approach, radio.Approach, city + " APPROACH");
    AddCom(airport, ComKind::Departure, radio.Departure, city + " DEPARTURE");
}

/// Where the glide path meets the runway. A scan of the scenery moves an ILS of exactly the runway's course onto the
/// runway's end, which could not be pointed at any more; as with many real ones, the course is a degree off.
static SceneryIls MakeIls(const RunwayData& runway, bool farEnd, std::string ident, std::int32_t frequencyKhz)
{
    constexpr double BehindThresholdM = 300;
    constexpr int CourseOffset = 1;
    const double fromCenter = runway.LengthFt * MetresPerFoot / 2 - BehindThresholdM;
    const LatLon at = Moved(runway.Center, runway.TrueHeading, farEnd ? fromCenter : -fromCenter);
    return {std::move(ident), at.Lat, at.Lon, runway.ElevationFt, farEnd, frequencyKhz, CourseOffset};
}

static SceneryRunway MakeRunway(const RunwayData& source)
{
    SceneryRunway runway;
    runway.Lat = source.Center.Lat;
    runway.Lon = source.Center.Lon;
    runway.ElevationFt = source.ElevationFt;
    runway.TrueHeading = source.TrueHeading;
    runway.LengthFt = source.LengthFt;
    runway.WidthFt = source.WidthFt;
    runway.Number = 10 * (source.Ident[0] - '0') + (source.Ident[1] - '0');
    runway.Side = source.Ident.size() > 2 ? source.Ident[2] : '\0';
    return runway;
}

/// I, the last two letters of the airport, and A, B, .. in the order of its localizers: IEAA.
static std::string IlsIdent(const std::string& icao, int& localizers)
{
    return "I" + icao.substr(2) + static_cast<char>('A' + localizers++ % 26);
}

static void AddRunways(SceneryAirport& airport, const AirportSource& source, const AirportRadio& radio)
{
    int localizers = 0;
    for (std::size_t i = 0; i < source.Runways.size(); ++i) {
        SceneryRunway runway = MakeRunway(source.Runways[i]);
        if (radio.FirstEndIls[i] > 0)
            runway.Ils.push_back(
                MakeIls(source.Runways[i], false, IlsIdent(source.Icao, localizers), radio.FirstEndIls[i]));
        if (radio.FarEndIls[i] > 0)
            runway.Ils.push_back(
                MakeIls(source.Runways[i], true, IlsIdent(source.Icao, localizers), radio.FarEndIls[i]));
        airport.Runways.push_back(std::move(runway));
    }
}

static GroundLayout MakeGround(const AirportSource& source, std::size_t rank)
{
    std::vector<PlannedRunway> runways;
    for (const RunwayData& runway : source.Runways)
        runways.push_back(
            {MetresFrom(source.Position, runway.Center), runway.TrueHeading, runway.LengthFt * MetresPerFoot});
    return PlanGround(runways, ApronOf(source, rank));
}

SceneryAirport MakeSceneryAirport(const AirportSource& source, std::size_t rank, const AirportRadio& radio)
{
    SceneryAirport airport;
    airport.Name = source.Name;
    airport.Icao = source.Icao;
    airport.Lat = source.Position.Lat;
    airport.Lon = source.Position.Lon;
    airport.ElevationFt = source.ElevationFt;
    AddComs(airport, ToUpper(source.City), radio);
    AddRunways(airport, source, radio);
    airport.Ground = MakeGround(source, rank);
    return airport;
}
} // namespace corvane
