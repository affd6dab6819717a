#pragma once

#include "tracks/Track.h"
#include "tracks/TrackOptions.h"

#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <span>
#include <vector>

namespace corvane {
/// The ways of all members, from what they report. A track exists from its member's first report on until it is
/// dropped. Costs a member at most some hundred reports of the last seconds, and the options' history dots.
class TrackTable {
public:
    explicit TrackTable(const TrackOptions& options = {}) : m_options(options) {}

    /// From now on; history that was not kept does not come back.
    void SetOptions(const TrackOptions& options);
    [[nodiscard]] const TrackOptions& Options() const noexcept { return m_options; }

    /// A report; times must not descend. A position that does not lie on earth, or a time that is no number, is passed
    /// over.
    void Report(const MemberKey& member, const TrackReport& report);
    /// Forgets every member but these, which may come in any order.
    void KeepOnly(std::span<const MemberKey> members);
    void Clear() noexcept { m_tracks.clear(); }

    /// A member's state at a time that is not before its last report; nothing for one that has not reported.
    [[nodiscard]] std::optional<TrackState> Find(const MemberKey& member, double now) const;
    /// Past positions, the latest first: at most HistoryDots, HistorySeconds or more apart, without the last report's.
    [[nodiscard]] std::vector<LatLon> HistoryDots(const MemberKey& member) const;
    [[nodiscard]] std::size_t size() const noexcept { return m_tracks.size(); }
    /// How many reports and dots are kept of all members.
    [[nodiscard]] std::size_t ReportsHeld() const noexcept;

private:
    struct Dot {
        double Time = 0;
        LatLon Position;
    };
    struct Track {
        TrackId Id = 0;
        TrackReport Last;
        std::deque<TrackReport> Recent; ///< of the last CourseSeconds, oldest first, without Last
        std::deque<Dot> Dots;           ///< oldest first; the newest may be Last's
    };

    void ShortenDots(Track& track) const;
    void AddDot(Track& track) const;
    [[nodiscard]] TrackState StateOf(const Track& track, double now) const;

    TrackOptions m_options;
    TrackId m_nextId = 1;
    std::map<MemberKey, Track> m_tracks;
};
} // namespace corvane
