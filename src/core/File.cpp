#include "core/File.h"

#include "core/OpenFile.h"
#include "os/Files.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace corvane {
static std::string SystemReason(int code)
{
    return std::generic_category().message(code);
}

std::string FullName(const std::filesystem::path& path)
{
    std::error_code ignored;
    const std::filesystem::path absolute = std::filesystem::absolute(path, ignored);
    return absolute.empty() ? path.string() : absolute.lexically_normal().string();
}

Result<void> RequireRegularFile(const std::filesystem::path& path)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (error)
        return Fail(FullName(path), error.message());
    if (!std::filesystem::is_regular_file(status))
        return Fail(FullName(path), "is not a file");
    return {};
}

Result<OpenedFile> OpenRegularFile(const std::filesystem::path& path)
{
    if (const Result<void> regular = RequireRegularFile(path); !regular)
        return regular.error();
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error)
        return Fail(FullName(path), error.message());
    FileHandle file(OpenForReading(path));
    if (!file)
        return Fail(FullName(path), SystemReason(errno));
    static_cast<void>(std::setvbuf(file.get(), nullptr, _IONBF, 0)); // one large read needs no buffer
    return OpenedFile{std::move(file), size};
}

Result<FileBytes> ReadWholeFile(const std::filesystem::path& path)
{
    const Result<OpenedFile> opened = OpenRegularFile(path);
    if (!opened)
        return opened.error();
    FileBytes bytes(static_cast<std::size_t>(opened->Size));
    const std::size_t read = std::fread(bytes.Data(), 1, bytes.Size(), opened->File.get());
    if (std::ferror(opened->File.get()) != 0)
        return Fail(FullName(path), SystemReason(errno));
    bytes.Shorten(read);
    return bytes;
}

bool FileExists(const std::filesystem::path& path) noexcept
{
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

void DeleteFile(const std::filesystem::path& path) noexcept
{
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}
} // namespace corvane
