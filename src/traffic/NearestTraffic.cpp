#include "traffic/NearestTraffic.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace corvane {
/// How much nearer, squared, those that are in count than they are.
static constexpr double Staying = 1 / (1.1 * 1.1);

NearestTraffic::NearestTraffic(std::unique_ptr<TrafficFeed> feed, NearestTrafficOptions options)
    : m_feed(std::move(feed)),
      m_followCenter(std::move(options.FollowCenter)),
      m_centerPlace(options.Center),
      m_center(ToUnitVector(options.Center)),
      m_radius(SquaredChordOfNm(options.RadiusNm)),
      m_most(options.Most)
{
}

double NearestTraffic::Rank(const Aircraft& aircraft) const noexcept
{
    return aircraft.LetThrough ? aircraft.Distance * Staying : aircraft.Distance;
}

void NearestTraffic::MoveCenter()
{
    const LatLon center = m_followCenter ? m_followCenter() : m_centerPlace;
    if (center == m_centerPlace)
        return;
    m_centerPlace = center;
    m_center = ToUnitVector(center);
    for (auto& [key, aircraft] : m_aircraft)
        if (aircraft.Report)
            aircraft.Distance = SquaredChord(m_center, ToUnitVector(aircraft.Report->Position));
}

TrafficEvents NearestTraffic::Take(std::int64_t nowMs)
{
    constexpr std::int64_t ChoiceMs = 1000;
    for (TrafficEvent& event : m_feed->Take(nowMs))
        std::visit([this](auto& one) { Take(std::move(one)); }, event);
    if (nowMs >= m_nextChoiceMs) {
        m_nextChoiceMs = nowMs + ChoiceMs;
        MoveCenter();
        Choose();
    }
    return std::exchange(m_events, {});
}

void NearestTraffic::Take(AircraftAppeared&& event)
{
    const TrafficKey key = event.Key;
    m_aircraft[key].Appeared = std::move(event);
}

void NearestTraffic::Take(AircraftMoved&& event)
{
    const auto found = m_aircraft.find(event.Key);
    if (found == m_aircraft.end())
        return;
    Aircraft& aircraft = found->second;
    const auto before = std::exchange(aircraft.Report, event.Report);
    aircraft.Distance = SquaredChord(m_center, ToUnitVector(event.Report.Position));
    if (aircraft.LetThrough) {
        TellOfEmergency(aircraft, before ? &*before : nullptr);
        m_events.emplace_back(std::move(event));
    } else if (m_letThrough < m_most && aircraft.Distance <= m_radius) {
        LetIn(aircraft);
    }
}

void NearestTraffic::Take(AircraftRenamed&& event)
{
    const auto found = m_aircraft.find(event.Key);
    if (found == m_aircraft.end())
        return;
    found->second.Appeared.Name = event.Name;
    if (found->second.LetThrough)
        m_events.emplace_back(std::move(event));
}

void NearestTraffic::Take(AircraftSaid&& event)
{
    const auto found = m_aircraft.find(event.Key);
    if (found == m_aircraft.end())
        return;
    if (found->second.LetThrough)
        m_events.emplace_back(std::move(event));
    else
        m_events.emplace_back(OutsiderSaid{found->second.Appeared.Name, std::move(event.Text)});
}

void NearestTraffic::Take(const AircraftVanished& event)
{
    const auto found = m_aircraft.find(event.Key);
    if (found == m_aircraft.end())
        return;
    if (found->second.LetThrough)
        PutOut(found->second);
    m_aircraft.erase(found);
}

void NearestTraffic::LetIn(Aircraft& aircraft)
{
    assert(!aircraft.LetThrough && aircraft.Report);
    aircraft.LetThrough = true;
    ++m_letThrough;
    m_events.emplace_back(aircraft.Appeared);
    m_events.emplace_back(AircraftMoved{aircraft.Appeared.Key, *aircraft.Report});
    TellOfEmergency(aircraft, nullptr);
}

void NearestTraffic::PutOut(Aircraft& aircraft)
{
    assert(aircraft.LetThrough && m_letThrough > 0);
    aircraft.LetThrough = false;
    --m_letThrough;
    m_events.emplace_back(AircraftVanished{aircraft.Appeared.Key});
}

void NearestTraffic::Choose()
{
    m_emergencies = 0;
    std::vector<std::pair<double, TrafficKey>> chosen;
    for (const auto& [key, aircraft] : m_aircraft)
        if (aircraft.Report && Rank(aircraft) <= m_radius)
            chosen.emplace_back(Rank(aircraft), key); // the key makes the order of equals certain
    if (chosen.size() > m_most) {
        std::ranges::nth_element(chosen, chosen.begin() + static_cast<std::ptrdiff_t>(m_most));
        chosen.resize(m_most);
    }
    std::vector<TrafficKey> stay;
    for (const auto& [rank, key] : chosen)
        stay.push_back(key);
    std::ranges::sort(stay);
    std::vector<TrafficKey> leave;
    for (const auto& [key, aircraft] : m_aircraft)
        if (aircraft.LetThrough && !std::ranges::binary_search(stay, key))
            leave.push_back(key);
    std::ranges::sort(leave);
    for (const TrafficKey key : leave)
        PutOut(m_aircraft.at(key));
    std::ranges::sort(chosen);
    for (const auto& [rank, key] : chosen)
        if (Aircraft& aircraft = m_aircraft.at(key); !aircraft.LetThrough)
            LetIn(aircraft);
}

/// Once when it begins, and not of more at a time than anybody can look after.
void NearestTraffic::TellOfEmergency(const Aircraft& aircraft, const TrafficReport* before)
{
    constexpr int MostAtOnce = 3;
    const TrafficReport& now = *aircraft.Report;
    if (!now.Emergency || (before != nullptr && before->Emergency) || ++m_emergencies > MostAtOnce)
        return;
    std::string text = aircraft.Appeared.Name + " reports an emergency";
    if (now.Squawk)
        text += " and squawks " + std::to_string(*now.Squawk);
    m_events.emplace_back(SourceNotice{std::move(text)});
}

std::string NearestTraffic::Health() const
{
    std::string health = m_feed->Health();
    if (m_letThrough < m_aircraft.size())
        health += ", " + std::to_string(m_letThrough) + " of them shown";
    return health;
}
} // namespace corvane
