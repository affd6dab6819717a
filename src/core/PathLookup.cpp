#include "core/PathLookup.h"

#include "core/File.h"
#include "core/Text.h"

#include <algorithm>
#include <system_error>

namespace corvane {
namespace fs = std::filesystem;

/// A path's parts that say something, and how many folders it leads up before them.
struct WrittenParts {
    std::size_t Up = 0;
    std::vector<std::string> Names;
};

struct PathFinder::Search {
    std::vector<std::string> Parts;
    std::size_t TriesLeft;
};

static bool IsSeparator(char c)
{
    return c == '\\' || c == '/';
}

static bool IsAbsolute(std::string_view written)
{
    return !written.empty() && IsSeparator(written.front());
}

static WrittenParts PartsOf(std::string_view written)
{
    WrittenParts parts;
    while (!written.empty()) {
        const auto* const end = std::find_if(written.begin(), written.end(), IsSeparator);
        const auto length = static_cast<std::size_t>(end - written.begin());
        const std::string_view part = written.substr(0, length);
        written.remove_prefix(std::min(length + 1, written.size()));
        if (part.empty() || part == ".")
            continue;
        if (part != "..")
            parts.Names.emplace_back(part);
        else if (!parts.Names.empty())
            parts.Names.pop_back();
        else
            ++parts.Up;
    }
    return parts;
}

/// The folder so many folders above one, by name; nothing is above the root.
static fs::path FolderAbove(fs::path folder, std::size_t up)
{
    for (; up > 0; --up) {
        if (folder.empty() || folder.filename() == "..")
            folder /= "..";
        else if (folder.has_relative_path())
            folder = folder.parent_path();
        else
            break;
    }
    return folder;
}

/// Where a written path begins.
static fs::path StartOf(const fs::path& base, std::string_view written, std::size_t up)
{
    return IsAbsolute(written) ? fs::path("/") : FolderAbove(base, up);
}

bool IsObstacle(const std::error_code& error) noexcept
{
    using enum std::errc;
    return error && error != no_such_file_or_directory && error != not_a_directory && error != filename_too_long &&
           error != too_many_symbolic_link_levels && error != invalid_argument;
}

bool PathFinder::Exists(const fs::path& path)
{
    std::error_code error;
    const bool exists = fs::exists(path, error);
    if (IsObstacle(error) && !m_obstacle)
        m_obstacle = Fail(FullName(path), error.message());
    return exists;
}

const PathFinder::Listing& PathFinder::ListingOf(const fs::path& folder)
{
    const auto [found, isNew] = m_listings.try_emplace(folder.string());
    Listing& listing = found->second;
    if (!isNew)
        return listing;
    std::error_code error;
    for (fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::string name = entry->path().filename().string();
        listing.Names[ToLower(name)].push_back(std::move(name));
    }
    if (IsObstacle(error))
        listing.Unreadable = Fail(FullName(folder.empty() ? fs::path(".") : folder), error.message());
    for (auto& [lower, names] : listing.Names)
        std::sort(names.begin(), names.end());
    return listing;
}

std::optional<fs::path> PathFinder::FindBelow(const fs::path& folder, Search& search, std::size_t part)
{
    if (part == search.Parts.size())
        return folder;
    if (search.TriesLeft == 0)
        return std::nullopt;
    --search.TriesLeft;
    ++m_tries;
    const std::string& wanted = search.Parts[part];
    if (Exists(folder / wanted)) {
        if (auto found = FindBelow(folder / wanted, search, part + 1))
            return found;
    }
    const Listing& listing = ListingOf(folder); // references stay valid while others are added
    if (listing.Unreadable && !m_obstacle)
        m_obstacle = listing.Unreadable;
    const auto spellings = listing.Names.find(ToLower(wanted));
    if (spellings == listing.Names.end())
        return std::nullopt;
    for (const std::string& name : spellings->second) {
        if (name == wanted)
            continue;
        if (auto found = FindBelow(folder / name, search, part + 1))
            return found;
    }
    return std::nullopt;
}

std::optional<fs::path> PathFinder::Find(const fs::path& base, std::string_view written)
{
    m_obstacle.reset();
    if (written.empty())
        return std::nullopt;
    WrittenParts parts = PartsOf(written);
    const fs::path start = StartOf(base, written, parts.Up);
    if (!Exists(start.empty() ? fs::path(".") : start))
        return std::nullopt;
    Search search{std::move(parts.Names), MostTries(written.size())};
    auto found = FindBelow(start, search, 0);
    if (found && found->empty())
        return fs::path(".");
    return found;
}

std::optional<fs::path> FindPath(const fs::path& base, std::string_view written)
{
    return PathFinder().Find(base, written);
}

fs::path PathFromText(std::string_view written)
{
    const WrittenParts parts = PartsOf(written);
    fs::path path = StartOf({}, written, parts.Up);
    for (const std::string& part : parts.Names)
        path /= part;
    return path;
}
} // namespace corvane
