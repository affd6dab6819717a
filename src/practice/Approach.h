#pragma once

#include "practice/FlightModel.h"
#include "practice/PracticeScene.h"

namespace corvane {
/// What an approach has come to.
enum class ApproachEvent : std::uint8_t { Flying, Established, Touchdown, GoAround };

/// An approach to a runway: to the extended centreline by own navigation or on a heading given by the controller, then
/// the localizer (or the centreline by eye, which is flown alike) and a 3 degree glide path to the runway.
class Approach {
public:
    /// By own navigation: straight to the final approach, or over a downwind and a base leg.
    Approach(const PracticeRunway& runway, const FlightState& state, const AircraftClass& aircraft);
    /// Keeps a heading (true) until it meets the centreline.
    Approach(const PracticeRunway& runway, const AircraftClass& aircraft) noexcept;

    /// Whether a heading meets the centreline before the runway at a place and an angle from which one can join.
    static bool HeadingMeetsFinal(const PracticeRunway& runway, const FlightState& state, double heading,
                                  const AircraftClass& aircraft) noexcept;

    /// Whether an aircraft on the final flies its final speed already.
    static bool IsShortFinal(const PracticeRunway& runway, const FlightState& state,
                             const AircraftClass& aircraft) noexcept;

    /// Guides one step: fills heading, altitude and speed of the target. On entry target holds what the pilot would
    /// fly without the approach: the heading kept until the intercept, the altitude kept until the glide path.
    /// askedKt  the controller's speed, flown until short final; 0 for none
    /// descends  false on the localizer alone, without the glide path
    ApproachEvent Guide(const FlightState& state, FlightTarget& target, double askedKt, bool descends = true) noexcept;
    /// Nautical miles to the beginning of the final, about as they will be flown.
    [[nodiscard]] double LeftNm(const FlightState& state) const noexcept;

    [[nodiscard]] const PracticeRunway& Runway() const noexcept { return *m_runway; }
    [[nodiscard]] bool IsEstablished() const noexcept { return m_leg == Leg::Localizer; }
    /// Feet above the sea at which an aircraft on its own joins the final approach.
    [[nodiscard]] static double PlatformFt(const PracticeRunway& runway, const AircraftClass& aircraft) noexcept;
    /// Where such an aircraft joins it.
    [[nodiscard]] static LatLon Gate(const PracticeRunway& runway, const AircraftClass& aircraft) noexcept;

private:
    enum class Leg : std::uint8_t { OnHeading, ToDownwind, ToGate, Base, Localizer };

    void GuideToPoint(const FlightState& state, FlightTarget& target) noexcept;
    ApproachEvent GuideOnLocalizer(const FlightState& state, FlightTarget& target, double askedKt,
                                   bool descends) noexcept;
    void GuideDown(const FlightState& state, double outNm, FlightTarget& target) noexcept;
    [[nodiscard]] bool CanJoin(const FlightState& state) const noexcept;
    [[nodiscard]] double GlideFt(double outNm) const noexcept;
    [[nodiscard]] bool IsUnstable(const FlightState& state, const LineOffset& offset) const noexcept;

    const PracticeRunway* m_runway;
    const AircraftClass* m_aircraft;
    Leg m_leg = Leg::OnHeading;
    bool m_announced = false; ///< that it is established
    LatLon m_point;           ///< of the legs to a point
    double m_baseHeading = 0; ///< true
};
} // namespace corvane
