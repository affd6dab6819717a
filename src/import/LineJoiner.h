#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace corvane {
/// A position on the grid of a file that is cut into tiles.
struct GridPoint {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    bool operator==(const GridPoint&) const = default;
};
using GridLine = std::vector<GridPoint>;

/// Joins the pieces of lines that were cut at the edges of tiles. Time and memory are in proportion to the points.
class LineJoiner {
public:
    /// Notes a piece of two points or more. Only pieces of one group are joined.
    void Add(std::int32_t group, GridLine piece);
    /// The lines, each with the direction of its first piece. Where an odd number of pieces meets, a line ends.
    [[nodiscard]] std::vector<GridLine> Join() &&;

private:
    struct End {
        std::int32_t Group;
        GridPoint At;
        bool operator==(const End&) const = default;
    };
    struct EndHash {
        std::size_t operator()(const End& end) const noexcept;
    };
    struct Meeting {
        std::size_t Ends = 0;            ///< of all pieces
        std::vector<std::size_t> Pieces; ///< among them all that are not joined yet
    };
    struct Piece {
        std::int32_t Group;
        GridLine Points;
        bool Joined = false;
    };

    void Extend(GridLine& line, std::int32_t group);

    std::vector<Piece> m_pieces;
    std::unordered_map<End, Meeting, EndHash> m_meetings;
};
} // namespace corvane
