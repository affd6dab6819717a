#include "import/LineJoiner.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace corvane {
std::size_t LineJoiner::EndHash::operator()(const End& end) const noexcept
{
    constexpr std::uint64_t Odd = 0x9E3779B97F4A7C15; // spreads neighbours over the table
    const std::uint64_t place =
        std::uint64_t{static_cast<std::uint32_t>(end.At.X)} << 32 | static_cast<std::uint32_t>(end.At.Y);
    std::uint64_t hash = (place ^ static_cast<std::uint32_t>(end.Group)) * Odd;
    hash = (hash ^ hash >> 32) * Odd;
    return static_cast<std::size_t>(hash ^ hash >> 32);
}

void LineJoiner::Add(std::int32_t group, GridLine piece)
{
    assert(piece.size() >= 2);
    for (const GridPoint& at : {piece.front(), piece.back()}) {
        Meeting& meeting = m_meetings[{group, at}];
        ++meeting.Ends;
        meeting.Pieces.push_back(m_pieces.size());
    }
    m_pieces.push_back({group, std::move(piece)});
}

/// Appends pieces as long as one goes on where the line ends.
void LineJoiner::Extend(GridLine& line, std::int32_t group)
{
    while (line.front() != line.back()) {
        Meeting& meeting = m_meetings[{group, line.back()}];
        if (meeting.Ends % 2 != 0)
            return;
        while (!meeting.Pieces.empty() && m_pieces[meeting.Pieces.back()].Joined)
            meeting.Pieces.pop_back();
        if (meeting.Pieces.empty())
            return;
        Piece& next = m_pieces[meeting.Pieces.back()];
        next.Joined = true;
        if (next.Points.front() != line.back())
            std::ranges::reverse(next.Points);
        line.insert(line.end(), next.Points.begin() + 1, next.Points.end());
    }
}

std::vector<GridLine> LineJoiner::Join() &&
{
    std::vector<GridLine> lines;
    for (Piece& piece : m_pieces) {
        if (piece.Joined)
            continue;
        piece.Joined = true;
        GridLine line = std::move(piece.Points);
        Extend(line, piece.Group);
        std::ranges::reverse(line);
        Extend(line, piece.Group);
        std::ranges::reverse(line);
        lines.push_back(std::move(line));
    }
    return lines;
}
} // namespace corvane
