#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane {
/// Cuts a stream of bytes, which comes in pieces of any size, into lines. What a line holds beyond LongestLine
/// characters is passed over, so that a stream without line ends takes no more room than one line.
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
    void Reset() noexcept { m_begun.clear(); }

private:
    template <class OnLine> void Take(std::string_view part, bool ends, OnLine& onLine)
    {
        if (ends && m_begun.empty())
            return onLine(part.substr(0, LongestLine)); // the common case: nothing is copied
        m_begun.append(part.substr(0, LongestLine - m_begun.size()));
        if (!ends)
            return;
        onLine(std::string_view(m_begun));
        m_begun.clear();
    }

    std::string m_begun; ///< a line whose end has not come
};
} // namespace corvane
