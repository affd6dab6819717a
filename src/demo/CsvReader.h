#pragma once

#include "core/Bytes.h"
#include "core/Result.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// Reads a comma-separated table without quoting, line by line.
///
/// The first fault (a line with too few or too many fields, a field that is not the number it should be) stops the
/// reading: Next() gives false from then on, fields read as 0, and Failure() names file and line.
class CsvReader {
public:
    /// name     the file as errors name it
    /// columns  the names that the first line must hold, separated by commas; empty: the table has no such line
    CsvReader(std::string name, ByteSpan text, std::string_view columns);

    /// Goes to the next line; false at the end and after a fault.
    bool Next();
    /// The line is empty; it then has no fields.
    [[nodiscard]] bool IsBlank() const noexcept { return m_line.empty(); }
    [[nodiscard]] std::size_t FieldCount() const noexcept { return m_fields.size(); }

    [[nodiscard]] std::string_view Text(std::size_t column) const noexcept;
    /// The numbers must lie in lowest .. highest.
    double Number(std::size_t column, double lowest, double highest);
    std::int32_t Whole(std::size_t column, std::int32_t lowest, std::int32_t highest);
    /// As Number; an empty field is no number and no fault.
    std::optional<double> OptionalNumber(std::size_t column, double lowest, double highest);

    /// Makes the line at hand the first fault.
    void Refuse(std::string why);
    [[nodiscard]] const std::optional<Error>& Failure() const noexcept { return m_failure; }

private:
    bool TakeLine();
    [[nodiscard]] std::string ColumnName(std::size_t column) const;

    std::string m_name;
    std::string_view m_rest;
    std::vector<std::string_view> m_columns;
    std::string_view m_line;
    std::vector<std::string_view> m_fields;
    std::int64_t m_lineNumber = 0;
    std::optional<Error> m_failure;
};

/// The parts of a text between separators; an empty text has none.
std::vector<std::string_view> SplitText(std::string_view text, char separator);
/// The number that the whole text is, or nothing.
std::optional<double> ParseNumber(std::string_view text) noexcept;
} // namespace corvane
