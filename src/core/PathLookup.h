#pragma once

#include "core/Result.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corvane {
/// Finds existing files and folders from paths written with either separator ("\" or "/") in any letter case, as
/// simulator files write them: "C:/fs2002/scenery\Magdec.BGL" on a disk that holds "Scenery/magdec.bgl".
///
/// Empty parts and "." are passed over and ".." takes back the part before it, by name, whatever is on the disk. Of
/// several spellings the exact one comes first, then the first in byte order whose remaining parts exist as well. A
/// folder's names are read once in a finder's life, and a search gives up after MostTries: among folders that link to
/// each other the spellings of a path may be without number.
class PathFinder {
public:
    /// base     where a relative path counts from; empty for the working directory
    /// written  UTF-8
    std::optional<std::filesystem::path> Find(const std::filesystem::path& base, std::string_view written);

    /// The first folder that the last Find could not look into, so that what it did not find may be there after all.
    [[nodiscard]] const std::optional<Error>& Obstacle() const noexcept { return m_obstacle; }

    /// So many places a search looks at: in proportion to the written path's length.
    static constexpr std::size_t MostTries(std::size_t writtenLength) noexcept { return 4 * writtenLength + 16; }
    /// Places looked at and folders listed in this finder's life.
    [[nodiscard]] std::size_t Tries() const noexcept { return m_tries; }
    [[nodiscard]] std::size_t Listings() const noexcept { return m_listings.size(); }

private:
    /// A folder's names by their lower-cased ones, each list in byte order.
    struct Listing {
        std::unordered_map<std::string, std::vector<std::string>> Names;
        std::optional<Error> Unreadable;
    };
    struct Search;

    bool Exists(const std::filesystem::path& path);
    const Listing& ListingOf(const std::filesystem::path& folder);
    std::optional<std::filesystem::path> FindBelow(const std::filesystem::path& folder, Search& search,
                                                   std::size_t part);

    std::unordered_map<std::string, Listing> m_listings;
    std::optional<Error> m_obstacle;
    std::size_t m_tries = 0;
};

/// One search of a new finder.
std::optional<std::filesystem::path> FindPath(const std::filesystem::path& base, std::string_view written);

/// The path of a UTF-8 text as it is written, without a look at the disk; both separators separate.
std::filesystem::path PathFromText(std::string_view written);

/// Whether the system would not tell what is there: its answer is neither "this" nor "nothing".
bool IsObstacle(const std::error_code& error) noexcept;
} // namespace corvane
