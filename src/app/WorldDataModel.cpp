#include "app/WorldDataModel.h"

#include "app/AppState.h"
#include "core/File.h"
#include "core/NumberText.h"
#include "core/Settings.h"
#include "core/SimulatorFolder.h"
#include "core/Text.h"
#include "demo/WorldData.h"
#include "world/Credits.h"

#include <cassert>
#include <system_error>
#include <utility>
#include <vector>

namespace corvane {
WorldDataModel::WorldDataModel(WorldImport import, std::filesystem::path dataFolder)
    : m_import(std::move(import)), m_dataFolder(std::move(dataFolder)), m_thread([this] { Run(); })
{
}

WorldDataModel::~WorldDataModel()
{
    m_stop = true;
    m_thread.join();
}

void WorldDataModel::Run()
{
    const Result<std::vector<std::int16_t>> magVar = LoadMagVar(m_dataFolder);
    if (!magVar) {
        m_outcome = magVar.error();
    } else {
        WorldImportCallbacks callbacks;
        callbacks.Progress = [this](const WorldImportProgress& progress) {
            const std::lock_guard lock(m_mutex);
            m_progress = progress;
            return !m_stop;
        };
        m_outcome = ImportWorld(m_import, *magVar, callbacks);
    }
    m_ended = true;
}

WorldImportProgress WorldDataModel::Progress() const
{
    const std::lock_guard lock(m_mutex);
    return m_progress;
}

const Result<WorldImportCounts>* WorldDataModel::Outcome() const noexcept
{
    return m_ended ? &*m_outcome : nullptr;
}

std::string WorldDataText(const WorldImportCounts& counts)
{
    const RecordCounts& records = counts.Records;
    std::string text = "The database holds " + NumberText(records.Airports) + " airports, " + NumberText(records.Vors) +
                       " VORs, " + NumberText(records.Ndbs) + " NDBs and " + NumberText(records.Airspaces) +
                       " airspaces.";
    for (const PassedLines& file : counts.PassedOver)
        text += "\n\n" + Utf8ToWindows1252(file.First.File) + ": " + NumberText(file.Count) +
                " lines passed over, the first is line " + NumberText(file.First.Line) + ": " +
                Utf8ToWindows1252(file.First.Why);
    for (const auto* remarks : {&counts.Maps.Made, &counts.Maps.Unusable}) {
        text += remarks->empty() ? "" : "\n";
        for (const std::string& remark : *remarks)
            text += "\n" + Utf8ToWindows1252(remark) + ".";
    }
    return text;
}

std::string MapSourcesText(const MapSources& sources)
{
    std::string text = "Coastlines and borders, where the folder has none yet, are ";
    if (sources.Outlines.empty())
        text += "Corvane's own (finer ones: Debian's package gmt-gshhg-low)";
    else
        text += "made of " + Utf8ToWindows1252(FullName(sources.Outlines));
    text += "; terrain is ";
    if (sources.Terrain.empty())
        return text + "Corvane's own, of some regions.";
    return text + "made of " + Utf8ToWindows1252(FullName(sources.Terrain)) + ".";
}

Result<void> UseNewDatabase(AppState& state)
{
    Result<SettingsRecord> settings = ReadSettings(state.AppFolder / SettingsFileName);
    if (!settings)
        return settings.error();
    state.Settings = *std::move(settings);
    return {};
}

std::string WorldDataCredits(const AppState& state)
{
    std::error_code ignored;
    if (!std::filesystem::equivalent(FolderOfSettings(state.Settings.FsPath, state.AppFolder).Path,
                                     FolderOfWorldData(state.AppFolder).Path, ignored))
        return {};
    const Result<FileBytes> file = ReadWholeFile(state.AppFolder / CreditsFileName);
    if (!file)
        return {};
    const ByteSpan bytes = file->Span();
    return {bytes.begin(), bytes.end()};
}
} // namespace corvane
