#include "core/DatabaseFiles.h"

#include "core/File.h"

namespace corvane {
void DeleteDataFiles(const std::filesystem::path& appFolder) noexcept
{
    for (const std::string_view name : DataFileNames())
        DeleteFile(appFolder / name);
}
} // namespace corvane
