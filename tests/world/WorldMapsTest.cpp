#include "world/WorldMaps.h"

#include "core/File.h"
#include "tests/core/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {
namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::SizeIs;

class MakingMaps : public testing::Test {
protected:
    void SetUp() override
    {
        m_folder.Write("tables/outlines.csv", std::string("lat,lon\n1,2\n3,4\n\n5,6\n7,8\n"));
        m_folder.Write("tables/borders.csv", std::string("lat,lon\n1,1\n2,2\n"));
        m_folder.Write("tables/terrain.csv", std::string("lat,lon,elevation_ft,source\n47,8,1500,x\n"));
        fs::create_directory(m_app);
    }
    MapSources Own() { return {{}, {}, m_folder.Path() / "tables"}; }
    std::uintmax_t SizeOf(const char* name) { return FileExists(m_app / name) ? fs::file_size(m_app / name) : 0; }

    TemporaryFolder m_folder;
    fs::path m_app = m_folder.Path() / "app";
};

TEST_F(MakingMaps, TakesTheProgramsOwnWhereNothingElseIs)
{
    WorldMaps maps(Own(), m_app, [](const std::string&) { return true; });
    ASSERT_TRUE(maps.Make());
    maps.Keep();
    EXPECT_EQ(maps.Counts().OutlinePoints, 6);
    EXPECT_EQ(maps.Counts().TerrainPoints, 1);
    EXPECT_EQ(SizeOf("world.map"), (6 + 3) * 8U); // an entry a vertex, and one that ends each line
    EXPECT_THAT(maps.Credits(), SizeIs(2));
}

TEST_F(MakingMaps, LeavesMapsThatAreThere)
{
    const std::uintmax_t before = fs::file_size(m_folder.Write("app/world.map", std::string("mine")));
    m_folder.Write("app/world_terrain.db", std::string("mine"));
    WorldMaps maps(Own(), m_app, [](const std::string&) { return true; });
    ASSERT_TRUE(maps.Make());
    EXPECT_EQ(SizeOf("world.map"), before);
    EXPECT_EQ(maps.Counts().OutlinePoints, std::nullopt);
    EXPECT_EQ(maps.Counts().TerrainPoints, std::nullopt);
}

TEST_F(MakingMaps, TellsWhatCannotBeUsedAndGoesOn)
{
    m_folder.Write("outlines/binned_GSHHS_l.nc", std::string("CDF\x01 and no more"));
    MapSources sources = Own();
    sources.Outlines = m_folder.Path() / "outlines";
    WorldMaps maps(sources, m_app, [](const std::string&) { return true; });
    ASSERT_TRUE(maps.Make());
    EXPECT_EQ(maps.Counts().OutlinePoints, 6);
    ASSERT_THAT(maps.Counts().Unusable, SizeIs(1));
    EXPECT_THAT(maps.Counts().Unusable[0], HasSubstr("outlines"));
    ASSERT_THAT(maps.Counts().Made, SizeIs(2));
    EXPECT_THAT(maps.Counts().Made[0], HasSubstr("world.map is made of Corvane's own"));
}

TEST_F(MakingMaps, RemovesWhatItMadeUnlessItIsKept)
{
    EXPECT_TRUE(WorldMaps(Own(), m_app, {}).Make());
    EXPECT_TRUE(fs::is_empty(m_app));
    fs::remove(m_folder.Path() / "tables/terrain.csv");
    EXPECT_FALSE(WorldMaps(Own(), m_app, {}).Make());
    EXPECT_TRUE(fs::is_empty(m_app));
}

TEST_F(MakingMaps, FindsFoldersBesideTheDatabaseFirst)
{
    fs::create_directory(m_app / "terrain");
    fs::create_directory(m_app / "outlines");
    fs::create_directories(m_folder.Path() / "fg/Geodata");
    const MapSources sources = FindMapSources(m_app, "tables", m_folder.Path() / "fg");
    EXPECT_EQ(sources.Outlines, m_app / "outlines");
    EXPECT_EQ(sources.Terrain, m_app / "terrain");
    EXPECT_EQ(sources.Tables, "tables");
}
} // namespace
} // namespace corvane
