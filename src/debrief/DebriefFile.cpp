#include "debrief/DebriefFile.h"

#include "core/AtomicFile.h"
#include "debrief/DebriefPage.h"
#include "debrief/TracksPicture.h"

namespace corvane {
Result<void> WriteDebrief(const std::filesystem::path& file, const Debrief& debrief, const AreaModel& area,
                          const MagVarGrid& grid)
{
    const std::string content = file.extension() == ".json"
                                    ? DebriefJson(debrief)
                                    : DebriefPage(debrief, TimelineSvg(debrief) + TracksSvg(debrief, area, grid));
    return WriteFileAtomically(file, {reinterpret_cast<const std::uint8_t*>(content.data()), content.size()});
}
} // namespace corvane
