#include "debrief/FlightLog.h"

#include "core/GreatCircle.h"
#include "practice/Pilot.h"

#include <algorithm>
#include <cmath>

namespace corvane {
static constexpr double ClearFt = 200; ///< above the field: in the air beyond doubt

/// The airport on whose ground an aircraft may be.
const PracticeAirport* FlightLog::FieldBelow(const LatLon& at) const
{
    constexpr double OnFieldNm = 4;
    constexpr double BoxDeg = 0.2; // of latitude; spares most airports the distance
    for (const PracticeAirport& airport : m_scene->Airports())
        if (std::abs(airport.Position.Lat - at.Lat) < BoxDeg && RangeNm(airport.Position, at) < OnFieldNm)
            return &airport;
    return nullptr;
}

void FlightLog::AddPlace(Flight& flight, const PlayerRecord& pilot, double nowS)
{
    constexpr std::size_t MostPlaces = 2000;
    std::vector<DebriefPlace>& track = flight.What.Track;
    if (!track.empty() && nowS - track.back().TimeS < flight.EveryS)
        return;
    track.push_back({nowS, {pilot.Latitude, pilot.Longitude}, pilot.AltitudeFt});
    if (track.size() < MostPlaces)
        return;
    for (std::size_t i = 0; i * 2 < track.size(); ++i)
        track[i] = track[i * 2];
    track.resize((track.size() + 1) / 2);
    flight.EveryS *= 2;
}

void FlightLog::Follow(Flight& flight, const PlayerRecord& pilot, double nowS) const
{
    constexpr int SlowKt = 40;
    constexpr double LowFt = 60;
    const PracticeAirport* const field = FieldBelow({pilot.Latitude, pilot.Longitude});
    const double aboveFt = field != nullptr ? pilot.AltitudeFt - field->ElevationFt : ClearFt + 1;
    if (!flight.Airborne && aboveFt > ClearFt && pilot.GroundSpeedKt > 0) {
        flight.Airborne = true;
        if (flight.What.Track.empty())
            flight.BeganInTheAir = true;
        else
            flight.What.TookOffS = flight.What.TookOffS.value_or(nowS);
    } else if (flight.Airborne && field != nullptr &&
               (aboveFt < LowFt || (aboveFt < ClearFt && pilot.GroundSpeedKt < SlowKt))) {
        flight.Airborne = false;
        flight.What.LandedS = nowS;
        flight.What.LandedAt = field->Icao;
    }
}

void FlightLog::Report(const PlayerRecord& pilot, double nowS)
{
    const auto [known, isNew] = m_byCallsign.try_emplace(pilot.Name, m_flights.size());
    if (isNew)
        m_flights.emplace_back().What.Callsign = pilot.Name;
    Flight& flight = m_flights[known->second];
    flight.What.AircraftTitle = pilot.AircraftTitle;
    flight.AircraftType = pilot.AircraftType;
    Follow(flight, pilot, nowS);
    constexpr double MovedNm = 0.01;
    if (!flight.MovedS && !flight.Airborne && !flight.What.Track.empty() &&
        RangeNm(flight.What.Track.front().Position, {pilot.Latitude, pilot.Longitude}) > MovedNm)
        flight.MovedS = nowS;
    AddPlace(flight, pilot, nowS);
}

bool FlightLog::IsAirborne(const std::string& callsign) const
{
    const auto known = m_byCallsign.find(callsign);
    return known != m_byCallsign.end() && m_flights[known->second].Airborne;
}

void FlightLog::MeasureDeparture(const Flight& flight, DebriefFlight& what, std::optional<double> firstCallS) const
{
    const PracticeAirport* const field = FieldBelow(what.Track.front().Position);
    if (field == nullptr || !flight.MovedS)
        return;
    what.ReadyS = std::min(firstCallS.value_or(*flight.MovedS), *flight.MovedS);
    what.UnhinderedS =
        UnhinderedDepartureS(*m_scene, what.Track.front(), *field, what.AircraftTitle, flight.AircraftType);
}

std::vector<DebriefFlight>
FlightLog::Flights(const MagVarGrid& grid,
                   const std::function<std::optional<double>(const std::string& callsign)>& firstCallS) const
{
    std::vector<DebriefFlight> flights;
    for (const Flight& flight : m_flights) {
        flights.push_back(flight.What);
        DebriefFlight& what = flights.back();
        const PracticeAirport* const field = m_scene->FindAirport(what.LandedAt);
        if (flight.BeganInTheAir && what.LandedS && field != nullptr)
            what.UnhinderedS =
                UnhinderedFlightS(*m_scene, grid, what.Track.front(), *field, what.AircraftTitle, flight.AircraftType);
        else if (!flight.BeganInTheAir && what.TookOffS && !what.Track.empty())
            MeasureDeparture(flight, what, firstCallS(what.Callsign));
    }
    return flights;
}

std::optional<double> UnhinderedDepartureS(const PracticeScene& scene, const DebriefPlace& from,
                                           const PracticeAirport& field, std::string_view title,
                                           std::string_view engine)
{
    const AircraftClass& aircraft = ClassOf(KindOfAircraft(title, engine));
    if (field.TakeOffRunway(aircraft.RunwayFt) == nullptr)
        return std::nullopt;
    constexpr double PushbackS = 20;
    constexpr double LongestS = 3600;
    constexpr double SecondsPerMinute = 60;
    Journey trip{.Airport = &field};
    GroundRun ground(aircraft, 0);
    FlightState state;
    ground.BeginParked(state, field, 0);
    ground.Wait(PushbackS);
    state.Position = from.Position;
    state.Wind = scene.Wind();
    for (double seconds = 0; seconds < LongestS; seconds += StepS) {
        ground.Step(state, trip, {});
        if (ground.Phase() == PilotPhase::Airborne)
            return seconds + ClearFt / aircraft.ClimbFpm * SecondsPerMinute;
    }
    return std::nullopt;
}

std::optional<double> UnhinderedFlightS(const PracticeScene& scene, const MagVarGrid& grid, const DebriefPlace& from,
                                        const PracticeAirport& to, std::string_view title, std::string_view engine)
{
    const AircraftClass& aircraft = ClassOf(KindOfAircraft(title, engine));
    if (to.RunwayInUse(aircraft.RunwayFt) == nullptr)
        return std::nullopt;
    PracticeRandom random(1);
    PilotStart start;
    start.Destination = &to;
    start.Position = from.Position;
    start.AltitudeFt = from.AltitudeFt;
    Pilot pilot(scene, grid, aircraft.Kind, start, random);
    constexpr double LongestS = 3 * 3600;
    for (double seconds = 0; seconds < LongestS; seconds += StepS) {
        pilot.Step(random);
        if (pilot.Phase() != PilotPhase::Airborne)
            return seconds;
    }
    return std::nullopt;
}
} // namespace corvane
