#pragma once

#include "core/Geodesy.h"
#include "radar/Surface.h"

#include <cstdint>
#include <optional>

namespace corvane {
/// The radar scope's window on the world: longitude maps linearly to x and latitude to y, without a cosine, so degrees
/// are in general not square on the scope. A new one is empty; InitialView makes the one to start from.
///
/// Longitudes are kept in (-180, 180]; a west edge above the east edge means that the view crosses the 180 degree
/// meridian. Latitudes are not limited and may lie beyond the poles.
struct ScopeView {
    double ViewWest = 0;
    double ViewEast = 0;
    double ViewNorth = 0;
    double ViewSouth = 0;
    /// A second rectangle, the box outside which airports show no details: the view of the last zoom step that ended
    /// below level 36, re-centred together with the view.
    double SavedWest = 0;
    double SavedNorth = 0;
    double SavedEast = 0;
    double SavedSouth = 0;
    std::int32_t ScopeWidthPx = 0;
    std::int32_t ScopeHeightPx = 0;
    std::int16_t ZoomLevel = 1;    ///< 1 (the world) .. 55
    std::int16_t OutlineStep = 18; ///< stride through the world outline points, 3 .. OutlineStepMax
    std::int16_t OutlineStepMax = 18;
    LatLon
        ViewCenter; ///< as last given to RecenterView; its longitude decides where a view across 180 degrees is split
    bool operator==(const ScopeView&) const = default;
};

inline constexpr std::int16_t MinZoomLevel = 1;
inline constexpr std::int16_t MaxZoomLevel = 55;
inline constexpr std::int16_t StartUpZoomLevel = 14;

/// The view of the whole world at level 1, centred on 0, 0.
ScopeView InitialView(std::int32_t widthPx, std::int32_t heightPx) noexcept;
/// The view after start-up: the initial one, centred, then zoomed in step by step to a level (held to 1 .. 55).
ScopeView StartUpView(std::int32_t widthPx, std::int32_t heightPx, LatLon center,
                      std::int16_t zoomLevel = StartUpZoomLevel) noexcept;

/// The pixel of a position, rounded to the nearest (halves to even) and held to 32 bits; it may lie far outside the
/// scope. (0, 0) where the view has no width, or the position is off the map in a view across 180 degrees. A coordinate
/// that is not a number gives 0, which is never inside the scope.
ScopePoint ProjectToScope(const ScopeView& view, LatLon at) noexcept;
/// Whether a pixel lies on the scope; its first row and column do not count.
constexpr bool InsideScope(const ScopeView& view, ScopePoint at) noexcept
{
    return at.X >= 1 && at.X < view.ScopeWidthPx && at.Y >= 1 && at.Y < view.ScopeHeightPx;
}
/// Whether a position lies between the view's edges. One that does not is never inside the scope: its quotient in the
/// projection is 0 or less, or 1 or more. So this spares most objects of a large area the divisions.
constexpr bool BetweenEdges(const ScopeView& view, LatLon at) noexcept
{
    // without branches: over a large area's points they would be mispredicted more often than not
    const unsigned edgesNeeded = view.ViewWest > view.ViewEast ? 1 : 2;
    const auto asNumber = [](bool met) { return static_cast<unsigned>(met); };
    const unsigned edgesMet = asNumber(at.Lon > view.ViewWest) + asNumber(at.Lon < view.ViewEast);
    return (asNumber(at.Lat < view.ViewNorth) & asNumber(at.Lat > view.ViewSouth) &
            asNumber(edgesMet >= edgesNeeded)) != 0;
}
/// The pixel of a position that lies on earth and inside the scope; nothing for all others.
inline std::optional<ScopePoint> VisiblePixel(const ScopeView& view, LatLon position) noexcept
{
    if (!BetweenEdges(view, position) || !OnEarth(position))
        return std::nullopt;
    const ScopePoint at = ProjectToScope(view, position);
    return InsideScope(view, at) ? std::optional(at) : std::nullopt;
}

/// One press of "+": each side moves in by a tenth of the span. Nothing at level 55.
void ZoomIn(ScopeView& view) noexcept;
/// One press of "-", the inverse of "+": each side moves out by an eighth of the span. Nothing at level 1.
void ZoomOut(ScopeView& view) noexcept;
/// Presses "+" or "-" until the level (held to 1 .. 55) is reached.
void ZoomTo(ScopeView& view, std::int16_t level) noexcept;

/// Moves view and saved rectangle to a new centre, keeping their spans and the level.
void RecenterView(ScopeView& view, LatLon center) noexcept;

/// The same centre and the same span from west to east with as many degrees from south to north as make a mile as many
/// pixels up as across, at the latitude of the centre (89 degrees beyond that, where there is no such span). Both
/// rectangles change. Steps and moves begin at the view that this one was made of.
ScopeView WithTrueProportions(ScopeView view) noexcept;

/// A position in the scope's own coordinates, as pointer events carry it: X is a longitude that goes on above 180 east
/// of the 180 degree meridian in a view across it, Y a latitude. Single precision, like the events.
struct ScopeDegrees {
    float X = 0;
    float Y = 0;
    bool operator==(const ScopeDegrees&) const = default;
};
/// The right edge in the scope's own coordinates: ViewEast, or a turn more in a view across 180 degrees.
double UserScaleRight(const ScopeView& view) noexcept;
/// What a pointer event at a pixel reads; the pixel may lie outside the scope (a button is held).
ScopeDegrees DegreesAtPixel(const ScopeView& view, ScopePoint at) noexcept;
/// The pixel at a position in the scope's own coordinates, for example of a label placed there.
ScopePoint PixelAtDegrees(const ScopeView& view, double x, double y) noexcept;
} // namespace corvane
