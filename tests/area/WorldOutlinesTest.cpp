#include "area/WorldOutlines.h"

#include "tests/area/SmallWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
using testing::ElementsAre;

namespace {
constexpr std::int32_t Lat45 = 1 << 30; // 2^30 of 2^31 for 90 degrees
constexpr std::int32_t Lon90 = 1 << 30;
constexpr OutlinePoint PenUp{0, 0};
} // namespace

static std::vector<OutlinePoint> Cut(const SmallWorld& world, const OutlineWindow& window)
{
    std::vector<OutlinePoint> points;
    MemorySource source("map", world.WorldMap);
    EXPECT_TRUE(CutOutlines(source, window, points));
    return points;
}

TEST(WorldOutlines, ConvertsAndOpensEveryPieceWithASeparator)
{
    SmallWorld world;
    world.AddMapEntry(Lat45, -Lon90);
    world.AddMapEntry(Lat45 / 2, -Lon90);
    world.AddMapEntry(0, 0);
    world.AddMapEntry(Lat45, Lon90);
    EXPECT_THAT(Cut(world, {60, 20, -100, 100}),
                ElementsAre(PenUp, OutlinePoint{45, -90}, OutlinePoint{22.5, -90}, PenUp, OutlinePoint{45, 90}));
}

TEST(WorldOutlines, SplitsALineThatLeavesTheWindowAndComesBack)
{
    SmallWorld world;
    for (const std::int32_t eighths : {1, 2, 7, 1}) // of 180 degrees
        world.AddMapEntry(Lat45, eighths * (Lon90 / 4));
    EXPECT_THAT(Cut(world, {45, 45, 22.5, 45}), // every edge belongs to the window
                ElementsAre(PenUp, OutlinePoint{45, 22.5}, OutlinePoint{45, 45}, PenUp, OutlinePoint{45, 22.5}));
}

TEST(WorldOutlines, JoinsBothSidesOfTheDateLine)
{
    SmallWorld world;
    const std::int32_t lon177 = Lon90 / 64 * 126; // 177.1875
    world.AddMapEntry(Lat45, lon177);
    world.AddMapEntry(Lat45, -lon177);
    world.AddMapEntry(Lat45, 0);
    EXPECT_THAT(Cut(world, {50, 40, 170, -170}),
                ElementsAre(PenUp, OutlinePoint{45, 177.1875}, OutlinePoint{45, -177.1875}));
    EXPECT_THAT(Cut(world, {50, 40, 180, 180}), ElementsAre()); // no width, so nothing
}

TEST(WorldOutlines, TakesASeparatorInsideTheWindowAsAPointThatEndsTheLine)
{
    SmallWorld world;
    world.AddMapEntry(Lat45 / 8, Lon90 / 16);
    world.AddMapEntry(0, 0);
    world.AddMapEntry(0, 0);
    world.AddMapEntry(Lat45 / 8, 0); // on the zero meridian, but no separator
    EXPECT_THAT(Cut(world, {22, -22, -45, 45}),
                ElementsAre(PenUp, OutlinePoint{5.625, 5.625}, PenUp, PenUp, PenUp, PenUp, OutlinePoint{5.625, 0}));
}

TEST(WorldOutlines, ReachesTheEndsOfTheScale)
{
    SmallWorld world;
    world.AddMapEntry(std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::min());
    EXPECT_THAT(Cut(world, {100, -90, 150, -150}), ElementsAre(PenUp, OutlinePoint{-90, -180}));
    world.WorldMap.pop_back(); // a cut-off entry is none
    EXPECT_THAT(Cut(world, {100, -90, 150, -150}), ElementsAre());
}

TEST(WorldOutlines, WindowReaches22And45DegreesFurther)
{
    EXPECT_EQ(OutlineWindowAround(80, 80, 170, 170), (OutlineWindow{102, 58, 125, -145}));
    EXPECT_EQ(OutlineWindowAround(25, 10, -80, -65), (OutlineWindow{47, -12, -125, -20}));
    EXPECT_EQ(OutlineWindowAround(0, 0, -135, 135), (OutlineWindow{22, -22, 180, 180}));
}
} // namespace corvane
