#include "core/MagVarGrid.h"

#include "core/BglReader.h"
#include "core/File.h"
#include "core/PathLookup.h"

namespace corvane {
bool FillMagVarGrid(MagVarGrid& grid, ByteSpan magdec) noexcept
{
    constexpr std::int64_t GridOffsetField = 110;
    constexpr std::int64_t GridHead = 8;
    BglReader reader(magdec);
    const std::int64_t gridOffset = reader.ReadI32(GridOffsetField);
    if (gridOffset < 1)
        return false;
    for (std::size_t i = 0; i < MagVarGrid::CellCount; ++i)
        grid.Values[i] = reader.ReadI16(gridOffset + GridHead + 2 * static_cast<std::int64_t>(i));
    return true;
}

Bytes MagdecFile(std::span<const std::int16_t> values)
{
    constexpr std::size_t GridOffsetAt = 110;
    constexpr std::size_t HeaderSize = 0x80;
    constexpr std::size_t GridHeadSize = 8;
    Bytes out(HeaderSize + GridHeadSize);
    ByteWriter writer(out);
    writer.PatchI32(GridOffsetAt, static_cast<std::int32_t>(HeaderSize));
    for (const std::int16_t value : values)
        writer.WriteI16(value);
    return out;
}

void ReadMagVarGrid(MagVarGrid& grid, const std::filesystem::path& fsFolder)
{
    const auto path = FindPath(fsFolder, "scenery/magdec.bgl");
    if (!path)
        return;
    if (const Result<FileBytes> file = ReadWholeFile(*path))
        FillMagVarGrid(grid, file->Span());
}
} // namespace corvane
