#pragma once

#include "cli/DisplayArguments.h"
#include "cli/RecordJson.h"
#include "radar/TargetDisplay.h"
#include "session/PlayerTable.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {
/// What the scope command is told of its display and of the time before its picture.
struct ScopeDisplayArguments {
    DisplayArguments Display;
    std::string History;
    std::optional<double> Now;
};
void AddScopeDisplayOptions(CLI::App& command, ScopeDisplayArguments& arguments);

/// The controller's own entry is known by this id in files of players; its name is the controller's then, and without
/// such an entry nobody's.
inline constexpr std::int32_t ScopeOwnId = 1;
std::string OwnNameAmong(const std::vector<PlayerRecord>& players);

/// A picture's targets in a display other than the classic one.
struct DisplayedScene {
    std::unique_ptr<TargetDisplay> Targets; ///< null: the classic display draws the players
    double Now = 0;
};

/// Plays the history, a refresh a line, and arranges the targets as they are to be drawn.
///
/// players  those of the players file; without such a file empty, and filled with the history's last line
/// Fails    where the history cannot be read, --now lies before its end, or it would take too long
Result<DisplayedScene> PlayScene(const ScopeDisplayArguments& arguments, const MapScene& scene,
                                 const DisplayOptions& options, bool hasPlayersFile,
                                 std::vector<PlayerRecord>& players);

/// Where the blocks stand, and the alerts that stand.
Json LabelsJson(const TargetMarks& marks);
Json AlertsJson(const TrafficMonitor& monitor);
} // namespace corvane
