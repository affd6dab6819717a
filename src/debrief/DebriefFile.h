#pragma once

#include "area/AreaModel.h"
#include "core/MagVarGrid.h"
#include "core/Result.h"
#include "debrief/Debrief.h"

#include <filesystem>

namespace corvane {
/// Writes a debrief: as JSON where the file's name ends in .json, otherwise as an HTML page with its pictures over that
/// area's map. Errors name the file.
[[nodiscard]] Result<void> WriteDebrief(const std::filesystem::path& file, const Debrief& debrief,
                                        const AreaModel& area, const MagVarGrid& grid);
} // namespace corvane
