#pragma once

#include "core/Geodesy.h"
#include "core/MagVarGrid.h"
#include "radar/ScopeView.h"
#include "radar/Surface.h"

#include <string>

namespace corvane {
/// What the pointer does on the scope: where it rests, what it measures from, and what it selected. Positions come from
/// events in the scope's own coordinates (ScopeDegrees) and are widened to double.
struct PointerState {
    PositionRecord PointerPosition;    ///< longitude in (-180, 180]
    PositionRecord PointerPositionRaw; ///< longitude as delivered: above 180 east of the date line in a view across it
    double FixLat = 0;                 ///< the fix point measured from; 0, 0 when there is none
    double FixLon = 0;
    bool MeasureActive = false;      ///< the left button is held on the scope
    PositionRecord SelectedAirspace; ///< its Name and Kind are empty while none is selected
    std::string PanelText;           ///< the information panel's caption; empty while the panel is hidden
};

/// The left button goes down: measuring starts from there. The caller stops the periodic target refresh, which would
/// wipe the measuring line.
void PressLeftButton(PointerState& state, ScopeDegrees at) noexcept;
/// The left button goes up: measuring ends. The caller starts the target refresh again.
void ReleaseLeftButton(PointerState& state) noexcept;
/// Where a right click centres the view.
LatLon RecenterPosition(ScopeDegrees at) noexcept;
/// The pointer moves: its position is kept, panel and selected airspace go. While measuring the caller then draws the
/// map, the targets and DrawMeasurement anew.
void MovePointer(PointerState& state, ScopeDegrees at);

/// Draws the dotted line from the fix point to the pointer, and distance and magnetic course at its middle. Leaves the
/// drawing defaults set.
void DrawMeasurement(Surface& surface, const ScopeView& view, const MagVarGrid& grid, LatLon fix, LatLon pointer);
/// The same for the state's fix point and pointer; nothing unless measuring.
void DrawMeasurement(Surface& surface, const ScopeView& view, const MagVarGrid& grid, const PointerState& state);
} // namespace corvane
