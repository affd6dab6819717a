#pragma once

#include "core/File.h"
#include "recording/RecordingFormat.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace corvane {
/// A recording in memory.
struct Recording {
    RecordingHead Head;
    std::vector<RecordView> Records; ///< borrowed from Content
    /// Where the file ends inside a record, as after a crash, or a record is damaged: it and what follows are left out.
    std::optional<Error> LeftOut;
    FileBytes Content;

    /// The time of the last record.
    [[nodiscard]] std::uint32_t LengthMs() const noexcept { return Records.empty() ? 0 : Records.back().TimeMs; }
};

/// Errors name the file: it is none of ours, of another version, too large, or its head is damaged, or a whole record
/// says what no recording says.
Result<Recording> ReadRecording(const std::filesystem::path& file);

/// The same from a file's content.
/// name  of the file, for errors
Result<Recording> DecodeRecording(FileBytes content, const std::string& name);
} // namespace corvane
