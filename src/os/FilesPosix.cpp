#include "os/Files.h"

#include <cerrno>
#include <limits>
#include <sys/types.h>

namespace corvane {
std::FILE* OpenForReading(const std::filesystem::path& path) noexcept
{
    return std::fopen(path.c_str(), "rb");
}

std::FILE* OpenForWriting(const std::filesystem::path& path) noexcept
{
    return std::fopen(path.c_str(), "wb");
}

std::FILE* CreateForWriting(const std::filesystem::path& path) noexcept
{
    return std::fopen(path.c_str(), "wbx");
}

bool SeekTo(std::FILE* file, std::uint64_t offset) noexcept
{
    if (offset > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max())) {
        errno = EOVERFLOW;
        return false;
    }
    return fseeko(file, static_cast<off_t>(offset), SEEK_SET) == 0;
}
} // namespace corvane
