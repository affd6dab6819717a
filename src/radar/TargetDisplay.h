#pragma once

#include "radar/BlocksByHand.h"
#include "radar/MinimumAltitude.h"
#include "radar/TargetArrangement.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace corvane {
/// The targets of every display but the classic one, from refresh to refresh: who is watched, where the blocks stand,
/// what is drawn. The radar's window and the command line share it.
class TargetDisplay {
public:
    /// The grid is borrowed.
    explicit TargetDisplay(const MagVarGrid& variation) : m_monitor(variation) {}

    /// What is drawn from and how; Members may be changed in their MinimumAltitudeFt alone.
    struct Frame {
        const MapScene& Scene;
        const Pilots& Members;
        const DisplayOptions& Options;
        const TargetFocus& Focus;
        const Surface& Metrics; ///< measures texts
        double Now = 0;         ///< seconds, not before any earlier call's or report's
    };

    /// Another area has been loaded.
    void SetArea(const AreaModel& area);
    /// A member has reported what its record holds.
    void Report(const PlayerRecord& member, double now) { m_monitor.Report(member, now); }
    /// Forgets everybody.
    void Clear();
    /// The refresh of each second: minimum altitudes and alerts are found anew, and everything is chosen and placed.
    void Refresh(const Frame& frame);
    /// Between refreshes: chosen and placed anew. Where view or options have changed, blocks that now overlap move at
    /// once; where only selection or blocks by hand have, they stay.
    void Rearrange(const Frame& frame, bool viewChanged);
    void Draw(Surface& surface, ColourScheme scheme) const;

    [[nodiscard]] const TargetMarks& Marks() const noexcept { return m_marks; }
    [[nodiscard]] TrafficMonitor& Monitor() noexcept { return m_monitor; }
    [[nodiscard]] const TrafficMonitor& Monitor() const noexcept { return m_monitor; }
    /// Blocks that the controller has put somewhere; what changes here shows at the next arrangement.
    [[nodiscard]] BlocksByHand& ByHand() noexcept { return m_byHand; }

    /// The mark whose dot lies within 7 pixels of a pixel, the nearest; and the one whose block is there. Null for
    /// none.
    [[nodiscard]] const TargetMark* TargetAt(ScopePoint at) const noexcept;
    [[nodiscard]] const TargetMark* BlockAt(ScopePoint at) const noexcept;
    /// The alert, by its place among those that stand, whose line of the list is at a pixel.
    [[nodiscard]] std::optional<std::size_t> AlertAt(ScopePoint at) const noexcept;

private:
    bool Follow(const DisplayOptions& options);
    void Arrange(const Frame& frame, PlacementOccasion occasion);

    TrafficMonitor m_monitor;
    MinimumAltitudes m_altitudes;
    BlockPlacer m_placer;
    BlocksByHand m_byHand;
    TargetMarks m_marks;
    std::optional<DisplayOptions> m_options; ///< those that were followed last
};
} // namespace corvane
