#include "radar/BlockPlacer.h"

#include <array>
#include <limits>
#include <utility>

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
    m_boxes.clear();
    m_dots.clear();
    for (std::size_t i = 0; i < m_places.size(); ++i) {
        constexpr PixelBox Nowhere{std::numeric_limits<std::int32_t>::min(), 0,
                                   std::numeric_limits<std::int32_t>::min(), 0};
        m_boxes.push_back(m_places[i].Box.Empty() ? Nowhere : m_places[i].Box);
        m_dots.push_back(BoxAround(scene.Blocks[i].Target, DotRadiusPx));
    }
}

static std::int64_t AreaOutside(const PixelBox& box, const PixelBox& scope) noexcept
{
    return box.Area() - SharedArea(box, scope);
}

bool BlockPlacer::CoversNoteOrEdge(const Scene& scene, std::size_t index) const
{
    const PixelBox& box = m_boxes[index];
    return AreaOutside(box, scene.Around.Scope) > 0 ||
           std::ranges::any_of(scene.Around.Costly, [&](const PixelBox& note) { return Overlap(box, note); });
}

bool BlockPlacer::Overlaps(const Scene& scene, std::size_t index) const
{
    const PixelBox& box = m_boxes[index];
    const auto inTheWay = [&](const PixelBox& obstacle) { return Overlap(box, obstacle); };
    unsigned touching = 0; // without branches, and without leaving early: nearly always there is nothing
    for (const PixelBox& other : m_boxes)
        touching += inTheWay(other) ? 1U : 0U;
    for (const PixelBox& dot : m_dots)
        touching += inTheWay(dot) ? 1U : 0U;
    touching -= inTheWay(m_boxes[index]) ? 1U : 0U; // itself
    touching -= inTheWay(m_dots[index]) ? 1U : 0U;
    return touching > 0 || CoversNoteOrEdge(scene, index);
}

/// Marks every block that covers another or a dot: a sweep from left to right, which looks only at what begins before a
/// box has ended.
void BlockPlacer::FindOverlaps()
{
    m_sweep.clear();
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        m_sweep.push_back({m_boxes[i], i, false});
        m_sweep.push_back({m_dots[i], i, true});
    }
    std::ranges::sort(m_sweep, {}, [](const Swept& swept) { return std::pair(swept.Box.Left, swept.Block); });
    m_overlapping.assign(m_boxes.size(), 0);
    for (std::size_t i = 0; i < m_sweep.size(); ++i) {
        const Swept& first = m_sweep[i];
        for (std::size_t k = i + 1; k < m_sweep.size() && m_sweep[k].Box.Left < first.Box.Right; ++k) {
            const Swept& second = m_sweep[k];
            if (first.Block == second.Block || !Overlap(first.Box, second.Box))
                continue;
            if (!first.IsDot)
                m_overlapping[first.Block] = 1;
            if (!second.IsDot)
                m_overlapping[second.Block] = 1;
        }
    }
}

void BlockPlacer::JudgeOverlaps(const Scene& scene, double now, PlacementOccasion occasion)
{
    constexpr double RestSeconds = 5;
    constexpr int RefreshesToMove = 2;
    if (occasion != PlacementOccasion::Between)
        FindOverlaps();
    for (std::size_t i = 0; i < m_working.size(); ++i) {
        Working& working = m_working[i];
        if (working.Memory == nullptr)
            continue;
        Remembered& memory = *working.Memory;
        working.MayMove = working.New;
        if (occasion == PlacementOccasion::Between)
            continue;
        const bool overlaps = m_overlapping[i] != 0 || CoversNoteOrEdge(scene, i);
        if (occasion == PlacementOccasion::Refresh)
            memory.Overlaps = overlaps ? memory.Overlaps + 1 : 0;
        const bool rested = memory.Overlaps >= RefreshesToMove && now - memory.TriedAt >= RestSeconds;
        working.MayMove = working.New || (overlaps && (rested || occasion == PlacementOccasion::OtherView));
    }
}

/// What lies within a block's reach, and what its places cost beside that: four for a covered pixel, one where only a
/// name is covered.
class BlockPlacer::Neighbours {
public:
    Neighbours(const Scene& scene, const BlockPlacer& placer, std::size_t index)
        : m_scope(scene.Around.Scope), m_target(scene.Blocks[index].Target)
    {
        const BlockSize size = scene.Blocks[index].Size;
        const std::int32_t longest = scene.Rules.LengthPx * LengthTenths.back() / 10 + ClearancePx;
        const PixelBox reach{m_target.X - longest - size.Width, m_target.Y - longest - size.Height,
                             m_target.X + longest + size.Width, m_target.Y + longest + size.Height};
        for (std::size_t other = 0; other < placer.m_places.size(); ++other) {
            if (other == index)
                continue;
            Add(m_costly, placer.m_dots[other], reach);
            if (scene.Blocks[other].Size.Empty())
                continue;
            Add(m_costly, placer.m_boxes[other], reach);
            const Leader leader(scene.Blocks[other].Target, placer.m_places[other].LeaderEnd);
            if (Overlap(leader.Around, reach))
                m_leaders.push_back(leader);
        }
        for (const PixelBox& obstacle : scene.Around.Costly)
            Add(m_costly, obstacle, reach);
        for (const PixelBox& obstacle : scene.Around.Cheap)
            Add(m_cheap, obstacle, reach);
    }

    /// Whether a place covers nothing at all.
    [[nodiscard]] bool Free(const BlockPlace& place) const
    {
        const auto covered = [&](const PixelBox& obstacle) { return Overlap(place.Box, obstacle); };
        return AreaOutside(place.Box, m_scope) == 0 && std::ranges::none_of(m_costly, covered) &&
               std::ranges::none_of(m_cheap, covered);
    }

    /// The cost, or some number from enough on where it reaches that.
    [[nodiscard]] std::int64_t Cost(const BlockPlace& place, std::int64_t enough) const
    {
        constexpr std::int64_t FullPrice = 4;
        constexpr std::int64_t CrossingPrice = 240; // of a leader over a block or a dot
        const PixelBox box = place.Box.Grown(ClearancePx);
        const Leader own(m_target, place.LeaderEnd);
        std::int64_t cost = AreaOutside(place.Box, m_scope) * FullPrice;
        for (std::size_t i = 0; i < m_costly.size() && cost < enough; ++i) {
            if (Overlap(box, m_costly[i]))
                cost += SharedArea(box, m_costly[i]) * FullPrice;
            cost += own.Meets(m_costly[i]) ? CrossingPrice : 0;
        }
        for (std::size_t i = 0; i < m_cheap.size() && cost < enough; ++i)
            cost += SharedArea(box, m_cheap[i]);
        for (std::size_t i = 0; i < m_leaders.size() && cost < enough; ++i)
            cost += m_leaders[i].Meets(place.Box) ? CrossingPrice : 0;
        return cost;
    }

private:
    struct Leader {
        Leader(ScopePoint from, ScopePoint to) noexcept
            : From(from),
              To(to),
              Around{std::min(from.X, to.X), std::min(from.Y, to.Y), std::max(from.X, to.X) + 1,
                     std::max(from.Y, to.Y) + 1}
        {
        }
        [[nodiscard]] bool Meets(const PixelBox& box) const noexcept
        {
            return Overlap(Around, box) && LineMeetsBox(From, To, box);
        }

        ScopePoint From;
        ScopePoint To;
        PixelBox Around;
    };

    static void Add(std::vector<PixelBox>& boxes, const PixelBox& box, const PixelBox& reach)
    {
        if (Overlap(box, reach))
            boxes.push_back(box);
    }

    PixelBox m_scope;
    ScopePoint m_target;
    std::vector<PixelBox> m_costly;
    std::vector<PixelBox> m_cheap;
    std::vector<Leader> m_leaders;
};

/// Takes the specified place where that is free, else, unless the block stands well already, the cheapest place; one
/// that has stood before only for half its cost. Returns whether the block has moved.
bool BlockPlacer::Improve(const Scene& scene, std::size_t index, bool stands)
{
    const BlockToPlace& block = scene.Blocks[index];
    const PlacementRules& rules = scene.Rules;
    const Neighbours neighbours(scene, *this, index);
    Seat best{rules.Direction, rules.LengthPx};
    const bool specified = neighbours.Free(PlaceAt(block, best.Direction, best.LengthPx));
    if (!specified && stands)
        return false;
    if (!specified) {
        std::int64_t lowest = std::numeric_limits<std::int64_t>::max();
        if (!m_working[index].New)
            lowest = neighbours.Cost(m_places[index], lowest) / 2;
        best = m_working[index].Place;
        for (const std::int32_t tenths : LengthTenths)
            for (const std::int32_t direction : LeaderDirections()) {
                const Seat seat{direction, rules.LengthPx * tenths / 10};
                const std::int64_t preference = StepsApart(direction, rules.Direction) * 4 + (tenths - 10) * 4;
                if (preference >= lowest)
                    continue;
                const BlockPlace place = PlaceAt(block, seat.Direction, seat.LengthPx);
                const std::int64_t cost = neighbours.Cost(place, lowest - preference) + preference;
                if (cost < lowest) {
                    lowest = cost;
                    best = seat;
                }
            }
    }
    const bool moves = best != m_working[index].Place;
    m_working[index].Place = best;
    m_places[index] = PlaceAt(block, best.Direction, best.LengthPx);
    m_boxes[index] = m_places[index].Box;
    return moves;
}

void BlockPlacer::Settle(const Scene& scene)
{
    constexpr int Passes = 3; // new blocks, each of which is in the others' way
    bool moved = true;
    for (int pass = 0; pass < Passes && moved; ++pass) {
        moved = false;
        for (std::size_t i = 0; i < m_working.size(); ++i) {
            Working& working = m_working[i];
            if (!working.MayMove || (!working.New && !Overlaps(scene, i)))
                continue; // nothing in the way any more
            const bool stands = pass > 0 && !Overlaps(scene, i);
            moved = Improve(scene, i, stands) || moved;
            working.Tried = true;
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
        if (!working.New && working.Tried)
            memory.TriedAt = now; // where there was no better place, there is hardly one a second later
        if (!working.New && memory.Place != working.Place)
            memory.Overlaps = 0;
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
