#include "traffic/feeds/FeedAircraftTable.h"

#include "core/GreatCircle.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
/// What session messages call the engine of an emitter category; empty for those that say nothing of it.
static std::string_view EngineOfCategory(std::string_view category) noexcept
{
    if (category == "A1" || category == "B1")
        return "Piston Plane";
    if (category == "A7")
        return "Helicopter";
    return category >= "A2" && category <= "A5" ? "Jet Plane" : "";
}

/// Whether an aircraft can have flown from one place to the other. Times of arrival are no better than a second.
bool FeedAircraftTable::Agree(const Fix& earlier, const Fix& later) noexcept
{
    constexpr double FastestKt = 2500;
    constexpr double SecondsPerHour = 3600;
    const double seconds = std::max(1.0, std::abs(static_cast<double>(later.AtMs - earlier.AtMs)) / 1000);
    return RangeNm(earlier.Position, later.Position) <= FastestKt * seconds / SecondsPerHour;
}

void FeedAircraftTable::Apply(const FeedReport& report, const FeedTimes& times)
{
    auto found = m_aircraft.find(report.Address);
    if (report.Ended) {
        if (found != m_aircraft.end())
            Drop(found);
        return;
    }
    if (found == m_aircraft.end()) {
        if (m_aircraft.size() >= MostAircraft)
            return;
        found = m_aircraft.emplace(report.Address, Aircraft{}).first;
        found->second.LastWordMs = times.LastWordMs;
    }
    Aircraft& aircraft = found->second;
    aircraft.LastWordMs = std::max(aircraft.LastWordMs, times.LastWordMs);
    aircraft.List = times.List;
    const TrafficReport before = aircraft.Report;
    TakeValues(aircraft, report);
    const bool placed = report.Position && TakePosition(aircraft, *report.Position, times.PositionMs);
    if (!aircraft.Last)
        return;
    constexpr std::int64_t SameWordMs = 150; // lists give ages in tenths of a second
    if ((placed || TellsOfFlight(report)) &&
        (aircraft.Report != before || aircraft.Key == 0 || times.HeardMs - aircraft.ToldMs > SameWordMs)) {
        aircraft.ToldMs = times.HeardMs;
        aircraft.Moved = true;
    }
    if ((aircraft.Moved || aircraft.Renamed) && !std::exchange(aircraft.Waiting, true))
        m_waiting.push_back(report.Address);
}

bool FeedAircraftTable::TellsOfFlight(const FeedReport& report) noexcept
{
    return report.AltitudeFt || report.GroundSpeedKt || report.TrackDeg || report.Squawk || report.Emergency;
}

void FeedAircraftTable::TakeValues(Aircraft& aircraft, const FeedReport& report)
{
    if (!report.Callsign.empty() && report.Callsign != aircraft.Callsign) {
        aircraft.Callsign = report.Callsign;
        aircraft.Renamed = true;
    }
    if (!report.Category.empty())
        aircraft.Category = report.Category;
    if (!report.TypeName.empty())
        aircraft.TypeName = report.TypeName;
    if (report.AltitudeFt)
        aircraft.Report.AltitudeFt = *report.AltitudeFt;
    if (report.GroundSpeedKt)
        aircraft.Report.GroundSpeedKt = *report.GroundSpeedKt;
    if (report.TrackDeg)
        aircraft.Report.TrueHeading = *report.TrackDeg;
    if (report.Squawk) {
        aircraft.Report.Squawk = report.Squawk;
        aircraft.SquawkEmergency = IsEmergencySquawk(*report.Squawk);
    }
    aircraft.FlagEmergency = report.Emergency.value_or(aircraft.FlagEmergency);
    aircraft.Report.Emergency = aircraft.SquawkEmergency || aircraft.FlagEmergency;
}

bool FeedAircraftTable::TakePosition(Aircraft& aircraft, LatLon position, std::int64_t atMs)
{
    constexpr std::int64_t TooLongAgoMs = 60000; // to say where it cannot be
    const Fix fix{position, atMs};
    const bool comparable = aircraft.Last && atMs - aircraft.Last->AtMs < TooLongAgoMs;
    if (comparable && !Agree(*aircraft.Last, fix) && !(aircraft.HeldBack && Agree(*aircraft.HeldBack, fix))) {
        aircraft.HeldBack = fix;
        return false;
    }
    aircraft.HeldBack.reset();
    aircraft.Last = fix;
    aircraft.Report.Position = position;
    return true;
}

void FeedAircraftTable::Tell(FeedAddress address, Aircraft& aircraft)
{
    const std::string addressText = FeedAddressText(address);
    const std::string& name = aircraft.Callsign.empty() ? addressText : aircraft.Callsign;
    if (aircraft.Key == 0) {
        aircraft.Key = ++m_lastKey;
        const std::string& type = aircraft.TypeName;
        const std::string& title = !type.empty() ? type : aircraft.Category;
        m_events.emplace_back(AircraftAppeared{.Key = aircraft.Key,
                                               .Name = name,
                                               .ShortType = type,
                                               .Title = title.empty() ? addressText : title,
                                               .EngineType = std::string(EngineOfCategory(aircraft.Category))});
    } else if (aircraft.Renamed) {
        m_events.emplace_back(AircraftRenamed{aircraft.Key, name});
    }
    if (aircraft.Moved)
        m_events.emplace_back(AircraftMoved{aircraft.Key, aircraft.Report});
    aircraft.Waiting = aircraft.Moved = aircraft.Renamed = false;
}

TrafficEvents FeedAircraftTable::TakeEvents()
{
    for (const FeedAddress address : std::exchange(m_waiting, {}))
        if (const auto found = m_aircraft.find(address); found != m_aircraft.end() && found->second.Waiting)
            Tell(address, found->second);
    return std::exchange(m_events, {});
}

void FeedAircraftTable::Drop(Map::iterator aircraft)
{
    if (aircraft->second.Key != 0)
        m_events.emplace_back(AircraftVanished{aircraft->second.Key});
    m_aircraft.erase(aircraft);
}

template <class IsGone> void FeedAircraftTable::DropWhere(IsGone isGone)
{
    std::vector<FeedAddress> gone;
    for (const auto& [address, aircraft] : m_aircraft)
        if (isGone(aircraft))
            gone.push_back(address);
    std::ranges::sort(gone); // the same order whatever the table's
    for (const FeedAddress address : gone)
        Drop(m_aircraft.find(address));
}

void FeedAircraftTable::DropUnlisted(std::uint32_t list)
{
    DropWhere([list](const Aircraft& aircraft) { return aircraft.List != list; });
}

void FeedAircraftTable::Advance(std::int64_t nowMs)
{
    constexpr std::int64_t SweepMs = 250;
    if (nowMs < m_nextSweepMs)
        return;
    m_nextSweepMs = nowMs + SweepMs;
    DropWhere([nowMs](const Aircraft& aircraft) { return nowMs - aircraft.LastWordMs >= GoneAfterMs; });
}
} // namespace corvane
