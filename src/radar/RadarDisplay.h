#pragma once

#include "radar/MapScene.h"
#include "radar/PlayerTargets.h"
#include "radar/PointerReadout.h"
#include "radar/ScopePainter.h"
#include "session/SessionState.h"

#include <cstdint>
#include <string>

namespace corvane {
/// What the scope borrows for as long as it exists.
struct RadarSources {
    const AreaModel& Area;
    const MagVarGrid& Variation;
    const DisplayFlags& Flags;
    const SessionState& Session;
    PlayerTable& Players;
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
    void ZoomIn();
    void ZoomOut();
    void Recenter(double lon, double lat);
    void CenterOnArea();
    /// Moves the view by tenths of its width and height, east and north positive.
    void Pan(int eastTenths, int northTenths);
    /// Redraws all layers at the same centre, after the flags or the area have changed.
    void RedrawAll();
    /// Another area has been loaded: what was prepared for the last one is forgotten.
    void AreaChanged();

    /// The periodic refresh: targets and highlight over the map's snapshot.
    void RefreshTargets();

    void PressLeft(ScopePoint at);
    void ReleaseLeft();
    void PressRight(ScopePoint at);
    void MovePointerTo(ScopePoint at);
    /// Looks for an object under the pointer. Returns whether the panel's text has changed.
    bool TickPanel();
    [[nodiscard]] bool Measuring() const noexcept { return m_pointer.MeasureActive; }
    /// The information panel's caption; empty while it is hidden.
    [[nodiscard]] const std::string& PanelText() const noexcept { return m_pointer.PanelText; }
    /// Where the panel's top left corner belongs.
    [[nodiscard]] ScopePoint PanelPosition() const noexcept;

    /// Brings the picture up to date.
    void Draw();
    [[nodiscard]] bool IsStale() const noexcept { return m_stale != Stale::Nothing; }
    [[nodiscard]] const PixelImage& Picture() const noexcept { return m_painter.Picture(); }
    [[nodiscard]] const ScopeView& View() const noexcept { return m_view; }

private:
    enum class Stale : std::uint8_t { Nothing, Targets, Map };

    [[nodiscard]] MapScene Scene() const noexcept
    {
        return {m_sources.Area, m_sources.Variation, m_view, m_sources.Flags};
    }
    [[nodiscard]] std::string OwnName() const;
    void DrawOverMap(bool highlight);
    void MapIsStale() noexcept { m_stale = Stale::Map; }

    RadarSources m_sources;
    ScopeView m_view;
    PointerState m_pointer;
    TargetMemory m_memory;
    ScopePainter m_painter;
    Stale m_stale = Stale::Nothing;
};
} // namespace corvane
