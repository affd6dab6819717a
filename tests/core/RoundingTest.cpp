#include "core/Rounding.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace corvane {
namespace {
struct RoundCase {
    double Value;
    std::int32_t Rounded;
};
TEST(Rounding, TakesHalvesToTheEvenNumber)
{
    for (const RoundCase& c : {RoundCase{0.5, 0},
                               {1.5, 2},
                               {2.5, 2},
                               {3.5, 4},
                               {-0.5, 0},
                               {-1.5, -2},
                               {-2.5, -2},
                               {2.4999999999, 2},
                               {2.5000000001, 3},
                               {2147483646.5, 2147483646}}) {
        EXPECT_EQ(RoundTo<std::int32_t>(c.Value), c.Rounded) << c.Value;
        EXPECT_EQ(RoundChecked<std::int32_t>(c.Value), c.Rounded) << c.Value;
        EXPECT_EQ(RoundHalfEven(c.Value), c.Rounded) << c.Value;
    }
}

TEST(Rounding, HoldsOrRefusesWhatDoesNotFit)
{
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(RoundTo<std::int16_t>(32767.4), 32767);
    EXPECT_EQ(RoundTo<std::int16_t>(32767.5), 32767);
    EXPECT_EQ(RoundTo<std::int16_t>(-40000), -32768);
    EXPECT_EQ(RoundTo<std::int32_t>(Infinity), 2147483647);
    EXPECT_EQ(RoundTo<std::int32_t>(-1e300), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(RoundTo<std::int32_t>(std::nan("")), 0);
    EXPECT_EQ(RoundChecked<std::int16_t>(32767.4), 32767);
    EXPECT_EQ(RoundChecked<std::int16_t>(32767.5), std::nullopt); // rounds to 32768
    EXPECT_EQ(RoundChecked<std::int32_t>(std::nan("")), std::nullopt);
    EXPECT_EQ(RoundChecked<std::int32_t>(-Infinity), std::nullopt);
}

TEST(Rounding, ToPlacesScalesRoundsAndDivides)
{
    EXPECT_EQ(RoundToFivePlaces(12.345675), 12.34568); // 1234567.5 exactly, to the even neighbour
    EXPECT_EQ(RoundToFivePlaces(0.000005), 0.0);       // a tie, to 0
    EXPECT_EQ(RoundToFivePlaces(-122.3094049), -122.3094);
    EXPECT_EQ(RoundToFourPlaces(47.44995), 47.45);
    EXPECT_EQ(RoundToFourPlaces(0.00025), 0.0002);
}
} // namespace
} // namespace corvane
