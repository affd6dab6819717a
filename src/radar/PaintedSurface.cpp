#include "radar/PaintedSurface.h"

#include "radar/EllipseRaster.h"
#include "radar/LineRaster.h"

#include <cmath>

namespace corvane {
ScopePoint PaintedSurface::OnImage(ScopePoint at) const noexcept
{
    if (m_scale == 1)
        return at;
    return {RoundTo<std::int32_t>(std::floor((at.X + 0.5) * m_scale)),
            RoundTo<std::int32_t>(std::floor((at.Y + 0.5) * m_scale))};
}

void PaintedSurface::Line(ScopePoint from, ScopePoint to)
{
    RasterLine(m_image, State, OnImage(from), OnImage(to), m_scale);
}

void PaintedSurface::Ellipse(ScopePoint corner1, ScopePoint corner2)
{
    RasterEllipse(m_image, State, OnImage(corner1), OnImage(corner2), m_scale);
}

void PaintedSurface::Arc(ScopePoint corner1, ScopePoint corner2, ScopePoint start, ScopePoint end)
{
    RasterArc(m_image, State, OnImage(corner1), OnImage(corner2), OnImage(start), OnImage(end), m_scale);
}

void PaintedSurface::SetPixel(ScopePoint at, Color color)
{
    const DrawState pen{color};
    RasterLine(m_image, pen, OnImage(at), OnImage(at), m_scale);
}

/// All four bytes of a pixel times part / 255, rounded, two bytes at a time.
static std::uint32_t PartOf(std::uint32_t pixel, std::uint32_t part) noexcept
{
    constexpr std::uint32_t EvenBytes = 0xff00ff;
    const auto scaled = [part](std::uint32_t bytes) {
        const std::uint32_t product = bytes * part;
        return (product + ((product >> 8) & EvenBytes) + 0x800080) >> 8 & EvenBytes;
    };
    return scaled(pixel & EvenBytes) | scaled(pixel >> 8 & EvenBytes) << 8;
}

void PaintedSurface::BlendGlyph(const ScopeFont::Glyph& glyph, std::int64_t left, std::int64_t top)
{
    const std::uint32_t ink = PixelImage::PixelOf(State.PenColor);
    const auto firstX = std::max<std::int64_t>(0, -left);
    const auto lastX = std::min<std::int64_t>(glyph.Width, m_image.Width() - left);
    const auto firstY = std::max<std::int64_t>(0, -top);
    const auto lastY = std::min<std::int64_t>(glyph.Height, m_image.Height() - top);
    for (std::int64_t y = firstY; y < lastY; ++y) {
        const std::uint8_t* coverage = m_font.Coverage.data() + glyph.Start + y * glyph.Width;
        std::uint32_t* row = m_image.Row(static_cast<std::int32_t>(top + y));
        for (std::int64_t x = firstX; x < lastX; ++x) {
            std::uint32_t& pixel = row[left + x];
            if (coverage[x] != 0)
                pixel = PartOf(ink, coverage[x]) + PartOf(pixel, 255U - coverage[x]);
        }
    }
}

void PaintedSurface::TextOut(ScopePoint at, std::string_view text)
{
    const ScopePoint topLeft = {RoundTo<std::int32_t>(at.X * m_scale), RoundTo<std::int32_t>(at.Y * m_scale)};
    std::int64_t pen = topLeft.X;
    const std::int64_t tallest = 4 * std::int64_t{m_font.LineHeight}; // accents may rise above the line
    if (topLeft.Y >= m_image.Height() + tallest || topLeft.Y <= -tallest)
        return;
    for (const char character : text) {
        if (pen >= m_image.Width() + tallest)
            return;
        const ScopeFont::Glyph& glyph = m_font.Glyphs[static_cast<unsigned char>(character)];
        BlendGlyph(glyph, pen + glyph.Left, std::int64_t{topLeft.Y} + glyph.Top);
        pen += glyph.Advance;
    }
}
} // namespace corvane
