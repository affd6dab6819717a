#include "practice/Pilot.h"

#include "core/Rounding.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace corvane {
static constexpr double TaxiKt = 18;
static constexpr double TaxiwayNm = 0.1; ///< between a runway and the taxiway beside it

Pilot::Pilot(const PracticeScene& scene, const MagVarGrid& grid, AircraftKind kind, Scenario scenario,
             PracticeRandom& random)
    : m_scene(&scene), m_grid(&grid), m_aircraft(&ClassOf(kind)), m_stand(random.Below(1000))
{
    m_pattern = scenario == Scenario::Pattern;
    const bool fromTheGround = scenario == Scenario::Departure || scenario == Scenario::Pattern;
    if (fromTheGround)
        m_airport = PickAirport(random);
    if (m_airport != nullptr)
        BeginParked(random);
    else
        BeginAirborne(scenario, random);
}

void Pilot::BeginParked(PracticeRandom& random)
{
    constexpr double LongestFirstWaitS = 90;
    m_phase = PilotPhase::Parked;
    m_state = {.Position = m_airport->Stand(m_stand),
               .AltitudeFt = m_airport->ElevationFt,
               .HeadingDeg = std::floor(random.Between(0, 360)),
               .OnGround = true};
    m_parkedS = random.Between(5, LongestFirstWaitS);
    PlanFlight(m_airport, random);
}

void Pilot::BeginAirborne(Scenario scenario, PracticeRandom& random)
{
    m_phase = PilotPhase::Airborne;
    PlanFlight(nullptr, random);
    const bool arrival = scenario == Scenario::Arrival && m_destination != nullptr;
    const LatLon around = arrival ? m_destination->Position : m_scene->Center();
    m_state.Position = Along(around, random.Between(0, 360), arrival ? random.Between(25, 55) : random.Between(10, 70));
    const LatLon goal = m_destination != nullptr ? m_destination->Position : *m_wayPoint;
    FlightTarget target{.AltitudeFt = m_cruiseFt};
    FlyOwnProfile(target, RangeNm(m_state.Position, goal));
    m_state.HeadingDeg = CourseTo(m_state.Position, goal);
    m_state.AltitudeFt = target.AltitudeFt;
    m_state.SpeedKt = target.SpeedKt;
    m_state.OnGround = false;
}

/// Most traffic uses the airport in the middle of the area, as the controller's own.
const PracticeAirport* Pilot::PickAirport(PracticeRandom& random) const
{
    const auto& airports = m_scene->Airports();
    const auto usable = [this](const PracticeAirport& airport) {
        return airport.RunwayInUse(m_aircraft->RunwayFt) != nullptr;
    };
    constexpr double MainAirportShare = 0.55;
    if (random.Chance(MainAirportShare)) {
        const PracticeAirport* main = nullptr;
        double mainNm = 25;
        for (const PracticeAirport& airport : airports)
            if (const double nm = RangeNm(m_scene->Center(), airport.Position); nm < mainNm && usable(airport)) {
                main = &airport;
                mainNm = nm;
            }
        if (main != nullptr)
            return main;
    }
    constexpr int Tries = 20;
    for (int i = 0; i < Tries && !airports.empty(); ++i)
        if (const auto& airport = airports[random.Below(airports.size())]; usable(airport))
            return &airport;
    return nullptr;
}

LatLon Pilot::RandomPlace(double nearestNm, double farthestNm, PracticeRandom& random) const
{
    return Along(m_scene->Center(), random.Between(0, 360), random.Between(nearestNm, farthestNm));
}

/// from  the airport that the flight starts at, or null in the air
void Pilot::PlanFlight(const PracticeAirport* from, PracticeRandom& random)
{
    m_wayPoint.reset();
    m_destination = m_pattern && from != nullptr ? from : PickAirport(random);
    constexpr double WholeThousands = 1000;
    m_cruiseFt =
        std::floor(random.Between(m_aircraft->LowCruiseFt, m_aircraft->HighCruiseFt) / WholeThousands) * WholeThousands;
    const bool roundTrip = m_destination == from && !m_pattern;
    if (m_destination == nullptr || roundTrip)
        m_wayPoint = RandomPlace(20, 60, random);
    if (m_destination == nullptr)
        return;
    constexpr double ShortHopNm = 40;
    constexpr double ShortHopFt = 9000;
    if (from != nullptr && !roundTrip && RangeNm(from->Position, m_destination->Position) < ShortHopNm)
        m_cruiseFt = std::min(m_cruiseFt, ShortHopFt);
    const PracticeRunway* runway = m_destination->RunwayInUse(m_aircraft->RunwayFt);
    const double lowestFt = runway != nullptr ? Approach::PlatformFt(*runway, *m_aircraft) : m_destination->ElevationFt;
    m_cruiseFt = m_pattern ? lowestFt : std::max(m_cruiseFt, lowestFt + WholeThousands);
}

/// A point of the taxiway beside a runway, on the side of a place; outNm counts back from the threshold.
static LatLon Turnoff(const PracticeRunway& runway, const LatLon& toward, double outNm) noexcept
{
    const bool onTheLeft = OffsetFromLine(runway.Threshold, runway.Course, toward).LeftNm >= 0;
    const LatLon onTheLine = Along(runway.Threshold, runway.Course + 180, outNm);
    return Along(onTheLine, runway.Course + (onTheLeft ? -90 : 90), TaxiwayNm);
}

static double BesideTheRunway(const PracticeRunway& runway, const LatLon& place) noexcept
{
    return std::clamp(OffsetFromLine(runway.Threshold, runway.Course, place).OutNm, -runway.LengthFt / FeetPerNm, 0.0);
}

void Pilot::StartTaxiOut()
{
    m_runway = m_airport->RunwayInUse(m_aircraft->RunwayFt);
    if (m_runway == nullptr)
        return;
    constexpr double LineUpNm = 0.01;
    m_phase = PilotPhase::TaxiOut;
    m_taxiRoute = {Turnoff(*m_runway, m_state.Position, BesideTheRunway(*m_runway, m_state.Position)),
                   Turnoff(*m_runway, m_state.Position, -LineUpNm),
                   Along(m_runway->Threshold, m_runway->Course, LineUpNm)};
}

void Pilot::StartTaxiIn()
{
    m_phase = PilotPhase::TaxiIn;
    const LatLon stand = m_airport->Stand(m_stand);
    const double outNm = OffsetFromLine(m_runway->Threshold, m_runway->Course, m_state.Position).OutNm;
    constexpr double TurnAheadNm = 0.03;
    m_taxiRoute = {Turnoff(*m_runway, stand, outNm - TurnAheadNm),
                   Turnoff(*m_runway, stand, BesideTheRunway(*m_runway, stand)), stand};
}

void Pilot::Step(PracticeRandom& random)
{
    switch (m_phase) {
    case PilotPhase::Parked:
        m_parkedS -= StepS;
        if (m_parkedS <= 0 && !m_holdPosition)
            StartTaxiOut();
        break;
    case PilotPhase::TaxiOut:
    case PilotPhase::TaxiIn: StepTaxi(); break;
    case PilotPhase::LineUp: StepLineUp(); break;
    case PilotPhase::TakeOff: StepTakeOff(); break;
    case PilotPhase::Airborne: StepAirborne(random); break;
    case PilotPhase::LandingRoll: StepLandingRoll(); break;
    }
    if (m_phase == PilotPhase::Parked && m_destination == nullptr) {
        constexpr double TurnaroundS = 180;
        m_parkedS = random.Between(TurnaroundS / 3, TurnaroundS * 2);
        PlanFlight(m_airport, random);
    }
}

void Pilot::StepTaxi()
{
    if (m_holdPosition) {
        constexpr double StopKtPerS = 4;
        RollStep(m_state, 0, StopKtPerS);
        return;
    }
    // Slows down for the last point: v^2 = 2 a s.
    constexpr double SlowestKt = 3;
    constexpr double SlowingKtPerS = 2;
    const double left = m_taxiRoute.size() == 1 ? RangeNm(m_state.Position, m_taxiRoute.front()) : 1;
    const double speed = std::clamp(std::sqrt(2 * SlowingKtPerS * left * 3600), SlowestKt, TaxiKt);
    if (!TaxiStep(m_state, m_taxiRoute.front(), speed))
        return;
    m_taxiRoute.pop_front();
    if (!m_taxiRoute.empty())
        return;
    if (m_phase == PilotPhase::TaxiOut) {
        m_phase = PilotPhase::LineUp;
        return;
    }
    m_phase = PilotPhase::Parked;
    m_state.SpeedKt = 0;
    m_destination = nullptr; // the next step plans the next flight
    ++m_flightsDone;
}

void Pilot::StepLineUp()
{
    constexpr double StopKtPerS = 6;
    const double turn = TurnTo(m_state.HeadingDeg, m_runway->Course);
    m_state.HeadingDeg =
        WrapCourse(m_state.HeadingDeg + std::clamp(turn, -GroundTurnDegPerS * StepS, GroundTurnDegPerS * StepS));
    RollStep(m_state, 0, StopKtPerS);
    if (m_holdPosition || m_state.SpeedKt > 0 || turn != 0)
        return;
    // The roll goes toward the far end: on the centreline even where the line-up stopped beside it.
    m_state.HeadingDeg = m_runway->Course;
    m_phase = PilotPhase::TakeOff;
}

void Pilot::StepTakeOff()
{
    RollStep(m_state, m_aircraft->RotateKt, m_aircraft->TakeOffKtPerS);
    m_state.AltitudeFt = m_runway->ElevationFt;
    if (m_state.SpeedKt < m_aircraft->RotateKt)
        return;
    constexpr double TurnHeightFt = 700;
    m_phase = PilotPhase::Airborne;
    m_steering = UpwindLeg{m_runway->Course, m_runway->ElevationFt + TurnHeightFt};
}

void Pilot::StepLandingRoll()
{
    const double leftNm =
        m_runway->LengthFt / FeetPerNm + OffsetFromLine(m_runway->Threshold, m_runway->Course, m_state.Position).OutNm;
    constexpr double ReserveNm = 0.05;
    // v^2 = 2 a s, with knots and nautical miles: a in knots a second is v^2 / (2 s) / 3600.
    const double stopNm = std::max(leftNm - ReserveNm, 0.02);
    const double needed = m_state.SpeedKt * m_state.SpeedKt / (2 * stopNm) / 3600;
    constexpr double HardestKtPerS = 8;
    RollStep(m_state, TaxiKt, std::min(std::max(needed, m_aircraft->BrakingKtPerS), HardestKtPerS));
    m_state.AltitudeFt = m_runway->ElevationFt;
    if (m_state.SpeedKt <= TaxiKt)
        StartTaxiIn();
}

std::optional<std::string> Pilot::TakeRadioCall()
{
    if (m_radioCall.empty())
        return std::nullopt;
    return std::exchange(m_radioCall, {});
}
} // namespace corvane
