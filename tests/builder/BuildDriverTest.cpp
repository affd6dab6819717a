#include "builder/BuildDriver.h"

#include "core/DatabaseFiles.h"
#include "core/File.h"
#include "core/RecordCodec.h"
#include "core/Text.h"
#include "tests/builder/BglWriter.h"
#include "tests/core/AsNobody.h"
#include "tests/core/FileSizeLimit.h"
#include "tests/core/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;

class BuildDriverTest : public testing::Test {
protected:
    BuildDriverTest() { std::filesystem::create_directories(App()); }

    [[nodiscard]] std::filesystem::path App() const { return m_disk.Path() / "app"; }
    [[nodiscard]] std::filesystem::path Fs() const { return m_disk.Path() / "Fs2002"; }

    void WriteCfg(const std::vector<std::string>& locals) const
    {
        std::string cfg;
        for (std::size_t i = 0; i < locals.size(); ++i) {
            const std::string number = std::to_string(i);
            cfg += "[Area." + number + "]\r\nTitle=Area " + number + "\r\nLocal=" + locals[i] + "\r\n";
        }
        m_disk.Write("Fs2002/SCENERY.CFG", cfg);
    }
    void WriteBgl(const std::string& name, const Bytes& content) const { m_disk.Write("Fs2002/" + name, content); }

    [[nodiscard]] BuildDriver Driver(std::uint8_t fsVersion = Fs2002Version) const
    {
        return BuildDriver(App(), {Fs().string(), Fs()}, fsVersion);
    }

    /// Prepares and scans everything; the files scanned, in order, below the simulator's folder.
    std::vector<std::string> ScanAll(BuildDriver& driver)
    {
        const Result<void> prepared = driver.Prepare();
        EXPECT_TRUE(prepared) << prepared.error().Text();
        std::vector<std::string> files;
        while (true) {
            const Result<BuildProgress> step = driver.ScanNext();
            if (!step) {
                m_error = step.error();
                return files;
            }
            if (step->Done)
                return files;
            EXPECT_EQ(step->FilesDone, static_cast<std::int64_t>(files.size()) + 1);
            files.push_back(step->CurrentFile.substr(Fs().string().size()));
        }
    }

    [[nodiscard]] std::vector<std::string> AppFiles() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(App()))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    TemporaryFolder m_disk;
    Error m_error;
};

TEST_F(BuildDriverTest, WritesTheDatabaseInTheOrderOfFoldersAndNames)
{
    WriteCfg({"One", "Missing", "Two"});
    WriteBgl("One/scenery/b.BGL", AirportFile("B", IcaoRecord("B")));
    WriteBgl("One/scenery/A.bgl", AirportFile("A", IcaoRecord("A")));
    WriteBgl("One/scenery/c.bgl.bak", AirportFile("NO", {}));
    WriteBgl("One/scenery/folder.bgl/x", {});
    WriteBgl("One/scenery/plain.bgl", BytesOf("nothing of interest"));
    WriteBgl("two/SCENERY/z.bgl", BoundaryFile(Boundary(StartRecord(0, 0, 0, 9000))));
    BuildDriver driver = Driver();
    EXPECT_THAT(ScanAll(driver), ElementsAre("\\one\\scenery\\a.bgl", "\\one\\scenery\\b.bgl",
                                             "\\one\\scenery\\plain.bgl", "\\two\\scenery\\z.bgl"));
    EXPECT_EQ(driver.BglFileCount(), 4);
    EXPECT_THAT(AppFiles(), ElementsAre("world_airports.dat.part", "world_airspaces.dat.part", "world_ndbs.dat.part",
                                        "world_vors.dat.part"));
    ASSERT_TRUE(driver.Finish());
    EXPECT_THAT(AppFiles(), ElementsAre("atc_settings.tcs", "world_airports.dat", "world_airspaces.dat",
                                        "world_ndbs.dat", "world_vors.dat"));

    const auto settings = ReadSettings(App() / SettingsFileName);
    ASSERT_TRUE(settings);
    EXPECT_EQ(*settings, (SettingsRecord{"Corvane Version 3.0", 1, 1, Fs().string(), 2, 1, 0, 0}));
    const auto airports = ReadWholeFile(App() / AirportsFileName);
    ASSERT_TRUE(airports);
    ByteReader reader(airports->Span());
    for (const char* name : {"A", "B"}) {
        const auto airport = DecodeAirport(reader, "airports");
        ASSERT_TRUE(airport);
        EXPECT_EQ(airport->Name, name);
        EXPECT_EQ(airport->NextPos, static_cast<std::int32_t>(reader.Position()) + 1);
    }
    EXPECT_EQ(reader.Left(), 0U);
    EXPECT_EQ(std::filesystem::file_size(App() / NdbsFileName), 0U);
}

TEST_F(BuildDriverTest, ScansAFolderOnceWhereItFollowsItself)
{
    WriteCfg({"One", "Missing", "one/scenery", "Two", "One"});
    WriteBgl("One/scenery/a.bgl", AirportFile("A", {}));
    WriteBgl("Two/scenery/b.bgl", AirportFile("B", {}));
    BuildDriver driver = Driver();
    EXPECT_THAT(ScanAll(driver),
                ElementsAre("\\one\\scenery\\a.bgl", "\\two\\scenery\\b.bgl", "\\one\\scenery\\a.bgl"));
    EXPECT_EQ(driver.BglFileCount(), 4);
}

TEST_F(BuildDriverTest, OfAnotherSimulatorWritesAnEmptyDatabase)
{
    BuildDriver driver = Driver(0);
    EXPECT_THAT(ScanAll(driver), IsEmpty());
    const auto settings = driver.Finish();
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->AirportCount, 0);
    for (const std::string_view name : DatabaseFileNames())
        EXPECT_EQ(std::filesystem::file_size(App() / name), 0U);
}

TEST_F(BuildDriverTest, TellsWhatThePreparationReads)
{
    WriteCfg({});
    std::vector<std::string> told;
    BuildDriver driver = Driver();
    ASSERT_TRUE(driver.Prepare([&told](std::string_view text) { told.emplace_back(text); }));
    EXPECT_THAT(told, ElementsAre("Magdec.bgl File", "Scenery.cfg File", "Done"));
}

TEST_F(BuildDriverTest, NamesTheMissingSceneryList)
{
    BuildDriver driver = Driver();
    const Result<void> prepared = driver.Prepare();
    ASSERT_FALSE(prepared);
    EXPECT_EQ(prepared.error().What, (Fs() / "scenery.cfg").string());
}

TEST_F(BuildDriverTest, MakesHeadingsMagneticWithTheGrid)
{
    WriteCfg({"One"});
    Bytes magdec(200);
    PutI32(magdec, 110, 120);
    for (std::size_t i = 0; i < MagVarGrid::CellCount; ++i)
        ByteWriter(magdec).WriteI16(1820); // the grid begins at byte 128; its end reads as 0
    WriteBgl("scenery/MagDec.BGL", magdec);
    WriteBgl("One/scenery/a.bgl", AirportFile("A", RunwayOf({.Heading = HeadingWord(90)})));
    BuildDriver driver = Driver();
    ScanAll(driver);
    ASSERT_TRUE(driver.Finish());
    const auto airports = ReadWholeFile(App() / AirportsFileName);
    ByteReader reader(airports->Span());
    EXPECT_EQ(DecodeAirport(reader, "airports")->Runways.at(0).MagHeading, 81);
}

TEST_F(BuildDriverTest, FailsNamingAFileThatVanished)
{
    WriteCfg({"One"});
    WriteBgl("One/scenery/a.bgl", AirportFile("A", {}));
    BuildDriver driver = Driver();
    ASSERT_TRUE(driver.Prepare());
    std::filesystem::remove(Fs() / "One/scenery/a.bgl");
    const auto step = driver.ScanNext();
    ASSERT_FALSE(step);
    EXPECT_EQ(step.error().What, (Fs() / "One/scenery/a.bgl").string());
    EXPECT_EQ(driver.FailureText(), "Error - while scanning this BGL file:  " + ToLower(Fs().string()) +
                                        "\\one\\scenery\\a.bgl  . The program will shutdown.");
}

TEST_F(BuildDriverTest, KeepsGoingOnRequestAndTellsWhatWasPassedOver)
{
    WriteCfg({"One"});
    Bytes tooLong = IcaoRecord("A");
    tooLong[5] = 0x7F; // the record's size leads outside of the file
    WriteBgl("One/scenery/absorbed.bgl", AirportFile("A", tooLong));
    Bytes bad = AirportFile("B", {});
    bad.resize(bad.size() - 12); // the directory's entry is cut off
    WriteBgl("One/scenery/bad.bgl", bad);
    WriteBgl("One/scenery/gone.bgl", AirportFile("C", {}));
    WriteBgl("One/scenery/whole.bgl", AirportFile("D", {}));
    BuildDriver driver = Driver();
    std::vector<FileProblems> told;
    driver.KeepGoing([&](const FileProblems& file) { told.push_back(file); });
    ASSERT_TRUE(driver.Prepare());
    std::filesystem::remove(Fs() / "One/scenery/gone.bgl");
    while (true) {
        const auto step = driver.ScanNext();
        ASSERT_TRUE(step) << step.error().Text();
        if (step->Done)
            break;
    }
    ASSERT_TRUE(driver.Finish());
    EXPECT_EQ(driver.Counts().Airports, 2);
    ASSERT_EQ(told.size(), 3U);
    EXPECT_EQ(told[0].Records.Airports, 1) << "the airport is there, cut short";
    EXPECT_THAT(told[0].Problems.First.at(0).Why, testing::StartsWith("the airport leads outside the file's"));
    EXPECT_GT(told[0].Problems.First.at(0).Offset, 0);
    EXPECT_EQ(told[1].Records, RecordCounts());
    EXPECT_THAT(told[1].Problems.First.at(0).Why, testing::StartsWith("the airport directory entry at byte"));
    EXPECT_EQ(told[2].Problems.First.at(0).Why, "No such file or directory");
    EXPECT_EQ(told[2].Area, "Area 0");
    const std::string lines = BuildReportLines(told);
    EXPECT_EQ(std::ranges::count(lines, '\n'), 3);
    EXPECT_THAT(lines, testing::HasSubstr("gone.bgl\",\"Line\":0,\"Why\":\"No such file or directory\","
                                          "\"Area\":\"Area 0\",\"Offset\":0,\"Records\":{\"Airports\":0,"));
}

TEST_F(BuildDriverTest, LeavesNothingBehindWhenGivenUpOrFailed)
{
    WriteCfg({"One"});
    WriteBgl("One/scenery/a.bgl", AirportFile("A", {}));
    Bytes bad = AirportFile("B", {});
    bad.resize(bad.size() - 12); // the directory's entry is cut off
    WriteBgl("One/scenery/b.bgl", bad);
    m_disk.Write("app/atc_settings.tcs", std::string("from the set-up"));
    BuildDriver driver = Driver();
    EXPECT_THAT(ScanAll(driver), ElementsAre("\\one\\scenery\\a.bgl"));
    EXPECT_EQ(m_error.What, (Fs() / "One/scenery/b.bgl").string());
    driver.Abandon();
    EXPECT_THAT(AppFiles(), IsEmpty());
    {
        BuildDriver destroyed = Driver();
        ASSERT_TRUE(destroyed.Prepare());
        ASSERT_TRUE(destroyed.ScanNext());
    }
    EXPECT_THAT(AppFiles(), IsEmpty());
}

TEST_F(BuildDriverTest, LeavesAloneWhatIsInTheWayOfATemporaryFile)
{
    WriteCfg({});
    const std::filesystem::path part = App() / "world_vors.dat.part";
    const std::filesystem::path target = m_disk.Write("target", std::string("precious"));
    const auto expectRefusal = [&] {
        BuildDriver driver = Driver();
        ASSERT_TRUE(driver.Prepare());
        const auto step = driver.ScanNext();
        ASSERT_FALSE(step);
        EXPECT_EQ(step.error().What, part.string());
        driver.Abandon();
        EXPECT_THAT(AppFiles(), ElementsAre("world_vors.dat.part"));
    };
    std::filesystem::create_directory(part);
    expectRefusal();
    std::filesystem::remove(part);
    for (const std::filesystem::path& linked : {target, m_disk.Path() / "missing"}) {
        std::filesystem::create_symlink(linked, part);
        expectRefusal();
        std::filesystem::remove(part);
    }
    EXPECT_EQ(std::filesystem::file_size(target), 8U) << "a link is not followed";
    EXPECT_FALSE(std::filesystem::exists(m_disk.Path() / "missing"));

    m_disk.Write("app/world_vors.dat.part", std::string("left by an interrupted build"));
    BuildDriver driver = Driver();
    ScanAll(driver);
    EXPECT_TRUE(driver.Finish());
    EXPECT_EQ(std::filesystem::file_size(App() / VorsFileName), 0U);
}

TEST_F(BuildDriverTest, NamesTheDatabaseFileThatCannotBeWrittenOn)
{
    WriteCfg({"One"});
    WriteBgl("One/scenery/a.bgl", AirportFile("A", IcaoRecord("A")));
    BuildDriver driver = Driver();
    const FileSizeLimit limit(16);
    ScanAll(driver);
    const auto finished = driver.Finish();
    ASSERT_FALSE(finished);
    EXPECT_EQ(finished.error().Text(), (App() / AirportsFileName).string() + ": File too large");
    EXPECT_THAT(AppFiles(), IsEmpty());
}

TEST_F(BuildDriverTest, StopsWhereAFolderOrALinkCannotBeLookedInto)
{
    using std::filesystem::perms;
    WriteCfg({"One", "Two"});
    WriteBgl("One/scenery/a.bgl", AirportFile("A", {}));
    WriteBgl("Two/Secret/b.bgl", AirportFile("B", {}));
    const std::filesystem::path one = Fs() / "One/scenery";
    const std::filesystem::path two = Fs() / "Two";
    const auto expectObstacle = [&](const std::filesystem::path& named) {
        BuildDriver driver = Driver();
        AsNobody({}, [&] {
            const auto prepared = driver.Prepare();
            ASSERT_FALSE(prepared);
            EXPECT_EQ(prepared.error().Text(), named.string() + ": Permission denied");
        });
    };
    std::filesystem::permissions(m_disk.Path(), perms::all);
    std::filesystem::permissions(one, perms::owner_exec);
    expectObstacle(one);
    std::filesystem::permissions(one, perms::all);
    std::filesystem::permissions(two, perms::owner_read);
    expectObstacle(two / "scenery");
    std::filesystem::permissions(two / "Secret", perms::none);
    std::filesystem::permissions(two, perms::all);
    std::filesystem::create_symlink(two / "Secret/b.bgl", one / "b.bgl");
    expectObstacle(one / "b.bgl");
    std::filesystem::permissions(two / "Secret", perms::all);
    BuildDriver driver = Driver();
    EXPECT_THAT(ScanAll(driver), ElementsAre("\\one\\scenery\\a.bgl", "\\one\\scenery\\b.bgl"));
}

TEST_F(BuildDriverTest, WorksInFoldersWithAnyLetters)
{
    const std::filesystem::path turtle = m_disk.Path() / "\u017c\u00f3\u0142w \u65e5\u672c";
    m_disk.Write(turtle / "fs2002/Scenery.CFG", std::string("[Area.0]\nLocal=One\n"));
    m_disk.Write(turtle / "fs2002/ONE/Scenery/\u65e5.BGL", AirportFile("A", IcaoRecord("A")));
    BuildDriver driver(turtle, FolderBeside(turtle, "fs2002"), Fs2002Version);
    const auto built = driver.Run();
    ASSERT_TRUE(built) << built.error().Text();
    EXPECT_EQ(built->AirportCount, 1);
    EXPECT_EQ(built->FsPath, "fs2002");
    EXPECT_EQ(driver.CurrentFile(), "fs2002\\one\\scenery\\?.bgl");
}

/// Files of all sizes, some too large to be decoded ahead.
class ManyFiles : public BuildDriverTest {
protected:
    ManyFiles()
    {
        WriteCfg({"One"});
        for (std::size_t i = 0; i < 40; ++i) {
            const std::size_t points = i % 10 == 9 ? 30000 : i * 10;
            Bytes records = IcaoRecord("X" + std::to_string(i));
            for (std::size_t n = 0; n < (i % 20 == 19 ? 7U : 1U); ++n)
                records = std::move(records) +
                          GroundLayoutRecord(LayoutList(static_cast<std::int32_t>(points), 12, Bytes(points * 12)));
            WriteBgl("One/scenery/" + std::to_string(i + 100) + ".bgl", AirportFile("A" + std::to_string(i), records));
        }
    }

    [[nodiscard]] std::vector<std::string> AirportsOf(unsigned threads) const
    {
        std::vector<SceneryArea> areas = {{"T", "One", {}}};
        EXPECT_TRUE(ResolveSceneryFolders(areas, {Fs().string(), Fs()}));
        const Result<BuildPlan> plan = BuildPlan::Make(areas);
        const MagVarGrid grid;
        ScanAhead ahead(*plan, grid, threads);
        std::vector<std::string> airports;
        while (std::optional<ScannedFile> scanned = ahead.Next()) {
            EXPECT_TRUE(scanned->Status);
            airports.push_back(scanned->LeftUnread
                                   ? "large"
                                   : std::string(scanned->Records.Airports.begin(), scanned->Records.Airports.end()));
        }
        return airports;
    }
};

TEST_F(ManyFiles, ComeInOrderWhateverTheThreads)
{
    const auto alone = AirportsOf(0);
    EXPECT_EQ(alone.size(), 40U);
    EXPECT_EQ(std::count(alone.begin(), alone.end(), "large"), 2);
    EXPECT_EQ(AirportsOf(1), alone);
    EXPECT_EQ(AirportsOf(4), alone);
}

TEST_F(ManyFiles, StandBackToBackInTheDatabase)
{
    BuildDriver driver = Driver();
    EXPECT_EQ(ScanAll(driver).size(), 40U);
    ASSERT_TRUE(driver.Finish());
    const auto file = ReadWholeFile(App() / AirportsFileName);
    ByteReader reader(file->Span());
    for (std::size_t i = 0; i < 40; ++i) {
        const auto airport = DecodeAirport(reader, "airports");
        ASSERT_TRUE(airport) << airport.error().Text();
        EXPECT_EQ(airport->Name, "A" + std::to_string(i));
        EXPECT_EQ(airport->NextPos, static_cast<std::int32_t>(reader.Position()) + 1);
    }
}
} // namespace
} // namespace corvane
