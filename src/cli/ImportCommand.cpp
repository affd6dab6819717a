#include "cli/Commands.h"
#include "cli/ProgressBar.h"
#include "cli/RecordJson.h"
#include "core/NumberText.h"
#include "core/Rounding.h"
#include "import/MapImport.h"
#include "os/InterruptWatch.h"

#include <ostream>
#include <string>

namespace corvane {
static Json BoundsJson(const MapBounds& bounds)
{
    return {{"South", bounds.South}, {"West", bounds.West}, {"North", bounds.North}, {"East", bounds.East}};
}

static Json CountsJson(const OutlineCounts& counts)
{
    return {{"Lines", counts.Lines}, {"OutlinePoints", counts.Points}, {"Bounds", BoundsJson(counts.Bounds)}};
}

static Json CountsJson(const TerrainCounts& counts)
{
    return {{"Samples", counts.Samples},
            {"Voids", counts.Voids},
            {"TerrainPoints", counts.Points},
            {"Bounds", BoundsJson(counts.Bounds)}};
}

/// Runs an import with a progress bar that counts in hundredths of all the files.
template <class Import> static Result<void> RunImport(const Import& import, const Console& console)
{
    const InterruptWatch watch;
    auto bar = std::make_unique<ProgressBar>(console.Notices, console.NoticesOnTerminal, "percent");
    const auto counts = import([&](const ImportProgress& progress) {
        bar->Show(RoundTo<std::int32_t>(100 * progress.FilesDone / static_cast<double>(progress.FileCount)), 100,
                  progress.File);
        return !watch.Interrupted();
    });
    bar.reset();
    if (!counts)
        return counts.error();
    console.Out << CountsJson(*counts).dump() << '\n';
    return {};
}

template <class Options> static void AddFileOptions(CLI::App& command, Options& options, const char* out)
{
    command.add_option("FILE", options.Files, "The files to read, or a folder of them")->required();
    command.add_option("--out", options.Out, out)->required()->type_name("FILE");
}

static void AddOutlines(CLI::App& import, const Console& console, CommandWork& work)
{
    CLI::App* const command = import.add_subcommand(
        "outlines", "Makes a world.map of the lines and areas in shapefile, GeoJSON and GPKG files");
    const auto options = std::make_shared<OutlineImport>();
    AddFileOptions(*command, *options, "The world.map to write");
    command->add_option("--layer", options->Layers, "Only the layer of this name, for files that hold several")
        ->type_name("NAME")
        ->allow_extra_args(false);
    command->add_flag("--unbroken", options->Unbroken,
                      "Repeats the ends of lines, so that no zoom of the radar shows holes in them");
    command->callback([options, &console, &work] {
        work = [options, &console] {
            return RunImport([&](const auto& progress) { return ImportOutlines(*options, progress); }, console);
        };
    });
}

/// CLI::Range would let not-a-number pass.
static std::string CheckEvery(const std::string& text)
{
    double nm = 0;
    if (CLI::detail::lexical_cast(text, nm) && nm >= SmallestTerrainCellNm && nm <= LargestTerrainCellNm)
        return {};
    return "\"" + text + "\" is not within " + NumberText(SmallestTerrainCellNm) + " and " +
           NumberText(LargestTerrainCellNm);
}

static void AddTerrain(CLI::App& import, const Console& console, CommandWork& work)
{
    CLI::App* const command =
        import.add_subcommand("terrain", "Makes a world_terrain.db of the elevations in GeoTIFF and HGT files");
    const auto options = std::make_shared<TerrainImport>();
    AddFileOptions(*command, *options, "The world_terrain.db to write");
    command->add_option("--every", options->EveryNm, "Keeps the highest point of cells so many nautical miles wide")
        ->type_name("NM")
        ->check(CheckEvery)
        ->capture_default_str();
    command->callback([options, &console, &work] {
        work = [options, &console] {
            return RunImport([&](const auto& progress) { return ImportTerrain(*options, progress); }, console);
        };
    });
}

void AddImportCommand(CLI::App& app, const Console& console, CommandWork& work)
{
    CLI::App* const command = app.add_subcommand("import", "Makes map files and databases of open data");
    command->require_subcommand(1);
    AddOutlines(*command, console, work);
    AddTerrain(*command, console, work);
    AddImportWorld(*command, console, work);
}
} // namespace corvane
