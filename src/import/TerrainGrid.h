#pragma once

#include "core/Geodesy.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

namespace corvane {
/// The highest point of each cell of a grid over the world.
///
/// Rows of cells lie between parallels, from the south pole on, as high as a cell is to be wide. Each is divided into
/// as many equal cells from 180 degrees west on as fit there at that width in its middle: near the poles a cell spans
/// more degrees. Only cells with a sample take memory.
class TerrainGrid {
public:
    /// 700 MB of memory at most.
    static constexpr std::size_t MaxCells = std::size_t{10} * 1000 * 1000;

    struct Peak {
        LatLon Position;
        double ElevationM = 0;
    };

    /// everyNm  height and width of a cell, above 0
    explicit TerrainGrid(double everyNm);

    /// Notes a sample at -90 .. 90 and -180 .. 180 degrees. Of equal elevations in a cell the first stays.
    /// Returns false where the grid is full and the sample would need a cell more.
    bool Add(const LatLon& position, double elevationM);

    [[nodiscard]] std::size_t CellCount() const noexcept { return m_peaks.size(); }
    /// From south to north, in a row from west to east.
    [[nodiscard]] std::vector<Peak> Peaks() const;

private:
    [[nodiscard]] std::uint64_t CellOf(const LatLon& position) const noexcept;

    double m_rowsPerDegree;
    std::vector<double> m_cellsPerDegree; ///< of each row
    std::unordered_map<std::uint64_t, Peak> m_peaks;
    std::uint64_t m_lastCell = 0;
    Peak* m_last = nullptr; ///< of m_lastCell: samples come in runs
};
} // namespace corvane
