#include "builder/BuildDriver.h"

#include "core/DatabaseFiles.h"
#include "core/File.h"
#include "core/MessageBoxes.h"
#include "core/PathLookup.h"

#include <algorithm>
#include <cassert>
#include <thread>
#include <utility>

namespace corvane {
BuildDriver::BuildDriver(std::filesystem::path appFolder, SimulatorFolder simulator, std::uint8_t fsVersion)
    : m_appFolder(std::move(appFolder)),
      m_simulator(std::move(simulator)),
      m_fsVersion(fsVersion),
      m_writer(m_appFolder)
{
}

Result<void> BuildDriver::ReadAreas(std::vector<SceneryArea>& areas) const
{
    constexpr std::string_view Name = "scenery.cfg";
    Result<std::vector<SceneryArea>> read =
        ReadSceneryCfg(FindPath(m_simulator.Path, Name).value_or(m_simulator.Path / Name));
    if (!read)
        return read.error();
    areas = *std::move(read);
    return ResolveSceneryFolders(areas, m_simulator);
}

Result<void> BuildDriver::Prepare(const std::function<void(std::string_view)>& status)
{
    const auto tell = [&status](std::string_view text) {
        if (status)
            status(text);
    };
    tell(StatusMagdec);
    ReadMagVarGrid(m_grid, m_simulator.Path);
    std::vector<SceneryArea> areas;
    if (m_fsVersion == Fs2002Version) {
        tell(StatusSceneryCfg);
        if (const Result<void> read = ReadAreas(areas); !read)
            return read.error();
    }
    m_scanAhead.reset(); // it borrows the plan
    Result<BuildPlan> plan = BuildPlan::Make(std::move(areas));
    if (!plan)
        return plan.error();
    m_plan = *std::move(plan);
    tell(StatusDone);
    return {};
}

/// Creates the database's files and starts the threads.
Result<void> BuildDriver::Begin()
{
    assert(m_plan); // Prepare comes first
    constexpr unsigned MostThreads = 4;
    if (const Result<void> opened = m_writer.Open(); !opened)
        return opened.error();
    const unsigned processors = std::thread::hardware_concurrency();
    m_scanAhead = std::make_unique<ScanAhead>(*m_plan, m_grid, processors > 1 ? std::min(processors, MostThreads) : 0);
    return {};
}

/// Hands a file's records to the database; a large file is scanned now.
Result<void> BuildDriver::Store(ScannedFile& scanned)
{
    const bool keepsGoing = m_tell != nullptr;
    if (!scanned.Status && !keepsGoing)
        return scanned.Status;
    const RecordCounts before = Counts();
    if (scanned.LeftUnread) {
        scanned.Records = EncodedRecords([this](EncodedRecords& full) { m_writer.Append(full); });
        const Result<void> scan = ScanBglFile(scanned.File.Path, m_grid, scanned.Records, &scanned.Problems);
        if (!scan && !keepsGoing)
            return scan.error();
    }
    m_writer.Append(scanned.Records);
    if (keepsGoing && scanned.Problems.Count > 0)
        Tell(scanned, before);
    return m_writer.Status();
}

/// before  the records of the files before this one
void BuildDriver::Tell(const ScannedFile& scanned, const RecordCounts& before) const
{
    const RecordCounts& now = Counts();
    const RecordCounts ofFile{now.Airports - before.Airports, now.Vors - before.Vors, now.Ndbs - before.Ndbs,
                              now.Airspaces - before.Airspaces};
    m_tell({m_progress.Title, m_progress.CurrentFile, ofFile, scanned.Problems});
}

Result<BuildProgress> BuildDriver::ScanNext()
{
    if (!m_scanAhead) {
        if (const Result<void> begun = Begin(); !begun)
            return begun.error();
    }
    std::optional<ScannedFile> scanned = m_scanAhead->Next();
    m_progress.Done = !scanned.has_value();
    if (!scanned)
        return m_progress;
    m_progress.Title = m_plan->Areas()[scanned->File.Area].Title;
    m_progress.CurrentFile = scanned->File.ShownName;
    if (const Result<void> stored = Store(*scanned); !stored)
        return stored.error();
    ++m_progress.FilesDone;
    return m_progress;
}

Result<SettingsRecord> BuildDriver::Finish()
{
    assert(m_progress.Done);
    m_scanAhead.reset();
    const std::filesystem::path settingsPath = m_appFolder / SettingsFileName;
    // Until the new settings are there, the folder must not look complete: not even if the power fails in between.
    DeleteFile(settingsPath);
    if (const Result<void> committed = m_writer.Commit(); !committed)
        return committed.error();
    SettingsRecord settings;
    settings.FsVersion = m_fsVersion;
    settings.FsPath = m_simulator.Text;
    settings.AirportCount = Counts().Airports;
    settings.AirspaceCount = Counts().Airspaces;
    settings.VorCount = Counts().Vors;
    settings.NdbCount = Counts().Ndbs;
    if (const Result<void> written = WriteSettings(settingsPath, settings); !written)
        return written.error();
    return settings;
}

Result<SettingsRecord> BuildDriver::Run(const std::function<Result<void>(const BuildProgress&)>& afterFile)
{
    if (const Result<void> prepared = Prepare(); !prepared)
        return prepared.error();
    for (;;) {
        const Result<BuildProgress> progress = ScanNext();
        if (!progress)
            return progress.error();
        if (progress->Done)
            return Finish();
        if (!afterFile)
            continue;
        if (const Result<void> toldOf = afterFile(*progress); !toldOf)
            return toldOf.error();
    }
}

void BuildDriver::Abandon() noexcept
{
    m_scanAhead.reset();
    m_writer.Abandon();
    DeleteDataFiles(m_appFolder);
}

std::string BuildDriver::FailureText() const
{
    if (!m_writer.Status()) // the disk is full, or the folder has gone: the scenery file is not to blame
        return "Error - while writing the database:  " + BoxText(m_writer.Status().error()) +
               "  . Make room for it and start again. The program will shutdown.";
    return "Error - while scanning this BGL file:  " + m_progress.CurrentFile + "  . The program will shutdown.";
}
} // namespace corvane
