#include "demo/WorldFiles.h"

#include "core/File.h"
#include "core/MapFiles.h"
#include "core/NumberText.h"

#include <algorithm>
#include <string_view>
#include <system_error>

namespace corvane {
namespace fs = std::filesystem;

static constexpr std::string_view PlaceholderText =
    "This folder is a demonstration world. Writing the world again replaces everything in it.\r\n";

static Bytes ToBytes(std::string_view text)
{
    return {text.begin(), text.end()};
}

Bytes SceneryCfgFile(std::span<const SceneryAreaEntry> areas)
{
    std::string text = "[General]\r\nTitle=Demonstration world\r\nClean_on_Exit=FALSE\r\n\r\n";
    std::int64_t number = 0;
    for (const SceneryAreaEntry& area : areas) {
        const std::string digits = NumberText(++number);
        text += number % 2 == 0 ? "[area." : "[Area.";
        text.append(3 - std::min<std::size_t>(digits.size(), 3), '0');
        text.append(digits).append("]\r\nTitle=").append(area.Title).append("\r\nLocal=").append(area.Local);
        text.append("\r\nActive=TRUE\r\nLayer=").append(digits).append("\r\n\r\n");
    }
    return ToBytes(text);
}

void AppendWorldMap(Bytes& out, std::span<const Polyline> lines)
{
    for (const Polyline& line : lines)
        AppendOutline(out, line);
}

Bytes TerrainFile(std::span<const TerrainSource> points)
{
    Bytes out;
    for (const TerrainSource& point : points)
        AppendTerrainPoint(out, point.Position, point.ElevationFt);
    return out;
}

Bytes PlaceholderProgram()
{
    return ToBytes(PlaceholderText);
}

Result<void> PrepareSimulatorFolder(const fs::path& folder)
{
    std::error_code error;
    if (!fs::exists(folder, error) || fs::is_empty(folder, error))
        return {};
    const Result<FileBytes> program = ReadWholeFile(folder / "fs2002.exe");
    if (!program || !std::ranges::equal(program->Span(), PlaceholderProgram()))
        return Fail(FullName(folder), "holds something else than a demonstration world");
    fs::remove_all(folder, error);
    if (error)
        return Fail(FullName(folder), error.message());
    return {};
}
} // namespace corvane
