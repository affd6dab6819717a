#pragma once

#include "radar/MapScene.h"
#include "radar/PlayerTargets.h"
#include "radar/PointerReadout.h"
#include "radar/RedrawCycle.h"
#include "radar/TargetDisplay.h"
#include "radar/TargetFollowing.h"
#include "radar/TargetHand.h"
#include "session/MemberRadio.h"
#include "session/SessionState.h"

#include <cstdint>
#include <optional>
#include <string>

namespace corvane {
/// What the scope borrows for as long as it exists.
struct RadarSources {
    const AreaModel& Area;
    const MagVarGrid& Variation;
    const DisplayFlags& Flags;
    const SessionState& Session;
    PlayerTable& Players;
    const MemberRadios* Radios = nullptr; ///< null: nobody knows them
};

/// The radar scope as a person works it, without the window: its view, its pointer, and its picture.
///
/// Whatever changes the picture only marks it as stale; Draw brings it up to date. So a held key or a turned wheel
/// queues nothing up: the next drawing shows the newest view.
class RadarDisplay {
public:
    /// The font is borrowed.
    RadarDisplay(const RadarSources& sources, const ScopeFont& font);

    /// The main window opens: the area from its start-up view.
    void Load(std::int32_t widthPx, std::int32_t heightPx);
    /// Keeps the rectangle of degrees and stretches it to the new size.
    void Resize(std::int32_t widthPx, std::int32_t heightPx);
    /// The screen has so many pixels to one of the scope, 1 or more; the font's size must follow.
    void SetScale(double scale);
    /// Lines and points are drawn so many times as wide, 1 or more.
    void SetLineWidth(double width);
    void ZoomIn();
    void ZoomOut();
    void Recenter(LatLon center);
    void CenterOnArea();
    /// Centres on a place at a zoom level; what lies outside of the earth or of the levels becomes the nearest.
    void Show(LatLon center, double zoomLevel);
    /// Moves the view by tenths of its width and height, east and north positive.
    void Pan(int eastTenths, int northTenths);
    /// Redraws all layers at the same centre, after the flags or the area have changed.
    void RedrawAll();
    /// Another area has been loaded: what was prepared for the last one is forgotten.
    void AreaChanged();

    /// The periodic refresh: targets and highlight over the map's snapshot.
    ///
    /// now  seconds of a clock that does not go back, by which every display but the classic one counts ages
    void RefreshTargets(double now = 0);

    /// How targets are drawn from now on. The classic display draws as if there were no other.
    void SetDisplay(const DisplayOptions& options, double now);
    [[nodiscard]] const DisplayOptions& Display() const noexcept { return m_options; }
    [[nodiscard]] bool Classic() const noexcept;
    /// A member has reported what its record holds.
    void Report(const PlayerRecord& member, double now);
    /// The targets of every display but the classic one; what is changed there shows after TargetsChanged.
    [[nodiscard]] TargetDisplay& Targets() noexcept { return m_targets; }
    /// The target whose block is bright and on top; nobody for none.
    void Select(std::optional<MemberKey> member);
    [[nodiscard]] const std::optional<MemberKey>& Selected() const noexcept { return m_focus.Selected; }
    /// Where the information panel stands, so that blocks keep off it; an empty box while it is hidden.
    void SetPanelBox(const PixelBox& box);
    /// Selection, blocks by hand or alerts have changed.
    void TargetsChanged() noexcept;

    void PressLeft(ScopePoint at);
    void ReleaseLeft(ScopePoint at);
    /// The release was never heard: whatever the button held is let go.
    void CancelLeft();
    void PressRight(ScopePoint at);
    void MovePointerTo(ScopePoint at);
    /// The pointer has left the scope, and the panel with it.
    void PointerLeaves();

    // What every display but the classic one has besides; the classic one does nothing.
    void DoubleClick(ScopePoint at);
    [[nodiscard]] std::optional<MemberKey> MemberAt(ScopePoint at) const;
    void SelectNext();
    void TurnBlock(std::int32_t direction);
    void AcknowledgeNext();
    /// Selection and lines between targets go.
    void LetGo();
    /// Keeps the view centred on a member until the view is moved otherwise; on nobody for none.
    void Follow(std::optional<MemberKey> member);
    [[nodiscard]] const std::optional<MemberKey>& Followed() const noexcept { return m_following.Followed(); }

    /// Looks for an object under the pointer. Returns whether the panel's text has changed.
    bool TickPanel();
    [[nodiscard]] bool Measuring() const noexcept { return m_pointer.MeasureActive; }
    /// The information panel's caption; empty while it is hidden.
    [[nodiscard]] const std::string& PanelText() const noexcept { return m_pointer.PanelText; }
    /// Where a panel of some size belongs, inside the scope: its corner at the pointer. In every display but the
    /// classic one it is the corner that keeps the panel off the block of the target that it tells about.
    [[nodiscard]] PixelBox PanelPlace(std::int32_t widthPx, std::int32_t heightPx) const;

    /// Brings the picture up to date.
    void Draw();
    [[nodiscard]] bool IsStale() const noexcept { return m_stale != Stale::Nothing; }
    [[nodiscard]] const PixelImage& Picture() const noexcept { return m_painter.Picture(); }
    [[nodiscard]] const ScopeView& View() const noexcept { return m_shown; }

private:
    enum class Stale : std::uint8_t { Nothing, Targets, Map };

    [[nodiscard]] MapScene Scene() const noexcept
    {
        return {m_sources.Area, m_sources.Variation, m_shown, m_sources.Flags};
    }
    [[nodiscard]] std::string OwnName() const;
    void BeginWatching();
    void KeepUpWithFollowed();
    void RefreshPanel();
    void MoveViewTo(LatLon center);
    template <class Call> void WithFrame(const Call& call);
    void DrawOverMap(Surface& scope, bool highlight);
    void DrawAllTargets(Surface& scope);
    void MapIsStale() noexcept;

    RadarSources m_sources;
    ScopeView m_view;  ///< as zoom and moves leave it
    ScopeView m_shown; ///< the same, in true proportions where the display has them
    PointerState m_pointer;
    TargetMemory m_memory;
    DisplayOptions m_options;
    TargetDisplay m_targets;
    TargetFocus m_focus;
    TargetHand m_hand;
    TargetFollowing m_following;
    bool m_pointerAway = false; ///< the pointer rests outside of the scope
    double m_now = 0;
    bool m_rearrange = false;   ///< marks and places no longer fit options or focus
    bool m_viewChanged = false; ///< nor the view
    RedrawCycle m_painter;
    Stale m_stale = Stale::Nothing;
};
} // namespace corvane
