#pragma once

#include "core/Bytes.h"
#include "demo/WorldData.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace corvane {
/// The files of a written world that hold no airports.

/// An area of scenery.cfg. Local is its folder as the file names it.
struct SceneryAreaEntry {
    std::string Title;
    std::string Local;
};
/// A section [General], then one section an area, lines ending in CR LF.
Bytes SceneryCfgFile(std::span<const SceneryAreaEntry> areas);

/// world.map: the vertices of the polylines, an entry of two zeros after each.
void AppendWorldMap(Bytes& out, std::span<const Polyline> lines);
/// world_terrain.db.
Bytes TerrainFile(std::span<const TerrainSource> points);

/// Stands in for the simulator's program: by its first line a written world is known from a real installation.
Bytes PlaceholderProgram();
/// Whether a folder may be written as simulator folder: it does not exist, is empty, or holds the placeholder. What an
/// earlier world left in it is removed. Otherwise an error that names the folder.
Result<void> PrepareSimulatorFolder(const std::filesystem::path& folder);
} // namespace corvane
