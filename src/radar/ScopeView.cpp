#include "radar/ScopeView.h"

#include "core/Geodesy.h"
#include "core/Rounding.h"

#include <algorithm>
#include <cmath>

namespace corvane {
static constexpr std::int16_t SavedBelowLevel = 36;

static bool CrossesDateLine(const ScopeView& view) noexcept
{
    return view.ViewWest > view.ViewEast;
}

/// Degrees from a west to an east edge; 0 when they are equal.
static double LongitudeSpan(double west, double east) noexcept
{
    if (west < east)
        return std::abs(east - west);
    if (west > east)
        return std::abs(180 - west) + std::abs(-180 - east);
    return 0;
}

ScopeView InitialView(std::int32_t widthPx, std::int32_t heightPx) noexcept
{
    ScopeView view;
    view.ViewWest = view.SavedWest = -145.9999;
    view.ViewNorth = view.SavedNorth = 89.9999;
    view.ViewEast = view.SavedEast = 145.9999;
    view.ViewSouth = view.SavedSouth = -89.9999;
    view.ScopeWidthPx = widthPx;
    view.ScopeHeightPx = heightPx;
    return view;
}

ScopeView StartUpView(std::int32_t widthPx, std::int32_t heightPx, LatLon center, std::int16_t zoomLevel) noexcept
{
    ScopeView view = InitialView(widthPx, heightPx);
    RecenterView(view, center);
    ZoomTo(view, zoomLevel);
    return view;
}

static std::int32_t ProjectLatitude(const ScopeView& view, double lat) noexcept
{
    return RoundTo<std::int32_t>((view.ViewNorth - lat) / (view.ViewNorth - view.ViewSouth) * view.ScopeHeightPx);
}

ScopePoint ProjectToScope(const ScopeView& view, LatLon at) noexcept
{
    if (view.ViewWest < view.ViewEast)
        return {RoundTo<std::int32_t>((at.Lon - view.ViewWest) / (view.ViewEast - view.ViewWest) * view.ScopeWidthPx),
                ProjectLatitude(view, at.Lat)};
    if (!CrossesDateLine(view))
        return {};
    const double opposite = NormalizeLongitude(view.ViewCenter.Lon - 180);
    if (opposite <= at.Lon && at.Lon <= 180) // asked first: the opposite meridian itself counts as west of 180 degrees
        return {RoundTo<std::int32_t>((at.Lon - view.ViewWest) / ((view.ViewEast + 360) - view.ViewWest) *
                                      view.ScopeWidthPx),
                ProjectLatitude(view, at.Lat)};
    if (-180 <= at.Lon && at.Lon <= opposite) {
        const double west = view.ViewWest - 360;
        return {RoundTo<std::int32_t>((at.Lon - west) / (view.ViewEast - west) * view.ScopeWidthPx),
                ProjectLatitude(view, at.Lat)};
    }
    return {};
}

/// Moves every side outward by a part of the spans (inward when negative).
static void GrowView(ScopeView& view, double part) noexcept
{
    const double dx = LongitudeSpan(view.ViewWest, view.ViewEast) / part;
    const double dy = std::abs(view.ViewSouth - view.ViewNorth) / part;
    view.ViewWest = NormalizeLongitude(view.ViewWest - dx);
    view.ViewEast = NormalizeLongitude(view.ViewEast + dx);
    view.ViewNorth += dy;
    view.ViewSouth -= dy;
}

static void SaveView(ScopeView& view) noexcept
{
    if (view.ZoomLevel >= SavedBelowLevel)
        return;
    view.SavedWest = view.ViewWest;
    view.SavedNorth = view.ViewNorth;
    view.SavedEast = view.ViewEast;
    view.SavedSouth = view.ViewSouth;
}

void ZoomIn(ScopeView& view) noexcept
{
    constexpr std::int16_t SmallestStepToShorten = 4;
    if (view.ZoomLevel >= MaxZoomLevel || view.ZoomLevel < MinZoomLevel)
        return;
    GrowView(view, -10);
    ++view.ZoomLevel;
    SaveView(view);
    if (view.OutlineStep >= SmallestStepToShorten && view.ZoomLevel <= view.OutlineStepMax)
        --view.OutlineStep;
}

void ZoomOut(ScopeView& view) noexcept
{
    if (view.ZoomLevel <= MinZoomLevel || view.ZoomLevel > MaxZoomLevel)
        return;
    GrowView(view, 8);
    --view.ZoomLevel;
    SaveView(view);
    if (view.OutlineStep < view.OutlineStepMax && view.ZoomLevel <= view.OutlineStepMax)
        ++view.OutlineStep;
}

void ZoomTo(ScopeView& view, std::int16_t level) noexcept
{
    const std::int16_t target = std::clamp(level, MinZoomLevel, MaxZoomLevel);
    while (view.ZoomLevel < target)
        ZoomIn(view);
    while (view.ZoomLevel > target)
        ZoomOut(view);
}

static void RecenterRectangle(double& west, double& north, double& east, double& south, LatLon center) noexcept
{
    const double halfWidth = LongitudeSpan(west, east) / 2;
    const double halfHeight = std::abs((south - north) / 2);
    west = NormalizeLongitude(center.Lon - halfWidth);
    east = NormalizeLongitude(center.Lon + halfWidth);
    north = center.Lat + halfHeight;
    south = center.Lat - halfHeight;
}

void RecenterView(ScopeView& view, LatLon center) noexcept
{
    view.ViewCenter = center;
    RecenterRectangle(view.ViewWest, view.ViewNorth, view.ViewEast, view.ViewSouth, center);
    RecenterRectangle(view.SavedWest, view.SavedNorth, view.SavedEast, view.SavedSouth, center);
}

/// Degrees from the centre to either edge that are as long a way as half the span from west to east.
static void ProportionRectangle(const ScopeView& view, double west, double& north, double east, double& south) noexcept
{
    constexpr double HighestLat = 89;
    const double center = (north + south) / 2;
    const double lat = std::clamp(center, -HighestLat, HighestLat);
    const double milesWide = LongitudeSpan(west, east) * std::cos(lat * RadiansPerDegree);
    const double halfHeight = milesWide * view.ScopeHeightPx / view.ScopeWidthPx / 2;
    north = center + halfHeight;
    south = center - halfHeight;
}

ScopeView WithTrueProportions(ScopeView view) noexcept
{
    if (view.ScopeWidthPx <= 0 || view.ScopeHeightPx <= 0)
        return view;
    ProportionRectangle(view, view.ViewWest, view.ViewNorth, view.ViewEast, view.ViewSouth);
    ProportionRectangle(view, view.SavedWest, view.SavedNorth, view.SavedEast, view.SavedSouth);
    return view;
}

double UserScaleRight(const ScopeView& view) noexcept
{
    return CrossesDateLine(view) ? view.ViewEast + 360 : view.ViewEast;
}

ScopeDegrees DegreesAtPixel(const ScopeView& view, ScopePoint at) noexcept
{
    if (view.ScopeWidthPx <= 0 || view.ScopeHeightPx <= 0)
        return {static_cast<float>(view.ViewWest), static_cast<float>(view.ViewNorth)};
    const double x = view.ViewWest + (UserScaleRight(view) - view.ViewWest) / view.ScopeWidthPx * at.X;
    const double y = view.ViewNorth - (view.ViewNorth - view.ViewSouth) / view.ScopeHeightPx * at.Y;
    return {static_cast<float>(x), static_cast<float>(y)};
}

ScopePoint PixelAtDegrees(const ScopeView& view, double x, double y) noexcept
{
    return {RoundTo<std::int32_t>((x - view.ViewWest) / (UserScaleRight(view) - view.ViewWest) * view.ScopeWidthPx),
            ProjectLatitude(view, y)};
}
} // namespace corvane
