#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

namespace corvane {
struct Color {
    std::uint8_t R = 0;
    std::uint8_t G = 0;
    std::uint8_t B = 0;
    bool operator==(const Color&) const = default;
};

/// The scope's default pen and the colour of targets.
inline constexpr Color ScopeGreen{0, 192, 0};

enum class PenStyle : std::uint8_t { Solid, Dash, Dot };

/// A pixel of the scope; may lie far outside it.
struct ScopePoint {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    bool operator==(const ScopePoint&) const = default;
};

/// A pixel some pixels away, held to 32 bits.
constexpr ScopePoint Offset(ScopePoint at, std::int32_t dx, std::int32_t dy) noexcept
{
    constexpr std::int64_t Lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t Highest = std::numeric_limits<std::int32_t>::max();
    return {static_cast<std::int32_t>(std::clamp(std::int64_t{at.X} + dx, Lowest, Highest)),
            static_cast<std::int32_t>(std::clamp(std::int64_t{at.Y} + dy, Lowest, Highest))};
}

/// The drawing properties that stay set from one primitive to the next until a layer changes them. A new one holds the
/// drawing defaults.
struct DrawState {
    Color PenColor = ScopeGreen;
    std::int32_t PenWidth = 1;
    PenStyle Style = PenStyle::Solid;
    Color FillColor{};
    bool FillSolid = false;
    bool operator==(const DrawState&) const = default;
};

/// What the scope is drawn on: five primitives that use the current drawing state. Layers set the properties they name
/// and leave the others as they found them.
class Surface {
public:
    virtual ~Surface() = default;

    DrawState State;
    void RestoreDefaults() noexcept { State = DrawState{}; }
    /// Pen and fill in one colour, filled solid: the state of dots.
    void SetSolid(Color color) noexcept
    {
        State.PenColor = color;
        State.FillColor = color;
        State.FillSolid = true;
    }
    /// The ellipse of a dot or a symbol: lower left corner first.
    void Circle(ScopePoint center, std::int32_t radius)
    {
        Ellipse(Offset(center, -radius, radius), Offset(center, radius, -radius));
    }

    virtual void Line(ScopePoint from, ScopePoint to) = 0;
    /// The ellipse inscribed in the rectangle between two opposite corners, in any order.
    virtual void Ellipse(ScopePoint corner1, ScopePoint corner2) = 0;
    /// The part of that ellipse's outline drawn counter-clockwise from the radial through start to the radial through
    /// end. A radial is the direction in pixels from the ellipse's centre; the points need not lie on the ellipse.
    /// Equal radials draw the whole ellipse. Arcs are never filled.
    virtual void Arc(ScopePoint corner1, ScopePoint corner2, ScopePoint start, ScopePoint end) = 0;
    virtual void SetPixel(ScopePoint at, Color color) = 0;
    /// Windows-1252 text in the pen's colour, no background, its top-left corner at a pixel.
    virtual void TextOut(ScopePoint topLeft, std::string_view text) = 0;
    /// Pixels from the top of one line of text to the top of the next.
    [[nodiscard]] virtual std::int32_t TextHeight() const = 0;
    /// Pixels that a text is wide.
    [[nodiscard]] virtual std::int32_t TextWidth(std::string_view text) const = 0;
};
} // namespace corvane
