#include "radar/ColourSchemes.h"

#include "core/Rounding.h"

#include <algorithm>
#include <array>

namespace corvane {
static constexpr double DimPart = 0.55;

TargetColours ColoursOf(ColourScheme scheme) noexcept
{
    constexpr TargetColours Classic{ScopeGreen, {160, 255, 160}, {255, 220, 0}, {255, 80, 64}, {200, 200, 200}};
    switch (scheme) {
    case ColourScheme::Classic: break;
    case ColourScheme::Contrast:
        return {{128, 255, 128}, {255, 255, 255}, {255, 255, 0}, {255, 112, 96}, {255, 255, 255}};
    case ColourScheme::Safe: return {{86, 180, 233}, {255, 255, 255}, {240, 228, 66}, {213, 94, 0}, {200, 200, 200}};
    case ColourScheme::Dim:
        return {Dimmed(Classic.Target, DimPart), Dimmed(Classic.Selected, DimPart), Dimmed(Classic.Prediction, DimPart),
                Dimmed(Classic.Violation, DimPart), Dimmed(Classic.Note, DimPart)};
    }
    return Classic;
}

Color Dimmed(Color color, double part) noexcept
{
    const auto dim = [part](std::uint8_t light) {
        return static_cast<std::uint8_t>(RoundTo<std::int16_t>(light * std::clamp(part, 0.0, 1.0)));
    };
    return {dim(color.R), dim(color.G), dim(color.B)};
}

/// The brightest part at full light, and a quarter of white in it; grey stays below the texts' white.
static Color Brightened(Color color) noexcept
{
    constexpr int GreyLift = 70;
    const int brightest = std::max({color.R, color.G, color.B});
    if (brightest == 0)
        return color;
    if (color.R == color.G && color.G == color.B) {
        const auto grey = static_cast<std::uint8_t>(std::min(brightest + GreyLift, 255));
        return {grey, grey, grey};
    }
    const auto lift = [brightest](std::uint8_t light) {
        return static_cast<std::uint8_t>(64 + light * 191 / brightest);
    };
    return {lift(color.R), lift(color.G), lift(color.B)};
}

namespace {
struct ColourPair {
    Color Classic;
    Color Safe;
};
} // namespace

static Color MadeSafe(Color color) noexcept
{
    constexpr std::array<ColourPair, 9> Pairs{{
        {ScopeGreen, {86, 180, 233}},      // targets, runways
        {{0, 255, 255}, {0, 114, 178}},    // airspaces
        {{192, 0, 192}, {204, 121, 167}},  // the controlled sector
        {{255, 255, 0}, {240, 228, 66}},   // ILS, the selected airspace
        {{255, 0, 0}, {230, 159, 0}},      // airports
        {{0, 0, 255}, {110, 150, 230}},    // VORs
        {{0, 255, 0}, {0, 158, 115}},      // NDBs
        {{128, 64, 64}, {150, 105, 70}},   // gates
        {{128, 128, 128}, {110, 110, 110}} // outlines, range rings: behind everything else
    }};
    const auto* const found = std::ranges::find(Pairs, color, &ColourPair::Classic);
    return found == Pairs.end() ? color : found->Safe;
}

Color InScheme(ColourScheme scheme, Color color) noexcept
{
    switch (scheme) {
    case ColourScheme::Classic: break;
    case ColourScheme::Contrast: return Brightened(color);
    case ColourScheme::Safe: return MadeSafe(color);
    case ColourScheme::Dim: return Dimmed(color, DimPart);
    }
    return color;
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
