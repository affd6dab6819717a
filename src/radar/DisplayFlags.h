#pragma once

#include <array>
#include <string_view>

namespace corvane {
/// What the scope shows; the preferences window switches each. Kept in memory only, all true in a new main window.
struct DisplayFlags {
    bool ShowRunways = true;
    bool ShowAirportLocations = true;
    bool ShowNdbs = true;
    bool ShowVors = true;
    bool ShowRangeRings = true;
    bool ShowWorldMap = true;
    bool ShowTracon = true;
    bool ShowAirspaces = true; ///< also the highlight of the selected airspace
    bool ShowAirportNames = true;
    bool ShowGates = true;
    bool ShowTaxiwayIds = true;
    bool ShowTaxiways = true;
    bool ShowIls = true;
    bool operator==(const DisplayFlags&) const = default;
};

struct DisplayFlagName {
    std::string_view Name;
    bool DisplayFlags::*Flag;
};

/// The flags by name (without "Show"), in the order of the preferences window.
inline constexpr std::array<DisplayFlagName, 13> DisplayFlagNames{{
    {"Runways", &DisplayFlags::ShowRunways},
    {"AirportLocations", &DisplayFlags::ShowAirportLocations},
    {"Ndbs", &DisplayFlags::ShowNdbs},
    {"Vors", &DisplayFlags::ShowVors},
    {"RangeRings", &DisplayFlags::ShowRangeRings},
    {"WorldMap", &DisplayFlags::ShowWorldMap},
    {"Tracon", &DisplayFlags::ShowTracon},
    {"Airspaces", &DisplayFlags::ShowAirspaces},
    {"AirportNames", &DisplayFlags::ShowAirportNames},
    {"Gates", &DisplayFlags::ShowGates},
    {"TaxiwayIds", &DisplayFlags::ShowTaxiwayIds},
    {"Taxiways", &DisplayFlags::ShowTaxiways},
    {"Ils", &DisplayFlags::ShowIls},
}};
} // namespace corvane
