#include "radar/BlockPlacer.h"

#include <array>
#include <limits>

namespace corvane {
/// Leaders may be so many tenths as long as specified where there is no room.
static constexpr std::array<std::int32_t, 5> LengthTenths = {10, 15, 22, 32, 45};
/// Room left around a block that moves, so that it need not soon move again.
static constexpr std::int32_t ClearancePx = 5;
static constexpr std::int32_t DotRadiusPx = 6;

struct BlockPlacer::Scene {
    std::span<const BlockToPlace> Blocks;
    const BlockSurroundings& Around;
    const PlacementRules& Rules;
};

static BlockPlace PlaceAt(const BlockToPlace& block, std::int32_t direction, std::int32_t lengthPx) noexcept
{
    const ScopePoint end = LeaderEnd(block.Target, direction, lengthPx);
    return {direction, BoxAtLeader(end, direction, block.Size), end};
}

static BlockPlace ManualPlaceOf(const BlockToPlace& block, std::int32_t lengthPx) noexcept
{
    if (block.Manual->Direction)
        return PlaceAt(block, *block.Manual->Direction, lengthPx);
    const ScopePoint corner = Offset(block.Target, block.Manual->FromTarget.X, block.Manual->FromTarget.Y);
    const PixelBox box{corner.X, corner.Y, corner.X + block.Size.Width, corner.Y + block.Size.Height};
    const ScopePoint middle{box.Left + box.Width() / 2, box.Top + box.Height() / 2};
    return {DirectionOf(block.Target, middle), box, NearestPoint(box, block.Target)};
}

void BlockPlacer::Recall(const Scene& scene)
{
    for (auto& [track, remembered] : m_memory)
        remembered.Seen = false;
    m_working.clear();
    m_places.clear();
    for (const BlockToPlace& block : scene.Blocks) {
        Working& working = m_working.emplace_back();
        working.Place = {scene.Rules.Direction, scene.Rules.LengthPx};
        if (block.Manual) {
            m_places.push_back(ManualPlaceOf(block, scene.Rules.LengthPx));
            continue;
        }
        if (scene.Rules.Automatic && !block.Size.Empty() && scene.Blocks.size() <= MostBlocks) {
            const auto [found, added] = m_memory.try_emplace(block.Track);
            working.Memory = &found->second;
            working.Memory->Seen = true;
            working.New = added;
            if (!added)
                working.Place = found->second.Place;
        }
        m_places.push_back(PlaceAt(block, working.Place.Direction, working.Place.LengthPx));
    }
    std::erase_if(m_memory, [](const auto& entry) { return !entry.second.Seen; });
}

static std::int64_t AreaOutside(const PixelBox& box, const PixelBox& scope) noexcept
{
    return box.Area() - SharedArea(box, scope);
}

bool BlockPlacer::Overlaps(const Scene& scene, std::size_t index) const
{
    const PixelBox& box = m_places[index].Box;
    if (AreaOutside(box, scene.Around.Scope) > 0)
        return true;
    for (std::size_t other = 0; other < m_places.size(); ++other)
        if (other != index && (SharedArea(box, m_places[other].Box) > 0 ||
                               SharedArea(box, BoxAround(scene.Blocks[other].Target, DotRadiusPx)) > 0))
            return true;
    return std::ranges::any_of(scene.Around.Costly,
                               [&](const PixelBox& obstacle) { return SharedArea(box, obstacle) > 0; });
}

void BlockPlacer::JudgeOverlaps(const Scene& scene, double now, PlacementOccasion occasion)
{
    constexpr double RestSeconds = 5;
    constexpr int RefreshesToMove = 2;
    for (std::size_t i = 0; i < m_working.size(); ++i) {
        Working& working = m_working[i];
        if (working.Memory == nullptr)
            continue;
        Remembered& memory = *working.Memory;
        working.MayMove = working.New;
        if (occasion == PlacementOccasion::Between)
            continue;
        const bool overlaps = Overlaps(scene, i);
        if (occasion == PlacementOccasion::Refresh)
            memory.Overlaps = overlaps ? memory.Overlaps + 1 : 0;
        const bool rested = memory.Overlaps >= RefreshesToMove && now - memory.MovedAt >= RestSeconds;
        working.MayMove = working.New || (overlaps && (rested || occasion == PlacementOccasion::OtherView));
    }
}

/// What lies within a block's reach, and what its places cost beside that: four for a covered pixel, one where only a
/// name is covered.
class BlockPlacer::Neighbours {
public:
    Neighbours(const Scene& scene, std::span<const BlockPlace> places, std::size_t index)
        : m_scene(scene), m_target(scene.Blocks[index].Target)
    {
        const BlockToPlace& block = scene.Blocks[index];
        const std::int32_t longest = scene.Rules.LengthPx * LengthTenths.back() / 10 + ClearancePx;
        const PixelBox reach{m_target.X - longest - block.Size.Width, m_target.Y - longest - block.Size.Height,
                             m_target.X + longest + block.Size.Width, m_target.Y + longest + block.Size.Height};
        for (std::size_t other = 0; other < places.size(); ++other) {
            if (other == index)
                continue;
            const ScopePoint target = scene.Blocks[other].Target;
            Add(m_costly, BoxAround(target, DotRadiusPx), reach);
            Add(m_costly, places[other].Box, reach);
            if (!scene.Blocks[other].Size.Empty() && LineMeetsBox(target, places[other].LeaderEnd, reach))
                m_leaders.push_back({target, places[other].LeaderEnd});
        }
        for (const PixelBox& obstacle : scene.Around.Costly)
            Add(m_costly, obstacle, reach);
        for (const PixelBox& obstacle : scene.Around.Cheap)
            Add(m_cheap, obstacle, reach);
    }

    /// Whether a place covers nothing at all.
    [[nodiscard]] bool Free(const BlockPlace& place) const
    {
        const auto covered = [&](const PixelBox& obstacle) { return SharedArea(place.Box, obstacle) > 0; };
        return AreaOutside(place.Box, m_scene.Around.Scope) == 0 && std::ranges::none_of(m_costly, covered) &&
               std::ranges::none_of(m_cheap, covered);
    }

    [[nodiscard]] std::int64_t Cost(const BlockPlace& place) const
    {
        constexpr std::int64_t FullPrice = 4;
        constexpr std::int64_t CrossingPrice = 240; // of a leader over a block or a dot
        const PixelBox box = place.Box.Grown(ClearancePx);
        std::int64_t cost = AreaOutside(place.Box, m_scene.Around.Scope) * FullPrice;
        for (const PixelBox& obstacle : m_costly) {
            cost += SharedArea(box, obstacle) * FullPrice;
            cost += LineMeetsBox(m_target, place.LeaderEnd, obstacle) ? CrossingPrice : 0;
        }
        for (const PixelBox& obstacle : m_cheap)
            cost += SharedArea(box, obstacle);
        for (const Leader& leader : m_leaders)
            cost += LineMeetsBox(leader.From, leader.To, place.Box) ? CrossingPrice : 0;
        return cost;
    }

private:
    struct Leader {
        ScopePoint From;
        ScopePoint To;
    };

    static void Add(std::vector<PixelBox>& boxes, const PixelBox& box, const PixelBox& reach)
    {
        if (SharedArea(box, reach) > 0)
            boxes.push_back(box);
    }

    const Scene& m_scene;
    ScopePoint m_target;
    std::vector<PixelBox> m_costly;
    std::vector<PixelBox> m_cheap;
    std::vector<Leader> m_leaders;
};

/// Takes the cheapest place; one that has stood before only for half its cost. Returns whether the block has moved.
bool BlockPlacer::Improve(const Scene& scene, std::size_t index)
{
    const BlockToPlace& block = scene.Blocks[index];
    const PlacementRules& rules = scene.Rules;
    const Neighbours neighbours(scene, m_places, index);
    Seat best{rules.Direction, rules.LengthPx};
    if (!neighbours.Free(PlaceAt(block, best.Direction, best.LengthPx))) {
        std::int64_t lowest = std::numeric_limits<std::int64_t>::max();
        if (!m_working[index].New)
            lowest = neighbours.Cost(m_places[index]) / 2;
        best = m_working[index].Place;
        for (const std::int32_t tenths : LengthTenths)
            for (const std::int32_t direction : LeaderDirections()) {
                const Seat seat{direction, rules.LengthPx * tenths / 10};
                const std::int64_t preference = StepsApart(direction, rules.Direction) * 4 + (tenths - 10) * 4;
                if (preference >= lowest)
                    continue;
                const std::int64_t cost = neighbours.Cost(PlaceAt(block, seat.Direction, seat.LengthPx)) + preference;
                if (cost < lowest) {
                    lowest = cost;
                    best = seat;
                }
            }
    }
    const bool moves = best != m_working[index].Place;
    m_working[index].Place = best;
    m_places[index] = PlaceAt(block, best.Direction, best.LengthPx);
    return moves;
}

void BlockPlacer::Settle(const Scene& scene)
{
    constexpr int Passes = 4; // new blocks, each of which is in the others' way
    bool moved = true;
    for (int pass = 0; pass < Passes && moved; ++pass) {
        moved = false;
        for (std::size_t i = 0; i < m_working.size(); ++i) {
            Working& working = m_working[i];
            if (!working.MayMove || (!working.New && !Overlaps(scene, i)))
                continue; // nothing in the way any more
            moved = Improve(scene, i) || moved;
            working.MayMove = working.New;
        }
    }
}

void BlockPlacer::Remember(double now)
{
    for (const Working& working : m_working) {
        if (working.Memory == nullptr)
            continue;
        Remembered& memory = *working.Memory;
        if (!working.New && memory.Place != working.Place) {
            memory.MovedAt = now;
            memory.Overlaps = 0;
        }
        memory.Place = working.Place;
    }
}

std::span<const BlockPlace> BlockPlacer::Place(std::span<const BlockToPlace> blocks,
                                               const BlockSurroundings& surroundings, const PlacementRules& rules,
                                               double now, PlacementOccasion occasion)
{
    const Scene scene{blocks, surroundings, rules};
    Recall(scene);
    JudgeOverlaps(scene, now, occasion);
    Settle(scene);
    Remember(now);
    return m_places;
}
} // namespace corvane
