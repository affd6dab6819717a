#pragma once

#include "core/Result.h"
#include "world/WorldImport.h"

#include <atomic>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace corvane {
struct AppState;

/// The making of a database of open world data, on a thread of its own while a window shows how far it is.
class WorldDataModel {
public:
    /// Begins at once. dataFolder holds the program's own tables, of which the magnetic variation is used.
    WorldDataModel(WorldImport import, std::filesystem::path dataFolder);
    WorldDataModel(const WorldDataModel&) = delete;
    WorldDataModel& operator=(const WorldDataModel&) = delete;
    WorldDataModel(WorldDataModel&&) = delete;
    WorldDataModel& operator=(WorldDataModel&&) = delete;
    /// Stops the work where it is still under way, and waits for its end.
    ~WorldDataModel();

    [[nodiscard]] WorldImportProgress Progress() const;
    /// What came of it, once it has ended; to be asked for from then on.
    [[nodiscard]] const Result<WorldImportCounts>* Outcome() const noexcept;

private:
    void Run();

    WorldImport m_import;
    std::filesystem::path m_dataFolder;
    mutable std::mutex m_mutex; ///< for the progress
    WorldImportProgress m_progress;
    std::atomic<bool> m_stop = false;
    std::atomic<bool> m_ended = false; ///< the outcome is set, and not touched any more
    std::optional<Result<WorldImportCounts>> m_outcome;
    std::thread m_thread;
};

/// What a window tells of a finished import: the counts, and what was passed over; 8-bit text.
std::string WorldDataText(const WorldImportCounts& counts);

/// What a window tells before: of what the maps beside the database will be made; 8-bit text.
std::string MapSourcesText(const MapSources& sources);

/// Takes the new database over: reads its settings, after which the area chooser can open.
Result<void> UseNewDatabase(AppState& state);

/// The credits of the open data that the database in use was made of, UTF-8; empty where it was made of a simulator's.
std::string WorldDataCredits(const AppState& state);
} // namespace corvane
