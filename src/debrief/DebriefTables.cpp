#include "debrief/DebriefTables.h"

#include "core/NumberText.h"
#include "core/Text.h"

#include <algorithm>

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

static std::string CountText(const Debrief& debrief, DebriefKind kind)
{
    return NumberText(std::int64_t{std::count_if(debrief.Items.begin(), debrief.Items.end(),
                                                 [kind](const DebriefItem& item) { return item.Kind == kind; })});
}

DebriefTable SummaryTable(const Debrief& debrief)
{
    const auto number = [](int value) { return NumberText(std::int32_t{value}); };
    DebriefTable table;
    table.Rows = {{"Length", ClockText(debrief.LengthS)},
                  {"Separation lost", CountText(debrief, DebriefKind::Separation)},
                  {"Too close on the final", CountText(debrief, DebriefKind::Wake)},
                  {"Below the minimum altitude", CountText(debrief, DebriefKind::LowAltitude)},
                  {"Landings, take-offs, go-arounds",
                   number(debrief.Landings) + ", " + number(debrief.TakeOffs) + ", " + number(debrief.GoArounds)},
                  {"Delay of landings and take-offs", ClockText(debrief.DelayS)},
                  {"Instructions", number(debrief.Instructions) + ", of them " + number(debrief.Refused) +
                                       " refused, " + number(debrief.NotUnderstood) + " not understood; " +
                                       number(debrief.Unanswered) + " met silence"},
                  {"Longest wait for your answer",
                   debrief.LongestCallBy.empty() ? std::string("none")
                                                 : ClockText(debrief.LongestCallS) + ", " + debrief.LongestCallBy}};
    return table;
}

static std::string MomentText(const Debrief& debrief, double timeS)
{
    const auto moment = debrief.MomentOf(timeS);
    if (!moment)
        return "-";
    const std::u8string file = moment->File.filename().u8string();
    return Utf8ToWindows1252(std::string(file.begin(), file.end())) + ", " + ClockText(moment->AtS);
}

std::string RecordingText(const Debrief& debrief, double timeS)
{
    if (debrief.Recordings.empty())
        return "Nothing was recorded: \"File\", \"Record session\" begins a recording.";
    return debrief.MomentOf(timeS) ? "Recorded: " + MomentText(debrief, timeS) : "This moment was not recorded.";
}

DebriefTable ItemTable(const Debrief& debrief)
{
    DebriefTable table;
    table.Heads = {"When", "What", "Who", "How", "Before"};
    if (!debrief.Recordings.empty())
        table.Heads.emplace_back("In the recording");
    for (const DebriefItem& item : debrief.Items) {
        table.Rows.push_back({ClockText(item.TimeS), NameOf(item.Kind), Joined(item.Who), item.What, item.Why});
        if (!debrief.Recordings.empty())
            table.Rows.back().push_back(MomentText(debrief, item.TimeS));
    }
    return table;
}

DebriefTable FlightTable(const Debrief& debrief)
{
    const auto time = [](const std::optional<double>& at) { return at ? ClockText(*at) : std::string("-"); };
    DebriefTable table;
    table.Heads = {"Callsign", "Aircraft", "Yours from", "Took off", "Landed", "Delay", "Instructions"};
    for (const DebriefFlight& flight : debrief.Flights)
        table.Rows.push_back({flight.Callsign, flight.AircraftTitle, time(flight.YoursS), time(flight.TookOffS),
                              time(flight.LandedS) + (flight.LandedAt.empty() ? "" : " " + flight.LandedAt),
                              time(flight.DelayS()), NumberText(std::int32_t{flight.Instructions})});
    return table;
}
} // namespace corvane
