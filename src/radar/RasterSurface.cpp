#include "radar/RasterSurface.h"

#include "radar/EllipseRaster.h"
#include "radar/LineRaster.h"

#include <cmath>
#include <span>

namespace corvane {
ScopePoint RasterSurface::OnImage(ScopePoint at) const noexcept
{
    if (m_scale == 1)
        return at;
    return {RoundTo<std::int32_t>(std::floor((at.X + 0.5) * m_scale)),
            RoundTo<std::int32_t>(std::floor((at.Y + 0.5) * m_scale))};
}

void RasterSurface::Line(ScopePoint from, ScopePoint to)
{
    RasterLine(m_image, State, OnImage(from), OnImage(to), m_scale * m_lineWidth);
}

void RasterSurface::Ellipse(ScopePoint corner1, ScopePoint corner2)
{
    RasterEllipse(m_image, State, OnImage(corner1), OnImage(corner2), m_scale * m_lineWidth);
}

void RasterSurface::Arc(ScopePoint corner1, ScopePoint corner2, ScopePoint start, ScopePoint end)
{
    RasterArc(m_image, State, OnImage(corner1), OnImage(corner2), OnImage(start), OnImage(end), m_scale * m_lineWidth);
}

void RasterSurface::SetPixel(ScopePoint at, Color color)
{
    const DrawState pen{color};
    RasterLine(m_image, pen, OnImage(at), OnImage(at), m_scale * m_lineWidth);
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

void RasterSurface::MixInk()
{
    const std::uint32_t pixel = PixelImage::PixelOf(State.PenColor);
    if (m_ink.Pixel == pixel)
        return;
    m_ink.Pixel = pixel;
    for (std::uint32_t coverage = 0; coverage < m_ink.Parts.size(); ++coverage) {
        m_ink.Parts[coverage] = PartOf(pixel, coverage);
        m_ink.OnBlack[coverage] = m_ink.Parts[coverage] + PartOf(PixelImage::Black, 255U - coverage);
    }
}

void RasterSurface::BlendGlyph(const ScopeFont::Glyph& glyph, std::int64_t left, std::int64_t top)
{
    const std::span pixels(m_font.Inked.data() + glyph.Start, glyph.Count);
    const std::int64_t width = m_image.Width();
    const std::int64_t height = m_image.Height();
    const auto blend = [this](std::uint32_t& pixel, std::uint32_t coverage) {
        pixel = pixel == PixelImage::Black ? m_ink.OnBlack[coverage]
                                           : m_ink.Parts[coverage] + PartOf(pixel, 255U - coverage);
    };
    if (left >= 0 && top >= 0 && left + glyph.Width <= width && top + glyph.Height <= height) {
        std::uint32_t* const corner = m_image.Row(static_cast<std::int32_t>(top)) + left;
        // Refreshing wipes the caches, and texts stand anywhere: what comes two cache lines on is fetched meanwhile.
        constexpr std::int64_t Ahead = 32;
        for (std::int64_t y = 0; y < glyph.Height; ++y)
            __builtin_prefetch(corner + y * width + Ahead, 1);
        for (const ScopeFont::InkedPixel& inked : pixels)
            blend(corner[inked.Y * width + inked.X], inked.Coverage);
        return;
    }
    for (const ScopeFont::InkedPixel& inked : pixels) { // across the image's edge
        const std::int64_t x = left + inked.X;
        const std::int64_t y = top + inked.Y;
        if (x >= 0 && x < width && y >= 0 && y < height)
            blend(m_image.Row(static_cast<std::int32_t>(y))[x], inked.Coverage);
    }
}

std::int32_t RasterSurface::TextWidth(std::string_view text) const
{
    std::int64_t width = 0;
    for (const char character : text)
        width += m_font.Glyphs[static_cast<unsigned char>(character)].Advance;
    return RoundTo<std::int32_t>(std::ceil(static_cast<double>(width) / m_scale));
}

void RasterSurface::TextOut(ScopePoint topLeft, std::string_view text)
{
    std::int64_t pen = RoundTo<std::int32_t>(topLeft.X * m_scale);
    const std::int64_t top = RoundTo<std::int32_t>(topLeft.Y * m_scale);
    const std::int64_t tallest = 4 * std::int64_t{m_font.LineHeight}; // accents may rise above the line
    if (top >= m_image.Height() + tallest || top <= -tallest)
        return;
    MixInk();
    for (const char character : text) {
        if (pen >= m_image.Width() + tallest)
            return;
        const ScopeFont::Glyph& glyph = m_font.Glyphs[static_cast<unsigned char>(character)];
        BlendGlyph(glyph, pen + glyph.Left, top + glyph.Top);
        pen += glyph.Advance;
    }
}
} // namespace corvane
