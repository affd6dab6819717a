#include "area/AreaCircle.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace corvane {
static constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
static constexpr double Infinity = std::numeric_limits<double>::infinity();

TEST(AreaCircle, ReachesNinetyWholeMiles)
{
    const AreaCircle circle(47, -122);
    EXPECT_TRUE(circle.Contains(47, -122));
    EXPECT_TRUE(circle.Contains(47 + 90.4 / 60, -122)); // rounds to 90
    EXPECT_FALSE(circle.Contains(47 + 90.6 / 60, -122));
    EXPECT_TRUE(circle.Contains(47 - 90.4 / 60, -122));
    EXPECT_FALSE(circle.Contains(47 - 90.6 / 60, -122));
}

TEST(AreaCircle, HoldsNothingThatIsNoPosition)
{
    const AreaCircle circle(0, 0);
    for (const double bad : {Nan, Infinity, -Infinity}) {
        EXPECT_FALSE(circle.Contains(bad, 0));
        EXPECT_FALSE(circle.Contains(0, bad));
    }
}

namespace {
struct CircleCase {
    const char* Name;
    double Lat, Lon;
};
class QuickTest : public testing::TestWithParam<CircleCase> {};
} // namespace

/// Counts what the quick test lets through, and expects it never to refuse a position that the distance accepts.
static int ExpectSound(double centerLat, double centerLon, double lat, double lon)
{
    const bool outside = AreaCircle(centerLat, centerLon).PlainlyOutside(lat, lon);
    EXPECT_FALSE(outside && DistanceNm(centerLat, centerLon, lat, lon) <= AreaRadiusNm)
        << centerLat << ' ' << centerLon << " to " << lat << ' ' << lon;
    return outside ? 0 : 1;
}

TEST_P(QuickTest, NeverRefusesWhatTheDistanceAccepts)
{
    constexpr int Points = 100000;
    const double centerLat = GetParam().Lat;
    const double centerLon = GetParam().Lon;
    std::mt19937 random(7);
    std::uniform_real_distribution<double> anyLat(-90, 90);
    std::uniform_real_distribution<double> anyLon(-180, 180);
    std::uniform_real_distribution<double> anyTurn(-1000, 1000); // damaged files hold such degrees too
    std::uniform_int_distribution<int> course(0, 359);
    std::uniform_int_distribution<int> edge(88, 93);
    int passed = 0;
    for (int i = 0; i < Points; ++i) {
        passed += ExpectSound(centerLat, centerLon, anyLat(random), anyLon(random));
        ExpectSound(centerLat, centerLon, anyTurn(random), anyTurn(random));
        const LatLon near = DestinationNm(centerLat, centerLon, course(random), edge(random));
        ExpectSound(centerLat, centerLon, near.Lat, near.Lon);
        ExpectSound(centerLat, centerLon, -near.Lat, near.Lon > 0 ? near.Lon - 180 : near.Lon + 180);
    }
    if (std::abs(centerLat) < 80) {
        EXPECT_LT(passed, Points / 100); // the circle covers less than a thousandth of the earth
    }
}

TEST_P(QuickTest, LeavesTheAntipodeToTheDistance)
{
    const double centerLat = GetParam().Lat;
    const double centerLon = GetParam().Lon;
    const double antipodalLon = centerLon > 0 ? centerLon - 180 : centerLon + 180;
    for (double offset = 1e-16; offset < 0.02; offset *= 1.7) {
        for (const double sign : {-1.0, 0.0, 1.0}) {
            ExpectSound(centerLat, centerLon, -centerLat + sign * offset, antipodalLon);
            ExpectSound(centerLat, centerLon, -centerLat, antipodalLon + sign * offset);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AreaCircle, QuickTest,
                         testing::Values(CircleCase{"Seattle", 47.45, -122.31}, CircleCase{"Equator", 0, 0},
                                         CircleCase{"NearEquator", 0.3, 100.1}, CircleCase{"Fiji", -17.755, 177.443},
                                         CircleCase{"DateLine", 52, 180}, CircleCase{"North88", 88.2, 15},
                                         CircleCase{"North89", 89.5, -179.5}, CircleCase{"NorthPole", 90, 0},
                                         CircleCase{"SouthPole", -90, 45}, CircleCase{"South80", -80, 179.99},
                                         CircleCase{"OffTheEarth", 407.45, -122.31}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(AreaCircle, KeepsAnAntipodeWhoseCosineRoundsPastMinusOne)
{
    // Whole degrees at which the two products add up to less than -1, so that the distance reads 0.
    int found = 0;
    for (int lat = -80; lat <= 80; ++lat) {
        if (DistanceNm(lat, 0, -lat, 180) == 0) {
            ++found;
            EXPECT_TRUE(AreaCircle(lat, 0).Contains(-lat, 180)) << lat;
        }
    }
    EXPECT_GT(found, 0);
}
} // namespace corvane
