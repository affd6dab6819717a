#pragma once

#include "core/Bytes.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace corvane {
/// Cuts a stream of bytes, which comes in pieces of any size, into lines. A line that is longer than any of the feed
/// can be is cut off and passed over to its end, so that a stream without line ends takes no more room than one line.
class LineCutter {
public:
    static constexpr std::size_t LongestLine = 1000;

    /// Calls onLine(std::string_view) for every line that the piece completes, without its LF.
    template <class OnLine> void Feed(std::string_view piece, OnLine&& onLine)
    {
        while (!piece.empty()) {
            const std::size_t end = piece.find('\n');
            Take(piece.substr(0, end), end != std::string_view::npos, onLine);
            piece.remove_prefix(end == std::string_view::npos ? piece.size() : end + 1);
        }
    }
    /// Forgets a line that has begun: the stream starts anew.
    void Reset() noexcept
    {
        m_begun.clear();
        m_tooLong = false;
    }

private:
    template <class OnLine> void Take(std::string_view part, bool ends, OnLine&& onLine)
    {
        if (m_begun.size() + part.size() > LongestLine) {
            m_begun.clear();
            m_tooLong = true;
        }
        if (ends && !m_tooLong && m_begun.empty())
            return onLine(part); // the common case: nothing is copied
        if (!m_tooLong)
            m_begun.append(part);
        if (!ends)
            return;
        if (!m_tooLong)
            onLine(std::string_view(m_begun));
        Reset();
    }

    std::string m_begun; ///< a line whose end has not come
    bool m_tooLong = false;
};
} // namespace corvane
