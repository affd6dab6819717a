#pragma once

#include "core/ByteSource.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// The database files that were found to end before their last record does: by their number of records, or inside one.
/// What they lack has been read as blank.
class EarlyEnds {
public:
    /// file  its full name, as errors give it; noted once
    void Note(std::string_view file);
    /// Takes over what others have noted.
    void Note(const EarlyEnds& others);

    [[nodiscard]] const std::vector<std::string>& Files() const noexcept { return m_files; }
    /// "FILE: WHY" in UTF-8, of all files in one; empty where there are none.
    [[nodiscard]] std::string Warning() const;

private:
    std::vector<std::string> m_files;
};

/// Notes a source, where somebody wants to know.
inline void NoteEarlyEnd(EarlyEnds* earlyEnds, const ByteSource& source)
{
    if (earlyEnds != nullptr)
        earlyEnds->Note(source.Name());
}
} // namespace corvane
