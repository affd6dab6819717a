#include "os/Folders.h"

#include <system_error>

namespace corvane {
namespace fs = std::filesystem;

fs::path SharedFolder(std::string_view name)
{
    const fs::path programFolder = ProgramFile().parent_path();
    for (fs::path folder = programFolder; folder.has_relative_path(); folder = folder.parent_path()) {
        std::error_code ignored;
        fs::path shared = folder / "share" / name;
        if (fs::is_directory(shared, ignored))
            return shared;
    }
    return programFolder.parent_path() / "share" / name;
}
} // namespace corvane
