#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace corvane {
enum class AircraftKind : std::uint8_t { PistonSingle, TwinTurboprop, LightJet, Airliner, Helicopter };
inline constexpr int AircraftKindCount = 5;

/// How a class of aircraft is flown. Speeds are knots through the air, climbs feet a minute, accelerations knots a
/// second.
struct AircraftClass {
    AircraftKind Kind = AircraftKind::PistonSingle;
    std::string_view EngineType;              ///< "Piston Plane", "Jet Plane" or "Helicopter", as messages know them
    std::span<const std::string_view> Titles; ///< as the simulator's aircraft menu names them

    double RotateKt = 0;
    double ClimbKt = 0; ///< in the first thousand feet, then accelerating
    double CruiseKt = 0;
    double MaximumKt = 0;
    double MinimumKt = 0; ///< slowest speed flown when a controller asks
    double PatternKt = 0; ///< around an airport, before the final approach
    double FinalKt = 0;
    double ClimbFpm = 0;
    double DescentFpm = 0;
    double AccelerationKtPerS = 0; ///< in the air, both ways
    double TakeOffKtPerS = 0;
    double BrakingKtPerS = 0;

    int CeilingFt = 0;
    int LowCruiseFt = 0;
    int HighCruiseFt = 0;
    int RunwayFt = 0;    ///< shortest runway used
    double FinalNm = 0;  ///< length of the final approach that its pilots plan
    double OffsetNm = 0; ///< distance of the downwind leg from the runway
};

/// The kind whose class has an aircraft's title; of one that is not known the kind that its engine suggests.
AircraftKind KindOfAircraft(std::string_view title, std::string_view engineType) noexcept;

/// The class of a kind; the table lives as long as the program.
const AircraftClass& ClassOf(AircraftKind kind) noexcept;
} // namespace corvane
