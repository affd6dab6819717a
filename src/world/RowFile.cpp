#include "world/RowFile.h"

#include "core/Rounding.h"
#include "core/Text.h"

#include <algorithm>
#include <charconv>

namespace corvane {
static constexpr int LastRow = 99;

Result<void> RowFile::ReadHead()
{
    if (!m_lines.Next() || !m_lines.Next())
        return m_lines.Failure() ? *m_lines.Failure() : Fail(Name(), "ends before its second line, the edition");
    RowReader row(m_lines.Line());
    const std::optional<double> edition = NumberOf(row.Field());
    if (!edition)
        return Fail(Name(), "its second line does not begin with the number of an edition: it is another kind of file");
    m_edition = RoundTo<std::int32_t>(*edition);
    m_title = Windows1252ToUtf8(NameText(m_lines.Line(), m_lines.Line()));
    return {};
}

bool RowFile::GoOn()
{
    constexpr std::int64_t LinesBetweenTellings = 8192;
    if (m_lines.Number() % LinesBetweenTellings == 0 && m_progress)
        m_stopped = m_stopped || !m_progress(m_lines.PartDone());
    return !m_stopped && !m_atEnd;
}

bool RowFile::Next()
{
    while (GoOn() && m_lines.Next()) {
        const std::string_view line = m_lines.Line();
        const std::size_t start = std::min(line.find_first_not_of(" \t"), line.size());
        const char* const end = line.data() + line.size();
        if (start == line.size())
            continue;
        const auto [rest, error] = std::from_chars(line.data() + start, end, m_code);
        if (m_lines.TooLong()) {
            m_log.PassOver(LineNumber(), "is longer than 256 kB");
        } else if (error != std::errc() || (rest != end && *rest != ' ' && *rest != '\t')) {
            m_log.PassOver(LineNumber(),
                           "begins with \"" + Excerpt(RowReader(line).Field()) + "\", not a row's number");
        } else {
            m_fields = {rest, static_cast<std::size_t>(end - rest)};
            m_atEnd = m_code == LastRow && m_fields.find_first_not_of(" \t") == std::string_view::npos;
            return !m_atEnd;
        }
    }
    return false;
}

bool RowFile::PassedOver(const RowReader& row)
{
    if (row.Failed())
        m_log.PassOver(LineNumber(), row.Why());
    return row.Failed();
}

Result<void> RowFile::Finish()
{
    if (m_stopped)
        return Fail(Name(), "the import was interrupted");
    if (m_lines.Failure())
        return *m_lines.Failure();
    if (!m_atEnd)
        return Fail(Name(), "does not end with a row 99: it is cut off, or another kind of file");
    return m_lines.Drain();
}
} // namespace corvane
