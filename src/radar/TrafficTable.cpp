#include "radar/TrafficTable.h"

#include "core/Geodesy.h"
#include "core/NumberText.h"
#include "core/Text.h"
#include "radar/RadioText.h"
#include "session/PlayerPropertiesModel.h"

#include <unordered_map>
#include <utility>

namespace corvane {
namespace {
/// What is told of members by their ids.
using AlertTexts = std::unordered_map<std::int32_t, std::string>;
} // namespace

static AlertTexts TextsOf(std::span<const Alert> alerts)
{
    AlertTexts texts;
    const auto add = [&](std::int32_t id, const char* what) {
        std::string& text = texts[id];
        text.append(text.empty() ? "" : ", ").append(what);
    };
    for (const Alert& alert : alerts) {
        const bool pair = alert.Kind == AlertKind::Conflict;
        const char* const what = !pair ? "too low" : alert.Violated ? "too close" : "conflict";
        add(alert.FirstId, what);
        if (pair && alert.SecondId != alert.FirstId)
            add(alert.SecondId, what);
    }
    return texts;
}

static void Set(TrafficRow& row, TrafficColumn column, TrafficCell value)
{
    row.Cells[static_cast<std::size_t>(column)] = std::move(value);
}

static void SetIfTold(TrafficRow& row, TrafficColumn column, std::string text)
{
    if (!text.empty())
        Set(row, column, std::move(text));
}

static void AddPosition(TrafficRow& row, const PlayerRecord& member, const TrafficSources& sources)
{
    const LatLon center = sources.Area.AreaCenter;
    row.Position = LatLon{member.Latitude, member.Longitude};
    Set(row, TrafficColumn::Altitude, member.AltitudeFt);
    Set(row, TrafficColumn::Speed, member.GroundSpeedKt);
    Set(row, TrafficColumn::Distance, DistanceNm(center, *row.Position));
    Set(row, TrafficColumn::Bearing, MagneticCourse(sources.Variation, center, *row.Position));
}

void ShowPlan(TrafficRow& row, const PlayerRecord& pilot)
{
    Set(row, TrafficColumn::Rules, std::string(pilot.FlightRules == 0 ? "VFR" : "IFR"));
    Set(row, TrafficColumn::Departure, pilot.DepartureIcao);
    Set(row, TrafficColumn::Destination, pilot.DestinationIcao);
    Set(row, TrafficColumn::Cruise, std::int32_t{pilot.CruiseAltitude});
}

static TrafficRow RowOf(const PlayerRecord& member, const TrafficSources& sources, std::string alerts)
{
    constexpr std::int64_t MsPerSecond = 1000;
    TrafficRow row{member.PlayerId, member.Name, member.Role == PilotRole, std::nullopt, {}};
    Set(row, TrafficColumn::Callsign, member.Name);
    Set(row, TrafficColumn::Type, row.IsPilot ? member.AircraftType : std::string(ObserverRole));
    if (row.IsPilot) {
        ShowPlan(row, member);
        if (member.Latitude != 0 || member.Longitude != 0)
            AddPosition(row, member, sources);
    }
    if (const auto heard = sources.HeardMs.find(member.PlayerId); heard != sources.HeardMs.end())
        Set(row, TrafficColumn::Age, static_cast<std::int32_t>((sources.NowMs - heard->second) / MsPerSecond));
    const MemberRadio radio = sources.Radios != nullptr ? sources.Radios->RadioOf(member.PlayerId) : MemberRadio{};
    SetIfTold(row, TrafficColumn::Code, SquawkText(radio));
    SetIfTold(row, TrafficColumn::Radio, FrequencyText(radio));
    Set(row, TrafficColumn::Alert, std::move(alerts));
    return row;
}

std::vector<TrafficRow> TrafficRows(const TrafficSources& sources)
{
    const AlertTexts alerts = TextsOf(sources.Alerts);
    std::vector<TrafficRow> rows;
    for (const PlayerRecord& member : sources.Members) {
        if (member.PlayerId == sources.OwnPlayerId)
            continue;
        const auto alert = alerts.find(member.PlayerId);
        rows.push_back(RowOf(member, sources, alert == alerts.end() ? std::string() : alert->second));
    }
    return rows;
}

std::string CellText(const TrafficCell& cell)
{
    if (const auto* const number = std::get_if<std::int32_t>(&cell))
        return NumberText(*number);
    const auto* const text = std::get_if<std::string>(&cell);
    return text != nullptr ? *text : std::string();
}

std::string SpokenRow(const TrafficRow& row)
{
    std::string spoken;
    for (std::size_t i = 0; i < row.Cells.size(); ++i) {
        const std::string text = CellText(row.Cells[i]);
        if (text.empty())
            continue;
        spoken += spoken.empty() ? "" : ", ";
        for (const std::string_view part :
             {TrafficColumnNames[i].Spoken, std::string_view(text), TrafficColumnNames[i].Unit}) {
            spoken += part.empty() || spoken.empty() || spoken.ends_with(' ') ? "" : " ";
            spoken += part;
        }
    }
    return spoken;
}

static std::string CsvCell(const TrafficCell& cell)
{
    constexpr std::string_view FormulaMarks = "=+-@\t\r";
    const auto* const text = std::get_if<std::string>(&cell);
    if (text == nullptr)
        return CellText(cell);
    std::string quoted = "\"";
    if (!text->empty() && FormulaMarks.find(text->front()) != std::string_view::npos)
        quoted += '\'';
    for (const char c : *text)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + '"';
}

std::string TrafficCsv(std::span<const TrafficRow> rows)
{
    std::string csv;
    for (const TrafficColumnName& column : TrafficColumnNames)
        csv.append(csv.empty() ? "" : ",").append(column.Title);
    csv += '\n';
    for (const TrafficRow& row : rows) {
        for (std::size_t i = 0; i < row.Cells.size(); ++i)
            csv.append(i == 0 ? "" : ",").append(CsvCell(row.Cells[i]));
        csv += '\n';
    }
    return csv;
}

bool StorePlan(PlayerRecord& pilot, TrafficColumn column, std::string_view text)
{
    const std::string trimmed(TrimSpaces(text));
    switch (column) {
    case TrafficColumn::Departure: pilot.DepartureIcao = trimmed; return true;
    case TrafficColumn::Destination: pilot.DestinationIcao = trimmed; return true;
    case TrafficColumn::Rules: {
        const std::string rules = ToLower(trimmed);
        if (rules != "vfr" && rules != "ifr")
            return false;
        pilot.FlightRules = rules == "ifr" ? 1 : 0;
        return true;
    }
    case TrafficColumn::Cruise: {
        const auto altitude = CruiseAltitudeOf(trimmed);
        if (altitude)
            pilot.CruiseAltitude = *altitude;
        return altitude.has_value();
    }
    default: return false;
    }
}
} // namespace corvane
