#pragma once

#include "radar/DisplayOptions.h"
#include "radar/Surface.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace corvane {
/// The rows of the schemes' table, in its order.
enum class SchemeRow : std::uint8_t {
    Target, ///< and runways
    Airspace,
    ControlledSector,
    Ils, ///< and the selected airspace
    Airport,
    Vor,
    Ndb,
    Gate,
    Outline, ///< and range rings
    Taxiway,
    Text,
    Selected,
    Prediction,
    Violation,
    Note
};

/// One kind of thing on the scope and its colour in each scheme.
struct SchemeColours {
    std::string_view What;
    Color Classic; ///< as the scope has always had it, whatever its contrast
    Color Contrast;
    Color Safe; ///< for people who lack one kind of cone
    Color Dim;  ///< for a dark room

    [[nodiscard]] Color In(ColourScheme scheme) const noexcept;
};
/// All of them, a SchemeRow each.
std::span<const SchemeColours> AllSchemeColours() noexcept;

/// The colours of targets and alerts in a scheme.
struct TargetColours {
    Color Target;
    Color Selected;
    Color Prediction; ///< a conflict to come, and an altitude that is too low
    Color Violation;
    Color Note;            ///< what the scope says of itself
    double LeastLight = 0; ///< what a target keeps of its light however old it is
};
TargetColours ColoursOf(ColourScheme scheme) noexcept;

/// One of the map's classic colours as the scheme has it.
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
