#include "tracks/TrackTable.h"

#include "core/GreatCircle.h"
#include "tracks/PairPlane.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
/// A member that reports more often is kept this often, so that a flood of reports takes no more memory than a radio.
static constexpr double LeastSpacingSeconds = 0.1;

LatLon PositionAhead(const TrackState& track, double seconds) noexcept
{
    return Along(track.Last.Position, track.Course, track.Last.GroundSpeedKt * seconds / SecondsPerHour);
}

void TrackTable::SetOptions(const TrackOptions& options)
{
    m_options = options;
    for (auto& [member, track] : m_tracks)
        ShortenDots(track);
}

void TrackTable::ShortenDots(Track& track) const
{
    const std::size_t kept = m_options.HistoryDots > 0 ? static_cast<std::size_t>(m_options.HistoryDots) + 1 : 0;
    while (track.Dots.size() > kept)
        track.Dots.pop_front();
}

void TrackTable::AddDot(Track& track) const
{
    const bool due = track.Dots.empty() || track.Last.Time - track.Dots.back().Time >= m_options.HistorySeconds;
    if (m_options.HistoryDots > 0 && due) {
        track.Dots.push_back({track.Last.Time, track.Last.Position});
        ShortenDots(track);
    }
}

void TrackTable::Report(const MemberKey& member, const TrackReport& report)
{
    if (!OnEarth(report.Position) || !std::isfinite(report.Time))
        return;
    const auto [entry, isNew] = m_tracks.try_emplace(member);
    Track& track = entry->second;
    if (isNew) {
        track.Id = m_nextId++;
    } else if (report.Time < track.Last.Time) {
        return;
    } else {
        if (track.Recent.empty() || track.Last.Time - track.Recent.back().Time >= LeastSpacingSeconds)
            track.Recent.push_back(track.Last);
        while (!track.Recent.empty() && report.Time - track.Recent.front().Time > CourseSeconds)
            track.Recent.pop_front();
    }
    track.Last = report;
    AddDot(track);
}

void TrackTable::KeepOnly(std::span<const MemberKey> members)
{
    std::vector<const MemberKey*> kept;
    kept.reserve(members.size());
    for (const MemberKey& member : members)
        kept.push_back(&member);
    const auto byKey = [](const MemberKey* a, const MemberKey* b) { return *a < *b; };
    std::ranges::sort(kept, byKey);
    std::erase_if(m_tracks, [&](const auto& entry) { return !std::ranges::binary_search(kept, &entry.first, byKey); });
}

std::optional<TrackState> TrackTable::Find(const MemberKey& member, double now) const
{
    const auto found = m_tracks.find(member);
    return found == m_tracks.end() ? std::nullopt : std::optional(StateOf(found->second, now));
}

TrackState TrackTable::StateOf(const Track& track, double now) const
{
    constexpr double LeastSeconds = 2;
    constexpr double LeastNm = 0.02; // below it positions waver more than they move
    constexpr double TrendFtPerMin = 300;
    TrackState state{.Id = track.Id, .Last = track.Last, .Age = now - track.Last.Time};
    state.Stale = m_options.StaleSeconds > 0 && state.Age >= m_options.StaleSeconds;
    state.Course = track.Last.TrueHeading;
    const auto oldest = std::ranges::partition_point(
        track.Recent, [&](const TrackReport& report) { return now - report.Time > CourseSeconds; });
    if (oldest == track.Recent.end() || track.Last.Time - oldest->Time < LeastSeconds)
        return state;
    const PlaneOffset way = OffsetOnPlane(oldest->Position, track.Last.Position);
    if (way.LengthNm() < LeastNm)
        return state;
    const double minutes = (track.Last.Time - oldest->Time) / 60;
    state.Course = WrapCourse(std::atan2(way.EastNm, way.NorthNm) * DegreesPerRadian);
    state.ClimbFtPerMin = (static_cast<double>(track.Last.AltitudeFt) - oldest->AltitudeFt) / minutes;
    if (std::abs(state.ClimbFtPerMin) > TrendFtPerMin)
        state.Trend = state.ClimbFtPerMin > 0 ? TrackTrend::Climbing : TrackTrend::Descending;
    return state;
}

std::size_t TrackTable::ReportsHeld() const noexcept
{
    std::size_t count = 0;
    for (const auto& [member, track] : m_tracks)
        count += 1 + track.Recent.size() + track.Dots.size();
    return count;
}

std::vector<LatLon> TrackTable::HistoryDots(const MemberKey& member) const
{
    std::vector<LatLon> dots;
    const auto found = m_tracks.find(member);
    if (found == m_tracks.end())
        return dots;
    const Track& track = found->second;
    for (auto dot = track.Dots.rbegin(); dot != track.Dots.rend(); ++dot)
        if (dot->Time != track.Last.Time && std::cmp_less(dots.size(), m_options.HistoryDots))
            dots.push_back(dot->Position);
    return dots;
}
} // namespace corvane
