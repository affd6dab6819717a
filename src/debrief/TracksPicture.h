#pragma once

#include "debrief/Debrief.h"
#include "radar/MapScene.h"
#include "radar/Surface.h"

#include <string>

namespace corvane {
/// A view in true proportions, around the area's centre, into which the tracks of a debrief fit: those that were the
/// controller's, or all where none was.
ScopeView ViewOfTracks(const Debrief& debrief, const AreaModel& area, std::int32_t widthPx, std::int32_t heightPx);
/// Draws the map and over it the way of each flight, with its callsign where it was last; those that were the
/// controller's in their own colours, others grey.
void DrawTracks(Surface& surface, const Debrief& debrief, const MapScene& scene);

inline constexpr const char* TracksLabel = "The tracks of all flights over the map"; ///< for those who do not see it
inline constexpr const char* TimelineLabel = "Aircraft handled, minute by minute";

/// Pixels of the surface.
struct PictureSize {
    std::int32_t WidthPx = 0;
    std::int32_t HeightPx = 0;
};
/// The tracks over the map, in a view of their own.
void DrawTracksPicture(Surface& surface, const Debrief& debrief, const AreaModel& area, const MagVarGrid& grid,
                       PictureSize size);
/// The number of aircraft handled over the time.
void DrawTimeline(Surface& surface, const Debrief& debrief, PictureSize size);
/// The same two as SVG elements.
std::string TracksSvg(const Debrief& debrief, const AreaModel& area, const MagVarGrid& grid);
std::string TimelineSvg(const Debrief& debrief);
} // namespace corvane
