#include "core/PathLookup.h"

#include "core/Text.h"

#include <algorithm>
#include <span>
#include <string>
#include <system_error>
#include <vector>

namespace corvane {
namespace fs = std::filesystem;

static bool IsSeparator(char c)
{
    return c == '\\' || c == '/';
}

/// The non-empty parts of a path, in UTF-8.
static std::vector<std::string> PathParts(std::string_view path)
{
    std::vector<std::string> parts;
    while (!path.empty()) {
        const auto* const end = std::find_if(path.begin(), path.end(), IsSeparator);
        const auto length = static_cast<std::size_t>(end - path.begin());
        if (length > 0)
            parts.push_back(Windows1252ToUtf8(path.substr(0, length)));
        path.remove_prefix(std::min(length + 1, path.size()));
    }
    return parts;
}

/// The names in a folder that equal part but for letter case, without the exact one, in byte order.
static std::vector<std::string> OtherSpellings(const fs::path& folder, const std::string& part)
{
    std::vector<std::string> names;
    const std::string wanted = ToLower(part);
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::string name = entry->path().filename().string();
        if (name != part && ToLower(name) == wanted)
            names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end());
    return names;
}

static std::optional<fs::path> FindBelow(const fs::path& folder, std::span<const std::string> parts)
{
    if (parts.empty())
        return folder;
    std::error_code ignored;
    if (fs::exists(folder / parts.front(), ignored)) {
        if (auto found = FindBelow(folder / parts.front(), parts.subspan(1)))
            return found;
    }
    for (const std::string& name : OtherSpellings(folder.empty() ? fs::path(".") : folder, parts.front())) {
        if (auto found = FindBelow(folder / name, parts.subspan(1)))
            return found;
    }
    return std::nullopt;
}

std::optional<fs::path> FindPath(std::string_view writtenPath)
{
    if (writtenPath.empty())
        return std::nullopt;
    const std::vector<std::string> parts = PathParts(writtenPath);
    return FindBelow(IsSeparator(writtenPath.front()) ? fs::path("/") : fs::path(), parts);
}

fs::path PathFromText(std::string_view writtenPath)
{
    fs::path path = !writtenPath.empty() && IsSeparator(writtenPath.front()) ? fs::path("/") : fs::path();
    for (const std::string& part : PathParts(writtenPath))
        path /= part;
    return path;
}

std::string TextFromPath(const fs::path& path)
{
    return Utf8ToWindows1252(path.string());
}
} // namespace corvane
