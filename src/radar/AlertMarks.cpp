#include "radar/AlertMarks.h"

#include "core/NumberText.h"
#include "core/Rounding.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <unordered_map>

namespace corvane {
static void MarkAlert(PilotTrack& pilot, const Alert& alert) noexcept
{
    if (alert.Kind == AlertKind::LowAltitude)
        pilot.LowAltitude = true;
    else if (alert.Violated)
        pilot.Conflict = ConflictMark::Violated;
    else if (pilot.Conflict == ConflictMark::None)
        pilot.Conflict = ConflictMark::Predicted;
}

namespace {
/// The pilots by the tracks that alerts name.
class PilotsByTrack {
public:
    explicit PilotsByTrack(std::span<const PilotTrack> pilots)
    {
        for (std::size_t i = 0; i < pilots.size(); ++i)
            if (pilots[i].Track)
                m_places.emplace(pilots[i].Track->Id, i);
    }
    [[nodiscard]] std::optional<std::size_t> Find(TrackId track) const
    {
        const auto found = m_places.find(track);
        return found == m_places.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::unordered_map<TrackId, std::size_t> m_places;
};
} // namespace

std::vector<PilotTrack> FindPilotTracks(const TargetSources& sources)
{
    const Pilots& members = sources.Members;
    std::vector<PilotTrack> pilots;
    for (std::size_t slot = 0; slot < members.Players.size(); ++slot) {
        const PlayerRecord& player = members.Players[slot];
        if (EligiblePilot(player, members.OwnPlayerId, members.OwnName))
            pilots.push_back({slot, sources.Monitor.Find(player, sources.Now)});
    }
    if (sources.Monitor.Alerts().empty())
        return pilots;
    const PilotsByTrack byTrack(pilots);
    for (const Alert& alert : sources.Monitor.Alerts()) {
        if (const auto first = byTrack.Find(alert.First))
            MarkAlert(pilots[*first], alert);
        if (alert.Kind != AlertKind::Conflict)
            continue;
        if (const auto second = byTrack.Find(alert.Second))
            MarkAlert(pilots[*second], alert);
    }
    return pilots;
}

/// "45 s  2.1 nm  300 ft": when and how close; a violation says "now" and its distances.
static std::string ConflictText(const Alert& alert)
{
    const std::string when =
        alert.Violated ? std::string("NOW") : std::to_string(RoundTo<std::int32_t>(alert.SecondsToClosest)) + " s";
    return when + "  " + TenthsText(alert.ClosestNm) + " nm  " +
           std::to_string(RoundTo<std::int32_t>(alert.ClosestFt)) + " ft";
}

namespace {
class AlertMarker {
public:
    AlertMarker(const TargetSources& sources, std::span<const PilotTrack> pilots, const Surface& metrics,
                TargetMarks& marks)
        : m_sources(sources), m_pilots(pilots), m_byTrack(pilots), m_metrics(metrics), m_marks(marks)
    {
    }

    /// Its pair's line and its line of the list.
    void Add(const Alert& alert, std::size_t index)
    {
        const PlayerRecord* const first = Find(alert.First);
        const PlayerRecord* const second = Find(alert.Second);
        if (first == nullptr || (alert.Kind == AlertKind::Conflict && second == nullptr))
            return; // gone since the alerts were found
        std::string text = alert.Acknowledged ? "" : "! ";
        if (alert.Kind == AlertKind::LowAltitude) {
            text += "LOW  " + Name(*first) + "  " + std::to_string(alert.AltitudeFt) + " ft  MIN " +
                    std::to_string(alert.MinimumAltitudeFt) + " ft";
        } else {
            AddPair(alert, *first, *second);
            text += (alert.Violated ? "CONFLICT  " : "PREDICTED  ") + Name(*first) + " - " + Name(*second) + "  " +
                    ConflictText(alert);
        }
        m_marks.Alerts.push_back({std::move(text), alert.Violated, index, {}});
    }

private:
    [[nodiscard]] const PlayerRecord* Find(TrackId track) const
    {
        const auto place = m_byTrack.Find(track);
        return place ? &m_sources.Members.Players[m_pilots[*place].Slot] : nullptr;
    }

    static std::string Name(const PlayerRecord& player)
    {
        constexpr std::size_t Longest = 16;
        return player.Name.substr(0, Longest);
    }

    void AddPair(const Alert& alert, const PlayerRecord& first, const PlayerRecord& second)
    {
        if (!OnEarth({first.Latitude, first.Longitude}) || !OnEarth({second.Latitude, second.Longitude}))
            return;
        constexpr std::int32_t BesidePx = 14;
        const ScopeView& view = m_sources.Scene.View;
        const ScopePoint from = ProjectToScope(view, {first.Latitude, first.Longitude});
        const ScopePoint to = ProjectToScope(view, {second.Latitude, second.Longitude});
        const ScopePoint middle{from.X / 2 + to.X / 2, from.Y / 2 + to.Y / 2};
        const std::string text = ConflictText(alert);
        const ScopePoint at = Offset(middle, BesidePx, BesidePx);
        PixelBox box{at.X, at.Y, at.X + m_metrics.TextWidth(text), at.Y + m_metrics.TextHeight()};
        for (const PairMark& other : m_marks.Pairs) // below those that would be covered, from top to bottom
            if (Overlap(box, other.TextBox)) {
                const std::int32_t height = box.Height();
                box.Top = other.TextBox.Bottom;
                box.Bottom = box.Top + height;
            }
        m_marks.Pairs.push_back({from, to, alert.Violated, text, box});
    }

    const TargetSources& m_sources;
    std::span<const PilotTrack> m_pilots;
    PilotsByTrack m_byTrack;
    const Surface& m_metrics;
    TargetMarks& m_marks;
};
} // namespace

static void PlaceList(const ScopeView& view, const Surface& metrics, std::vector<AlertLine>& lines)
{
    constexpr std::int32_t MarginPx = 8;
    constexpr std::int32_t SpacingPx = 3;
    std::int32_t width = 0;
    for (const AlertLine& line : lines)
        width = std::max(width, metrics.TextWidth(line.Text));
    const std::int32_t left = std::max(view.ScopeWidthPx - MarginPx - width, MarginPx);
    std::int32_t top = MarginPx;
    for (AlertLine& line : lines) {
        line.Box = {left, top, left + width, top + metrics.TextHeight()};
        top = line.Box.Bottom + SpacingPx;
    }
}

void MarkAlerts(const TargetSources& sources, std::span<const PilotTrack> tracks, const Surface& metrics,
                TargetMarks& marks)
{
    constexpr std::size_t MostLines = 12;
    const std::span<const Alert> alerts = sources.Monitor.Alerts();
    if (alerts.empty())
        return;
    AlertMarker marker(sources, tracks, metrics, marks);
    std::size_t index = 0;
    for (; index < alerts.size() && marks.Alerts.size() < MostLines; ++index)
        marker.Add(alerts[index], index);
    if (index < alerts.size())
        marks.Alerts.push_back({std::to_string(alerts.size() - index) + " more", false, index, {}});
    PlaceList(sources.Scene.View, metrics, marks.Alerts);
}
} // namespace corvane
