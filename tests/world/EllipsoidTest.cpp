#include "world/Ellipsoid.h"

#include <gtest/gtest.h>

#include <array>

namespace corvane {
namespace {
/// Expected: Vincenty's inverse formula on WGS 84, computed apart.
struct LineCase {
    const char* Name;
    LatLon Start;
    LatLon End;
    double LengthM;
    double Bearing;
    double Reciprocal;
};
class EllipsoidLines : public testing::TestWithParam<LineCase> {};

TEST_P(EllipsoidLines, AreMeasuredAndFollowedBack)
{
    const LineCase& row = GetParam();
    const EllipsoidLine line = LineBetween(row.Start, row.End);
    EXPECT_NEAR(line.LengthM, row.LengthM, 0.01);
    EXPECT_NEAR(line.Bearing, row.Bearing, 0.005);
    EXPECT_NEAR(line.ReciprocalBearing, row.Reciprocal, 0.005);
    const LatLon end = PlaceAlong(row.Start, line.Bearing, line.LengthM);
    EXPECT_NEAR(LineBetween(end, row.End).LengthM, 0, 0.05);
}

INSTANTIATE_TEST_SUITE_P(
    World, EllipsoidLines,
    testing::Values(LineCase{"East", {10, 20}, {10, 20.03}, 3289.1809, 89.9974, 270.0026},
                    LineCase{"Equator", {0, 0}, {0, 0.01}, 1113.1949, 90, 270},
                    LineCase{"Slanting", {50.0333, 8.5}, {50.05, 8.6}, 7400.3005, 75.4245, 255.5011},
                    LineCase{"Across180", {-80, 179.99}, {-80.02, -179.98}, 2307.5982, 165.4262, 345.3967},
                    LineCase{"AroundThePole", {89.99, 0}, {89.99, 90}, 1579.5914, 45, 315},
                    LineCase{"Long", {47, 8}, {47.6, 8.9}, 95302.0043, 45.2483, 225.9097}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(EllipsoidLine, OfOnePlaceIsNothing)
{
    EXPECT_EQ(LineBetween({1, 2}, {1, 2}).LengthM, 0);
}

TEST(MeanPlace, HoldsAcross180AndAtThePoles)
{
    const LatLon across = MeanPlace(std::array{LatLon{-15, 179.99}, LatLon{-14.998, -179.996}});
    EXPECT_DOUBLE_EQ(across.Lat, -14.999);
    EXPECT_NEAR(across.Lon, 179.997, 1e-12);
    const LatLon polar = MeanPlace(std::array{LatLon{89.99, 0}, LatLon{89.99, 90}, LatLon{89.99, 180}});
    EXPECT_NEAR(polar.Lon, 90, 1e-6); // towards the middle one: the outer two cancel
    EXPECT_NEAR(polar.Lat, 90 - 0.01 / 3, 1e-6);
}
} // namespace
} // namespace corvane
