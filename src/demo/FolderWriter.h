#pragma once

#include "core/Bytes.h"
#include "core/Result.h"

#include <filesystem>
#include <vector>

namespace corvane {
/// Writes files below a folder, each whole or not at all, and creates the folders on the way. Unless Keep() is called,
/// the destructor removes what was new: files that were not there before, and folders that it created.
class FolderWriter {
public:
    explicit FolderWriter(std::filesystem::path root) : m_root(std::move(root)) {}
    ~FolderWriter();
    FolderWriter(const FolderWriter&) = delete;
    FolderWriter& operator=(const FolderWriter&) = delete;
    FolderWriter(FolderWriter&&) = delete;
    FolderWriter& operator=(FolderWriter&&) = delete;

    /// Errors name the file or folder that could not be written.
    Result<void> Write(const std::filesystem::path& relativePath, ByteSpan content);
    void Keep() noexcept { m_keep = true; }

private:
    Result<void> CreateFolder(const std::filesystem::path& folder);

    std::filesystem::path m_root;
    std::vector<std::filesystem::path> m_new; ///< in the order of creation
    bool m_keep = false;
};
} // namespace corvane
