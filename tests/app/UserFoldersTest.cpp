#include "app/UserFolders.h"

#include "core/Settings.h"
#include "tests/core/TemporaryFolder.h"

namespace corvane {
namespace {
namespace fs = std::filesystem;

TEST(UserFolders, AreMadeWithAllFoldersAboveThem)
{
    const TemporaryFolder folder;
    const fs::path wanted = folder.Path() / "share/corvane";
    ASSERT_TRUE(PrepareUserFolder(wanted));
    EXPECT_TRUE(fs::is_directory(wanted));
    EXPECT_TRUE(PrepareUserFolder(wanted)); // a second start
}

TEST(UserFolders, ThatCannotBeMadeAreErrors)
{
    const TemporaryFolder folder;
    const fs::path file = folder.Write("file", std::string("in the way"));
    for (const fs::path& wanted : {fs::path(), file, file / "below"}) {
        EXPECT_FALSE(PrepareUserFolder(wanted)) << wanted;
        EXPECT_FALSE(PrepareDemonstration(wanted)) << wanted;
    }
}

TEST(UserFolders, HoldTheDemonstrationAndKeepIt)
{
    const TemporaryFolder folder;
    const fs::path demonstration = folder.Path() / "demo";
    const auto prepared = PrepareDemonstration(demonstration);
    ASSERT_TRUE(prepared) << prepared.error().Text();
    const auto settings = ReadSettings(demonstration / SettingsFileName);
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->AirportCount, 4612);
    EXPECT_TRUE(fs::exists(demonstration / "world.map"));

    fs::remove(demonstration / "world.map"); // the person's affair
    ASSERT_TRUE(PrepareDemonstration(demonstration));
    EXPECT_FALSE(fs::exists(demonstration / "world.map"));
}
} // namespace
} // namespace corvane
