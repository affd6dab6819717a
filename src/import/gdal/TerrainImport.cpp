#include "core/AtomicFile.h"
#include "core/File.h"
#include "core/MapFiles.h"
#include "core/NumberText.h"
#include "core/Rounding.h"
#include "import/MapFolders.h"
#include "import/TerrainGrid.h"
#include "import/gdal/GdalImport.h"
#include "import/gdal/GdalSession.h"
#include "import/gdal/ImportFiles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gdal_priv.h>
#include <ogr_spatialref.h>
#include <optional>
#include <string_view>

namespace corvane {
static constexpr double UsSurveyFoot = 1200.0 / 3937;

namespace {
/// A rectangle of a grid's pixels.
struct PixelBox {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
};

/// Reads the elevations of one file piece by piece.
class TerrainReader {
public:
    TerrainReader(TerrainGrid& grid, TerrainCounts& counts, const std::filesystem::path& path)
        : m_grid(grid), m_counts(counts), m_path(path), m_file(FullName(path))
    {
    }

    Result<void> Read(FileProgress& progress);

private:
    Result<void> Open();
    [[nodiscard]] Result<void> CheckSize() const;
    [[nodiscard]] Result<void> CheckBand() const;
    Result<void> FindUnit();
    Result<void> ReadBox(const PixelBox& box, const ToWgs84& toWgs84);
    Result<void> AddRow(const PixelBox& box, int row, const ToWgs84& toWgs84);

    TerrainGrid& m_grid;
    TerrainCounts& m_counts;
    const std::filesystem::path& m_path;
    std::string m_file;
    DatasetHandle m_dataset;
    GDALRasterBand* m_band = nullptr;
    std::array<double, 6> m_transform{};
    double m_metresPerUnit = 1;
    std::vector<float> m_values;
    std::vector<std::uint8_t> m_mask; ///< 0: no data there; empty where all pixels have data
    std::vector<double> m_x;
    std::vector<double> m_y;
};
} // namespace

Result<void> TerrainReader::Open()
{
    Result<DatasetHandle> dataset = OpenRasterFile(m_path);
    if (!dataset)
        return dataset.error();
    m_dataset = std::move(*dataset);
    if (m_dataset->GetRasterCount() < 1)
        return Fail(m_file, "holds no grid of values");
    m_band = m_dataset->GetRasterBand(1);
    if (m_dataset->GetGeoTransform(m_transform.data()) != CE_None)
        return Fail(m_file, "does not say where on earth its grid lies");
    if (Result<void> fits = CheckSize(); !fits)
        return fits;
    if (Result<void> elevations = CheckBand(); !elevations)
        return elevations;
    return FindUnit();
}

/// A few bytes can claim more pixels than anyone would wait for.
Result<void> TerrainReader::CheckSize() const
{
    constexpr std::int64_t AlwaysAllowed = std::int64_t{1} << 28;
    constexpr std::int64_t PixelsPerByte = 16384; // more than compression makes of plains and seas
    std::error_code error;
    const auto bytes = static_cast<std::int64_t>(std::filesystem::file_size(m_path, error));
    const auto pixels = std::int64_t{m_band->GetXSize()} * m_band->GetYSize();
    if (!error && pixels > AlwaysAllowed && pixels / PixelsPerByte > bytes)
        return Fail(m_file, "claims " + NumberText(pixels) + " pixels in " + NumberText(bytes) + " bytes");
    return {};
}

Result<void> TerrainReader::CheckBand() const
{
    const GDALColorInterp colour = m_band->GetColorInterpretation();
    const bool picture = colour == GCI_PaletteIndex || (colour >= GCI_RedBand && colour <= GCI_BlueBand);
    if (picture || GDALDataTypeIsComplex(m_band->GetRasterDataType()) != 0)
        return Fail(m_file, "is a picture, not elevations");
    return {};
}

/// Metres to a unit of that name; nothing where the name is not known.
static std::optional<double> MetresPerUnit(std::string_view name)
{
    struct Unit {
        std::string_view Name;
        double Metres;
    };
    constexpr std::array<Unit, 12> Units = {{{"", 1},
                                             {"m", 1},
                                             {"metre", 1},
                                             {"meter", 1},
                                             {"metres", 1},
                                             {"meters", 1},
                                             {"ft", MetresPerFoot},
                                             {"foot", MetresPerFoot},
                                             {"feet", MetresPerFoot},
                                             {"us survey foot", UsSurveyFoot},
                                             {"ussurveyfoot", UsSurveyFoot},
                                             {"us-ft", UsSurveyFoot}}};
    std::string lower(name);
    std::ranges::transform(lower, lower.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    const auto* const found = std::ranges::find(Units, lower, &Unit::Name);
    return found == Units.end() ? std::nullopt : std::optional(found->Metres);
}

Result<void> TerrainReader::FindUnit()
{
    const std::string name = m_band->GetUnitType();
    const std::optional<double> metres = MetresPerUnit(name);
    if (!metres)
        return Fail(m_file, "gives values in \"" + name + "\", not in metres or feet");
    m_metresPerUnit = *metres;
    const OGRSpatialReference* const system = m_dataset->GetSpatialRef();
    if (name.empty() && system != nullptr && system->IsVertical() != 0)
        m_metresPerUnit = system->GetTargetLinearUnits("VERT_CS");
    return {};
}

Result<void> TerrainReader::Read(FileProgress& progress)
{
    constexpr int BoxSize = 512;
    if (Result<void> opened = Open(); !opened)
        return opened;
    const Result<ToWgs84> toWgs84 = ToWgs84::From(m_dataset->GetSpatialRef(), m_file);
    if (!toWgs84)
        return toWgs84.error();
    const std::int64_t before = m_counts.Samples;
    const int width = m_band->GetXSize();
    const int height = m_band->GetYSize();
    for (int top = 0; top < height; top += std::min(BoxSize, height - top)) {
        for (int left = 0; left < width; left += std::min(BoxSize, width - left)) {
            const PixelBox box{left, top, std::min(BoxSize, width - left), std::min(BoxSize, height - top)};
            Result<void> done = ReadBox(box, *toWgs84);
            if (done)
                done = progress.Note(std::int64_t{top} * width + std::int64_t{left} * box.Height,
                                     std::int64_t{width} * height);
            if (!done)
                return done;
        }
    }
    if (m_counts.Samples == before)
        return Fail(m_file, "holds no elevation");
    return {};
}

Result<void> TerrainReader::ReadBox(const PixelBox& box, const ToWgs84& toWgs84)
{
    const auto pixels = static_cast<std::size_t>(box.Width) * static_cast<std::size_t>(box.Height);
    m_values.resize(pixels);
    CPLErrorReset();
    CPLErr read = m_band->RasterIO(GF_Read, box.Left, box.Top, box.Width, box.Height, m_values.data(), box.Width,
                                   box.Height, GDT_Float32, 0, 0, nullptr);
    if (read == CE_None && (m_band->GetMaskFlags() & GMF_ALL_VALID) == 0) {
        m_mask.resize(pixels);
        read = m_band->GetMaskBand()->RasterIO(GF_Read, box.Left, box.Top, box.Width, box.Height, m_mask.data(),
                                               box.Width, box.Height, GDT_Byte, 0, 0, nullptr);
    }
    if (read != CE_None)
        return Fail(m_file, GdalSession::Reason("cannot be read to its end"));
    for (int row = 0; row < box.Height; ++row) {
        if (Result<void> added = AddRow(box, row, toWgs84); !added)
            return added;
    }
    return {};
}

/// Pixels are places by their middles.
Result<void> TerrainReader::AddRow(const PixelBox& box, int row, const ToWgs84& toWgs84)
{
    constexpr double LowestM = -500;
    constexpr double HighestM = 9000;
    const auto width = static_cast<std::size_t>(box.Width);
    m_x.resize(width);
    m_y.resize(width);
    const double pixelY = box.Top + row + 0.5;
    for (std::size_t i = 0; i < width; ++i) {
        const double pixelX = box.Left + static_cast<double>(i) + 0.5;
        m_x[i] = m_transform[0] + m_transform[1] * pixelX + m_transform[2] * pixelY;
        m_y[i] = m_transform[3] + m_transform[4] * pixelX + m_transform[5] * pixelY;
    }
    toWgs84.Apply(width, m_x.data(), m_y.data());
    const double scale = m_band->GetScale() * m_metresPerUnit;
    const double offset = m_band->GetOffset() * m_metresPerUnit;
    const std::size_t first = static_cast<std::size_t>(row) * width;
    for (std::size_t i = 0; i < width; ++i) {
        const double elevationM = static_cast<double>(m_values[first + i]) * scale + offset;
        const bool masked = !m_mask.empty() && m_mask[first + i] == 0;
        if (masked || std::isnan(m_x[i]) || !(elevationM >= LowestM && elevationM <= HighestM)) {
            ++m_counts.Voids;
            continue;
        }
        if (!HoldToWorld(m_x[i], m_y[i]))
            return Fail(m_file, "has a sample at latitude " + NumberText(m_y[i]) + ", longitude " + NumberText(m_x[i]));
        ++m_counts.Samples;
        if (!m_grid.Add({m_y[i], m_x[i]}, elevationM))
            return Fail(m_file, "brings more cells than fit in memory; larger cells may do");
    }
    return {};
}

static Result<void> WritePeaks(const TerrainGrid& grid, AtomicFile& out, TerrainCounts& counts)
{
    Bytes record;
    for (const TerrainGrid::Peak& peak : grid.Peaks()) {
        record.clear();
        AppendTerrainPoint(record, peak.Position, RoundTo<std::int32_t>(peak.ElevationM / MetresPerFoot));
        out.Write(record);
        ++counts.Points;
        counts.Bounds.Include(peak.Position);
    }
    return out.Commit();
}

Result<TerrainCounts> ImportTerrainThroughGdal(const TerrainImport& import, const ImportProgressCallback& progress)
{
    const GdalSession gdal;
    AtomicFile out(import.Out);
    TerrainGrid grid(import.EveryNm);
    TerrainCounts counts;
    Result<void> done = out.Open();
    if (done) {
        const Result<std::vector<std::filesystem::path>> files = TerrainFilesIn(import.Files);
        done = !files ? files.error()
                      : ReadEachFile(*files, import.Out, progress, [&](const auto& path, FileProgress& fileProgress) {
                            return TerrainReader(grid, counts, path).Read(fileProgress);
                        });
    }
    if (done)
        done = WritePeaks(grid, out, counts);
    if (!done)
        return done.error();
    return counts;
}
} // namespace corvane
