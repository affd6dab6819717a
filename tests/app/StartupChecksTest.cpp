#include "app/StartupChecks.h"

#include "core/DatabaseFiles.h"
#include "tests/app/AppFixture.h"
#include "tests/core/AsNobody.h"

namespace corvane {
class StartupChecks : public AppTest {};

TEST_F(StartupChecks, GoOnWithACompleteDatabase)
{
    WriteDataFiles();
    EXPECT_EQ(*RunStartupChecks(State), StartupDecision::Chooser);
    EXPECT_EQ(State.Settings.VorCount, 7);
    EXPECT_EQ(FileCount(), 5U);
}

TEST_F(StartupChecks, StartOverInSilenceWhicheverFileIsMissing)
{
    for (const std::string_view missing : DataFileNames()) {
        WriteDataFiles();
        Write("world.map");
        std::filesystem::remove(State.AppFolder / missing);
        EXPECT_EQ(*RunStartupChecks(State), StartupDecision::SetUp) << missing;
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
                                                    ""sv};
    for (const std::string_view content : unusable) {
        WriteDataFiles();
        Write(SettingsFileName, content);
        EXPECT_EQ(*RunStartupChecks(State), StartupDecision::SetUpAfterUpdateMessage) << content;
        EXPECT_EQ(FileCount(), 0U);
    }
}

TEST_F(StartupChecks, DeleteNothingWhereTheSettingsCannotBeRead)
{
    using namespace std::string_view_literals;
    const std::filesystem::path settings = State.AppFolder / SettingsFileName;
    const auto expectNothingLost = [&] {
        const auto decision = RunStartupChecks(State);
        ASSERT_FALSE(decision);
        EXPECT_EQ(decision.error().What, settings.string());
        EXPECT_EQ(FileCount(), 5U);
    };
    WriteDataFiles();
    Write(SettingsFileName, "\x13\0Corvane Version 3.0\1\1"sv); // this version, cut short
    expectNothingLost();
    std::filesystem::remove(settings);
    std::filesystem::create_directory(settings);
    expectNothingLost();
    std::filesystem::remove(settings);
    WriteDataFiles();
    std::filesystem::permissions(settings, std::filesystem::perms::none);
    AsNobody(State.AppFolder, expectNothingLost);
    std::filesystem::permissions(State.AppFolder, std::filesystem::perms::owner_all);
    AsNobody({}, [&] { EXPECT_FALSE(RunStartupChecks(State)) << "nobody may look into the folder"; });
    EXPECT_EQ(FileCount(), 5U);
}

TEST_F(StartupChecks, PassOverWhatCannotBeDeleted)
{
    Write(std::filesystem::path(AirportsFileName) / "inside"); // a folder with content where the file should be
    Write(VorsFileName);
    EXPECT_EQ(*RunStartupChecks(State), StartupDecision::SetUp);
    EXPECT_FALSE(Has(VorsFileName));
}

TEST(AppFolder, LosesOneTrailingSeparator)
{
    EXPECT_EQ(WithoutTrailingSeparator("C:\\"), "C:");
    EXPECT_EQ(WithoutTrailingSeparator("/home/\u017c\u00f3\u0142w/"), "/home/\u017c\u00f3\u0142w");
    EXPECT_EQ(WithoutTrailingSeparator("/home/atc"), "/home/atc");
    EXPECT_EQ(WithoutTrailingSeparator("/"), "/");
}
} // namespace corvane
