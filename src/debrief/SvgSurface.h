#pragma once

#include "radar/Surface.h"

#include <cstdint>
#include <string>

namespace corvane {
/// A surface that becomes a picture of lines, as SVG. What lies wholly outside the picture is left out.
class SvgSurface final : public Surface {
public:
    SvgSurface(std::int32_t widthPx, std::int32_t heightPx) noexcept : m_width(widthPx), m_height(heightPx) {}

    void Line(ScopePoint from, ScopePoint to) override;
    void Ellipse(ScopePoint corner1, ScopePoint corner2) override;
    void Arc(ScopePoint corner1, ScopePoint corner2, ScopePoint start, ScopePoint end) override;
    void SetPixel(ScopePoint at, Color color) override;
    void TextOut(ScopePoint topLeft, std::string_view text) override;
    [[nodiscard]] std::int32_t TextHeight() const override;
    [[nodiscard]] std::int32_t TextWidth(std::string_view text) const override;

    /// The picture as an svg element, on black.
    /// label  what it shows, for those who do not see it
    [[nodiscard]] std::string Element(std::string_view label) const;

private:
    [[nodiscard]] bool IsOutside(ScopePoint corner1, ScopePoint corner2) const noexcept;
    [[nodiscard]] std::string Stroke() const;

    std::int32_t m_width;
    std::int32_t m_height;
    std::string m_content;
};

/// A Windows-1252 text as UTF-8 for HTML and XML: markup and control characters are escaped.
std::string MarkupText(std::string_view text);
} // namespace corvane
