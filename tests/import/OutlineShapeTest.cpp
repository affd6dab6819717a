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

/// The vertices of the outline that every step-th point from phase on joins, as numbers of its own points.
std::vector<double> Joined(std::span<const LatLon> outline, std::size_t step, std::size_t phase)
{
    std::vector<double> numbers;
    for (std::size_t i = phase; i < outline.size(); i += step)
        numbers.push_back(outline[i].Lat);
    return numbers;
}

TEST(UnbrokenOutline, IsDrawnWholeAtEveryStep)
{
    for (const std::size_t count : {2U, 9U, 19U, 40U}) {
        std::vector<LatLon> line;
        for (std::size_t i = 0; i < count; ++i)
            line.push_back({static_cast<double>(i), 0});
        const std::vector<LatLon> open = UnbrokenOutline(line);
        line.push_back(line.front());
        const std::vector<LatLon> ring = UnbrokenOutline(line);
        for (std::size_t step = 3; step <= CoarsestOutlineStep; ++step) {
            for (std::size_t phase = 0; phase < step; ++phase) {
                const std::vector<double> ends = Joined(open, step, phase);
                EXPECT_EQ(ends.front(), 0) << count << ' ' << step << ' ' << phase;
                EXPECT_EQ(ends.back(), static_cast<double>(count - 1)) << count << ' ' << step << ' ' << phase;
                if (line.size() < 8)
                    continue;
                double way = 0; // around the ring
                const std::vector<double> joined = Joined(ring, step, phase);
                for (std::size_t i = 1; i < joined.size(); ++i)
                    way += std::fmod(joined[i] - joined[i - 1] + 10.0 * static_cast<double>(count),
                                     static_cast<double>(count));
                const bool wholeTurnsApart = step % count == 0; // every joined point is the same one
                EXPECT_TRUE(wholeTurnsApart || way + static_cast<double>(step) > static_cast<double>(count));
            }
        }
    }
}
} // namespace
} // namespace corvane
