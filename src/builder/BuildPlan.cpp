#include "builder/BuildPlan.h"

#include "core/PathLookup.h"
#include "core/Text.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace corvane {
namespace fs = std::filesystem;

std::vector<std::string> ListBglFiles(const fs::path& folder)
{
    std::vector<std::pair<std::string, std::string>> names; // lower-cased, as on disk
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::string name = entry->path().filename().string();
        std::string lower = ToLower(name);
        std::error_code ignored;
        if (lower.ends_with(".bgl") && entry->is_regular_file(ignored))
            names.emplace_back(std::move(lower), std::move(name));
    }
    std::sort(names.begin(), names.end());
    std::vector<std::string> sorted;
    sorted.reserve(names.size());
    for (auto& [lower, name] : names)
        sorted.push_back(std::move(name));
    return sorted;
}

BuildPlan::BuildPlan(std::vector<SceneryArea> areas) : m_areas(std::move(areas))
{
    std::string currentFolder;
    for (std::size_t i = 0; i < m_areas.size(); ++i) {
        const SceneryArea& area = m_areas[i];
        if (area.Local.empty())
            continue;
        const auto [listing, isNew] = m_listings.try_emplace(area.Folder);
        if (isNew)
            listing->second = ListBglFiles(area.Folder);
        m_bglFileCount += static_cast<std::int64_t>(listing->second.size());
        if (area.Local == currentFolder)
            continue;
        currentFolder = area.Local;
        m_steps.push_back({i, &listing->second});
    }
}

std::optional<PlannedFile> BuildPlan::Cursor::Next()
{
    while (m_step < m_plan->m_steps.size() && m_file == m_plan->m_steps[m_step].Names->size()) {
        ++m_step;
        m_file = 0;
    }
    if (m_step == m_plan->m_steps.size())
        return std::nullopt;
    const Step& step = m_plan->m_steps[m_step];
    const SceneryArea& area = m_plan->m_areas[step.Area];
    const std::string& name = (*step.Names)[m_file++];
    return PlannedFile{step.Area, area.Folder / name, ToLower(area.Local + "\\" + TextFromPath(name))};
}
} // namespace corvane
