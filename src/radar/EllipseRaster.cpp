#include "radar/EllipseRaster.h"

#include "core/Rounding.h"
#include "radar/LineRaster.h"
#include "radar/PixelPen.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace corvane {
namespace {
struct EllipseShape {
    double CenterX = 0;
    double CenterY = 0;
    double RadiusX = 0;
    double RadiusY = 0;
};

/// A direction in pixels, y up.
struct Direction {
    double X = 0;
    double Y = 0;
    [[nodiscard]] double Length() const noexcept { return std::sqrt(X * X + Y * Y); }
};

/// The turn between two radials, counter-clockwise from the first to the second.
class RadialSector {
public:
    RadialSector(Direction start, Direction end) noexcept : m_start(start), m_end(end)
    {
        m_turn = Cross(start, end);
        m_whole = m_turn == 0 && Dot(start, end) >= 0;
    }

    [[nodiscard]] bool Contains(Direction p) const noexcept
    {
        return m_whole || Between(p) || Touches(m_start, p) || Touches(m_end, p);
    }

private:
    static double Cross(Direction a, Direction b) noexcept { return a.X * b.Y - a.Y * b.X; }
    static double Dot(Direction a, Direction b) noexcept { return a.X * b.X + a.Y * b.Y; }

    [[nodiscard]] bool Between(Direction p) const noexcept
    {
        if (m_turn >= 0) // up to half a turn
            return Cross(m_start, p) >= 0 && (m_turn == 0 || Cross(p, m_end) >= 0);
        return Cross(m_start, p) >= 0 || Cross(p, m_end) >= 0;
    }
    /// The radial passes through the pixel: an arc reaches the lines that go on from its ends.
    static bool Touches(Direction radial, Direction p) noexcept
    {
        return Dot(radial, p) > 0 && std::abs(Cross(radial, p)) <= 0.5 * radial.Length();
    }

    Direction m_start;
    Direction m_end;
    double m_turn = 0;
    bool m_whole = false;
};

struct WholeTurn {
    static bool Contains(Direction /*p*/) noexcept { return true; }
};

struct PixelRange {
    std::int32_t First = 0;
    std::int32_t Last = -1;
};
} // namespace

static EllipseShape Inscribed(ScopePoint corner1, ScopePoint corner2) noexcept
{
    return {(static_cast<double>(corner1.X) + corner2.X) / 2, (static_cast<double>(corner1.Y) + corner2.Y) / 2,
            std::abs(static_cast<double>(corner1.X) - corner2.X) / 2,
            std::abs(static_cast<double>(corner1.Y) - corner2.Y) / 2};
}

/// The pixels within a distance of a centre, cut to one side of the image.
static PixelRange VisibleAround(double center, double distance, std::int32_t side, std::int32_t reach) noexcept
{
    return {RoundTo<std::int32_t>(std::max(center - distance, -static_cast<double>(reach))),
            RoundTo<std::int32_t>(std::min(center + distance, static_cast<double>(side) - 1 + reach))};
}

/// Half the chord at an offset from the centre; 0 beyond the radius. The product form keeps its digits on huge
/// ellipses.
static double HalfChord(double offset, double alongRadius, double acrossRadius) noexcept
{
    const double square = (alongRadius - offset) * (alongRadius + offset);
    return square > 0 ? acrossRadius * (std::sqrt(square) / alongRadius) : 0;
}

namespace {
/// Walks the outline as two flat parts, one pixel a column, and two steep ones, one pixel a row, which meet where it is
/// inclined by 45 degrees.
template <class Sector> class OutlineWalk {
public:
    OutlineWalk(PixelImage& image, const DrawState& state, const EllipseShape& shape, const Sector& sector,
                double scale) noexcept
        : m_image(image), m_pen(image, state, scale), m_shape(shape), m_sector(sector)
    {
        const double diagonal = std::hypot(shape.RadiusX, shape.RadiusY);
        m_flat = shape.RadiusX * (shape.RadiusX / diagonal);
        m_steep = shape.RadiusY * (shape.RadiusY / diagonal);
    }

    void Draw() noexcept
    {
        const PixelRange columns = VisibleAround(m_shape.CenterX, m_flat, m_image.Width(), m_pen.Reach());
        for (std::int32_t x = columns.First; x <= columns.Last; ++x) {
            const double half = HalfChord(x - m_shape.CenterX, m_shape.RadiusX, m_shape.RadiusY);
            Put(x, RoundHalfEven(m_shape.CenterY - half), true);
            Put(x, RoundHalfEven(m_shape.CenterY + half), true);
        }
        const PixelRange rows = VisibleAround(m_shape.CenterY, m_steep, m_image.Height(), m_pen.Reach());
        for (std::int32_t y = rows.First; y <= rows.Last; ++y) {
            const double half = HalfChord(y - m_shape.CenterY, m_shape.RadiusY, m_shape.RadiusX);
            Put(RoundHalfEven(m_shape.CenterX - half), y, false);
            Put(RoundHalfEven(m_shape.CenterX + half), y, false);
        }
    }

private:
    [[nodiscard]] bool Visible(double x, double y) const noexcept
    {
        const double reach = m_pen.Reach();
        return x >= -reach && x < m_image.Width() + reach && y >= -reach && y < m_image.Height() + reach;
    }

    /// The pixel's number along the outline, counter-clockwise from the right, so that dashes run on around it.
    [[nodiscard]] std::int64_t StepAt(Direction p, bool onFlat) const noexcept
    {
        const double quarter = m_flat + m_steep;
        const double fromSide = onFlat ? quarter - std::abs(p.X) : std::abs(p.Y);
        if (p.Y >= 0)
            return static_cast<std::int64_t>(p.X >= 0 ? fromSide : 2 * quarter - fromSide);
        return static_cast<std::int64_t>(p.X < 0 ? 2 * quarter + fromSide : 4 * quarter - fromSide);
    }

    void Put(double x, double y, bool onFlat) noexcept
    {
        const Direction p{x - m_shape.CenterX, m_shape.CenterY - y};
        if (Visible(x, y) && m_sector.Contains(p))
            m_pen.Put(static_cast<std::int64_t>(x), static_cast<std::int64_t>(y), StepAt(p, onFlat));
    }

    PixelImage& m_image;
    PixelPen m_pen;
    const EllipseShape& m_shape;
    const Sector& m_sector;
    double m_flat = 0;  ///< half the columns of a flat part
    double m_steep = 0; ///< half the rows of a steep part
};
} // namespace

static void FillEllipse(PixelImage& image, const EllipseShape& shape, Color color) noexcept
{
    const PixelRange rows = VisibleAround(shape.CenterY, shape.RadiusY, image.Height(), 0);
    for (std::int32_t y = rows.First; y <= rows.Last; ++y) {
        const double half = HalfChord(y - shape.CenterY, shape.RadiusY, shape.RadiusX);
        const PixelRange columns = VisibleAround(shape.CenterX, half, image.Width(), 0);
        if (columns.First <= columns.Last)
            std::fill(image.Row(y) + columns.First, image.Row(y) + columns.Last + 1, PixelImage::PixelOf(color));
    }
}

/// Whether an ellipse is a circle of radius 1 in a thin solid line, as trails have by the thousand.
static bool IsTrailDot(const DrawState& state, ScopePoint corner1, ScopePoint corner2, double scale) noexcept
{
    const auto apart = [](std::int32_t a, std::int32_t b) { return std::abs(std::int64_t{a} - b); };
    return scale == 1 && state.PenWidth <= 1 && state.Style == PenStyle::Solid && apart(corner1.X, corner2.X) == 2 &&
           apart(corner1.Y, corner2.Y) == 2;
}

/// The five pixels that the walk around such a circle comes to as well.
static void RasterTrailDot(PixelImage& image, const DrawState& state, std::int64_t x, std::int64_t y) noexcept
{
    if (state.FillSolid) {
        DrawState fill;
        fill.PenColor = state.FillColor;
        PixelPen(image, fill, 1).Put(x, y, 0);
    }
    PixelPen pen(image, state, 1);
    pen.Put(x - 1, y, 0);
    pen.Put(x + 1, y, 0);
    pen.Put(x, y - 1, 0);
    pen.Put(x, y + 1, 0);
}

void RasterEllipse(PixelImage& image, const DrawState& state, ScopePoint corner1, ScopePoint corner2,
                   double scale) noexcept
{
    if (IsTrailDot(state, corner1, corner2, scale)) {
        RasterTrailDot(image, state, (std::int64_t{corner1.X} + corner2.X) / 2,
                       (std::int64_t{corner1.Y} + corner2.Y) / 2);
        return;
    }
    if (corner1.X == corner2.X || corner1.Y == corner2.Y) {
        RasterLine(image, state, corner1, corner2, scale);
        return;
    }
    const EllipseShape shape = Inscribed(corner1, corner2);
    if (state.FillSolid)
        FillEllipse(image, shape, state.FillColor);
    OutlineWalk(image, state, shape, WholeTurn{}, scale).Draw();
}

void RasterArc(PixelImage& image, const DrawState& state, ScopePoint corner1, ScopePoint corner2, ScopePoint start,
               ScopePoint end, double scale) noexcept
{
    if (corner1.X == corner2.X || corner1.Y == corner2.Y)
        return;
    const EllipseShape shape = Inscribed(corner1, corner2);
    const auto radial = [&shape](ScopePoint through) {
        return Direction{through.X - shape.CenterX, shape.CenterY - through.Y};
    };
    const RadialSector sector(radial(start), radial(end));
    OutlineWalk(image, state, shape, sector, scale).Draw();
}
} // namespace corvane
