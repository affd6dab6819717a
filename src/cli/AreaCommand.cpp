#include "cli/AreaOptions.h"
#include "cli/Commands.h"
#include "cli/RecordJson.h"

#include <ostream>

namespace corvane {
static Json AreaJson(const AreaModel& area)
{
    Json terrain = Json::array();
    for (const TerrainPoint& point : area.TerrainPoints)
        terrain.push_back(Json::array({point.Lat, point.Lon, point.ElevationFt}));
    Json outlines = Json::array();
    for (const OutlinePoint& point : area.OutlinePoints)
        outlines.push_back(Json::array({point.Lat, point.Lon}));
    return {{"AreaName", TextJson(area.AreaName)},
            {"AreaMode", TextJson(AreaModeText(area.AreaMode))},
            {"AreaCenterLat", area.AreaCenterLat},
            {"AreaCenterLon", area.AreaCenterLon},
            {"AreaAirports", ToJsonArray(area.AreaAirports)},
            {"AreaVors", ToJsonArray(area.AreaVors)},
            {"AreaNdbs", ToJsonArray(area.AreaNdbs)},
            {"AreaAirspaces", ToJsonArray(area.AreaAirspaces)},
            {"TerrainPoints", std::move(terrain)},
            {"OutlinePoints", std::move(outlines)}};
}

void AddAreaCommand(CLI::App& app, const Console& console, CommandWork& work)
{
    CLI::App* const command = app.add_subcommand("area", "Loads the area of an airport or a sector and prints it");
    const auto options = std::make_shared<AreaOptions>();
    AddAreaOptions(*command, *options);
    command->callback([options, &console, &work] {
        work = [options, &console]() -> Result<void> {
            const Result<AreaModel> area = LoadArea(*options, console.Notices);
            if (!area)
                return area.error();
            console.Out << ToLine(AreaJson(*area)) << '\n';
            return {};
        };
    });
}
} // namespace corvane
