#include "area/WorldOutlines.h"

#include "tests/area/SmallWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <utility>

namespace corvane {
using testing::ElementsAre;
using testing::SizeIs;

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

/// The rule in degrees, entry by entry.
static std::vector<OutlinePoint> CutPlainly(const std::vector<std::pair<std::int32_t, std::int32_t>>& entries,
                                            const OutlineWindow& w)
{
    std::vector<OutlinePoint> points;
    bool inside = false;
    for (const auto& [storedLat, storedLon] : entries) {
        const double lat = storedLat * 90.0 / 2147483648.0;
        const double lon = storedLon * 180.0 / 2147483648.0;
        bool now = w.South <= lat && lat <= w.North;
        if (w.West < w.East)
            now = now && w.West <= lon && lon <= w.East;
        else if (w.West > w.East)
            now = now && ((w.West <= lon && lon <= 180) || (-180 <= lon && lon <= w.East));
        else
            now = false;
        if (now && !inside)
            points.push_back(PenUp);
        if (now)
            points.push_back({lat, lon});
        inside = now && !(storedLat == 0 && storedLon == 0);
    }
    return points;
}

TEST(WorldOutlines, AgreesWithTheRuleInDegrees)
{
    std::mt19937 random(3);
    std::uniform_int_distribution<std::int32_t> anyStored(std::numeric_limits<std::int32_t>::min(),
                                                          std::numeric_limits<std::int32_t>::max());
    std::uniform_int_distribution<std::int32_t> offset(-2, 2);
    std::uniform_real_distribution<double> anyDegrees(-200, 200);
    for (int round = 0; round < 300; ++round) {
        // Edges on stored values as well as between them, windows across 180 degrees, beyond the scale and inside out.
        const std::int32_t edgeLat = anyStored(random) / 2;
        const std::int32_t edgeLon = anyStored(random);
        OutlineWindow window{anyDegrees(random), edgeLat * 90.0 / 2147483648.0, edgeLon * 180.0 / 2147483648.0,
                             anyDegrees(random)};
        if (round % 3 == 0)
            std::swap(window.West, window.East);
        if (round % 5 == 0)
            std::swap(window.North, window.South);
        SmallWorld world;
        std::vector<std::pair<std::int32_t, std::int32_t>> entries;
        for (int i = 0; i < 200; ++i) {
            entries.emplace_back(i % 2 == 0 ? edgeLat + offset(random) : anyStored(random),
                                 i % 3 == 0 ? (edgeLon / 2 + offset(random)) * 2 : anyStored(random));
            if (i % 20 == 0)
                entries.emplace_back(0, 0);
        }
        for (const auto& [lat, lon] : entries)
            world.AddMapEntry(lat, lon);
        ASSERT_EQ(Cut(world, window), CutPlainly(entries, window)) << round;
    }
}

TEST(WorldOutlines, FindsNothingInAWindowBetweenStoredValuesOrOffTheScale)
{
    SmallWorld world;
    for (const std::int32_t lon : {-1, 0, 1, std::numeric_limits<std::int32_t>::max()})
        world.AddMapEntry(1, lon);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const OutlineWindow& window :
         {OutlineWindow{1, -1, 1e-8, 2e-8}, OutlineWindow{1e-9, 1e-10, -1, 1}, OutlineWindow{1, -1, 181, 190},
          OutlineWindow{1, -1, 190, -190}, OutlineWindow{200, 100, -1, 1}, OutlineWindow{nan, -1, -1, 1},
          OutlineWindow{1, -1, nan, 1}})
        EXPECT_THAT(Cut(world, window), ElementsAre());
    EXPECT_THAT(Cut(world, {1, -1, -1000, 1000}), SizeIs(5));
}

TEST(WorldOutlines, WindowReaches22And45DegreesFurther)
{
    EXPECT_EQ(OutlineWindowAround(80, 80, 170, 170), (OutlineWindow{102, 58, 125, -145}));
    EXPECT_EQ(OutlineWindowAround(25, 10, -80, -65), (OutlineWindow{47, -12, -125, -20}));
    EXPECT_EQ(OutlineWindowAround(0, 0, -135, 135), (OutlineWindow{22, -22, 180, 180}));
}
} // namespace corvane
