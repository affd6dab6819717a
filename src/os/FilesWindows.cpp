#include "os/Files.h"

#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <limits>
#include <sys/stat.h>

namespace corvane {
std::FILE* OpenForReading(const std::filesystem::path& path) noexcept
{
    return _wfopen(path.c_str(), L"rb");
}

std::FILE* OpenForWriting(const std::filesystem::path& path) noexcept
{
    return _wfopen(path.c_str(), L"wb");
}

std::FILE* CreateForWriting(const std::filesystem::path& path) noexcept
{
    const int file = _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, _S_IREAD | _S_IWRITE);
    return file < 0 ? nullptr : _fdopen(file, "wb");
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
