#include "builder/SceneryCfg.h"

#include "builder/WorkBudget.h"
#include "core/File.h"
#include "core/PathLookup.h"
#include "core/Text.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <system_error>

namespace corvane {
static constexpr std::string_view LineEnd = "\r\n";

/// The text with every CR, LF and CR LF as CR LF, and none behind a last line that a CR ended.
static std::string WithUniformLineEnds(std::string_view content)
{
    std::string text;
    text.reserve(content.size() + content.size() / 8);
    for (std::size_t i = 0; i < content.size(); ++i) {
        const char c = content[i];
        if (c != '\r' && c != '\n') {
            text += c;
            continue;
        }
        const bool pair = c == '\r' && i + 1 < content.size() && content[i + 1] == '\n';
        i += pair ? 1 : 0;
        if (c == '\n' || i + 1 < content.size())
            text += LineEnd;
    }
    return text;
}

static bool IsSectionHeader(std::string_view line)
{
    const std::string_view trimmed = TrimSpaces(line);
    return trimmed.starts_with('[') && trimmed.find(']') == trimmed.size() - 1;
}

static std::vector<std::string_view> SectionHeaders(std::string_view text)
{
    std::vector<std::string_view> headers;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(LineEnd), text.size());
        if (IsSectionHeader(text.substr(0, end)))
            headers.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + LineEnd.size(), text.size()));
    }
    return headers;
}

std::string KeyValue(std::string_view block, std::string_view key)
{
    const std::string pattern = ToLower(key) + "=";
    const std::size_t found = ToLower(block).find(pattern);
    if (found == std::string_view::npos)
        return {};
    const std::string_view rest = block.substr(found + pattern.size());
    std::string value(rest.substr(0, rest.find(LineEnd)));
    std::erase(value, '\r'); // a block may end between the two
    return value;
}

namespace {
/// The search for each area's block of lines, which goes on from where the last block ended. Positions count from 1.
class AreaSearch {
public:
    explicit AreaSearch(std::string_view text) : m_text(text), m_budget(static_cast<std::int64_t>(text.size())) {}

    /// The block of the area whose header line this is; nothing when the search has become too long.
    /// nextHeader  empty behind the last header
    std::optional<std::string_view> NextBlock(std::string_view header, std::string_view nextHeader)
    {
        const std::int64_t start = Find(header);
        const std::int64_t end = nextHeader.empty() ? static_cast<std::int64_t>(m_text.size()) : Find(nextHeader) - 1;
        const std::int64_t length = std::abs(end - start) + 1;
        m_position = std::max<std::int64_t>(end, 1);
        if (!m_budget.Spend(length))
            return std::nullopt;
        return m_text.substr(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(length));
    }

private:
    /// Where a header line is found from the search position on: at the latest in its own line.
    std::int64_t Find(std::string_view line)
    {
        const std::size_t from = static_cast<std::size_t>(m_position) - 1;
        const std::size_t found = std::min(m_text.find(line, from), m_text.size() - 1);
        m_budget.Spend(static_cast<std::int64_t>(found - from));
        return static_cast<std::int64_t>(found) + 1;
    }

    std::string_view m_text;
    std::int64_t m_position = 1;
    WorkBudget m_budget;
};
} // namespace

Result<std::vector<SceneryArea>> ParseSceneryCfg(std::string_view content, std::string_view fileName)
{
    constexpr std::size_t MostAreas = std::numeric_limits<std::int16_t>::max();
    const std::string text = WithUniformLineEnds(content);
    const std::vector<std::string_view> headers = SectionHeaders(text);
    std::vector<SceneryArea> areas;
    AreaSearch search(text);
    for (std::size_t i = 0; i < headers.size(); ++i) {
        if (ToLower(headers[i]).find("[area.") == std::string::npos)
            continue;
        const std::string_view nextHeader = i + 1 < headers.size() ? headers[i + 1] : std::string_view();
        const std::optional<std::string_view> block = search.NextBlock(headers[i], nextHeader);
        if (!block)
            return Fail(std::string(fileName), "repeats its section lines over and over");
        if (areas.size() == MostAreas)
            return Fail(std::string(fileName), "lists more than 32767 areas");
        areas.push_back({KeyValue(*block, "Title"), KeyValue(*block, "Local"), {}});
    }
    return areas;
}

Result<std::vector<SceneryArea>> ReadSceneryCfg(const std::filesystem::path& path)
{
    const Result<FileBytes> file = ReadWholeFile(path);
    if (!file)
        return file.error();
    const ByteSpan bytes = file->Span();
    return ParseSceneryCfg({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, FullName(path));
}

/// An area's path with "\" as separator, ending in its scenery subfolder.
static std::string SceneryPath(std::string_view local)
{
    std::string path(TrimSpaces(local));
    std::replace(path.begin(), path.end(), '/', '\\');
    const std::string lower = ToLower(path);
    if (!lower.ends_with("\\scenery") && lower != "scenery")
        path += "\\scenery";
    return path;
}

namespace {
/// Finds the folders of areas.
class FolderSearch {
public:
    explicit FolderSearch(const SimulatorFolder& simulator) noexcept : m_simulator(simulator) {}

    Result<void> Resolve(SceneryArea& area)
    {
        const std::string path = SceneryPath(area.Local);
        if (Take(area, {}, path, path))
            return {};
        // In the working directory a relative path is looked for, but not expected.
        std::optional<Error> obstacle = path.starts_with('\\') ? m_finder.Obstacle() : std::nullopt;
        if (!obstacle) {
            if (Take(area, m_simulator.Path, path, m_simulator.Text + "\\" + path))
                return {};
            obstacle = m_finder.Obstacle();
        }
        if (obstacle)
            return *std::move(obstacle);
        area.Local.clear();
        return {};
    }

private:
    /// Takes the folder at path, where there is one, as the area's, whose Local it then becomes as text.
    bool Take(SceneryArea& area, const std::filesystem::path& base, std::string_view path, std::string_view text)
    {
        std::optional<std::filesystem::path> found = m_finder.Find(base, Windows1252ToUtf8(path));
        std::error_code ignored;
        if (!found || !std::filesystem::is_directory(*found, ignored))
            return false;
        area.Local = ToLower(text);
        area.Folder = *std::move(found);
        return true;
    }

    const SimulatorFolder& m_simulator;
    PathFinder m_finder;
};
} // namespace

Result<void> ResolveSceneryFolders(std::vector<SceneryArea>& areas, const SimulatorFolder& simulator)
{
    FolderSearch search(simulator);
    for (SceneryArea& area : areas) {
        if (area.Local.empty())
            continue;
        if (Result<void> resolved = search.Resolve(area); !resolved)
            return resolved;
    }
    return {};
}
} // namespace corvane
