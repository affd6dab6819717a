#include "import/gdal/GshhgFile.h"

#include "core/File.h"
#include "core/OpenFile.h"
#include "import/LineJoiner.h"
#include "import/gdal/GdalSession.h"

#include <array>
#include <cmath>
#include <cpl_error.h>
#include <fstream>
#include <gdal_priv.h>
#include <string>
#include <system_error>
#include <utility>

namespace corvane {
namespace fs = std::filesystem;

static constexpr std::int32_t StepsInBin = 65535;

namespace {
/// What the arrays of a file say, before anything of it is believed.
struct GshhgArrays {
    std::int32_t BinMinutes = 0;
    std::vector<std::int32_t> FirstSegment; ///< of each bin, as the next
    std::vector<std::int32_t> SegmentCount;
    std::vector<std::int32_t> Embedded; ///< of each segment of a coast: points, level and more in one number
    std::vector<std::int32_t> Polygon;
    std::vector<std::int32_t> PointCount; ///< of each segment of another kind, as the next
    std::vector<std::int32_t> Level;
    std::vector<std::int32_t> FirstPoint; ///< of each segment
    std::vector<std::int32_t> X;          ///< of each point
    std::vector<std::int32_t> Y;
};

class GshhgReader {
public:
    GshhgReader(std::string name, std::uint64_t fileSize, GDALGroup& root)
        : m_name(std::move(name)), m_fileSize(fileSize), m_root(root)
    {
    }
    Result<std::vector<std::vector<LatLon>>> Read();

private:
    Result<void> ReadArrays();
    Result<void> ReadArray(const char* name, std::vector<std::int32_t>& values, std::size_t expected = 0);
    Result<void> AddSegments();
    Result<void> AddSegment(std::size_t segment, std::int32_t column, std::int32_t row);
    [[nodiscard]] bool IsCoast() const noexcept { return !m_arrays.Embedded.empty(); }
    [[nodiscard]] bool Wanted(std::size_t segment) const noexcept;
    void AppendLine(const GridLine& grid, std::vector<std::vector<LatLon>>& lines) const;

    std::string m_name;
    std::uint64_t m_fileSize;
    GDALGroup& m_root;
    GshhgArrays m_arrays;
    std::int32_t m_columns = 0; ///< bins around the world; half as many from pole to pole
    bool m_isBorder = false;
    LineJoiner m_joiner;
};
} // namespace

bool IsNetCdf(const fs::path& path)
{
    std::array<char, 8> head{};
    std::ifstream file(path, std::ios::binary);
    file.read(head.data(), head.size());
    const std::string_view read(head.data(), static_cast<std::size_t>(file.gcount()));
    return read == std::string_view("\x89HDF\r\n\x1a\n", 8) || read.starts_with("CDF");
}

/// expected  how many values there must be; 0 for any number above 0
Result<void> GshhgReader::ReadArray(const char* name, std::vector<std::int32_t>& values, std::size_t expected)
{
    constexpr std::uint64_t MostValuesInByte = 4; // what packing can do
    const auto array = m_root.OpenMDArray(name);
    if (!array || array->GetDimensionCount() != 1)
        return Fail(m_name, "is no file of GSHHG: has no list " + std::string(name));
    std::size_t count = array->GetDimensions()[0]->GetSize();
    if (count == 0 || count > m_fileSize * MostValuesInByte || (expected != 0 && count != expected))
        return Fail(m_name, std::string(name) + " has " + std::to_string(count) + " values");
    values.resize(count);
    const GUInt64 start = 0;
    CPLErrorReset();
    if (!array->Read(&start, &count, nullptr, nullptr, GDALExtendedDataType::Create(GDT_Int32), values.data()))
        return Fail(m_name, GdalSession::Reason("cannot be read to its end"));
    return {};
}

Result<void> GshhgReader::ReadArrays()
{
    constexpr std::int32_t MinutesAround = 360 * 60;
    std::vector<std::int32_t> minutes;
    if (Result<void> read = ReadArray("Bin_size_in_minutes", minutes, 1); !read)
        return read;
    m_arrays.BinMinutes = minutes[0];
    if (minutes[0] < 30 || MinutesAround % (2 * minutes[0]) != 0)
        return Fail(m_name, "has bins of " + std::to_string(minutes[0]) + " minutes");
    m_columns = MinutesAround / minutes[0];
    const auto bins = static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_columns / 2);
    Result<void> read = ReadArray("Id_of_first_segment_in_a_bin", m_arrays.FirstSegment, bins);
    if (read)
        read = ReadArray("N_segments_in_a_bin", m_arrays.SegmentCount, bins);
    if (read)
        read = ReadArray("Id_of_first_point_in_a_segment", m_arrays.FirstPoint);
    const std::size_t segments = m_arrays.FirstPoint.size();
    if (read && m_root.OpenMDArray("Id_of_GSHHS_ID")) {
        read = ReadArray("Id_of_GSHHS_ID", m_arrays.Polygon, segments);
        if (read)
            read = ReadArray("Embedded_npts_levels_exit_entry_for_a_segment", m_arrays.Embedded, segments);
    } else if (read) {
        read = ReadArray("N_points_for_a_segment", m_arrays.PointCount, segments);
        if (read)
            read = ReadArray("Hierarchial_level_of_a_segment", m_arrays.Level, segments);
    }
    if (read)
        read = ReadArray("Relative_longitude_from_SW_corner_of_bin", m_arrays.X);
    if (read)
        read = ReadArray("Relative_latitude_from_SW_corner_of_bin", m_arrays.Y, m_arrays.X.size());
    const auto title = m_root.GetAttribute("title");
    const char* const text = title ? title->ReadAsString() : nullptr;
    m_isBorder = text != nullptr && std::string_view(text).starts_with("Political");
    return read;
}

bool GshhgReader::Wanted(std::size_t segment) const noexcept
{
    constexpr std::int32_t GroundedIce = 6; // Antarctica without its ice shelves, beside the one with them
    constexpr std::int32_t National = 1;
    if (IsCoast())
        return (m_arrays.Embedded[segment] >> 6 & 7) != GroundedIce;
    return !m_isBorder || m_arrays.Level[segment] == National;
}

Result<void> GshhgReader::AddSegment(std::size_t segment, std::int32_t column, std::int32_t row)
{
    const std::int64_t count = IsCoast() ? m_arrays.Embedded[segment] >> 9 : m_arrays.PointCount[segment];
    const std::int64_t first = m_arrays.FirstPoint[segment];
    if (first < 0 || count < 0 || first + count > static_cast<std::int64_t>(m_arrays.X.size()))
        return Fail(m_name, "segment " + std::to_string(segment) + " has points that are not there");
    if (count < 2)
        return {};
    GridLine piece;
    piece.reserve(static_cast<std::size_t>(count));
    for (std::int64_t i = first; i < first + count; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const std::int32_t x = column * StepsInBin + (m_arrays.X[at] & 0xFFFF); // stored without a sign
        piece.push_back({x, row * StepsInBin + (m_arrays.Y[at] & 0xFFFF)});
    }
    // The world's end and its beginning are one place for the ends of pieces, and nothing else reaches there.
    for (GridPoint* const end : {&piece.front(), &piece.back()}) {
        if (end->X == m_columns * StepsInBin)
            end->X = 0;
    }
    m_joiner.Add(IsCoast() ? m_arrays.Polygon[segment] : 0, std::move(piece));
    return {};
}

/// A segment counts once, however many bins name it: the work stays in proportion to the file.
Result<void> GshhgReader::AddSegments()
{
    std::size_t next = 0;
    for (std::size_t bin = 0; bin < m_arrays.FirstSegment.size(); ++bin) {
        const auto column = static_cast<std::int32_t>(bin) % m_columns;
        const std::int32_t row =
            m_columns / 2 - 1 - static_cast<std::int32_t>(bin) / m_columns; // they come from the north
        const std::int64_t first = m_arrays.FirstSegment[bin];
        const std::int64_t end = first + m_arrays.SegmentCount[bin];
        if (end > first && first != static_cast<std::int64_t>(next))
            return Fail(m_name, "bin " + std::to_string(bin) + " does not begin where the one before ends");
        if (end > static_cast<std::int64_t>(m_arrays.FirstPoint.size()))
            return Fail(m_name, "bin " + std::to_string(bin) + " has segments that are not there");
        for (; static_cast<std::int64_t>(next) < end; ++next) {
            if (!Wanted(next))
                continue;
            if (Result<void> added = AddSegment(next, column, row); !added)
                return added;
        }
    }
    return {};
}

/// From the grid to degrees, in pieces that do not cross 180 degrees.
void GshhgReader::AppendLine(const GridLine& grid, std::vector<std::vector<LatLon>>& lines) const
{
    const double degreesPerStep = m_arrays.BinMinutes / 60.0 / StepsInBin;
    std::vector<LatLon> line;
    for (const GridPoint& at : grid) {
        const double lon = at.X * degreesPerStep;
        LatLon place{at.Y * degreesPerStep - 90, lon > 180 ? lon - 360 : lon};
        if (!line.empty() && std::abs(place.Lon - line.back().Lon) > 180) { // the edge of a bin lies there
            const double edge = line.back().Lon < 0 ? -180 : 180;
            if (std::abs(line.back().Lon) == 180) {
                const LatLon beyond{line.back().Lat, -line.back().Lon};
                lines.push_back(std::exchange(line, {beyond}));
            } else if (std::abs(place.Lon) == 180) {
                place.Lon = edge;
            } else {
                lines.push_back(std::exchange(line, {}));
            }
        }
        line.push_back(place);
    }
    lines.push_back(std::move(line));
}

Result<std::vector<std::vector<LatLon>>> GshhgReader::Read()
{
    Result<void> done = ReadArrays();
    if (done)
        done = AddSegments();
    if (!done)
        return done.error();
    std::vector<std::vector<LatLon>> lines;
    for (const GridLine& line : std::move(m_joiner).Join())
        AppendLine(line, lines);
    return lines;
}

Result<std::vector<std::vector<LatLon>>> ReadGshhg(const fs::path& path)
{
    const Result<DatasetHandle> dataset = OpenNetCdfFile(path);
    if (!dataset)
        return dataset.error();
    const auto root = (*dataset)->GetRootGroup();
    if (!root)
        return Fail(FullName(path), "is no file of GSHHG");
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error)
        return Fail(FullName(path), error.message());
    return GshhgReader(FullName(path), size, *root).Read();
}
} // namespace corvane
