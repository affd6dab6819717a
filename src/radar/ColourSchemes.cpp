#include "radar/ColourSchemes.h"

#include "core/Rounding.h"

#include <algorithm>
#include <array>

namespace corvane {
/// What is drawn, and its colour in each scheme. Classic is as it has always been; the others were found by search:
/// against black each colour has a contrast of 4.5 : 1 or more (high contrast 6.3 : 1), and any two differ by Delta E
/// 20 or more (CIE76), also as people see them who lack one kind of cone. A test computes both. Of each scheme's
/// colours the bright ones are for targets and alerts, the dull ones for outlines and rings.
static constexpr std::array<SchemeColours, 15> Table{{
    // what, classic, high contrast, safe, dim
    {"targets, runways", ScopeGreen, {117, 255, 118}, {154, 255, 102}, {2, 175, 94}},
    {"airspaces", {0, 255, 255}, {0, 152, 255}, {142, 194, 176}, {222, 197, 198}},
    {"the controlled sector", {192, 0, 192}, {208, 105, 185}, {202, 36, 202}, {158, 71, 239}},
    {"ILS, the selected airspace", {255, 255, 0}, {236, 203, 41}, {193, 185, 0}, {164, 153, 0}},
    {"airports", {255, 0, 0}, {226, 99, 141}, {255, 95, 87}, {251, 105, 193}},
    {"VORs", {0, 0, 255}, {253, 0, 238}, {163, 58, 255}, {188, 63, 191}},
    {"NDBs", {0, 255, 0}, {46, 193, 67}, {8, 255, 139}, {132, 146, 130}},
    {"gates", {128, 64, 64}, {209, 183, 205}, {158, 98, 150}, {178, 96, 43}},
    {"outlines, range rings", {128, 128, 128}, {92, 157, 87}, {128, 118, 112}, {80, 124, 140}},
    {"taxiways", {192, 192, 192}, {187, 190, 252}, {220, 252, 250}, {123, 158, 255}},
    {"texts", {255, 255, 255}, {223, 255, 239}, {203, 196, 234}, {120, 215, 253}},
    {"the selected target", {160, 255, 160}, {150, 220, 167}, {76, 198, 126}, {133, 227, 0}},
    {"a conflict to come, low altitude", {255, 220, 0}, {255, 255, 0}, {255, 255, 52}, {181, 215, 94}},
    {"a violation", {255, 80, 64}, {254, 81, 25}, {229, 51, 22}, {255, 180, 151}},
    {"notes", {200, 200, 200}, {223, 255, 239}, {203, 196, 234}, {120, 215, 253}},
}};

std::span<const SchemeColours> AllSchemeColours() noexcept
{
    return Table;
}

Color SchemeColours::In(ColourScheme scheme) const noexcept
{
    switch (scheme) {
    case ColourScheme::Classic: break;
    case ColourScheme::Contrast: return Contrast;
    case ColourScheme::Safe: return Safe;
    case ColourScheme::Dim: return Dim;
    }
    return Classic;
}

TargetColours ColoursOf(ColourScheme scheme) noexcept
{
    const auto in = [scheme](SchemeRow row) { return Table[static_cast<std::size_t>(row)].In(scheme); };
    return {in(SchemeRow::Target),    in(SchemeRow::Selected), in(SchemeRow::Prediction),
            in(SchemeRow::Violation), in(SchemeRow::Note),     scheme == ColourScheme::Classic ? 0.0 : 1.0};
}

Color Dimmed(Color color, double part) noexcept
{
    const auto dim = [part](std::uint8_t light) {
        return static_cast<std::uint8_t>(RoundTo<std::int16_t>(light * std::clamp(part, 0.0, 1.0)));
    };
    return {dim(color.R), dim(color.G), dim(color.B)};
}

Color InScheme(ColourScheme scheme, Color color) noexcept
{
    if (scheme == ColourScheme::Classic)
        return color;
    const auto* const found = std::ranges::find(Table, color, &SchemeColours::Classic);
    return found == Table.end() ? color : found->In(scheme);
}

Surface& ColouredSurface::Prepared()
{
    m_onto.State = State;
    m_onto.State.PenColor = InScheme(m_scheme, State.PenColor);
    m_onto.State.FillColor = InScheme(m_scheme, State.FillColor);
    return m_onto;
}

void ColouredSurface::Line(ScopePoint from, ScopePoint to)
{
    Prepared().Line(from, to);
}

void ColouredSurface::Ellipse(ScopePoint corner1, ScopePoint corner2)
{
    Prepared().Ellipse(corner1, corner2);
}

void ColouredSurface::Arc(ScopePoint corner1, ScopePoint corner2, ScopePoint start, ScopePoint end)
{
    Prepared().Arc(corner1, corner2, start, end);
}

void ColouredSurface::SetPixel(ScopePoint at, Color color)
{
    Prepared().SetPixel(at, InScheme(m_scheme, color));
}

void ColouredSurface::TextOut(ScopePoint topLeft, std::string_view text)
{
    Prepared().TextOut(topLeft, text);
}
} // namespace corvane
