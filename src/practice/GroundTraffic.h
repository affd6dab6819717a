#pragma once

#include "practice/FlightModel.h"
#include "practice/PracticeScene.h"

#include <cstddef>
#include <vector>

namespace corvane {
/// Who is where on the ground or about to be, as each pilot sees it out of the window; brought up to date once a step.
class GroundTraffic {
public:
    /// Names a pilot for as long as one list stands.
    using Index = std::size_t;
    static constexpr Index Nobody = static_cast<Index>(-1);

    void Clear() noexcept { m_aircraft.clear(); }
    /// standAhead  to which it taxies
    void Add(const FlightState& state, bool parked, Index who, const std::optional<LatLon>& standAhead = std::nullopt);

    /// Whether somebody else is right ahead of an aircraft that taxies, nearer than it should be.
    [[nodiscard]] bool BlocksWay(const FlightState& state, Index self) const noexcept;
    /// Whether somebody else is on a runway and at least so fast.
    [[nodiscard]] bool IsOccupied(const PracticeRunway& runway, Index self, double fromKt) const noexcept;
    /// Whether somebody else is about to land on it.
    [[nodiscard]] bool IsOnShortFinal(const PracticeRunway& runway, Index self) const noexcept;
    /// Whether somebody else stands at a place, or taxies there to stand.
    [[nodiscard]] bool IsTaken(const LatLon& stand, Index self) const noexcept;

private:
    struct Aircraft {
        FlightState State;
        bool Parked = false;
        std::optional<LatLon> StandAhead;
        Index Who = Nobody;
    };
    std::vector<Aircraft> m_aircraft;
};
/// The traffic as one pilot sees it.
class GroundView {
public:
    /// Alone in the world.
    GroundView() = default;
    GroundView(const GroundTraffic& traffic, GroundTraffic::Index self) noexcept : m_traffic(&traffic), m_self(self) {}

    [[nodiscard]] bool BlocksWay(const FlightState& state) const noexcept
    {
        return m_traffic != nullptr && m_traffic->BlocksWay(state, m_self);
    }
    [[nodiscard]] bool IsOccupied(const PracticeRunway& runway, double fromKt = 0) const noexcept
    {
        return m_traffic != nullptr && m_traffic->IsOccupied(runway, m_self, fromKt);
    }
    [[nodiscard]] bool IsOnShortFinal(const PracticeRunway& runway) const noexcept
    {
        return m_traffic != nullptr && m_traffic->IsOnShortFinal(runway, m_self);
    }
    [[nodiscard]] bool IsTaken(const LatLon& stand) const noexcept
    {
        return m_traffic != nullptr && m_traffic->IsTaken(stand, m_self);
    }

private:
    const GroundTraffic* m_traffic = nullptr;
    GroundTraffic::Index m_self = GroundTraffic::Nobody;
};
} // namespace corvane
