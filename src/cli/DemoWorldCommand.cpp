#include "cli/Commands.h"
#include "cli/ProgressBar.h"
#include "cli/RecordJson.h"
#include "demo/DemoWorld.h"

#include <ostream>

namespace corvane {
static Result<void> WriteWorld(const DemoWorldOptions& options, const Console& console)
{
    ProgressBar bar(console.Notices, console.NoticesOnTerminal, "files");
    const Result<DemoWorldCounts> counts = WriteDemoWorld(
        options, [&](const WorldProgress& progress) { bar.Show(progress.Done, progress.Total, progress.Step); });
    if (!counts)
        return counts.error();
    const Json json = {{"Airports", counts->Airports},
                       {"Runways", counts->Runways},
                       {"Ils", counts->Ils},
                       {"Vors", counts->Vors},
                       {"Ndbs", counts->Ndbs},
                       {"Airspaces", counts->Airspaces},
                       {"DroppedAirspaces", counts->DroppedAirspaces},
                       {"BglFiles", counts->BglFiles},
                       {"OutlinePoints", counts->OutlinePoints},
                       {"TerrainPoints", counts->TerrainPoints},
                       {"TaxiPoints", counts->TaxiPoints},
                       {"Parkings", counts->Parkings}};
    console.Out << json.dump() << '\n';
    return {};
}

void AddDemoWorldCommand(CLI::App& app, const Console& console, CommandWork& work)
{
    CLI::App* const command =
        app.add_subcommand("demo-world", "Writes a demonstration world: a simulator folder and the map files");
    const auto options = std::make_shared<DemoWorldOptions>();
    options->DataFolder = DefaultDataFolder();
    command->add_option("--out", options->OutDir, "The folder to write into")->required()->type_name("DIR");
    command->add_option("--airports", options->AirportLimit, "Only so many airports, the most important ones")
        ->check(CLI::Range(1, 1000000));
    command->callback(
        [options, &console, &work] { work = [options, &console] { return WriteWorld(*options, console); }; });
}
} // namespace corvane
