#include "debrief/DebriefPage.h"

#include "core/Text.h"
#include "debrief/DebriefTables.h"
#include "debrief/SvgSurface.h"

#include <nlohmann/json.hpp>

namespace corvane {
static std::string HtmlRow(const std::vector<std::string>& cells, std::string_view tag)
{
    std::string text = "<tr>";
    for (const std::string& cell : cells)
        text += '<' + std::string(tag) + '>' + MarkupText(cell) + "</" + std::string(tag) + '>';
    return text + "</tr>\n";
}

static std::string HtmlTable(const DebriefTable& table)
{
    std::string text = "<table>\n";
    if (!table.Heads.empty())
        text += HtmlRow(table.Heads, "th");
    for (const std::vector<std::string>& row : table.Rows)
        text += HtmlRow(row, "td");
    return text + "</table>\n";
}

std::string DebriefPage(const Debrief& debrief, std::string_view pictures)
{
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" +
           MarkupText(debrief.Session) +
           "</title>\n<style>\nbody { font-family: sans-serif; max-width: 1000px; margin: 1em auto; }\n"
           "table { border-collapse: collapse; }\ntd, th { text-align: left; vertical-align: top; "
           "padding: 2px 12px 2px 0; border-bottom: 1px solid #ddd; }\nsvg { width: 100%; height: auto; margin: 1em 0; "
           "}\n</style>\n</head>\n"
           "<body>\n" +
           "<h1>" + MarkupText(debrief.Session) + "</h1>\n" + HtmlTable(SummaryTable(debrief)) + std::string(pictures) +
           "<h2>What happened</h2>\n" + HtmlTable(ItemTable(debrief)) + "<h2>Flights</h2>\n" +
           HtmlTable(FlightTable(debrief)) + "</body>\n</html>\n";
}

static nlohmann::ordered_json TimeJson(const std::optional<double>& time)
{
    return time ? nlohmann::ordered_json(*time) : nlohmann::ordered_json(nullptr);
}

static nlohmann::ordered_json FlightJson(const DebriefFlight& flight)
{
    nlohmann::ordered_json track = nlohmann::ordered_json::array();
    for (const DebriefPlace& place : flight.Track)
        track.push_back({place.TimeS, place.Position.Lat, place.Position.Lon, place.AltitudeFt});
    return {{"Callsign", Windows1252ToUtf8(flight.Callsign)},
            {"AircraftTitle", Windows1252ToUtf8(flight.AircraftTitle)},
            {"Yours", TimeJson(flight.YoursS)},
            {"TookOff", TimeJson(flight.TookOffS)},
            {"Landed", TimeJson(flight.LandedS)},
            {"LandedAt", flight.LandedAt},
            {"Delay", TimeJson(flight.DelayS())},
            {"Instructions", flight.Instructions},
            {"Track", std::move(track)}};
}

static nlohmann::ordered_json RecordingJson(const DebriefRecording& recording)
{
    const std::u8string file = recording.File.u8string();
    return {{"File", std::string(file.begin(), file.end())}, {"Begin", recording.BeginS}, {"End", recording.EndS}};
}

std::string DebriefJson(const Debrief& debrief)
{
    nlohmann::ordered_json items = nlohmann::ordered_json::array();
    for (const DebriefItem& item : debrief.Items) {
        nlohmann::ordered_json who = nlohmann::ordered_json::array();
        for (const std::string& name : item.Who)
            who.push_back(Windows1252ToUtf8(name));
        items.push_back({{"Time", item.TimeS},
                         {"Kind", NameOf(item.Kind)},
                         {"Who", std::move(who)},
                         {"What", Windows1252ToUtf8(item.What)},
                         {"Why", Windows1252ToUtf8(item.Why)}});
    }
    nlohmann::ordered_json flights = nlohmann::ordered_json::array();
    for (const DebriefFlight& flight : debrief.Flights)
        flights.push_back(FlightJson(flight));
    nlohmann::ordered_json recordings = nlohmann::ordered_json::array();
    for (const DebriefRecording& recording : debrief.Recordings)
        recordings.push_back(RecordingJson(recording));
    const nlohmann::ordered_json page = {{"Session", Windows1252ToUtf8(debrief.Session)},
                                         {"Length", debrief.LengthS},
                                         {"Landings", debrief.Landings},
                                         {"TakeOffs", debrief.TakeOffs},
                                         {"GoArounds", debrief.GoArounds},
                                         {"Delay", debrief.DelayS},
                                         {"Instructions", debrief.Instructions},
                                         {"Refused", debrief.Refused},
                                         {"NotUnderstood", debrief.NotUnderstood},
                                         {"Unanswered", debrief.Unanswered},
                                         {"LongestCall", debrief.LongestCallS},
                                         {"LongestCallBy", Windows1252ToUtf8(debrief.LongestCallBy)},
                                         {"Handled", debrief.Handled},
                                         {"Items", std::move(items)},
                                         {"Flights", std::move(flights)},
                                         {"Recordings", std::move(recordings)}};
    return page.dump(1, ' ', false, nlohmann::json::error_handler_t::replace) + '\n'; // file names may be anything
}
} // namespace corvane
