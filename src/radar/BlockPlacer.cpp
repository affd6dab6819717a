#include "radar/BlockPlacer.h"

#include <array>
#include <limits>
#include <utility>

namespace corvane {
/// Leaders may be so many tenths as long as specified where there is no room.
static constexpr std::array<std::int32_t, 5> LengthTenths = {10, 15, 22, 32, 45};
static constexpr std::int32_t DotRadiusPx = 6;

struct BlockPlacer::Scene {
    std::span<const BlockToPlace> Blocks;
    const BlockSurroundings& Around;
    const PlacementRules& Rules;
};

static BlockPlace PlaceAt(const BlockToPlace& block, std::int32_t direction, std::int32_t lengthPx) noexcept
{
    return PlaceAtLeader(block.Target, block.Size, direction, lengthPx);
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

/// A dot, its block and the leader between them.
static PixelBox ExtentOf(const BlockPlace& place, const PixelBox& dot) noexcept
{
    return BoxAroundBoth(dot, BoxAroundBoth(place.Box, BoxAround(place.LeaderEnd, 0)));
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
    m_extents.clear();
    for (std::size_t i = 0; i < m_places.size(); ++i) {
        constexpr PixelBox Nowhere{std::numeric_limits<std::int32_t>::min(), 0,
                                   std::numeric_limits<std::int32_t>::min(), 0};
        m_boxes.push_back(m_places[i].Box.Empty() ? Nowhere : m_places[i].Box);
        m_dots.push_back(BoxAround(scene.Blocks[i].Target, DotRadiusPx));
        m_extents.push_back(ExtentOf(m_places[i], m_dots[i]));
    }
}

static std::int64_t AreaOutside(const PixelBox& box, const PixelBox& scope) noexcept
{
    return box.Area() - SharedArea(box, scope);
}

bool BlockPlacer::CoversNoteOrEdge(const Scene& scene, const PixelBox& box)
{
    return AreaOutside(box, scene.Around.Scope) > 0 ||
           std::ranges::any_of(scene.Around.Costly, [&](const PixelBox& note) { return Overlap(box, note); });
}

/// Whether a block in some place would cover anything but names.
bool BlockPlacer::Covers(const Scene& scene, std::size_t index, const PixelBox& box) const
{
    const auto inTheWay = [&](const PixelBox& obstacle) { return Overlap(box, obstacle) ? 1U : 0U; };
    unsigned touching = 0; // without branches, and without leaving early: nearly always there is nothing
    for (const PixelBox& other : m_boxes)
        touching += inTheWay(other);
    for (const PixelBox& dot : m_dots)
        touching += inTheWay(dot);
    touching -= inTheWay(m_boxes[index]); // its own
    touching -= inTheWay(m_dots[index]);
    return touching > 0 || CoversNoteOrEdge(scene, box);
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
        const bool overlaps = m_overlapping[i] != 0 || CoversNoteOrEdge(scene, m_boxes[i]);
        if (occasion == PlacementOccasion::Refresh)
            memory.Overlaps = overlaps ? memory.Overlaps + 1 : 0;
        const bool rested = memory.Overlaps >= RefreshesToMove && now - memory.TriedAt >= RestSeconds;
        working.MayMove = working.New || (overlaps && (rested || occasion == PlacementOccasion::OtherView));
    }
}

/// Everything within the reach of one block.
void BlockPlacer::LookAround(const Scene& scene, std::size_t index)
{
    const ScopePoint target = scene.Blocks[index].Target;
    const BlockSize size = scene.Blocks[index].Size;
    const std::int32_t longest =
        std::max(scene.Rules.LengthPx * LengthTenths.back() / 10, m_working[index].Place.LengthPx);
    const std::size_t most = 2 * m_places.size() + scene.Around.Costly.size() + scene.Around.Cheap.size();
    m_neighbours.Begin(target, size, longest, scene.Around.Scope, most);
    for (std::size_t other = 0; other < m_places.size(); ++other) {
        if (other == index || !Overlap(m_extents[other], m_neighbours.Reach()))
            continue;
        m_neighbours.AddCostly(m_dots[other]);
        if (scene.Blocks[other].Size.Empty())
            continue;
        m_neighbours.AddCostly(m_boxes[other]);
        m_neighbours.AddLeader(scene.Blocks[other].Target, m_places[other].LeaderEnd);
    }
    for (const PixelBox& obstacle : scene.Around.Costly)
        m_neighbours.AddCostly(obstacle);
    for (const PixelBox& obstacle : scene.Around.Cheap)
        m_neighbours.AddCheap(obstacle);
}

/// Whether a block would cover nothing at all in a place.
bool BlockPlacer::IsFree(const Scene& scene, std::size_t index, const PixelBox& box) const
{
    return !Covers(scene, index, box) &&
           std::ranges::none_of(scene.Around.Cheap, [&](const PixelBox& name) { return Overlap(box, name); });
}

/// The cheapest place; another than that where a block has stood before only for half its cost.
BlockPlacer::Seat BlockPlacer::CheapestSeat(const Scene& scene, std::size_t index)
{
    LookAround(scene, index);
    const BlockToPlace& block = scene.Blocks[index];
    std::int64_t lowest = std::numeric_limits<std::int64_t>::max();
    if (!m_working[index].New)
        lowest = m_neighbours.Cost(m_places[index], lowest) / 2;
    Seat best = m_working[index].Place;
    for (const std::int32_t tenths : LengthTenths)
        for (const std::int32_t direction : LeaderDirections()) {
            const std::int64_t preference = StepsApart(direction, scene.Rules.Direction) * 4 + (tenths - 10) * 4;
            if (preference >= lowest)
                continue;
            const Seat seat{direction, scene.Rules.LengthPx * tenths / 10};
            const BlockPlace place = PlaceAt(block, seat.Direction, seat.LengthPx);
            const std::int64_t cost = m_neighbours.Cost(place, lowest - preference) + preference;
            if (cost < lowest) {
                lowest = cost;
                best = seat;
            }
        }
    return best;
}

/// Takes the specified place where that is free, else, unless the block stands well already, the cheapest place.
/// Returns whether the block has moved.
bool BlockPlacer::Improve(const Scene& scene, std::size_t index, bool stands)
{
    const BlockToPlace& block = scene.Blocks[index];
    Seat best{scene.Rules.Direction, scene.Rules.LengthPx};
    if (!IsFree(scene, index, PlaceAt(block, best.Direction, best.LengthPx).Box)) {
        if (stands)
            return false;
        best = CheapestSeat(scene, index);
    }
    const bool moves = best != m_working[index].Place;
    m_working[index].Place = best;
    m_places[index] = PlaceAt(block, best.Direction, best.LengthPx);
    m_boxes[index] = m_places[index].Box;
    m_extents[index] = ExtentOf(m_places[index], m_dots[index]);
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
            if (!working.MayMove || (!working.New && !Covers(scene, i, m_boxes[i])))
                continue; // nothing in the way any more
            const bool stands = pass > 0 && !Covers(scene, i, m_boxes[i]);
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
