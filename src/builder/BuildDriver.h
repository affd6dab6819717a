#pragma once

#include "builder/BuildPlan.h"
#include "builder/BuildReport.h"
#include "builder/DatabaseWriter.h"
#include "builder/ScanAhead.h"
#include "core/MagVarGrid.h"
#include "core/Result.h"
#include "core/Settings.h"
#include "core/SimulatorFolder.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {
/// Where a build stands after a step.
struct BuildProgress {
    std::string Title;       ///< of the area of the file just scanned; 8-bit text
    std::string CurrentFile; ///< the file just scanned: its lower-cased path, 8-bit text
    std::int64_t FilesDone = 0;
    bool Done = false; ///< every file has been scanned: nothing was left to do in this step
};

/// What the status text of the building window shows, in order.
inline constexpr std::string_view StatusMagdec = "Magdec.bgl File";
inline constexpr std::string_view StatusSceneryCfg = "Scenery.cfg File";
inline constexpr std::string_view StatusUpdatingSettings = "Updating Settings";
inline constexpr std::string_view StatusDone = "Done";

/// Builds the scenery database of a simulator folder, one file a step: Prepare, ScanNext until Done, Finish; or all of
/// that in one Run.
///
/// The database files appear under their names, and the settings with the records' counts, only in Finish. After an
/// Error of any step, or where the build is given up, Abandon leaves none of the five data files, so that the next
/// start begins with the set-up; a driver that is merely destroyed leaves no database files either.
class BuildDriver {
public:
    /// appFolder  where the data files go; must exist
    /// simulator  its text goes into the settings as it is
    /// fsVersion  with any other than Fs2002Version there are no areas and the database comes out empty
    BuildDriver(std::filesystem::path appFolder, SimulatorFolder simulator, std::uint8_t fsVersion);

    /// Reads the magnetic grid (a magdec.bgl that is absent or unreadable is no error) and the scenery list, and lists
    /// the folders. status  told what is being read, before it is
    Result<void> Prepare(const std::function<void(std::string_view)>& status = {});

    /// Goes on after a scenery file that fails, with what it gave before, and tells of each file that fails or has
    /// records with errors. Without it the first file that fails ends the build, and nothing is told.
    void KeepGoing(std::function<void(const FileProblems&)> tell) { m_tell = std::move(tell); }

    /// Scans at most one file. An Error names the scenery file or the database file that failed; what a message box
    /// shows for it is FailureText.
    Result<BuildProgress> ScanNext();

    /// Completes the database files and writes the settings; returns what they hold.
    Result<SettingsRecord> Finish();

    /// Prepares, scans every file, and finishes; returns what the settings hold.
    /// afterFile  told how far the build is after each file; an Error of it ends the build
    Result<SettingsRecord> Run(const std::function<Result<void>(const BuildProgress&)>& afterFile = {});

    /// Deletes the data files and what the build has written so far; the driver is of no more use.
    void Abandon() noexcept;

    /// What the preparation counted: the files of all areas, also of those that repeat the folder of the area before.
    [[nodiscard]] std::int64_t BglFileCount() const noexcept { return m_plan ? m_plan->BglFileCount() : 0; }
    [[nodiscard]] const RecordCounts& Counts() const noexcept { return m_writer.Counts(); }
    [[nodiscard]] const MagVarGrid& Grid() const noexcept { return m_grid; }
    /// Lower-cased path of the file being scanned, or scanned last; 8-bit text.
    [[nodiscard]] const std::string& CurrentFile() const noexcept { return m_progress.CurrentFile; }
    /// The critical message for an Error of ScanNext: names the scenery file, or the database file that could not be
    /// written.
    [[nodiscard]] std::string FailureText() const;

private:
    Result<void> ReadAreas(std::vector<SceneryArea>& areas) const;
    Result<void> Begin();
    Result<void> Store(ScannedFile& scanned);
    void Tell(const ScannedFile& scanned, const RecordCounts& before) const;

    std::filesystem::path m_appFolder;
    SimulatorFolder m_simulator;
    std::uint8_t m_fsVersion;
    MagVarGrid m_grid;
    std::optional<BuildPlan> m_plan;
    DatabaseWriter m_writer;
    std::unique_ptr<ScanAhead> m_scanAhead; ///< borrows the plan and the grid; there from the first step on
    BuildProgress m_progress;
    std::function<void(const FileProblems&)> m_tell; ///< empty: the build does not keep going
};
} // namespace corvane
