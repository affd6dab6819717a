#pragma once

#include "core/Geodesy.h"
#include "radar/BlockGeometry.h"
#include "radar/MapScene.h"
#include "radar/Pilots.h"
#include "radar/PointerReadout.h"

#include <optional>
#include <string>

namespace corvane {
struct PanelAnswer {
    std::string Text;                               ///< the panel's caption, lines joined by CR LF; empty: stays hidden
    std::optional<PositionRecord> SelectedAirspace; ///< the airspace under the pointer, text or not
};

/// One tick of the panel (every 500 ms): the details of the object whose pixel is near the pointer's, 5 pixels for a
/// navaid and 7 for all else. Where several are, the last one counts in the order airspaces, NDBs, VORs, pilots, then
/// airport by airport its gates, runway ends and ILS. Nothing while measuring or while the panel shows.
PanelAnswer PanelTick(const MapScene& scene, const Pilots& pilots, const PointerState& pointer);

/// The panel's box where its text is drawn in the scope's typeface, inside the scope; empty while it is hidden.
PixelBox PanelBox(const PointerState& pointer, const ScopeView& view, const Surface& metrics);

/// Where a panel of some size stands at the pointer, inside the scope: below and to the right of it, or where it hides
/// the least of a block that it should keep off.
PixelBox PlacePanel(ScopePoint pointer, BlockSize size, const PixelBox& scope, const PixelBox& keepOff);

/// Keeps a tick's answer: caption and selected airspace. An empty text leaves the panel hidden, so that the next tick
/// looks again. The panel's top-left corner belongs at PointerPositionRaw.
void ShowPanel(PointerState& pointer, PanelAnswer&& answer) noexcept;
} // namespace corvane
