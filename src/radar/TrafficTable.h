#pragma once

#include "area/AreaModel.h"
#include "core/MagVarGrid.h"
#include "session/MemberRadio.h"
#include "session/PlayerTable.h"
#include "tracks/Alerts.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace corvane {
/// The columns of the list of members, in their order.
enum class TrafficColumn : std::uint8_t {
    Callsign,
    Type,
    Altitude,
    Speed,
    Distance,
    Bearing,
    Code,
    Radio,
    Rules,
    Departure,
    Destination,
    Cruise,
    Age,
    Alert
};

struct TrafficColumnName {
    std::string_view Title;
    std::string_view Spoken; ///< before the value, where a row is read aloud
    std::string_view Unit;   ///< after it
};

inline constexpr std::array<TrafficColumnName, 14> TrafficColumnNames{{{"Callsign", "", ""},
                                                                       {"Type", "", ""},
                                                                       {"Altitude", "altitude", "feet"},
                                                                       {"Speed", "speed", "knots"},
                                                                       {"Distance", "distance", "miles"},
                                                                       {"Bearing", "bearing", "degrees"},
                                                                       {"Code", "code", ""},
                                                                       {"Radio", "radio", "megahertz"},
                                                                       {"Rules", "", ""},
                                                                       {"From", "from", ""},
                                                                       {"To", "to", ""},
                                                                       {"Cruise", "cruise altitude", "feet"},
                                                                       {"Age", "heard", "seconds ago"},
                                                                       {"Alert", "alert", ""}}};

/// A value of the list: nothing, a number or a text. Numbers sort as such.
using TrafficCell = std::variant<std::monostate, std::int32_t, std::string>;

/// One member. Its cells are in the order of the columns.
struct TrafficRow {
    std::int32_t PlayerId = 0;
    std::string Name;
    bool IsPilot = false;           ///< has a flight plan that can be edited
    std::optional<LatLon> Position; ///< nothing before the first report
    std::array<TrafficCell, TrafficColumnNames.size()> Cells;

    [[nodiscard]] const TrafficCell& At(TrafficColumn column) const { return Cells[static_cast<std::size_t>(column)]; }
};

/// What the list is made of.
struct TrafficSources {
    std::span<const PlayerRecord> Members;
    std::int32_t OwnPlayerId = 0;
    const AreaModel& Area; ///< from whose centre distances (nautical miles) and magnetic bearings are taken
    const MagVarGrid& Variation;
    std::span<const Alert> Alerts;
    const std::map<std::int32_t, std::int64_t>& HeardMs; ///< when each was heard last
    std::int64_t NowMs = 0;
    const MemberRadios* Radios = nullptr; ///< null: nobody knows them
};

/// A row for every member but the own player, in table order.
std::vector<TrafficRow> TrafficRows(const TrafficSources& sources);

/// A cell as text; empty where there is nothing.
std::string CellText(const TrafficCell& cell);
/// A row as a sentence, such as "N12, C172, altitude 3000 feet".
std::string SpokenRow(const TrafficRow& row);
/// A head line and a line for each row, as spreadsheets read them: texts in quotes, doubled inside. What a spreadsheet
/// would take for a formula begins with an apostrophe.
std::string TrafficCsv(std::span<const TrafficRow> rows);

/// Whether a column is a part of the flight plan, which StorePlan can change.
constexpr bool IsPlanColumn(TrafficColumn column) noexcept
{
    return column == TrafficColumn::Rules || column == TrafficColumn::Departure ||
           column == TrafficColumn::Destination || column == TrafficColumn::Cruise;
}
/// Writes a pilot's flight plan into its row.
void ShowPlan(TrafficRow& row, const PlayerRecord& pilot);
/// Stores a part of a flight plan as the editor of flight plans does. Returns whether the column holds one and the text
/// fits it.
bool StorePlan(PlayerRecord& pilot, TrafficColumn column, std::string_view text);
} // namespace corvane
