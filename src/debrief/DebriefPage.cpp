#include "debrief/DebriefPage.h"

#include "core/NumberText.h"
#include "core/Rounding.h"
#include "core/Text.h"
#include "debrief/SvgSurface.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace corvane {
std::string ClockText(double seconds)
{
    const auto whole = static_cast<std::int64_t>(std::max(0.0, seconds));
    const auto two = [](std::int64_t number) { return (number < 10 ? "0" : "") + NumberText(number); };
    const std::string tail = ':' + two(whole % 60);
    return whole < 3600 ? NumberText(whole / 60) + tail : NumberText(whole / 3600) + ':' + two(whole / 60 % 60) + tail;
}

static std::string Joined(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + name;
    return text;
}

static std::string Row(std::string_view what, const std::string& value)
{
    return "<tr><td>" + std::string(what) + "</td><td>" + value + "</td></tr>\n";
}

static int CountOf(const Debrief& debrief, DebriefKind kind)
{
    return static_cast<int>(std::count_if(debrief.Items.begin(), debrief.Items.end(),
                                          [kind](const DebriefItem& item) { return item.Kind == kind; }));
}

static std::string Summary(const Debrief& debrief)
{
    const auto number = [](int value) { return NumberText(std::int32_t{value}); };
    std::string text = "<table>\n";
    text += Row("Length", ClockText(debrief.LengthS));
    text += Row("Separation lost", number(CountOf(debrief, DebriefKind::Separation)));
    text += Row("Too close on the final", number(CountOf(debrief, DebriefKind::Wake)));
    text += Row("Below the minimum altitude", number(CountOf(debrief, DebriefKind::LowAltitude)));
    text += Row("Landings, take-offs, go-arounds",
                number(debrief.Landings) + ", " + number(debrief.TakeOffs) + ", " + number(debrief.GoArounds));
    text += Row("Delay of those that landed", ClockText(debrief.DelayS));
    text += Row("Instructions", number(debrief.Instructions) + ", of them " + number(debrief.Refused) + " refused, " +
                                    number(debrief.NotUnderstood) + " not understood; " + number(debrief.Unanswered) +
                                    " met silence");
    text += Row("Longest wait for your answer", debrief.LongestCallBy.empty() ? std::string("none")
                                                                              : ClockText(debrief.LongestCallS) + ", " +
                                                                                    MarkupText(debrief.LongestCallBy));
    return text + "</table>\n";
}

static std::string ItemRows(const Debrief& debrief, bool links)
{
    std::string text;
    for (const DebriefItem& item : debrief.Items) {
        const std::string clock = ClockText(item.TimeS);
        const std::string when =
            links ? "<a href=\"at:" + NumberText(std::floor(item.TimeS)) + "\">" + clock + "</a>" : clock;
        text += "<tr><td>" + when + "</td><td>" + NameOf(item.Kind) + "</td><td>" + MarkupText(Joined(item.Who)) +
                "</td><td>" + MarkupText(item.What) + "</td><td>" + MarkupText(item.Why) + "</td></tr>\n";
    }
    return text;
}

static std::string FlightRows(const Debrief& debrief)
{
    const auto time = [](const std::optional<double>& at) { return at ? ClockText(*at) : std::string("-"); };
    std::string text;
    for (const DebriefFlight& flight : debrief.Flights)
        text += "<tr><td>" + MarkupText(flight.Callsign) + "</td><td>" + MarkupText(flight.AircraftTitle) +
                "</td><td>" + time(flight.YoursS) + "</td><td>" + time(flight.TookOffS) + "</td><td>" +
                time(flight.LandedS) + ' ' + MarkupText(flight.LandedAt) + "</td><td>" + time(flight.DelayS()) +
                "</td><td>" + NumberText(std::int32_t{flight.Instructions}) + "</td></tr>\n";
    return text;
}

std::string DebriefBody(const Debrief& debrief, bool links)
{
    return "<h2>What "
           "happened</h2>\n<table>\n<tr><th>When</th><th>What</th><th>Who</th><th></th><th>Before</th></tr>\n" +
           ItemRows(debrief, links) +
           "</table>\n<h2>Flights</h2>\n<table>\n<tr><th>Callsign</th><th>Aircraft</th><th>Yours from</th><th>Took "
           "off</th><th>Landed</th><th>Delay</th><th>Instructions</th></tr>\n" +
           FlightRows(debrief) + "</table>\n";
}

std::string DebriefHead(const Debrief& debrief)
{
    return "<h1>" + MarkupText(debrief.Session) + "</h1>\n" + Summary(debrief);
}

std::string DebriefPage(const Debrief& debrief, std::string_view pictures)
{
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" +
           MarkupText(debrief.Session) +
           "</title>\n<style>\nbody { font-family: sans-serif; max-width: 1000px; margin: 1em auto; }\n"
           "table { border-collapse: collapse; }\ntd, th { text-align: left; vertical-align: top; padding: 2px 12px "
           "2px "
           "0; border-bottom: 1px solid #ddd; }\nsvg { width: 100%; height: auto; margin: 1em 0; }\n</style>\n</head>\n"
           "<body>\n" +
           DebriefHead(debrief) + std::string(pictures) + DebriefBody(debrief, false) + "</body>\n</html>\n";
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
                                         {"Flights", std::move(flights)}};
    return page.dump(1) + '\n';
}
} // namespace corvane
