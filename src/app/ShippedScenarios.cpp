#include "app/ShippedScenarios.h"

#include <algorithm>
#include <functional>
#include <tuple>

namespace corvane {
std::vector<PracticeScenario> ScenariosIn(const std::filesystem::path& folder)
{
    constexpr std::size_t Most = 100;
    std::vector<PracticeScenario> scenarios;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (entry->path().extension() == ".json" && scenarios.size() < Most)
            if (auto scenario = ReadScenario(entry->path()))
                scenarios.push_back(*std::move(scenario));
    std::sort(scenarios.begin(), scenarios.end(), [](const PracticeScenario& a, const PracticeScenario& b) {
        return std::make_tuple(a.Aircraft.size(), std::cref(a.Name)) <
               std::make_tuple(b.Aircraft.size(), std::cref(b.Name));
    });
    return scenarios;
}
} // namespace corvane
