#include "demo/SceneryUnits.h"

#include <gtest/gtest.h>

namespace corvane {
TEST(SceneryUnits, LatitudesAndLongitudesFillTheirWords)
{
    EXPECT_EQ(LatitudeWord(90), 10001750);
    EXPECT_EQ(LatitudeWord(-45), -5000875);
    EXPECT_EQ(LongitudeWord(90), 1073741824); // a quarter of 2^32
    EXPECT_EQ(LongitudeWord(-90), -1073741824);
    EXPECT_EQ(LongitudeWord(180), -2147483648LL); // 180 east does not fit, 180 west is the same meridian
    EXPECT_EQ(LongitudeWord(-180), -2147483648LL);
}

TEST(SceneryUnits, HeadingsFromSouthOnAreNegative)
{
    EXPECT_EQ(HeadingWord(0), 0);
    EXPECT_EQ(HeadingWord(90), 1073741824);
    EXPECT_EQ(HeadingWord(180), -2147483648LL);
    EXPECT_EQ(HeadingWord(270), -1073741824);
    EXPECT_EQ(HeadingWord(360), 0);
    EXPECT_EQ(OppositeHeadingWord(HeadingWord(90)), HeadingWord(270));
    EXPECT_EQ(OppositeHeadingWord(HeadingWord(180)), 0);
}

TEST(SceneryUnits, FrequenciesAreDecimalDigits)
{
    EXPECT_EQ(FrequencyWord(118100), 0x01181000);
    EXPECT_EQ(FrequencyWord(121125), 0x01211250);
    EXPECT_EQ(FrequencyWord(0), 0);
}

TEST(SceneryUnits, NavaidFieldsAreCoarser)
{
    EXPECT_EQ(NavaidLatitude(90), 5000875);
    EXPECT_EQ(NavaidLatitude(45), 2500438); // 2500437.5 goes to the even one
    EXPECT_EQ(NavaidLongitude(-90), -4194304);
    EXPECT_EQ(NavaidLongitude(180), -8388608);
    EXPECT_EQ(NavaidRange(130), 118); // 117.56
    EXPECT_EQ(NavaidRange(400), 255);
    EXPECT_EQ(MetresFromFeet(433), 132); // 131.98
}
} // namespace corvane
