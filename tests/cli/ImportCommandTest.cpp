#include "tests/cli/CommandRun.h"
#include "tests/core/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace corvane {
namespace {
namespace fs = std::filesystem;
using nlohmann::json;
using testing::EndsWith;
using testing::StartsWith;

constexpr std::string_view Coast =
    R"({"type":"Feature","properties":{},"geometry":{"type":"LineString","coordinates":[[8,47],[9,48],[10,46]]}})";
constexpr std::string_view Hills = "ncols 2\nnrows 1\nxllcorner 8\nyllcorner 47\ncellsize 1\n1000 2000\n";

struct WrongCase {
    const char* Name;
    std::vector<std::string> Arguments;
};
class WrongImportArguments : public testing::TestWithParam<WrongCase> {};

TEST_P(WrongImportArguments, AreStatusTwo)
{
    std::vector<std::string> arguments = {"import"};
    arguments.insert(arguments.end(), GetParam().Arguments.begin(), GetParam().Arguments.end());
    const CommandRun run = RunCli(arguments);
    EXPECT_EQ(run.Status, 2);
    EXPECT_EQ(run.Out, "");
    EXPECT_NE(run.Notices, "");
}

INSTANTIATE_TEST_SUITE_P(
    Cli, WrongImportArguments,
    testing::Values(WrongCase{"Nothing", {}}, WrongCase{"NoFile", {"outlines", "--out", "world.map"}},
                    WrongCase{"NoOut", {"terrain", "a.tif"}},
                    WrongCase{"CellsTooSmall", {"terrain", "a.tif", "--out", "b", "--every", "0.09"}},
                    WrongCase{"CellsTooLarge", {"terrain", "a.tif", "--out", "b", "--every", "61"}},
                    WrongCase{"NoNumber", {"terrain", "a.tif", "--out", "b", "--every", "nan"}},
                    WrongCase{"NoName", {"world", "--apt-dat", ""}},
                    WrongCase{"NoSuchImport", {"airports", "a.csv", "--out", "b"}}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(ImportCommand, FailsWithOneLineAndWritesNothing)
{
    const TemporaryFolder folder;
    for (const char* const kind : {"outlines", "terrain"}) {
        const std::string out = (folder.Path() / "out").string();
        const CommandRun run = RunCli({"import", kind, (folder.Path() / "none").string(), "--out", out});
        EXPECT_EQ(run.Status, 1) << kind;
        EXPECT_EQ(run.Out, "");
        EXPECT_THAT(run.Notices, StartsWith("corvane-cli: "));
        EXPECT_THAT(run.Notices, EndsWith("\n"));
        EXPECT_EQ(std::count(run.Notices.begin(), run.Notices.end(), '\n'), 1);
        EXPECT_TRUE(fs::is_empty(folder.Path()));
    }
}

TEST(ImportWorldCommand, PrintsCountsAndReportsWhatItPassedOver)
{
    const TemporaryFolder folder;
    const fs::path nav = folder.Write(
        "nav.dat", std::string("I\n810 Version\n3 10 20 120 11795 30 -12.0 KBV KESTREL VOR\n3 x\nprose\n99\n"));
    const fs::path air = folder.Write("a\x1b.txt", std::string("AC D\nAN Broken \x01 zone\nAC R\nAN Range\n"));
    const std::string app = (folder.Path() / "app").string();
    const std::string report = (folder.Path() / "report").string();
    const CommandRun run = RunCli({"import", "world", "--nav-dat", nav.string(), "--airspaces", air.string(),
                                   "--app-folder", app, "--report", report});
    EXPECT_EQ(run.Status, 0);
    const json counts = json::parse(run.Out);
    EXPECT_EQ(counts["AirportCount"], 0);
    EXPECT_EQ(counts["VorCount"], 1);
    EXPECT_EQ(counts["LeftOut"]["AirspacesByClass"], json({{"R", 1}}));
    const std::string airName = (folder.Path() / "a\\x1b.txt").string(); // nothing reaches a terminal raw
    EXPECT_EQ(run.Notices,
              "corvane-cli: import: " + airName +
                  ": line 1: the airspace \"Broken zone\" is left out: it has no lower limit\n" +
                  "corvane-cli: import: " + nav.string() +
                  ": 2 lines passed over, the first is line 4: field 1 is \"x\", not a latitude\n" +
                  "corvane-cli: import: " + airName +
                  ": 1 lines passed over, the first is line 1: the airspace \"Broken zone\" is left out: " +
                  "it has no lower limit\n");
    std::ifstream in(report);
    std::vector<std::int64_t> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(json::parse(line)["Line"].get<std::int64_t>());
    EXPECT_EQ(lines, (std::vector<std::int64_t>{4, 5, 1}));
}

TEST(ImportWorldCommand, WantsAnInputAndAFolderThatHoldsOne)
{
    const TemporaryFolder folder;
    EXPECT_EQ(RunCli({"import", "world", "--app-folder", folder.Path().string()}).Status, 2);
    const CommandRun run = RunCli({"import", "world", "--flightgear", folder.Path().string()});
    EXPECT_EQ(run.Status, 1);
    EXPECT_EQ(run.Notices, "corvane-cli: " + folder.Path().string() +
                               ": holds neither Airports/apt.dat.gz nor Navaids/nav.dat.gz\n");
    EXPECT_TRUE(fs::is_empty(folder.Path()));
}

#ifdef CORVANE_HAVE_GDAL
TEST(ImportCommand, PrintsWhatItWrote)
{
    const TemporaryFolder folder;
    const std::string map = (folder.Path() / "world.map").string();
    const std::string terrain = (folder.Path() / "world_terrain.db").string();
    const CommandRun outlines =
        RunCli({"import", "outlines", folder.Write("coast.geojson", Coast).string(), "--out", map});
    ASSERT_EQ(outlines.Status, 0) << outlines.Notices;
    EXPECT_EQ(json::parse(outlines.Out),
              json::parse(R"({"Lines":1,"OutlinePoints":3,"Bounds":{"South":46,"West":8,"North":48,"East":10}})"));
    EXPECT_EQ(fs::file_size(map), 32U);

    const CommandRun hills =
        RunCli({"import", "terrain", folder.Write("hills.asc", Hills).string(), "--out", terrain, "--every", "20"});
    ASSERT_EQ(hills.Status, 0) << hills.Notices;
    EXPECT_EQ(json::parse(hills.Out), json::parse(R"({"Samples":2,"Voids":0,"TerrainPoints":2,
        "Bounds":{"South":47.5,"West":8.5,"North":47.5,"East":9.5}})"));
    EXPECT_EQ(fs::file_size(terrain), 40U);
    EXPECT_EQ(outlines.Notices + hills.Notices, "");
}
#endif
} // namespace
} // namespace corvane
