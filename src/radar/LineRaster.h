#pragma once

#include "radar/PixelImage.h"
#include "radar/Surface.h"

namespace corvane {
/// Draws the pixels of a line, both ends included, with the state's pen. The same pixels are set however much of the
/// line lies off the image, and only those on it cost time.
/// scale  of the pen's width and dashes; the points are pixels of the image as they are
void RasterLine(PixelImage& image, const DrawState& state, ScopePoint from, ScopePoint to, double scale = 1) noexcept;
} // namespace corvane
