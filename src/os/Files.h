#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>

namespace corvane {
/// std::fopen and std::fseek for every path and every size that the system knows. As there, null or false is a failure
/// whose reason is in errno.
std::FILE* OpenForReading(const std::filesystem::path& path) noexcept;
/// Creates the file, or empties the one that is there.
std::FILE* OpenForWriting(const std::filesystem::path& path) noexcept;
/// Creates a file that is not there yet: where anything of that name is, a link included, that is a failure.
std::FILE* CreateForWriting(const std::filesystem::path& path) noexcept;
/// Makes the next read or write begin so many bytes after the file's start.
bool SeekTo(std::FILE* file, std::uint64_t offset) noexcept;
} // namespace corvane
