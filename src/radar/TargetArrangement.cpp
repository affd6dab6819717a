#include "radar/TargetArrangement.h"

#include "radar/AlertMarks.h"
#include "radar/PlayerTargets.h"

#include <algorithm>
#include <string>

namespace corvane {
/// Slower than anything flies, at an airport of the area and as high as it.
static bool StandsOnGround(const PlayerRecord& target, const AirportIndex& airports) noexcept
{
    constexpr std::int16_t FlyingKt = 40;
    return target.GroundSpeedKt < FlyingKt &&
           airports.AtFieldElevation({target.Latitude, target.Longitude}, target.AltitudeFt);
}

/// A stale target's light: less and less from the moment it is stale to five times that age.
static double LightOf(const TrackState& track, std::int32_t staleSeconds) noexcept
{
    constexpr double Freshest = 0.7;
    constexpr double Least = 0.45;
    constexpr double FadingTimes = 4;
    if (!track.Stale || staleSeconds <= 0)
        return 1;
    const double faded = (track.Age / staleSeconds - 1) / FadingTimes;
    return Freshest - (Freshest - Least) * std::clamp(faded, 0.0, 1.0);
}

namespace {
class TargetChooser {
public:
    TargetChooser(const TargetSources& sources, TargetMarks& marks) noexcept : m_sources(sources), m_marks(marks) {}

    void Choose(std::span<const PilotTrack> tracks)
    {
        for (const PilotTrack& pilot : tracks)
            if (const auto at = TargetPixel(m_sources.Scene.View, m_sources.Members, RecordOf(pilot)))
                Add(pilot, *at);
    }

private:
    [[nodiscard]] const PlayerRecord& RecordOf(const PilotTrack& pilot) const
    {
        return m_sources.Members.Players[pilot.Slot];
    }

    [[nodiscard]] MemberRadio RadioOf(const PlayerRecord& target) const
    {
        const MemberRadios* const radios = m_sources.Members.Radios;
        return radios == nullptr ? MemberRadio() : radios->RadioOf(target.PlayerId);
    }

    [[nodiscard]] bool Filtered(const PlayerRecord& target) const noexcept
    {
        return target.AltitudeFt < m_sources.Options.FloorFt || target.AltitudeFt > m_sources.Options.CeilingFt;
    }

    void Add(const PilotTrack& pilot, ScopePoint at)
    {
        const PlayerRecord& target = RecordOf(pilot);
        TargetMark& mark = m_marks.Targets.emplace_back();
        mark.Slot = pilot.Slot;
        mark.PlayerId = target.PlayerId;
        mark.At = at;
        mark.VectorEnd = HeadingVectorEnd(m_sources.Scene.Variation, target, at);
        mark.Conflict = pilot.Conflict;
        mark.LowAltitude = pilot.LowAltitude;
        const auto& selected = m_sources.Focus.Selected;
        mark.Selected = selected && selected->PlayerId == target.PlayerId && selected->Name == target.Name;
        const bool named = mark.Selected || mark.LowAltitude || mark.Conflict != ConflictMark::None;
        mark.Small = !named && Filtered(target);
        if (pilot.Track)
            AddTrack(mark, target, *pilot.Track);
        if (!mark.Small)
            mark.Block =
                WriteBlock(target,
                           {pilot.Track ? pilot.Track->Trend : TrackTrend::Level,
                            StandsOnGround(target, m_sources.Monitor.Airports()), mark.LowAltitude, RadioOf(target)},
                           m_sources.Options);
    }

    void AddTrack(TargetMark& mark, const PlayerRecord& target, const TrackState& track)
    {
        mark.Track = track.Id;
        mark.Stale = track.Stale;
        mark.Light = LightOf(track, m_sources.Options.StaleSeconds);
        if (mark.Small)
            return;
        if (m_sources.Options.HistoryDots > 0)
            AddTrail(mark, target);
        if (!track.Stale && track.Last.GroundSpeedKt > 0)
            AddMinutes(mark, track);
    }

    void AddTrail(TargetMark& mark, const PlayerRecord& target)
    {
        mark.Trail.First = m_marks.Points.size();
        for (const LatLon& dot : m_sources.Monitor.HistoryDots(target))
            if (const auto pixel = VisiblePixel(m_sources.Scene.View, dot))
                m_marks.Points.push_back(*pixel);
        mark.Trail.Count = m_marks.Points.size() - mark.Trail.First;
    }

    void AddMinutes(TargetMark& mark, const TrackState& track)
    {
        constexpr double SecondsPerMinute = 60;
        mark.Minutes.First = m_marks.Points.size();
        for (std::int32_t minute = 1; minute <= m_sources.Options.PredictionMinutes; ++minute) {
            const LatLon there = PositionAhead(track, minute * SecondsPerMinute);
            if (!OnEarth(there))
                break;
            m_marks.Points.push_back(ProjectToScope(m_sources.Scene.View, there));
        }
        mark.Minutes.Count = m_marks.Points.size() - mark.Minutes.First;
    }

    const TargetSources& m_sources;
    TargetMarks& m_marks;
};
} // namespace

/// What the scope says while a filter acts, in the lower left corner.
static void NoteFilter(const TargetSources& sources, const Surface& metrics, TargetMarks& marks)
{
    constexpr std::int32_t MarginPx = 8;
    const DisplayOptions widest;
    const DisplayOptions& options = sources.Options;
    if (options.FloorFt <= widest.FloorFt && options.CeilingFt >= widest.CeilingFt)
        return;
    const auto small = std::ranges::count_if(marks.Targets, &TargetMark::Small);
    marks.FilterNote = "FILTER " + std::to_string(options.FloorFt) + " to " + std::to_string(options.CeilingFt) +
                       " ft: " + std::to_string(small) + " of " + std::to_string(marks.Targets.size()) +
                       " targets are dots";
    const std::int32_t top = sources.Scene.View.ScopeHeightPx - MarginPx - metrics.TextHeight();
    marks.FilterNoteBox = {MarginPx, top, MarginPx + metrics.TextWidth(marks.FilterNote), top + metrics.TextHeight()};
}

void ChooseTargets(const TargetSources& sources, const Surface& metrics, TargetMarks& marks)
{
    marks.Targets.clear();
    marks.Points.clear();
    marks.Pairs.clear();
    marks.Alerts.clear();
    marks.FilterNote.clear();
    marks.FilterNoteBox = {};
    const std::vector<PilotTrack> tracks = FindPilotTracks(sources);
    TargetChooser(sources, marks).Choose(tracks);
    MarkAlerts(sources, tracks, metrics, marks);
    NoteFilter(sources, metrics, marks);
}

std::vector<PixelBox> AirportNameBoxes(const MapScene& scene, const Surface& metrics)
{
    constexpr std::int16_t FirstNameLevel = 25;
    std::vector<PixelBox> boxes;
    if (scene.View.ZoomLevel < FirstNameLevel || !scene.Flags.ShowAirportNames)
        return boxes;
    for (const AirportRecord& airport : scene.Area.AreaAirports)
        if (const auto at = VisiblePixel(scene.View, {airport.Lat, airport.Lon})) {
            const std::int32_t width =
                metrics.TextWidth(airport.Name) + metrics.TextWidth(" - ") + metrics.TextWidth(airport.Icao);
            boxes.push_back({at->X, at->Y, at->X + width, at->Y + metrics.TextHeight()});
        }
    return boxes;
}
} // namespace corvane
