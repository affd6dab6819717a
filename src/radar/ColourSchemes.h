#pragma once

#include "radar/DisplayOptions.h"
#include "radar/Surface.h"

namespace corvane {
/// The colours of targets and alerts in a scheme.
struct TargetColours {
    Color Target;
    Color Selected;
    Color Prediction; ///< a conflict to come, and an altitude that is too low
    Color Violation;
    Color Note; ///< what the scope says of itself
};
TargetColours ColoursOf(ColourScheme scheme) noexcept;

/// One of the map's colours as the scheme has it. Classic leaves it; contrast makes it brighter, dim darker for a dark
/// room; safe keeps apart what people with a colour vision deficiency confuse (the palette of Okabe and Ito).
Color InScheme(ColourScheme scheme, Color color) noexcept;

/// A part of a colour's light, 0 .. 1.
Color Dimmed(Color color, double part) noexcept;

/// Draws on another surface in the colours of a scheme.
class ColouredSurface final : public Surface {
public:
    ColouredSurface(Surface& onto, ColourScheme scheme) noexcept : m_onto(onto), m_scheme(scheme) {}

    void Line(ScopePoint from, ScopePoint to) override;
    void Ellipse(ScopePoint corner1, ScopePoint corner2) override;
    void Arc(ScopePoint corner1, ScopePoint corner2, ScopePoint start, ScopePoint end) override;
    void SetPixel(ScopePoint at, Color color) override;
    void TextOut(ScopePoint topLeft, std::string_view text) override;
    [[nodiscard]] std::int32_t TextHeight() const override { return m_onto.TextHeight(); }
    [[nodiscard]] std::int32_t TextWidth(std::string_view text) const override { return m_onto.TextWidth(text); }

private:
    Surface& Prepared();

    Surface& m_onto;
    ColourScheme m_scheme;
};
} // namespace corvane
