#pragma once

#include "builder/EncodedRecords.h"
#include "core/AtomicFile.h"
#include "core/Result.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

namespace corvane {
/// Writes the four database files of a folder.
///
/// The files grow under temporary names (".part") and take their own only in Commit, so that a build which fails, is
/// interrupted or loses power leaves nothing that passes for a database. A writer that goes without Commit deletes what
/// it wrote. The first error is kept: later records are dropped and Commit reports it. Errors name the database file in
/// full, a full disk included.
class DatabaseWriter {
public:
    explicit DatabaseWriter(std::filesystem::path folder) : m_folder(std::move(folder)) {}
    DatabaseWriter(const DatabaseWriter&) = delete;
    DatabaseWriter(DatabaseWriter&&) = delete;
    DatabaseWriter& operator=(const DatabaseWriter&) = delete;
    DatabaseWriter& operator=(DatabaseWriter&&) = delete;
    ~DatabaseWriter() { Abandon(); }

    /// Creates the four temporary files, empty.
    Result<void> Open();

    /// Appends the records and clears them.
    void Append(EncodedRecords& records);

    [[nodiscard]] const RecordCounts& Counts() const noexcept { return m_counts; }
    /// The first error so far.
    [[nodiscard]] const Result<void>& Status() const noexcept { return m_status; }

    /// Closes the files and gives them their names, replacing files of those names. On an Error none of the four is
    /// left.
    Result<void> Commit();
    /// Deletes the temporary files.
    void Abandon() noexcept;

private:
    struct Output {
        std::optional<AtomicFile> File;
        std::int64_t Size = 0;
    };

    /// Keeps the first error, of an output's file or given.
    void Note(const Result<void>& outcome);
    void NoteTooLarge(std::string_view name);
    void Write(Output& output, ByteSpan bytes);

    std::filesystem::path m_folder;
    std::array<Output, 4> m_outputs;
    Output& m_airports = m_outputs[0];
    Output& m_vors = m_outputs[1];
    Output& m_ndbs = m_outputs[2];
    Output& m_airspaces = m_outputs[3];
    RecordCounts m_counts;
    Result<void> m_status;
};
} // namespace corvane
