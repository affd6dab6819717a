#pragma once

#include "import/MapImport.h"

namespace corvane {
/// The imports of MapImport.h, where GDAL is loaded.
Result<OutlineCounts> ImportOutlinesThroughGdal(const OutlineImport& import, const ImportProgressCallback& progress);
Result<TerrainCounts> ImportTerrainThroughGdal(const TerrainImport& import, const ImportProgressCallback& progress);
} // namespace corvane
