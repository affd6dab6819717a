#include "import/gdal/GshhgFile.h"

#include "core/File.h"
#include "import/MapImport.h"
#include "import/gdal/GdalSession.h"
#include "tests/core/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <gdal_priv.h>
#include <map>

namespace corvane {
namespace {
namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using Lists = std::map<std::string, std::vector<int>>;

/// Two bins of 180 degrees: the eastern half of the world, then the western one. 364 steps are about a degree.
Lists Coasts()
{
    const auto segment = [](int points, int level) { return points << 9 | level << 6; };
    return {
        {"Bin_size_in_minutes", {10800}},
        {"Id_of_first_segment_in_a_bin", {0, 3}},
        {"N_segments_in_a_bin", {3, 1}},
        {"Id_of_GSHHS_ID", {7, 8, 9, 7}},
        {"Embedded_npts_levels_exit_entry_for_a_segment", {segment(2, 1), segment(4, 2), segment(2, 6), segment(3, 1)}},
        {"Id_of_first_point_in_a_segment", {0, 2, 6, 8}},
        //  from 178 E to 180   | a lake            | grounded ice | from 180 by 177 W back to 180
        {"Relative_longitude_from_SW_corner_of_bin", {65171, 65535, 10, 20, 20, 10, 1, 2, 0, 1092, 0}},
        {"Relative_latitude_from_SW_corner_of_bin", {100, 100, 9, 9, 8, 9, 1, 1, 100, 150, 200}}};
}

fs::path WriteNetCdf(const TemporaryFolder& folder, const Lists& lists, const char* title = "Derived")
{
    const GdalSession session;
    const fs::path path = folder.Path() / "lines.nc";
    GDALDriver* const driver = GetGDALDriverManager()->GetDriverByName("netCDF");
    const DatasetHandle file(driver->CreateMultiDimensional(path.c_str(), nullptr, nullptr));
    const auto root = file->GetRootGroup();
    const auto attribute = root->CreateAttribute("title", {}, GDALExtendedDataType::CreateString());
    attribute->Write(title);
    for (const auto& [name, values] : lists) {
        const auto dimension = root->CreateDimension("of " + name, "", "", values.size());
        const auto array = root->CreateMDArray(name, {dimension}, GDALExtendedDataType::Create(GDT_Int32));
        const GUInt64 start = 0;
        const std::size_t count = values.size();
        array->Write(&start, &count, nullptr, nullptr, GDALExtendedDataType::Create(GDT_Int32), values.data());
    }
    return path;
}

class GshhgFile : public testing::Test {
protected:
    void SetUp() override
    {
        const GdalSession session;
        if (GetGDALDriverManager()->GetDriverByName("netCDF") == nullptr)
            GTEST_SKIP() << "this GDAL does not know netCDF";
    }
    TemporaryFolder m_folder;
};

TEST_F(GshhgFile, JoinsCoastsAcrossBinsAndParts180Degrees)
{
    const fs::path path = WriteNetCdf(m_folder, Coasts());
    const GdalSession session;
    const auto lines = ReadGshhg(path);
    ASSERT_TRUE(lines) << lines.error().Why;
    ASSERT_THAT(*lines, SizeIs(3)); // either side of 180 degrees, and the lake; no grounded ice
    constexpr double Step = 180.0 / 65535;
    EXPECT_THAT((*lines)[0], ElementsAre(LatLon{100 * Step - 90, 65171 * Step}, LatLon{100 * Step - 90, 180}));
    ASSERT_THAT((*lines)[1], SizeIs(3));
    EXPECT_EQ((*lines)[1][0], (LatLon{100 * Step - 90, -180}));
    EXPECT_NEAR((*lines)[1][1].Lon, -180 + 1092 * Step, 1e-9);
    EXPECT_EQ((*lines)[1][2].Lat, 200 * Step - 90);
    EXPECT_THAT((*lines)[2], SizeIs(4));
}

TEST_F(GshhgFile, TakesOfBordersThoseBetweenCountries)
{
    Lists borders = Coasts();
    borders.erase("Id_of_GSHHS_ID");
    borders["N_points_for_a_segment"] = {2, 4, 2, 3};
    borders["Hierarchial_level_of_a_segment"] = {2, 1, 3, 2};
    const fs::path path = WriteNetCdf(m_folder, borders, "Political boundaries");
    const GdalSession session;
    const auto lines = ReadGshhg(path);
    ASSERT_TRUE(lines) << lines.error().Why;
    EXPECT_THAT(*lines, ElementsAre(SizeIs(4)));
}

struct WrongList {
    const char* Name;
    const char* List;
    std::vector<int> Values;
    const char* Why;
};
class WrongGshhgFile : public GshhgFile, public testing::WithParamInterface<WrongList> {};

TEST_P(WrongGshhgFile, IsOneClearErrorAndLeavesTheMapAsItWas)
{
    Lists lists = Coasts();
    lists[GetParam().List] = GetParam().Values;
    const fs::path path = WriteNetCdf(m_folder, lists);
    const fs::path map = m_folder.Write("world.map", "old");
    const auto sizeBefore = fs::file_size(map);
    const auto counts = ImportOutlines({{path}, {}, map, true});
    ASSERT_FALSE(counts);
    EXPECT_EQ(counts.error().What, FullName(path));
    EXPECT_THAT(counts.error().Why, HasSubstr(GetParam().Why));
    EXPECT_EQ(fs::file_size(map), sizeBefore);
}

INSTANTIATE_TEST_SUITE_P(
    Import, WrongGshhgFile,
    testing::Values(
        WrongList{"BinOfNoSize", "Bin_size_in_minutes", {0}, "bins of 0 minutes"},
        WrongList{"BinThatDoesNotFit", "Bin_size_in_minutes", {7000}, "bins of 7000 minutes"},
        WrongList{"TooFewBins", "N_segments_in_a_bin", {4}, "has 1 values"},
        WrongList{"SegmentsBeyondTheEnd", "N_segments_in_a_bin", {3, 2}, "segments that are not there"},
        WrongList{"SegmentsTwice", "Id_of_first_segment_in_a_bin", {0, 0}, "does not begin"},
        WrongList{"PointsBeyondTheEnd", "Id_of_first_point_in_a_segment", {0, 2, 6, 9}, "points that are not"},
        WrongList{"PointsBeforeTheStart", "Id_of_first_point_in_a_segment", {-1, 2, 6, 8}, "points that are"},
        WrongList{"FewerLatitudes", "Relative_latitude_from_SW_corner_of_bin", {1, 2}, "has 2 values"}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST_F(GshhgFile, IsFoundInItsFolderWithItsBorders)
{
    const fs::path coasts = WriteNetCdf(m_folder, Coasts());
    const fs::path map = m_folder.Path() / "world.map";
    EXPECT_FALSE(ImportOutlines({{m_folder.Path()}, {}, map, false})); // not under that name
    fs::copy_file(coasts, m_folder.Path() / "binned_GSHHS_c.nc");
    fs::rename(coasts, m_folder.Path() / "binned_GSHHS_l.nc");
    const auto counts = ImportOutlines({{m_folder.Path()}, {}, map, false});
    ASSERT_TRUE(counts) << counts.error().Why;
    EXPECT_EQ(counts->Lines, 3); // of one resolution
}
} // namespace
} // namespace corvane
