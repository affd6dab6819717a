#pragma once

#include "traffic/TrafficFeed.h"
#include "traffic/feeds/AircraftJsonSource.h"
#include "traffic/feeds/FeedPlace.h"
#include "traffic/feeds/LinkReport.h"

#include <memory>

namespace corvane {
/// The aircraft of an aircraft.json, a file or a web page, which is read about once a second on a thread of its own.
class AircraftJsonFeed final : public TrafficFeed {
public:
    explicit AircraftJsonFeed(const FeedPlace& place);
    ~AircraftJsonFeed() override;
    AircraftJsonFeed(const AircraftJsonFeed&) = delete;
    AircraftJsonFeed& operator=(const AircraftJsonFeed&) = delete;
    AircraftJsonFeed(AircraftJsonFeed&&) = delete;
    AircraftJsonFeed& operator=(AircraftJsonFeed&&) = delete;

    [[nodiscard]] std::string Name() const override { return "Aircraft feed " + m_report.Place(); }
    TrafficEvents Take(std::int64_t nowMs) override;
    void Tell(const TrafficWord& /*word*/) override {}
    [[nodiscard]] bool CanBeTalkedTo() const override { return false; }
    [[nodiscard]] std::string Health() const override;

private:
    class Reading;

    void Judge(const Result<AircraftJson>& file, std::int64_t nowMs, TrafficEvents& events);

    AircraftJsonSource m_source;
    std::shared_ptr<Reading> m_reading; ///< shared with its thread
    LinkReport m_report;
    int m_failures = 0; ///< in a row
    bool m_stoodStill = false;
};
} // namespace corvane
