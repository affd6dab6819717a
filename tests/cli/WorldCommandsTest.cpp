#include "tests/cli/CommandRun.h"
#include "tests/core/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>

namespace corvane {
namespace {
using nlohmann::json;

std::string ContentOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<json> JsonLines(const std::string& text)
{
    std::vector<json> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(json::parse(line));
    return lines;
}

/// The commands over a small demonstration world, written and built once for all the tests.
class WorldCommands : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_world.emplace();
        const std::string folder = s_world->Path().string();
        s_written = RunCli({"demo-world", "--out", folder, "--airports", "150"});
        s_built = RunCli({"build", "--fs-folder", folder + "/fs2002", "--app-folder", folder});
    }
    static void TearDownTestSuite() { s_world.reset(); }

    void SetUp() override { ASSERT_EQ(s_built.Status, 0) << s_written.Notices << s_built.Notices; }

    static std::string Folder() { return s_world->Path().string(); }
    static std::string ListEntry(const char* icao)
    {
        const json airport = json::parse(RunCli({"dump", "airports", "--app-folder", Folder(), "--icao", icao}).Out);
        return airport["Icao"].get<std::string>() + " - " + airport["Name"].get<std::string>();
    }
    static json Scope(std::vector<std::string> more)
    {
        std::vector<std::string> arguments = {"scope",     "--app-folder",    Folder(),
                                              "--airport", ListEntry("KSEA"), "--primitives"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const CommandRun run = RunCli(arguments);
        EXPECT_EQ(run.Status, 0) << run.Notices;
        return json::parse(run.Out);
    }

    static std::optional<TemporaryFolder> s_world; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
    static CommandRun s_written;                   // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
    static CommandRun s_built;                     // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
};
std::optional<TemporaryFolder> WorldCommands::s_world;
CommandRun WorldCommands::s_written;
CommandRun WorldCommands::s_built;

#ifdef CORVANE_WINDOWS
/// Qt complains of a session without a folder for its sockets, of which a picture needs none.
TEST_F(WorldCommands, PicturesAreMadeWithoutAWordAboutTheSystem)
{
    const char* const runtimeFolder = std::getenv("XDG_RUNTIME_DIR");
    const std::string before = runtimeFolder == nullptr ? "" : runtimeFolder;
    unsetenv("XDG_RUNTIME_DIR");
    const std::string png = (s_world->Path() / "scope.png").string();
    testing::internal::CaptureStderr();
    const CommandRun run = RunCli({"scope", "--app-folder", Folder(), "--airport", ListEntry("KSEA"), "--png", png});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Notices, "");
    EXPECT_THAT(ContentOf(png), testing::StartsWith("\x89PNG"));
    if (runtimeFolder != nullptr)
        setenv("XDG_RUNTIME_DIR", before.c_str(), 1);
}
#endif

TEST_F(WorldCommands, BuildFindsEverythingThatWasWritten)
{
    const json written = json::parse(s_written.Out);
    const json built = json::parse(s_built.Out);
    EXPECT_EQ(written["Airports"], 150);
    EXPECT_EQ(built["AirportCount"], written["Airports"]);
    EXPECT_EQ(built["VorCount"], written["Vors"]);
    EXPECT_EQ(built["NdbCount"], written["Ndbs"]);
    EXPECT_EQ(built["AirspaceCount"], written["Airspaces"]);
    EXPECT_EQ(built["BglFileCount"], written["BglFiles"]);
    const json settings = json::parse(RunCli({"dump", "settings", "--app-folder", Folder()}).Out);
    EXPECT_EQ(settings["VersionText"], "Corvane Version 3.0");
    EXPECT_EQ(settings["FsPath"], Folder() + "/fs2002");
    EXPECT_EQ(settings["AirportCount"], 150);
}

TEST_F(WorldCommands, TwoBuildsGiveTheSameBytes)
{
    const TemporaryFolder other;
    ASSERT_EQ(RunCli({"build", "--fs-folder", Folder() + "/FS2002/", "--app-folder", other.Path().string()}).Status, 0);
    for (const char* name : {"world_airports.dat", "world_vors.dat", "world_ndbs.dat", "world_airspaces.dat"})
        EXPECT_EQ(ContentOf(other.Path() / name), ContentOf(std::filesystem::path(Folder()) / name)) << name;
}

TEST_F(WorldCommands, DumpsEveryRecordWithItsCounts)
{
    const std::vector<json> airports = JsonLines(RunCli({"dump", "airports", "--app-folder", Folder()}).Out);
    ASSERT_EQ(airports.size(), 150U);
    for (const json& airport : airports) {
        EXPECT_EQ(airport["RunwayCount"], airport["Runways"].size());
        EXPECT_EQ(airport["TaxiPathCount"], airport["TaxiPaths"].size());
    }
    EXPECT_EQ(JsonLines(RunCli({"dump", "vors", "--app-folder", Folder()}).Out).size(),
              json::parse(s_built.Out)["VorCount"].get<std::size_t>());
    EXPECT_EQ(json::parse(RunCli({"dump", "magvar", "--app-folder", Folder()}).Out).size(), 65160U);
    EXPECT_EQ(RunCli({"dump", "airports", "--app-folder", Folder(), "--icao", "ZZZZ"}).Status, 1);
}

TEST_F(WorldCommands, ReadADatabaseThatWasCutAndSaySo)
{
    const TemporaryFolder cut;
    const std::string folder = cut.Path().string();
    std::filesystem::copy(Folder(), cut.Path());
    const std::filesystem::path vors = cut.Path() / "world_vors.dat";
    std::filesystem::resize_file(vors, std::filesystem::file_size(vors) - 3);
    const std::string warning =
        "corvane-cli: " + vors.string() + ": ends too early, so that records are missing; create the database again\n";
    const CommandRun area = RunCli({"area", "--app-folder", folder, "--airport", ListEntry("KSEA")});
    EXPECT_EQ(area.Status, 0);
    EXPECT_EQ(area.Notices, warning);
    EXPECT_EQ(
        json::parse(area.Out)["AreaAirports"],
        json::parse(RunCli({"area", "--app-folder", Folder(), "--airport", ListEntry("KSEA")}).Out)["AreaAirports"]);
    const CommandRun dump = RunCli({"dump", "vors", "--app-folder", folder});
    EXPECT_EQ(dump.Status, 0);
    EXPECT_EQ(dump.Notices, warning);
    EXPECT_EQ(JsonLines(dump.Out).size(), json::parse(s_built.Out)["VorCount"].get<std::size_t>());
    EXPECT_EQ(JsonLines(dump.Out).back()["RangeNm"], 0);
}

/// A scenery file with a boundary chain at 0xA6, where two bytes are left.
std::string BrokenBgl()
{
    std::string bgl(0xA8, '\0');
    bgl.replace(0x76, 4, "\x21\x43\x65\x87");
    bgl[0x90] = 1;
    bgl[0xA4] = '\xA6';
    return bgl;
}

TEST_F(WorldCommands, AFailedBuildLeavesNoDatabase)
{
    const TemporaryFolder broken;
    const std::string folder = broken.Path().string();
    broken.Write("fs/scenery.cfg", std::string("[Area.001]\r\nTitle=Broken\r\nLocal=Bad\r\n"));
    broken.Write("fs/Bad/scenery/x.bgl", BrokenBgl());
    const CommandRun run = RunCli({"build", "--fs-folder", folder + "/fs", "--app-folder", folder});
    EXPECT_EQ(run.Status, 1);
    EXPECT_THAT(run.Notices, testing::HasSubstr("x.bgl"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1) << "only the simulator's folder stays";
}

TEST_F(WorldCommands, ABuildThatKeepsGoingHasTheRestAndReportsWhatItPassedOver)
{
    const TemporaryFolder partly;
    const std::string folder = partly.Path().string();
    const std::string report = folder + "/report.jsonl";
    std::filesystem::copy(Folder() + "/fs2002", folder + "/fs", std::filesystem::copy_options::recursive);
    partly.Write("fs/Scenery.CFG", ContentOf(partly.Path() / "fs/Scenery.CFG") +
                                       "\r\n[Area.999]\r\nTitle=Sch\xF6n\r\nLocal=Bad\r\nLayer=999\r\n");
    partly.Write("fs/Bad/scenery/x.bgl", BrokenBgl());
    const std::vector<std::string> build = {"build", "--fs-folder", folder + "/fs", "--app-folder", folder};
    const auto with = [&](std::vector<std::string> more) {
        more.insert(more.begin(), build.begin(), build.end());
        return RunCli(more);
    };
    EXPECT_NE(with({"--report", report}).Status, 0) << "reports only what it goes past";
    const CommandRun run = with({"--keep-going", "--report", report});
    EXPECT_EQ(run.Status, 0) << run.Notices;
    EXPECT_EQ(json::parse(run.Out)["AirportCount"], 150);
    EXPECT_THAT(run.Notices, testing::HasSubstr("x.bgl"));
    const std::vector<json> lines = JsonLines(ContentOf(report));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_THAT(lines[0]["File"].get<std::string>(), testing::EndsWith("x.bgl"));
    EXPECT_EQ(lines[0]["Area"], "Sch\u00F6n");
    EXPECT_EQ(lines[0]["Line"], 0);
    EXPECT_GT(lines[0]["Offset"], 0);
    EXPECT_FALSE(lines[0]["Why"].get<std::string>().empty());
    EXPECT_EQ(lines[0]["Records"]["Airspaces"], 0);
    partly.Write("fs/Bad/scenery/x.bgl", std::string(0xA8, '\0'));
    const CommandRun whole = with({"--keep-going", "--report", report});
    EXPECT_EQ(whole.Notices, "");
    EXPECT_EQ(ContentOf(report), "") << "a report of nothing replaces the last one";
}

TEST_F(WorldCommands, AreaCollectsWhatLiesAround)
{
    const json area = json::parse(RunCli({"area", "--app-folder", Folder(), "--airport", ListEntry("KSEA")}).Out);
    EXPECT_EQ(area["AreaMode"], "Airport");
    EXPECT_NEAR(area["AreaCenterLat"].get<double>(), 47.45, 0.01);
    EXPECT_GT(area["TerrainPoints"].size(), 100U);
    EXPECT_EQ(area["OutlinePoints"][0], json::array({0.0, 0.0})) << "the first point opens a piece";
    const CommandRun unknown = RunCli({"area", "--app-folder", Folder(), "--airport", "KSEA - Elsewhere"});
    EXPECT_EQ(unknown.Status, 0);
    EXPECT_EQ(json::parse(unknown.Out)["AreaName"], "");
    EXPECT_THAT(unknown.Notices, testing::HasSubstr("KSEA - Elsewhere"));
}

TEST_F(WorldCommands, AlertsKnowTheAreasAirportsAndTerrain)
{
    const json area = json::parse(RunCli({"area", "--app-folder", Folder(), "--airport", ListEntry("KSEA")}).Out);
    const double lat = area["AreaCenterLat"];
    const double lon = area["AreaCenterLon"];
    const auto pilot = [&](int id, double northNm, int altitudeFt) {
        return json{{"Name", "N" + std::to_string(id)},
                    {"PlayerId", id},
                    {"Role", "player"},
                    {"Latitude", lat + northNm / 60},
                    {"Longitude", lon},
                    {"AltitudeFt", altitudeFt},
                    {"MagHeading", 90},
                    {"GroundSpeedKt", 120},
                    {"FlightRules", 1},
                    {"DestinationIcao", "ksea"},
                    {"MinimumAltitudeFt", 1},
                    {"CruiseAltitude", 9000}};
    };
    std::string history; // two in the pattern, one low 20 miles out
    for (int second = 0; second < 3; ++second)
        history +=
            json{{"Time", second}, {"Players", {pilot(2, 0, 900), pilot(3, 1, 900), pilot(4, 20, 600)}}}.dump() + '\n';
    const TemporaryFolder folder;
    const std::string file = folder.Write("history.jsonl", history).string();
    const std::vector<json> alone = JsonLines(RunCli({"alerts", "--history", file}).Out);
    ASSERT_EQ(alone.size(), 1U);
    EXPECT_EQ(alone[0]["kind"], "conflict");
    const std::vector<json> overSeattle =
        JsonLines(RunCli({"alerts", "--history", file, "--app-folder", Folder(), "--airport", ListEntry("KSEA")}).Out);
    ASSERT_EQ(overSeattle.size(), 1U);
    EXPECT_EQ(overSeattle[0]["kind"], "low-altitude");
    EXPECT_EQ(overSeattle[0]["Player"], 4);
    EXPECT_GE(overSeattle[0]["MinimumAltitudeFt"], 2000);
}

TEST_F(WorldCommands, SectorIsNamedAndBounded)
{
    const json area = json::parse(RunCli({"area", "--app-folder", Folder(), "--sector", "PANAMA FIR"}).Out);
    EXPECT_EQ(area["AreaName"], "PANAMA FIR");
    EXPECT_EQ(area["AreaMode"], "ARTCC/FIR sector");
    EXPECT_EQ(area["AreaAirspaces"][0]["ComName"], "PANAMA FIR");
}

TEST_F(WorldCommands, ScopeStartsAtLevel14AndZoomsStepByStep)
{
    const json start = Scope({});
    EXPECT_EQ(start["View"]["ZoomLevel"], 14);
    EXPECT_EQ(start["View"]["OutlineStep"], 5);
    const double width = start["View"]["ViewEast"].get<double>() - start["View"]["ViewWest"].get<double>();
    EXPECT_NEAR(width, 291.9998 * 0.0549755813888, 1e-9); // 0.8 to the 13th
    EXPECT_EQ(start["Map"][0]["op"], "ellipse");
    EXPECT_EQ(start["Map"][0]["pen"], json::array({128, 128, 128, 1, "dash"}));
    const json moved = Scope({"--zoom", "36", "--center", "-33.9,151.2", "--hide", "WorldMap,RangeRings"});
    EXPECT_EQ(moved["View"]["ZoomLevel"], 36);
    EXPECT_NE(moved["View"]["SavedWest"], moved["View"]["ViewWest"]) << "the saved rectangle stays at level 35";
    EXPECT_NEAR((moved["View"]["ViewNorth"].get<double>() + moved["View"]["ViewSouth"].get<double>()) / 2, -33.9, 1e-9);
    EXPECT_TRUE(moved["Map"].empty());
}

TEST_F(WorldCommands, ScopeShowsTargetsPanelAndMeasurement)
{
    const TemporaryFolder folder;
    const auto players = folder.Write(
        "players.json", std::string(R"([{"Name":"N1","PlayerId":7,"Role":"player","Latitude":47.6,"Longitude":-122,
            "AltitudeFt":5000,"MagHeading":270,"GroundSpeedKt":180},
            {"Name":"**ATC","PlayerId":1,"Role":"player","Latitude":47.6,"Longitude":-122},
            {"Name":"Watcher","PlayerId":8,"Role":"observer","Latitude":47.6,"Longitude":-122}])"));
    const json plain = Scope({"--players", players.string()});
    ASSERT_EQ(plain["Targets"].size(), 5U) << "one target: dot, vector, leader, two lines";
    EXPECT_EQ(plain["Targets"][3]["text"], "N1  Hdg: 270*  Alt: 5000ft");
    EXPECT_EQ(plain["Targets"][4]["text"], "GS: 180kts  Min Alt: -None-");
    EXPECT_FALSE(plain.contains("Label1"));

    const std::string at = std::to_string(plain["Targets"][1]["x1"].get<int>()) + "," +
                           std::to_string(plain["Targets"][1]["y1"].get<int>());
    const json pointed = Scope({"--players", players.string(), "--pointer", at, "--measure", "47,-122,47,-121"});
    EXPECT_THAT(pointed["Label1"].get<std::string>(), testing::StartsWith("PLAYER: N1\r\nHEADING: 270 *\r\n"));
    EXPECT_EQ(pointed["Targets"][5]["pen"], json::array({0, 192, 0, 1, "dot"}));
    EXPECT_THAT(pointed["Targets"][6]["text"].get<std::string>(), testing::StartsWith("Dist: 41 nm  Course: "));
}

TEST_F(WorldCommands, ScopeDrawsADisplayAfterItsHistoryAndTheClassicOneAsEver)
{
    const auto path = [](const char* name) { return (s_world->Path() / name).string(); };
    const auto player = [](int id, double lon) {
        return R"({"PlayerId":)" + std::to_string(id) + R"(,"Name":"P)" + std::to_string(id) +
               R"(","Role":"player","Latitude":47.4,"Longitude":)" + std::to_string(lon) +
               R"(,"AltitudeFt":30000,"GroundSpeedKt":400})";
    };
    const std::string both = "[" + player(2, -122) + "," + player(3, -121.99) + "]";
    std::ofstream(path("both.json")) << both;
    std::ofstream history(path("history.json"));
    for (int time = 100; time < 105; ++time)
        history << R"({"Time":)" << time << R"(,"Players":)" << both << "}\n";
    history << R"({"Time":105,"Players":[)" << player(3, -121.99) << "]}\n";
    history.close();

    const json plain = Scope({"--players", path("both.json")});
    EXPECT_EQ(Scope({"--players", path("both.json"), "--display", "classic"}), plain);
    EXPECT_EQ(Scope({"--players", path("both.json"), "--set", "ConflictAlert=0"}), plain);
    EXPECT_EQ(Scope({"--history", path("history.json"), "--players", path("both.json")}), plain);
    EXPECT_FALSE(Scope({"--players", path("both.json"), "--set", "Blocks=compact"}).contains("Labels"));

    const json modern = Scope({"--display", "modern", "--history", path("history.json")});
    ASSERT_EQ(modern["Labels"].size(), 1) << "the last line's";
    EXPECT_EQ(modern["Labels"][0]["PlayerId"], 3);
    EXPECT_EQ(modern["Labels"][0]["Direction"], 9);
    EXPECT_EQ(modern["Labels"][0]["Height"], 26);
    const json alerting = Scope({"--display", "modern", "--history", path("history.json"), "--players",
                                 path("both.json"), "--set", "PredictionMinutes=0"});
    ASSERT_EQ(alerting["Labels"].size(), 2);
    EXPECT_NE(alerting["Labels"][0]["Direction"], alerting["Labels"][1]["Direction"]) << "they make room";
    ASSERT_EQ(alerting["Alerts"].size(), 1);
    EXPECT_EQ(alerting["Alerts"][0]["Players"], json({2, 3}));
    EXPECT_EQ(alerting["Alerts"][0]["violated"], true);
    const json later =
        Scope({"--display", "modern", "--set", "HistoryDots=0", "--history", path("history.json"), "--now", "115.5"});
    EXPECT_EQ(later["Targets"][0]["fill"], nullptr) << "hollow: ten seconds of silence";

    const CommandRun tooEarly = RunCli({"scope", "--app-folder", Folder(), "--airport", ListEntry("KSEA"), "--history",
                                        path("history.json"), "--now", "104", "--primitives"});
    EXPECT_EQ(tooEarly.Status, 1);
    EXPECT_THAT(tooEarly.Notices, testing::HasSubstr("--now: lies before"));
    const CommandRun unknown = RunCli({"scope", "--airport", "X", "--primitives", "--set", "Dots=3"});
    EXPECT_EQ(unknown.Status, 2);
    EXPECT_THAT(unknown.Notices, testing::HasSubstr("HistoryDots, HistorySeconds"));
}

TEST_F(WorldCommands, ScopeRefusesDamagedPlayers)
{
    const TemporaryFolder folder;
    for (const char* content : {"{}", "[1]", "[{\"PlayerId\":\"x\"}]", "[{\"AltitudeFt\":1e300}]", "["}) {
        const auto players = folder.Write("players.json", std::string(content));
        const CommandRun run = RunCli({"scope", "--app-folder", Folder(), "--airport", ListEntry("KSEA"),
                                       "--primitives", "--players", players.string()});
        EXPECT_EQ(run.Status, 1) << content;
        EXPECT_THAT(run.Notices, testing::HasSubstr("players.json")) << content;
        EXPECT_EQ(run.Out, "") << content;
    }
}
} // namespace
} // namespace corvane
