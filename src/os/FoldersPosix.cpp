#include "os/Folders.h"

#include <cstdlib>
#include <system_error>

namespace corvane {
namespace fs = std::filesystem;

fs::path ProgramFile()
{
    std::error_code ignored;
    return fs::read_symlink("/proc/self/exe", ignored);
}

/// The XDG base directory rules: relative values do not count.
fs::path UserDataFolder(std::string_view name)
{
    if (const char* const data = std::getenv("XDG_DATA_HOME"); data != nullptr && fs::path(data).is_absolute())
        return fs::path(data) / name;
    if (const char* const home = std::getenv("HOME"); home != nullptr && fs::path(home).is_absolute())
        return fs::path(home) / ".local/share" / name;
    return {};
}
} // namespace corvane
