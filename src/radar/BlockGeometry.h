#pragma once

#include "radar/Surface.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace corvane {
/// A rectangle of pixels; Right and Bottom are the first ones beyond it.
struct PixelBox {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Right = 0;
    std::int32_t Bottom = 0;

    [[nodiscard]] std::int32_t Width() const noexcept { return Right - Left; }
    [[nodiscard]] std::int32_t Height() const noexcept { return Bottom - Top; }
    [[nodiscard]] bool Empty() const noexcept { return Right <= Left || Bottom <= Top; }
    [[nodiscard]] std::int64_t Area() const noexcept { return Empty() ? 0 : std::int64_t{Width()} * Height(); }
    [[nodiscard]] bool Contains(ScopePoint at) const noexcept
    {
        return at.X >= Left && at.X < Right && at.Y >= Top && at.Y < Bottom;
    }
    /// Larger by some pixels on every side.
    [[nodiscard]] PixelBox Grown(std::int32_t by) const noexcept
    {
        return {Left - by, Top - by, Right + by, Bottom + by};
    }
    bool operator==(const PixelBox&) const = default;
};

constexpr PixelBox BoxAround(ScopePoint at, std::int32_t radius) noexcept
{
    return {at.X - radius, at.Y - radius, at.X + radius + 1, at.Y + radius + 1};
}

/// Whether two boxes that are not empty share a pixel. Without branches: crowds ask it of all pairs.
constexpr bool Overlap(const PixelBox& a, const PixelBox& b) noexcept
{
    const auto asNumber = [](bool met) { return static_cast<unsigned>(met); };
    return (asNumber(a.Left < b.Right) & asNumber(b.Left < a.Right) & asNumber(a.Top < b.Bottom) &
            asNumber(b.Top < a.Bottom)) != 0;
}

/// Pixels that two boxes share.
constexpr std::int64_t SharedArea(const PixelBox& a, const PixelBox& b) noexcept
{
    const std::int64_t width = std::int64_t{std::min(a.Right, b.Right)} - std::max(a.Left, b.Left);
    const std::int64_t height = std::int64_t{std::min(a.Bottom, b.Bottom)} - std::max(a.Top, b.Top);
    return width > 0 && height > 0 ? width * height : 0;
}

/// The smallest box around two others.
constexpr PixelBox BoxAroundBoth(const PixelBox& a, const PixelBox& b) noexcept
{
    return {std::min(a.Left, b.Left), std::min(a.Top, b.Top), std::max(a.Right, b.Right), std::max(a.Bottom, b.Bottom)};
}

/// The smallest box around a line.
constexpr PixelBox BoxAroundLine(ScopePoint from, ScopePoint to) noexcept
{
    return {std::min(from.X, to.X), std::min(from.Y, to.Y), std::max(from.X, to.X) + 1, std::max(from.Y, to.Y) + 1};
}

/// Whether a line touches a pixel of a box that is not empty: where the boxes of both meet, unless all corners lie on
/// one side of the line. Exact in whole numbers, and without branches.
constexpr bool LineMeetsBox(ScopePoint from, ScopePoint to, const PixelBox& box) noexcept
{
    const std::int64_t dx = std::int64_t{to.X} - from.X;
    const std::int64_t dy = std::int64_t{to.Y} - from.Y;
    const std::int64_t width = std::int64_t{box.Right} - 1 - box.Left;
    const std::int64_t height = std::int64_t{box.Bottom} - 1 - box.Top;
    // twice the way from the line's beginning to the box's middle
    const std::int64_t across = std::int64_t{box.Left} + box.Right - 1 - 2 * std::int64_t{from.X};
    const std::int64_t down = std::int64_t{box.Top} + box.Bottom - 1 - 2 * std::int64_t{from.Y};
    const auto magnitude = [](std::int64_t number) { return number < 0 ? -number : number; };
    const bool cuts = magnitude(dx * down - dy * across) <= magnitude(dx) * height + magnitude(dy) * width;
    return (static_cast<unsigned>(Overlap(BoxAroundLine(from, to), box)) & static_cast<unsigned>(cuts)) != 0;
}

struct BlockSize {
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    [[nodiscard]] bool Empty() const noexcept { return Width <= 0 || Height <= 0; }
};

/// The directions of a key pad without its middle, those next to 9 first, which is the usual place.
std::span<const std::int32_t> LeaderDirections() noexcept;
/// A direction as eighths of a turn, 0 .. 7 clockwise from 8, which is up; and the direction of so many.
std::size_t EighthOfTurn(std::int32_t direction) noexcept;
std::int32_t DirectionAtEighth(std::size_t eighth) noexcept;
/// How many eighths of a turn two directions lie apart, 0 .. 4.
std::int32_t StepsApart(std::int32_t direction1, std::int32_t direction2) noexcept;
/// The direction in which a place lies from a target; 9 for the target's own place.
std::int32_t DirectionOf(ScopePoint target, ScopePoint place) noexcept;
/// Where a leader ends. Diagonal ones are as long as the others, rounded to pixels: 30 is 21 across and 21 up.
ScopePoint LeaderEnd(ScopePoint target, std::int32_t direction, std::int32_t lengthPx) noexcept;
/// The box of a block at the end of a leader: the corner or the middle of the side that looks at the target is there.
PixelBox BoxAtLeader(ScopePoint leaderEnd, std::int32_t direction, BlockSize size) noexcept;
/// The point of a box nearest to a target: where the leader of a dragged block ends.
ScopePoint NearestPoint(const PixelBox& box, ScopePoint target) noexcept;
} // namespace corvane
