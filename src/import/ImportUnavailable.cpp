#include "import/MapImport.h"

namespace corvane {
static Error BuiltWithoutGdal(const char* what)
{
    return Fail(what, "this program was built without GDAL, which reads the files");
}

Result<OutlineCounts> ImportOutlines(const OutlineImport& /*import*/, const ImportProgressCallback& /*progress*/)
{
    return BuiltWithoutGdal("import outlines");
}

Result<TerrainCounts> ImportTerrain(const TerrainImport& /*import*/, const ImportProgressCallback& /*progress*/)
{
    return BuiltWithoutGdal("import terrain");
}
} // namespace corvane
