#include "cli/AreaOptions.h"
#include "cli/Commands.h"
#include "cli/RecordJson.h"

#include <ostream>
#include <string>

namespace corvane {
/// Writes a member of an object that is an array, an element at a time: a sector has millions of points.
template <class Elements, class ToElement>
static void WriteArray(std::ostream& out, const char* name, const Elements& elements, const ToElement& toElement)
{
    out << ",\"" << name << "\":[";
    const char* separator = "";
    for (const auto& element : elements) {
        out << separator << ToLine(toElement(element));
        separator = ",";
    }
    out << ']';
}

/// The area as one JSON object.
static void WriteArea(std::ostream& out, const AreaModel& area)
{
    const Json head = {{"AreaName", TextJson(area.AreaName)},
                       {"AreaMode", TextJson(AreaModeText(area.AreaMode))},
                       {"AreaCenterLat", area.AreaCenter.Lat},
                       {"AreaCenterLon", area.AreaCenter.Lon}};
    std::string open = ToLine(head);
    open.pop_back(); // the object goes on
    out << open;
    const auto record = [](const auto& element) { return ToJson(element); };
    WriteArray(out, "AreaAirports", area.AreaAirports, record);
    WriteArray(out, "AreaVors", area.AreaVors, record);
    WriteArray(out, "AreaNdbs", area.AreaNdbs, record);
    WriteArray(out, "AreaAirspaces", area.AreaAirspaces, record);
    WriteArray(out, "TerrainPoints", area.TerrainPoints, [](const TerrainPoint& point) {
        return Json::array({point.Lat, point.Lon, point.ElevationFt});
    });
    WriteArray(out, "OutlinePoints", area.OutlinePoints, [](const OutlinePoint& point) {
        return Json::array({point.Lat, point.Lon});
    });
    out << "}\n";
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
            WriteArea(console.Out, *area);
            return {};
        };
    });
}
} // namespace corvane
