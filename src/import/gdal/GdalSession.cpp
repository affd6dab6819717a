#include "import/gdal/GdalSession.h"

#include "core/File.h"
#include "core/Geodesy.h"
#include "core/OpenFile.h"
#include "core/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cpl_conv.h>
#include <cpl_error.h>
#include <cpl_vsi.h>
#include <gdal_priv.h>
#include <limits>
#include <ogr_spatialref.h>
#include <system_error>
#include <utility>
#include <vector>

namespace corvane {
GdalSession::GdalSession()
{
    constexpr std::int64_t BlockCacheBytes = std::int64_t{64} * 1024 * 1024;
    CPLPushErrorHandler(CPLQuietErrorHandler);
    GDALAllRegister();
    GDALSetCacheMax64(BlockCacheBytes);
    OSRSetPROJEnableNetwork(0);
    CPLSetThreadLocalConfigOption("SHAPE_RESTORE_SHX", "YES"); // of copies in memory: others have theirs
    CPLErrorReset();
}

GdalSession::~GdalSession()
{
    CPLSetThreadLocalConfigOption("SHAPE_RESTORE_SHX", nullptr);
    CPLPopErrorHandler();
}

std::string GdalSession::Reason(const char* otherwise)
{
    std::string reason = CPLGetLastErrorType() >= CE_Failure ? CPLGetLastErrorMsg() : "";
    std::replace(reason.begin(), reason.end(), '\n', ' ');
    while (!reason.empty() && (reason.back() == '.' || reason.back() == ' '))
        reason.pop_back();
    return reason.empty() ? otherwise : reason;
}

static constexpr const char* CopiesInMemory = "/vsimem/corvane"; // a folder of GDAL's own

void CloseDataset::operator()(GDALDataset* dataset) const noexcept
{
    GDALClose(dataset);
    VSIRmdirRecursive(CopiesInMemory);
}

static bool LacksIndex(const std::filesystem::path& shapefile)
{
    std::filesystem::path index = shapefile;
    return ToLower(shapefile.extension().string()) == ".shp" && !FileExists(index.replace_extension(".shx")) &&
           !FileExists(index.replace_extension(".SHX"));
}

/// Shapefiles are handed on without their index, which GDAL makes anew beside them: so beside a copy.
static Result<std::string> CopyInMemory(const std::filesystem::path& shapefile)
{
    const std::string copy = CopiesInMemory + ('/' + shapefile.stem().string());
    std::filesystem::path system = shapefile;
    if (FileExists(system.replace_extension(".prj")))
        CPLCopyFile((copy + ".prj").c_str(), FullName(system).c_str());
    CPLErrorReset();
    if (CPLCopyFile((copy + ".shp").c_str(), FullName(shapefile).c_str()) != 0)
        return Fail(FullName(shapefile), GdalSession::Reason("cannot be read"));
    return copy + ".shp";
}

/// Only drivers that read the file itself: others follow what it says to other files or over the network.
static Result<DatasetHandle> OpenLocalFile(const std::filesystem::path& path, unsigned kind, const char* const* drivers,
                                           const char* otherwise)
{
    if (const Result<void> regular = RequireRegularFile(path); !regular)
        return regular.error();
    const Result<std::string> name = LacksIndex(path) ? CopyInMemory(path) : Result(FullName(path));
    if (!name)
        return name.error();
    CPLErrorReset();
    DatasetHandle dataset(GDALDataset::Open(name->c_str(), kind | GDAL_OF_READONLY, drivers, nullptr, nullptr));
    if (dataset)
        return dataset;
    const std::string reason = GdalSession::Reason(otherwise); // no reason: no driver knows the file
    return Fail(FullName(path), reason.find(CopiesInMemory) == std::string::npos ? reason : otherwise);
}

Result<DatasetHandle> OpenVectorFile(const std::filesystem::path& path)
{
    constexpr std::array Drivers = {
        "ESRI Shapefile", "GeoJSON", "GeoJSONSeq", "TopoJSON",     "GPKG",
        "FlatGeobuf",     "KML",     "GPX",        "MapInfo File", static_cast<const char*>(nullptr)};
    return OpenLocalFile(path, GDAL_OF_VECTOR, Drivers.data(),
                         "is no map that can be read: a shapefile, GeoJSON or GPKG file");
}

Result<DatasetHandle> OpenRasterFile(const std::filesystem::path& path)
{
    constexpr std::array Drivers = {
        "GTiff", "SRTMHGT", "DTED", "AAIGrid", "EHdr", "USGSDEM", "HFA", "ENVI", static_cast<const char*>(nullptr)};
    return OpenLocalFile(
        path, GDAL_OF_RASTER, Drivers.data(),
        "is no elevation grid that can be read: a GeoTIFF file, or a whole HGT file named like N47E008.hgt");
}

Result<DatasetHandle> OpenNetCdfFile(const std::filesystem::path& path)
{
    constexpr std::array Drivers = {"netCDF", static_cast<const char*>(nullptr)};
    return OpenLocalFile(path, GDAL_OF_MULTIDIM_RASTER, Drivers.data(), "is no netCDF file that can be read");
}

ToWgs84::ToWgs84(std::unique_ptr<OGRCoordinateTransformation> transformation)
    : m_transformation(std::move(transformation))
{
}
ToWgs84::ToWgs84(ToWgs84&&) noexcept = default;
ToWgs84& ToWgs84::operator=(ToWgs84&&) noexcept = default;
ToWgs84::~ToWgs84() = default;

Result<ToWgs84> ToWgs84::From(const OGRSpatialReference* system, const std::string& fileName)
{
    if (system == nullptr || system->IsEmpty())
        return ToWgs84(nullptr);
    OGRSpatialReference wgs84;
    wgs84.importFromEPSG(4326);
    wgs84.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    OGRSpatialReference flat(*system);
    flat.StripVertical(); // elevations are not changed
    if (flat.IsSame(&wgs84) != 0)
        return ToWgs84(nullptr);
    CPLErrorReset();
    std::unique_ptr<OGRCoordinateTransformation> found(OGRCreateCoordinateTransformation(&flat, &wgs84));
    if (!found)
        return Fail(fileName, GdalSession::Reason("its coordinate system cannot be turned into WGS 84"));
    return ToWgs84(std::move(found));
}

void ToWgs84::Apply(std::size_t count, double* x, double* y) const
{
    if (!m_transformation || count == 0)
        return;
    std::vector<int> known(count);
    m_transformation->Transform(static_cast<int>(count), x, y, nullptr, nullptr, known.data());
    for (std::size_t i = 0; i < count; ++i) {
        if (known[i] == 0)
            x[i] = y[i] = std::numeric_limits<double>::quiet_NaN();
    }
}

bool HoldToWorld(double& lon, double& lat) noexcept
{
    constexpr double Tolerance = 1e-6; // what edges of the world miss by after a conversion
    if (!(std::abs(lat) <= 90 + Tolerance && std::abs(lon) <= 360 + Tolerance))
        return false;
    lat = std::clamp(lat, -90.0, 90.0);
    if (std::abs(lon) > 180)
        lon = std::clamp(std::abs(lon) <= 180 + Tolerance ? lon : NormalizeLongitude(lon), -180.0, 180.0);
    return true;
}
} // namespace corvane
