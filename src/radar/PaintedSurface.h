#pragma once

#include "radar/PixelImage.h"
#include "radar/ScopeFont.h"
#include "radar/Surface.h"

namespace corvane {
/// A surface of pixels: sharp lines of whole pixels as on a radar screen, no allocation, and no pixel off the image,
/// however far out the coordinates lie. Image and font are borrowed; the image may be resized between drawings.
class PaintedSurface final : public Surface {
public:
    PaintedSurface(PixelImage& image, const ScopeFont& font) noexcept : m_image(image), m_font(font) {}

    void Line(ScopePoint from, ScopePoint to) override;
    void Ellipse(ScopePoint corner1, ScopePoint corner2) override;
    void Arc(ScopePoint corner1, ScopePoint corner2, ScopePoint start, ScopePoint end) override;
    void SetPixel(ScopePoint at, Color color) override;
    void TextOut(ScopePoint topLeft, std::string_view text) override;
    [[nodiscard]] std::int32_t TextHeight() const override { return m_font.LineHeight; }

private:
    void BlendGlyph(const ScopeFont::Glyph& glyph, std::int64_t left, std::int64_t top);

    PixelImage& m_image;
    const ScopeFont& m_font;
};
} // namespace corvane
