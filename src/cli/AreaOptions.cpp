#include "cli/AreaOptions.h"

#include "area/AreaLoad.h"
#include "area/DatabaseLists.h"
#include "core/Settings.h"
#include "core/Text.h"

namespace corvane {
static CLI::Option_group* AddAreaGroup(CLI::App& command, AreaOptions& options, const char* help)
{
    AddAppFolderOption(command, options.Folders);
    auto* const which = command.add_option_group("area", help);
    which->add_option("--airport", options.Airport, "An airport of the list, such as \"KSEA - Seattle Tacoma Intl\"")
        ->type_name("TEXT");
    which->add_option("--sector", options.Sector, "An ARTCC/FIR sector, such as \"PANAMA FIR\"")->type_name("NAME");
    return which;
}

void AddAreaOptions(CLI::App& command, AreaOptions& options)
{
    AddAreaGroup(command, options, "The area to load: one of these")->require_option(1);
}

void AddOptionalAreaOptions(CLI::App& command, AreaOptions& options)
{
    AddAreaGroup(command, options, "The area to load: one of these, or none")->require_option(0, 1);
}

Result<AreaModel> LoadArea(const AreaOptions& options, std::ostream& notices)
{
    const auto settings = ReadSettings(options.Folders.AppFile(SettingsFileName));
    if (!settings)
        return settings.error();
    EarlyEnds earlyEnds;
    auto airspaces = ReadAllAirspaces(options.Folders.AppFolder, settings->AirspaceCount, &earlyEnds);
    if (!airspaces)
        return airspaces.error();
    AreaModel area;
    UnwatchedProgress unwatched;
    const bool isAirport = !options.Airport.empty();
    const std::string& chosen = isAirport ? options.Airport : options.Sector;
    const std::string text = Utf8ToWindows1252(chosen);
    const Result<void> loaded =
        isAirport ? LoadAirportArea(options.Folders.AppFolder, *settings, text, *airspaces, area, unwatched, &earlyEnds)
                  : LoadSectorArea(options.Folders.AppFolder, *settings, text, *airspaces, area, unwatched, &earlyEnds);
    if (!loaded)
        return loaded.error();
    if (!earlyEnds.Files().empty())
        notices << "corvane-cli: " << TerminalText(earlyEnds.Warning()) << '\n';
    const bool found = isAirport ? !area.AreaName.empty() : area.AreaCenter.Lat != 0 || area.AreaCenter.Lon != 0;
    if (!found)
        notices << "corvane-cli: the database has no " << (isAirport ? "airport " : "sector ") << TerminalText(chosen)
                << '\n';
    return area;
}

Result<std::unique_ptr<MagVarGrid>> LoadMagVarGrid(const FolderOptions& folders)
{
    auto grid = std::make_unique<MagVarGrid>();
    if (const Result<std::filesystem::path> fsFolder = FindSimulator(folders))
        ReadMagVarGrid(*grid, *fsFolder);
    return grid;
}
} // namespace corvane
