#pragma once

#include "core/MagVarGrid.h"
#include "practice/Approach.h"
#include "practice/GroundTraffic.h"
#include "practice/Hold.h"
#include "practice/Journey.h"

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace corvane {
/// How a pilot finds its way in the air: by its own plan, or as a controller asked. Decides nothing about what may be
/// asked. The grid and the scene of the planner must outlive it.
class AirNavigation {
public:
    AirNavigation(const JourneyPlanner& planner, const MagVarGrid& grid) noexcept : m_planner(planner), m_grid(&grid) {}

    /// Sets height and speed of one who comes into being in the air, bound for the journey's goal.
    void BeginEnRoute(FlightState& state, const Journey& journey) const;
    /// Goes straight on after the take-off.
    void BeginClimbOut(const PracticeRunway& runway) noexcept;
    /// Looks whether the runway ahead is free; at the last moment it is not it goes around.
    void SeeRunway(const FlightState& state, const GroundView& view) noexcept;
    /// Flies one step. Returns the runway when the wheels touch it; the step is the ground's then.
    const PracticeRunway* Step(FlightState& state, Journey& journey, PracticeRandom& random);

    // What a controller asks for
    void FlyHeading(const FlightState& state, int magnetic, TurnWay way);
    /// Turns by degrees and keeps the heading then.
    void TurnBy(const FlightState& state, int degrees, TurnWay way);
    void KeepHeading(const FlightState& state);
    /// Kept until another is asked for, resumed, or an approach goes below it.
    void AskAltitude(double feet) noexcept { m_askedFt = feet; }
    void AskSpeed(double knots) noexcept { m_askedKt = knots; }
    void OwnSpeed() noexcept { m_askedKt.reset(); }
    void FlyDirect(const FlightState& state, const LatLon& place, std::string name);
    /// Flies an approach, on the present heading where that leads to the final.
    /// keepsAltitude  the altitude that was asked for is kept until the final even on the way there by itself
    void FlyApproach(const PracticeRunway& runway, const FlightState& state, bool keepsAltitude);
    /// Joins the final approach course at the altitude asked for, or the present one.
    void JoinLocalizer(const PracticeRunway& runway, const FlightState& state);
    void HoldHere(const FlightState& state, TurnWay turns, int minutes);
    /// inbound  true course to the fix; nothing for the one from here
    void HoldAt(const FlightState& state, const LatLon& place, std::string name, std::optional<double> inbound,
                TurnWay turns, int minutes);
    void GoAround(Journey& journey)
    {
        StartGoAround(journey);
        m_call.clear(); // the read-back says enough
    }
    /// After a missed approach it waits for a clearance instead of flying another approach by itself.
    void WaitForWord() noexcept { m_waitsForWord = true; }
    /// Leaves the approach on its heading, at an altitude.
    void BreakOff(const FlightState& state, double feet);
    void ForbidLanding(bool forbidden) noexcept { m_mayLand = !forbidden; }
    /// Heading and place are the pilot's own again, altitude and speed stay.
    void ResumeRoute()
    {
        LeaveApproach();
        m_steering = Route{};
    }
    void ResumeOwn()
    {
        m_askedFt.reset();
        m_askedKt.reset();
        ResumeRoute();
    }

    [[nodiscard]] bool OnApproach() const noexcept { return m_approach.has_value(); }
    [[nodiscard]] bool IsEstablished() const noexcept { return m_approach && m_approach->IsEstablished(); }
    /// The approach is by clearance.
    [[nodiscard]] bool ClearedApproach() const noexcept { return m_approach && m_askedToLand; }
    /// Of the approach; null without one.
    [[nodiscard]] const PracticeRunway* ApproachRunway() const noexcept
    {
        return m_approach ? &m_approach->Runway() : nullptr;
    }
    [[nodiscard]] std::optional<double> AskedFt() const noexcept { return m_askedFt; }
    [[nodiscard]] std::optional<double> AskedKt() const noexcept { return m_askedKt; }
    /// Whole degrees magnetic, 1 to 360.
    [[nodiscard]] int MagneticHeading(const FlightState& state) const noexcept;
    /// The true heading to be reported: one that was asked for is held to the degree, whatever the grid does.
    [[nodiscard]] double ReportedHeading(const FlightState& state) const noexcept;
    /// What there is to say of the flight, such as "going around"; taken once.
    std::string TakeCall() { return std::exchange(m_call, {}); }

private:
    /// The ways to steer. Route: own navigation to the destination, or to the way point before it.
    struct Route {};
    struct UpwindLeg {
        double Course = 0; ///< true
        double UntilFt = 0;
    };
    struct OnHeading {
        int Magnetic = 360;
        TurnWay Turn = TurnWay::Shorter;
        bool Reached = false;
    };
    struct DirectTo {
        LatLon Place;
        std::string Name;
        std::optional<Hold> Then = std::nullopt; ///< holds there
    };
    struct Turning {
        double LeftDeg = 0;
        TurnWay Way = TurnWay::Right;
        int Magnetic = 360; ///< kept when it is done
        double LastDeg = 0; ///< true heading of the step before
    };
    using Steering = std::variant<Route, UpwindLeg, OnHeading, DirectTo, Hold, Turning>;

    void Steer(const FlightState& state, Journey& journey, FlightTarget& target, PracticeRandom& random);
    void SteerRoute(const FlightState& state, Journey& journey, FlightTarget& target, PracticeRandom& random);
    void SteerDirect(const FlightState& state, const DirectTo& direct, FlightTarget& target);
    void SteerTurn(const FlightState& state, Turning& turning, FlightTarget& target);
    void SteerHeading(const FlightState& state, OnHeading& heading, FlightTarget& target) const;
    static double ProfileNm(const FlightState& state, const Journey& journey);
    void FlyOwnProfile(const FlightState& state, const Journey& journey, FlightTarget& target, double leftNm) const;
    const PracticeRunway* GuideApproach(const FlightState& state, Journey& journey, FlightTarget& target);
    [[nodiscard]] bool IsAtDecision(const FlightState& state) const noexcept;
    void StartGoAround(Journey& journey);
    void LeaveApproach() noexcept;
    void LeaveApproachLevel(const FlightState& state);
    [[nodiscard]] double ApproachFt(const FlightState& state) const noexcept;
    [[nodiscard]] double OwnSpeedKt(const FlightState& state, double altitudeFt, double leftNm) const noexcept;
    [[nodiscard]] double TrueHeadingFor(const FlightState& state, int magnetic) const noexcept;
    [[nodiscard]] const AircraftClass& Aircraft() const noexcept { return m_planner.Aircraft(); }

    JourneyPlanner m_planner;
    const MagVarGrid* m_grid;
    Steering m_steering = Route{};
    std::optional<Approach> m_approach;
    std::optional<double> m_askedFt; ///< by the controller
    std::optional<double> m_askedKt;
    std::string m_call;
    bool m_askedToLand = false; ///< the approach is by clearance, not the own plan
    bool m_level = false;       ///< on the localizer without a clearance to descend
    bool m_runwayOccupied = false;
    bool m_waitsForWord = false;
    bool m_mayLand = true; ///< else it goes around before the runway
};
} // namespace corvane
