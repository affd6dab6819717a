#include "demo/CsvReader.h"

#include "core/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace corvane {
std::vector<std::string_view> SplitText(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return parts;
        text.remove_prefix(end + 1);
        if (text.empty())
            parts.push_back(text); // a separator at the end: one more part, which is empty
    }
    return parts;
}

std::optional<double> ParseNumber(std::string_view text) noexcept
{
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, value, std::chars_format::fixed);
    if (text.empty() || parsed.ec != std::errc() || parsed.ptr != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

CsvReader::CsvReader(std::string name, ByteSpan text, std::string_view columns)
    : m_name(std::move(name)),
      m_rest(reinterpret_cast<const char*>(text.data()), text.size()),
      m_columns(SplitText(columns, ','))
{
    if (columns.empty())
        return;
    if (!TakeLine() || m_line != columns)
        Refuse("does not begin with the columns " + std::string(columns));
}

bool CsvReader::TakeLine()
{
    if (m_rest.empty())
        return false;
    const std::size_t end = std::min(m_rest.find('\n'), m_rest.size());
    m_line = m_rest.substr(0, end);
    m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
    if (m_line.ends_with('\r'))
        m_line.remove_suffix(1);
    ++m_lineNumber;
    return true;
}

bool CsvReader::Next()
{
    m_fields.clear();
    if (m_failure || !TakeLine())
        return false;
    m_fields = SplitText(m_line, ',');
    if (IsBlank() || m_columns.empty() || m_fields.size() == m_columns.size())
        return true;
    Refuse("has " + NumberText(static_cast<std::int64_t>(m_fields.size())) + " fields instead of " +
           NumberText(static_cast<std::int64_t>(m_columns.size())));
    return false;
}

std::string_view CsvReader::Text(std::size_t column) const noexcept
{
    return column < m_fields.size() ? m_fields[column] : std::string_view();
}

std::string CsvReader::ColumnName(std::size_t column) const
{
    if (column < m_columns.size())
        return std::string(m_columns[column]);
    return "field " + NumberText(static_cast<std::int64_t>(column) + 1);
}

double CsvReader::Number(std::size_t column, double lowest, double highest)
{
    const std::optional<double> value = ParseNumber(Text(column));
    if (!value || *value < lowest || *value > highest) {
        Refuse(ColumnName(column) + " is \"" + std::string(Text(column)) + "\", not a number from " +
               NumberText(lowest) + " to " + NumberText(highest));
        return 0;
    }
    return *value;
}

std::int32_t CsvReader::Whole(std::size_t column, std::int32_t lowest, std::int32_t highest)
{
    const double value = Number(column, lowest, highest);
    if (value != std::floor(value)) {
        Refuse(ColumnName(column) + " is \"" + std::string(Text(column)) + "\", not a whole number");
        return 0;
    }
    return static_cast<std::int32_t>(value);
}

std::optional<double> CsvReader::OptionalNumber(std::size_t column, double lowest, double highest)
{
    if (Text(column).empty())
        return std::nullopt;
    return Number(column, lowest, highest);
}

void CsvReader::Refuse(std::string why)
{
    if (!m_failure)
        m_failure = Fail(m_name + " line " + NumberText(m_lineNumber), std::move(why));
}
} // namespace corvane
