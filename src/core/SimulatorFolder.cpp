#include "core/SimulatorFolder.h"

#include "core/File.h"
#include "core/PathLookup.h"
#include "core/Text.h"

#include <optional>

namespace corvane {
std::filesystem::path TypedPath(std::string_view typed)
{
    return FindPath({}, typed).value_or(PathFromText(typed));
}

SimulatorFolder FolderOfSettings(std::string_view fsPath, const std::filesystem::path& appFolder)
{
    const std::string written = Windows1252ToUtf8(fsPath);
    std::optional<std::filesystem::path> found = FindPath({}, written);
    if (!found)
        found = FindPath(appFolder, written);
    return {std::string(fsPath), found.value_or(PathFromText(written))};
}

Result<SimulatorFolder> FolderAsTyped(std::string_view typed)
{
    std::optional<std::string> text = Utf8ToWindows1252Exactly(typed);
    if (!text)
        return Fail(std::string(typed), "has letters that the settings file cannot hold");
    return SimulatorFolder{*std::move(text), TypedPath(typed)};
}

SimulatorFolder FolderBeside(const std::filesystem::path& appFolder, std::string_view name)
{
    const std::filesystem::path path = appFolder / name;
    return {Utf8ToWindows1252Exactly(path.string()).value_or(std::string(name)), path};
}
} // namespace corvane
