#include "area/WorldOutlines.h"
#include "core/ByteSource.h"
#include "core/File.h"
#include "core/Geodesy.h"
#include "import/MapImport.h"
#include "tests/core/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

namespace corvane {
namespace {
namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

MATCHER_P2(At, lat, lon, "")
{
    return std::abs(arg.Lat - lat) < 1e-7 && std::abs(arg.Lon - lon) < 1e-7;
}
const auto PenUp = At(0, 0); // NOLINT(cppcoreguidelines-interfaces-global-init)

std::string Feature(const std::string& geometry)
{
    return R"({"type":"Feature","properties":{},"geometry":)" + geometry + "}";
}
std::string LineString(const std::string& coordinates)
{
    return Feature(R"({"type":"LineString","coordinates":)" + coordinates + "}");
}

class ImportedOutlines : public testing::Test {
protected:
    fs::path Write(const char* name, const std::string& content) { return m_folder.Write(name, content); }
    fs::path Out() { return m_folder.Path() / "world.map"; }

    /// What the area loads see of the written file, the whole world over.
    std::vector<OutlinePoint> ReadBack()
    {
        std::vector<OutlinePoint> points;
        const auto source = OpenFileSource(Out());
        EXPECT_TRUE(source && CutOutlines(**source, {90, -90, -180, 180}, points));
        // A window around the origin holds the entries that end the lines as well.
        std::vector<OutlinePoint> opened;
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            if (points[i] != OutlinePoint{} || points[i + 1] != OutlinePoint{})
                opened.push_back(points[i]);
        }
        return opened;
    }
    /// A data set of one layer with one line, in the metres of a projection, at 45 N 9 E and 46 N 9 E.
    fs::path WriteProjected(const char* driverName, const char* name)
    {
        GDALAllRegister();
        const fs::path path = m_folder.Path() / name;
        OGRSpatialReference utm;
        utm.SetWellKnownGeogCS("WGS84");
        utm.SetUTM(32, TRUE);
        GDALDataset* const data =
            GetGDALDriverManager()->GetDriverByName(driverName)->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr);
        OGRLayer* const layer = data->CreateLayer("coast", &utm, wkbLineString);
        OGRFeature feature(layer->GetLayerDefn());
        OGRLineString line;
        line.addPoint(500000, 4982950.40019); // the central meridian: metres along it times 0.9996
        line.addPoint(500000, 5094047.49208);
        feature.SetGeometry(&line);
        EXPECT_EQ(layer->CreateFeature(&feature), OGRERR_NONE);
        GDALClose(data);
        return path;
    }

    TemporaryFolder m_folder;
};

struct GeometryCase {
    const char* Name;
    std::string Geometry;
    std::vector<LatLon> Points; ///< (0, 0) opens a line
};
class ImportedGeometry : public ImportedOutlines, public testing::WithParamInterface<GeometryCase> {};

TEST_P(ImportedGeometry, BecomesLines)
{
    const fs::path file = Write("a.geojson", Feature(GetParam().Geometry));
    const auto counts = ImportOutlines({{file}, {}, Out()});
    ASSERT_TRUE(counts) << counts.error().Text();
    const auto points = ReadBack();
    ASSERT_EQ(points.size(), GetParam().Points.size());
    std::int64_t lines = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_THAT(points[i], At(GetParam().Points[i].Lat, GetParam().Points[i].Lon)) << i;
        lines += points[i] == OutlinePoint{} ? 1 : 0;
    }
    EXPECT_EQ(counts->Lines, lines);
    EXPECT_EQ(counts->Points + lines, static_cast<std::int64_t>(points.size()));
}

INSTANTIATE_TEST_SUITE_P(
    Import, ImportedGeometry,
    testing::Values(
        GeometryCase{"Line", R"({"type":"LineString","coordinates":[[-90,45],[-91,46]]})", {{}, {45, -90}, {46, -91}}},
        GeometryCase{"PolygonWithAHole",
                     R"({"type":"Polygon","coordinates":[[[1,1],[9,1],[9,9],[1,1]],[[4,2],[5,2],[5,3],[4,2]]]})",
                     {{}, {1, 1}, {1, 9}, {9, 9}, {1, 1}, {}, {2, 4}, {2, 5}, {3, 5}, {2, 4}}},
        GeometryCase{"MultiLine",
                     R"({"type":"MultiLineString","coordinates":[[[1,2],[3,4]],[[5,6],[7,8]]]})",
                     {{}, {2, 1}, {4, 3}, {}, {6, 5}, {8, 7}}},
        GeometryCase{"CollectionWithAPoint",
                     R"({"type":"GeometryCollection","geometries":[{"type":"Point","coordinates":[1,1]},)"
                     R"({"type":"LineString","coordinates":[[1,2],[3,4]]}]})",
                     {{}, {2, 1}, {4, 3}}},
        GeometryCase{"LongitudesBeyond180",
                     R"({"type":"LineString","coordinates":[[179,10],[181,11],[350,12]]})",
                     {{}, {10, 179}, {11, -179}, {12, -10}}},
        GeometryCase{"EdgesOfTheMapAreLeftOut",
                     R"({"type":"Polygon","coordinates":[[[-180,-80],[-90,-75],[0.5,-70],[180,-80],[180,-90],)"
                     R"([-180,-90],[-180,-80]]]})",
                     {{}, {-80, -180}, {-75, -90}, {-70, 0.5}, {-80, 180}}},
        GeometryCase{"TheOriginDoesNotEndTheLine",
                     R"({"type":"LineString","coordinates":[[-1,0],[0,0],[1,0]]})",
                     {{}, {0, -1}, {4.2e-8, 0}, {0, 1}}}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST_F(ImportedOutlines, OfAVertexOnTheEquatorNeverHaveLatitudeZero)
{
    ASSERT_TRUE(ImportOutlines({{Write("a.geojson", LineString("[[0,0],[10,0]]"))}, {}, Out()}));
    const auto points = ReadBack();
    ASSERT_EQ(points.size(), 3U);
    EXPECT_GT(points[1].Lat, 0);
    EXPECT_GT(points[2].Lat, 0);
}

TEST_F(ImportedOutlines, OfSeveralFilesAreMergedInTheirOrder)
{
    const fs::path a = Write("a.geojson", LineString("[[1,2],[3,4]]"));
    const fs::path b = Write("b.json", LineString("[[-5,60],[6,7],[8,9]]"));
    const auto counts = ImportOutlines({{b, a}, {}, Out()});
    ASSERT_TRUE(counts) << counts.error().Text();
    EXPECT_EQ(counts->Lines, 2);
    EXPECT_EQ(counts->Points, 5);
    EXPECT_EQ(counts->Bounds, (MapBounds{2, -5, 60, 8}));
    EXPECT_THAT(ReadBack(), ElementsAre(PenUp, At(60, -5), At(7, 6), At(9, 8), PenUp, At(2, 1), At(4, 3)));
    EXPECT_EQ(fs::file_size(Out()), 8U * (5 + 2));
}

TEST_F(ImportedOutlines, OfProjectedShapefilesAndPackagesAreDegrees)
{
    for (const fs::path& file : {WriteProjected("ESRI Shapefile", "p.shp"), WriteProjected("GPKG", "p.gpkg")}) {
        const auto counts = ImportOutlines({{file}, {}, Out()});
        ASSERT_TRUE(counts) << counts.error().Text();
        EXPECT_THAT(ReadBack(), ElementsAre(PenUp, At(45, 9), At(46, 9))) << file;
    }
    fs::remove(m_folder.Path() / "p.shx"); // as some hand them on
    fs::remove(m_folder.Path() / "p.dbf");
    const auto counts = ImportOutlines({{m_folder.Path() / "p.shp"}, {}, Out()});
    ASSERT_TRUE(counts) << counts.error().Text();
    EXPECT_THAT(ReadBack(), ElementsAre(PenUp, At(45, 9), At(46, 9)));
    EXPECT_FALSE(fs::exists(m_folder.Path() / "p.shx"));
}

TEST_F(ImportedOutlines, TakeOnlyTheLayersAskedFor)
{
    const fs::path file = WriteProjected("GPKG", "p.gpkg");
    EXPECT_TRUE(ImportOutlines({{file}, {"rivers", "coast"}, Out()}));
    const auto none = ImportOutlines({{file}, {"rivers"}, Out()});
    ASSERT_FALSE(none);
    EXPECT_EQ(none.error().Why, "has no layer of that name");
}

struct BadCase {
    const char* Name;
    std::string File;
    std::string Content;
    const char* Why;
};
class BadOutlines : public ImportedOutlines, public testing::WithParamInterface<BadCase> {};

TEST_P(BadOutlines, AreAnErrorThatNamesTheFileAndLeavesTheOldMap)
{
    Write("world.map", "old");
    const fs::path good = Write("good.geojson", LineString("[[1,2],[3,4]]"));
    if (!GetParam().Content.empty())
        Write(GetParam().File.c_str(), GetParam().Content == "empty" ? "" : GetParam().Content);
    const auto counts = ImportOutlines({{good, m_folder.Path() / GetParam().File}, {}, Out()});
    ASSERT_FALSE(counts);
    EXPECT_EQ(counts.error().What, FullName(m_folder.Path() / GetParam().File));
    EXPECT_THAT(counts.error().Why, HasSubstr(GetParam().Why));
    EXPECT_EQ(fs::file_size(Out()), 3U);
    EXPECT_FALSE(fs::exists(Out().string() + ".part"));
}

INSTANTIATE_TEST_SUITE_P(
    Import, BadOutlines,
    testing::Values(BadCase{"Missing", "none.shp", "", "No such file"},
                    BadCase{"AFolder", ".", "", "holds neither GSHHG"},
                    BadCase{"Empty", "a.geojson", "empty", "is no map that can be read"},
                    BadCase{"NoMap", "a.txt", "Hello, world.", "is no map that can be read"},
                    BadCase{"CutOff", "a.geojson", LineString("[[1,2],[3,4").substr(0, 80), "GeoJSON"},
                    BadCase{"ShapefileOfZeros", "a.shp", std::string("\0\0\x27\x0a", 4) + std::string(96, '\0'),
                            "holds no lines and no areas"},
                    BadCase{"OnlyPoints", "a.geojson", Feature(R"({"type":"Point","coordinates":[1,2]})"),
                            "holds no lines and no areas"},
                    BadCase{"BeyondThePole", "a.geojson", LineString("[[5,45],[6,91.5]]"),
                            "has a vertex at latitude 91.5, longitude 6"},
                    BadCase{"MoreThanATurn", "a.geojson", LineString("[[-1e300,45],[6,7]]"), "has a vertex"},
                    BadCase{"TheMapItself", "world.map", "", "is to be read and written at once"}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST_F(ImportedOutlines, ThatCannotBeWrittenNameTheOutput)
{
    const fs::path out = m_folder.Path() / "no/such/folder/world.map";
    const auto counts = ImportOutlines({{Write("a.geojson", LineString("[[1,2],[3,4]]"))}, {}, out});
    ASSERT_FALSE(counts);
    EXPECT_EQ(counts.error().What, out.string());
}

TEST_F(ImportedOutlines, TellTheirProgressAndStopWhenAsked)
{
    std::string features;
    for (int i = 0; i < 256; ++i)
        features += (i == 0 ? "" : ",") + LineString("[[1,2],[3,4]]");
    const fs::path file = Write("a.geojson", R"({"type":"FeatureCollection","features":[)" + features + "]}");
    std::vector<double> done;
    const OutlineImport import{{file, file}, {}, Out()};
    ASSERT_TRUE(ImportOutlines(import, [&](const ImportProgress& progress) {
        EXPECT_EQ(progress.FileCount, 2U);
        done.push_back(progress.FilesDone);
        return true;
    }));
    EXPECT_THAT(done, ElementsAre(0, 0.25, 0.5, 0.75, 1, 1, 1.25, 1.5, 1.75, 2));

    fs::remove(Out());
    const auto stopped =
        ImportOutlines(import, [](const ImportProgress& progress) { return progress.FilesDone < 0.5; });
    ASSERT_FALSE(stopped);
    EXPECT_EQ(stopped.error().Text(), "import: interrupted; nothing was written");
    EXPECT_FALSE(fs::exists(Out()));
}
} // namespace
} // namespace corvane
