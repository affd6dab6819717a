#pragma once

#include "builder/SceneryCfg.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace corvane {
/// The names of a folder's scenery files: regular files that end in ".bgl" in any letter case, in ascending order of
/// their lower-cased names, so that a build does not depend on the disk. An Error names the folder that cannot be
/// listed, or the file of which the disk would not tell what it is.
Result<std::vector<std::string>> ListBglFiles(const std::filesystem::path& folder);

/// One file of a build.
struct PlannedFile {
    std::size_t Area = 0; ///< index into the areas
    std::filesystem::path Path;
    std::string ShownName; ///< lower-cased path as messages show it, 8-bit text
};

/// What a build scans, in order: the files of every area's folder. Of consecutive areas with the same folder only the
/// first is scanned; an area whose folder comes back later is scanned again. Folders are listed once.
class BuildPlan {
public:
    /// The plan of areas whose folders are resolved. Errors are those of ListBglFiles.
    static Result<BuildPlan> Make(std::vector<SceneryArea> areas);
    BuildPlan(const BuildPlan&) = delete;
    BuildPlan& operator=(const BuildPlan&) = delete;
    BuildPlan(BuildPlan&&) noexcept = default;
    BuildPlan& operator=(BuildPlan&&) noexcept = default;
    ~BuildPlan() = default;

    [[nodiscard]] const std::vector<SceneryArea>& Areas() const noexcept { return m_areas; }
    /// The files of all areas' folders, those of repeated folders included.
    [[nodiscard]] std::int64_t BglFileCount() const noexcept { return m_bglFileCount; }

    /// A way through the files, which borrows the plan.
    class Cursor {
    public:
        explicit Cursor(const BuildPlan& plan) noexcept : m_plan(&plan) {}
        /// The next file; nothing after the last.
        std::optional<PlannedFile> Next();

    private:
        const BuildPlan* m_plan;
        std::size_t m_step = 0;
        std::size_t m_file = 0;
    };

private:
    struct Step {
        std::size_t Area = 0;
        const std::vector<std::string>* Names = nullptr; ///< in m_listings, whose nodes stay where they are
    };

    BuildPlan() = default;
    Result<void> Add(std::size_t area, std::string& currentFolder);

    std::vector<SceneryArea> m_areas;
    std::map<std::filesystem::path, std::vector<std::string>> m_listings;
    std::vector<Step> m_steps;
    std::int64_t m_bglFileCount = 0;
};
} // namespace corvane
