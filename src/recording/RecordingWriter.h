#pragma once

#include "core/OpenFile.h"
#include "recording/RecordingFormat.h"

#include <filesystem>

namespace corvane {
/// Writes a recording. Every record is in the system's hands when Write returns, so a crash of the program loses at
/// most the one being written. Errors name the file; after one, what was written before still reads.
class RecordingWriter {
public:
    /// Makes the file, replacing one of that name. A failure leaves none behind.
    static Result<RecordingWriter> Create(const std::filesystem::path& file, const RecordingHead& head);

    /// An error when the file cannot take the record, or would outgrow MaxRecordingSize.
    Result<void> Write(const RecordView& record);

    [[nodiscard]] const std::filesystem::path& Path() const noexcept { return m_path; }

private:
    RecordingWriter(std::filesystem::path path, FileHandle file) : m_path(std::move(path)), m_file(std::move(file)) {}

    Result<void> WriteBytes(ByteSpan bytes);

    std::filesystem::path m_path;
    FileHandle m_file; ///< unbuffered
    std::uint64_t m_size = 0;
    Bytes m_record; ///< kept for its memory
};
} // namespace corvane
