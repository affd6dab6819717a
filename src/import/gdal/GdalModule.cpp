#include "import/GdalImports.h"
#include "import/gdal/GdalImport.h"

/// The module's one function that others see; its name is GdalImportsName.
extern "C" __attribute__((visibility("default"))) const corvane::GdalImports* CorvaneGdalImports()
{
    static constexpr corvane::GdalImports Imports{corvane::ImportOutlinesThroughGdal,
                                                  corvane::ImportTerrainThroughGdal};
    return &Imports;
}
