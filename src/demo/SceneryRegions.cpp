#include "demo/SceneryRegions.h"

#include <array>

namespace corvane {
namespace {
enum Region : std::size_t {
    NorthAmericaWest,
    NorthAmericaMiddle,
    NorthAmericaEast,
    Canada,
    MiddleAmerica,
    SouthAmerica,
    NorthEurope,
    SouthEurope,
    EastEurope,
    Africa,
    MiddleEast,
    EastAsia,
    Oceania,
    RegionCount
};
} // namespace

static constexpr std::array<SceneryRegion, RegionCount> Regions{{
    {"North America West", "Scenery/NamW/Scenery", "Scenery\\NAMW"},
    {"North America Central", "Scenery/NAMC/scenery", "scenery/namc"},
    {"North America East", "Scenery/NAME/SCENERY", "SCENERY\\Name\\Scenery"},
    {"Canada and Alaska", "Scenery/Cana/scenery", "Scenery\\Cana"},
    {"Central America", "Scenery/cena/scenery", "Scenery/CENA/"},
    {"South America", "Scenery/SAME/Scenery", "Scenery\\Same"},
    {"Northern Europe", "Scenery/EURN/scenery", "scenery\\EURN\\scenery"},
    {"Southern Europe", "Scenery/EurS/scenery", "Scenery/Eurs/Scenery"},
    {"Eastern Europe and Russia", "Scenery/EURE/Scenery", "Scenery\\EURE"},
    {"Africa", "Scenery/Afri/scenery", "Scenery\\AFRI"},
    {"Middle East and India", "Scenery/mide/scenery", "SCENERY/MIDE"},
    {"East Asia", "Scenery/ASIE/scenery", "Scenery\\Asie"},
    {"Australia and Oceania", "Addon Scenery/Oceania/Scenery", ""},
}};

std::span<const SceneryRegion> SceneryRegions() noexcept
{
    return Regions;
}

static Region RegionInUnitedStates(double lon) noexcept
{
    if (lon < -104)
        return NorthAmericaWest;
    return lon < -87 ? NorthAmericaMiddle : NorthAmericaEast;
}

std::size_t RegionOf(std::string_view icao, double lon) noexcept
{
    switch (icao.empty() ? ' ' : icao.front()) {
    case 'K': return RegionInUnitedStates(lon);
    case 'C': return Canada;
    case 'P': return icao.starts_with("PA") || icao.starts_with("PF") ? Canada : Oceania;
    case 'M':
    case 'T': return MiddleAmerica;
    case 'S': return SouthAmerica;
    case 'E':
    case 'B': return NorthEurope;
    case 'L': return SouthEurope;
    case 'U': return EastEurope;
    case 'D':
    case 'F':
    case 'G':
    case 'H': return Africa;
    case 'O':
    case 'V': return MiddleEast;
    case 'R':
    case 'W':
    case 'Z': return EastAsia;
    default: return Oceania;
    }
}
} // namespace corvane
