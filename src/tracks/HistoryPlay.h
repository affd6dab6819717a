#pragma once

#include "session/PlayerTable.h"
#include "tracks/TrafficMonitor.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace corvane {
/// Who reported at one time.
struct HistoryLine {
    double Time = 0; ///< seconds, within +-LatestHistoryTime; later than or equal to the line's before
    std::vector<PlayerRecord> Players;
};
inline constexpr double LatestHistoryTime = 1e12;
/// The id by which a history names the controller's own entry, which is no target.
inline constexpr std::int32_t HistoryOwnId = 1;

/// Plays a history through a monitor as a display would that was open all the time: one refresh at the first line's
/// time and one at each whole second after it, up to the last line's.
///
/// A member that a line does not hold is still there, but silent. One that has been stale for some refreshes is let go,
/// so a history of many that come and go costs no more than its lines; so does a time in which nobody reports.
class HistoryPlay {
public:
    using EventSink = std::function<void(const AlertEvent&)>;
    /// May change a member's MinimumAltitudeFt before a refresh; slot is its place among those that are there.
    using MinimumAltitudeUpdate = std::function<void(PlayerRecord& member, std::size_t slot)>;

    /// monitor  borrowed; its options are set
    HistoryPlay(TrafficMonitor& monitor, EventSink sink, MinimumAltitudeUpdate update = {});

    void Play(HistoryLine line);
    /// The last line has been played: its time is still refreshed.
    void Finish();

private:
    struct Member {
        PlayerRecord Record;
        double Reported = 0;
    };

    [[nodiscard]] double NextRefresh() const noexcept { return m_firstTime + static_cast<double>(m_refreshes); }
    void RefreshBefore(double time);
    void Refresh(double now);
    void TakeReport(PlayerRecord&& record, double now);

    TrafficMonitor& m_monitor;
    EventSink m_sink;
    MinimumAltitudeUpdate m_update;
    std::map<MemberKey, Member> m_members;
    std::string m_ownName = std::string(1, '\0'); ///< which no member bears, until a line holds the own entry
    bool m_begun = false;
    double m_firstTime = 0;
    double m_lastTime = 0;
    std::int64_t m_refreshes = 0; ///< made or passed over so far
};
} // namespace corvane
