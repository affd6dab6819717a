#include "area/AreaCircle.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace corvane {
static constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
static constexpr double Infinity = std::numeric_limits<double>::infinity();

TEST(AreaCircle, ReachesNinetyWholeMiles)
{
    const AreaCircle circle({47, -122});
    EXPECT_TRUE(circle.Contains({47, -122}));
    EXPECT_TRUE(circle.Contains({47 + 90.4 / 60, -122})); // rounds to 90
    EXPECT_FALSE(circle.Contains({47 + 90.6 / 60, -122}));
    EXPECT_TRUE(circle.Contains({47 - 90.4 / 60, -122}));
    EXPECT_FALSE(circle.Contains({47 - 90.6 / 60, -122}));
}

TEST(AreaCircle, HoldsNothingThatIsNoPosition)
{
    const AreaCircle circle({0, 0});
    for (const double bad : {Nan, Infinity, -Infinity}) {
        EXPECT_FALSE(circle.Contains({bad, 0}));
        EXPECT_FALSE(circle.Contains({0, bad}));
    }
}

namespace {
struct CircleCase {
    const char* Name;
    LatLon Center;
};
class QuickTest : public testing::TestWithParam<CircleCase> {};
} // namespace

/// Counts what the quick test lets through, and expects it never to refuse a position that the distance accepts.
static int ExpectSound(LatLon center, LatLon at)
{
    const DistanceBound bound(center, AreaRadiusNm);
    const bool beyond = bound.PlainlyBeyond(at);
    const std::int16_t distance = DistanceNm(center, at);
    EXPECT_FALSE(beyond && distance <= AreaRadiusNm)
        << center.Lat << ' ' << center.Lon << " to " << at.Lat << ' ' << at.Lon;
    const auto least = bound.LeastNm(at);
    EXPECT_TRUE(distance > AreaRadiusNm || (least && *least <= static_cast<std::size_t>(distance)))
        << center.Lat << ' ' << center.Lon << " to " << at.Lat << ' ' << at.Lon;
    return beyond ? 0 : 1;
}

TEST_P(QuickTest, NeverRefusesWhatTheDistanceAccepts)
{
    constexpr int Points = 100000;
    const LatLon center = GetParam().Center;
    std::mt19937 random(7);
    std::uniform_real_distribution<double> anyLat(-90, 90);
    std::uniform_real_distribution<double> anyLon(-180, 180);
    std::uniform_real_distribution<double> anyTurn(-1000, 1000); // damaged files hold such degrees too
    std::uniform_int_distribution<int> course(0, 359);
    std::uniform_int_distribution<int> edge(88, 93);
    int passed = 0;
    for (int i = 0; i < Points; ++i) {
        passed += ExpectSound(center, {anyLat(random), anyLon(random)});
        ExpectSound(center, {anyTurn(random), anyTurn(random)});
        const LatLon near = DestinationNm(center, course(random), edge(random));
        ExpectSound(center, near);
        ExpectSound(center, {-near.Lat, near.Lon > 0 ? near.Lon - 180 : near.Lon + 180});
    }
    if (std::abs(center.Lat) < 80) {
        EXPECT_LT(passed, Points / 100); // the circle covers less than a thousandth of the earth
    }
}

TEST_P(QuickTest, LeavesTheAntipodeToTheDistance)
{
    const LatLon center = GetParam().Center;
    const LatLon antipode{-center.Lat, center.Lon > 0 ? center.Lon - 180 : center.Lon + 180};
    for (double offset = 1e-16; offset < 0.02; offset *= 1.7) {
        for (const double sign : {-1.0, 0.0, 1.0}) {
            ExpectSound(center, {antipode.Lat + sign * offset, antipode.Lon});
            ExpectSound(center, {antipode.Lat, antipode.Lon + sign * offset});
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AreaCircle, QuickTest,
                         testing::Values(CircleCase{"Seattle", {47.45, -122.31}}, CircleCase{"Equator", {0, 0}},
                                         CircleCase{"NearEquator", {0.3, 100.1}},
                                         CircleCase{"Fiji", {-17.755, 177.443}}, CircleCase{"DateLine", {52, 180}},
                                         CircleCase{"North88", {88.2, 15}}, CircleCase{"North89", {89.5, -179.5}},
                                         CircleCase{"NorthPole", {90, 0}}, CircleCase{"SouthPole", {-90, 45}},
                                         CircleCase{"South80", {-80, 179.99}},
                                         CircleCase{"OffTheEarth", {407.45, -122.31}}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(AreaCircle, KeepsAnAntipodeWhoseCosineRoundsPastMinusOne)
{
    // Whole degrees at which the two products add up to less than -1, so that the distance reads 0.
    int found = 0;
    for (double lat = -80; lat <= 80; ++lat) {
        if (DistanceNm({lat, 0}, {-lat, 180}) == 0) {
            ++found;
            EXPECT_TRUE(AreaCircle({lat, 0}).Contains({-lat, 180})) << lat;
        }
    }
    EXPECT_GT(found, 0);
}
} // namespace corvane
