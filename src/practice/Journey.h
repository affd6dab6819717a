#pragma once

#include "practice/AircraftClass.h"
#include "practice/PracticeScene.h"
#include "practice/Random.h"

#include <optional>

namespace corvane {
/// Where a pilot comes from and wants to go.
struct Journey {
    const PracticeAirport* Airport = nullptr; ///< where it stands, or comes from
    const PracticeAirport* Destination = nullptr;
    std::optional<LatLon> WayPoint = std::nullopt; ///< flown over before the destination
    bool Enters = false; ///< the way point is the one over which it comes in, coming down before it already
    double CruiseFt = 0;
    bool Pattern = false; ///< stays at its airport, circuit after circuit

    /// Feet above the sea of the field that the flight goes to, or else comes from; 0 without one.
    [[nodiscard]] double FieldFt() const noexcept;
};

/// Decides where the pilots of a kind of aircraft fly. The scene must outlive it.
class JourneyPlanner {
public:
    JourneyPlanner(const PracticeScene& scene, const AircraftClass& aircraft) noexcept
        : m_scene(&scene), m_aircraft(&aircraft)
    {
    }

    /// An airport that the aircraft can use; most often the one in the middle of the area, as the controller's own.
    /// Null when there is none.
    const PracticeAirport* PickAirport(PracticeRandom& random) const;
    /// A place around the middle of the area.
    LatLon RandomPlace(double nearestNm, double farthestNm, PracticeRandom& random) const;
    /// A navaid over which arrivals come to an airport; null where none lies at a distance fit for it.
    const LatLon* PickEntry(const PracticeAirport& destination, PracticeRandom& random) const;
    /// Plans the next flight.
    /// from  the airport that it starts at, or null in the air
    void Plan(Journey& journey, const PracticeAirport* from, PracticeRandom& random) const;

    [[nodiscard]] const PracticeScene& Scene() const noexcept { return *m_scene; }
    [[nodiscard]] const AircraftClass& Aircraft() const noexcept { return *m_aircraft; }

private:
    const PracticeScene* m_scene;
    const AircraftClass* m_aircraft;
};
} // namespace corvane
