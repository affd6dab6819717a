#include "demo/DemoWorld.h"

#include "core/BglReader.h"
#include "core/File.h"
#include "tests/core/TemporaryFolder.h"
#include "tests/demo/WorldSized.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace corvane {
namespace fs = std::filesystem;

/// All files below a folder and what they hold.
static std::map<std::string, std::string> FilesOf(const fs::path& folder)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file())
            continue;
        const Result<FileBytes> bytes = ReadWholeFile(entry.path());
        EXPECT_TRUE(bytes);
        files[fs::relative(entry.path(), folder).string()] = std::string(bytes->Span().begin(), bytes->Span().end());
    }
    return files;
}

static DemoWorldOptions Options(const fs::path& outDir, int airports)
{
    return {outDir, DefaultDataFolder(), airports};
}

TEST(DemoWorld, SameOptionsGiveSameBytes)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(WriteDemoWorld(Options(folder.Path() / "a", 30)));
    const auto first = FilesOf(folder.Path());
    ASSERT_TRUE(WriteDemoWorld(Options(folder.Path() / "a", 30)));
    EXPECT_EQ(FilesOf(folder.Path()), first);
}

TEST(DemoWorld, ASmallerWorldLeavesNothingOfALargerOne)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(WriteDemoWorld(Options(folder.Path(), 10)));
    const auto small = FilesOf(folder.Path());
    ASSERT_TRUE(WriteDemoWorld(Options(folder.Path(), 100)));
    ASSERT_TRUE(WriteDemoWorld(Options(folder.Path(), 10)));
    EXPECT_EQ(FilesOf(folder.Path()), small);
}

TEST(DemoWorld, CountsAndProgress)
{
    const TemporaryFolder folder;
    WorldProgress last;
    const auto counts = WriteDemoWorld(Options(folder.Path(), 25), [&](const WorldProgress& p) {
        EXPECT_EQ(p.Done, last.Done + 1);
        last = p;
    });
    ASSERT_TRUE(counts) << counts.error().Text();
    EXPECT_EQ(last.Done, last.Total);
    EXPECT_EQ(counts->Airports, 25);
    EXPECT_EQ(counts->Vors, 25); // each of the first 500 airports has one of each
    EXPECT_EQ(counts->OutlinePoints, 60368 + 19614);
    EXPECT_EQ(counts->TerrainPoints, 21661);
    EXPECT_EQ(fs::file_size(folder.Path() / "world.map"), 8U * (60368 + 19614 + 1422 + 362));
    EXPECT_EQ(fs::file_size(folder.Path() / "world_terrain.db"), 20U * 21661);
    EXPECT_GE(counts->Parkings, 25 * 60);
}

TEST(DemoWorld, MagdecHoldsTheGridWhereReadersLookForIt)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(WriteDemoWorld(Options(folder.Path(), 1)));
    const Result<FileBytes> file = ReadWholeFile(folder.Path() / "fs2002/Scenery/Magdec.BGL");
    ASSERT_TRUE(file);
    BglReader bgl(file->Span());
    const std::int64_t grid = bgl.ReadI32(110) + 8;
    EXPECT_EQ(bgl.ReadI16(grid), -5739); // the first value of magvar.csv: the south pole
    EXPECT_EQ(grid + 2 * 65160, bgl.Size());
    for (const std::int64_t sectionWord : {0x12, 0x4E, 0x76})
        EXPECT_EQ(bgl.ReadI32(sectionWord), 0);
}

TEST(DemoWorld, FailuresNameThePathAndLeaveNothing)
{
    const TemporaryFolder folder;
    const fs::path file = folder.Write("taken", std::string("x"));
    const auto counts = WriteDemoWorld(Options(file / "world", 5));
    ASSERT_FALSE(counts);
    EXPECT_EQ(counts.error().What, file.string());
    EXPECT_EQ(FilesOf(folder.Path()).size(), 1U);

    fs::create_directories(folder.Path() / "half/world.map/in the way");
    const auto second = WriteDemoWorld(Options(folder.Path() / "half", 5));
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error().What, (folder.Path() / "half/world.map").string());
    EXPECT_FALSE(fs::exists(folder.Path() / "half/fs2002"));
}

TEST(DemoWorld, ForeignSimulatorFoldersAreLeftAlone)
{
    const TemporaryFolder folder;
    folder.Write("fs2002/fs2002.exe", std::string("MZ"));
    const auto counts = WriteDemoWorld(Options(folder.Path(), 5));
    ASSERT_FALSE(counts);
    EXPECT_EQ(counts.error().What, (folder.Path() / "fs2002").string());
    const auto sized = WriteWorldSizedFolder({folder.Path(), 20});
    EXPECT_FALSE(sized);
    EXPECT_EQ(FilesOf(folder.Path()).at("fs2002/fs2002.exe"), "MZ");
}

TEST(WorldSized, ScalesWithTheAirports)
{
    const TemporaryFolder folder;
    const auto counts = WriteWorldSizedFolder({folder.Path(), 200, 2500, 700});
    ASSERT_TRUE(counts) << counts.error().Text();
    EXPECT_EQ(counts->Airports, 200);
    EXPECT_EQ(counts->BglFiles, 30);
    EXPECT_GE(counts->TaxiPoints, 200 * 50);
    EXPECT_GE(counts->SceneryBytes, 30 * 50000);
    EXPECT_EQ(fs::file_size(folder.Path() / "world.map"), 8U * (2500 + 3)); // three polylines
    EXPECT_EQ(fs::file_size(folder.Path() / "world_terrain.db"), 20U * 700);
    const auto first = FilesOf(folder.Path());
    ASSERT_TRUE(WriteWorldSizedFolder({folder.Path(), 200, 2500, 700}));
    EXPECT_EQ(FilesOf(folder.Path()), first);
    EXPECT_FALSE(WriteWorldSizedFolder({folder.Path(), 0}));
}
} // namespace corvane
