#include "session/WireUnits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace corvane {
namespace {
struct HeadingCase {
    const char* Name;
    std::int32_t Attitude;
    int Heading;
};
class HeadingsFromAttitude : public testing::TestWithParam<HeadingCase> {};
TEST_P(HeadingsFromAttitude, AreWholeDegrees)
{
    EXPECT_EQ(HeadingFromPbh(GetParam().Attitude), GetParam().Heading);
}
INSTANTIATE_TEST_SUITE_P(WireUnits, HeadingsFromAttitude,
                         testing::Values(HeadingCase{"North", 0, 0}, HeadingCase{"South", 2048, 180},
                                         HeadingCase{"LastStepReads360", 4092, 360}, // 1023 / 1024 * 360 = 359.65
                                         HeadingCase{"LastButOne", 4088, 359},       // 1022 -> 359.30
                                         HeadingCase{"LowBitsAreNotHeading", 2048 + 3, 180}, //
                                         HeadingCase{"HighBitsAreNotHeading", 4096 + 1024, 90},
                                         HeadingCase{"NegativeIsDividedTowardZero", -1, 0}, // a shift would give 1023
                                         HeadingCase{"NegativeFour", -4, 360},              // -1 AND 1023
                                         HeadingCase{"NegativeFive", -5, 360},              // -5 / 4 = -1
                                         HeadingCase{"Lowest", std::numeric_limits<std::int32_t>::min(), 0}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(WireUnits, EveryHeadingComesBack)
{
    for (std::int32_t heading = 0; heading <= 360; ++heading)
        EXPECT_EQ(HeadingFromPbh(PbhFromHeading(heading)), heading);
    EXPECT_EQ(HeadingFromPbh(PbhFromHeading(-90)), 270);
    EXPECT_EQ(HeadingFromPbh(PbhFromHeading(450)), 90);
    EXPECT_EQ(HeadingFromPbh(PbhFromHeading(720)), 360);
}

TEST(WireUnits, PositionsAreTheExactFractions)
{
    EXPECT_EQ(LatitudeFromWire(10001750), 90.0);
    EXPECT_EQ(LatitudeFromWire(-10001750), -90.0);
    EXPECT_EQ(LatitudeFromWire(0), 0.0);
    EXPECT_EQ(LongitudeFromWire(std::numeric_limits<std::int32_t>::min()), -180.0);
    EXPECT_EQ(LongitudeFromWire(1 << 30), 90.0);
}

TEST(WireUnits, PositionsGoBackToTheNearestUnit)
{
    for (const std::int32_t metres : {0, 1, -1, 5278123, -10001750, 10001750, 7, 2147483647})
        EXPECT_EQ(LatitudeToWire(LatitudeFromWire(metres)), metres);
    for (const std::int32_t units : {0, 1, -1, 1 << 30, -1459617877, 2147483647, -2147483647 - 1})
        EXPECT_EQ(LongitudeToWire(LongitudeFromWire(units)), units);
    EXPECT_EQ(LongitudeToWire(180.0), -2147483647 - 1); // the same meridian
    EXPECT_EQ(LongitudeToWire(270.0), -(1 << 30));
    EXPECT_EQ(LongitudeToWire(std::nan("")), 0);
    EXPECT_EQ(LatitudeToWire(1e300), 2147483647);
}

TEST(WireUnits, AltitudesRoundToWholeFeetAndComeBack)
{
    EXPECT_EQ(AltitudeFromWire(1000), 3281); // 3280.84
    EXPECT_EQ(AltitudeFromWire(1), 3);
    EXPECT_EQ(AltitudeFromWire(-1), -3);
    EXPECT_EQ(AltitudeFromWire(381), 1250); // exactly
    EXPECT_EQ(AltitudeFromWire(2147483647), 2147483647) << "held, not wrapped";
    for (std::int32_t metres = -500; metres < 20000; metres += 7)
        EXPECT_EQ(AltitudeToWire(AltitudeFromWire(metres)), metres);
}

TEST(WireUnits, SpeedsCountWholeMetresPerSecond)
{
    EXPECT_EQ(SpeedFromWire(100 * 65536), 194); // 194.385
    EXPECT_EQ(SpeedFromWire(65535), 0);
    EXPECT_EQ(SpeedFromWire(-65535), 0) << "truncated toward zero";
    EXPECT_EQ(SpeedFromWire(-65536), -2);
    EXPECT_EQ(SpeedFromWire(2147483647), 32767) << "held, not wrapped";
    for (std::int32_t metresPerSecond = 0; metresPerSecond < 1000; ++metresPerSecond) {
        const std::int32_t wire = metresPerSecond * 65536;
        EXPECT_EQ(SpeedToWire(SpeedFromWire(wire)), wire);
    }
    EXPECT_EQ(SpeedFromWire(SpeedToWire(210)), 210); // 108 m/s: 209.94
}

TEST(WireUnits, EngineTypes)
{
    EXPECT_EQ(EngineTypeText(0), "Piston Plane");
    EXPECT_EQ(EngineTypeText(1), "Jet Plane");
    EXPECT_EQ(EngineTypeText(2), "-None-");
    EXPECT_EQ(EngineTypeText(3), "Helicopter");
    EXPECT_EQ(EngineTypeText(4), "");
    EXPECT_EQ(EngineTypeText(-1), "");
    EXPECT_EQ(EngineTypeCode("Helicopter"), 3);
    EXPECT_EQ(EngineTypeText(EngineTypeCode("Balloon")), "");
}
} // namespace
} // namespace corvane
