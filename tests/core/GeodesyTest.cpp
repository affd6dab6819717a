#include "core/Geodesy.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>

namespace corvane {
namespace {
struct DistanceCase {
    const char* Name;
    double Lat1, Lon1, Lat2, Lon2;
    int Nm;
    int Ft;
};
class Distances : public testing::TestWithParam<DistanceCase> {};
TEST_P(Distances, AreWholeMilesAndFeet)
{
    const DistanceCase& c = GetParam();
    EXPECT_EQ(DistanceNm({c.Lat1, c.Lon1}, {c.Lat2, c.Lon2}), c.Nm);
    EXPECT_EQ(DistanceFt({c.Lat1, c.Lon1}, {c.Lat2, c.Lon2}), c.Ft);
    EXPECT_EQ(DistanceNm({c.Lat2, c.Lon2}, {c.Lat1, c.Lon1}), c.Nm);
}
INSTANTIATE_TEST_SUITE_P(Geodesy, Distances,
                         testing::Values(DistanceCase{"SamePoint", 47, -122, 47, -122, 0, 0},
                                         DistanceCase{"TwoMiles", 10, 20, 10 + 2.0 / 60, 20, 2, 12160},
                                         DistanceCase{"SixMilesExceedFeet", 10, 20, 10.1, 20, 6, 32767},
                                         DistanceCase{"OneDegreeOfMeridian", 0, 0, 1, 0, 60, 32767},
                                         DistanceCase{"AcrossTheDateLine", 0, 179.5, 0, -179.5, 60, 32767},
                                         DistanceCase{"BelowOneRadian", 0, 0, 57, 0, 3420, 32767},
                                         DistanceCase{"AboveOneRadian", 0, 0, 58, 0, 3480, 32767},
                                         DistanceCase{"Antipodes", 0, 0, 0, 180, 10800, 32767},
                                         DistanceCase{"PoleToPole", 90, 0, -90, 0, 10800, 32767}),
                         [](const auto& row) { return std::string(row.param.Name); });

struct CourseCase {
    const char* Name;
    double Lat1, Lon1, Lat2, Lon2;
    int Course;
};
class TrueCourses : public testing::TestWithParam<CourseCase> {};
TEST_P(TrueCourses, RoundUpToTheNextWholeDegree)
{
    const CourseCase& c = GetParam();
    EXPECT_EQ(TrueCourse({c.Lat1, c.Lon1}, {c.Lat2, c.Lon2}), c.Course);
}
INSTANTIATE_TEST_SUITE_P(Geodesy, TrueCourses,
                         testing::Values(CourseCase{"SamePoint", 47, -122, 47, -122, 360},
                                         CourseCase{"East", 47, -122, 47, -121, 90},   // initially 89.6
                                         CourseCase{"NorthEast", 10, 10, 11, 11, 45},  // initially 44.4
                                         CourseCase{"SouthWest", 11, 11, 10, 10, 225}, // initially 224.6
                                         CourseCase{"AcrossTheDateLine", 10, 179, 11, -179, 63},
                                         CourseCase{"JustEastOfNorth", 0, 0, 10, 0.01, 1}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(Normalization, TakesOneTurnOnly)
{
    EXPECT_EQ(NormalizeLongitude(181), -179);
    EXPECT_EQ(NormalizeLongitude(180), 180);
    EXPECT_EQ(NormalizeLongitude(-180), 180);
    EXPECT_EQ(NormalizeLongitude(540), 180);
    EXPECT_EQ(NormalizeLongitude(-540), -180); // one pass leaves it at the edge
    EXPECT_EQ(NormalizeCourse(-10), 350);
    EXPECT_EQ(NormalizeCourse(370), 10);
    EXPECT_EQ(NormalizeCourse(360), 360);
    EXPECT_EQ(NormalizeCourse(0), 0);
    EXPECT_EQ(NormalizeCourse(725), 365);
}

TEST(ArcFunctions, ReadZeroBeyondOne)
{
    EXPECT_EQ(ArcCos(1), 0);
    EXPECT_EQ(ArcCos(-1), GeoPi);
    EXPECT_DOUBLE_EQ(ArcSin(1), 1.5707963267948966);
    EXPECT_DOUBLE_EQ(ArcSin(-1), -1.5707963267948966);
    EXPECT_DOUBLE_EQ(ArcCos(0.5), 1.0471975511965979);
    EXPECT_EQ(ArcSin(1.0000000001), 0);
    EXPECT_EQ(ArcCos(-1.0000000001), 0);
    EXPECT_EQ(FloatMod(-1, 3), 2);
    EXPECT_EQ(FloatMod(7, 3), 1);
}

TEST(Destination, RoundsToFivePlacesAndCrossesTheDateLine)
{
    EXPECT_EQ(DestinationNm({47.123456, -122.654321}, 90, 0), (LatLon{47.12346, -122.65432}));
    EXPECT_EQ(DestinationNm({47.123456, -122.654321}, 90, -5), (LatLon{47.12346, -122.65432}));
    EXPECT_EQ(DestinationNm({10, 20}, 360, 60).Lat, 11);
    EXPECT_EQ(DestinationNm({0, 179.5}, 90, 60).Lon, -179.5);
    EXPECT_EQ(DestinationNm({0, -179.5}, 270, 60).Lon, 179.5);
    EXPECT_EQ(DestinationFt({10, 20}, 360, 6080).Lat, 10.01667); // one mile, a sixtieth of a degree
    EXPECT_NEAR(DestinationM({10, 20}, 180, -1852).Lat, 10 - 1.0 / 60, 1e-9);
}

TEST(Variation, TurnsTrueIntoMagneticAndBack)
{
    const auto grid = std::make_unique<MagVarGrid>();
    grid->Values.fill(1821); // 10.003 degrees east
    EXPECT_EQ(MagneticFromTrue(*grid, 5, {47, -122}), 355);
    EXPECT_EQ(TrueFromMagnetic(*grid, 355, {47, -122}), 5);
    EXPECT_EQ(MagneticFromTrue(*grid, 10, {47, -122}), 0);
    EXPECT_EQ(TrueFromMagnetic(*grid, 350, {47, -122}), 360);
    EXPECT_EQ(MagneticFromTrue(*grid, 5, {95, -400}), 5) << "no variation outside the grid";
    EXPECT_EQ(MagneticCourse(*grid, {47, -122}, {47, -121}), 80); // true 90
}

TEST(Geodesy, SurvivesHostilePositions)
{
    const double nan = std::nan("");
    for (const double bad : {nan, 1e308, -1e308, std::numeric_limits<double>::infinity()}) {
        EXPECT_GE(DistanceNm({bad, 1}, {2, bad}), 0);
        EXPECT_GE(DistanceFt({1, bad}, {2, 3}), 0);
        EXPECT_GE(TrueCourse({bad, bad}, {1, 1}), 0);
        DestinationNm({bad, bad}, 32767, 32767);
    }
}
} // namespace
} // namespace corvane
