#include "area/Terrain.h"
#include "core/ByteSource.h"
#include "import/MapImport.h"
#include "tests/core/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <gdal_priv.h>
#include <limits>
#include <ogr_spatialref.h>
#include <optional>

namespace corvane {
namespace {
namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

MATCHER_P3(At, lat, lon, elevationFt, "")
{
    return std::abs(arg.Lat - lat) < 1e-7 && std::abs(arg.Lon - lon) < 1e-7 && arg.ElevationFt == elevationFt;
}

/// A GeoTIFF of two rows of two pixels, a degree each unless said otherwise, its north-west corner at 48 N 8 E.
struct GridFile {
    std::vector<float> Values = {1, 2, 3, 4};
    std::optional<double> NoData = {};
    std::string Unit = {};
    double Scale = 1;
    double Offset = 0;
    std::array<double, 6> Transform = {8, 1, 0, 48, 0, -1};
    int Utm = 0; ///< zone; 0: degrees
    bool Placed = true;
    int Bands = 1;
    GDALColorInterp Colour = GCI_GrayIndex;
};

class ImportedTerrain : public testing::Test {
protected:
    fs::path Out() { return m_folder.Path() / "world_terrain.db"; }

    fs::path Write(const char* name, const GridFile& grid)
    {
        GDALAllRegister();
        const fs::path path = m_folder.Path() / name;
        GDALDataset* const data = GetGDALDriverManager()->GetDriverByName("GTiff")->Create(
            path.c_str(), 2, 2, grid.Bands, GDT_Float32, nullptr);
        OGRSpatialReference system;
        system.SetWellKnownGeogCS("WGS84");
        if (grid.Utm != 0)
            system.SetUTM(grid.Utm, TRUE);
        if (grid.Placed) {
            data->SetSpatialRef(&system);
            std::array<double, 6> transform = grid.Transform;
            data->SetGeoTransform(transform.data());
        }
        GDALRasterBand* const band = data->GetRasterBand(1);
        band->SetColorInterpretation(grid.Colour);
        if (grid.NoData)
            band->SetNoDataValue(*grid.NoData);
        if (!grid.Unit.empty())
            band->SetUnitType(grid.Unit.c_str());
        band->SetScale(grid.Scale);
        band->SetOffset(grid.Offset);
        std::vector<float> values = grid.Values;
        EXPECT_EQ(band->RasterIO(GF_Write, 0, 0, 2, 2, values.data(), 2, 2, GDT_Float32, 0, 0, nullptr), CE_None);
        GDALClose(data);
        return path;
    }
    /// A tile of 1201 x 1201 big-endian 16-bit elevations, all 10 m but for those given by row and column.
    fs::path WriteHgt(const char* name, const std::vector<std::array<int, 3>>& others)
    {
        constexpr std::size_t Side = 1201;
        std::vector<std::uint8_t> bytes(Side * Side * 2);
        const auto put = [&](std::size_t pixel, int metres) {
            bytes[pixel * 2] = static_cast<std::uint8_t>(static_cast<unsigned>(metres) >> 8);
            bytes[pixel * 2 + 1] = static_cast<std::uint8_t>(metres);
        };
        for (std::size_t pixel = 0; pixel < Side * Side; ++pixel)
            put(pixel, 10);
        for (const auto& [row, column, metres] : others)
            put(static_cast<std::size_t>(row) * Side + static_cast<std::size_t>(column), metres);
        return m_folder.Write(name, bytes);
    }
    /// What the area loads see of the written file.
    std::vector<TerrainPoint> ReadBack()
    {
        std::vector<TerrainPoint> points;
        const auto source = OpenFileSource(Out());
        EXPECT_TRUE(source && ReadTerrain(
                                  **source, [](LatLon) { return true; }, points));
        return points;
    }

    TemporaryFolder m_folder;
};

struct GridCase {
    const char* Name;
    GridFile Grid;
    std::vector<int> ElevationsFt; ///< of 46.5 N, then of 47.5 N, from west to east; voids left out
    std::int64_t Voids = 0;
};
class ImportedGrid : public ImportedTerrain, public testing::WithParamInterface<GridCase> {};

TEST_P(ImportedGrid, BecomesFeet)
{
    // Cells of 20 NM are smaller than the pixels: each pixel is a point of its own.
    const auto counts = ImportTerrain({{Write("a.tif", GetParam().Grid)}, Out(), 20});
    ASSERT_TRUE(counts) << counts.error().Text();
    std::vector<int> elevations;
    for (const TerrainPoint& point : ReadBack())
        elevations.push_back(point.ElevationFt);
    EXPECT_EQ(elevations, GetParam().ElevationsFt);
    EXPECT_EQ(counts->Voids, GetParam().Voids);
    EXPECT_EQ(counts->Samples, 4 - GetParam().Voids);
}

constexpr float NotANumber = std::numeric_limits<float>::quiet_NaN();
// 100 m are 328.08 ft, 1000 m 3280.84 ft, 8848 m 29028.87 ft, -430 m -1410.76 ft.
INSTANTIATE_TEST_SUITE_P(
    Import, ImportedGrid,
    testing::Values(GridCase{"MetresUnlessSaid", {.Values = {100, 1000, 8848, -430}}, {29029, -1411, 328, 3281}},
                    GridCase{"Metres", {.Values = {100, 0, 0, 0}, .Unit = "metre"}, {0, 0, 328, 0}},
                    GridCase{"Feet", {.Values = {100, 1000, 29029, -1411}, .Unit = "ft"}, {29029, -1411, 100, 1000}},
                    GridCase{"ScaleAndOffset",
                             {.Values = {0, 1, 2, 3}, .Scale = 100, .Offset = 100},
                             {984, 1312, 328, 656}}, // 300, 400, 100, 200 m
                    GridCase{"DeclaredVoid", {.Values = {77, 1, 2, 77}, .NoData = 77}, {7, 3}, 2},
                    GridCase{"UndeclaredVoids", {.Values = {-32768, -9999, 100, 3.4e38F}}, {328}, 3},
                    GridCase{"NotANumber", {.Values = {NotANumber, 100, 100, NotANumber}}, {328, 328}, 2}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST_F(ImportedTerrain, OfAnHgtTileIsTheHighestPointOfEachCell)
{
    // The tile's samples lie on its edges too: row 0 is at 48 N, column 0 at 8 E, every 3 seconds of arc.
    const fs::path tile =
        WriteHgt("N47E008.hgt", {{300, 600, 2000}, {301, 600, 1999}, {900, 60, 1500}, {0, 0, -32768}});
    const auto counts = ImportTerrain({{tile}, Out(), 30});
    ASSERT_TRUE(counts) << counts.error().Text();
    EXPECT_EQ(counts->Samples, 1201 * 1201 - 1);
    EXPECT_EQ(counts->Voids, 1);
    // Rows of half a degree of floor(720 cos middle) cells: 488 from 47 N on, with cell edges at 8.1148 and 8.8525 E;
    // 484 from 47.5 N on, edges at 8.1818 and 8.9256; the tile's northern edge begins a row of 479, edge at 8.6430. Of
    // a plain, a cell keeps the first sample.
    const double step = 1 / 1200.0; // of the tile's grid
    EXPECT_THAT(ReadBack(),
                ElementsAre(At(47.25, 8.05, 4921), At(47.5 - step, 8 + 138 * step, 33),
                            At(47.5 - step, 8 + 1023 * step, 33), At(48 - step, 8, 33), At(47.75, 8.5, 6562),
                            At(48 - step, 8 + 1111 * step, 33), At(48, 8 + step, 33), At(48, 8 + 772 * step, 33)));
}

TEST_F(ImportedTerrain, OfSeveralFilesKeepsTheHighestOfAll)
{
    const fs::path low = Write("low.tif", {.Values = {10, 20, 30, 40}});
    const fs::path high = Write("high.tif", {.Values = {11, 19, 31, 39}});
    const auto counts = ImportTerrain({{low, high}, Out(), 20});
    ASSERT_TRUE(counts) << counts.error().Text();
    EXPECT_EQ(counts->Samples, 8);
    EXPECT_EQ(counts->Bounds, (MapBounds{46.5, 8.5, 47.5, 9.5}));
    EXPECT_THAT(ReadBack(), ElementsAre(At(46.5, 8.5, 102), At(46.5, 9.5, 131), At(47.5, 8.5, 36), At(47.5, 9.5, 66)));
}

TEST_F(ImportedTerrain, OfAProjectedGridIsInDegrees)
{
    // The middle of the first pixel is on zone 32's central meridian, at the northing of 45 N.
    const GridFile grid{.Values = {500, 1, 1, 1}, .Transform = {499999.5, 1, 0, 4982950.90019, 0, -1}, .Utm = 32};
    ASSERT_TRUE(ImportTerrain({{Write("utm.tif", grid)}, Out(), 60}));
    EXPECT_THAT(ReadBack(), testing::Contains(At(45, 9, 1640)));
}

struct BadCase {
    const char* Name;
    std::string File;
    std::optional<GridFile> Grid;
    const char* Why;
};
class BadTerrain : public ImportedTerrain, public testing::WithParamInterface<BadCase> {};

TEST_P(BadTerrain, IsAnErrorThatNamesTheFileAndLeavesTheOldTerrain)
{
    m_folder.Write("world_terrain.db", std::string("old"));
    const fs::path good = Write("good.tif", {});
    m_folder.Write("empty.tif", std::string());
    m_folder.Write("text.hgt", std::string("Hello, world."));
    m_folder.Write("N47E008.hgt", std::string(1000, 'x'));
    if (GetParam().Grid)
        Write(GetParam().File.c_str(), *GetParam().Grid);
    const auto counts = ImportTerrain({{good, m_folder.Path() / GetParam().File}, Out(), 5});
    ASSERT_FALSE(counts);
    EXPECT_EQ(counts.error().What, (m_folder.Path() / GetParam().File).string());
    EXPECT_THAT(counts.error().Why, HasSubstr(GetParam().Why));
    EXPECT_EQ(fs::file_size(Out()), 3U);
    EXPECT_FALSE(fs::exists(Out().string() + ".part"));
}

INSTANTIATE_TEST_SUITE_P(
    Import, BadTerrain,
    testing::Values(BadCase{"Missing", "none.tif", {}, "No such file"},
                    BadCase{"Empty", "empty.tif", {}, "is no elevation grid"},
                    BadCase{"NoGrid", "text.hgt", {}, "is no elevation grid"},
                    BadCase{"ShortTile", "N47E008.hgt", {}, "is no elevation grid"},
                    BadCase{"Nowhere", "a.tif", GridFile{.Placed = false}, "does not say where on earth"},
                    BadCase{"AllVoid", "a.tif", GridFile{.Values = {7, 7, 7, 7}, .NoData = 7}, "holds no elevation"},
                    BadCase{"Temperatures", "a.tif", GridFile{.Unit = "K"}, "values in \"K\", not in metres or feet"},
                    BadCase{"APicture", "a.tif", GridFile{.Bands = 3, .Colour = GCI_RedBand}, "is a picture"},
                    BadCase{"BeyondThePole", "a.tif", GridFile{.Transform = {8, 1, 0, 91.5, 0, -1}},
                            "has a sample at latitude 91, longitude 8.5"}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST_F(ImportedTerrain, RefusesAFileThatClaimsMorePixelsThanItCanHold)
{
    GDALAllRegister();
    const fs::path path = m_folder.Path() / "huge.tif";
    char sparse[] = "SPARSE_OK=TRUE";
    char tiled[] = "TILED=YES";
    char blockX[] = "BLOCKXSIZE=16384";
    char blockY[] = "BLOCKYSIZE=16384";
    char* options[] = {sparse, tiled, blockX, blockY, nullptr};
    GDALDataset* const data =
        GetGDALDriverManager()->GetDriverByName("GTiff")->Create(path.c_str(), 1 << 21, 1 << 20, 1, GDT_Byte, options);
    ASSERT_NE(data, nullptr);
    double transform[6] = {8, 1e-6, 0, 48, 0, -1e-6};
    data->SetGeoTransform(transform);
    GDALClose(data);
    const auto counts = ImportTerrain({{path}, Out(), 5});
    ASSERT_FALSE(counts);
    EXPECT_THAT(counts.error().Why, HasSubstr("claims 2199023255552 pixels in "));
}
} // namespace
} // namespace corvane
