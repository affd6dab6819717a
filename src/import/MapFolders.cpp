#include "import/MapFolders.h"

#include "core/File.h"
#include "core/Text.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string>
#include <string_view>
#include <system_error>

namespace corvane {
namespace fs = std::filesystem;

namespace {
/// One resolution of a map: the coasts, without which it is not there, and what belongs to them.
struct MapFiles {
    std::string Coast;
    std::vector<std::string> Others;
};
} // namespace

/// The maps that are known, the one that is preferred first.
static std::vector<MapFiles> KnownMaps()
{
    std::vector<MapFiles> maps;
    constexpr std::string_view Resolutions = "ilchf"; // what suits a world of which every so many-eth point is drawn
    for (const char resolution : Resolutions) {
        const std::string r(1, resolution);
        maps.push_back({"binned_GSHHS_" + r + ".nc", {"binned_border_" + r + ".nc"}});
        const std::string coast = r + "/GSHHS_" + r + "_L";
        const std::string border = r + "/WDBII_border_" + r + "_L1.shp";
        maps.push_back({"GSHHS_shp/" + coast + "1.shp",
                        {"GSHHS_shp/" + coast + "2.shp", "GSHHS_shp/" + coast + "5.shp", "WDBII_shp/" + border}});
    }
    for (const std::string scale : {"50m", "110m", "10m"}) {
        const std::string ne = "ne_" + scale + "_";
        maps.push_back({ne + "coastline.shp", {ne + "lakes.shp", ne + "admin_0_boundary_lines_land.shp"}});
        const auto inFolder = [&](const char* name) { return ne + name + "/" + ne + name + ".shp"; };
        maps.push_back({inFolder("coastline"), {inFolder("lakes"), inFolder("admin_0_boundary_lines_land")}});
    }
    return maps;
}

static Result<std::vector<fs::path>> OutlineFilesOfFolder(const fs::path& folder)
{
    for (const MapFiles& map : KnownMaps()) {
        if (!FileExists(folder / map.Coast))
            continue;
        std::vector<fs::path> files = {folder / map.Coast};
        for (const std::string& other : map.Others) {
            if (FileExists(folder / other))
                files.push_back(folder / other);
        }
        return files;
    }
    return Fail(FullName(folder), "holds neither GSHHG nor Natural Earth; name the files in it");
}

static bool IsTerrainFile(const fs::path& path)
{
    constexpr std::array<std::string_view, 9> Endings = {".hgt", ".tif", ".tiff", ".dt0", ".dt1",
                                                         ".dt2", ".asc", ".bil",  ".dem"};
    return std::ranges::find(Endings, ToLower(path.extension().string())) != Endings.end();
}

static Result<std::vector<fs::path>> TerrainFilesOfFolder(const fs::path& folder)
{
    std::error_code error;
    std::vector<fs::path> files;
    fs::recursive_directory_iterator entries(folder, error);
    for (; !error && entries != fs::recursive_directory_iterator(); entries.increment(error)) {
        std::error_code ignored;
        if (IsTerrainFile(entries->path()) && entries->is_regular_file(ignored))
            files.push_back(entries->path());
    }
    if (error)
        return Fail(FullName(folder), error.message());
    if (files.empty())
        return Fail(FullName(folder), "holds no grids of elevations such as N47E008.hgt");
    std::ranges::sort(files);
    return files;
}

template <class FilesOfFolder>
static Result<std::vector<fs::path>> WithoutFolders(std::span<const fs::path> paths, const FilesOfFolder& filesOfFolder)
{
    std::vector<fs::path> files;
    for (const fs::path& path : paths) {
        std::error_code ignored;
        if (!fs::is_directory(path, ignored)) {
            files.push_back(path);
            continue;
        }
        const Result<std::vector<fs::path>> found = filesOfFolder(path);
        if (!found)
            return found.error();
        files.insert(files.end(), found->begin(), found->end());
    }
    return files;
}

Result<std::vector<fs::path>> OutlineFilesIn(std::span<const fs::path> paths)
{
    return WithoutFolders(paths, OutlineFilesOfFolder);
}

Result<std::vector<fs::path>> TerrainFilesIn(std::span<const fs::path> paths)
{
    return WithoutFolders(paths, TerrainFilesOfFolder);
}
} // namespace corvane
