#include "demo/WorldData.h"

#include "demo/DemoWorld.h"
#include "tests/core/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace corvane {
namespace fs = std::filesystem;

static std::string ReadText(const fs::path& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// The project's tables, one of them with a text replaced by another.
static void CopyDataWith(const fs::path& folder, const char* file, const std::string& from, const std::string& to)
{
    for (const auto& entry : fs::directory_iterator(DefaultDataFolder()))
        if (entry.is_regular_file())
            fs::copy_file(entry.path(), folder / entry.path().filename());
    std::string text = ReadText(folder / file);
    const std::size_t at = text.find(from);
    ASSERT_NE(at, std::string::npos);
    std::ofstream(folder / file, std::ios::binary) << text.replace(at, from.size(), to);
}

TEST(WorldData, ReadsEveryTableWhole)
{
    const Result<WorldData> world = LoadWorldData(DefaultDataFolder());
    ASSERT_TRUE(world) << world.error().Text();
    std::size_t runways = 0;
    for (const AirportSource& airport : world->Airports)
        runways += airport.Runways.size();
    EXPECT_EQ(world->Airports.size(), 4612U); // the numbers of data/README.md
    EXPECT_EQ(runways, 6089U);
    EXPECT_EQ(world->Navaids.size(), 3000U);
    EXPECT_EQ(world->Sectors.size(), 121U);
    EXPECT_EQ(world->Outlines.size(), 1422U);
    EXPECT_EQ(world->Borders.size(), 362U);
    EXPECT_EQ(world->Terrain.size(), 21661U);
    EXPECT_EQ(world->MagVar.size(), 65160U);
    EXPECT_EQ(world->Airports.front().Icao, "KDFW"); // 78,000 ft of runways
}

struct DamageCase {
    const char* Name;
    const char* File;
    const char* From;
    const char* To;
    const char* Message;
};
class DamagedData : public testing::TestWithParam<DamageCase> {};
TEST_P(DamagedData, IsAnErrorThatNamesTheLine)
{
    const TemporaryFolder folder;
    CopyDataWith(folder.Path(), GetParam().File, GetParam().From, GetParam().To);
    const Result<WorldData> world = LoadWorldData(folder.Path());
    ASSERT_FALSE(world);
    EXPECT_EQ(world.error().Text(), (folder.Path() / GetParam().File).string() + GetParam().Message);
}

INSTANTIATE_TEST_SUITE_P(
    Tables, DamagedData,
    testing::Values(
        DamageCase{"AirportWithoutLatitude", "airports.csv", "-9.42800", "",
                   " line 2: lat is \"\", not a number from -90 to 90"},
        DamageCase{"RunwayOfNoAirport", "runways.csv", "AGGH", "XXXX", " line 2: names no airport: \"XXXX\""},
        DamageCase{"RunwayNumber", "runways.csv", "AGGH,06", "AGGH,37",
                   " line 2: le_ident is \"37\", not a number from 01 to 36 and a side letter"},
        DamageCase{"NavaidType", "navaids.csv", "NDB,AA", "TAC,AA", " line 2: type is \"TAC\", neither VOR nor NDB"},
        DamageCase{"ShortPolygon", "sectors.csv", "34.0940 60.4860 ", "",
                   " line 2: the polygon does not have 56 vertices"},
        DamageCase{"ShortMagVarLine", "magvar.csv", "-5739,", "", " line 1: does not hold 181 values"},
        DamageCase{"MagVarTooLarge", "magvar.csv", "-5739,", "40000,",
                   " line 1: field 1 is \"40000\", not a number from -32768 to 32767"},
        DamageCase{"OutlineVertex", "outlines.csv", "65.0678", "North",
                   " line 2: lat is \"North\", not a number from -90 to 90"}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(WorldData, MissingFolderIsNamed)
{
    const TemporaryFolder folder;
    const Result<WorldData> world = LoadWorldData(folder.Path() / "absent");
    ASSERT_FALSE(world);
    EXPECT_EQ(world.error().What, (folder.Path() / "absent" / "airports.csv").string());
}
} // namespace corvane
