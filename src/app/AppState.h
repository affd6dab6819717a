#pragma once

#include "area/AreaModel.h"
#include "area/ChooserModel.h"
#include "core/MagVarGrid.h"
#include "core/Settings.h"
#include "radar/DisplayFlags.h"
#include "radar/DisplayOptions.h"
#include "session/FlightPlanMemory.h"
#include "session/PlayerTable.h"
#include "session/SessionState.h"
#include "traffic/TrafficDetails.h"

#include <filesystem>
#include <string>
#include <vector>

namespace corvane {
/// What the windows share. Made once by main, passed by reference, touched on the user-interface thread alone.
///
/// A window gives a library the smallest part that serves it. View and pointer belong to the main window.
struct AppState {
    std::filesystem::path AppFolder;    ///< where the settings and the database live
    SettingsRecord Settings;            ///< its FsPath is the simulator's main folder
    TrafficDetailsTable TrafficDetails; ///< of the players, where they are traffic from outside
    std::string TrafficHealth;          ///< of the link to that traffic; empty: there is none
    std::string TrafficServedAt;        ///< where others can join its session; empty: they cannot
    SessionState Session;               ///< its peer may use the three above to its end
    PlayerTable Players;
    FlightPlanMemory Plans; ///< for those who come again
    AreaModel Area;
    std::vector<AirspaceRecord> AllAirspaces; ///< the whole airspaces file, while the area chooser is open
    MagVarGrid MagVar;
    DisplayFlags Flags;
    DisplayOptions Display; ///< how targets are shown
};

/// What of it the area chooser works on.
inline ChooserState ChooserPart(AppState& state) noexcept
{
    return {state.AppFolder, state.Settings, state.Session.RadarOpen, state.MagVar, state.AllAirspaces, state.Area};
}
} // namespace corvane
