#pragma once

#include "area/AreaModel.h"
#include "area/EarlyEnds.h"
#include "core/ByteSource.h"
#include "core/Result.h"
#include "core/Settings.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace corvane {
/// Each load takes this many steps.
inline constexpr int AreaLoadSteps = 8;

/// Hears how a load gets on.
class LoadProgress {
public:
    LoadProgress() = default;
    LoadProgress(const LoadProgress&) = delete;
    LoadProgress& operator=(const LoadProgress&) = delete;
    LoadProgress(LoadProgress&&) = delete;
    LoadProgress& operator=(LoadProgress&&) = delete;
    virtual ~LoadProgress() = default;

    /// Before each step, with the text that says what it does.
    virtual void StepBegins(std::string_view status) = 0;
    virtual void StepEnded() = 0;
    /// Runs a step, here or on another thread, and returns its outcome once it has ended; or an Error, which ends the
    /// load. A step touches nothing but the load's own.
    virtual Result<void> RunStep(const std::function<Result<void>()>& step) { return step(); }
};

/// For loads that nobody watches.
class UnwatchedProgress final : public LoadProgress {
public:
    void StepBegins(std::string_view /*status*/) override {}
    void StepEnded() override {}
};

/// The files that a load reads.
struct AreaFiles {
    std::unique_ptr<ByteSource> Airports;
    std::unique_ptr<ByteSource> Vors;
    std::unique_ptr<ByteSource> Ndbs;
    std::unique_ptr<ByteSource> Terrain;
    std::unique_ptr<ByteSource> WorldMap;
};

/// Opens the files in the program's folder. A database file that is not there is an Error that names its full path;
/// terrain and world map then read as empty.
Result<AreaFiles> OpenAreaFiles(const std::filesystem::path& appFolder);

/// Loads the area of one airport: what lies within 90 nautical miles of it.
///
/// earlyEnds      told of database files that end too early: what they lack reads as blank
/// counts         VorCount and NdbCount are used
/// airportEntry   the chosen airport as AirportListEntry writes it; of several equal ones the last in the file is
/// taken.
///                One that is not in the file leaves name, mode and centre of area, from which the rest is measured
/// allAirspaces   every record of the airspaces file; emptied by a load that completes
/// area           replaced by a load that completes. A failure leaves both as they were; its Error names the file
Result<void> LoadAirportArea(AreaFiles& files, const SettingsRecord& counts, std::string_view airportEntry,
                             std::vector<AirspaceRecord>& allAirspaces, AreaModel& area, LoadProgress& progress,
                             EarlyEnds* earlyEnds = nullptr);
Result<void> LoadAirportArea(const std::filesystem::path& appFolder, const SettingsRecord& counts,
                             std::string_view airportEntry, std::vector<AirspaceRecord>& allAirspaces, AreaModel& area,
                             LoadProgress& progress, EarlyEnds* earlyEnds = nullptr);

/// Loads the area of an ARTCC/FIR sector, by its name: what lies in the box around its high airspaces, and the other
/// high airspaces that reach into the box. A name that no high airspace has gives an area without content at 0, 0.
/// Arguments and failures as for an airport.
Result<void> LoadSectorArea(AreaFiles& files, const SettingsRecord& counts, std::string_view sectorName,
                            std::vector<AirspaceRecord>& allAirspaces, AreaModel& area, LoadProgress& progress,
                            EarlyEnds* earlyEnds = nullptr);
Result<void> LoadSectorArea(const std::filesystem::path& appFolder, const SettingsRecord& counts,
                            std::string_view sectorName, std::vector<AirspaceRecord>& allAirspaces, AreaModel& area,
                            LoadProgress& progress, EarlyEnds* earlyEnds = nullptr);
} // namespace corvane
