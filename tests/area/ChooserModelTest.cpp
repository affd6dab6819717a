#include "area/ChooserModel.h"

#include "core/AtomicFile.h"
#include "core/DatabaseFiles.h"
#include "core/RecordCodec.h"
#include "tests/core/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace corvane {
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {
class RecordedView final : public ChooserView {
public:
    void SetStatus(std::string_view status) override { Calls.emplace_back(status); }
    void SetProgress(int value, int maximum) override
    {
        Calls.push_back(std::to_string(value).append("/").append(std::to_string(maximum)));
    }
    void SetControlsEnabled(bool enabled) override { Calls.emplace_back(enabled ? "enable" : "disable"); }

    std::vector<std::string> Calls;
};
} // namespace

class Chooser : public testing::Test {
protected:
    void Write(std::string_view name, std::string_view content) const
    {
        ASSERT_TRUE(WriteFileAtomically(AppFolder / name, Bytes(content.begin(), content.end())));
    }
    /// An empty database.
    void WriteDataFiles() const
    {
        for (const std::string_view name : DatabaseFileNames())
            Write(name, {});
    }
    /// Airports KSEA and MPTO, one sector of two pieces.
    void WriteWorld()
    {
        WriteDataFiles();
        std::string airports;
        std::string airspaces;
        for (const char* icao : {"KSEA", "MPTO"}) {
            AirportRecord airport;
            airport.Name = "Field";
            airport.Icao = icao;
            Bytes record;
            EncodeAirport(record, airport, static_cast<std::int64_t>(airports.size()) + 1);
            airports.append(record.begin(), record.end());
        }
        for (int i = 0; i < 2; ++i) {
            AirspaceRecord airspace;
            airspace.ComName = "PANAMA FIR";
            airspace.Kind = HighSectorKind;
            airspace.North = 10 + i;
            airspace.West = -80;
            Bytes record;
            EncodeAirspace(record, airspace, static_cast<std::int64_t>(airspaces.size()) + 1);
            airspaces.append(record.begin(), record.end());
        }
        Write(AirportsFileName, airports);
        Write(AirspacesFileName, airspaces);
        Settings.AirspaceCount = 2;
    }

    TemporaryFolder Folder;
    std::filesystem::path AppFolder = Folder.Path();
    SettingsRecord Settings;
    bool RadarOpen = false;
    MagVarGrid MagVar;
    std::vector<AirspaceRecord> AllAirspaces;
    AreaModel Area;
    RecordedView View;
    ChooserModel Model{{AppFolder, Settings, RadarOpen, MagVar, AllAirspaces, Area}, View};
};

static const std::vector<std::string> OpeningCalls = {"disable",
                                                      "0/4",
                                                      "Reading Magnetic Devations...",
                                                      "1/4",
                                                      "Reading Airports...",
                                                      "2/4",
                                                      "Reading Airspaces...",
                                                      "3/4",
                                                      "0/4",
                                                      "enable",
                                                      "Done"};

TEST_F(Chooser, ReadsItsListsWhenItOpens)
{
    WriteWorld();
    EXPECT_TRUE(Model.Open());
    EXPECT_THAT(View.Calls, ElementsAreArray(OpeningCalls));
    EXPECT_THAT(Model.AirportEntries(), ElementsAre("KSEA - Field", "MPTO - Field"));
    EXPECT_THAT(Model.SectorEntries(), ElementsAre("PANAMA FIR"));
    EXPECT_EQ(AllAirspaces.size(), 2U);
}

TEST_F(Chooser, OpensWithWhatCanBeReadAndReportsTheRest)
{
    WriteDataFiles(); // an empty database
    EXPECT_TRUE(Model.Open());
    EXPECT_THAT(Model.AirportEntries(), IsEmpty());

    WriteWorld();
    Write(AirportsFileName, std::string("\1\0A\1\0B\1\0\0\0", 10) + std::string(16, '\0')); // leads back to itself
    const Result<void> opened = Model.Open();
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().What, (AppFolder / AirportsFileName).string());
    EXPECT_THAT(Model.SectorEntries(), ElementsAre("PANAMA FIR"));
    EXPECT_EQ(View.Calls.back(), "Done");
}

TEST_F(Chooser, WarnsOnceOfEachDatabaseFileThatEndsEarly)
{
    WriteWorld();
    Settings.AirspaceCount = 3;
    Settings.VorCount = 1;
    const auto warning = [&](std::string_view file) {
        return (AppFolder / file).string() + ": ends too early, so that records are missing; create the database again";
    };
    ASSERT_TRUE(Model.Open());
    EXPECT_EQ(Model.TakeWarning(), warning(AirspacesFileName));
    ASSERT_TRUE(Model.Open());
    EXPECT_EQ(Model.TakeWarning(), "");
    ASSERT_TRUE(Model.Load(ControlMode::Airport, "KSEA - Field"));
    EXPECT_EQ(Model.TakeWarning(), warning(VorsFileName));
}

TEST_F(Chooser, LoadsInsideAFrameAndHandsOver)
{
    WriteWorld();
    ASSERT_TRUE(Model.Open());
    View.Calls.clear();
    EXPECT_EQ(*Model.Load(ControlMode::Airport, "KSEA - Field"), ChooserNext::OpenConnection);
    ASSERT_EQ(View.Calls.size(), 2U + 8 * 2 + 3);
    EXPECT_THAT(std::span(View.Calls).first(4),
                ElementsAre("disable", "0/9", "Getting selected airport's information...", "1/9"));
    EXPECT_THAT(std::span(View.Calls).last(5),
                ElementsAre("Getting world's outlines...", "8/9", "0/9", "enable", "Done"));
    EXPECT_EQ(ChooserModel::MainWindowCaption(Area), "Corvane v3.0 - KSEA - Field");
    EXPECT_EQ(Model.Close(), ChooserNext::Stay) << "the connection window is open already";
}

TEST_F(Chooser, ShowsTheNewAreaWhileASessionGoesOn)
{
    WriteWorld();
    RadarOpen = true;
    ASSERT_TRUE(Model.Open());
    EXPECT_EQ(*Model.Load(ControlMode::Sector, "PANAMA FIR"), ChooserNext::ShowNewArea);
    EXPECT_EQ(Area.AreaMode, ControlMode::Sector);
    EXPECT_EQ(Area.AreaAirspaces.size(), 2U);
    EXPECT_THAT(AllAirspaces, IsEmpty());
}

TEST_F(Chooser, DoesNothingWithoutASelection)
{
    WriteWorld();
    ASSERT_TRUE(Model.Open());
    View.Calls.clear();
    EXPECT_EQ(*Model.Load(ControlMode::Airport, std::nullopt), ChooserNext::Stay);
    EXPECT_THAT(View.Calls, IsEmpty());
}

TEST_F(Chooser, KeepsTheOldAreaAndItsListsWhenALoadFails)
{
    WriteWorld();
    ASSERT_TRUE(Model.Open());
    Area.AreaName = "before";
    std::filesystem::remove(AppFolder / VorsFileName);
    const Result<ChooserNext> loaded = Model.Load(ControlMode::Airport, "KSEA - Field");
    ASSERT_FALSE(loaded);
    EXPECT_EQ(loaded.error().What, (AppFolder / VorsFileName).string());
    EXPECT_EQ(Area.AreaName, "before");
    EXPECT_EQ(AllAirspaces.size(), 2U);
    EXPECT_THAT(std::span(View.Calls).last(3), ElementsAre("0/9", "enable", "Done"));
    EXPECT_EQ(Model.Close(), ChooserNext::EndProgram);
}

TEST_F(Chooser, LeavesByExitOrFrame)
{
    for (const bool byFrame : {false, true}) {
        for (const bool radarOpen : {false, true}) {
            RadarOpen = radarOpen;
            AllAirspaces.resize(3);
            EXPECT_EQ(byFrame ? Model.Close() : Model.Exit(),
                      radarOpen ? ChooserNext::ReturnToRadar : ChooserNext::EndProgram);
            EXPECT_THAT(AllAirspaces, IsEmpty());
            EXPECT_EQ(View.Calls.back(), "Please wait...");
        }
    }
}
} // namespace corvane
