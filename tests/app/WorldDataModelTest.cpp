#include "app/WorldDataModel.h"

#include "app/AppState.h"
#include "demo/DemoWorld.h"
#include "tests/core/TemporaryFolder.h"
#include "world/Credits.h"

#include <gmock/gmock.h>

#include <chrono>
#include <thread>

namespace corvane {
namespace {
WorldImport Samples(const std::filesystem::path& folder)
{
    WorldImport import;
    import.AptDat = std::filesystem::path(CORVANE_WORLD_DATA) / "apt.dat";
    import.AppFolder = folder;
    return import;
}

const Result<WorldImportCounts>& OutcomeOf(const WorldDataModel& job)
{
    while (job.Outcome() == nullptr)
        std::this_thread::sleep_for(std::chrono::milliseconds(1)); // as the window's timer does
    return *job.Outcome();
}

class WorldDataIn : public testing::TestWithParam<const char*> {};

TEST_P(WorldDataIn, IsADatabaseThatTheProgramGoesOnWith)
{
    const TemporaryFolder folder;
    const auto state = std::make_unique<AppState>();
    state->AppFolder = folder.Path() / GetParam();
    const WorldDataModel job(Samples(state->AppFolder), DefaultDataFolder());
    const Result<WorldImportCounts>& counts = OutcomeOf(job);
    ASSERT_TRUE(counts) << counts.error().Text();
    EXPECT_EQ(WorldDataText(*counts), "The database holds 7 airports, 0 VORs, 0 NDBs and 0 airspaces.");
    ASSERT_TRUE(UseNewDatabase(*state));
    EXPECT_EQ(state->Settings.AirportCount, 7);
    EXPECT_THAT(WorldDataCredits(*state), testing::HasSubstr("CC0"));

    state->Settings.FsPath = (folder.Path() / "fs2002").string(); // built of a simulator afterwards
    EXPECT_EQ(WorldDataCredits(*state), "");
}

INSTANTIATE_TEST_SUITE_P(App, WorldDataIn, testing::Values("world", "S\u00e3o", "\u017c\u00f3\u0142w"),
                         [](const auto& row) { return "Folder" + std::to_string(row.index); });

TEST(WorldDataModel, TellsWhyThereIsNone)
{
    const TemporaryFolder folder;
    const WorldDataModel job(Samples(folder.Path()), folder.Path());
    EXPECT_THAT(OutcomeOf(job).error().Text(), testing::HasSubstr("magvar.csv"));
}

TEST(WorldDataModel, LeftInTheMiddleLeavesNothing)
{
    const TemporaryFolder folder;
    std::string rows = "I\n1000 Version\n";
    for (int i = 0; i < 200000; ++i)
        rows += "1 0 0 0 A" + std::to_string(i) + " Name\n14 10 20\n";
    WorldImport import = Samples(folder.Path() / "app");
    import.AptDat = folder.Write("apt.dat", rows + "99\n");
    {
        const WorldDataModel job(import, DefaultDataFolder());
    }
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "app"));
}
} // namespace
} // namespace corvane
