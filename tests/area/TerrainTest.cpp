#include "area/Terrain.h"

#include "tests/area/SmallWorld.h"

#include <gtest/gtest.h>

namespace corvane {
TEST(Terrain, KeepsThePointsInsideInFileOrder)
{
    SmallWorld world;
    world.AddTerrain(10, 1, 100);
    world.AddTerrain(-10, 2, 200);
    world.AddTerrain(20.5, -3.25, -300);
    std::vector<TerrainPoint> points = {{7, 7, 7}};
    MemorySource source("terrain", world.Terrain);
    ASSERT_TRUE(ReadTerrain(
        source, [](LatLon at) { return at.Lat > 0; }, points));
    EXPECT_EQ(points, (std::vector<TerrainPoint>{{7, 7, 7}, {10, 1, 100}, {20.5, -3.25, -300}}));
}

TEST(Terrain, IgnoresARecordThatIsCutOff)
{
    SmallWorld world;
    world.AddTerrain(10, 1, 100);
    world.AddTerrain(11, 2, 200);
    for (std::size_t size = 0; size <= world.Terrain.size(); ++size) {
        std::vector<TerrainPoint> points;
        MemorySource source("terrain", ByteSpan(world.Terrain).first(size));
        ASSERT_TRUE(ReadTerrain(
            source, [](LatLon) { return true; }, points));
        EXPECT_EQ(points.size(), size / TerrainRecordSize);
    }
}
} // namespace corvane
