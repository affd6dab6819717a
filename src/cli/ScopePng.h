#pragma once

#include "core/Result.h"
#include "radar/DisplayOptions.h"
#include "radar/MapScene.h"
#include "radar/Surface.h"

#include <filesystem>
#include <functional>

namespace corvane {
/// Draws the map of a scene and whatever drawOver puts on it, and writes the picture as a PNG file. A program built
/// without Qt has no fonts to draw with: the Error says so.
Result<void> WriteScopePng(const std::filesystem::path& path, const MapScene& scene, ColourScheme colours,
                           const std::function<void(Surface&)>& drawOver);
} // namespace corvane
