#pragma once

#include "radar/PixelImage.h"
#include "radar/Surface.h"

namespace corvane {
/// Draws the ellipse inscribed in a rectangle, both corners included: filled as the state says, then outlined with its
/// pen. A rectangle without width or height is a line. Only the pixels on the image cost time, however large the
/// ellipse. The scale is that of RasterLine.
void RasterEllipse(PixelImage& image, const DrawState& state, ScopePoint corner1, ScopePoint corner2,
                   double scale = 1) noexcept;

/// Draws the part of that ellipse's outline that lies counter-clockwise from the radial through start to the radial
/// through end. Radials are directions in pixels. The whole outline where they agree, or where a point lies at the
/// centre and so has no radial; nothing for a rectangle without width or height.
void RasterArc(PixelImage& image, const DrawState& state, ScopePoint corner1, ScopePoint corner2, ScopePoint start,
               ScopePoint end, double scale = 1) noexcept;
} // namespace corvane
