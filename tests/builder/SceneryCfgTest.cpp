#include "builder/SceneryCfg.h"

#include "core/Text.h"
#include "tests/core/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;

struct CfgCase {
    const char* Name;
    std::string Content;
    std::vector<std::pair<std::string, std::string>> Areas; ///< Title, Local
};
class SceneryCfgs : public testing::TestWithParam<CfgCase> {};
TEST_P(SceneryCfgs, GiveTheirAreas)
{
    const auto areas = ParseSceneryCfg(GetParam().Content, "scenery.cfg");
    ASSERT_TRUE(areas);
    std::vector<std::pair<std::string, std::string>> found;
    for (const SceneryArea& area : *areas)
        found.emplace_back(area.Title, area.Local);
    EXPECT_EQ(found, GetParam().Areas);
}
INSTANTIATE_TEST_SUITE_P(
    Builder, SceneryCfgs,
    testing::Values(
        CfgCase{"Usual",
                "[General]\r\nTitle=No\r\n[Area.001]\r\nTitle=World\r\nLocal=Scenery\\World\r\nLayer=1\r\n\r\n"
                "[AREA.002]\r\ntitle=Two\r\nLOCAL=b\r\n",
                {{"World", "Scenery\\World"}, {"Two", "b"}}},
        CfgCase{"LoneLf",
                "[Area.001]\nTitle=World\nLocal=a\n[Area.002]\nTitle=Two\nLocal=b\n",
                {{"World", "a"}, {"Two", "b"}}},
        CfgCase{"LoneCr", "[Area.001]\rTitle=World\rLocal=a\r", {{"World", "a"}}},
        CfgCase{"LastLineWithoutEnd", "[Area.001]\r\nLocal=a", {{"", "a"}}},
        CfgCase{"BlankBeforeEquals", "[Area.001]\r\nTitle =x\r\nLocal = y\r\n", {{"", ""}}},
        CfgCase{"BlanksOfTheValueAreKept", "[Area.001]\r\nTitle= x \r\n", {{" x ", ""}}},
        CfgCase{"FirstSubstringMatchCounts", "[Area.001]\r\nSubTitle=x\r\nTitle=y\r\n", {{"x", ""}}},
        CfgCase{"GeneralEndsABlock",
                "[Area.001]\r\nTitle=A\r\n[General]\r\nLocal=no\r\n[Area.2]\r\nLocal=b\r\n",
                {{"A", ""}, {"", "b"}}},
        CfgCase{"IndentedHeaders", "  [Area.001] \r\nTitle=A\r\n [x]\r\nLocal=no\r\n", {{"A", ""}}},
        CfgCase{"NotHeaders", "x[Area.001]\r\nTitle=A\r\n[Area.002]x\r\n[Area.]3]\r\n", {}},
        CfgCase{"AreaInsideAName", "[my[area.1]\r\nTitle=A\r\n", {{"A", ""}}},
        // The search for the second line finds the first again, so the first block is what lies between: nothing.
        CfgCase{"RepeatedHeader", "\r\n[Area.1]\r\nTitle=A\r\n[Area.1]\r\nTitle=B\r\n", {{"", ""}, {"A", ""}}},
        CfgCase{"RepeatedHeaderAtTheStart", "[Area.1]\r\nTitle=A\r\n[Area.1]\r\nTitle=B\r\n", {{"", ""}, {"A", ""}}},
        // The second section line is found earlier, inside a value: the first block is as long as the way back is, 18
        // characters, and ends between CR and LF; the second runs from the value to the end.
        CfgCase{"NextHeaderInsideAValue",
                "Title=[Area.2] early\r\n[Area.1]\r\nTitle=A\r\n[Area.2]\r\nTitle=B\r\n",
                {{"A", ""}, {"A", ""}}},
        CfgCase{"Empty", "", {}}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(SceneryCfg, MissingFileIsAnErrorWithItsFullPath)
{
    const TemporaryFolder folder;
    const auto areas = ReadSceneryCfg(folder.Path() / "scenery.cfg");
    ASSERT_FALSE(areas);
    EXPECT_EQ(areas.error().What, (folder.Path() / "scenery.cfg").string());
}

TEST(SceneryCfg, RefusesAFileMadeToSearchForEver)
{
    // Every section line stands far behind the search position, to which the line after it leads back.
    std::string content = "x[d]x\r\n";
    std::string headers;
    for (int i = 0; i < 20000; ++i)
        headers += "[area." + std::to_string(i) + "]\r\n[d]\r\n";
    content += std::string(200000, ' ') + "\r\n" + headers;
    const auto areas = ParseSceneryCfg(content, "scenery.cfg");
    ASSERT_FALSE(areas);
    EXPECT_EQ(areas.error().Text(), "scenery.cfg: repeats its section lines over and over");
}

struct FolderCase {
    const char* Name;
    const char* Written;
    const char* Resolved; ///< behind the lower-cased simulator folder, or nullptr for none
    const char* OnDisk;
};
class SceneryFolders : public testing::TestWithParam<FolderCase> {};
TEST_P(SceneryFolders, AreFoundBelowTheSimulatorFolder)
{
    const TemporaryFolder disk;
    const std::filesystem::path fs = disk.Path() / "FS";
    std::filesystem::create_directories(disk.Path() / "fs/scenery/world"); // another folder of nearly that name
    std::filesystem::create_directories(fs / "Scenery/World/scenery");
    std::filesystem::create_directories(fs / "addons/Mine/Scenery");
    disk.Write("FS/file/scenery", std::string("not a folder"));
    std::vector<SceneryArea> areas = {{"T", GetParam().Written, {}}};
    ASSERT_TRUE(ResolveSceneryFolders(areas, {fs.string(), fs}));
    if (GetParam().Resolved == nullptr) {
        EXPECT_EQ(areas[0].Local, "");
    } else {
        EXPECT_EQ(areas[0].Local, ToLower(fs.string()) + GetParam().Resolved);
        EXPECT_EQ(areas[0].Folder, fs / GetParam().OnDisk);
    }
}
INSTANTIATE_TEST_SUITE_P(
    Builder, SceneryFolders,
    testing::Values(FolderCase{"Appended", "Scenery\\World", "\\scenery\\world\\scenery", "Scenery/World/scenery"},
                    FolderCase{"NotAppendedTwice", "ADDONS/mine/SCENERY", "\\addons\\mine\\scenery",
                               "addons/Mine/Scenery"},
                    FolderCase{"Trimmed", "  addons/mine ", "\\addons\\mine\\scenery", "addons/Mine/Scenery"},
                    FolderCase{"SceneryAlone", "Scenery", "\\scenery", "Scenery"},
                    FolderCase{"Missing", "nowhere", nullptr, ""}, FolderCase{"AFile", "file", nullptr, ""},
                    FolderCase{"OtherDrive", "C:\\addons", nullptr, ""}, FolderCase{"NoLocal", "", nullptr, ""}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(SceneryFolders, MayBeAbsolute)
{
    const TemporaryFolder disk;
    std::filesystem::create_directories(disk.Path() / "MyArea/scenery");
    std::vector<SceneryArea> areas = {{"T", (disk.Path() / "myarea").string(), {}}};
    ASSERT_TRUE(ResolveSceneryFolders(areas, {"nowhere", "nowhere"}));
    std::string expected = ToLower((disk.Path() / "MyArea/scenery").string());
    std::replace(expected.begin(), expected.end(), '/', '\\');
    EXPECT_EQ(areas[0].Local, expected);
    EXPECT_EQ(areas[0].Folder, disk.Path() / "MyArea/scenery");
}
} // namespace
} // namespace corvane
