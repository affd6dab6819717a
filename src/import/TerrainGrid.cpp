#include "import/TerrainGrid.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace corvane {
static constexpr double NmPerDegree = 60;
static constexpr int CellBits = 32;

TerrainGrid::TerrainGrid(double everyNm) : m_rowsPerDegree(NmPerDegree / everyNm)
{
    assert(everyNm > 0);
    const auto rows = static_cast<std::size_t>(std::ceil(180 * m_rowsPerDegree));
    m_cellsPerDegree.reserve(rows);
    for (std::size_t row = 0; row < rows; ++row) {
        const double middle = (static_cast<double>(row) + 0.5) / m_rowsPerDegree - 90;
        const double aroundNm = 360 * NmPerDegree * std::cos(middle * RadiansPerDegree);
        m_cellsPerDegree.push_back(std::max(1.0, std::floor(aroundNm / everyNm)) / 360);
    }
}

std::uint64_t TerrainGrid::CellOf(const LatLon& position) const noexcept
{
    const double northOfPole = (position.Lat + 90) * m_rowsPerDegree;
    const auto row = std::min(static_cast<std::size_t>(std::max(northOfPole, 0.0)), m_cellsPerDegree.size() - 1);
    const double eastOf180 = position.Lon >= 180 ? 0 : position.Lon + 180;
    const auto column = static_cast<std::uint64_t>(eastOf180 * m_cellsPerDegree[row]);
    return (std::uint64_t{row} << CellBits) | column;
}

bool TerrainGrid::Add(const LatLon& position, double elevationM)
{
    const std::uint64_t cell = CellOf(position);
    if (m_last == nullptr || cell != m_lastCell) {
        const auto known = m_peaks.find(cell);
        if (known == m_peaks.end()) {
            if (m_peaks.size() >= MaxCells)
                return false;
            m_last = &m_peaks.emplace(cell, Peak{position, elevationM}).first->second;
        } else {
            m_last = &known->second;
        }
        m_lastCell = cell;
    }
    if (elevationM > m_last->ElevationM)
        *m_last = {position, elevationM};
    return true;
}

std::vector<TerrainGrid::Peak> TerrainGrid::Peaks() const
{
    std::vector<std::uint64_t> cells;
    cells.reserve(m_peaks.size());
    for (const auto& [cell, peak] : m_peaks)
        cells.push_back(cell);
    std::sort(cells.begin(), cells.end());
    std::vector<Peak> peaks;
    peaks.reserve(cells.size());
    for (const std::uint64_t cell : cells)
        peaks.push_back(m_peaks.at(cell));
    return peaks;
}
} // namespace corvane
