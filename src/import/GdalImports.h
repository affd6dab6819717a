#pragma once

#include "import/MapImport.h"

namespace corvane {
/// What the module offers that GDAL is linked to. It and the program are built together, so they pass each other what
/// they like.
struct GdalImports {
    Result<OutlineCounts> (*Outlines)(const OutlineImport& import, const ImportProgressCallback& progress);
    Result<TerrainCounts> (*Terrain)(const TerrainImport& import, const ImportProgressCallback& progress);
};
inline constexpr const char* GdalModuleName = "corvane-gdal.so";
inline constexpr const char* GdalImportsName = "CorvaneGdalImports";
/// The type of the function of that name in the module.
using GdalImportsFunction = const GdalImports*();
} // namespace corvane
