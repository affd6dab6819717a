#pragma once

#include "practice/PracticeScenario.h"

#include <filesystem>
#include <vector>

namespace corvane {
/// The scenarios of a folder, those with the fewest aircraft first; files that cannot be read are passed over.
std::vector<PracticeScenario> ScenariosIn(const std::filesystem::path& folder);
} // namespace corvane
