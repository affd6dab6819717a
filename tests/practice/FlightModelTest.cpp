#include "practice/FlightModel.h"

#include <gtest/gtest.h>

#include <cmath>

namespace corvane {
namespace {
TEST(GreatCircle, AgreesWithKnownDistancesAndCourses)
{
    EXPECT_NEAR(RangeNm({0, 0}, {0, 1}), 60, 1e-9);
    EXPECT_NEAR(RangeNm({0, 179.5}, {0, -179.5}), 60, 1e-9);
    EXPECT_NEAR(RangeNm({0, 0}, {0, 180}), 10800, 1e-6);
    EXPECT_NEAR(CourseTo({10, 10}, {11, 10}), 0, 1e-9);
    EXPECT_NEAR(CourseTo({0, 0}, {0, -1}), 270, 1e-9);
    EXPECT_NEAR(CourseTo({0, 179}, {0, -179}), 90, 1e-9);
    EXPECT_NEAR(WrapCourse(-1e-20), 0, 0); // not 360
    EXPECT_EQ(TurnTo(350, 10), 20);
    EXPECT_EQ(TurnTo(10, 350), -20);
    const LatLon acrossTheDateLine = Along({0, 179.9}, 90, 12);
    EXPECT_NEAR(acrossTheDateLine.Lon, -179.9, 1e-9);
    const LatLon farAway = Along({47, -122}, 33, 4000);
    EXPECT_NEAR(RangeNm({47, -122}, farAway), 4000, 1e-6);
    EXPECT_NEAR(CourseTo({47, -122}, farAway), 33, 1e-9);
}

TEST(LineOffset, CountsBackFromThePointAndToTheLeft)
{
    const LatLon threshold{47, -122};
    const LineOffset southWest = OffsetFromLine(threshold, 0, Along(Along(threshold, 180, 5), 270, 1));
    EXPECT_NEAR(southWest.OutNm, 5, 0.01); // flown northward, the west is on the left
    EXPECT_NEAR(southWest.LeftNm, 1, 0.01);
    EXPECT_NEAR(OffsetFromLine(threshold, 0, Along(threshold, 0, 2)).OutNm, -2, 1e-6);
}

TEST(Turns, AreStandardRateUnlessTheBankLimitIsReached)
{
    EXPECT_EQ(TurnRate(90), 3);
    // 9.80665 tan 25 deg / (250 kt = 128.611 m/s) = 0.035556 rad/s
    EXPECT_NEAR(TurnRate(250), 2.0372, 1e-3);
    EXPECT_NEAR(TurnRate(450), 1.1318, 1e-3);
}

struct TurnCase {
    const char* Name;
    double From, To;
    TurnWay Way;
    int AfterTenSeconds; // at 3 degrees a second
};
class OrderedTurns : public testing::TestWithParam<TurnCase> {};
TEST_P(OrderedTurns, GoTheWayThatWasSaid)
{
    FlightState state{.AltitudeFt = 3000, .HeadingDeg = GetParam().From, .SpeedKt = 90, .OnGround = false};
    const FlightTarget target{.HeadingDeg = GetParam().To, .Turn = GetParam().Way, .AltitudeFt = 3000, .SpeedKt = 90};
    for (int i = 0; i < 10; ++i)
        FlyStep(state, target, ClassOf(AircraftKind::PistonSingle));
    EXPECT_NEAR(state.HeadingDeg, GetParam().AfterTenSeconds, 1e-9);
    for (int i = 0; i < 110; ++i)
        FlyStep(state, target, ClassOf(AircraftKind::PistonSingle));
    EXPECT_NEAR(state.HeadingDeg, GetParam().To, 1e-9);
    EXPECT_NEAR(state.BankDeg, 0, 1e-9);
}
INSTANTIATE_TEST_SUITE_P(Flight, OrderedTurns,
                         testing::Values(TurnCase{"ShorterRight", 350, 100, TurnWay::Shorter, 20},
                                         TurnCase{"ShorterLeft", 100, 350, TurnWay::Shorter, 70},
                                         TurnCase{"LeftTheLongWay", 350, 100, TurnWay::Left, 320},
                                         TurnCase{"RightTheLongWay", 100, 350, TurnWay::Right, 130},
                                         TurnCase{"LeftWhereItIsShorter", 100, 350, TurnWay::Left, 70}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(Climbs, ReachTheAltitudeWithoutOvershooting)
{
    for (const double to : {9000.0, 1000.0}) {
        const AircraftClass& aircraft = ClassOf(AircraftKind::Airliner);
        FlightState state{.AltitudeFt = 5000, .HeadingDeg = 0, .SpeedKt = 250, .OnGround = false};
        const FlightTarget target{.HeadingDeg = 0, .AltitudeFt = to, .SpeedKt = 250};
        for (int i = 0; i < 300; ++i) {
            FlyStep(state, target, aircraft);
            EXPECT_LE(std::abs(state.VerticalFpm), 2200.001);
            EXPECT_LE((state.AltitudeFt - to) * (to > 5000 ? 1 : -1), 5) << i;
        }
        EXPECT_NEAR(state.AltitudeFt, to, 1);
    }
}

TEST(Taxiing, EndsOnThePointFromAnyHeading)
{
    const LatLon start{47, -122};
    const LatLon point = Along(start, 10, 0.03);
    for (const double heading : {10.0, 100.0, 190.0, 280.0}) {
        FlightState state{.Position = start, .HeadingDeg = heading};
        int seconds = 0;
        while (!TaxiStep(state, point, 18))
            ASSERT_LT(++seconds, 60) << heading;
        EXPECT_EQ(state.Position, point);
    }
}
} // namespace
} // namespace corvane
