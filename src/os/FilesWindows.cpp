#include "os/Files.h"

#include <cerrno>
#include <limits>

namespace corvane {
std::FILE* OpenForReading(const std::filesystem::path& path) noexcept
{
    return _wfopen(path.c_str(), L"rb");
}

std::FILE* OpenForWriting(const std::filesystem::path& path) noexcept
{
    return _wfopen(path.c_str(), L"wb");
}

bool SeekTo(std::FILE* file, std::uint64_t offset) noexcept
{
    if (offset > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
        errno = EINVAL;
        return false;
    }
    return _fseeki64(file, static_cast<std::int64_t>(offset), SEEK_SET) == 0;
}
} // namespace corvane
