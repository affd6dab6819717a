#pragma once

#include "core/MagVarGrid.h"
#include "practice/Pilot.h"
#include "practice/PracticeCrew.h"

#include <string>

namespace corvane {
/// Invents who flies: kinds of aircraft, callsigns that nobody has, and how each pilot begins. The scene and the grid
/// must outlive it.
class TrafficMaker {
public:
    TrafficMaker(const PracticeScene& scene, const MagVarGrid& grid) noexcept : m_scene(&scene), m_grid(&grid) {}

    struct NewPilot {
        std::string Callsign;
        Pilot Flying;
    };
    [[nodiscard]] NewPilot Departure(const PracticeCrew& crew, PracticeRandom& random) const;
    /// Any of the ways to begin, as they are mixed over an area.
    [[nodiscard]] NewPilot Any(const PracticeCrew& crew, PracticeRandom& random) const;
    [[nodiscard]] static std::string NewCallsign(AircraftKind kind, const PracticeCrew& crew, PracticeRandom& random);

private:
    const PracticeScene* m_scene;
    const MagVarGrid* m_grid;
};
} // namespace corvane
