#include "radar/TargetDisplay.h"

#include "radar/PlayerTargets.h"
#include "radar/TargetDrawing.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace corvane {
void TargetDisplay::SetArea(const AreaModel& area)
{
    m_altitudes.Reset();
    m_monitor.SetArea(area);
}

void TargetDisplay::Clear()
{
    m_monitor.Clear();
    m_placer.Clear();
    m_byHand.GiveAllBack();
    m_marks = {};
}

/// Returns whether they are others than the last.
bool TargetDisplay::Follow(const DisplayOptions& options)
{
    if (m_options == options)
        return false;
    m_monitor.SetOptions(TracksOf(options), AlertsOf(options));
    const bool otherPlaces =
        m_options && (m_options->LeaderDirection != options.LeaderDirection ||
                      m_options->LeaderLengthPx != options.LeaderLengthPx || m_options->Placement != options.Placement);
    if (otherPlaces)
        m_placer.Clear();
    m_options = options;
    return true;
}

void TargetDisplay::Refresh(const Frame& frame)
{
    const bool changed = Follow(frame.Options);
    UpdateMinimumAltitudes(frame.Scene, frame.Members, m_altitudes);
    std::vector<const PlayerRecord*> pilots;
    for (const PlayerRecord& player : frame.Members.Players)
        if (EligiblePilot(player, frame.Members.OwnPlayerId, frame.Members.OwnName))
            pilots.push_back(&player);
    m_monitor.Refresh(pilots, frame.Now);
    if (!m_byHand.Empty()) {
        std::vector<TrackId> present;
        for (const PlayerRecord* const pilot : pilots)
            if (const auto track = m_monitor.Find(*pilot, frame.Now))
                present.push_back(track->Id);
        std::ranges::sort(present);
        m_byHand.KeepOnly(present);
    }
    Arrange(frame, changed ? PlacementOccasion::OtherView : PlacementOccasion::Refresh);
}

void TargetDisplay::Rearrange(const Frame& frame, bool viewChanged)
{
    const bool changed = Follow(frame.Options);
    Arrange(frame, changed || viewChanged ? PlacementOccasion::OtherView : PlacementOccasion::Between);
}

/// A target that has not reported yet has no track, but a block.
static std::uint64_t TrackOrPlayer(const TargetMark& mark) noexcept
{
    constexpr std::uint64_t NotATrack = std::uint64_t{1} << 63U;
    return mark.Track != 0 ? mark.Track : NotATrack | static_cast<std::uint32_t>(mark.PlayerId);
}

/// The smallest box around all lines of the list of alerts.
static PixelBox BoxOfList(std::span<const AlertLine> lines) noexcept
{
    if (lines.empty())
        return {};
    PixelBox box = lines.front().Box;
    box.Bottom = lines.back().Box.Bottom;
    return box;
}

void TargetDisplay::Arrange(const Frame& frame, PlacementOccasion occasion)
{
    ChooseTargets({frame.Scene, frame.Members, m_monitor, frame.Options, frame.Focus, frame.Now}, frame.Metrics,
                  m_marks);
    std::vector<BlockToPlace> blocks;
    blocks.reserve(m_marks.Targets.size());
    for (const TargetMark& mark : m_marks.Targets)
        blocks.push_back(
            {TrackOrPlayer(mark), mark.At, MeasureBlock(mark.Block, frame.Metrics), m_byHand.Find(mark.Track)});
    std::vector<PixelBox> costly;
    for (const PixelBox& box : {frame.Focus.Panel, BoxOfList(m_marks.Alerts), m_marks.FilterNoteBox})
        if (!box.Empty())
            costly.push_back(box);
    for (const PairMark& pair : m_marks.Pairs)
        costly.push_back(pair.TextBox);
    const std::vector<PixelBox> names = AirportNameBoxes(frame.Scene, frame.Metrics);
    const PixelBox scope{0, 0, frame.Scene.View.ScopeWidthPx, frame.Scene.View.ScopeHeightPx};
    const PlacementRules rules{frame.Options.Placement == BlockPlacement::Automatic, frame.Options.LeaderDirection,
                               frame.Options.LeaderLengthPx};
    const auto places = m_placer.Place(blocks, {scope, costly, names}, rules, frame.Now, occasion);
    for (std::size_t i = 0; i < places.size(); ++i)
        m_marks.Targets[i].Place = places[i];
}

void TargetDisplay::Draw(Surface& surface, ColourScheme scheme) const
{
    DrawTargetMarks(surface, m_marks, scheme);
}

const TargetMark* TargetDisplay::TargetAt(ScopePoint at) const noexcept
{
    constexpr std::int64_t ReachPx = 7;
    const TargetMark* nearest = nullptr;
    std::int64_t least = ReachPx * ReachPx + 1;
    for (const TargetMark& mark : m_marks.Targets) {
        const std::int64_t dx = std::int64_t{at.X} - mark.At.X;
        const std::int64_t dy = std::int64_t{at.Y} - mark.At.Y;
        if (dx * dx + dy * dy < least) {
            least = dx * dx + dy * dy;
            nearest = &mark;
        }
    }
    return nearest;
}

const TargetMark* TargetDisplay::BlockAt(ScopePoint at) const noexcept
{
    const TargetMark* topmost = nullptr;
    for (const TargetMark& mark : m_marks.Targets) // later ones are drawn over earlier ones, the selected over all
        if (mark.Place.Box.Contains(at) && (topmost == nullptr || !topmost->Selected))
            topmost = &mark;
    return topmost;
}

std::optional<std::size_t> TargetDisplay::AlertAt(ScopePoint at) const noexcept
{
    for (const AlertLine& line : m_marks.Alerts)
        if (line.Box.Contains(at) && line.Index < m_monitor.Alerts().size())
            return line.Index;
    return std::nullopt;
}
} // namespace corvane
