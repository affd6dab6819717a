#include "import/gdal/ImportFiles.h"

#include "core/File.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace corvane {
FileProgress::FileProgress(const ImportProgressCallback& callback, std::string file, std::size_t index,
                           std::size_t fileCount)
    : m_callback(callback), m_file(std::move(file)), m_index(index), m_fileCount(fileCount)
{
}

void FileProgress::Part(std::size_t index, std::size_t count) noexcept
{
    m_partLength = 1.0 / static_cast<double>(count);
    m_partStart = static_cast<double>(index) * m_partLength;
}

Result<void> FileProgress::Note(std::int64_t done, std::int64_t total)
{
    if (!m_callback)
        return {};
    const double share = total > 0 ? std::clamp(static_cast<double>(done) / static_cast<double>(total), 0.0, 1.0) : 0;
    const double filesDone = static_cast<double>(m_index) + m_partStart + share * m_partLength;
    if (m_callback({m_file, filesDone, m_fileCount}))
        return {};
    return Fail("import", "interrupted; nothing was written");
}

Result<void> ReadEachFile(std::span<const std::filesystem::path> files, const std::filesystem::path& out,
                          const ImportProgressCallback& progress,
                          const std::function<Result<void>(const std::filesystem::path&, FileProgress&)>& read)
{
    for (const std::filesystem::path& file : files) {
        std::error_code ignored;
        if (std::filesystem::equivalent(file, out, ignored))
            return Fail(FullName(out), "is to be read and written at once");
    }
    for (std::size_t i = 0; i < files.size(); ++i) {
        FileProgress fileProgress(progress, FullName(files[i]), i, files.size());
        Result<void> done = fileProgress.Note(0, 1);
        if (done)
            done = read(files[i], fileProgress);
        if (!done)
            return done;
    }
    return {};
}
} // namespace corvane
