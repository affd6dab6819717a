#pragma once

#include "core/Result.h"
#include "world/ImportLog.h"
#include "world/RowReader.h"
#include "world/TextLines.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace corvane {
/// Told now and then how much of a file has been read, 0 .. 1; false ends the import.
using PartCallback = std::function<bool(double part)>;

/// The rows of an apt.dat or a nav.dat: two lines of head, rows that begin with a number, and a row 99 at the end.
class RowFile {
public:
    /// lines, log and progress outlive it
    RowFile(TextLines& lines, ImportLog& log, const PartCallback& progress)
        : m_lines(lines), m_log(log), m_progress(progress)
    {
    }

    /// Reads the head. An Error where the second line does not begin with the number of an edition.
    Result<void> ReadHead();
    [[nodiscard]] int Edition() const noexcept { return m_edition; }
    /// What the second line says of the file, its licence for one; UTF-8.
    [[nodiscard]] const std::string& Title() const noexcept { return m_title; }

    /// Goes to the next row; lines that begin with no number are passed over. False at the end.
    bool Next();
    [[nodiscard]] int Code() const noexcept { return m_code; }
    /// The row behind its code.
    [[nodiscard]] RowReader Fields() const noexcept { return RowReader(m_fields); }
    [[nodiscard]] std::int64_t LineNumber() const noexcept { return m_lines.Number(); }
    /// Notes the row at hand as passed over where its reader failed; true then.
    bool PassedOver(const RowReader& row);

    /// After the last row: an Error where the file was cut off or cannot be read, or the import was ended.
    Result<void> Finish();
    [[nodiscard]] const std::string& Name() const noexcept { return m_lines.Name(); }

private:
    bool GoOn();

    TextLines& m_lines;
    ImportLog& m_log;
    const PartCallback& m_progress;
    std::string m_title;
    int m_edition = 0;
    int m_code = 0;
    std::string_view m_fields;
    bool m_atEnd = false;
    bool m_stopped = false;
};
} // namespace corvane
