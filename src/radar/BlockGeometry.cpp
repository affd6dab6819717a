#include "radar/BlockGeometry.h"

#include "core/Geodesy.h"
#include "core/Rounding.h"

#include <array>
#include <cassert>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace corvane {
namespace {
/// A key's column and row as seen from 5: right and down are positive.
struct KeyOffset {
    std::int32_t X;
    std::int32_t Y;
};
} // namespace

static constexpr KeyOffset OffsetOfKey(std::int32_t direction) noexcept
{
    return {(direction - 1) % 3 - 1, 1 - (direction - 1) / 3};
}

static constexpr std::array<std::int32_t, 8> NearestToNine = {9, 6, 8, 3, 7, 2, 4, 1};
static constexpr std::array<std::int32_t, 8> ClockwiseFromUp = {8, 9, 6, 3, 2, 1, 4, 7};

std::span<const std::int32_t> LeaderDirections() noexcept
{
    return NearestToNine;
}

std::size_t EighthOfTurn(std::int32_t direction) noexcept
{
    constexpr std::array<std::uint8_t, 10> Eighths = {0, 5, 4, 3, 6, 0, 2, 7, 0, 1}; // by direction
    assert(direction >= 1 && direction <= 9 && direction != 5);
    return Eighths[static_cast<std::size_t>(direction)];
}

std::int32_t DirectionAtEighth(std::size_t eighth) noexcept
{
    assert(eighth < ClockwiseFromUp.size());
    return ClockwiseFromUp[eighth];
}

std::int32_t StepsApart(std::int32_t direction1, std::int32_t direction2) noexcept
{
    const std::int32_t apart = std::abs(static_cast<std::int32_t>(EighthOfTurn(direction1)) -
                                        static_cast<std::int32_t>(EighthOfTurn(direction2)));
    return std::min(apart, 8 - apart);
}

std::int32_t DirectionOf(ScopePoint target, ScopePoint place) noexcept
{
    const double right = static_cast<double>(place.X) - target.X;
    const double up = static_cast<double>(target.Y) - place.Y;
    if (right == 0 && up == 0)
        return 9;
    const auto eighth = RoundTo<std::int32_t>(std::atan2(right, up) / (GeoPi / 4));
    return ClockwiseFromUp[static_cast<std::size_t>((eighth + 8) % 8)];
}

ScopePoint LeaderEnd(ScopePoint target, std::int32_t direction, std::int32_t lengthPx) noexcept
{
    const KeyOffset key = OffsetOfKey(direction);
    const bool diagonal = key.X != 0 && key.Y != 0;
    const auto along = diagonal ? RoundTo<std::int32_t>(lengthPx * std::sin(GeoPi / 4)) : lengthPx;
    return Offset(target, key.X * along, key.Y * along);
}

PixelBox BoxAtLeader(ScopePoint leaderEnd, std::int32_t direction, BlockSize size) noexcept
{
    const KeyOffset key = OffsetOfKey(direction);
    // -1: the whole extent lies before the leader's end, 0: half of it, 1: none
    const std::int32_t left = leaderEnd.X - size.Width * (1 - key.X) / 2;
    const std::int32_t top = leaderEnd.Y - size.Height * (1 - key.Y) / 2;
    return {left, top, left + size.Width, top + size.Height};
}

ScopePoint NearestPoint(const PixelBox& box, ScopePoint target) noexcept
{
    return {std::clamp(target.X, box.Left, std::max(box.Left, box.Right)),
            std::clamp(target.Y, box.Top, std::max(box.Top, box.Bottom))};
}
} // namespace corvane
