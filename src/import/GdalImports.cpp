#include "import/GdalImports.h"

#include "core/File.h"
#include "os/Modules.h"

namespace corvane {
/// GDAL takes time and memory to load, and not everyone has it: only an import does.
static Result<const GdalImports*> LoadGdal(const char* import)
{
    const std::filesystem::path file = ModuleFile(GdalModuleName);
    std::error_code ignored;
    if (!std::filesystem::exists(file, ignored))
        return Fail(import, "needs " + FullName(file) +
                                ", a part of Corvane that is built where GDAL is installed (Debian: libgdal-dev)");
    const ModuleFunction found = FindModuleFunction(file, GdalImportsName);
    if (found.Function == nullptr)
        return Fail(import, "needs the library GDAL (Debian: apt install " CORVANE_GDAL_PACKAGE "): " + found.Why);
    return reinterpret_cast<GdalImportsFunction*>(found.Function)();
}

Result<OutlineCounts> ImportOutlines(const OutlineImport& import, const ImportProgressCallback& progress)
{
    const auto gdal = LoadGdal("import outlines");
    if (!gdal)
        return gdal.error();
    return (*gdal)->Outlines(import, progress);
}

Result<TerrainCounts> ImportTerrain(const TerrainImport& import, const ImportProgressCallback& progress)
{
    const auto gdal = LoadGdal("import terrain");
    if (!gdal)
        return gdal.error();
    return (*gdal)->Terrain(import, progress);
}
} // namespace corvane
