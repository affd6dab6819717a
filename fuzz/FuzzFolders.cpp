#include "builder/SceneryCfg.h"
#include "core/PathLookup.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

namespace fs = std::filesystem;
using namespace corvane;

/// A disk on which every name has several spellings, and links lead back up.
static fs::path MakeTree()
{
    std::string name = fs::temp_directory_path() / "corvane-folders-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr)
        std::abort();
    const fs::path root = name;
    for (const char* folder : {"a/Scenery", "A/scenery/a", "b/SCENERY/B/scenery", "B/a/b", "scenery/a/Scenery", "aA"})
        fs::create_directories(root / folder);
    for (const char* link : {"c", "C", "a/c", "A/C", "b/SCENERY/c", "scenery/C"})
        fs::create_directory_symlink(root, root / link);
    return root;
}

/// The tree, made once and left to the system's cleaning.
static const fs::path Tree = MakeTree(); // NOLINT(cert-err58-cpp): without it there is nothing to look for

/// A scenery.cfg resolved in that tree: the work is bounded by its length.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t MostSize = 4096;
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    if (size > MostSize || content.find('\0') != std::string_view::npos)
        return 0;
    PathFinder finder;
    std::size_t before = 0;
    std::size_t allowed = 0;
    for (std::size_t at = 0; at < content.size();) {
        const std::size_t end = std::min(content.find('\n', at), content.size());
        const std::string_view written = content.substr(at, end - at);
        allowed += PathFinder::MostTries(written.size());
        if (const auto found = finder.Find(Tree, written); found && !fs::exists(*found))
            std::abort();
        if (finder.Tries() - before > PathFinder::MostTries(written.size()))
            std::abort();
        before = finder.Tries();
        at = end + 1;
    }
    if (finder.Listings() > allowed)
        std::abort();
    auto areas = ParseSceneryCfg(content, "scenery.cfg");
    if (!areas || !ResolveSceneryFolders(*areas, {"tree", Tree}))
        return 0;
    for (const SceneryArea& area : *areas) {
        if (area.Local.empty() != area.Folder.empty() || (!area.Folder.empty() && !fs::is_directory(area.Folder)))
            std::abort();
    }
    return 0;
}
