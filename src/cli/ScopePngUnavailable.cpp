#include "cli/ScopePng.h"
#include "core/File.h"

namespace corvane {
Result<void> WriteScopePng(const std::filesystem::path& path, const MapScene& /*scene*/, ColourScheme /*colours*/,
                           const std::function<void(Surface&)>& /*drawOver*/)
{
    return Fail(FullName(path), "this program was built without Qt and cannot draw pictures");
}
} // namespace corvane
