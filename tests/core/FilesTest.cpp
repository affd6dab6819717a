#include "core/AtomicFile.h"
#include "core/File.h"
#include "core/MagVarGrid.h"
#include "core/PathLookup.h"
#include "core/SimulatorFolder.h"
#include "tests/core/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>

namespace corvane {
namespace {
TEST(PathLookup, FindsAnySpelling)
{
    const TemporaryFolder folder;
    folder.Write("Fs2002/Scenery/MagDec.BGL", std::string("x"));
    const std::string root = folder.Path().string();
    const auto expected = folder.Path() / "Fs2002/Scenery/MagDec.BGL";
    for (const char* written :
         {"\\fs2002\\scenery\\magdec.bgl", "/Fs2002/Scenery/MagDec.BGL", "\\FS2002//scenery/\\MAGDEC.bgl"})
        EXPECT_EQ(FindPath({}, root + written), expected) << written;
    for (const char* written : {"fs2002\\scenery\\magdec.bgl", "FS2002/missing\\..\\.\\SCENERY/magdec.bgl",
                                "..\\..\\FS2002\\scenery\\magdec.bgl"})
        EXPECT_EQ(FindPath(folder.Path() / (written[0] == '.' ? "a/b" : ""), written), expected) << written;
    EXPECT_EQ(FindPath({}, root + "\\fs2002\\scenery\\magdec"), std::nullopt);
    EXPECT_EQ(FindPath({}, ""), std::nullopt);
    EXPECT_EQ(FindPath({}, "."), ".");
    EXPECT_EQ(FindPath("/", "..\\..\\" + root), folder.Path()) << "nothing is above the root";
}

TEST(PathLookup, TriesEverySpellingOfAFolder)
{
    const TemporaryFolder folder;
    folder.Write("area/other.bgl", std::string("x"));
    folder.Write("Area/wanted.bgl", std::string("x"));
    EXPECT_EQ(FindPath(folder.Path(), "area\\WANTED.BGL"), folder.Path() / "Area/wanted.bgl");
    EXPECT_EQ(FindPath(folder.Path(), "area"), folder.Path() / "area"); // the exact one comes first
}

TEST(PathLookup, ReadsEachFolderOnceAndGivesUpAmongLinksWithoutEnd)
{
    const TemporaryFolder folder;
    folder.Write("one/file", std::string("x"));
    PathFinder finder;
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(finder.Find(folder.Path(), "ONE\\missing" + std::to_string(i)), std::nullopt);
    EXPECT_EQ(finder.Listings(), 2U);

    std::string written = "missing";
    for (int i = 0; i < 30; ++i)
        written = (i % 2 == 0 ? "LOOP\\" : "Area\\..\\loop\\") + written;
    for (const char* link : {"loop", "Loop", "lOOP"})
        std::filesystem::create_directory_symlink(".", folder.Path() / link);
    const std::size_t before = finder.Tries();
    EXPECT_EQ(PathFinder().Find(folder.Path(), written), std::nullopt);
    EXPECT_EQ(finder.Find(folder.Path(), written), std::nullopt);
    EXPECT_LE(finder.Tries() - before, PathFinder::MostTries(written.size()));
}

TEST(SimulatorFolder, KeepsWhatTheSettingsCannotHold)
{
    const TemporaryFolder folder;
    folder.Write("S\u00e3o/sim/a", std::string("x"));
    folder.Write("\u017c\u00f3\u0142w/sim/a", std::string("x"));
    const std::string held = folder.Path().string() + "/s\u00e3O/SIM";
    const auto typed = FolderAsTyped(held);
    ASSERT_TRUE(typed);
    EXPECT_EQ(typed->Text, folder.Path().string() + "/s\xe3O/SIM");
    EXPECT_EQ(typed->Path, folder.Path() / "S\u00e3o/sim");
    EXPECT_EQ(FolderOfSettings(typed->Text, "nowhere").Path, typed->Path);

    const std::filesystem::path turtle = folder.Path() / "\u017c\u00f3\u0142w";
    EXPECT_FALSE(FolderAsTyped((turtle / "sim").string()));
    EXPECT_EQ(TypedPath((turtle / "SIM").string()), turtle / "sim");
    const SimulatorFolder beside = FolderBeside(turtle, "sim");
    EXPECT_EQ(beside.Text, "sim");
    EXPECT_EQ(beside.Path, turtle / "sim");
    EXPECT_EQ(FolderOfSettings(beside.Text, turtle).Path, beside.Path);
}

TEST(File, ErrorsNameTheWholePath)
{
    const TemporaryFolder folder;
    const auto missing = ReadWholeFile(folder.Path() / "none.dat");
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().What, (folder.Path() / "none.dat").string());
    EXPECT_FALSE(ReadWholeFile(folder.Path())) << "a folder is no file";
}

TEST(File, AtomicWriteReplacesOrLeaves)
{
    const TemporaryFolder folder;
    const auto path = folder.Write("kept.tcs", std::string("old"));
    const Bytes fresh = {'n', 'e', 'w', '!'};
    ASSERT_TRUE(WriteFileAtomically(path, fresh));
    EXPECT_EQ(ReadWholeFile(path)->Size(), 4U);
    const auto failed = WriteFileAtomically(folder.Path() / "nowhere" / "x.tcs", fresh);
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().What, (folder.Path() / "nowhere/x.tcs").string());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1) << "no temporary file is left";
}

/// A magdec.bgl whose grid stands at offset 200 and holds one value in every cell.
Bytes Magdec(std::int32_t gridOffset, std::int16_t value)
{
    Bytes bytes(110, 0);
    ByteWriter out(bytes);
    out.WriteI32(gridOffset);
    out.WriteZeros(208 - bytes.size());
    for (std::size_t i = 0; i < MagVarGrid::CellCount; ++i)
        out.WriteI16(value);
    return bytes;
}

TEST(MagVarGrid, IsFilledFromTheGridOffset)
{
    const auto grid = std::make_unique<MagVarGrid>();
    Bytes bytes = Magdec(200, 0);
    bytes[208 + 2 * (122 + 181 * 238)] = 0x1C; // 32 north, 122 west: 1820 units
    bytes[208 + 2 * (122 + 181 * 238) + 1] = 0x07;
    bytes[208] = 0xFF; // the south pole on the prime meridian: -1 unit
    bytes[209] = 0xFF;
    ASSERT_TRUE(FillMagVarGrid(*grid, bytes));
    EXPECT_EQ(grid->Values[0], -1);
    EXPECT_EQ(grid->Values[238 * 181 + 122], 1820);
    EXPECT_EQ(grid->VariationAt({32, -122}), 9);     // 9.9975 degrees, truncated
    EXPECT_EQ(grid->VariationAt({31.5, -121.5}), 9); // halves go to the even degree
    EXPECT_EQ(grid->VariationAt({32.5, -122.5}), 9);
    EXPECT_EQ(grid->VariationAt({33, -122}), 0);
}

TEST(MagVarGrid, TruncatesTowardZeroAndKnowsItsEdges)
{
    const auto grid = std::make_unique<MagVarGrid>();
    grid->Values.fill(-1000);
    EXPECT_EQ(grid->VariationAt({90, 179}), -5); // -5.49
    EXPECT_EQ(grid->VariationAt({90, -0.6}), -5);
    EXPECT_EQ(grid->VariationAt({-91, 0}), std::nullopt);
    EXPECT_EQ(grid->VariationAt({0, 1e12}), std::nullopt);
    EXPECT_EQ(grid->VariationAt({std::nan(""), 0}), std::nullopt);
}

TEST(MagVarGrid, SurvivesShortAndEmptyFiles)
{
    const auto grid = std::make_unique<MagVarGrid>();
    grid->Values.fill(7);
    EXPECT_FALSE(FillMagVarGrid(*grid, Magdec(0, 1)));
    EXPECT_FALSE(FillMagVarGrid(*grid, {}));
    EXPECT_EQ(grid->Values[5], 7);
    const Bytes bytes = Magdec(200, 3);
    ASSERT_TRUE(FillMagVarGrid(*grid, ByteSpan(bytes).first(208 + 4)));
    EXPECT_EQ(grid->Values[1], 3);
    EXPECT_EQ(grid->Values[2], 0) << "the missing part reads as zero";
}

TEST(MagVarGrid, IsReadFromTheSimulatorsFolder)
{
    const TemporaryFolder folder;
    folder.Write("Scenery/MAGDEC.bgl", Magdec(200, 182));
    const auto grid = std::make_unique<MagVarGrid>();
    ReadMagVarGrid(*grid, folder.Path());
    EXPECT_EQ(grid->Values[100], 182);
    std::filesystem::create_directories(folder.Path() / "other/scenery/magdec.bgl"); // a folder cannot be read
    for (const char* name : {"missing", "other"})
        ReadMagVarGrid(*grid, folder.Path() / name);
    EXPECT_EQ(grid->Values[100], 182) << "what is absent or unreadable changes nothing";
}
} // namespace
} // namespace corvane
