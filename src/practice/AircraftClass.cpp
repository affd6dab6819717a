#include "practice/AircraftClass.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace corvane {
static constexpr std::array<std::string_view, 3> PistonTitles{"Cessna Skylane 182S", "Cessna Skyhawk 172SP",
                                                              "Mooney Bravo"};
static constexpr std::array<std::string_view, 2> TurbopropTitles{"Beechcraft King Air 350", "Cessna Caravan"};
static constexpr std::array<std::string_view, 1> LightJetTitles{"Learjet 45"};
static constexpr std::array<std::string_view, 3> AirlinerTitles{"Boeing 737-400", "Boeing 747-400", "Boeing 777-300"};
static constexpr std::array<std::string_view, 1> HelicopterTitles{"Bell 206B JetRanger"};

// The message knows no code for turboprops: they fly as propeller aircraft.
static constexpr std::array<AircraftClass, AircraftKindCount> Classes{{
    {.Kind = AircraftKind::PistonSingle,
     .EngineType = "Piston Plane",
     .Titles = PistonTitles,
     .RotateKt = 60,
     .ClimbKt = 85,
     .CruiseKt = 130,
     .MaximumKt = 145,
     .MinimumKt = 70,
     .PatternKt = 95,
     .FinalKt = 68,
     .ClimbFpm = 700,
     .DescentFpm = 700,
     .AccelerationKtPerS = 1,
     .TakeOffKtPerS = 2.5,
     .BrakingKtPerS = 3,
     .CeilingFt = 14000,
     .LowCruiseFt = 3500,
     .HighCruiseFt = 9500,
     .RunwayFt = 1500,
     .FinalNm = 4,
     .OffsetNm = 1.5},
    {.Kind = AircraftKind::TwinTurboprop,
     .EngineType = "Piston Plane",
     .Titles = TurbopropTitles,
     .RotateKt = 100,
     .ClimbKt = 140,
     .CruiseKt = 250,
     .MaximumKt = 270,
     .MinimumKt = 110,
     .PatternKt = 150,
     .FinalKt = 105,
     .ClimbFpm = 1600,
     .DescentFpm = 1500,
     .AccelerationKtPerS = 1.5,
     .TakeOffKtPerS = 3.5,
     .BrakingKtPerS = 3.5,
     .CeilingFt = 30000,
     .LowCruiseFt = 9000,
     .HighCruiseFt = 20000,
     .RunwayFt = 3000,
     .FinalNm = 6,
     .OffsetNm = 2.5},
    {.Kind = AircraftKind::LightJet,
     .EngineType = "Jet Plane",
     .Titles = LightJetTitles,
     .RotateKt = 125,
     .ClimbKt = 180,
     .CruiseKt = 420,
     .MaximumKt = 440,
     .MinimumKt = 135,
     .PatternKt = 180,
     .FinalKt = 122,
     .ClimbFpm = 2800,
     .DescentFpm = 2200,
     .AccelerationKtPerS = 2,
     .TakeOffKtPerS = 4,
     .BrakingKtPerS = 4,
     .CeilingFt = 41000,
     .LowCruiseFt = 14000,
     .HighCruiseFt = 31000,
     .RunwayFt = 4500,
     .FinalNm = 9,
     .OffsetNm = 4},
    {.Kind = AircraftKind::Airliner,
     .EngineType = "Jet Plane",
     .Titles = AirlinerTitles,
     .RotateKt = 148,
     .ClimbKt = 200,
     .CruiseKt = 450,
     .MaximumKt = 470,
     .MinimumKt = 150,
     .PatternKt = 190,
     .FinalKt = 138,
     .ClimbFpm = 2200,
     .DescentFpm = 2000,
     .AccelerationKtPerS = 1.5,
     .TakeOffKtPerS = 3.8,
     .BrakingKtPerS = 4,
     .CeilingFt = 39000,
     .LowCruiseFt = 16000,
     .HighCruiseFt = 33000,
     .RunwayFt = 6000,
     .FinalNm = 10,
     .OffsetNm = 5},
    {.Kind = AircraftKind::Helicopter,
     .EngineType = "Helicopter",
     .Titles = HelicopterTitles,
     .RotateKt = 30,
     .ClimbKt = 60,
     .CruiseKt = 105,
     .MaximumKt = 115,
     .MinimumKt = 45,
     .PatternKt = 70,
     .FinalKt = 45,
     .ClimbFpm = 900,
     .DescentFpm = 800,
     .AccelerationKtPerS = 1.5,
     .TakeOffKtPerS = 3,
     .BrakingKtPerS = 4,
     .CeilingFt = 10000,
     .LowCruiseFt = 1500,
     .HighCruiseFt = 3500,
     .RunwayFt = 500,
     .FinalNm = 2,
     .OffsetNm = 1},
}};

AircraftKind KindOfAircraft(std::string_view title, std::string_view engineType) noexcept
{
    for (const AircraftClass& one : Classes)
        if (std::find(one.Titles.begin(), one.Titles.end(), title) != one.Titles.end())
            return one.Kind;
    if (engineType.starts_with("Jet"))
        return AircraftKind::Airliner;
    return engineType.starts_with("Helicopter") ? AircraftKind::Helicopter : AircraftKind::PistonSingle;
}

const AircraftClass& ClassOf(AircraftKind kind) noexcept
{
    return Classes[static_cast<std::size_t>(kind)];
}
} // namespace corvane
