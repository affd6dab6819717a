#include "radar/MinimumAltitude.h"

#include "core/Geodesy.h"
#include "core/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace corvane {
namespace {
/// The search as it is told: every terrain point for every matching airport.
std::int32_t PlainMinimumAltitude(const AreaModel& area, const PlayerRecord& target)
{
    const std::string icao = ToUpper(TrimSpaces(target.DestinationIcao));
    if (target.FlightRules != 1 || area.TerrainPoints.empty() || icao.empty())
        return 0;
    std::int32_t minimum = 0;
    for (const AirportRecord& airport : area.AreaAirports) {
        if (ToUpper(TrimSpaces(airport.Icao)) != icao)
            continue;
        const int reach = DistanceNm({airport.Lat, airport.Lon}, {target.Latitude, target.Longitude});
        if (reach > 90)
            continue;
        std::int32_t highest = 0;
        for (const TerrainPoint& point : area.TerrainPoints)
            if (DistanceNm({airport.Lat, airport.Lon}, {point.Lat, point.Lon}) <= reach && point.ElevationFt > highest)
                highest = point.ElevationFt;
        minimum = (highest == 0 ? airport.ElevationFt : highest) + 2000;
    }
    return minimum;
}

AirportRecord Airport(std::string_view icao, double lat, double lon, std::int32_t elevationFt)
{
    AirportRecord airport;
    airport.Icao = icao;
    airport.Lat = lat;
    airport.Lon = lon;
    airport.ElevationFt = elevationFt;
    return airport;
}

PlayerRecord IfrTarget(std::string_view destination, double lat, double lon)
{
    PlayerRecord target;
    target.FlightRules = 1;
    target.DestinationIcao = destination;
    target.Latitude = lat;
    target.Longitude = lon;
    return target;
}

constexpr double Mile = 1.0 / 60; // degrees of latitude

/// An airport at 0, 0 and 500 ft with terrain to its north at 10, 20, 50, 90 and 91 miles.
AreaModel SmallArea()
{
    AreaModel area;
    area.AreaAirports = {Airport("EDAA", 0, 0, 500)};
    area.TerrainPoints = {
        {10 * Mile, 0, -20}, {20 * Mile, 0, 3200}, {50 * Mile, 0, 3100}, {90 * Mile, 0, 7000}, {91 * Mile, 0, 9000}};
    return area;
}

struct TargetCase {
    const char* Name;
    const char* Destination;
    double MilesSouth;
    std::int32_t MinimumFt;
};
class MinimumAltitudeOfTarget : public testing::TestWithParam<TargetCase> {};
TEST_P(MinimumAltitudeOfTarget, ComesFromTheCircleAroundItsDestination)
{
    MinimumAltitudes altitudes;
    const AreaModel area = SmallArea();
    const PlayerRecord target = IfrTarget(GetParam().Destination, -GetParam().MilesSouth * Mile, 0);
    EXPECT_EQ(altitudes.For(area, target, 0), GetParam().MinimumFt);
    EXPECT_EQ(PlainMinimumAltitude(area, target), GetParam().MinimumFt);
}
INSTANTIATE_TEST_SUITE_P(
    Radar, MinimumAltitudeOfTarget,
    testing::Values(
        TargetCase{"OverTheAirport", "EDAA", 0, 2500}, TargetCase{"TerrainBelowSeaLevelOnly", "EDAA", 19, 2500},
        TargetCase{"HighestPointJustInside", "EDAA", 20, 5200}, TargetCase{"RoundedDown", "EDAA", 20.4, 5200},
        TargetCase{"RoundedUpFromOutside", "EDAA", 19.6, 5200}, TargetCase{"LowerPointFartherOut", "EDAA", 60, 5200},
        TargetCase{"AtTheLimit", "EDAA", 90, 9000}, TargetCase{"BeyondTheLimit", "EDAA", 91, 0},
        TargetCase{"TrimmedAndUpperCased", "  edAa ", 20, 5200}, TargetCase{"NoDestination", "", 20, 0},
        TargetCase{"BlankDestination", "   ", 20, 0}, TargetCase{"UnknownDestination", "EDAB", 20, 0}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(MinimumAltitude, IsNoneForVisualFlightsAndWithoutTerrain)
{
    MinimumAltitudes altitudes;
    AreaModel area = SmallArea();
    PlayerRecord target = IfrTarget("EDAA", 0, 0);
    target.FlightRules = 0;
    EXPECT_EQ(altitudes.For(area, target, 0), 0);
    target.FlightRules = 1;
    area.TerrainPoints.clear();
    EXPECT_EQ(altitudes.For(area, target, 0), 0);
    EXPECT_EQ(altitudes.For(AreaModel(), target, 0), 0);
}

TEST(MinimumAltitude, TakesTheLastMatchingAirportInReach)
{
    MinimumAltitudes altitudes;
    AreaModel area;
    area.TerrainPoints = {{0, 5, 1}}; // far from all
    area.AreaAirports = {Airport("KAAA", 0, 0, 100), Airport("kaaa ", 0.5, 0, 200), Airport("KAAA", 2, 0, 300)};
    EXPECT_EQ(altitudes.For(area, IfrTarget("KAAA", 1, 0), 0), 2300);     // all three within 60 miles
    EXPECT_EQ(altitudes.For(area, IfrTarget("KAAA", 0, 0), 0), 2200);     // the third is 120 miles away
    EXPECT_EQ(altitudes.For(area, IfrTarget("KAAA", -1.25, 0), 0), 2100); // only the first is left
    EXPECT_EQ(altitudes.For(area, IfrTarget("KAAA", -2, 0), 0), 0);
}

TEST(MinimumAltitude, FollowsTheTargetInAPlaceOfTheTable)
{
    MinimumAltitudes altitudes;
    AreaModel area = SmallArea();
    area.AreaAirports.push_back(Airport("EDBB", 0, 0, 4000));
    EXPECT_EQ(altitudes.For(area, IfrTarget("EDAA", 0, 0), 3), 2500);
    EXPECT_EQ(altitudes.For(area, IfrTarget("EDBB", 0, 0), 3), 6000); // flight plan changed, or another target here
    EXPECT_EQ(altitudes.For(area, IfrTarget("EDBB", 20 * Mile, 0), 3), 5200);
    EXPECT_EQ(altitudes.For(area, IfrTarget("EDBB", 0, 20 * Mile), 3), 5200);
}

TEST(MinimumAltitude, ForgetsTheAreaBefore)
{
    MinimumAltitudes altitudes;
    AreaModel area = SmallArea();
    const PlayerRecord target = IfrTarget("EDAA", 0, 0);
    EXPECT_EQ(altitudes.For(area, target, 0), 2500);
    area.AreaAirports[0].ElevationFt = 700; // refilled in place, as a load does
    altitudes.Reset();
    EXPECT_EQ(altitudes.For(area, target, 0), 2700);

    AreaModel other = SmallArea();
    other.AreaAirports[0].ElevationFt = 900;
    EXPECT_EQ(altitudes.For(other, target, 0), 2900); // noticed without Reset
}

TEST(MinimumAltitude, PassesOverDamagedPositionsAndHoldsTheLimits)
{
    constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
    MinimumAltitudes altitudes;
    AreaModel area = SmallArea();
    area.TerrainPoints.insert(area.TerrainPoints.begin(),
                              {{Nan, 0, 8000}, {0, Nan, 8000}, {Infinity, 0, 8000}, {0, -Infinity, 8000}});
    area.AreaAirports.push_back(Airport("EDAA", Nan, 0, 3000));
    EXPECT_EQ(altitudes.For(area, IfrTarget("EDAA", 0, 0), 0), 2500);

    area.TerrainPoints.push_back({0, 0, Highest});
    EXPECT_EQ(altitudes.For(area, IfrTarget("EDAA", 0, 0), 0), Highest);
}

/// A point up to so many miles from another, all directions alike.
LatLon RandomNear(std::mt19937& random, LatLon center, double miles)
{
    std::uniform_real_distribution<double> distance(0, miles * 1852);
    std::uniform_int_distribution<int> course(0, 359);
    return DestinationM(center, course(random), distance(random));
}

struct RandomArea {
    const char* Name;
    LatLon Center;
};
class MinimumAltitudeInRandomAreas : public testing::TestWithParam<RandomArea> {};
TEST_P(MinimumAltitudeInRandomAreas, AgreesWithThePlainSearch)
{
    constexpr const char* Destinations[] = {"AAAA", "BBBB", "CCCC"};
    std::mt19937 random(20020);
    std::uniform_int_distribution<std::int32_t> elevation(-500, 9000);
    AreaModel area;
    for (const char* icao : {"AAAA", "BBBB", "CCCC", "AAAA"}) {
        const LatLon at = RandomNear(random, GetParam().Center, 60);
        area.AreaAirports.push_back(Airport(icao, at.Lat, at.Lon, elevation(random)));
    }
    for (int i = 0; i < 4000; ++i) {
        const LatLon at = RandomNear(random, GetParam().Center, 200);
        area.TerrainPoints.push_back({at.Lat, at.Lon, i % 2 == 0 ? i : elevation(random)}); // half of them rising
    }
    MinimumAltitudes altitudes;
    for (std::size_t i = 0; i < 60; ++i) {
        const LatLon at = RandomNear(random, GetParam().Center, 90);
        const PlayerRecord target = IfrTarget(Destinations[i % 3], at.Lat, at.Lon);
        EXPECT_EQ(altitudes.For(area, target, i), PlainMinimumAltitude(area, target)) << at.Lat << " " << at.Lon;
    }
}
INSTANTIATE_TEST_SUITE_P(Radar, MinimumAltitudeInRandomAreas,
                         testing::Values(RandomArea{"Equator", {0, 0}}, RandomArea{"Alps", {46.5, 9.7}},
                                         RandomArea{"DateLine", {-17, 180}},
                                         RandomArea{"WestOfTheDateLine", {52, 179.2}},
                                         RandomArea{"Svalbard", {79.5, 15}}, RandomArea{"NorthPole", {89.5, -120}},
                                         RandomArea{"NearTheSouthPole", {-87.8, 60}}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(HighestTerrain, CountsPositionsATurnAwayAsDistancesDo)
{
    const std::vector<TerrainPoint> points = {{0, 360, 100}, {0.5, 359.5, 200}, {1, -181, 300}, {180, 180, 400}};
    const HighestTerrain highest = FindHighestTerrain(points, {0, 0});
    for (std::size_t d = 0; d < highest.size(); ++d) {
        std::int32_t expected = 0;
        for (const TerrainPoint& point : points)
            if (static_cast<std::size_t>(DistanceNm({0, 0}, {point.Lat, point.Lon})) <= d)
                expected = std::max(expected, point.ElevationFt);
        EXPECT_EQ(highest[d], expected) << d;
    }
}
} // namespace
} // namespace corvane
