#include "builder/BuildPlan.h"

#include "core/File.h"
#include "core/PathLookup.h"
#include "core/Text.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace corvane {
namespace fs = std::filesystem;

Result<std::vector<std::string>> ListBglFiles(const fs::path& folder)
{
    std::vector<std::pair<std::string, std::string>> names; // lower-cased, as on disk
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::string name = entry->path().filename().string();
        std::string lower = ToLower(name);
        if (!lower.ends_with(".bgl"))
            continue;
        std::error_code unknown;
        if (entry->is_regular_file(unknown))
            names.emplace_back(std::move(lower), std::move(name));
        else if (IsObstacle(unknown))
            return Fail(FullName(entry->path()), unknown.message());
    }
    if (error)
        return Fail(FullName(folder), error.message());
    std::sort(names.begin(), names.end());
    std::vector<std::string> sorted;
    sorted.reserve(names.size());
    for (auto& [lower, name] : names)
        sorted.push_back(std::move(name));
    return sorted;
}

Result<void> BuildPlan::Add(std::size_t area, std::string& currentFolder)
{
    const SceneryArea& added = m_areas[area];
    if (added.Local.empty())
        return {};
    const auto [listing, isNew] = m_listings.try_emplace(added.Folder);
    if (isNew) {
        Result<std::vector<std::string>> names = ListBglFiles(added.Folder);
        if (!names)
            return names.error();
        listing->second = *std::move(names);
    }
    m_bglFileCount += static_cast<std::int64_t>(listing->second.size());
    if (added.Local == currentFolder)
        return {};
    currentFolder = added.Local;
    m_steps.push_back({area, &listing->second});
    return {};
}

Result<BuildPlan> BuildPlan::Make(std::vector<SceneryArea> areas)
{
    BuildPlan plan;
    plan.m_areas = std::move(areas);
    std::string currentFolder;
    for (std::size_t i = 0; i < plan.m_areas.size(); ++i) {
        if (const Result<void> added = plan.Add(i, currentFolder); !added)
            return added.error();
    }
    return plan;
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
    return PlannedFile{step.Area, area.Folder / name, ToLower(area.Local + "\\" + Utf8ToWindows1252(name))};
}
} // namespace corvane
