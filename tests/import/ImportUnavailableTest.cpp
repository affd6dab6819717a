#include "import/MapImport.h"
#include "tests/core/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {
TEST(ImportWithoutGdal, SaysSoAndWritesNothing)
{
    const TemporaryFolder folder;
    const auto outlines = ImportOutlines({{folder.Path() / "a.shp"}, {}, folder.Path() / "world.map"});
    const auto terrain = ImportTerrain({{folder.Path() / "a.tif"}, folder.Path() / "world_terrain.db"});
    ASSERT_FALSE(outlines);
    ASSERT_FALSE(terrain);
    EXPECT_EQ(outlines.error().What, "import outlines");
    EXPECT_THAT(outlines.error().Why, testing::HasSubstr("libgdal-dev"));
    EXPECT_EQ(terrain.error().What, "import terrain");
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}
} // namespace
} // namespace corvane
