#include "radar/EllipseRaster.h"
#include "radar/LineRaster.h"
#include "radar/RasterSurface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <vector>

namespace corvane {
namespace {
using testing::ElementsAre;

constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();

/// One text a row: "#" where the pen was, "+" where the fill shows, "." elsewhere.
std::vector<std::string> Rows(const PixelImage& image, Color pen = ScopeGreen)
{
    std::vector<std::string> rows;
    for (std::int32_t y = 0; y < image.Height(); ++y) {
        std::string& row = rows.emplace_back();
        for (std::int32_t x = 0; x < image.Width(); ++x) {
            const std::uint32_t pixel = image.At(x, y);
            row += pixel == PixelImage::PixelOf(pen) ? '#' : pixel == PixelImage::Black ? '.' : '+';
        }
    }
    return rows;
}

bool IsSet(const PixelImage& image, std::int32_t x, std::int32_t y)
{
    return image.At(x, y) != PixelImage::Black;
}

TEST(RasterLine, IncludesBothEnds)
{
    PixelImage image(7, 4);
    RasterLine(image, {}, {1, 0}, {5, 2});
    RasterLine(image, {}, {0, 3}, {0, 3});
    EXPECT_THAT(Rows(image), ElementsAre(".#.....", "..##...", "....##.", "#......"));
}

TEST(RasterLine, WiderPensAreStamped)
{
    DrawState two;
    two.PenWidth = 2;
    PixelImage image(6, 4);
    RasterLine(image, two, {2, 2}, {3, 2});
    EXPECT_THAT(Rows(image), ElementsAre("......", ".###..", ".###..", "......"));
    DrawState three;
    three.PenWidth = 3;
    three.Style = PenStyle::Dash; // wide pens do not break their lines
    PixelImage wide(60, 3);
    RasterLine(wide, three, {1, 1}, {58, 1});
    EXPECT_EQ(Rows(wide)[0], "." + std::string(58, '#') + ".");
    EXPECT_EQ(Rows(wide)[1], std::string(60, '#'));
}

TEST(RasterLine, DashesAndDotsCountPixelsFromItsStart)
{
    DrawState state;
    PixelImage image(60, 2);
    state.Style = PenStyle::Dash;
    RasterLine(image, state, {0, 0}, {59, 0});
    state.Style = PenStyle::Dot;
    RasterLine(image, state, {11, 1}, {0, 1});
    const std::string dash = "##################......"; // 18 pixels and a gap of 6
    EXPECT_EQ(Rows(image)[0], dash + dash + std::string(12, '#'));
    EXPECT_EQ(Rows(image)[1], "...###...###" + std::string(48, '.'));
}

TEST(RasterSurface, IsDrawnLargerOnADenseScreen)
{
    const ScopeFont noCharacters;
    PixelImage image(24, 8);
    RasterSurface surface(image, noCharacters, 2);
    surface.State.Style = PenStyle::Dot;
    surface.Line({0, 0}, {11, 0}); // three pixels, three pixels' gap; each two by two now
    surface.State.Style = PenStyle::Solid;
    surface.Line({1, 2}, {3, 2});
    surface.SetPixel({11, 3}, ScopeGreen);
    const std::string dots = "#######.....#######.....";
    EXPECT_THAT(Rows(image),
                ElementsAre(dots, dots, std::string(24, '.'), std::string(24, '.'), "..######................",
                            "..######................", "......................##", "......................##"));
}

TEST(RasterLine, ReachesAcrossTheWholeNumberRange)
{
    PixelImage image(50, 50);
    RasterLine(image, {}, {Lowest, Lowest}, {Highest, Highest});
    for (std::int32_t i = 0; i < 50; ++i)
        EXPECT_TRUE(IsSet(image, i, i)) << i;
    PixelImage untouched(50, 50);
    DrawState dashed;
    dashed.Style = PenStyle::Dash;
    for (const auto& [from, to] : {std::pair{ScopePoint{Lowest, 60}, ScopePoint{Highest, 60}},
                                   {ScopePoint{Lowest, -2}, ScopePoint{Highest, -3}},
                                   {ScopePoint{60, Lowest}, ScopePoint{60, Highest}},
                                   {ScopePoint{Lowest, 0}, ScopePoint{0, Highest}},
                                   {ScopePoint{Highest, Highest}, ScopePoint{Highest, Highest}}})
        RasterLine(untouched, dashed, from, to);
    EXPECT_EQ(untouched, PixelImage(50, 50));
}

TEST(RasterEllipse, SmallDotsAreRound)
{
    DrawState state;
    state.FillSolid = true;
    state.FillColor = {128, 0, 0};
    PixelImage image(7, 7);
    RasterEllipse(image, state, {1, 5}, {5, 1}); // lower left corner first, as dots come
    EXPECT_THAT(Rows(image), ElementsAre(".......", "..###..", ".#+++#.", ".#+++#.", ".#+++#.", "..###..", "......."));
    PixelImage dots(6, 4); // of trails, one of them across the corner
    RasterEllipse(dots, state, {2, 3}, {4, 1});
    RasterEllipse(dots, state, {-1, 1}, {1, -1});
    EXPECT_THAT(Rows(dots), ElementsAre("+#....", "#..#..", "..#+#.", "...#.."));
    PixelImage outline(11, 11);
    RasterEllipse(outline, {}, {0, 10}, {10, 0});
    EXPECT_THAT(Rows(outline),
                ElementsAre("...#####...", "..#.....#..", ".#.......#.", "#.........#", "#.........#", "#.........#",
                            "#.........#", "#.........#", ".#.......#.", "..#.....#..", "...#####..."));
}

TEST(RasterEllipse, WithoutWidthIsALine)
{
    PixelImage image(3, 5);
    RasterEllipse(image, {}, {1, 3}, {1, 1});
    EXPECT_THAT(Rows(image), ElementsAre("...", ".#.", ".#.", ".#.", "..."));
    RasterArc(image, {}, {0, 0}, {0, 4}, {0, 0}, {0, 4});
    EXPECT_THAT(Rows(image), ElementsAre("...", ".#.", ".#.", ".#.", "..."));
}

TEST(RasterEllipse, HugeOnesShowTheirPassingEdge)
{
    PixelImage image(100, 100);
    RasterEllipse(image, {}, {-2'000'000'000, -1'000'000'000}, {50, 1'000'000'000});
    for (std::int32_t y = 0; y < 100; ++y)
        EXPECT_TRUE(IsSet(image, 50, y) && !IsSet(image, 49, y) && !IsSet(image, 51, y)) << y;
    PixelImage inside(100, 100);
    DrawState dashed;
    dashed.Style = PenStyle::Dash;
    RasterEllipse(inside, dashed, {Lowest, Lowest}, {Highest, Highest}); // all around the image
    RasterEllipse(inside, dashed, {Highest - 5, 0}, {Highest, 9});       // far beside it
    EXPECT_EQ(inside, PixelImage(100, 100));
    dashed.FillSolid = true;
    dashed.FillColor = {1, 2, 3};
    RasterEllipse(inside, dashed, {Lowest, Lowest}, {Highest, Highest});
    EXPECT_EQ(inside.At(0, 0), PixelImage::PixelOf({1, 2, 3}));
    EXPECT_EQ(inside.At(99, 99), PixelImage::PixelOf({1, 2, 3}));
}

/// 200 x 50 around (100, 25): four times as wide as high, as a scope over the far north shows a circle.
struct AnisotropicArc : testing::Test {
    PixelImage Image = PixelImage(201, 51);
    void Draw(ScopePoint start, ScopePoint end) { RasterArc(Image, {}, {0, 0}, {200, 50}, start, end); }
    std::size_t SetPixels() const
    {
        std::size_t count = 0;
        for (const std::string& row : Rows(Image))
            count += static_cast<std::size_t>(std::count(row.begin(), row.end(), '#'));
        return count;
    }
};

TEST_F(AnisotropicArc, RadialsAreDirectionsInPixels)
{
    Draw({120, 5}, {80, 5}); // 45 degrees up on either side: they meet the ellipse at x = 100 +- 24.25, y = 0.75
    EXPECT_TRUE(IsSet(Image, 100, 0));
    EXPECT_TRUE(IsSet(Image, 122, 1));
    EXPECT_TRUE(IsSet(Image, 78, 1));
    for (std::int32_t y = 0; y < 51; ++y)
        for (std::int32_t x = 0; x < 201; ++x)
            EXPECT_FALSE(IsSet(Image, x, y) && (x < 75 || x > 125 || y > 1)) << x << "," << y;
}

TEST_F(AnisotropicArc, RunsCounterClockwise)
{
    Draw({80, 5}, {120, 5}); // the rest of it
    EXPECT_FALSE(IsSet(Image, 100, 0));
    EXPECT_FALSE(IsSet(Image, 120, 1));
    EXPECT_TRUE(IsSet(Image, 0, 25));
    EXPECT_TRUE(IsSet(Image, 100, 50));
    EXPECT_TRUE(IsSet(Image, 200, 25));
    EXPECT_TRUE(IsSet(Image, 171, 7)); // where 45 degrees would be as a parameter
}

TEST_F(AnisotropicArc, HalfTurnsAndEqualRadials)
{
    Draw({300, 25}, {-100, 25}); // from the right over the top to the left
    EXPECT_TRUE(IsSet(Image, 100, 0));
    EXPECT_FALSE(IsSet(Image, 100, 50));
    const std::size_t half = SetPixels();
    Draw({-100, 25}, {300, 25}); // the lower half completes it
    const PixelImage both = Image;
    EXPECT_GT(SetPixels(), 2 * half - 4);
    Image = PixelImage(201, 51);
    Draw({150, 10}, {150, 10});
    EXPECT_EQ(Image, both);
    Image = PixelImage(201, 51);
    Draw({100, 25}, {150, 10}); // no radial through the centre
    EXPECT_EQ(Image, both);
    Image = PixelImage(201, 51);
    RasterEllipse(Image, {}, {200, 50}, {0, 0});
    EXPECT_EQ(Image, both);
}

TEST_F(AnisotropicArc, DashesGoOnAroundTheOutline)
{
    DrawState dashed;
    dashed.Style = PenStyle::Dash;
    RasterEllipse(Image, dashed, {0, 0}, {200, 50});
    const double share = static_cast<double>(SetPixels());
    Image = PixelImage(201, 51);
    RasterEllipse(Image, {}, {0, 0}, {200, 50});
    EXPECT_NEAR(share / static_cast<double>(SetPixels()), 0.75, 0.05); // 18 of every 24
}

/// The part of an image that a smaller one would hold.
PixelImage Crop(const PixelImage& image, std::int32_t left, std::int32_t top, std::int32_t side)
{
    PixelImage crop(side, side);
    for (std::int32_t y = 0; y < side; ++y)
        std::copy_n(image.Row(top + y) + left, side, crop.Row(y));
    return crop;
}

TEST(Raster, SetsTheSamePixelsHoweverMuchIsClipped)
{
    constexpr std::int32_t Side = 40;
    constexpr std::int32_t Margin = 300;
    std::mt19937 random(3);
    std::uniform_int_distribution<std::int32_t> coordinate(-Margin + 5, Margin + Side - 5);
    std::uniform_int_distribution<int> choice(0, 2);
    for (int i = 0; i < 300; ++i) {
        DrawState state;
        state.PenWidth = 1 + choice(random);
        state.Style = static_cast<PenStyle>(choice(random));
        state.FillSolid = choice(random) == 0;
        state.FillColor = {9, 9, 9};
        const auto point = [&] { return ScopePoint{coordinate(random), coordinate(random)}; };
        const ScopePoint points[] = {point(), point(), point(), point()};
        PixelImage small(Side, Side);
        PixelImage large(Side + 2 * Margin, Side + 2 * Margin);
        const auto moved = [&](int n) { return Offset(points[n], Margin, Margin); };
        switch (choice(random)) {
        case 0:
            RasterLine(small, state, points[0], points[1]);
            RasterLine(large, state, moved(0), moved(1));
            break;
        case 1:
            RasterEllipse(small, state, points[0], points[1]);
            RasterEllipse(large, state, moved(0), moved(1));
            break;
        default:
            RasterArc(small, state, points[0], points[1], points[2], points[3]);
            RasterArc(large, state, moved(0), moved(1), moved(2), moved(3));
        }
        ASSERT_EQ(Rows(small), Rows(Crop(large, Margin, Margin, Side))) << i;
    }
}

TEST(Raster, AnyCoordinatesLeaveAnEmptyImageAlone)
{
    PixelImage empty;
    for (const PenStyle style : {PenStyle::Solid, PenStyle::Dot}) {
        DrawState state;
        state.Style = style;
        state.FillSolid = true;
        RasterLine(empty, state, {-5, -5}, {5, 5});
        RasterEllipse(empty, state, {-5, -5}, {5, 5});
        RasterArc(empty, state, {Lowest, Lowest}, {Highest, Highest}, {Lowest, Highest}, {Highest, Lowest});
    }
    EXPECT_EQ(empty.Width(), 0);
}
} // namespace
} // namespace corvane
