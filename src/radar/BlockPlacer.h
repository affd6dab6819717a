#pragma once

#include "radar/BlockGeometry.h"
#include "radar/BlockNeighbours.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

namespace corvane {
/// Where a controller has put a block: in a direction, or dragged to some place beside its target.
struct ManualPlace {
    std::optional<std::int32_t> Direction;
    ScopePoint FromTarget; ///< of the box's top left corner, where there is no direction
    bool operator==(const ManualPlace&) const = default;
};

struct BlockToPlace {
    std::uint64_t Track = 0; ///< the same from refresh to refresh, and unique in one
    ScopePoint Target;
    BlockSize Size; ///< empty: the target has no block
    std::optional<ManualPlace> Manual;
};

/// What a block had better not cover, besides other blocks and the targets' dots.
struct BlockSurroundings {
    PixelBox Scope;                   ///< beyond it a block is not read
    std::span<const PixelBox> Costly; ///< the panel's note
    std::span<const PixelBox> Cheap;  ///< airports' names
};

/// What a placement is made for.
enum class PlacementOccasion : std::uint8_t {
    Refresh,   ///< the one of each second: overlaps are counted, and what has waited moves
    OtherView, ///< the scope shows another part, scale or content: what overlaps now may move at once
    Between,   ///< a block is being dragged, a target selected: only new blocks look for a place
};

struct PlacementRules {
    bool Automatic = false;
    std::int32_t Direction = 9; ///< the specified place
    std::int32_t LengthPx = 30;
};

/// Places the targets' blocks so that they do not cover one another.
///
/// A new block takes the specified place where that is free, else the best there is. From then on it stays: only one
/// that has overlapped at two refreshes in a row moves, and not again for five seconds. What the places come to depends
/// on nothing but what is given to Place. A refresh costs the square of the number of blocks in cheap comparisons, and
/// for each block that may move some dozens of places beside its neighbours; where there are more than MostBlocks, all
/// stand at the specified place.
class BlockPlacer {
public:
    static constexpr std::size_t MostBlocks = 1000;

    /// The blocks' places, valid until the next call, in the order of blocks; that of an empty block is a point.
    ///
    /// now  seconds; does not go back
    std::span<const BlockPlace> Place(std::span<const BlockToPlace> blocks, const BlockSurroundings& surroundings,
                                      const PlacementRules& rules, double now, PlacementOccasion occasion);
    /// Forgets the places, as if no block had been seen yet.
    void Clear() noexcept { m_memory.clear(); }

private:
    /// A direction and a length of the leader.
    struct Seat {
        std::int32_t Direction = 9;
        std::int32_t LengthPx = 30;
        bool operator==(const Seat&) const = default;
    };
    struct Remembered {
        Seat Place;
        double TriedAt = 0; ///< when it last moved, or looked for a better place
        int Overlaps = 0;   ///< refreshes in a row
        bool Seen = false;
    };
    struct Working {
        Remembered* Memory = nullptr; ///< null: a block that stands where it was put
        Seat Place;
        bool New = false;
        bool MayMove = false;
        bool Tried = false;
    };
    struct Swept {
        PixelBox Box;
        std::size_t Block = 0;
        bool IsDot = false;
    };
    struct Scene;

    void Recall(const Scene& scene);
    [[nodiscard]] static bool CoversNoteOrEdge(const Scene& scene, const PixelBox& box);
    [[nodiscard]] bool Covers(const Scene& scene, std::size_t index, const PixelBox& box) const;
    [[nodiscard]] bool IsFree(const Scene& scene, std::size_t index, const PixelBox& box) const;
    void FindOverlaps();
    void JudgeOverlaps(const Scene& scene, double now, PlacementOccasion occasion);
    void LookAround(const Scene& scene, std::size_t index);
    [[nodiscard]] Seat CheapestSeat(const Scene& scene, std::size_t index);
    bool Improve(const Scene& scene, std::size_t index, bool stands);
    void Settle(const Scene& scene);
    void Remember(double now);

    std::map<std::uint64_t, Remembered> m_memory;
    // kept to reuse their memory
    std::vector<Working> m_working;
    std::vector<BlockPlace> m_places;
    std::vector<PixelBox> m_boxes; ///< the places', side by side
    std::vector<PixelBox> m_dots;
    std::vector<PixelBox> m_extents; ///< each with its dot, block and leader
    BlockNeighbours m_neighbours;    ///< of the block that looks for a place
    std::vector<Swept> m_sweep;
    std::vector<std::uint8_t> m_overlapping; ///< by block
};
} // namespace corvane
