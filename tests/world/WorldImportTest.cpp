#include "world/WorldImport.h"

#include "core/DatabaseFiles.h"
#include "core/File.h"
#include "core/MagVarGrid.h"
#include "core/RecordCodec.h"
#include "core/Settings.h"
#include "core/SimulatorFolder.h"
#include "tests/core/TemporaryFolder.h"
#include "tests/world/WorldText.h"
#include "world/Credits.h"
#include "world/FlightGearFiles.h"

#include <gmock/gmock.h>

#include <iterator>
#include <map>

namespace corvane {
namespace {
namespace fs = std::filesystem;

const fs::path Samples = CORVANE_WORLD_DATA;

WorldImport SampleImport(const fs::path& folder)
{
    WorldImport import;
    import.AptDat = Samples / "apt.dat";
    import.NavDat = Samples / "nav.dat";
    import.Airspaces = {Samples / "airspaces.openair"};
    import.AppFolder = folder;
    return import;
}

/// Ten degrees east everywhere.
std::vector<std::int16_t> TenDegrees()
{
    return std::vector<std::int16_t>(MagVarGrid::CellCount, 1821);
}

std::vector<AirportRecord> AirportsOf(const fs::path& folder)
{
    const Result<FileBytes> file = ReadWholeFile(folder / AirportsFileName);
    std::vector<AirportRecord> airports;
    if (!file)
        return airports;
    ByteReader reader(file->Span());
    while (reader.Left() > 0) {
        const Result<AirportRecord> airport = DecodeAirport(reader, "airports");
        if (!airport)
            break;
        airports.push_back(*airport);
    }
    return airports;
}

std::map<std::string, std::string> ContentOf(const fs::path& folder)
{
    std::map<std::string, std::string> content;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream in(entry.path(), std::ios::binary);
        content[entry.path().lexically_relative(folder).string()] = {std::istreambuf_iterator<char>(in), {}};
    }
    return content;
}

/// An airport in one line: where it is, its runways with their true headings, and its ILS.
std::string Summary(const AirportRecord& airport)
{
    std::string text = airport.Icao + " " + std::to_string(airport.ElevationFt) + " P" +
                       std::to_string(airport.Parkings.size()) + " T" + std::to_string(airport.TaxiPaths.size());
    const auto trueHeading = [](int magnetic) { return std::to_string((magnetic + 10) % 360); };
    for (const RunwayRecord& r : airport.Runways)
        text += " " + r.Designation + "/" + r.ReciprocalDesignation + " " + std::to_string(r.LengthFt) + "x" +
                std::to_string(r.WidthFt) + " " + trueHeading(r.MagHeading) + "/" + trueHeading(r.ReciprocalMagHeading);
    for (const IlsRecord& ils : airport.Ils)
        text += " " + ils.Ident + " " + trueHeading(ils.MagHeading) + " " + ils.Frequency;
    return text;
}

TEST(WorldImport, GivesTheSamplesTheirValues)
{
    const TemporaryFolder folder;
    const Result<WorldImportCounts> counts = ImportWorld(SampleImport(folder.Path() / "new" / "world"), TenDegrees());
    ASSERT_TRUE(counts) << counts.error().Text();
    EXPECT_EQ(counts->Records, (RecordCounts{7, 3, 3, 5}));
    EXPECT_EQ(counts->Airports.Closed, 1);
    EXPECT_EQ(counts->Airports.Repeated, 1);
    EXPECT_EQ(counts->IlsWithoutAirport, 1);
    EXPECT_EQ(counts->Airspaces.ByClass, (std::map<std::string, std::int64_t>{{"Q", 1}, {"R", 1}}));
    EXPECT_TRUE(counts->PassedOver.empty());
    std::vector<std::string> summaries;
    for (const AirportRecord& airport : AirportsOf(folder.Path() / "new" / "world"))
        summaries.push_back(Summary(airport));
    EXPECT_THAT(summaries, testing::ElementsAre(
                               "ZZAA 132 P7 T6 9L/27R 10791x197 90/270 9R/27L 10791x148 90/270 4/22 9440x98 40/220 "
                               "IKB 90 110.3 IKC 270 109.5 IKD 88 108.75 IKX 40 111.9",
                               "ZZAB -12 P2 T1 18/36 2903x60 180/0 7/25 1500x60 70/250 IET 0 109.55",
                               "ZZAS 3 P0 T0 15/33 7477x200 166/346", "ZZAH 1540 P2 T0",
                               "ZZAD 20 P0 T0 8/26 4993x98 82/262 IDT 260 111.55",
                               "ZZPO 9300 P0 T0 2/20 7329x220 0/180 16T/34T 5497x100 180/0", "ZZAT 77 P0 T0"));
}

TEST(WorldImport, PointsTheSettingsToItsOwnGridAndTellsTheSources)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(ImportWorld(SampleImport(folder.Path()), TenDegrees()));
    const Result<SettingsRecord> settings = ReadSettings(folder.Path() / SettingsFileName);
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->FsPath, folder.Path().string());
    EXPECT_EQ(settings->FsVersion, Fs2002Version);
    EXPECT_EQ(settings->AirportCount, 7);
    const auto grid = std::make_unique<MagVarGrid>();
    ReadMagVarGrid(*grid, settings->FsPath);
    EXPECT_EQ(grid->VariationAt({10, -30}), 10);
    EXPECT_THAT(ContentOf(folder.Path())[std::string(CreditsFileName)],
                testing::AllOf(testing::HasSubstr("apt.dat\n  1130 Version"), testing::HasSubstr("CC0")));
}

TEST(WorldImport, WritesToAFolderThatTheSettingsCannotName)
{
    const TemporaryFolder folder;
    const std::filesystem::path turtle = folder.Path() / "\u017c\u00f3\u0142w";
    ASSERT_TRUE(ImportWorld(SampleImport(turtle), TenDegrees()));
    const Result<SettingsRecord> settings = ReadSettings(turtle / SettingsFileName);
    ASSERT_TRUE(settings);
    const auto grid = std::make_unique<MagVarGrid>();
    ReadMagVarGrid(*grid, FolderOfSettings(settings->FsPath, turtle).Path);
    EXPECT_EQ(grid->VariationAt({10, -30}), 10);
}

TEST(WorldImport, LeavesASimulatorsOwnGridAlone)
{
    const TemporaryFolder folder;
    folder.Write("FS2002.EXE", std::string("program"));
    const std::vector<std::int16_t> values(MagVarGrid::CellCount, 3641); // 20 degrees
    folder.Write("Scenery/MagDec.bgl", MagdecFile(values));
    ASSERT_TRUE(ImportWorld(SampleImport(folder.Path()), TenDegrees()));
    EXPECT_EQ(ContentOf(folder.Path()).count("scenery/magdec.bgl"), 0U);
    EXPECT_EQ(AirportsOf(folder.Path())[0].Runways[0].MagHeading, 70);
}

TEST(WorldImport, ReadsAFileThatIsNamedTwiceOnce)
{
    const TemporaryFolder folder;
    WorldImport import = SampleImport(folder.Path());
    const auto once = ImportWorld(import, TenDegrees());
    import.Airspaces.push_back(Samples / ".." / Samples.filename() / "airspaces.openair");
    const auto twice = ImportWorld(import, TenDegrees());
    ASSERT_TRUE(once && twice);
    EXPECT_EQ(twice->Records.Airspaces, once->Records.Airspaces);
}

struct FailureCase {
    const char* Name;
    std::function<void(WorldImport&, const TemporaryFolder&)> Spoil;
    const char* Why;
};
class FailedWorldImport : public testing::TestWithParam<FailureCase> {};

TEST_P(FailedWorldImport, LeavesTheOldDatabaseWhole)
{
    const TemporaryFolder folder;
    WorldImport import = SampleImport(folder.Path() / "app");
    ASSERT_TRUE(ImportWorld(import, TenDegrees()));
    GetParam().Spoil(import, folder);
    const auto before = ContentOf(folder.Path() / "app");
    const Result<WorldImportCounts> counts = ImportWorld(import, TenDegrees());
    ASSERT_FALSE(counts);
    EXPECT_THAT(counts.error().Text(), testing::HasSubstr(GetParam().Why));
    EXPECT_EQ(ContentOf(folder.Path() / "app"), before);

    import.AppFolder = folder.Path() / "fresh" / "app";
    EXPECT_FALSE(ImportWorld(import, TenDegrees()));
    EXPECT_FALSE(fs::exists(folder.Path() / "fresh"));
}

INSTANTIATE_TEST_SUITE_P(
    World, FailedWorldImport,
    testing::Values(
        FailureCase{"NoSuchFile",
                    [](WorldImport& import, const TemporaryFolder&) { import.AptDat = "/nowhere/apt.dat"; },
                    "/nowhere/apt.dat: "},
        FailureCase{"OtherKind", [](WorldImport& import, const TemporaryFolder&) { import.AptDat = import.NavDat; },
                    "holds no airport"},
        FailureCase{"LastFileWrong",
                    [](WorldImport& import, const TemporaryFolder& folder) {
                        import.Airspaces.push_back(folder.Write("notes.txt", std::string("no airspace\n")));
                    },
                    "notes.txt: holds no airspace"},
        FailureCase{"Folder", [](WorldImport& import, const TemporaryFolder& folder) { import.NavDat = folder.Path(); },
                    "is not a file"}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(WorldImport, EndsWhenItIsTold)
{
    const TemporaryFolder folder;
    WorldImportCallbacks callbacks;
    callbacks.Progress = [](const WorldImportProgress& progress) { return progress.Done < 0.1; };
    const Result<WorldImportCounts> counts = ImportWorld(SampleImport(folder.Path()), TenDegrees(), callbacks);
    ASSERT_FALSE(counts);
    EXPECT_EQ(counts.error().Why, "the import was interrupted");
    EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST(WorldImport, LeavesNoDatabaseWhereTheNewOneCannotTakeItsPlace)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(ImportWorld(SampleImport(folder.Path()), TenDegrees()));
    fs::remove(folder.Path() / NdbsFileName);
    folder.Write(fs::path(NdbsFileName) / "in the way", std::string("x")); // a folder of the file's name
    ASSERT_FALSE(ImportWorld(SampleImport(folder.Path()), TenDegrees()));
    for (const std::string_view name : DataFileNames())
        EXPECT_FALSE(fs::is_regular_file(folder.Path() / name)) << name;
}

TEST(FlightGearFiles, AreFoundPackedOrPlain)
{
    const TemporaryFolder folder;
    const fs::path apt = folder.Write("Airports/apt.dat", std::string("x"));
    EXPECT_EQ(FilesOfFlightGear(folder.Path()).AptDat, apt);
    const fs::path packed = folder.Write("Airports/apt.dat.gz", std::string("x"));
    EXPECT_EQ(FilesOfFlightGear(folder.Path()).AptDat, packed);
    EXPECT_TRUE(FilesOfFlightGear(folder.Path()).NavDat.empty());
}
} // namespace
} // namespace corvane
