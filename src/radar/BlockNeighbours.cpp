#include "radar/BlockNeighbours.h"

namespace corvane {
BlockPlace PlaceAtLeader(ScopePoint target, BlockSize size, std::int32_t direction, std::int32_t lengthPx) noexcept
{
    const ScopePoint end = LeaderEnd(target, direction, lengthPx);
    return {direction, BoxAtLeader(end, direction, size), end};
}

void BlockNeighbours::Begin(ScopePoint target, BlockSize size, std::int32_t longestPx, const PixelBox& scope,
                            std::size_t most)
{
    m_target = target;
    m_scope = scope;
    m_reach = BoxAround(target, 0);
    for (std::size_t i = 0; i < m_sectors.size(); ++i) {
        const std::int32_t direction = DirectionAtEighth(i);
        Sector& sector = m_sectors[i];
        const BlockPlace farthest = PlaceAtLeader(target, size, direction, longestPx);
        const PixelBox nearest = PlaceAtLeader(target, size, direction, 0).Box;
        sector.Reach = BoxAroundBoth(BoxAroundLine(target, farthest.LeaderEnd), BoxAroundBoth(nearest, farthest.Box))
                           .Grown(ClearancePx);
        sector.Costly.Clear(most);
        sector.Cheap.Clear(most);
        sector.Leaders.Clear(most);
        m_reach = BoxAroundBoth(m_reach, sector.Reach);
    }
}

void BlockNeighbours::AddCostly(const PixelBox& box) noexcept
{
    for (Sector& sector : m_sectors)
        sector.Costly.AddIf(Overlap(box, sector.Reach), box);
}

void BlockNeighbours::AddCheap(const PixelBox& box) noexcept
{
    for (Sector& sector : m_sectors)
        sector.Cheap.AddIf(Overlap(box, sector.Reach), box);
}

void BlockNeighbours::AddLeader(ScopePoint from, ScopePoint to) noexcept
{
    const PixelBox around = BoxAroundLine(from, to);
    for (Sector& sector : m_sectors)
        sector.Leaders.AddIf(Overlap(around, sector.Reach), {from, to});
}

std::int64_t BlockNeighbours::Cost(const BlockPlace& place, std::int64_t enough) const noexcept
{
    constexpr std::int64_t FullPrice = 4;
    constexpr std::int64_t CrossingPrice = 240;
    const Sector& sector = m_sectors[EighthOfTurn(place.Direction)];
    const PixelBox roomy = place.Box.Grown(ClearancePx);
    std::int64_t covered = place.Box.Area() - SharedArea(place.Box, m_scope);
    for (const PixelBox& box : sector.Costly.Items())
        covered += SharedArea(roomy, box);
    std::int64_t cost = covered * FullPrice;
    for (const PixelBox& box : sector.Cheap.Items())
        cost += SharedArea(roomy, box);
    if (cost >= enough)
        return cost;
    for (const PixelBox& box : sector.Costly.Items())
        cost += LineMeetsBox(m_target, place.LeaderEnd, box) ? CrossingPrice : 0;
    for (const Leader& leader : sector.Leaders.Items())
        cost += LineMeetsBox(leader.From, leader.To, place.Box) ? CrossingPrice : 0;
    return cost;
}
} // namespace corvane
