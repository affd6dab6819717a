#pragma once

#include "core/Bytes.h"
#include "core/LatLon.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>

namespace corvane {
/// The magnetic variation of the world on a one-degree grid.
///
/// Values stand at [lon * 181 + (lat + 90)], lat -90 .. 90, lon 0 .. 359 degrees east; one unit is 360 / 65536 degree,
/// east positive. A new grid is all zero: true and magnetic directions agree.
class MagVarGrid {
public:
    static constexpr std::size_t Latitudes = 181;
    static constexpr std::size_t Longitudes = 360;
    static constexpr std::size_t CellCount = Latitudes * Longitudes;

    /// One more than the cells: index 65160 belongs to the table but is never written.
    std::array<std::int16_t, CellCount + 1> Values{};

    /// The whole degrees of variation (truncated toward zero) of the cell nearest to a position, or nothing where the
    /// position's index lies outside the grid. Source: the simulator's own rounding to the nearest whole degree.
    /// Inline because it is asked for every position that a member reports.
    [[nodiscard]] std::optional<int> VariationAt(LatLon at) const noexcept
    {
        constexpr double FarOutside = 1000;
        if (!(std::abs(at.Lat) < FarOutside && std::abs(at.Lon) < FarOutside))
            return std::nullopt;
        const long long wholeLat = std::llrint(at.Lat); // the program's rounding, halves to even
        const long long wholeLon = std::llrint(at.Lon);
        const long long east = wholeLon < 0 ? wholeLon + 360 : wholeLon;
        const long long index = east * static_cast<long long>(Latitudes) + wholeLat + 90;
        if (index < 0 || index > static_cast<long long>(CellCount))
            return std::nullopt;
        return static_cast<int>(Values[static_cast<std::size_t>(index)] * (360.0 / 65536.0));
    }
};

/// Fills the grid from the bytes of the simulator's magdec.bgl: a signed 32-bit offset G at 110, and from G + 8 on the
/// values, longitude by longitude. Values past the end of the file read as 0.
/// Returns false, grid untouched, when the file names no grid (G below 1).
bool FillMagVarGrid(MagVarGrid& grid, ByteSpan magdec) noexcept;

/// The bytes of a magdec.bgl that holds the values: MagVarGrid::CellCount of them, in the grid's order. It has no
/// section that a scan would look into.
Bytes MagdecFile(std::span<const std::int16_t> values);

/// Fills the grid from scenery\magdec.bgl in the simulator's main folder, found in any letter case. A file that is
/// absent or cannot be read leaves the grid as it is.
void ReadMagVarGrid(MagVarGrid& grid, const std::filesystem::path& fsFolder);
} // namespace corvane
