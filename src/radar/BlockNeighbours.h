#pragma once

#include "radar/BlockGeometry.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace corvane {
/// Where a block stands.
struct BlockPlace {
    std::int32_t Direction = 9;
    PixelBox Box;
    ScopePoint LeaderEnd;
    bool operator==(const BlockPlace&) const = default;
};

/// The place of a block of some size at the end of a leader.
BlockPlace PlaceAtLeader(ScopePoint target, BlockSize size, std::int32_t direction, std::int32_t lengthPx) noexcept;

/// What lies within the reach of one block that looks for a place, and what its places cost beside that: four for a
/// covered pixel, one where only a name is covered, and a price for each leader that crosses a block or a dot.
///
/// It is kept by the leader's direction, as most of it is in the way of few.
class BlockNeighbours {
public:
    /// Room left around a block that moves, so that it need not soon move again.
    static constexpr std::int32_t ClearancePx = 5;

    /// Nothing is near any more; the next block, its longest leader, and the scope.
    /// most  boxes and leaders that may be added, of each kind
    void Begin(ScopePoint target, BlockSize size, std::int32_t longestPx, const PixelBox& scope, std::size_t most);
    /// Holds the block and its leader wherever they are; what lies outside need not be added.
    [[nodiscard]] const PixelBox& Reach() const noexcept { return m_reach; }
    /// A dot, another block or a note.
    void AddCostly(const PixelBox& box) noexcept;
    /// A name.
    void AddCheap(const PixelBox& box) noexcept;
    void AddLeader(ScopePoint from, ScopePoint to) noexcept;

    /// What a place at the end of a leader costs, or some number from enough on where it costs as much.
    [[nodiscard]] std::int64_t Cost(const BlockPlace& place, std::int64_t enough) const noexcept;

private:
    struct Leader {
        ScopePoint From;
        ScopePoint To;
    };
    /// A list that takes or leaves an item without a branch, which would be foreseen badly: behind the last item there
    /// is always room for one more.
    template <class Item> class Pile {
    public:
        void Clear(std::size_t most)
        {
            m_items.resize(std::max(m_items.size(), most + 1));
            m_count = 0;
        }
        void AddIf(bool wanted, const Item& item) noexcept
        {
            assert(m_count < m_items.size());
            m_items[m_count] = item;
            m_count += static_cast<std::size_t>(wanted);
        }
        [[nodiscard]] std::span<const Item> Items() const noexcept { return std::span(m_items).first(m_count); }

    private:
        std::vector<Item> m_items;
        std::size_t m_count = 0;
    };
    struct Sector {
        PixelBox Reach;
        Pile<PixelBox> Costly;
        Pile<PixelBox> Cheap;
        Pile<Leader> Leaders;
    };

    ScopePoint m_target;
    PixelBox m_scope;
    PixelBox m_reach;                ///< of all sectors
    std::array<Sector, 8> m_sectors; ///< by eighths of a turn
};
} // namespace corvane
