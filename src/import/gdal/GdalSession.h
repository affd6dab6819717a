#pragma once

#include "core/Result.h"

#include <filesystem>
#include <memory>
#include <string>

class GDALDataset;
class OGRCoordinateTransformation;
class OGRSpatialReference;

namespace corvane {
/// GDAL, set up for reading local files: it prints nothing, asks no network and writes nothing beside what it reads.
/// What it complains about meanwhile is kept. One at a time.
class GdalSession {
public:
    GdalSession();
    ~GdalSession();
    GdalSession(const GdalSession&) = delete;
    GdalSession& operator=(const GdalSession&) = delete;
    GdalSession(GdalSession&&) = delete;
    GdalSession& operator=(GdalSession&&) = delete;

    /// GDAL's last failure in one line, or otherwise where it gave no reason.
    [[nodiscard]] static std::string Reason(const char* otherwise);
};

struct CloseDataset {
    void operator()(GDALDataset* dataset) const noexcept;
};
using DatasetHandle = std::unique_ptr<GDALDataset, CloseDataset>;

/// Opens a regular file that holds lines or areas, or a grid of values.
Result<DatasetHandle> OpenVectorFile(const std::filesystem::path& path);
Result<DatasetHandle> OpenRasterFile(const std::filesystem::path& path);
/// Opens a file of named lists of values.
Result<DatasetHandle> OpenNetCdfFile(const std::filesystem::path& path);

/// Turns positions of a coordinate system into longitude and latitude on WGS 84.
class ToWgs84 {
public:
    /// system  may be null: degrees of WGS 84
    static Result<ToWgs84> From(const OGRSpatialReference* system, const std::string& fileName);
    ToWgs84(ToWgs84&& other) noexcept;
    ToWgs84& operator=(ToWgs84&& other) noexcept;
    ToWgs84(const ToWgs84&) = delete;
    ToWgs84& operator=(const ToWgs84&) = delete;
    ~ToWgs84();

    /// Turns count positions in place; x becomes the longitude, y the latitude. Positions that the system does not know
    /// become not-a-number.
    void Apply(std::size_t count, double* x, double* y) const;

private:
    explicit ToWgs84(std::unique_ptr<OGRCoordinateTransformation> transformation);

    std::unique_ptr<OGRCoordinateTransformation> m_transformation; ///< null: nothing to do
};

/// Brings a position of ToWgs84 into -90 .. 90 and -180 .. 180 degrees; false where it is none.
bool HoldToWorld(double& lon, double& lat) noexcept;
} // namespace corvane
