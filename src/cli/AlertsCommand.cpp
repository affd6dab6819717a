#include "cli/AlertJson.h"
#include "cli/AreaOptions.h"
#include "cli/Commands.h"
#include "cli/DisplayArguments.h"
#include "cli/HistoryFile.h"
#include "radar/MinimumAltitude.h"

#include <memory>
#include <ostream>
#include <string>

namespace corvane {
namespace {
struct AlertsOptions {
    AreaOptions Area;
    std::string History;
    DisplayArguments Display;
};
} // namespace

static Result<void> RunAlerts(const AlertsOptions& options, const Console& console)
{
    const ControlMode mode = options.Area.Sector.empty() ? ControlMode::Airport : ControlMode::Sector;
    const Result<DisplayOptions> display = DisplayOptionsOf(options.Display, mode, "modern");
    if (!display)
        return display.error();
    AreaModel area;
    if (options.Area.Given()) {
        auto loaded = LoadArea(options.Area, console.Notices);
        if (!loaded)
            return loaded.error();
        area = std::move(*loaded);
    }
    auto grid = LoadMagVarGrid(options.Area.Folders);
    if (!grid)
        return grid.error();
    TrafficMonitor monitor(**grid);
    monitor.SetOptions(TracksOf(*display), AlertsOf(*display));
    monitor.SetArea(area);
    MinimumAltitudes altitudes;
    HistoryPlay::MinimumAltitudeUpdate update;
    if (options.Area.Given()) // without an area the history's own minimum altitudes count
        update = [&](PlayerRecord& member, std::size_t slot) {
            member.MinimumAltitudeFt = altitudes.For(area, member, slot);
        };
    HistoryPlay play(
        monitor, [&](const AlertEvent& event) { console.Out << ToLine(ToJson(event)) << '\n'; }, update);
    if (const Result<void> read =
            ReadHistoryFile(options.History, [&](HistoryLine line) { play.Play(std::move(line)); });
        !read)
        return read.error();
    play.Finish();
    return {};
}

void AddAlertsCommand(CLI::App& app, const Console& console, CommandWork& work)
{
    CLI::App* const command =
        app.add_subcommand("alerts", "Finds the conflicts and low altitudes in a history of positions");
    const auto options = std::make_shared<AlertsOptions>();
    command->add_option("--history", options->History, R"(Lines of {"Time", "Players"} as JSON, times ascending)")
        ->type_name("FILE")
        ->required();
    AddOptionalAreaOptions(*command, options->Area);
    AddSetOption(*command, options->Display);
    command->callback(
        [options, &console, &work] { work = [options, &console] { return RunAlerts(*options, console); }; });
}
} // namespace corvane
