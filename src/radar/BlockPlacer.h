#pragma once

#include "radar/BlockGeometry.h"

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

/// Where a block stands.
struct BlockPlace {
    std::int32_t Direction = 9;
    PixelBox Box;
    ScopePoint LeaderEnd;
    bool operator==(const BlockPlace&) const = default;
};

/// What a block had better not cover, besides other blocks and the targets' dots.
struct BlockSurroundings {
    PixelBox Scope;                   ///< beyond it a block is not read
    std::span<const PixelBox> Costly; ///< the panel's note
    std::span<const PixelBox> Cheap;  ///< airports' names
};

struct PlacementRules {
    bool Automatic = false;
    std::int32_t Direction = 9; ///< the specified place
    std::int32_t LengthPx = 30;
};

/// Places the targets' blocks once a refresh so that they do not cover one another.
///
/// A new block takes the specified place where that is free, else the best there is. From then on it stays: only one
/// that has overlapped at two refreshes in a row moves, and not again for five seconds. What the places come to depends
/// on nothing but what is given to Place. A refresh costs the square of the number of blocks in cheap comparisons, and
/// for each block that may move some dozens of places beside its neighbours.
class BlockPlacer {
public:
    /// The blocks' places, valid until the next call, in the order of blocks; that of an empty block is a point.
    ///
    /// now          seconds; does not go back
    /// viewChanged  the scope shows another part or scale: what overlaps now may move at once
    std::span<const BlockPlace> Place(std::span<const BlockToPlace> blocks, const BlockSurroundings& surroundings,
                                      const PlacementRules& rules, double now, bool viewChanged);
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
        double MovedAt = 0;
        int Overlaps = 0; ///< refreshes in a row
        bool Seen = false;
    };
    struct Working {
        Remembered* Memory = nullptr; ///< null: a block that stands where it was put
        Seat Place;
        bool New = false;
        bool MayMove = false;
    };
    struct Scene;
    class Neighbours;

    void Recall(const Scene& scene);
    [[nodiscard]] bool Overlaps(const Scene& scene, std::size_t index) const;
    void JudgeOverlaps(const Scene& scene, double now, bool viewChanged);
    bool Improve(const Scene& scene, std::size_t index);
    void Settle(const Scene& scene);
    void Remember(double now);

    std::map<std::uint64_t, Remembered> m_memory;
    // kept to reuse their memory
    std::vector<Working> m_working;
    std::vector<BlockPlace> m_places;
};
} // namespace corvane
