#include "core/AtomicFile.h"
#include "core/File.h"
#include "core/MapFiles.h"
#include "core/NumberText.h"
#include "import/MapFolders.h"
#include "import/OutlineEnds.h"
#include "import/gdal/GdalImport.h"
#include "import/gdal/GdalSession.h"
#include "import/gdal/GshhgFile.h"
#include "import/gdal/ImportFiles.h"

#include <algorithm>
#include <cmath>
#include <cpl_error.h>
#include <ogrsf_frmts.h>

namespace corvane {
namespace {
/// Takes the lines out of files and writes them.
class OutlineReader {
public:
    OutlineReader(AtomicFile& out, const OutlineImport& import)
        : m_out(out), m_layers(import.Layers), m_unbroken(import.Unbroken)
    {
    }

    Result<void> ReadFile(const std::filesystem::path& path, FileProgress& progress);
    [[nodiscard]] const OutlineCounts& Counts() const noexcept { return m_counts; }

private:
    [[nodiscard]] bool Wanted(OGRLayer& layer) const;
    Result<void> ReadLayer(OGRLayer& layer, FileProgress& progress);
    Result<void> AddGeometry(const OGRGeometry& geometry, const ToWgs84& toWgs84);
    Result<void> AddParts(const OGRGeometry& geometry, const ToWgs84& toWgs84);
    Result<void> AddCurve(const OGRSimpleCurve& curve, const ToWgs84& toWgs84);
    Result<void> ReadGshhgFile(const std::filesystem::path& path);
    void AddVertex(const LatLon& vertex);
    void EndLine();
    void AddLine(std::span<const LatLon> line);

    AtomicFile& m_out;
    const std::vector<std::string>& m_layers;
    bool m_unbroken;
    OutlineCounts m_counts;
    std::string m_file; ///< full name of the file at hand
    std::vector<double> m_x;
    std::vector<double> m_y;
    std::vector<LatLon> m_line;
    Bytes m_bytes;
};
} // namespace

bool OutlineReader::Wanted(OGRLayer& layer) const
{
    return m_layers.empty() || std::ranges::find(m_layers, layer.GetName()) != m_layers.end();
}

Result<void> OutlineReader::ReadFile(const std::filesystem::path& path, FileProgress& progress)
{
    m_file = FullName(path);
    if (IsNetCdf(path))
        return ReadGshhgFile(path);
    const Result<DatasetHandle> dataset = OpenVectorFile(path);
    if (!dataset)
        return dataset.error();
    const std::int64_t before = m_counts.Lines;
    std::vector<OGRLayer*> layers;
    for (OGRLayer* const layer : (*dataset)->GetLayers()) {
        if (Wanted(*layer))
            layers.push_back(layer);
    }
    if (layers.empty())
        return Fail(m_file, "has no layer of that name");
    for (std::size_t i = 0; i < layers.size(); ++i) {
        progress.Part(i, layers.size());
        if (Result<void> read = ReadLayer(*layers[i], progress); !read)
            return read;
    }
    if (m_counts.Lines == before)
        return Fail(m_file, "holds no lines and no areas");
    return {};
}

Result<void> OutlineReader::ReadGshhgFile(const std::filesystem::path& path)
{
    if (!m_layers.empty())
        return Fail(m_file, "has no layer of that name");
    const Result<std::vector<std::vector<LatLon>>> lines = ReadGshhg(path);
    if (!lines)
        return lines.error();
    for (const std::vector<LatLon>& line : *lines) {
        for (const LatLon& vertex : line)
            AddVertex(vertex);
        EndLine();
    }
    return m_out.Status();
}

Result<void> OutlineReader::ReadLayer(OGRLayer& layer, FileProgress& progress)
{
    constexpr std::int64_t FeaturesBetweenNotes = 64;
    const Result<ToWgs84> toWgs84 = ToWgs84::From(layer.GetSpatialRef(), m_file);
    if (!toWgs84)
        return toWgs84.error();
    const std::int64_t total = layer.GetFeatureCount();
    CPLErrorReset();
    std::int64_t done = 0;
    while (const auto feature = OGRFeatureUniquePtr(layer.GetNextFeature())) {
        if (const OGRGeometry* const geometry = feature->GetGeometryRef(); geometry != nullptr) {
            if (Result<void> added = AddGeometry(*geometry, *toWgs84); !added)
                return added;
        }
        if (++done % FeaturesBetweenNotes == 0) {
            if (Result<void> noted = progress.Note(done, total); !noted)
                return noted;
        }
    }
    if (CPLGetLastErrorType() >= CE_Failure) // otherwise the layer has simply come to its end
        return Fail(m_file, GdalSession::Reason("cannot be read to its end"));
    return m_out.Status();
}

Result<void> OutlineReader::AddGeometry(const OGRGeometry& geometry, const ToWgs84& toWgs84)
{
    if (geometry.IsEmpty() != 0)
        return {};
    if (geometry.hasCurveGeometry(TRUE) != 0) {
        const std::unique_ptr<OGRGeometry> straight(geometry.getLinearGeometry());
        return straight ? AddParts(*straight, toWgs84) : Result<void>();
    }
    return AddParts(geometry, toWgs84);
}

Result<void> OutlineReader::AddParts(const OGRGeometry& geometry, const ToWgs84& toWgs84)
{
    const auto addAll = [&](const auto& parts) -> Result<void> {
        for (const auto* part : parts) {
            if (Result<void> added = AddGeometry(*part, toWgs84); !added)
                return added;
        }
        return {};
    };
    switch (wkbFlatten(geometry.getGeometryType())) {
    case wkbLineString: return AddCurve(*geometry.toLineString(), toWgs84);
    case wkbTriangle:
    case wkbPolygon: return addAll(*geometry.toPolygon());
    case wkbPolyhedralSurface:
    case wkbTIN: return addAll(*geometry.toPolyhedralSurface());
    case wkbMultiLineString:
    case wkbMultiPolygon:
    case wkbGeometryCollection: return addAll(*geometry.toGeometryCollection());
    default: return {}; // points
    }
}

/// Whether a line between two positions is where a map of the world ends, rather than something on it.
static bool IsEdgeOfTheMap(const LatLon& a, const LatLon& b)
{
    return (std::abs(a.Lon) == 180 && std::abs(b.Lon) == 180) || (std::abs(a.Lat) == 90 && std::abs(b.Lat) == 90);
}

Result<void> OutlineReader::AddCurve(const OGRSimpleCurve& curve, const ToWgs84& toWgs84)
{
    const auto count = static_cast<std::size_t>(curve.getNumPoints());
    m_x.resize(count);
    m_y.resize(count);
    curve.getPoints(m_x.data(), sizeof(double), m_y.data(), sizeof(double));
    toWgs84.Apply(count, m_x.data(), m_y.data());
    m_line.clear(); // of a curve that failed
    for (std::size_t i = 0; i < count; ++i) {
        if (std::isnan(m_x[i])) { // the system does not reach there: the line has a gap
            EndLine();
            continue;
        }
        if (!HoldToWorld(m_x[i], m_y[i]))
            return Fail(m_file, "has a vertex at latitude " + NumberText(m_y[i]) + ", longitude " + NumberText(m_x[i]));
        AddVertex({m_y[i], m_x[i]});
    }
    EndLine();
    return {};
}

void OutlineReader::AddVertex(const LatLon& vertex)
{
    if (!m_line.empty() && IsEdgeOfTheMap(m_line.back(), vertex))
        EndLine();
    m_line.push_back(vertex);
}

void OutlineReader::EndLine()
{
    if (m_line.size() >= 2)
        AddLine(m_unbroken ? UnbrokenOutline(m_line) : m_line);
    m_line.clear();
}

void OutlineReader::AddLine(std::span<const LatLon> line)
{
    m_bytes.clear();
    AppendOutline(m_bytes, line);
    m_out.Write(m_bytes);
    ++m_counts.Lines;
    m_counts.Points += static_cast<std::int64_t>(line.size());
    for (const LatLon& vertex : line)
        m_counts.Bounds.Include(vertex);
}

Result<OutlineCounts> ImportOutlinesThroughGdal(const OutlineImport& import, const ImportProgressCallback& progress)
{
    const GdalSession gdal;
    AtomicFile out(import.Out);
    OutlineReader reader(out, import);
    Result<void> done = out.Open();
    if (done) {
        const Result<std::vector<std::filesystem::path>> files = OutlineFilesIn(import.Files);
        done = !files ? files.error()
                      : ReadEachFile(*files, import.Out, progress, [&](const auto& path, FileProgress& fileProgress) {
                            return reader.ReadFile(path, fileProgress);
                        });
    }
    if (done)
        done = out.Commit();
    if (!done)
        return done.error();
    return reader.Counts();
}
} // namespace corvane
