#include "os/Modules.h"

#include "os/Folders.h"

#include <system_error>

namespace corvane {
namespace fs = std::filesystem;

fs::path ModuleFile(std::string_view name)
{
    const fs::path programFolder = ProgramFile().parent_path();
    std::error_code ignored;
    if (fs::path beside = programFolder / name; fs::is_regular_file(beside, ignored))
        return beside;
    return programFolder.parent_path() / "lib/corvane" / name;
}
} // namespace corvane
