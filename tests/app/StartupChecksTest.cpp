#include "app/StartupChecks.h"

#include "core/DatabaseFiles.h"
#include "tests/app/AppFixture.h"

namespace corvane {
class StartupChecks : public AppTest {};

TEST_F(StartupChecks, GoOnWithACompleteDatabase)
{
    WriteDataFiles();
    State.DatabaseMissing = true;
    EXPECT_EQ(RunStartupChecks(State), StartupDecision::Chooser);
    EXPECT_FALSE(State.DatabaseMissing);
    EXPECT_EQ(State.Settings.VorCount, 7);
    EXPECT_EQ(FileCount(), 5U);
}

TEST_F(StartupChecks, StartOverInSilenceWhicheverFileIsMissing)
{
    for (const std::string_view missing : DataFileNames()) {
        WriteDataFiles();
        Write("world.map");
        std::filesystem::remove(State.AppFolder / missing);
        State.DatabaseMissing = false;
        EXPECT_EQ(RunStartupChecks(State), StartupDecision::SetUp) << missing;
        EXPECT_TRUE(State.DatabaseMissing);
        EXPECT_EQ(FileCount(), 1U) << "only the map is left";
    }
}

TEST_F(StartupChecks, StartOverWithAMessageAfterSettingsOfAnotherKind)
{
    using namespace std::string_view_literals;
    const std::vector<std::string_view> unusable = {"\x13\0Corvane Version 2.0\1\1"sv,
                                                    "\x12\0Corvane Version 3."sv,
                                                    "\x14\0Corvane Version 3.0b"sv,
                                                    "\x13\0corvane version 3.0"sv,
                                                    "\xff\xff"sv,
                                                    ""sv,
                                                    "\x13\0Corvane Version 3.0\1\1"sv}; // this version, cut short
    for (const std::string_view content : unusable) {
        WriteDataFiles();
        Write(SettingsFileName, content);
        EXPECT_EQ(RunStartupChecks(State), StartupDecision::SetUpAfterUpdateMessage) << content;
        EXPECT_TRUE(State.DatabaseMissing);
        EXPECT_EQ(FileCount(), 0U);
    }
}

TEST_F(StartupChecks, PassOverWhatCannotBeDeleted)
{
    Write(std::filesystem::path(AirportsFileName) / "inside"); // a folder with content where the file should be
    Write(VorsFileName);
    EXPECT_EQ(RunStartupChecks(State), StartupDecision::SetUp);
    EXPECT_FALSE(Has(VorsFileName));
}

TEST(AppFolder, LosesOneTrailingSeparator)
{
    EXPECT_EQ(AppFolderFromText("C:\\"), "C:");
    EXPECT_EQ(AppFolderFromText("/home/atc/"), "/home/atc");
    EXPECT_EQ(AppFolderFromText("/home/atc"), "/home/atc");
    EXPECT_EQ(AppFolderFromText("/"), "/");
}
} // namespace corvane
