#pragma once

#include "traffic/TrafficFeed.h"
#include "traffic/UnitSphere.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace corvane {
inline constexpr double DefaultTrafficRadiusNm = 300;
inline constexpr std::size_t DefaultMostTraffic = 5000;

struct NearestTrafficOptions {
    LatLon Center;
    double RadiusNm = DefaultTrafficRadiusNm;
    std::size_t Most = DefaultMostTraffic;
    /// Where the center is by now; asked about once a second. None: where it was.
    std::function<LatLon()> FollowCenter = {};
};

/// Lets only a part of another feed through: the aircraft around a place, and of these the nearest where they are too
/// many. Who is in stays in until it is a tenth farther away than one that is not would have to be, so that nobody
/// comes and goes along the border. Of an aircraft that is not let through nothing is told but what it says.
class NearestTraffic final : public TrafficFeed {
public:
    NearestTraffic(std::unique_ptr<TrafficFeed> feed, NearestTrafficOptions options);

    [[nodiscard]] std::string Name() const override { return m_feed->Name(); }
    TrafficEvents Take(std::int64_t nowMs) override;
    void Tell(const TrafficWord& word) override { m_feed->Tell(word); }
    [[nodiscard]] bool CanBeTalkedTo() const override { return m_feed->CanBeTalkedTo(); }
    /// The feed's, and how many of its aircraft are let through where that is not all.
    [[nodiscard]] std::string Health() const override;

private:
    struct Aircraft {
        AircraftAppeared Appeared;
        std::optional<TrafficReport> Report;
        double Distance = 0; ///< squared chord from the center
        bool LetThrough = false;
    };

    void Take(AircraftAppeared&& event);
    void Take(AircraftMoved&& event);
    void Take(AircraftRenamed&& event);
    void Take(AircraftSaid&& event);
    void Take(OutsiderSaid&& event) { m_events.emplace_back(std::move(event)); }
    void Take(const AircraftVanished& event);
    void Take(SourceNotice&& event) { m_events.emplace_back(std::move(event)); }

    void MoveCenter();
    [[nodiscard]] double Rank(const Aircraft& aircraft) const noexcept;
    void LetIn(Aircraft& aircraft);
    void PutOut(Aircraft& aircraft);
    /// Chooses anew. Costs about the same as looking at every aircraft once.
    void Choose();
    void TellOfEmergency(const Aircraft& aircraft, const TrafficReport* before);

    std::unique_ptr<TrafficFeed> m_feed;
    std::function<LatLon()> m_followCenter;
    LatLon m_centerPlace;
    UnitVector m_center;
    double m_radius; ///< squared chord
    std::size_t m_most;
    std::unordered_map<TrafficKey, Aircraft> m_aircraft;
    std::size_t m_letThrough = 0;
    TrafficEvents m_events;
    std::int64_t m_nextChoiceMs = 0;
    int m_emergencies = 0; ///< told of since the last choice
};
} // namespace corvane
