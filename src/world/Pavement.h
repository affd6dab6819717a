#pragma once

#include "core/Geodesy.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace corvane {
/// A vertex of a pavement's edge. Control bends the way out of it; mirrored at the vertex, the way in.
struct PavementNode {
    LatLon Position;
    std::optional<LatLon> Control;
};

/// The edges of pavements as straight lines: Bezier curves become pieces that lie within half a metre of them.
class PavementEdges {
public:
    /// More points than this an airport's pavements cannot have; what follows is left out and counted.
    static constexpr std::size_t MostPoints = 500000;

    /// A line of points, each joined to the next; a closed one also joins its last point to its first.
    struct Line {
        std::size_t First = 0; ///< index into Points()
        std::size_t Count = 0;
        bool Closed = false;
    };

    /// Goes on to a vertex of the line at hand.
    void Add(const PavementNode& node);
    /// Ends the line at hand; closed, its last vertex is joined to its first.
    void End(bool closed);

    /// How many points have been left out.
    [[nodiscard]] std::int64_t LeftOut() const noexcept { return m_leftOut; }
    [[nodiscard]] const std::vector<LatLon>& Points() const noexcept { return m_points; }
    /// The lines of two points and more.
    [[nodiscard]] const std::vector<Line>& Lines() const noexcept { return m_lines; }

private:
    void Join(const PavementNode& from, const PavementNode& to);
    void AddPoint(const LatLon& point);

    std::vector<LatLon> m_points;
    std::vector<Line> m_lines;
    std::size_t m_lineStart = 0;
    std::optional<PavementNode> m_first; ///< of the line at hand
    PavementNode m_last;
    std::int64_t m_leftOut = 0;
    std::int64_t m_leftOutBefore = 0; ///< before the line at hand
};
} // namespace corvane
