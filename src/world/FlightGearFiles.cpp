#include "world/FlightGearFiles.h"

#include "core/File.h"

#include <cstdlib>
#include <vector>

namespace corvane {
namespace fs = std::filesystem;

FlightGearFiles FilesOfFlightGear(const fs::path& folder)
{
    const auto packedOrPlain = [&](const char* name) {
        const fs::path plain = folder / name;
        fs::path packed = plain;
        packed += ".gz";
        if (FileExists(packed))
            return packed;
        return FileExists(plain) ? plain : fs::path();
    };
    return {packedOrPlain("Airports/apt.dat"), packedOrPlain("Navaids/nav.dat")};
}

std::optional<fs::path> FindFlightGear()
{
    std::vector<fs::path> folders = {"/usr/share/games/flightgear", "/usr/share/flightgear",
                                     "/usr/local/share/flightgear"};
    if (const char* const root = std::getenv("FG_ROOT"); root != nullptr && *root != '\0')
        folders.insert(folders.begin(), root);
    for (const fs::path& folder : folders) {
        if (!FilesOfFlightGear(folder).AptDat.empty())
            return folder;
    }
    return std::nullopt;
}
} // namespace corvane
