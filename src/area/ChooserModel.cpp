#include "area/ChooserModel.h"

#include "area/AreaLoad.h"
#include "area/DatabaseLists.h"
#include "core/DatabaseFiles.h"
#include "core/SimulatorFolder.h"
#include "core/Text.h"

#include <algorithm>
#include <array>

namespace corvane {
namespace {
/// Shows a load's steps in the window.
class ShownProgress final : public LoadProgress {
public:
    explicit ShownProgress(ChooserView& view) noexcept : m_view(view) {}

    void StepBegins(std::string_view status) override { m_view.SetStatus(status); }
    void StepEnded() override { m_view.SetProgress(++m_done, ChooserModel::LoadProgressMaximum); }
    Result<void> RunStep(const std::function<Result<void>()>& step) override
    {
        Result<void> outcome;
        m_view.RunLongWork([&] { outcome = step(); });
        if (outcome && m_view.Abandoned())
            return Fail("the area's load", "was left");
        return outcome;
    }

private:
    ChooserView& m_view;
    int m_done = 0;
};
} // namespace

Result<void> ChooserModel::ReadGrid()
{
    MagVarGrid grid = m_state.MagVar; // the session goes on with the old one meanwhile
    m_view.RunLongWork(
        [&] { ReadMagVarGrid(grid, FolderOfSettings(m_state.Settings.FsPath, m_state.AppFolder).Path); });
    m_state.MagVar = grid;
    return {};
}

Result<void> ChooserModel::ReadAirports()
{
    Result<std::vector<std::string>> entries(std::vector<std::string>{});
    m_view.RunLongWork([&] { entries = ReadAirportList(m_state.AppFolder, &m_earlyEnds); });
    if (!entries)
        return entries.error();
    m_airportEntries = *std::move(entries);
    return {};
}

Result<void> ChooserModel::ReadAirspaces()
{
    Result<std::vector<AirspaceRecord>> airspaces(std::vector<AirspaceRecord>{});
    std::vector<std::string> sectors;
    m_view.RunLongWork([&] {
        airspaces = ReadAllAirspaces(m_state.AppFolder, m_state.Settings.AirspaceCount, &m_earlyEnds);
        if (airspaces)
            sectors = SectorNames(*airspaces);
    });
    if (!airspaces)
        return airspaces.error();
    m_state.AllAirspaces = *std::move(airspaces);
    m_sectorEntries = std::move(sectors);
    return {};
}

Result<void> ChooserModel::Open()
{
    m_areaLoaded = false;
    m_view.SetControlsEnabled(false);
    m_view.SetProgress(0, OpeningSteps);
    struct Step {
        std::string_view Status;
        Result<void> (ChooserModel::*Read)();
    };
    constexpr std::array Steps{Step{"Reading Magnetic Devations...", &ChooserModel::ReadGrid},
                               Step{"Reading Airports...", &ChooserModel::ReadAirports},
                               Step{"Reading Airspaces...", &ChooserModel::ReadAirspaces}};
    Result<void> outcome;
    int done = 0;
    for (const Step& step : Steps) {
        if (m_view.Abandoned())
            break;
        m_view.SetStatus(step.Status);
        Result<void> read = (this->*step.Read)();
        if (outcome && !read)
            outcome = std::move(read);
        m_view.SetProgress(++done, OpeningSteps);
    }
    m_view.SetProgress(0, OpeningSteps);
    m_view.SetControlsEnabled(true);
    m_view.SetStatus("Done");
    return outcome;
}

Result<void> ChooserModel::RunLoad(ControlMode mode, std::string_view entry)
{
    ShownProgress progress(m_view);
    if (mode == ControlMode::Airport)
        return LoadAirportArea(m_state.AppFolder, m_state.Settings, entry, m_state.AllAirspaces, m_state.Area, progress,
                               &m_earlyEnds);
    return LoadSectorArea(m_state.AppFolder, m_state.Settings, entry, m_state.AllAirspaces, m_state.Area, progress,
                          &m_earlyEnds);
}

Result<ChooserNext> ChooserModel::Load(ControlMode mode, std::optional<std::string_view> entry)
{
    if (!entry)
        return ChooserNext::Stay;
    m_view.SetControlsEnabled(false);
    m_view.SetProgress(0, LoadProgressMaximum);
    const Result<void> loaded = RunLoad(mode, *entry);
    m_view.SetProgress(0, LoadProgressMaximum);
    m_view.SetControlsEnabled(true);
    m_view.SetStatus("Done");
    if (m_view.Abandoned())
        return ChooserNext::Stay;
    if (!loaded)
        return loaded.error();
    m_areaLoaded = true;
    return m_state.RadarOpen ? ChooserNext::ShowNewArea : ChooserNext::OpenConnection;
}

Remedy ChooserModel::RemedyFor(const Error& failure) const
{
    constexpr auto Names = DatabaseFileNames();
    const auto isToBlame = [&](std::string_view name) { return failure.What.find(name) != std::string::npos; };
    if (!std::any_of(Names.begin(), Names.end(), isToBlame))
        return Remedy::PutRight;
    return m_state.RadarOpen ? Remedy::NewFromMenu : Remedy::SetUpAgain;
}

std::string ChooserModel::TakeWarning()
{
    EarlyEnds fresh;
    for (const std::string& file : m_earlyEnds.Files()) {
        if (std::find(m_warned.Files().begin(), m_warned.Files().end(), file) == m_warned.Files().end())
            fresh.Note(file);
    }
    m_warned.Note(fresh);
    return Utf8ToWindows1252(fresh.Warning());
}

ChooserNext ChooserModel::Exit()
{
    m_view.SetStatus("Please wait...");
    m_state.AllAirspaces = {};
    return m_state.RadarOpen ? ChooserNext::ReturnToRadar : ChooserNext::EndProgram;
}

ChooserNext ChooserModel::Close()
{
    if (m_areaLoaded)
        return ChooserNext::Stay;
    return Exit();
}

std::string ChooserModel::MainWindowCaption(const AreaModel& area)
{
    return "Corvane v3.0 - " + area.AreaName;
}
} // namespace corvane
