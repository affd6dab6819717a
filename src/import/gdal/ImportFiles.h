#pragma once

#include "import/MapImport.h"

#include <span>

namespace corvane {
/// Tells the progress of one file of several: a file has parts one after another.
class FileProgress {
public:
    FileProgress(const ImportProgressCallback& callback, std::string file, std::size_t index, std::size_t fileCount);

    /// Begins a part of the file.
    void Part(std::size_t index, std::size_t count) noexcept;
    /// Tells that so much of the part is done. An Error where the import is to stop.
    Result<void> Note(std::int64_t done, std::int64_t total);

private:
    const ImportProgressCallback& m_callback;
    std::string m_file;
    std::size_t m_index;
    std::size_t m_fileCount;
    double m_partStart = 0;
    double m_partLength = 1;
};

/// Reads the files one after another until one fails. The file to be written must not be among them.
Result<void> ReadEachFile(std::span<const std::filesystem::path> files, const std::filesystem::path& out,
                          const ImportProgressCallback& progress,
                          const std::function<Result<void>(const std::filesystem::path&, FileProgress&)>& read);
} // namespace corvane
