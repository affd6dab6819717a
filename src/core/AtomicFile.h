#pragma once

#include "core/Bytes.h"
#include "core/OpenFile.h"
#include "core/Result.h"

#include <filesystem>

namespace corvane {
/// A file written piece by piece that appears whole or not at all: it grows as PATH.part and takes its name in Commit.
/// One that goes without Commit deletes what it wrote. The first error is kept: later pieces are dropped and Commit
/// reports it. Errors name the full path.
///
/// A PATH.part that an interrupted program left is replaced. Anything else of that name, a folder or a link, is in the
/// way: it stays as it is, and the Error names it.
class AtomicFile {
public:
    explicit AtomicFile(std::filesystem::path path);
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    AtomicFile(AtomicFile&&) = delete;
    AtomicFile& operator=(AtomicFile&&) = delete;
    ~AtomicFile();

    /// Creates the temporary file, empty.
    Result<void> Open();
    void Write(ByteSpan bytes);
    /// The first error so far.
    [[nodiscard]] const Result<void>& Status() const noexcept { return m_status; }
    /// Closes the file, which is then whole on the disk.
    Result<void> Close();
    /// Closes the file and gives it its name, replacing one of that name.
    Result<void> Commit();

private:
    void FailWith(std::string why);
    [[nodiscard]] Result<void> ClearTheWay() const;

    std::filesystem::path m_path;
    std::filesystem::path m_temporary;
    FileHandle m_file;
    Result<void> m_status;
    bool m_created = false; ///< a temporary file of ours is there
};

/// Writes a temporary file beside path and renames it, so that path holds either its old content or all of the new.
Result<void> WriteFileAtomically(const std::filesystem::path& path, ByteSpan content);
} // namespace corvane
