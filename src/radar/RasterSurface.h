#pragma once

#include "core/Rounding.h"
#include "radar/PixelImage.h"
#include "radar/ScopeFont.h"
#include "radar/Surface.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace corvane {
/// A surface of pixels: sharp lines of whole pixels as on a radar screen, no allocation, and no pixel off the image,
/// however far out the coordinates lie. Image and font are borrowed; the image may be resized between drawings.
///
/// On a dense screen one pixel of the surface is several of the image, or one and a half: everything is drawn so many
/// times as large, and as sharp as the image allows. The font must be of that size too.
class RasterSurface final : public Surface {
public:
    RasterSurface(PixelImage& image, const ScopeFont& font, double scale = 1) noexcept
        : m_image(image), m_font(font), m_scale(scale)
    {
    }
    /// Pixels of the image to one of the surface, 1 or more.
    void SetScale(double scale) noexcept { m_scale = scale; }
    /// Lines, edges and points so many times as wide, 1 or more.
    void SetLineWidth(double width) noexcept { m_lineWidth = width; }

    void Line(ScopePoint from, ScopePoint to) override;
    void Ellipse(ScopePoint corner1, ScopePoint corner2) override;
    void Arc(ScopePoint corner1, ScopePoint corner2, ScopePoint start, ScopePoint end) override;
    void SetPixel(ScopePoint at, Color color) override;
    void TextOut(ScopePoint topLeft, std::string_view text) override;
    [[nodiscard]] std::int32_t TextHeight() const override
    {
        return RoundTo<std::int32_t>(m_font.LineHeight / m_scale);
    }
    [[nodiscard]] std::int32_t TextWidth(std::string_view text) const override;

private:
    /// The image's pixel in the middle of one of the surface.
    [[nodiscard]] ScopePoint OnImage(ScopePoint at) const noexcept;
    /// What a colour leaves of itself on a pixel by its coverage.
    struct Ink {
        std::uint32_t Pixel = 0; ///< of the colour; 0 before there is one
        std::array<std::uint32_t, 256> Parts{};
        std::array<std::uint32_t, 256> OnBlack{}; ///< the whole pixel, on the scope's background
    };

    void MixInk();
    void BlendGlyph(const ScopeFont::Glyph& glyph, std::int64_t left, std::int64_t top);

    PixelImage& m_image;
    const ScopeFont& m_font;
    double m_scale;
    double m_lineWidth = 1;
    Ink m_ink; ///< of the last text: nearly all are in one colour
};
} // namespace corvane
