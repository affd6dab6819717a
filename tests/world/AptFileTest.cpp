#include "tests/world/WorldText.h"
#include "world/Pavement.h"

#include <gtest/gtest.h>

#include <cmath>

namespace corvane {
namespace {
const std::string Head = "1 100 0 0 AAAA Name\n";
const std::string Runway = "100 30 1 0 0 0 0 0 09 10 20 0 0 1 0 0 0 27 10 20.03\n";

struct LeftOutCase {
    const char* Name;
    std::string Rows;
    std::size_t Airports;
    std::size_t Passed;
};
class AirportsOfDirtyFiles : public testing::TestWithParam<LeftOutCase> {};

TEST_P(AirportsOfDirtyFiles, AreKeptOrLeftOut)
{
    const ReadAirports read(GetParam().Rows);
    ASSERT_TRUE(read.Status) << read.Status.error().Text();
    EXPECT_EQ(read.Airports.size(), GetParam().Airports);
    EXPECT_EQ(read.File.Passed.size(), GetParam().Passed);
}

INSTANTIATE_TEST_SUITE_P(
    World, AirportsOfDirtyFiles,
    testing::Values(LeftOutCase{"Whole", Head + Runway, 1, 0},
                    LeftOutCase{"ClosedByMark", "1 1 0 0 AAAA [X] Name\n" + Runway, 0, 0},
                    LeftOutCase{"ClosedByWord", "1 1 0 0 AAAA Island - CLOSED\n" + Runway, 0, 0},
                    LeftOutCase{"PartlyClosed", "1 1 0 0 AAAA Base (Military - Closed)\n" + Runway, 1, 0},
                    LeftOutCase{"ClosedIsNoFirst", "1 1 0 0 AAAA [X] Name\n" + Runway + Head + Runway, 1, 0},
                    LeftOutCase{"Repeated", Head + Runway + "1 1 0 0 aaaa Other\n" + Runway, 1, 0},
                    LeftOutCase{"RepeatedByOfficialCode",
                                Head + Runway + "1 1 0 0 X1 Other\n1302 icao_code aaaa\n" + Runway, 1, 0},
                    LeftOutCase{"Nowhere", Head + "54 11810 TOWER\n", 0, 0},
                    LeftOutCase{"UnreadableHeadTakesItsRows", Head + Runway + "1 high 0 0 BBBB Other\n100 x\n", 1, 1},
                    LeftOutCase{"NoName", Head + Runway + "1 10 0 0 BBBB\n" + Runway, 1, 1},
                    LeftOutCase{"NameOfControls", Head + Runway + "1 10 0 0 BBBB \x01\x02\n" + Runway, 1, 1},
                    LeftOutCase{"ElevationTooHigh", Head + Runway + "1 1e10 0 0 BBBB Other\n" + Runway, 1, 1},
                    LeftOutCase{"RowsBeforeTheFirst", Runway + Head + Runway, 1, 1},
                    LeftOutCase{"LaterCodes", Head + Runway + "9999 what ever\n1500 1\n", 1, 0},
                    LeftOutCase{"Prose", Head + Runway + "some words\n12three\n", 1, 2}),
    [](const auto& row) { return std::string(row.param.Name); });

struct RunwayCase {
    const char* Name;
    std::string Row;
    bool Kept;
};
class RunwayRows : public testing::TestWithParam<RunwayCase> {};

TEST_P(RunwayRows, AreKeptWhereTheyMakeSense)
{
    const ReadAirports read(Head + GetParam().Row + "\n14 10 20\n");
    ASSERT_TRUE(read.Status);
    ASSERT_EQ(read.Airports.size(), 1U);
    EXPECT_EQ(read.Airports[0].Runways.size(), GetParam().Kept ? 1U : 0U);
    EXPECT_EQ(read.File.Passed.size(), GetParam().Kept ? 0U : 1U);
}

INSTANTIATE_TEST_SUITE_P(
    World, RunwayRows,
    testing::Values(RunwayCase{"Land", "100 30 1 0 0 0 0 0 09 10 20 0 0 1 0 0 0 27 10 20.03", true},
                    RunwayCase{"TooWide", "100 10000 1 0 0 0 0 0 09 10 20 0 0 1 0 0 0 27 10 20.03", false},
                    RunwayCase{"AlmostTooWide", "100 9999.9 1 0 0 0 0 0 09 10 20 0 0 1 0 0 0 27 10 20.03", true},
                    RunwayCase{"NoLength", "101 30 0 09 10 20 27 10 20", false},
                    RunwayCase{"Short", "101 30 0 09 10 20 27 10 20.00001", true}, // 4 ft
                    RunwayCase{"TooLong", "101 30 0 09 10 20 27 11 20", false},
                    RunwayCase{"NotOnEarth", "101 30 0 09 10 180.5 27 10 181", false},
                    RunwayCase{"Cut", "100 30 1 0 0 0 0 0 09 10 20 0 0 1 0 0 0 27 10", false},
                    RunwayCase{"Old", "10 10 20 07x 70 1500 0.0 0.0 60", true},
                    RunwayCase{"OldWithoutNumber", "10 10 20 Hxx 70 1500 0.0 0.0 60", false}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(OldRunway, HasAReciprocal)
{
    const ReadAirports read(Head + "10 10 20 19L 190 6000.0 0.0 0.0 150 1\n10 10 20 36x 0 1500 0 0 60 1\n");
    ASSERT_EQ(read.Airports.size(), 1U);
    const std::vector<RunwayRecord>& runways = read.Airports[0].Runways;
    ASSERT_EQ(runways.size(), 2U);
    EXPECT_EQ(runways[0].Designation + "/" + runways[0].ReciprocalDesignation, "19L/1R");
    EXPECT_EQ(runways[0].LengthFt, 6000);
    EXPECT_EQ(runways[0].CenterLat, 10);
    EXPECT_EQ(runways[1].Designation + "/" + runways[1].ReciprocalDesignation, "36/18");
}

struct FrequencyCase {
    const char* Name;
    std::string Rows;
    const char* Tower; ///< frequency, a comma, name
};
class TowerFrequencies : public testing::TestWithParam<FrequencyCase> {};

TEST_P(TowerFrequencies, AreShortestDecimals)
{
    const ReadAirports read(Head + Runway + GetParam().Rows);
    ASSERT_EQ(read.Airports.size(), 1U);
    EXPECT_EQ(read.Airports[0].TowerFreq + "," + read.Airports[0].TowerName, GetParam().Tower);
}

INSTANTIATE_TEST_SUITE_P(
    World, TowerFrequencies,
    testing::Values(FrequencyCase{"CutOff2", "54 11902 A\n", "119.025,A"},
                    FrequencyCase{"CutOff7", "54 11827 A\n", "118.275,A"},
                    FrequencyCase{"Plain", "54 12190 A  B\n", "121.9,A B"},
                    FrequencyCase{"Whole", "54 11800\n", "118,"},
                    FrequencyCase{"Kilohertz", "1054 118405 A\n", "118.405,A"},
                    FrequencyCase{"FirstOfBothEditions", "1054 118405 A\n54 12190 B\n", "118.405,A"},
                    FrequencyCase{"NoneDoesNotCount", "54 0 A\n54 12190 B\n", "121.9,B"},
                    FrequencyCase{"Highest", "1054 999999 A\n", "999.999,A"},
                    FrequencyCase{"TooHigh", "1054 1000000 A\n54 99999 B\n", "999.99,B"},
                    FrequencyCase{"Overflow", "54 9223372036854775807 A\n54 99999999999999999999 A\n", ","}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(TaxiNetwork, JoinsNumbersThatNeedNotBeDenseOrInOrder)
{
    const ReadAirports read(Head + Runway +
                            "1200\n1202 900 5 twoway taxiway A\n1201 10 20 both 5 x\n1201 11 20 both 900\n"
                            "1202 900 6 twoway taxiway B\n1202 5 900 oneway runway 09/27\n"
                            "1200\n1201 12 20 both 5\n1202 5 5\n1202 five 5 twoway taxiway\n");
    ASSERT_EQ(read.Airports.size(), 1U);
    const AirportRecord& airport = read.Airports[0];
    EXPECT_EQ(airport.TaxiPoints.size(), 3U);
    EXPECT_EQ(airport.TaxiPaths, (std::vector<TaxiPath>{{0, 1, 0, "A"}, {1, 0, 1, "Runway 09/27"}, {0, 2, 2, ""}}));
    ASSERT_EQ(read.File.Passed.size(), 2U); // the edge to node 6 is told when the airport ends
    EXPECT_EQ(read.File.Passed[1].Line, 9);
}

const std::string Pavement =
    "110 1 0 0 Apron\n111 10 20\n111 10 20.001\n112 10.001 20.001 10.001 20.002\n113 10.001 20\n"
    "111 10.1 20\n111 10.2 20\n115 10.1 20.1\n111 1 2\n120 Line\n111 10 20\n113 11 20\n";

TEST(Pavements, AreLinesWhereThereIsNoNetwork)
{
    const ReadAirports with(Head + Runway + Pavement);
    ASSERT_EQ(with.Airports.size(), 1U);
    const AirportRecord& airport = with.Airports[0];
    EXPECT_EQ(airport.TaxiPoints.size(), airport.TaxiPaths.size() + 1); // the ring has as many, the open line one more
    EXPECT_EQ(airport.TaxiPaths.back(), (TaxiPath{0, static_cast<std::int32_t>(airport.TaxiPoints.size()) - 2,
                                                  static_cast<std::int32_t>(airport.TaxiPoints.size()) - 1, ""}));
    EXPECT_GT(airport.TaxiPoints.size(), 8U); // the curve is more than a line
    EXPECT_TRUE(ReadAirports(Head + Runway + Pavement, {.Pavements = false}).Airports[0].TaxiPoints.empty());
    const std::string network = "1200\n1201 10 20 both 0\n1201 11 20 both 1\n1202 0 1 twoway taxiway A\n";
    EXPECT_EQ(ReadAirports(Head + Runway + Pavement + network).Airports[0].TaxiPaths.size(), 1U);
}

TEST(Pavements, EndAndAreCountedWhereAnAirportHasTooMany)
{
    const auto most = static_cast<std::int64_t>(PavementEdges::MostPoints);
    std::string rows = Head + Runway + "110 1 0 0 Apron\n";
    for (std::int64_t i = 0; i < most + 10; ++i)
        rows += i % 2 == 0 ? "111 10 20\n" : "111 11 20\n";
    const ReadAirports read(rows + "113 12 20\n110 1 0 0 Next\n111 1 2\n113 3 4\n");
    ASSERT_EQ(read.Airports.size(), 1U);
    EXPECT_EQ(read.Airports[0].TaxiPoints.size(), PavementEdges::MostPoints);
    EXPECT_EQ(read.Airports[0].TaxiPaths.size(), PavementEdges::MostPoints - 1); // not closed: its end is missing
    EXPECT_EQ(read.LeftOut.PavementPoints, 11 + 2); // of either ring, the way back not counted
    ASSERT_EQ(read.File.Passed.size(), 1U);
    EXPECT_EQ(read.File.Passed[0].Line, 5); // of the row 110
}

/// The largest distance in metres of points of a quadratic curve from the line through its pieces, on the equator.
TEST(PavementEdges, StayWithinHalfAMetreOfTheirCurve)
{
    constexpr double MetresPerDegree = 111120;
    const LatLon control{0.003, 0.001};
    PavementEdges edges;
    edges.Add({{0, 0}, control});
    edges.Add({{0, 0.004}, std::nullopt});
    edges.End(false);
    const std::vector<LatLon>& points = edges.Points();
    ASSERT_GT(points.size(), 5U);
    EXPECT_LT(points.size(), 40U);
    double farthest = 0;
    for (double t = 0; t <= 1; t += 0.001) {
        const double lat = 2 * t * (1 - t) * control.Lat;
        const double lon = 2 * t * (1 - t) * control.Lon + t * t * 0.004;
        double nearest = 1e9;
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            const double dx = points[i + 1].Lon - points[i].Lon;
            const double dy = points[i + 1].Lat - points[i].Lat;
            const double along = ((lon - points[i].Lon) * dx + (lat - points[i].Lat) * dy) / (dx * dx + dy * dy);
            const double u = std::min(1.0, std::max(0.0, along));
            nearest = std::min(nearest, std::hypot(points[i].Lon + u * dx - lon, points[i].Lat + u * dy - lat));
        }
        farthest = std::max(farthest, nearest * MetresPerDegree);
    }
    EXPECT_LE(farthest, 0.5);
    EXPECT_GT(farthest, 0.02); // not finer than it need be
}

TEST(AptFile, CutAnywhereIsOneErrorOrAnAirport)
{
    const std::string whole = "I\r\n1000 Version\r\n" + Head + Runway + Pavement + "1302 datum_lat 10\n99";
    for (std::size_t n = 0; n <= whole.size(); ++n) {
        WorldText file(std::string_view(whole).substr(0, n));
        LocalizerTable localizers;
        AirportsLeftOut leftOut;
        const auto grid = std::make_unique<MagVarGrid>();
        const Result<void> read = ReadAptFile(file.Rows, {}, *grid, localizers, file.Log, leftOut,
                                              [](const AirportRecord&) { return Result<void>(); });
        EXPECT_EQ(read.has_value(), n == whole.size()) << n;
    }
}
} // namespace
} // namespace corvane
