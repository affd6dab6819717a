#include "area/EarlyEnds.h"

#include <algorithm>

namespace corvane {
void EarlyEnds::Note(std::string_view file)
{
    if (std::find(m_files.begin(), m_files.end(), file) == m_files.end())
        m_files.emplace_back(file);
}

void EarlyEnds::Note(const EarlyEnds& others)
{
    for (const std::string& file : others.m_files)
        Note(file);
}

std::string EarlyEnds::Warning() const
{
    std::string names;
    for (const std::string& file : m_files)
        names += (names.empty() ? "" : ", ") + file;
    if (names.empty())
        return {};
    return names + ": ends too early, so that records are missing; create the database again";
}
} // namespace corvane
