#include "import/LineJoiner.h"
#include "import/OutlineEnds.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::SizeIs;
using testing::UnorderedElementsAre;

TEST(LineJoiner, JoinsPiecesHoweverTheyLie)
{
    LineJoiner joiner;
    joiner.Add(1, {{5, 0}, {6, 1}});
    joiner.Add(1, {{9, 9}, {8, 8}, {6, 1}}); // the other way round
    joiner.Add(1, {{1, 1}, {5, 0}});
    joiner.Add(2, {{9, 9}, {7, 7}}); // another group
    EXPECT_THAT(std::move(joiner).Join(),
                UnorderedElementsAre(GridLine{{1, 1}, {5, 0}, {6, 1}, {8, 8}, {9, 9}}, GridLine{{9, 9}, {7, 7}}));
}

TEST(LineJoiner, ClosesRingsThatTouchAndEndsLinesAtForks)
{
    LineJoiner rings; // two rings with one corner in common, each in two pieces
    rings.Add(0, {{0, 0}, {1, 1}, {2, 0}});
    rings.Add(0, {{2, 0}, {1, -1}, {0, 0}});
    rings.Add(0, {{0, 0}, {-1, 1}, {-2, 0}});
    rings.Add(0, {{-2, 0}, {-1, -1}, {0, 0}});
    std::size_t points = 0;
    for (const GridLine& line : std::move(rings).Join()) {
        EXPECT_EQ(line.front(), line.back());
        points += line.size() - 1;
    }
    EXPECT_EQ(points, 8U);
    LineJoiner fork;
    fork.Add(0, {{0, 0}, {1, 0}});
    fork.Add(0, {{0, 0}, {0, 1}});
    fork.Add(0, {{0, 0}, {-1, 0}});
    EXPECT_THAT(std::move(fork).Join(), SizeIs(3));
}

/// The vertices of the outline that every step-th point from phase on joins.
std::vector<LatLon> Joined(std::span<const LatLon> outline, std::size_t step, std::size_t phase)
{
    std::vector<LatLon> vertices;
    for (std::size_t i = phase; i < outline.size(); i += step)
        vertices.push_back(outline[i]);
    return vertices;
}

TEST(UnbrokenOutline, ReachesBothEndsAtEveryStep)
{
    for (const std::size_t count : {2U, 9U, 19U, 40U}) {
        std::vector<LatLon> line;
        for (std::size_t i = 0; i < count; ++i)
            line.push_back({static_cast<double>(i), 0});
        for (const bool closed : {false, true}) {
            if (closed)
                line.push_back(line.front());
            if (closed && line.size() <= CoarsestOutlineStep)
                continue; // such a ring may vanish
            const std::vector<LatLon> outline = UnbrokenOutline(line);
            for (std::size_t step = 1; step <= CoarsestOutlineStep; ++step) {
                for (std::size_t phase = 0; phase < step; ++phase) {
                    const std::vector<LatLon> joined = Joined(outline, step, phase);
                    EXPECT_EQ(joined.front(), line.front()) << count << ' ' << step << ' ' << phase;
                    EXPECT_EQ(joined.back(), line.back()) << count << ' ' << step << ' ' << phase;
                }
            }
        }
    }
}
} // namespace
} // namespace corvane
