#pragma once

#include "core/Bytes.h"
#include "core/Result.h"

#include <filesystem>
#include <memory>

namespace corvane {
/// The whole content of a file, held in memory that is not cleared before it is read into.
class FileBytes {
public:
    FileBytes() = default;
    explicit FileBytes(std::size_t size) : m_bytes(new std::uint8_t[size]), m_size(size) {}

    [[nodiscard]] ByteSpan Span() const noexcept { return {m_bytes.get(), m_size}; }
    [[nodiscard]] std::uint8_t* Data() noexcept { return m_bytes.get(); }
    [[nodiscard]] std::size_t Size() const noexcept { return m_size; }
    /// Keeps the first size bytes; for files that shrink while they are read.
    void Shorten(std::size_t size) noexcept { m_size = size; }

private:
    // NOLINTNEXTLINE(modernize-avoid-c-arrays): std::vector would clear the bytes
    std::unique_ptr<std::uint8_t[]> m_bytes;
    std::size_t m_size = 0;
};

/// A path as messages name it: absolute, in UTF-8.
std::string FullName(const std::filesystem::path& path);

/// Errors name the full path. Folders, pipes and devices are refused: only regular files are read.
Result<FileBytes> ReadWholeFile(const std::filesystem::path& path);

bool FileExists(const std::filesystem::path& path) noexcept;
/// Errors are ignored: a file that cannot be deleted stays.
void DeleteFile(const std::filesystem::path& path) noexcept;
} // namespace corvane
