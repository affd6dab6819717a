#include "cli/AreaOptions.h"
#include "cli/Commands.h"
#include "cli/HistoryFile.h"
#include "cli/RecordJson.h"
#include "radar/DisplayOptions.h"
#include "radar/MinimumAltitude.h"

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace corvane {
namespace {
struct AlertsOptions {
    AreaOptions Area;
    std::string History;
    std::vector<std::string> Set;
};
} // namespace

static Json EventJson(const AlertEvent& event)
{
    const Alert& alert = event.What;
    Json object = {{"time", event.Time}, {"event", event.Begins ? "begin" : "end"}};
    if (alert.Kind == AlertKind::LowAltitude) {
        object["kind"] = "low-altitude";
        object["Player"] = alert.FirstId;
        object["AltitudeFt"] = alert.AltitudeFt;
        object["MinimumAltitudeFt"] = alert.MinimumAltitudeFt;
        return object;
    }
    object["kind"] = "conflict";
    object["Players"] = Json::array({alert.FirstId, alert.SecondId});
    object["violated"] = alert.Violated;
    object["SecondsToClosest"] = alert.SecondsToClosest;
    object["ClosestNm"] = alert.ClosestNm;
    object["ClosestFt"] = alert.ClosestFt;
    return object;
}

/// The modern display's options with what the command line changes.
static Result<DisplayOptions> OptionsOf(const AlertsOptions& options)
{
    DisplayOptions display = ModernDisplay(options.Area.Sector.empty() ? ControlMode::Airport : ControlMode::Sector);
    for (const std::string& assignment : options.Set)
        if (const Result<void> set = SetDisplayOption(display, assignment); !set)
            return set.error();
    return display;
}

static CLI::Validator DisplayAssignment()
{
    return {[](std::string& assignment) {
                DisplayOptions display;
                const Result<void> set = SetDisplayOption(display, assignment);
                return set ? std::string() : set.error().Text();
            },
            "NAME=VALUE"};
}

static Result<void> RunAlerts(const AlertsOptions& options, const Console& console)
{
    const Result<DisplayOptions> display = OptionsOf(options);
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
        monitor, [&](const AlertEvent& event) { console.Out << EventJson(event).dump() << '\n'; }, update);
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
    command->add_option("--history", options->History, "Lines of {\"Time\", \"Players\"} as JSON, times ascending")
        ->type_name("FILE")
        ->required();
    AddOptionalAreaOptions(*command, options->Area);
    command->add_option("--set", options->Set, "Changes a value of the modern display: ConflictNm=5")
        ->check(DisplayAssignment());
    command->callback(
        [options, &console, &work] { work = [options, &console] { return RunAlerts(*options, console); }; });
}
} // namespace corvane
