#pragma once

#include "core/Result.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace corvane {
struct CloseFile {
    void operator()(std::FILE* file) const noexcept { static_cast<void>(std::fclose(file)); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

struct OpenedFile {
    FileHandle File; ///< unbuffered: its readers take whole blocks
    std::uint64_t Size = 0;
};

/// An Error for folders, pipes, devices and what is not there; it names the full path.
Result<void> RequireRegularFile(const std::filesystem::path& path);

/// Opens a regular file for reading; folders, pipes and devices are refused. Errors name the full path.
Result<OpenedFile> OpenRegularFile(const std::filesystem::path& path);
} // namespace corvane
